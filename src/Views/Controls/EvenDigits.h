// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFontMetrics>
#include <QPainter>
#include <QPoint>
#include <QString>

/// Text whose digits are all as wide as the widest one, so that a changing number doesn't tremble.
/// For plain left-to-right lines of numbers and units.
namespace EvenDigits {

int width(const QFontMetrics &metrics, const QString &text);

/// Draws from that point of the baseline on, with the painter's font and pen.
void draw(QPainter &painter, QPoint baseline, const QString &text);

} // namespace EvenDigits
