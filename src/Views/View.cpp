// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/View.h"

#include <QCoreApplication>
#include <QEvent>

namespace {

QEvent::Type refreshEvent()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

} // namespace

View::View(const ViewContext &context, QWidget *parent) : QWidget(parent), m_context(context)
{
    follow(&AppModel::languageChanged);
    refreshSoon();
}

QString View::t(const char16_t *key) const
{
    return model().t(QString::fromUtf16(key));
}

void View::refreshSoon()
{
    if (!m_isDue) {
        m_isDue = true;
        QCoreApplication::postEvent(this, new QEvent(refreshEvent()), Qt::HighEventPriority);
    }
}

void View::refreshNow()
{
    if (m_isDue) {
        m_isDue = false;
        refresh();
    }
}

bool View::event(QEvent *event)
{
    if (event->type() == refreshEvent() || event->type() == QEvent::Polish ||
        event->type() == QEvent::Show) {
        refreshNow();
    }
    return QWidget::event(event);
}
