// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ProgressLine.h"

#include "Engine/Text.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace {

// In spite of its name, "out_time_ms" carries microseconds too.
constexpr double unitsPerSecond = 1'000'000;

std::optional<double> clockSeconds(QStringView clock)
{
    const QList<QStringView> pieces = clock.split(u':', Qt::SkipEmptyParts);
    if (pieces.size() != 3) {
        return std::nullopt;
    }
    const auto hours = Text::toDouble(pieces.at(0));
    const auto minutes = Text::toDouble(pieces.at(1));
    const auto seconds = Text::toDouble(pieces.at(2));
    if (!hours || !minutes || !seconds) {
        return std::nullopt;
    }
    return *hours * 3600 + *minutes * 60 + *seconds;
}

} // namespace

std::optional<double> ProgressLine::seconds(QStringView line)
{
    constexpr QLatin1StringView microseconds = "out_time_us="_L1;
    constexpr QLatin1StringView milliseconds = "out_time_ms="_L1;
    constexpr QLatin1StringView clock = "out_time="_L1;
    if (line.startsWith(microseconds) || line.startsWith(milliseconds)) {
        const auto value = Text::toDouble(line.sliced(microseconds.size()));
        return value ? std::optional(*value / unitsPerSecond) : std::nullopt;
    }
    return line.startsWith(clock) ? clockSeconds(line.sliced(clock.size())) : std::nullopt;
}
