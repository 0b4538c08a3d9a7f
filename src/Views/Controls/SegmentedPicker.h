// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QStringList>
#include <QWidget>

/// One of a few choices side by side, all of them in sight. The arrow keys, Home and End move.
class SegmentedPicker : public QWidget
{
    Q_OBJECT

public:
    explicit SegmentedPicker(QWidget *parent = nullptr);

    /// The words of the choices, in order.
    void setItems(const QStringList &items);
    const QStringList &items() const { return m_items; }

    int currentIndex() const { return m_current; }
    /// Shows a choice without telling anyone.
    void setCurrentIndex(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    QRect segmentRect(int index) const;

Q_SIGNALS:
    /// The person picked another one.
    void picked(int index);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    int indexAt(QPoint position) const;
    void pick(int index);
    int widestItem() const;
    void paintSegment(QPainter &painter, int index) const;
    void describe();

    QStringList m_items;
    int m_current = 0;
    int m_hovered = -1;
};
