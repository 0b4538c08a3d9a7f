// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Player/Scrubber.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>

#include <algorithm>
#include <limits>

namespace {

constexpr double millisecondsPerSecond = 1000;

int millisecondsOf(double seconds)
{
    constexpr double most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(seconds * millisecondsPerSecond, 0.0, most));
}

} // namespace

Scrubber::Scrubber(QWidget *parent) : QSlider(Qt::Horizontal, parent)
{
    setSingleStep(1'000);
    setPageStep(10'000);
    setDuration(0);
    connect(this, &QSlider::valueChanged, this, &Scrubber::tell);
}

void Scrubber::setDuration(double seconds)
{
    const QSignalBlocker silence(this);
    setRange(0, millisecondsOf(seconds));
    setEnabled(seconds > 0);
}

void Scrubber::showPosition(double seconds)
{
    if (!isSliderDown()) {
        const QSignalBlocker silence(this);
        setValue(millisecondsOf(seconds));
    }
}

void Scrubber::tell(int milliseconds)
{
    const double seconds = milliseconds / millisecondsPerSecond;
    if (isSliderDown()) {
        Q_EMIT passed(seconds);
    } else {
        Q_EMIT settled(seconds);
    }
}

// The middle of the handle comes under the pointer.
void Scrubber::dragTo(int x)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const int handle = style()->pixelMetric(QStyle::PM_SliderLength, &option, this);
    const int span = std::max(width() - handle, 1);
    setSliderPosition(QStyle::sliderValueFromPosition(minimum(), maximum(), x - handle / 2, span));
}

void Scrubber::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setSliderDown(true);
    dragTo(event->pos().x());
}

void Scrubber::mouseMoveEvent(QMouseEvent *event)
{
    if (isSliderDown()) {
        dragTo(event->pos().x());
    }
}

void Scrubber::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && isSliderDown()) {
        setSliderDown(false);
        tell(value());
    }
}

// Space belongs to playing, wherever the focus is in the view.
void Scrubber::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space) {
        event->ignore();
        return;
    }
    QSlider::keyPressEvent(event);
}

// Turning the wheel over it scrolls the panel.
void Scrubber::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}
