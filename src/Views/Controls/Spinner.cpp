// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/Spinner.h"

#include "Views/Look/Theme.h"

#include <QPainter>

using namespace std::chrono_literals;

namespace {

constexpr int stepsATurn = 24;
constexpr int sixteenthsATurn = 360 * 16;
constexpr auto stepTime = 40ms;

} // namespace

Spinner::Spinner(int side, QWidget *parent) : QWidget(parent)
{
    setFixedSize(side, side);
    m_timer.setInterval(stepTime);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_step = (m_step + 1) % stepsATurn;
        update();
    });
}

void Spinner::showEvent(QShowEvent *)
{
    m_timer.start();
}

void Spinner::hideEvent(QHideEvent *)
{
    m_timer.stop();
}

void Spinner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal width = qMax(1.6, this->width() / 8.0);
    const QRectF circle = QRectF(rect()).adjusted(width, width, -width, -width);
    painter.setPen(QPen(Look::color(Look::ColorRole::track), width));
    painter.drawEllipse(circle);
    painter.setPen(QPen(Look::color(Look::ColorRole::accent), width, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, -m_step * sixteenthsATurn / stepsATurn, sixteenthsATurn / 4);
}
