// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Look/Colors.h"
#include "Views/Look/Type.h"

#include <QHash>
#include <QLabel>
#include <QMargins>

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

    int heightForWidth(int width) const override;

private:
    /// What heights were measured for.
    struct Measured {
        QString text;
        QFont font;
        QMargins margins;

        bool operator==(const Measured &) const = default;
    };

    // Layouts ask for the height of the same few widths ten times over before they settle, and each
    // answer has the text shaped and broken anew.
    mutable Measured m_measured;
    mutable QHash<int, int> m_heights;
};
