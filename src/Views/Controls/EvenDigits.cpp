// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/EvenDigits.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

int widestDigit(const QFontMetrics &metrics)
{
    int widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    }
    return widest;
}

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

/// Hands out the text in pieces: each digit alone, and what lies between in one.
template <typename Take> void forPieces(const QString &text, const Take &take)
{
    qsizetype from = 0;
    while (from < text.size()) {
        qsizetype to = from + 1;
        while (!isDigit(text.at(from)) && to < text.size() && !isDigit(text.at(to))) {
            ++to;
        }
        take(text.mid(from, to - from));
        from = to;
    }
}

int widthOf(const QFontMetrics &metrics, const QString &piece, int digitWidth)
{
    return isDigit(piece.front()) ? digitWidth : metrics.horizontalAdvance(piece);
}

} // namespace

int EvenDigits::width(const QFontMetrics &metrics, const QString &text)
{
    const int digitWidth = widestDigit(metrics);
    int width = 0;
    forPieces(text, [&](const QString &piece) { width += widthOf(metrics, piece, digitWidth); });
    return width;
}

void EvenDigits::draw(QPainter &painter, QPoint baseline, const QString &text)
{
    const QFontMetrics metrics = painter.fontMetrics();
    const int digitWidth = widestDigit(metrics);
    forPieces(text, [&](const QString &piece) {
        const int width = widthOf(metrics, piece, digitWidth);
        const int slack = (width - metrics.horizontalAdvance(piece)) / 2;
        painter.drawText(baseline + QPoint(slack, 0), piece);
        baseline.rx() += width;
    });
}
