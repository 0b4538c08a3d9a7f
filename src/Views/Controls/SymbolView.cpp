// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/SymbolView.h"

#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"

#include <QPainter>

using Look::ColorRole;

SymbolView::SymbolView(const QString &symbol, int side, ColorRole color, int box, QWidget *parent)
    : QWidget(parent)
    , m_symbol(symbol)
    , m_side(side)
    , m_color(color)
{
    const int room = box > 0 ? box : side;
    setFixedSize(room, room);
}

void SymbolView::setSymbol(const QString &name)
{
    if (name != m_symbol) {
        m_symbol = name;
        update();
    }
}

void SymbolView::setColorRole(ColorRole color)
{
    if (color != m_color) {
        m_color = color;
        update();
    }
}

void SymbolView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QColor ink = Look::color(isEnabled() ? m_color : ColorRole::disabledText);
    painter.drawPixmap((width() - m_side) / 2, (height() - m_side) / 2,
                       Look::symbolPixmap(m_symbol, ink, m_side, devicePixelRatioF()));
}
