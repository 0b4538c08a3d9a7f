// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/ProgressBar.h"

#include "Views/Look/Painting.h"
#include "Views/Look/Theme.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int thickness = 6;

} // namespace

ProgressBar::ProgressBar(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ProgressBar::setValue(double value)
{
    if (value != m_value) {
        m_value = value;
        update();
    }
}

QSize ProgressBar::sizeHint() const
{
    return {160, thickness};
}

QSize ProgressBar::minimumSizeHint() const
{
    return {40, thickness};
}

void ProgressBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bar(0, (height() - thickness) / 2.0, width(), thickness);
    QPainterPath capsule;
    capsule.addRoundedRect(bar, thickness / 2.0, thickness / 2.0);
    painter.setClipPath(capsule);
    painter.fillRect(bar, Look::color(Look::ColorRole::track));
    QRectF done = bar;
    done.setWidth(bar.width() * std::clamp(m_value, 0.0, 1.0));
    Look::paintBox(
        painter, done,
        {.fill = Look::color(Look::ColorRole::accentFill), .line = {}, .radius = thickness / 2.0});
}
