// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// Shapes that our own widgets share.
namespace Look {

/// The faces of a box: what it is filled with, and the line around it, which lies inside. An
/// invalid colour is none.
struct Box {
    QColor fill;
    QColor line;
    qreal lineWidth = 1;
    qreal radius = 0;
};

void paintBox(QPainter &painter, const QRectF &rect, const Box &box);

/// Around a control that has the focus, inside its rectangle.
void paintFocusRing(QPainter &painter, const QRectF &rect, qreal radius);

} // namespace Look
