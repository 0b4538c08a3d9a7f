// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/Text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

constexpr double assumedFps = 30.0;
// Bits for each pixel of each frame.
constexpr double bitsPerPixel = 0.09;
constexpr double lowestKbps = 1500.0;
constexpr double highestKbps = 40000.0;
constexpr qint64 kbpsOfUnknownSize = 4000;

QStringList denoiseFilters(EnhanceParams::DenoiseLevel level)
{
    switch (level) {
    case EnhanceParams::DenoiseLevel::off:
        return {};
    case EnhanceParams::DenoiseLevel::light:
        return {u"hqdn3d=1.0:1.0:2:2"_s};
    case EnhanceParams::DenoiseLevel::medium:
        return {u"hqdn3d=2:1.5:4:4"_s};
    case EnhanceParams::DenoiseLevel::strong:
        return {u"hqdn3d=4:2:6:6"_s};
    }
    Q_UNREACHABLE();
}

// Even sides, for 4:2:0 pictures. An unscaled picture isn't touched, odd or not.
QStringList upscaleFilters(EnhanceParams::UpscaleFactor factor)
{
    switch (factor) {
    case EnhanceParams::UpscaleFactor::x1:
        return {};
    case EnhanceParams::UpscaleFactor::x15:
        return {u"scale='trunc(iw*1.5/2)*2':'trunc(ih*1.5/2)*2':flags=lanczos"_s};
    case EnhanceParams::UpscaleFactor::x2:
        return {u"scale='trunc(iw*2.0/2)*2':'trunc(ih*2.0/2)*2':flags=lanczos"_s};
    }
    Q_UNREACHABLE();
}

QStringList sharpenFilters(EnhanceParams::SharpenLevel level)
{
    switch (level) {
    case EnhanceParams::SharpenLevel::off:
        return {};
    case EnhanceParams::SharpenLevel::light:
        return {u"cas=strength=0.4"_s};
    case EnhanceParams::SharpenLevel::medium:
        return {u"cas=strength=0.6"_s};
    }
    Q_UNREACHABLE();
}

// The chosen audio rate is the picture's, too: here it is the one rate that a user can set.
qint64 videoKbps(const VideoFile &file, const EnhanceParams &params)
{
    return params.advanced.audioBitrateKbps.value_or(enhanceBitrateKbps(file, params));
}

QStringList filterArgs(const VideoFile &file, const EnhanceParams &params)
{
    const std::optional<QString> chain = enhanceFilterChain(file, params);
    return chain ? QStringList{u"-vf"_s, *chain} : QStringList();
}

QStringList audioArgs(const VideoFile &file, const EnhanceParams &params)
{
    if (file.audioStreams.isEmpty()) {
        return {};
    }
    return QStringList{u"-map"_s, u"0:a?"_s} +
           (params.muted ? QStringList{u"-an"_s} : mp4AudioArgs(file, params.advanced));
}

} // namespace

std::optional<QString> enhanceFilterChain(const VideoFile &, const EnhanceParams &params)
{
    // Noise goes first, so that it is neither enlarged nor sharpened.
    const QStringList filters = denoiseFilters(params.denoise) + upscaleFilters(params.upscale) +
                                sharpenFilters(params.sharpen);
    return filters.isEmpty() ? std::nullopt : std::optional(filters.join(u','));
}

qint64 enhanceBitrateKbps(const VideoFile &file, const EnhanceParams &params)
{
    const std::optional<PictureSize> size = params.outputSize(file);
    if (!size) {
        return kbpsOfUnknownSize;
    }
    const double fps = std::clamp(file.fps.value_or(assumedFps), 1.0, 60.0);
    const double pixels = static_cast<double>(size->width) * static_cast<double>(size->height);
    const double kbps = (fps * pixels * bitsPerPixel) / 1000.0;
    return static_cast<qint64>(std::clamp(kbps, lowestKbps, highestKbps));
}

JobPlan enhance(const VideoFile &file, const EnhanceParams &params, const FFmpegToolset &toolset,
                const std::optional<QUrl> &outputDirectory,
                const std::optional<QString> &namingTemplate)
{
    const QUrl output = outputURL(file, u"enhanced"_s, u"mp4"_s, outputDirectory, namingTemplate);
    FFmpegStep step;
    step.label = u"enhance"_s;
    // The container flags stand behind the user's arguments, unlike in most other actions.
    step.args << baseArgs() << u"-i"_s << Text::path(file.url)
              << mp4VideoArgs(file, params.advanced, toolset, videoKbps(file, params))
              << filterArgs(file, params) << audioArgs(file, params) << rateArgs(params.advanced)
              << extraArgTokens(params.advanced) << fastStartArgs() << Text::path(output);
    step.progressDuration = file.durationSeconds;

    JobPlan plan;
    plan.steps = {step};
    plan.finalOutputURLs = {output};
    return plan;
}

} // namespace CommandBuilder
