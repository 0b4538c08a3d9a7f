// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/BitratePlanner.h"
#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/Text.h"
#include "Models/Truncation.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

// How much of the progress bar each of two passes takes.
constexpr double firstPassShare = 0.35;
constexpr double secondPassShare = 0.65;

bool alreadyFits(const VideoFile &file, qint64 targetBytes)
{
    return file.fileSizeBytes <= targetBytes && (hasVideo(file) || !file.audioStreams.isEmpty());
}

QStringList copyMapArgs(const VideoFile &file)
{
    QStringList args;
    if (hasVideo(file)) {
        args << u"-map"_s << u"0:v:0"_s;
    }
    if (!file.audioStreams.isEmpty()) {
        args << u"-map"_s << u"0:a?"_s;
    }
    return args;
}

// The copy goes through untouched, sound and all, even when muted or trimmed: a film that already
// fits is delivered as it is.
JobPlan alreadyFitsPlan(const VideoFile &file, const QUrl &output)
{
    FFmpegStep step;
    step.label = u"remux"_s;
    step.args << baseArgs() << u"-i"_s << Text::path(file.url) << copyMapArgs(file) << u"-c"_s
              << u"copy"_s << fastStartArgs() << Text::path(output);
    step.progressDuration = file.durationSeconds;

    JobPlan plan;
    plan.steps = {step};
    plan.finalOutputURLs = {output};
    plan.badgeKey = u"target.alreadyfits"_s;
    return plan;
}

// Seek and length stand before the input: the reader makes the cut. A skip that is present, even
// as 0, fixes the length.
QStringList seekArgs(const EncodeAttempt &attempt)
{
    const TargetSizeParams &params = attempt.params;
    QStringList args;
    if (params.skipHeadSeconds.value_or(0) > 0) {
        args << u"-ss"_s << Text::fixed(*params.skipHeadSeconds, 3);
    }
    if (params.skipHeadSeconds || params.skipTailSeconds) {
        args << u"-t"_s << Text::fixed(attempt.duration, 3);
    }
    return args;
}

QStringList inputArgs(const EncodeAttempt &attempt)
{
    return seekArgs(attempt) + QStringList{u"-i"_s, Text::path(attempt.file.url)} +
           replacementInputArgs(attempt.params.advanced, attempt.params.muted);
}

QStringList rateControlArgs(const EncodeAttempt &attempt)
{
    return {u"-b:v"_s, QString::number(attempt.videoKbps) + u'k'};
}

QStringList audioArgs(const EncodeAttempt &attempt)
{
    const AdvancedOptions &advanced = attempt.params.advanced;
    if (attempt.params.muted) {
        return {u"-an"_s};
    }
    if (!advanced.replacementAudioURL && attempt.file.audioStreams.isEmpty()) {
        return {};
    }
    const qint64 kbps = advanced.audioBitrateKbps.value_or(attempt.audioKbps);
    return QStringList{u"-c:a"_s, u"aac"_s, u"-b:a"_s, QString::number(kbps) + u'k'} +
           volumeArgs(advanced);
}

MapArgs mapArgs(const EncodeAttempt &attempt)
{
    return replacementMapArgs(attempt.params.advanced, attempt.params.muted,
                              hasVideo(attempt.file));
}

QStringList filterArgs(const EncodeAttempt &attempt)
{
    return videoFilterArgs(attempt.file, attempt.maxHeight, attempt.params.advanced);
}

// Rate before container flags, unlike in the other actions.
QStringList tailArgs(const EncodeAttempt &attempt)
{
    return audioArgs(attempt) + rateArgs(attempt.params.advanced) + fastStartArgs() +
           extraArgTokens(attempt.params.advanced) + QStringList{Text::path(attempt.output)};
}

// Size is the only goal here: no crf, no preset, no HDR and no alpha.
FFmpegStep onePassStep(const EncodeAttempt &attempt)
{
    FFmpegStep step;
    step.label = u"encode"_s;
    step.args << baseArgs() << inputArgs(attempt) << mapArgs(attempt).full << u"-c:v"_s
              << encoderForChoice(attempt.params.advanced.codec, attempt.toolset)
              << rateControlArgs(attempt) << u"-pix_fmt"_s << u"yuv420p"_s << filterArgs(attempt)
              << tailArgs(attempt);
    step.progressDuration = attempt.duration;
    return step;
}

QStringList passArgs(const EncodeAttempt &attempt, const QString &number)
{
    return QStringList{u"-c:v"_s, u"libx264"_s, u"-preset"_s, u"fast"_s} +
           rateControlArgs(attempt) +
           QStringList{u"-pass"_s, number, u"-passlogfile"_s, passLogPrefix(attempt.file.id)};
}

FFmpegStep firstPassStep(const EncodeAttempt &attempt)
{
    FFmpegStep step;
    step.label = u"pass1"_s;
    // The filter stands behind the output on purpose: ffmpeg takes it as an option of no output,
    // so the first pass looks at the picture as it is.
    step.args << baseArgs() << inputArgs(attempt) << mapArgs(attempt).videoOnly
              << passArgs(attempt, u"1"_s) << u"-an"_s << u"-f"_s << u"mp4"_s << u"/dev/null"_s
              << filterArgs(attempt);
    step.progressDuration = attempt.duration * firstPassShare;
    return step;
}

