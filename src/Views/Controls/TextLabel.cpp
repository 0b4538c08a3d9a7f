// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/TextLabel.h"

#include <QStyle>

namespace {

constexpr char colorProperty[] = "colorRole";
// A window that is resized asks for a new one with each step.
constexpr int mostHeights = 64;

} // namespace

TextLabel::TextLabel(Look::TextSize size, Look::ColorRole color, QFont::Weight weight,
                     QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setFont(Look::font(size, weight));
    setProperty(colorProperty, static_cast<int>(color));
}

void TextLabel::setColorRole(Look::ColorRole color)
{
    if (property(colorProperty).toInt() == static_cast<int>(color)) {
        return;
    }
    setProperty(colorProperty, static_cast<int>(color));
    // The stylesheet looks at properties only while it polishes.
    style()->unpolish(this);
    style()->polish(this);
}

int TextLabel::heightForWidth(int width) const
{
    const Measured now{text(), font(), contentsMargins()};
    if (m_measured != now || m_heights.size() == mostHeights) {
        m_measured = now;
        m_heights.clear();
    }
    const auto known = m_heights.constFind(width);
    return known != m_heights.cend() ? *known
                                     : *m_heights.insert(width, QLabel::heightForWidth(width));
}

TextLabel *TextLabel::wrapping()
{
    setWordWrap(true);
    return this;
}
