// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PlanExecutor.h"

#include "Engine/EngineError.h"
#include "Engine/ExecutorError.h"
#include "Engine/FileError.h"
#include "Engine/PlanMeasures.h"
#include "Engine/ProcessRunner.h"
#include "Engine/ProgressLine.h"
#include "Engine/Text.h"
#include "Models/Truncation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>

namespace {

constexpr qint64 lowestKbps = 64;
constexpr double retryFactor = 0.93;
constexpr int mostRetries = 2;
constexpr double progressSteps = 200;
constexpr double smallestDenominator = 0.001;

void createDirectories(const QList<QUrl> &directories)
{
    for (const QUrl &directory : directories) {
        // A failure shows in the step that needs the folder.
        QDir().mkpath(Text::path(directory));
    }
}

void writePrepFiles(const QList<PrepFile> &files)
{
    for (const PrepFile &prep : files) {
        QSaveFile file(Text::path(prep.url));
        const QByteArray content = prep.content.toUtf8();
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
            !file.commit()) {
            throw FileError(prep.url, file.errorString());
        }
    }
}

void removeFile(const QUrl &url)
{
    QFile::remove(Text::path(url));
}

// The temporary directory may be another file system than the output's. A copy that found no room
// for its last bytes is no copy.
bool moveFile(const QString &from, const QString &to)
{
    if (::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0) {
        return true;
    }
    const bool isOtherFileSystem = errno == EXDEV;
    if (!isOtherFileSystem) {
        return false;
    }
    if (!QFile::copy(from, to) || QFileInfo(to).size() != QFileInfo(from).size()) {
        QFile::remove(to);
        return false;
    }
    QFile::remove(from);
    return true;
}

// A temporary folder goes with all that it holds; a link goes alone.
void removeItem(const QUrl &url)
{
    const QString path = Text::path(url);
    const QFileInfo item(path);
    if (item.isDir() && !item.isSymLink()) {
        QDir(path).removeRecursively();
    } else {
        QFile::remove(path);
    }
}

// Never touches a final output.
void cleanupTempFiles(const JobPlan &plan)
{
    QSet<QUrl> files(plan.cleanupURLs.begin(), plan.cleanupURLs.end());
    for (const FFmpegStep &step : plan.steps) {
        if (step.tempOutputURL) {
            files.insert(*step.tempOutputURL);
        }
    }
    for (const QUrl &file : std::as_const(files)) {
        removeItem(file);
    }
}

double totalDuration(const QList<FFmpegStep> &steps)
{
    double total = 0;
    for (const FFmpegStep &step : steps) {
        total += step.progressDuration;
    }
    return total;
}

// A step without a duration counts as done from its first report.
double stepFraction(double seconds, double duration)
{
    return duration > 0 ? std::clamp(seconds / duration, 0.0, 1.0) : 1.0;
}

qint64 retryBitrate(qint64 kbps)
{
    return std::max(lowestKbps, truncated(static_cast<double>(kbps) * retryFactor));
}

// floor(limit × 88 / 100) without an overflow on the way.
qint64 farBelow(qint64 limit)
{
    return limit / 100 * 88 + limit % 100 * 88 / 100;
}

// Going over the limit disqualifies an attempt, however close it comes.
bool isCloser(qint64 newBytes, qint64 bytes, qint64 limit)
{
    return newBytes <= limit && std::abs(limit - newBytes) < std::abs(limit - bytes);
}

} // namespace

/// The pass that kept the limit, with the plan that made it and the bitrate it was made at.
struct PlanExecutor::KeptResult {
    JobPlan plan;
    std::optional<qint64> kbps;
    ExecutionOutcome outcome;
};

PlanExecutor::PlanExecutor(QUrl ffmpegURL) : m_ffmpegURL(std::move(ffmpegURL)) {}

ExecutionOutcome PlanExecutor::execute(const JobPlan &plan, const OnProgress &onProgress)
{
    KeptResult kept = runUnderLimit(plan, onProgress);
    if (kept.plan.targetLimitBytes) {
        if (const std::optional<qint64> closerBytes = runUpward(kept, onProgress)) {
            kept.outcome.outputBytes = *closerBytes;
        }
    }
    cleanupTempFiles(kept.plan);
    return kept.outcome;
}

void PlanExecutor::cancel()
{
    std::shared_ptr<ChildProcess> process;
    {
        const std::scoped_lock guard(m_lock);
        m_cancelled = true;
        process = m_currentProcess;
    }
    if (process) {
        process->terminate();
    }
}

void PlanExecutor::runOrCleanUp(const JobPlan &plan, const OnProgress &onProgress)
{
    try {
        runOnce(plan, onProgress);
    } catch (...) {
        cleanupTempFiles(plan);
        throw;
    }
}

