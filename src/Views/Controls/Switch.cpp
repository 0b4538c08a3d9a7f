// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/Switch.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

using Look::ColorRole;

namespace {

constexpr int trackWidth = 34;
constexpr int trackHeight = 20;
constexpr int knobInset = 2;

} // namespace

Switch::Switch(QWidget *parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void Switch::setSymbol(const QString &name)
{
    m_symbol = name;
    updateGeometry();
    update();
}

void Switch::setWords(const QString &words)
{
    if (text() != words) {
        setText(words);
        setAccessibleName(words);
        updateGeometry();
    }
}

QRect Switch::trackRect() const
{
    return {overhang, (height() - trackHeight) / 2, trackWidth, trackHeight};
}

int Switch::wordsLeft() const
{
    if (text().isEmpty() && m_symbol.isEmpty()) {
        return overhang + trackWidth;
    }
    const int symbolRoom = m_symbol.isEmpty() ? 0 : Look::SymbolSize::normal + Look::Space::small;
    return overhang + trackWidth + Look::Space::small + 2 + symbolRoom;
}

QSize Switch::sizeHint() const
{
    return {wordsLeft() + fontMetrics().horizontalAdvance(text()) + overhang,
            trackHeight + 2 * overhang};
}

QSize Switch::minimumSizeHint() const
{
    return {std::min(sizeHint().width(), 160), trackHeight + 2 * overhang};
}

int Switch::heightForWidth(int width) const
{
    const QRect room(0, 0, std::max(1, width - wordsLeft()), 10'000);
    const int words = fontMetrics().boundingRect(room, Qt::TextWordWrap, text()).height();
    return std::max(trackHeight + 2 * overhang, words + 2);
}

void Switch::paintTrack(QPainter &painter) const
{
    const ColorRole on = isEnabled() ? ColorRole::accentFill : ColorRole::disabledText;
    QColor face = Look::color(isChecked() ? on : ColorRole::track);
    Look::paintBox(painter, trackRect(),
                   {.fill = face,
                    .line = isChecked() ? QColor() : Look::color(ColorRole::outline),
                    .lineWidth = Look::hairlineWidth,
                    .radius = trackHeight / 2.0});
    const int side = trackHeight - 2 * knobInset;
    const int left =
        isChecked() ? trackRect().right() - knobInset - side + 1 : trackRect().left() + knobInset;
    Look::paintBox(painter, QRect(left, trackRect().top() + knobInset, side, side),
                   {.fill = Look::color(isEnabled() ? ColorRole::onAccent : ColorRole::control),
                    .line = isChecked() ? QColor() : Look::color(ColorRole::outline),
                    .lineWidth = Look::hairlineWidth,
                    .radius = side / 2.0});
}

void Switch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintTrack(painter);
    const QColor ink = Look::color(isEnabled() ? ColorRole::text : ColorRole::disabledText);
    if (!m_symbol.isEmpty()) {
        const int side = Look::SymbolSize::normal;
        painter.drawPixmap(wordsLeft() - Look::Space::small - side, (height() - side) / 2,
                           Look::symbolPixmap(m_symbol, ink, side, devicePixelRatioF()));
    }
    painter.setPen(ink);
    painter.drawText(rect().adjusted(wordsLeft(), 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, text());
    if (hasFocus()) {
        Look::paintFocusRing(painter,
                             trackRect().adjusted(-overhang, -overhang, overhang, overhang),
                             trackHeight / 2.0 + overhang);
    }
}

void Switch::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

bool Switch::hitButton(const QPoint &position) const
{
    const int right = wordsLeft() + fontMetrics().horizontalAdvance(text());
    return rect().contains(position) && position.x() <= std::max(right, trackRect().right());
}
