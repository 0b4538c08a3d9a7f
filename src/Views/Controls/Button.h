// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Look/Colors.h"

#include <QPushButton>
#include <QString>

/// A button with words. The prominent one is the one next step of a panel; quiet ones have no
/// outline until the pointer is over them.
class Button : public QPushButton
{
    Q_OBJECT

public:
    enum class Kind { prominent, plain, small, quiet, destructive };

    explicit Button(Kind kind = Kind::plain, QWidget *parent = nullptr);

    /// A symbol of Look's table, before the words.
    void setSymbol(const QString &name);
    /// Changes the words only when they differ.
    void setWords(const QString &words);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    int symbolSide() const;
    Look::ColorRole ink() const;

    Kind m_kind;
    QString m_symbol;
};
