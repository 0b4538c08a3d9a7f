// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/DropTarget.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"
#include "Views/Look/Type.h"

#include <QPainter>

#include <algorithm>
#include <utility>

using Look::ColorRole;

namespace {

// Device-independent pixels.
constexpr int fieldHeight = 52;
constexpr int leastWidth = 56;
constexpr int symbolTop = 8;
constexpr int titleBottom = 6;
constexpr double lineOpacity = 0.3;

struct FieldColors {
    QColor fill;
    QColor line;
    QColor content;
};

FieldColors fieldColors(bool isHighlighted)
{
    if (isHighlighted) {
        const QColor accent = Look::color(ColorRole::accentFill);
        return {accent, accent, Look::color(ColorRole::onAccent)};
    }
    const QColor window = Look::color(ColorRole::window);
    return {window, Look::blended(Look::color(ColorRole::secondaryText), lineOpacity, window),
            Look::color(ColorRole::text)};
}

} // namespace

DropTarget::DropTarget(QString symbolName, QWidget *parent)
    : QWidget(parent)
    , m_symbolName(std::move(symbolName))
{
    setFixedHeight(fieldHeight);
    setFont(Look::font(Look::TextSize::caption));
}

void DropTarget::setTitle(const QString &title)
{
    if (m_title == title) {
        return;
    }
    m_title = title;
    setAccessibleName(title);
    updateGeometry();
    update();
}

void DropTarget::setHighlighted(bool highlighted)
{
    if (m_isHighlighted == highlighted) {
        return;
    }
    m_isHighlighted = highlighted;
    update();
}

QSize DropTarget::sizeHint() const
{
    const int titleWidth = fontMetrics().horizontalAdvance(m_title) + 2 * Look::Space::small;
    return {std::max(titleWidth, leastWidth), fieldHeight};
}

QSize DropTarget::minimumSizeHint() const
{
    return sizeHint();
}

void DropTarget::paintEvent(QPaintEvent *)
{
    const FieldColors colors = fieldColors(m_isHighlighted);
    QPainter painter(this);
    Look::paintBox(painter, rect(),
                   {.fill = colors.fill,
                    .line = colors.line,
                    .lineWidth = Look::hairlineWidth,
                    .radius = Look::Radius::card});
    const int side = Look::SymbolSize::large;
    painter.drawPixmap((width() - side) / 2, symbolTop,
                       Look::symbolPixmap(m_symbolName, colors.content, side, devicePixelRatio()));
    painter.setPen(colors.content);
    painter.drawText(rect().adjusted(0, 0, 0, -titleBottom), Qt::AlignHCenter | Qt::AlignBottom,
                     m_title);
}
