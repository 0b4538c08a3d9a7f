// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/CompareArea.h"

#include "Views/Components/CompareAccessible.h"
#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

using Look::ColorRole;

namespace {

constexpr int areaHeight = 180;
// Of an area without pictures: as of a film of the usual shape.
constexpr int emptyWidth = 320;
constexpr int lineWidth = 2;
constexpr int shadowReach = 5;
constexpr int shadowDepth = 26;

} // namespace

CompareArea::CompareArea(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setCursor(Qt::SplitHCursor);
    installCompareAccessible();
}

void CompareArea::setPictures(const QImage &before, const QImage &after)
{
    const bool isWhole = !before.isNull() && !after.isNull();
    m_before = {isWhole ? before : QImage(), {}};
    m_after = {isWhole ? after : QImage(), {}};
    updateGeometry();
    update();
}

void CompareArea::setDivider(double divider)
{
    const double held = std::clamp(divider, leastDivider, mostDivider);
    if (held != m_divider) {
        m_divider = held;
        update();
        tellAssistants(*this);
        Q_EMIT dividerChanged(m_divider);
    }
}

/// As wide as the picture at that height, so that both pictures lie exactly on each other.
QSize CompareArea::sizeHint() const
{
    if (isEmpty()) {
        return {emptyWidth, areaHeight};
    }
    const QSizeF picture = m_before.source.size();
    return {static_cast<int>(std::lround(areaHeight * picture.width() / picture.height())),
            areaHeight};
}

QSize CompareArea::minimumSizeHint() const
{
    return {std::min(emptyWidth, sizeHint().width()), areaHeight};
}

void CompareArea::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        dragTo(event->position().x());
    }
}

void CompareArea::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton) {
        dragTo(event->position().x());
    }
}

void CompareArea::dragTo(double x)
{
    if (width() > 1) {
        setDivider(x / width());
    }
}

void CompareArea::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
        return setDivider(m_divider - dividerStep);
    case Qt::Key_Right:
    case Qt::Key_Up:
        return setDivider(m_divider + dividerStep);
    case Qt::Key_Home:
        return setDivider(leastDivider);
    case Qt::Key_End:
        return setDivider(mostDivider);
    default:
        QWidget::keyPressEvent(event);
    }
}

void CompareArea::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(rect(), Look::Radius::card, Look::Radius::card);
    painter.save();
    painter.setClipPath(outline);
    painter.fillRect(rect(), Look::color(ColorRole::track));
    if (!isEmpty()) {
        paintBefore(painter);
        paintAfter(painter);
        paintLine(painter);
    }
    painter.restore();
    if (hasFocus()) {
        Look::paintFocusRing(painter, rect(), Look::Radius::card);
    }
}

/// Scaling smoothly is slow for large films, so it is done once for each size and not at each step
/// of a drag.
void CompareArea::paintScaled(QPainter &painter, Scaled &picture, QPointF topLeft, QSizeF size)
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QSize pixels = (size * ratio).toSize().expandedTo({1, 1});
    if (picture.shown.size() != pixels) {
        picture.shown = QPixmap::fromImage(
            picture.source.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        picture.shown.setDevicePixelRatio(ratio);
    }
    painter.drawPixmap(topLeft, picture.shown);
}

/// Fitted to the area.
void CompareArea::paintBefore(QPainter &painter)
{
    const QSizeF fitted =
        QSizeF(m_before.source.size()).scaled(QSizeF(size()), Qt::KeepAspectRatio);
    const QPointF topLeft((width() - fitted.width()) / 2, (height() - fitted.height()) / 2);
    paintScaled(painter, m_before, topLeft, fitted);
}

/// Fills the box up to the divider, held at the leading edge.
void CompareArea::paintAfter(QPainter &painter)
{
    const QSizeF box(width() * m_divider, height());
    const QSizeF filling =
        QSizeF(m_after.source.size()).scaled(box, Qt::KeepAspectRatioByExpanding);
    painter.save();
    painter.setClipRect(QRectF({0, 0}, box), Qt::IntersectClip);
    paintScaled(painter, m_after, {0, (height() - filling.height()) / 2}, filling);
    painter.restore();
}

void CompareArea::paintLine(QPainter &painter) const
{
    const double x = width() * m_divider;
    const auto paintColumn = [&](double halfWidth, const QColor &color) {
        painter.fillRect(QRectF(x - halfWidth, 0, 2 * halfWidth, height()), color);
    };
    for (int reach = shadowReach; reach > 0; --reach) {
        paintColumn(lineWidth / 2.0 + reach, QColor(0, 0, 0, shadowDepth));
    }
    paintColumn(lineWidth / 2.0, Qt::white);
}
