// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/Card.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Theme.h"

#include <QPainter>

using Look::ColorRole;

Card::Card(QWidget *parent) : QWidget(parent), m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(Look::Space::medium, Look::Space::medium, Look::Space::medium,
                                 Look::Space::medium);
    m_column->setSpacing(Look::Space::medium);
}

void Card::setFill(ColorRole fill)
{
    m_fill = fill;
    update();
}

void Card::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    Look::paintBox(painter, rect(),
                   {.fill = Look::color(m_fill),
                    .line = Look::color(ColorRole::hairline),
                    .lineWidth = Look::hairlineWidth,
                    .radius = Look::Radius::card});
}
