// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/SegmentedPicker.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

using Look::ColorRole;
using namespace Qt::StringLiterals;

namespace {

constexpr int inset = 2;
constexpr int leastPadding = 6;

} // namespace

SegmentedPicker::SegmentedPicker(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void SegmentedPicker::setItems(const QStringList &items)
{
    if (items != m_items) {
        m_items = items;
        describe();
        updateGeometry();
        update();
    }
}

void SegmentedPicker::setCurrentIndex(int index)
{
    if (index != m_current) {
        m_current = index;
        describe();
        update();
    }
}

/// Whoever can't see the row hears the choice that is in force.
void SegmentedPicker::describe()
{
    setAccessibleDescription(m_items.value(m_current));
}

int SegmentedPicker::widestItem() const
{
    int widest = 0;
    for (const QString &item : m_items) {
        widest = std::max(widest, fontMetrics().horizontalAdvance(item));
    }
    return widest;
}

QSize SegmentedPicker::sizeHint() const
{
    const int count = static_cast<int>(m_items.size());
    return {count * (widestItem() + 2 * Look::Space::medium) + 2 * inset, Look::Height::control};
}

QSize SegmentedPicker::minimumSizeHint() const
{
    const int count = static_cast<int>(m_items.size());
    return {count * (widestItem() + 2 * leastPadding) + 2 * inset, Look::Height::control};
}

QRect SegmentedPicker::segmentRect(int index) const
{
    const int count = std::max(1, static_cast<int>(m_items.size()));
    const QRect inner = rect().adjusted(inset, inset, -inset, -inset);
    const int left = inner.left() + inner.width() * index / count;
    const int right = inner.left() + inner.width() * (index + 1) / count;
    const QRect segment(left, inner.top(), right - left, inner.height());
    return layoutDirection() == Qt::RightToLeft
               ? QStyle::visualRect(layoutDirection(), rect(), segment)
               : segment;
}

int SegmentedPicker::indexAt(QPoint position) const
{
    for (int i = 0; i < m_items.size(); ++i) {
        if (segmentRect(i).contains(position)) {
            return i;
        }
    }
    return -1;
}

void SegmentedPicker::pick(int index)
{
    if (index >= 0 && index < m_items.size() && index != m_current) {
        setCurrentIndex(index);
        Q_EMIT picked(index);
    }
}

void SegmentedPicker::paintSegment(QPainter &painter, int index) const
{
    const bool chosen = index == m_current;
    if (chosen) {
        Look::paintBox(
            painter, segmentRect(index),
            {.fill = Look::color(Look::scheme() == Look::Scheme::dark ? ColorRole::outline
                                                                      : ColorRole::control),
             .line = Look::color(ColorRole::outline),
             .lineWidth = Look::hairlineWidth,
             .radius = Look::Radius::control - 1});
    } else if (isEnabled() && index == m_hovered) {
        QColor veil = Look::color(ColorRole::text);
        veil.setAlphaF(0.06F);
        Look::paintBox(painter, segmentRect(index),
                       {.fill = veil, .line = {}, .radius = Look::Radius::control - 1});
    }
    QFont face = font();
    face.setWeight(chosen ? QFont::DemiBold : QFont::Normal);
    painter.setFont(face);
    painter.setPen(Look::color(isEnabled() ? ColorRole::text : ColorRole::disabledText));
    const QRect words = segmentRect(index).adjusted(2, 0, -2, 0);
    painter.drawText(
        words, Qt::AlignCenter,
        QFontMetrics(face).elidedText(m_items.at(index), Qt::ElideRight, words.width()));
}

void SegmentedPicker::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QColor trough =
        Look::blended(Look::color(ColorRole::track), 0.6, Look::color(ColorRole::card));
    Look::paintBox(painter, rect(),
                   {.fill = trough, .line = {}, .radius = Look::Radius::control + 1});
    for (int i = 0; i < m_items.size(); ++i) {
        paintSegment(painter, i);
    }
    if (hasFocus()) {
        Look::paintFocusRing(painter, rect(), Look::Radius::control + 1);
    }
}

void SegmentedPicker::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        pick(indexAt(event->position().toPoint()));
    }
}

void SegmentedPicker::mouseMoveEvent(QMouseEvent *event)
{
    const int hovered = indexAt(event->position().toPoint());
    if (hovered != m_hovered) {
        m_hovered = hovered;
        update();
    }
}

void SegmentedPicker::keyPressEvent(QKeyEvent *event)
{
    const int last = static_cast<int>(m_items.size()) - 1;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return pick(std::max(0, m_current - 1));
    case Qt::Key_Right:
    case Qt::Key_Down:
        return pick(std::min(last, m_current + 1));
    case Qt::Key_Home:
        return pick(0);
    case Qt::Key_End:
        return pick(last);
    default:
        QWidget::keyPressEvent(event);
    }
}

bool SegmentedPicker::event(QEvent *event)
{
    if (event->type() == QEvent::Leave) {
        m_hovered = -1;
        update();
    }
    return QWidget::event(event);
}
