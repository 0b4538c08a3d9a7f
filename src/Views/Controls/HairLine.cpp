// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/HairLine.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Theme.h"

#include <QPainter>

HairLine::HairLine(Qt::Orientation orientation, QWidget *parent) : QWidget(parent)
{
    if (orientation == Qt::Horizontal) {
        setFixedHeight(Look::hairlineWidth);
    } else {
        setFixedWidth(Look::hairlineWidth);
    }
}

void HairLine::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), Look::color(Look::ColorRole::hairline));
}
