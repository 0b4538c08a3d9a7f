// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/BadgeChip.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Theme.h"
#include "Views/Look/Type.h"

#include <QFontMetrics>
#include <QPainter>

BadgeChip::BadgeChip(Look::ColorRole color, QWidget *parent) : QWidget(parent), m_color(color)
{
    setFont(Look::font(Look::TextSize::caption, QFont::Medium));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void BadgeChip::setText(const QString &text)
{
    if (text != m_text) {
        m_text = text;
        setAccessibleName(text);
        updateGeometry();
        update();
    }
}

QSize BadgeChip::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(m_text) + 2 * Look::Space::small, Look::Height::chip};
}

void BadgeChip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor capsule = Look::color(m_color);
    capsule.setAlphaF(static_cast<float>(Look::chipOpacity));
    Look::paintBox(painter, rect(), {.fill = capsule, .line = {}, .radius = height() / 2.0});
    painter.setPen(Look::color(m_color));
    painter.drawText(rect(), Qt::AlignCenter, m_text);
}
