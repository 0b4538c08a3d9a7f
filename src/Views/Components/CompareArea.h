// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

/// Two pictures of one moment in one place: the second lies over the first up to a divider, which
/// is dragged or moved by the arrow keys. A slider to assistive technology.
class CompareArea : public QWidget
{
    Q_OBJECT

public:
    static constexpr double leastDivider = 0.02;
    static constexpr double mostDivider = 0.98;
    static constexpr double dividerStep = 0.02;

    explicit CompareArea(QWidget *parent = nullptr);

    /// With either of them null the area is empty.
    void setPictures(const QImage &before, const QImage &after);
    bool isEmpty() const { return m_before.source.isNull(); }

    /// A fraction of the width.
    double divider() const { return m_divider; }
    /// Kept so far within the edges that the line can still be taken hold of.
    void setDivider(double divider);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void dividerChanged(double divider);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// A picture, and what was last painted of it.
    struct Scaled {
        QImage source;
        QPixmap shown;
    };

    void dragTo(double x);
    static void paintScaled(QPainter &painter, Scaled &picture, QPointF topLeft, QSizeF size);
    void paintBefore(QPainter &painter);
    void paintAfter(QPainter &painter);
    void paintLine(QPainter &painter) const;

    Scaled m_before;
    Scaled m_after;
    double m_divider = 0.5;
};
