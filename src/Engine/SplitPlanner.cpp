// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/SplitPlanner.h"

#include "Engine/BitratePlanner.h"

#include <algorithm>
#include <optional>

namespace {

// The sum by which the size of an encode is planned, so that a part of 25 MB means the same size
// in both actions.
using BitratePlanner::kilobitsPerMegabyte;
using BitratePlanner::safetyMargin;

constexpr double shortestFile = 0.2;
constexpr double shortestPart = 1.0;
// A wanted number of parts may go below the shortest part of the other measures.
constexpr double shortestCountedPart = 0.5;
// Less than this at the end isn't worth a part of its own.
constexpr double negligibleRest = 0.05;

// More are a slip of the keyboard, or a file that lies about its length.
constexpr double mostParts = 1'000'000;

std::optional<double> partSeconds(double duration, qint64 totalKbps, const SplitParams &params)
{
    switch (params.mode) {
    case SplitParams::Mode::bySize:
        if (totalKbps < 1) {
            return std::nullopt;
        }
        return std::max((params.sizePerPartMB * kilobitsPerMegabyte * safetyMargin) /
                            static_cast<double>(totalKbps),
                        shortestPart);
    case SplitParams::Mode::byDuration:
        return std::max(params.durationPerPartSeconds, shortestPart);
    case SplitParams::Mode::byParts:
        return std::max(duration / static_cast<double>(std::max<qint64>(params.parts, 1)),
                        shortestCountedPart);
    }
    Q_UNREACHABLE();
}

TrimSegment segment(double start, double end)
{
    TrimSegment part;
    part.start = start;
    part.end = end;
    return part;
}

} // namespace

QList<TrimSegment> SplitPlanner::segments(double duration, qint64 totalKbps,
                                          const SplitParams &params)
{
    if (!(duration > shortestFile)) {
        return {};
    }
    const std::optional<double> length = partSeconds(duration, totalKbps, params);
    if (!length || !(duration / *length <= mostParts)) {
        return {};
    }
    QList<TrimSegment> parts;
    double end = 0;
    do {
        const double start = end;
        end = std::min(start + *length, duration);
        parts += segment(start, end);
    } while (end < duration - negligibleRest);
    return parts;
}
