// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/EncoderStandIns.h"
#include "Engine/FFmpegToolset.h"

#include <memory>
#include <mutex>
#include <optional>

class PlanExecutor;

/// Finds out which hardware encoders truly work on this machine, by encoding a few frames with the
/// arguments that jobs would use. Until that is known, and whenever it fails, software stands in.
class HardwareEncoders
{
public:
    explicit HardwareEncoders(FFmpegToolset toolset);
    ~HardwareEncoders();

    /// Tries NVENC, then QSV, then VAAPI, for each name that the build lacks, and what works once
    /// more with frames of ten bits: where those fail, lines that ask for them stay with software.
    /// Blocks for as long as the tries take. Run it once, off the main thread.
    void check();

    /// Ends a check that is under way; it leaves what it has found so far. A try that is just being
    /// launched hears nothing yet: ask again until check() has returned. From any thread.
    void cancel();

    /// The stand-ins as known at this moment. From any thread.
    EncoderStandIns::Table standIns();

    enum class Depth { eightBits, tenBits };

    /// The command line of the try of one stand-in for a name.
    static QStringList trialArgs(const QString &plannedName, const StandIn &standIn, Depth depth);

private:
    bool works(const QString &plannedName, const StandIn &standIn, Depth depth);
    std::optional<StandIn> firstThatWorks(const QString &plannedName, QLatin1StringView family);
    bool begin(const std::shared_ptr<PlanExecutor> &trial);

    const FFmpegToolset m_toolset;
    // Guards the three fields below.
    std::mutex m_lock;
    EncoderStandIns::Table m_standIns;
    std::shared_ptr<PlanExecutor> m_trial;
    bool m_cancelled = false;
};
