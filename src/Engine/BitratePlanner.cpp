// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/BitratePlanner.h"

#include "Models/Truncation.h"

namespace {

using BitratePlanner::kilobitsPerMegabyte;
using BitratePlanner::safetyMargin;

constexpr double shortestDuration = 0.1;
constexpr qint64 floorKbps = 64;
constexpr qint64 lowKbps = 160;
constexpr double lowWarningSeconds = 30.0;

qint64 audioKbps(const BitratePlanner::Request &request)
{
    if (!request.hasAudio || request.muted) {
        return 0;
    }
    return request.targetMB >= 50 ? 128 : 64;
}

qint64 rawVideoKbps(double targetMB, double duration, qint64 audio)
{
    return truncated(((targetMB * kilobitsPerMegabyte) * safetyMargin) / duration -
                     static_cast<double>(audio));
}

qint64 bytesOf(double duration, qint64 audioKbps, qint64 videoKbps)
{
    const double kbps = static_cast<double>(audioKbps) + static_cast<double>(videoKbps);
    return truncated(duration * ((kbps * 1000.0) * 0.125));
}

// From the top, first match wins. The bounds are unlike on purpose: 2499 and 699 still cap, 1500
// doesn't.
std::optional<qint64> heightCap(std::optional<qint64> width, qint64 raw)
{
    if (!width) {
        return std::nullopt;
    }
    if (*width >= 1921 && raw <= 2499) {
        return 1080;
    }
    if (*width >= 1281 && raw < 1500) {
        return 720;
    }
    if (*width >= 855 && raw <= 699) {
        return 480;
    }
    return std::nullopt;
}

QList<BitratePlanner::Warning> warningsFor(const BitratePlanner::Plan &plan, qint64 raw)
{
    QList<BitratePlanner::Warning> warnings;
    if (raw < floorKbps) {
        const qint64 smallest = bytesOf(plan.durationSeconds, plan.audioBitrateKbps, floorKbps);
        warnings.append(plan.targetBytes < smallest ? BitratePlanner::Warning::hopeless
                                                    : BitratePlanner::Warning::floorReached);
    }
    if (plan.durationSeconds > lowWarningSeconds && raw <= lowKbps) {
        warnings.append(BitratePlanner::Warning::lowBitrate);
    }
    return warnings;
}

} // namespace

BitratePlanner::Plan BitratePlanner::plan(const Request &request)
{
    Plan plan;
    plan.targetBytes = truncated(request.targetMB * 1'000'000.0);
    plan.durationSeconds =
        request.durationSeconds <= shortestDuration ? shortestDuration : request.durationSeconds;
    plan.audioBitrateKbps = audioKbps(request);

    const qint64 raw = rawVideoKbps(request.targetMB, plan.durationSeconds, plan.audioBitrateKbps);
    plan.videoBitrateKbps = raw < floorKbps ? floorKbps : raw;
    plan.maxHeight = heightCap(request.width, raw);
    plan.estimatedBytes =
        bytesOf(plan.durationSeconds, plan.audioBitrateKbps, plan.videoBitrateKbps);
    plan.warnings = warningsFor(plan, raw);
    return plan;
}
