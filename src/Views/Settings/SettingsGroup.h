// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Controls/Card.h"

/// A card of rows with a hairline between each two that are in sight.
class SettingsGroup : public Card
{
    Q_OBJECT

public:
    explicit SettingsGroup(QWidget *parent = nullptr);

    /// Behind the rows that are there.
    void addRow(QWidget *row);
    /// Puts a row, a new one or one that is there, in that place of the card.
    void placeRow(int index, QWidget *row);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
};
