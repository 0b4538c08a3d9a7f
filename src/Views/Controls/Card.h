// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Look/Colors.h"

#include <QVBoxLayout>
#include <QWidget>

/// A raised region that holds what belongs together.
class Card : public QWidget
{
    Q_OBJECT

public:
    explicit Card(QWidget *parent = nullptr);

    /// Where the contents go, top to bottom.
    QVBoxLayout *column() { return m_column; }
    /// What it is filled with: the colour of cards, unless it is the ground of others.
    void setFill(Look::ColorRole fill);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QVBoxLayout *m_column;
    Look::ColorRole m_fill = Look::ColorRole::card;
};
