// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Look/Type.h"

#include <QStringList>

using namespace Qt::StringLiterals;

int Look::pixelSize(TextSize size)
{
    switch (size) {
    case TextSize::caption:
        return 11;
    case TextSize::body:
        return 13;
    case TextSize::headline:
        return 15;
    case TextSize::title:
        return 17;
    case TextSize::large:
        return 22;
    }
    Q_UNREACHABLE();
}

QFont Look::font(TextSize size, QFont::Weight weight)
{
    QFont font;
    font.setFamilies({u"Inter"_s, u"Noto Sans"_s, u"Noto Sans CJK SC"_s, u"sans-serif"_s});
    font.setPixelSize(pixelSize(size));
    font.setWeight(weight);
    return font;
}
