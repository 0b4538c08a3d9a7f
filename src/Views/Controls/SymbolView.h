// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Look/Colors.h"

#include <QWidget>

/// A symbol that is only looked at.
class SymbolView : public QWidget
{
    Q_OBJECT

public:
    /// `side` is that of the symbol, `box` that of the square in whose middle it stands (0 for the
    /// same), in device-independent pixels.
    explicit SymbolView(const QString &symbol, int side, Look::ColorRole color, int box = 0,
                        QWidget *parent = nullptr);

    void setSymbol(const QString &name);
    void setColorRole(Look::ColorRole color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    int m_side;
    Look::ColorRole m_color;
};
