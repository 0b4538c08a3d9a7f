// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/EncoderStandIns.h"
#include "Engine/FFmpegToolset.h"

#include <memory>
#include <mutex>

class PlanExecutor;

/// Finds out which hardware encoders truly work on this machine, by encoding a few frames with the
/// arguments that jobs would use. Until that is known, and whenever it fails, software stands in.
class HardwareEncoders
{
public:
    explicit HardwareEncoders(FFmpegToolset toolset);
    ~HardwareEncoders();

    /// Tries NVENC, then QSV, then VAAPI, for each name that the build lacks; blocks for as long as
    /// the tries take. Run it once, off the main thread.
    void check();

    /// Ends a check that is under way; it leaves what it has found so far. A try that is just being
    /// launched hears nothing yet: ask again until check() has returned. From any thread.
    void cancel();

    /// The stand-ins as known at this moment. From any thread.
    EncoderStandIns::Table standIns();

    /// The command line of the try of one stand-in for a name.
    static QStringList trialArgs(const QString &plannedName, const StandIn &standIn);

private:
    bool works(const QString &plannedName, const StandIn &standIn);
    bool begin(const std::shared_ptr<PlanExecutor> &trial);

    const FFmpegToolset m_toolset;
    // Guards the three fields below.
    std::mutex m_lock;
    EncoderStandIns::Table m_standIns;
    std::shared_ptr<PlanExecutor> m_trial;
    bool m_cancelled = false;
};
