// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegToolset.h"
#include "PromiseClips.h"

#include <QString>

/// One film under one limit, run as the program runs it.
namespace PromiseJob {

enum class Path { twoPasses, standIn };

/// `broken` is a finished job over its limit: it must never occur.
enum class Ending { met, missed, broken, fitsAlready, failed };

struct Result {
    Ending ending = Ending::failed;
    /// Bytes on disk over the limit.
    double fill = 0;
    int attempts = 1;
};

/// What both paths share.
struct Pair {
    PromiseClips::Clip clip;
    double limitMB = 0;
    double seconds = 0;
    /// Whether the panel would have warned that it can't be done.
    bool hopeless = false;
};

/// Probes the film. Throws ProbeService::ProbeError.
Pair makePair(const PromiseClips::Clip &clip, double limitMB, const FFmpegToolset &tools);

/// Runs it in a folder of its own, which it makes and removes. Blocks; safe from any thread.
Result run(const Pair &pair, Path path, const FFmpegToolset &tools, const QString &folder);

} // namespace PromiseJob
