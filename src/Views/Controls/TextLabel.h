// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Look/Colors.h"
#include "Views/Look/Type.h"

#include <QLabel>

/// Plain words in one of the sizes and one of the colours of the look; both follow the scheme.
class TextLabel : public QLabel
{
    Q_OBJECT

public:
    explicit TextLabel(Look::TextSize size = Look::TextSize::body,
                       Look::ColorRole color = Look::ColorRole::text,
                       QFont::Weight weight = QFont::Normal, QWidget *parent = nullptr);

    void setColorRole(Look::ColorRole color);
    /// Breaks into lines where the width ends.
    TextLabel *wrapping();
};
