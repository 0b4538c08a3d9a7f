// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "PromiseJob.h"

#include "Engine/BitratePlanner.h"
#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/EncoderStandIns.h"
#include "Engine/ExecutorError.h"
#include "Engine/PlanExecutor.h"
#include "Engine/PlanMeasures.h"
#include "Engine/ProbeService.h"

#include <QDir>

#include <memory>

namespace {

using PromiseJob::Ending;
using PromiseJob::Result;

PlanFactory counted(const PlanFactory &factory, int &attempts)
{
    if (!factory) {
        return {};
    }
    return [factory, &attempts](qint64 videoKbps) {
        ++attempts;
        return factory(videoKbps);
    };
}

JobPlan countingAttempts(JobPlan plan, int &attempts)
{
    plan.retryFactory = counted(plan.retryFactory, attempts);
    if (plan.approach) {
        plan.approach->factory = counted(plan.approach->factory, attempts);
    }
    return plan;
}

double fillOf(qint64 bytes, qint64 limit)
{
    return static_cast<double>(bytes) / static_cast<double>(limit);
}

// Measured anew: the executor's own word is what is under test.
Result executed(const JobPlan &plan, const FFmpegToolset &tools)
{
    Result result;
    const qint64 limit = *plan.targetLimitBytes;
    try {
        PlanExecutor(tools.ffmpegURL).execute(countingAttempts(plan, result.attempts), [](double) {
        });
        const qint64 bytes = PlanMeasures::totalBytes(plan.finalOutputURLs);
        result.fill = fillOf(bytes, limit);
        result.ending = bytes <= limit && bytes > 0 ? Ending::met : Ending::broken;
    } catch (const ExecutorError &error) {
        result.fill = fillOf(error.measuredBytes(), limit);
        result.ending = Ending::missed;
    } catch (const std::exception &) {
        result.ending = Ending::failed;
    }
    return result;
}

} // namespace

PromiseJob::Pair PromiseJob::makePair(const PromiseClips::Clip &clip, double limitMB,
                                      const FFmpegToolset &tools)
{
    const VideoFile file = ProbeService::probe(clip.url, tools.ffprobeURL);
    const BitratePlanner::Plan rates =
        BitratePlanner::plan({.targetMB = limitMB,
                              .durationSeconds = file.durationSeconds,
                              .hasAudio = !file.audioStreams.isEmpty(),
                              .muted = false,
                              .width = file.width});
    return {clip, limitMB, file.durationSeconds,
            rates.warnings.contains(BitratePlanner::Warning::hopeless)};
}

PromiseJob::Result PromiseJob::run(const Pair &pair, Path path, const FFmpegToolset &tools,
                                   const QString &folder)
{
    QDir().mkpath(folder);
    TargetSizeParams params;
    params.targetMB = pair.limitMB;
    params.exactTwoPass = path == Path::twoPasses;
    // Probed for each job: the names of temporary files come from the probe's identity.
    const VideoFile file = ProbeService::probe(pair.clip.url, tools.ffprobeURL);
    const JobPlan plan = EncoderStandIns::apply(
        CommandBuilder::targetSize(file, params, tools, QUrl::fromLocalFile(folder), std::nullopt),
        EncoderStandIns::software(tools));
    const Result result =
        plan.targetLimitBytes ? executed(plan, tools) : Result{Ending::fitsAlready, 0, 0};
    QDir(folder).removeRecursively();
    return result;
}
