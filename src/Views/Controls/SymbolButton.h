// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Look/Colors.h"

#include <QString>
#include <QToolButton>

/// A button that shows a symbol alone. What it does stands in its tooltip and its accessible name.
/// When it goes out of sight, a menu of its that is open closes.
class SymbolButton : public QToolButton
{
    Q_OBJECT

public:
    explicit SymbolButton(const QString &symbol, QWidget *parent = nullptr);

    void setSymbol(const QString &name, Look::ColorRole color = Look::ColorRole::text);
    /// The tooltip and the accessible name.
    void setWords(const QString &words);
    /// Side of the symbol in device-independent pixels.
    void setSymbolSide(int side);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QString m_symbol;
    Look::ColorRole m_color = Look::ColorRole::text;
};
