// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

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

} // namespace

BENCHMARK(targetSizePlan)->ArgName("passes")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);
