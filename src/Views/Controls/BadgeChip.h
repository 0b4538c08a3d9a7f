// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Look/Colors.h"

#include <QWidget>

/// A short fact on a capsule of its own colour.
class BadgeChip : public QWidget
{
    Q_OBJECT

public:
    explicit BadgeChip(Look::ColorRole color, QWidget *parent = nullptr);

    const QString &text() const { return m_text; }
    void setText(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
    Look::ColorRole m_color;
};
