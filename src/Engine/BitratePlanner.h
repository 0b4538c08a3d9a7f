// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QtGlobal>

#include <optional>

/// Turns a size in megabytes into a video bitrate. Pure; builders, estimates and previews all run
/// the same sums and must get the same numbers.
namespace BitratePlanner {

/// Kilobits in a megabyte of the size that is aimed at. Beside the decimal limit on purpose: with
/// the margin below it aims at 97.3 percent of the limit.
constexpr double kilobitsPerMegabyte = 8192.0;

/// The share of those kilobits that is planned with, 0 to 1; the rest is for the container and for
/// encoders that overshoot.
constexpr double safetyMargin = 0.95;

/// What the panel warns of before the job is queued.
enum class Warning { lowBitrate, floorReached, hopeless };

struct Plan {
    /// The limit, on a decimal megabyte.
    qint64 targetBytes = 0;
    /// The duration used in the sums, never below 0.1.
    double durationSeconds = 0;
    /// After the floor, never below 64.
    qint64 videoBitrateKbps = 0;
    /// 0, 64 or 128.
    qint64 audioBitrateKbps = 0;
    /// 1080, 720 or 480 pixels; absent means no cap.
    std::optional<qint64> maxHeight;
    qint64 estimatedBytes = 0;
    QList<Warning> warnings;

    bool operator==(const Plan &) const = default;
};

/// What the plan is reckoned from.
struct Request {
    /// Decimal megabytes, finite and in range: callers validate it.
    double targetMB = 0;
    /// The length to encode, skips taken off.
    double durationSeconds = 0;
    /// Whether the source has an audio track.
    bool hasAudio = false;
    bool muted = false;
    /// The picture's width after cropping; absent when unknown.
    std::optional<qint64> width;
};

/// A hopeless target gives a plan too, at the floor.
Plan plan(const Request &request);

} // namespace BitratePlanner
