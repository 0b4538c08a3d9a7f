// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

/// The text without the spaces and tabs at both ends. Line breaks are no blanks here: they stay.
inline QStringView trimmedOfBlanks(QStringView text)
{
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    while (!text.isEmpty() && isBlank(text.front())) {
        text = text.sliced(1);
    }
    while (!text.isEmpty() && isBlank(text.back())) {
        text.chop(1);
    }
    return text;
}
