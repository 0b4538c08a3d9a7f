// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/ChildProcess.h"
#include "Models/JobPlan.h"

#include <QList>
#include <QUrl>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

/// What a plan left behind.
struct ExecutionOutcome {
    QList<QUrl> outputURLs;
    /// Downward re-encodes, 0 to 2. An attempt upward doesn't count.
    int retries = 0;
    /// Measured on disk.
    qint64 outputBytes = 0;

    bool operator==(const ExecutionOutcome &) const = default;
};

/// Runs one plan and keeps its size promise: it measures the real bytes, encodes again at a lower
/// bitrate when they are over the limit, and tries once at a higher one when they are far below.
/// One executor serves one job and is thrown away.
class PlanExecutor
{
public:
    /// Takes the fraction done, 0 to 1, in steps of half a percent. Called on the thread that runs
    /// execute(). A retry begins again at 0.
    using OnProgress = std::function<void(double fraction)>;

    explicit PlanExecutor(QUrl ffmpegURL);

    /// Blocks until the plan is done: call it off the main thread. Throws ExecutorError when the
    /// limit can't be kept (the file stays), EngineError when ffmpeg fails or cancel() came between
    /// two steps, FileError when a prep file can't be written. Temporary files are gone afterwards;
    /// a partial output stays.
    ExecutionOutcome execute(const JobPlan &plan, const OnProgress &onProgress);

    /// Ends the running step, which then fails like any other, and keeps further ones from
    /// starting. From any thread, at any time, any number of times; returns at once.
    void cancel();

private:
    struct KeptResult;

    void runOnce(const JobPlan &plan, const OnProgress &onProgress);
    void runStep(const FFmpegStep &step, double base, double span, const OnProgress &onProgress);
    void runOrCleanUp(const JobPlan &plan, const OnProgress &onProgress);
    KeptResult runUnderLimit(const JobPlan &plan, const OnProgress &onProgress);
    std::optional<qint64> runUpward(const KeptResult &kept, const OnProgress &onProgress);
    std::optional<qint64> judgeUpward(const KeptResult &kept, qint64 nextKbps,
                                      const OnProgress &onProgress);
    bool isCancelled();
    void remember(std::shared_ptr<ChildProcess> process);

    const QUrl m_ffmpegURL;
    // Guards the two fields below, and is never held across a call.
    std::mutex m_lock;
    bool m_cancelled = false;
    // The latest child started; not cleared when a step ends.
    std::shared_ptr<ChildProcess> m_currentProcess;
};
