// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/JobPlanner.h"
#include "Engine/Estimator.h"

#include <benchmark/benchmark.h>

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

VideoFile film()
{
    VideoFile file;
    file.url = QUrl::fromLocalFile(u"/films/holiday.mov"_s);
    file.durationSeconds = 183.4;
    file.fileSizeBytes = 412'000'000;
    file.width = 3840;
    file.height = 2160;
    file.videoCodec = u"hevc"_s;
    file.videoBitrateBps = 17'800'000;
    file.fps = 29.97;
    file.audioStreams = {AudioStream{.index = 1,
                                     .codec = u"aac"_s,
                                     .bitrateBps = 192'000,
                                     .channels = 2,
                                     .language = {},
                                     .isDefault = true}};
    return file;
}

FFmpegToolset tools()
{
    return {.ffmpegURL = QUrl::fromLocalFile(u"/usr/bin/ffmpeg"_s),
            .ffprobeURL = QUrl::fromLocalFile(u"/usr/bin/ffprobe"_s),
            .encoders = {u"libx264"_s, u"libx265"_s, u"prores_ks"_s, u"aac"_s}};
}

// Aim: under 100 µs. A worker plans on the main thread.
void plan(benchmark::State &state, const JobMode &mode)
{
    const Job job(film(), {film()}, mode, QUrl::fromLocalFile(QDir::tempPath()));
    const std::optional<FFmpegToolset> toolset = tools();
    for ([[maybe_unused]] auto round : state) {
        JobPlan made = JobPlanner::plan(job, toolset, job.outputDirectory, std::nullopt);
        benchmark::DoNotOptimize(made);
    }
}

JobMode twoPasses()
{
    TargetSizeParams params;
    params.exactTwoPass = true;
    return params;
}

JobMode anHourInMinutes()
{
    SplitParams params;
    params.mode = SplitParams::Mode::byParts;
    params.parts = 60;
    return params;
}

JobMode threeStretches()
{
    TrimParams params;
    for (const double start : {10.0, 50.0, 100.0}) {
        TrimSegment segment;
        segment.start = start;
        segment.end = start + 20;
        params.segments += segment;
    }
    return params;
}

using Estimate = EstimateInfo (*)(const VideoFile &file);

// Aim: under 2 µs. A panel asks at every redraw.
void estimate(benchmark::State &state, Estimate ofAction)
{
    const VideoFile file = film();
    for ([[maybe_unused]] auto round : state) {
        EstimateInfo info = ofAction(file);
        benchmark::DoNotOptimize(info);
    }
}

EstimateInfo targetSizeEstimate(const VideoFile &file)
{
    // Below the floor: with both warnings.
    TargetSizeParams params;
    params.targetMB = 1;
    return Estimator::targetSize(file, params);
}

EstimateInfo convertEstimate(const VideoFile &file)
{
    ConvertParams params;
    params.forceReencode = true;
    return Estimator::convert(file, params);
}

EstimateInfo compressEstimate(const VideoFile &file)
{
    return Estimator::compress(file, CompressParams());
}

EstimateInfo extractEstimate(const VideoFile &file)
{
    return Estimator::extract(file, ExtractParams::AudioFormat::m4a, 192, 0);
}

EstimateInfo adjustEstimate(const VideoFile &file)
{
    AdjustParams params;
    params.speed = 1.5;
    return Estimator::adjust(file, params);
}

EstimateInfo enhanceEstimate(const VideoFile &file)
{
    return Estimator::enhance(file, EnhanceParams());
}

EstimateInfo gifEstimate(const VideoFile &file)
{
    return Estimator::gif(file, GifParams());
}

} // namespace

BENCHMARK_CAPTURE(plan, targetSize, TargetSizeParams());
BENCHMARK_CAPTURE(plan, targetSizeInTwoPasses, twoPasses());
BENCHMARK_CAPTURE(plan, convert, ConvertParams());
BENCHMARK_CAPTURE(plan, compress, CompressParams());
BENCHMARK_CAPTURE(plan, extract, ExtractParams());
BENCHMARK_CAPTURE(plan, trim, threeStretches());
BENCHMARK_CAPTURE(plan, gif, GifParams());
BENCHMARK_CAPTURE(plan, enhance, EnhanceParams());
BENCHMARK_CAPTURE(plan, merge, MergeParams());
BENCHMARK_CAPTURE(plan, split, anHourInMinutes());
BENCHMARK_CAPTURE(plan, adjust, AdjustParams());
BENCHMARK_CAPTURE(estimate, targetSize, targetSizeEstimate);
BENCHMARK_CAPTURE(estimate, convert, convertEstimate);
BENCHMARK_CAPTURE(estimate, compress, compressEstimate);
BENCHMARK_CAPTURE(estimate, extract, extractEstimate);
BENCHMARK_CAPTURE(estimate, adjust, adjustEstimate);
BENCHMARK_CAPTURE(estimate, enhance, enhanceEstimate);
BENCHMARK_CAPTURE(estimate, gif, gifEstimate);
