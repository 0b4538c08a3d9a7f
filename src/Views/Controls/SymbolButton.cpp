// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/SymbolButton.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Symbols.h"

#include <QKeyEvent>
#include <QMenu>

SymbolButton::SymbolButton(const QString &symbol, QWidget *parent) : QToolButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setPopupMode(QToolButton::InstantPopup);
    setSymbolSide(Look::SymbolSize::normal);
    setSymbol(symbol);
}

void SymbolButton::setSymbol(const QString &name, Look::ColorRole color)
{
    if (name == m_symbol && color == m_color) {
        return;
    }
    m_symbol = name;
    m_color = color;
    setIcon(Look::symbol(name, color));
}

void SymbolButton::setWords(const QString &words)
{
    if (toolTip() != words) {
        setToolTip(words);
        setAccessibleName(words);
    }
}

void SymbolButton::setSymbolSide(int side)
{
    setIconSize({side, side});
}

void SymbolButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QToolButton::keyPressEvent(event);
}

void SymbolButton::hideEvent(QHideEvent *event)
{
    if (menu()) {
        menu()->close();
    }
    QToolButton::hideEvent(event);
}