// A plan before a retry isn't cleaned up: the retry has the same output and the same side files.
PlanExecutor::KeptResult PlanExecutor::runUnderLimit(const JobPlan &plan,
                                                     const OnProgress &onProgress)
{
    KeptResult current{plan, PlanMeasures::firstVideoBitrate(plan), {}};
    int retries = 0;
    while (true) {
        runOrCleanUp(current.plan, onProgress);
        const qint64 bytes = PlanMeasures::totalBytes(current.plan.finalOutputURLs);
        const std::optional<qint64> limit = current.plan.targetLimitBytes;
        if (!limit || bytes <= *limit) {
            current.outcome = {current.plan.finalOutputURLs, limit ? retries : 0, bytes};
            return current;
        }
        if (!current.plan.retryFactory || !current.kbps || retries >= mostRetries) {
            cleanupTempFiles(current.plan);
            throw ExecutorError::targetNotMet(bytes, *limit);
        }
        current.kbps = retryBitrate(*current.kbps);
        // A copy first: the assignment destroys the factory that is being called.
        const PlanFactory retry = current.plan.retryFactory;
        current.plan = retry(*current.kbps);
        ++retries;
    }
}

// The size of a winner that has taken the first result's place; absent when the first result stays.
std::optional<qint64> PlanExecutor::runUpward(const KeptResult &kept, const OnProgress &onProgress)
{
    const qint64 limit = *kept.plan.targetLimitBytes;
    const qint64 bytes = kept.outcome.outputBytes;
    if (bytes >= farBelow(limit) || !kept.plan.approach || !kept.kbps) {
        return std::nullopt;
    }
    const auto nextKbps = PlanMeasures::upwardBitrate(limit, bytes, *kept.kbps);
    if (!nextKbps) {
        return std::nullopt;
    }
    const ApproachSpec &approach = *kept.plan.approach;
    try {
        return judgeUpward(kept, *nextKbps, onProgress);
    } catch (const EngineError &error) {
        removeFile(approach.tmpURL);
        if (error.kind() == EngineError::Case::cancelled) {
            throw;
        }
    } catch (const std::exception &) {
        removeFile(approach.tmpURL);
    }
    // The first result stands: a failed extra is no failure of the job.
    return std::nullopt;
}

std::optional<qint64> PlanExecutor::judgeUpward(const KeptResult &kept, qint64 nextKbps,
                                                const OnProgress &onProgress)
{
    const ApproachSpec &approach = *kept.plan.approach;
    const JobPlan attempt = approach.factory(nextKbps);
    runOnce(attempt, onProgress);
    const qint64 newBytes = PlanMeasures::totalBytes(attempt.finalOutputURLs);
    if (!isCloser(newBytes, kept.outcome.outputBytes, *kept.plan.targetLimitBytes)) {
        // The loser stays where it is: the next attempt of the same file overwrites it.
        return std::nullopt;
    }
    removeFile(approach.finalURL);
    if (!moveFile(Text::path(approach.tmpURL), Text::path(approach.finalURL))) {
        throw FileError(approach.finalURL, QStringLiteral("the better result couldn't be moved"));
    }
    cleanupTempFiles(attempt);
    return newBytes;
}

void PlanExecutor::runOnce(const JobPlan &plan, const OnProgress &onProgress)
{
    createDirectories(plan.createDirs);
    writePrepFiles(plan.prepFiles);
    const double denominator = std::max(totalDuration(plan.steps), smallestDenominator);
    double done = 0;
    for (const FFmpegStep &step : plan.steps) {
        if (isCancelled()) {
            throw EngineError::cancelled();
        }
        runStep(step, done / denominator, step.progressDuration / denominator, onProgress);
        done += step.progressDuration;
    }
}

void PlanExecutor::runStep(const FFmpegStep &step, double base, double span,
                           const OnProgress &onProgress)
{
    double lastReported = -1.0;
    // Both callbacks run inside this call and may hold `this`.
    ProcessRunner::runAsync(
        m_ffmpegURL, step.args,
        [this](std::shared_ptr<ChildProcess> process) { remember(std::move(process)); },
        [&](const QString &line) {
            if (isCancelled()) {
                return;
            }
            const std::optional<double> seconds = ProgressLine::seconds(line);
            if (!seconds) {
                return;
            }
            const double fraction = base + span * stepFraction(*seconds, step.progressDuration);
            const double overall = std::round(fraction * progressSteps) / progressSteps;
            if (overall != lastReported) {
                lastReported = overall;
                onProgress(std::clamp(overall, 0.0, 1.0));
            }
        });
}

bool PlanExecutor::isCancelled()
{
    const std::scoped_lock guard(m_lock);
    return m_cancelled;
}

void PlanExecutor::remember(std::shared_ptr<ChildProcess> process)
{
    const std::scoped_lock guard(m_lock);
    m_currentProcess = std::move(process);
}
