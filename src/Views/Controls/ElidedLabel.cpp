// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/ElidedLabel.h"

#include "Views/Controls/EvenDigits.h"
#include "Views/Look/Theme.h"

#include <QHelpEvent>
#include <QPainter>
#include <QTextDocument> // Qt::convertFromPlainText
#include <QToolTip>

#include <algorithm>

using Look::ColorRole;

namespace {

constexpr int leastWidth = 24;

} // namespace

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, Look::TextSize size, Look::ColorRole color,
                         QFont::Weight weight, QWidget *parent)
    : QWidget(parent)
    , m_mode(mode)
    , m_color(color)
{
    setFont(Look::font(size, weight));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString &text)
{
    if (text != m_text) {
        m_text = text;
        setAccessibleName(text);
        updateGeometry();
        update();
    }
}

void ElidedLabel::setColorRole(ColorRole color)
{
    if (color != m_color) {
        m_color = color;
        update();
    }
}

void ElidedLabel::setEvenDigits(bool even)
{
    m_evenDigits = even;
}

QSize ElidedLabel::sizeHint() const
{
    const int width = m_evenDigits ? EvenDigits::width(fontMetrics(), m_text)
                                   : fontMetrics().horizontalAdvance(m_text);
    return {width + 1, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    const QSize whole = sizeHint();
    return m_mode == Qt::ElideNone ? whole
                                   : QSize(std::min(leastWidth, whole.width()), whole.height());
}

bool ElidedLabel::isCut() const
{
    return sizeHint().width() - 1 > width();
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(Look::color(isEnabled() ? m_color : ColorRole::disabledText));
    const QString line = isCut() ? fontMetrics().elidedText(m_text, m_mode, width()) : m_text;
    const int baseline = (height() - fontMetrics().height()) / 2 + fontMetrics().ascent();
    if (m_evenDigits) {
        EvenDigits::draw(painter, {0, baseline}, line);
    } else {
        painter.drawText(0, baseline, line);
    }
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && isCut() && toolTip().isEmpty()) {
        // A tooltip reads what looks like markup as such.
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                           Qt::convertFromPlainText(m_text, Qt::WhiteSpaceNormal), this);
        return true;
    }
    return QWidget::event(event);
}
