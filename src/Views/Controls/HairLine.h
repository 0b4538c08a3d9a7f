// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QWidget>

/// The thin line between two regions.
class HairLine : public QWidget
{
    Q_OBJECT

public:
    explicit HairLine(Qt::Orientation orientation, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
