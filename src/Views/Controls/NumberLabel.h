// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Controls/ElidedLabel.h"

/// A number with its unit that changes in place: digits of even width, never cut.
class NumberLabel : public ElidedLabel
{
    Q_OBJECT

public:
    explicit NumberLabel(Look::TextSize size = Look::TextSize::body,
                         Look::ColorRole color = Look::ColorRole::text,
                         QFont::Weight weight = QFont::Normal, QWidget *parent = nullptr)
        : ElidedLabel(Qt::ElideNone, size, color, weight, parent)
    {
        setEvenDigits(true);
    }
};
