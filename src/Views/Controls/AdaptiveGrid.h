// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QLayout>
#include <QList>

#include <memory>
#include <vector>

/// Cells of equal width in as many columns as the width allows, filled row by row. A row is as high
/// as its highest cell.
class AdaptiveGrid : public QLayout
{
    Q_OBJECT

public:
    struct Shape {
        /// No column is narrower, unless it is the only one.
        int leastColumnWidth = 120;
        /// No more columns than that; 0 for any number.
        int mostColumns = 0;
        int spacing = 10;
    };

    explicit AdaptiveGrid(Shape shape, QWidget *parent = nullptr);
    ~AdaptiveGrid() override;

    void addItem(QLayoutItem *item) override;
    int count() const override;
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;
    void invalidate() override;

private:
    std::vector<QLayoutItem *> visibleItems() const;
    int columns(int width) const;
    int place(const QRect &rect, bool move) const;

    Shape m_shape;
    std::vector<std::unique_ptr<QLayoutItem>> m_items;
    // By width. One pass of a window's layout asks for the same height many times, and each answer
    // has all texts broken into lines.
    mutable QHash<int, int> m_heights;
};
