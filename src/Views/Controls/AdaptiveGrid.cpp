// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/AdaptiveGrid.h"

#include <QWidget>

#include <algorithm>

namespace {

/// Text that wraps guesses its height until it knows its width.
int heightOf(const QLayoutItem &item, int width)
{
    return item.hasHeightForWidth() ? item.heightForWidth(width) : item.sizeHint().height();
}

} // namespace

AdaptiveGrid::AdaptiveGrid(Shape shape, QWidget *parent) : QLayout(parent), m_shape(shape)
{
    setContentsMargins(0, 0, 0, 0);
}

AdaptiveGrid::~AdaptiveGrid() = default;

void AdaptiveGrid::addItem(QLayoutItem *item)
{
    m_items.emplace_back(item);
}

int AdaptiveGrid::count() const
{
    return static_cast<int>(m_items.size());
}

QLayoutItem *AdaptiveGrid::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items.at(static_cast<std::size_t>(index)).get()
                                         : nullptr;
}

QLayoutItem *AdaptiveGrid::takeAt(int index)
{
    if (!itemAt(index)) {
        return nullptr;
    }
    QLayoutItem *item = m_items.at(static_cast<std::size_t>(index)).release();
    m_items.erase(m_items.begin() + index);
    return item;
}

std::vector<QLayoutItem *> AdaptiveGrid::visibleItems() const
{
    std::vector<QLayoutItem *> items;
    for (const auto &item : m_items) {
        if (!item->isEmpty()) {
            items.push_back(item.get());
        }
    }
    return items;
}

int AdaptiveGrid::columns(int width) const
{
    const int room = (width + m_shape.spacing) / (m_shape.leastColumnWidth + m_shape.spacing);
    const int most = m_shape.mostColumns > 0 ? m_shape.mostColumns
                                             : std::max(1, static_cast<int>(visibleItems().size()));
    return std::clamp(room, 1, most);
}

int AdaptiveGrid::place(const QRect &rect, bool move) const
{
    const std::vector<QLayoutItem *> items = visibleItems();
    const int across = columns(rect.width());
    const int step = rect.width() + m_shape.spacing;
    int top = rect.top();
    for (std::size_t first = 0; first < items.size(); first += static_cast<std::size_t>(across)) {
        const std::size_t end = std::min(items.size(), first + static_cast<std::size_t>(across));
        const auto cellLeft = [&](std::size_t column) {
            return rect.left() + step * static_cast<int>(column) / across;
        };
        const auto cellWidth = [&](std::size_t column) {
            return cellLeft(column + 1) - cellLeft(column) - m_shape.spacing;
        };
        int height = 0;
        for (std::size_t i = first; i < end; ++i) {
            const int width = cellWidth(i - first);
            height = std::max(height, heightOf(*items[i], width));
        }
        for (std::size_t i = first; move && i < end; ++i) {
            items[i]->setGeometry({cellLeft(i - first), top, cellWidth(i - first), height});
        }
        top += height + m_shape.spacing;
    }
    return items.empty() ? 0 : top - m_shape.spacing - rect.top();
}

int AdaptiveGrid::heightForWidth(int width) const
{
    const auto known = m_heights.constFind(width);
    return known != m_heights.cend() ? *known
                                     : *m_heights.insert(width, place({0, 0, width, 0}, false));
}

QSize AdaptiveGrid::sizeHint() const
{
    const int across = m_shape.mostColumns > 0 ? m_shape.mostColumns : 4;
    const int width = across * (m_shape.leastColumnWidth + m_shape.spacing) - m_shape.spacing;
    return {width, heightForWidth(width)};
}

QSize AdaptiveGrid::minimumSize() const
{
    int height = 0;
    for (const QLayoutItem *item : visibleItems()) {
        height = std::max(height, item->minimumSize().height());
    }
    return {m_shape.leastColumnWidth, height};
}

void AdaptiveGrid::invalidate()
{
    m_heights.clear();
    QLayout::invalidate();
}

void AdaptiveGrid::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    place(rect, true);
}
