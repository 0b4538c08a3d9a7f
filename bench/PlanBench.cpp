// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
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

// Aim: under 100 µs. A panel reckons plans while a slider moves.
void targetSizePlan(benchmark::State &state)
{
    const VideoFile file = film();
    const FFmpegToolset toolset = tools();
    const QUrl folder = QUrl::fromLocalFile(QDir::tempPath());
    TargetSizeParams params;
    params.exactTwoPass = state.range(0) == 2;
    for ([[maybe_unused]] auto round : state) {
        JobPlan plan = CommandBuilder::targetSize(file, params, toolset, folder, std::nullopt);
        benchmark::DoNotOptimize(plan);
    }
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

BENCHMARK(targetSizePlan)->ArgName("passes")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(estimate, targetSize, targetSizeEstimate);
BENCHMARK_CAPTURE(estimate, convert, convertEstimate);
BENCHMARK_CAPTURE(estimate, compress, compressEstimate);
BENCHMARK_CAPTURE(estimate, extract, extractEstimate);
BENCHMARK_CAPTURE(estimate, adjust, adjustEstimate);
BENCHMARK_CAPTURE(estimate, enhance, enhanceEstimate);
BENCHMARK_CAPTURE(estimate, gif, gifEstimate);