FFmpegStep secondPassStep(const EncodeAttempt &attempt)
{
    FFmpegStep step;
    step.label = u"pass2"_s;
    step.args << baseArgs() << inputArgs(attempt) << mapArgs(attempt).full
              << passArgs(attempt, u"2"_s) << filterArgs(attempt) << tailArgs(attempt);
    step.progressDuration = attempt.duration * secondPassShare;
    return step;
}

// The macroblock-tree files beside the logs aren't listed: x264 overwrites them at its next pass.
QList<QUrl> passLogs(const EncodeAttempt &attempt)
{
    if (attempt.passes == Passes::one) {
        return {};
    }
    const QString prefix = passLogPrefix(attempt.file.id);
    return {QUrl::fromLocalFile(prefix + u"-0.log"_s), QUrl::fromLocalFile(prefix + u"-1.log"_s)};
}

JobPlan attemptPlan(const EncodeAttempt &attempt, qint64 targetBytes, const QList<QUrl> &cleanup)
{
    JobPlan plan;
    plan.steps = encodeSteps(attempt);
    plan.finalOutputURLs = {attempt.output};
    plan.targetLimitBytes = targetBytes;
    plan.cleanupURLs = cleanup;
    return plan;
}

// A plan never asks for more than the source has; the retries aren't bound by this.
qint64 firstVideoKbps(const VideoFile &file, qint64 plannedKbps)
{
    if (file.videoBitrateBps.value_or(0) < 1) {
        return plannedKbps;
    }
    const double sourceKbps = static_cast<double>(*file.videoBitrateBps) / 1000.0;
    return std::min(plannedKbps, static_cast<qint64>(sourceKbps));
}

EncodeAttempt atBitrate(EncodeAttempt attempt, qint64 videoKbps)
{
    attempt.videoKbps = videoKbps;
    return attempt;
}

ApproachSpec approachSpec(const EncodeAttempt &first, qint64 targetBytes)
{
    const QUrl temporary = QUrl::fromLocalFile(Text::joinedPath(
        QDir::tempPath(), u"mx-approach-"_s + Text::uuid(first.file.id) + u".mp4"_s));
    EncodeAttempt toTemporary = first;
    toTemporary.output = temporary;
    return {.factory =
                [toTemporary, targetBytes](qint64 videoKbps) {
                    return attemptPlan(atBitrate(toTemporary, videoKbps), targetBytes,
                                       {toTemporary.output});
                },
            .tmpURL = temporary,
            .finalURL = first.output};
}

EncodeAttempt firstAttempt(const VideoFile &file, const TargetSizeParams &params,
                           const FFmpegToolset &toolset, const QUrl &output)
{
    const BitratePlanner::Plan rates = BitratePlanner::plan(
        {.targetMB = params.targetMB,
         .durationSeconds = file.effectiveDuration(params.skipHeadSeconds, params.skipTailSeconds),
         .hasAudio = !file.audioStreams.isEmpty(),
         .muted = params.muted,
         .width = effectiveWidth(file, params.advanced.crop)});
    const bool twoPasses = params.exactTwoPass && toolset.encoders.contains(u"libx264"_s);
    return {.file = file,
            .params = params,
            .duration = file.effectiveDuration(params.skipHeadSeconds, params.skipTailSeconds),
            .videoKbps = firstVideoKbps(file, rates.videoBitrateKbps),
            .audioKbps = rates.audioBitrateKbps,
            .maxHeight = rates.maxHeight,
            .output = output,
            .passes = twoPasses ? Passes::two : Passes::one,
            .toolset = toolset};
}

} // namespace

QList<FFmpegStep> encodeSteps(const EncodeAttempt &attempt)
{
    if (attempt.passes == Passes::two) {
        return {firstPassStep(attempt), secondPassStep(attempt)};
    }
    return {onePassStep(attempt)};
}

JobPlan targetSize(const VideoFile &file, const TargetSizeParams &params,
                   const FFmpegToolset &toolset, const std::optional<QUrl> &outputDirectory,
                   const std::optional<QString> &namingTemplate)
{
    const qint64 targetBytes = truncated(params.targetMB * 1'000'000.0);
    const QUrl output = outputURL(file, formatMB(params.targetMB) + u"MB"_s, u"mp4"_s,
                                  outputDirectory, namingTemplate);
    if (alreadyFits(file, targetBytes)) {
        return alreadyFitsPlan(file, output);
    }
    const EncodeAttempt first = firstAttempt(file, params, toolset, output);
    JobPlan plan = attemptPlan(first, targetBytes, passLogs(first));
    plan.retryFactory = [first, targetBytes](qint64 videoKbps) {
        return attemptPlan(atBitrate(first, videoKbps), targetBytes, passLogs(first));
    };
    plan.approach = approachSpec(first, targetBytes);
    return plan;
}

} // namespace CommandBuilder
