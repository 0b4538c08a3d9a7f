// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/FileDrop.h"

#include "App/FileURL.h"

#include <QDragEnterEvent>
#include <QMimeData>

bool FileDrop::accept(QDragEnterEvent *event)
{
    if (!event->mimeData()->hasUrls()) {
        return false;
    }
    // Whatever the other side would rather do: the files stay where they are.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    return true;
}

QList<QUrl> FileDrop::take(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    return FileURL::filesAmong(event->mimeData()->urls());
}
