// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/CheckBox.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"

#include <QPainter>

using Look::ColorRole;
using namespace Qt::StringLiterals;

namespace {

constexpr int boxSide = 16;
constexpr int boxRadius = 4;
constexpr int ringRoom = 3;
constexpr int tickSide = 12;

int wordsLeft(bool hasSymbol)
{
    const int symbolRoom = hasSymbol ? Look::SymbolSize::normal + Look::Space::tiny + 2 : 0;
    return 2 * ringRoom + boxSide + Look::Space::tiny + symbolRoom;
}

} // namespace

CheckBox::CheckBox(QWidget *parent) : QCheckBox(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void CheckBox::setSymbol(const QString &name)
{
    if (name != m_symbol) {
        m_symbol = name;
        updateGeometry();
        update();
    }
}

void CheckBox::setWords(const QString &words)
{
    if (text() != words) {
        setText(words);
        setAccessibleName(words);
        updateGeometry();
    }
}

QSize CheckBox::sizeHint() const
{
    const int words = fontMetrics().horizontalAdvance(text());
    return {wordsLeft(!m_symbol.isEmpty()) + words + ringRoom, Look::Height::smallControl};
}

void CheckBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect box(ringRoom, (height() - boxSide) / 2, boxSide, boxSide);
    const ColorRole ticked = isEnabled() ? ColorRole::accentFill : ColorRole::disabledText;
    Look::paintBox(painter, box,
                   {.fill = Look::color(isChecked() ? ticked : ColorRole::field),
                    .line = isChecked() ? QColor() : Look::color(ColorRole::outline),
                    .lineWidth = Look::hairlineWidth,
                    .radius = boxRadius});
    const auto put = [&](const QString &name, QPoint place, ColorRole color, int side) {
        painter.drawPixmap(place,
                           Look::symbolPixmap(name, Look::color(color), side, devicePixelRatioF()));
    };
    if (isChecked()) {
        const int inset = (boxSide - tickSide) / 2;
        put(u"checkmark"_s, box.topLeft() + QPoint(inset, inset), ColorRole::onAccent, tickSide);
    }
    const ColorRole ink = isEnabled() ? ColorRole::text : ColorRole::disabledText;
    if (!m_symbol.isEmpty()) {
        const int side = Look::SymbolSize::normal;
        put(m_symbol, {wordsLeft(false), (height() - side) / 2}, ink, side);
    }
    painter.setPen(Look::color(ink));
    painter.drawText(rect().adjusted(wordsLeft(!m_symbol.isEmpty()), 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter, text());
    if (hasFocus()) {
        Look::paintFocusRing(painter, box.adjusted(-ringRoom, -ringRoom, ringRoom, ringRoom),
                             boxRadius + ringRoom);
    }
}
