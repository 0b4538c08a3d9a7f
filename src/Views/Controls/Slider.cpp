// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/Slider.h"

#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>

Slider::Slider(Qt::Orientation orientation, QWidget *parent) : QSlider(orientation, parent)
{
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QAbstractSlider::valueChanged, this, &Slider::moved);
}

void Slider::setShown(int value)
{
    if (!isSliderDown()) {
        const QSignalBlocker quiet(this);
        setValue(value);
    }
}

/// With the handle brought under the pointer first, the press takes hold of it.
void Slider::mousePressEvent(QMouseEvent *event)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect handle =
        style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    const QPoint position = event->position().toPoint();
    if (event->button() == Qt::LeftButton && !handle.contains(position)) {
        setValue(valueAt(position));
    }
    QSlider::mousePressEvent(event);
}

void Slider::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

int Slider::valueAt(QPoint position) const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const auto part = [&](QStyle::SubControl control) {
        return style()->subControlRect(QStyle::CC_Slider, &option, control, this);
    };
    const QRect groove = part(QStyle::SC_SliderGroove);
    const QRect handle = part(QStyle::SC_SliderHandle);
    const bool isFlat = orientation() == Qt::Horizontal;
    const int place = isFlat ? position.x() - groove.left() - handle.width() / 2
                             : position.y() - groove.top() - handle.height() / 2;
    const int way = isFlat ? groove.width() - handle.width() : groove.height() - handle.height();
    return QStyle::sliderValueFromPosition(minimum(), maximum(), place, way, option.upsideDown);
}
