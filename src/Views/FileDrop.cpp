// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/FileDrop.h"

#include "App/FileURL.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QWidget>

namespace {

void acceptCopy(QDropEvent &event)
{
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace

FileDrop::FileDrop(QWidget *widget) : QObject(widget)
{
    widget->setAcceptDrops(true);
    widget->installEventFilter(this);
}

bool FileDrop::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
        enter(static_cast<QDragMoveEvent &>(*event));
        return true;
    case QEvent::DragMove:
        // Comes only behind an enter that was accepted.
        acceptCopy(static_cast<QDropEvent &>(*event));
        return true;
    case QEvent::DragLeave:
        setOver(false);
        return true;
    case QEvent::Drop:
        take(static_cast<QDropEvent &>(*event));
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

void FileDrop::enter(QDragMoveEvent &event)
{
    if (event.mimeData()->hasUrls()) {
        acceptCopy(event);
        setOver(true);
    } else {
        event.ignore();
    }
}

void FileDrop::take(QDropEvent &event)
{
    acceptCopy(event);
    // Told of a move, the other side would delete what we only read.
    if (event.dropAction() == Qt::MoveAction) {
        event.setDropAction(Qt::IgnoreAction);
    }
    setOver(false);
    Q_EMIT dropped(FileURL::filesAmong(event.mimeData()->urls()));
}

void FileDrop::setOver(bool over)
{
    if (over != m_isOver) {
        m_isOver = over;
        Q_EMIT overChanged(over);
    }
}
