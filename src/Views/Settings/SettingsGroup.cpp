// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/SettingsGroup.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Theme.h"

#include <QEvent>
#include <QPainter>

SettingsGroup::SettingsGroup(QWidget *parent) : Card(parent)
{
    column()->setContentsMargins(0, 0, 0, 0);
    column()->setSpacing(Look::hairlineWidth);
}

void SettingsGroup::addRow(QWidget *row)
{
    column()->addWidget(row);
}

void SettingsGroup::placeRow(int index, QWidget *row)
{
    if (column()->indexOf(row) != index) {
        column()->insertWidget(index, row);
    }
}

void SettingsGroup::paintEvent(QPaintEvent *event)
{
    Card::paintEvent(event);
    QPainter painter(this);
    bool isFirst = true;
    for (int i = 0; i < column()->count(); ++i) {
        const QLayoutItem *row = column()->itemAt(i);
        if (!row->isEmpty() && !std::exchange(isFirst, false)) {
            painter.fillRect(Look::Space::large, row->geometry().top() - Look::hairlineWidth,
                             width() - 2 * Look::Space::large, Look::hairlineWidth,
                             Look::color(Look::ColorRole::hairline));
        }
    }
}

bool SettingsGroup::event(QEvent *event)
{
    // Rows that come and go may leave the card as large as it was.
    if (event->type() == QEvent::LayoutRequest) {
        update();
    }
    return Card::event(event);
}
