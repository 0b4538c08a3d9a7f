// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Look/Painting.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Theme.h"

#include <QPainter>

void Look::paintBox(QPainter &painter, const QRectF &rect, const Box &box)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(box.fill.isValid() ? QBrush(box.fill) : Qt::NoBrush);
    painter.setPen(box.line.isValid() ? QPen(box.line, box.lineWidth) : Qt::NoPen);
    const qreal inset = box.line.isValid() ? box.lineWidth / 2 : 0;
    const qreal radius = qMax(0.0, box.radius - inset);
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

void Look::paintFocusRing(QPainter &painter, const QRectF &rect, qreal radius)
{
    paintBox(painter, rect,
             {.fill = {},
              .line = color(ColorRole::accent),
              .lineWidth = focusRingWidth,
              .radius = radius});
}
