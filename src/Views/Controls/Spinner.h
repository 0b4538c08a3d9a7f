// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QTimer>
#include <QWidget>

/// Shows that something of unknown length is under way. Turns only while it is visible.
class Spinner : public QWidget
{
    Q_OBJECT

public:
    /// `side` in device-independent pixels.
    explicit Spinner(int side = 16, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QTimer m_timer;
    int m_step = 0;
};
