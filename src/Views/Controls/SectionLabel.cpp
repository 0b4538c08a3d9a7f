// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/SectionLabel.h"

SectionLabel::SectionLabel(QWidget *parent)
    : TextLabel(Look::TextSize::caption, Look::ColorRole::secondaryText, QFont::DemiBold, parent)
{
    QFont face = font();
    face.setCapitalization(QFont::AllUppercase);
    face.setLetterSpacing(QFont::AbsoluteSpacing, 0.4);
    setFont(face);
}
