// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Look/Colors.h"
#include "Views/Look/Type.h"

#include <QWidget>

/// One line that is cut when it is too long for its place; the whole then stands in the tooltip.
class ElidedLabel : public QWidget
{
    Q_OBJECT

public:
    explicit ElidedLabel(Qt::TextElideMode mode, Look::TextSize size = Look::TextSize::body,
                         Look::ColorRole color = Look::ColorRole::text,
                         QFont::Weight weight = QFont::Normal, QWidget *parent = nullptr);

    const QString &text() const { return m_text; }
    void setText(const QString &text);
    void setColorRole(Look::ColorRole color);
    /// Draws all digits equally wide, for numbers that change in place.
    void setEvenDigits(bool even);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    bool isCut() const;

    Qt::TextElideMode m_mode;
    Look::ColorRole m_color;
    QString m_text;
    bool m_evenDigits = false;
};
