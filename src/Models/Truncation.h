// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

#include <cmath>
#include <limits>

/// The whole part. Parameters out of a file may be any number, and the language leaves open what
/// becomes of one that doesn't fit: here it is the nearest that does, and 0 for what is none.
inline qint64 truncated(double value)
{
    constexpr double tooMuch = 9223372036854775808.0;
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= tooMuch) {
        return std::numeric_limits<qint64>::max();
    }
    return value >= -tooMuch ? static_cast<qint64>(value) : std::numeric_limits<qint64>::min();
}
