// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/Text.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

constexpr double smartShare = 0.58;
constexpr qint64 smartMaxHeight = 1440;

// A custom height far below 0 would ask for more than an integer holds.
constexpr double mostKbps = 1e18;

double shareOf(CompressParams::QualityTier quality)
{
    switch (quality) {
    case CompressParams::QualityTier::maximum:
        return 0.85;
    case CompressParams::QualityTier::high:
        return 0.7;
    case CompressParams::QualityTier::balanced:
        return 0.55;
    case CompressParams::QualityTier::small:
        return 0.42;
    case CompressParams::QualityTier::tiny:
        return 0.3;
    }
    Q_UNREACHABLE();
}

std::optional<qint64> heightOf(const CompressParams &params)
{
    switch (params.resolution) {
    case CompressParams::ResTier::original:
        return std::nullopt;
    case CompressParams::ResTier::p2160:
        return 2160;
    case CompressParams::ResTier::p1440:
        return 1440;
    case CompressParams::ResTier::p1080:
        return 1080;
    case CompressParams::ResTier::p720:
        return 720;
    case CompressParams::ResTier::p480:
        return 480;
    case CompressParams::ResTier::custom:
        return params.customHeight;
    }
    Q_UNREACHABLE();
}

QString outputSuffix(const CompressParams &params)
{
    if (params.mode == CompressParams::Mode::smart) {
        return u"smart"_s;
    }
    const std::optional<qint64> height = heightOf(params);
    return height ? u"smaller-"_s + QString::number(*height) + u'p' : u"smaller"_s;
}

// How many of the pixels a cap leaves: 1 where it takes none. Reckoned in floating point
// throughout, since a custom height may be any integer.
double keptPixels(const VideoFile &file, std::optional<qint64> maxHeight,
                  const std::optional<CropSpec> &crop)
{
    const std::optional<qint64> sourceWidth = effectiveWidth(file, crop);
    if (!maxHeight || !sourceWidth || file.height.value_or(0) < 1 || *maxHeight >= *file.height) {
        return 1;
    }
    const auto width = static_cast<double>(*sourceWidth);
    const auto height = static_cast<double>(*file.height);
    const auto cap = static_cast<double>(*maxHeight);
    const double evenWidth = 2 * std::trunc(cap * width / height * 0.5);
    return evenWidth * cap / std::max(width * height, 1.0);
}

CodecChoice settledCodec(const VideoFile &file, CodecChoice codec)
{
    if (codec != CodecChoice::automatic) {
        return codec;
    }
    const bool isHevc = file.videoCodec && file.videoCodec->toLower() == "hevc"_L1;
    return isHevc ? CodecChoice::hevcVideoToolbox : CodecChoice::h264VideoToolbox;
}

/// A compression with all that its groups share.
struct Compression {
    VideoFile file;
    CompressParams params;
    std::optional<FFmpegToolset> toolset;
    QUrl output;
};

QStringList inputArgs(const Compression &compression)
{
    return QStringList{u"-i"_s, Text::path(compression.file.url)} +
           replacementInputArgs(compression.params.advanced, compression.params.muted);
}

// The replacement is opened but never mapped: it is the source's sound that goes in. A muted job
// keeps the audio map; "-an" drops the sound.
QStringList mapArgs(const Compression &compression)
{
    QStringList args;
    if (hasVideo(compression.file)) {
        args << u"-map"_s << u"0:v:0"_s;
    }
    if (!compression.file.audioStreams.isEmpty() ||
        compression.params.advanced.replacementAudioURL) {
        args << u"-map"_s << u"0:a?"_s;
    }
    return args;
}

// Alpha goes by ProRes 4444, which has no rate to set, whatever codec was chosen.
QStringList alphaCodecArgs(const VideoFile &file, const AdvancedOptions &advanced)
{
    const QString encoder = u"prores_ks"_s;
    return QStringList{u"-c:v"_s, encoder, u"-profile:v"_s, u"4"_s} +
           pixelFormatArgs(file, advanced, encoder);
}

QStringList videoCodecArgs(const Compression &compression)
{
    const VideoFile &file = compression.file;
    const AdvancedOptions &advanced = compression.params.advanced;
    if (!hasVideo(file)) {
        return {};
    }
    if (advanced.preserveAlpha && file.hasAlphaChannel) {
        return alphaCodecArgs(file, advanced);
    }
    const QString encoder = compressEncoder(file, advanced.codec, compression.toolset);
    const qint64 kbps = compressVideoKbps(file, compression.params);
    return QStringList{u"-c:v"_s, encoder} + qualityOrRateArgs(advanced, encoder, kbps) +
           pixelFormatArgs(file, advanced, encoder);
}

QStringList filterArgs(const Compression &compression)
{
    const CompressMeasure measure = compressMeasure(compression.file, compression.params);
    return videoFilterArgs(compression.file, measure.maxHeight, compression.params.advanced);
}

QStringList audioArgs(const Compression &compression)
{
    const AdvancedOptions &advanced = compression.params.advanced;
    if (compression.params.muted) {
        return {u"-an"_s};
    }
    if (!advanced.replacementAudioURL && compression.file.audioStreams.isEmpty()) {
        return {};
    }
    return mp4AudioArgs(compression.file, advanced);
}

// Even a muted job with a replacement says so, although nothing of it goes in.
QStringList lengthArgs(const AdvancedOptions &advanced)
{
    return advanced.replacementAudioURL ? QStringList{u"-shortest"_s} : QStringList();
}

QStringList commandLine(const Compression &compression)
{
    const AdvancedOptions &advanced = compression.params.advanced;
    return baseArgs() + inputArgs(compression) + mapArgs(compression) +
           videoCodecArgs(compression) + filterArgs(compression) + audioArgs(compression) +
           fastStartArgs() + lengthArgs(advanced) + rateArgs(advanced) + extraArgTokens(advanced) +
           QStringList{Text::path(compression.output)};
}

} // namespace

CompressMeasure compressMeasure(const VideoFile &file, const CompressParams &params)
{
    if (params.mode == CompressParams::Mode::quality) {
        return {.share = shareOf(params.quality), .maxHeight = heightOf(params)};
    }
    const bool isTall = file.height.value_or(0) > smartMaxHeight;
    return {.share = smartShare,
            .maxHeight = isTall ? std::optional(smartMaxHeight) : std::nullopt};
}

qint64 compressVideoKbps(const VideoFile &file, const CompressParams &params)
{
    const CompressMeasure measure = compressMeasure(file, params);
    const double sourceKbps = static_cast<double>(sourceVideoBitrateBps(file)) / 1000.0;
    const double kbps =
        keptPixels(file, measure.maxHeight, params.advanced.crop) * (measure.share * sourceKbps);
    return static_cast<qint64>(std::clamp(kbps, lowestShareKbps, mostKbps));
}

QString compressEncoder(const VideoFile &file, CodecChoice codec,
                        const std::optional<FFmpegToolset> &toolset)
{
    return encoderForChoice(settledCodec(file, codec), toolset.value_or(FFmpegToolset()));
}

JobPlan compress(const VideoFile &file, const CompressParams &params,
                 const std::optional<FFmpegToolset> &toolset,
                 const std::optional<QUrl> &outputDirectory,
                 const std::optional<QString> &namingTemplate)
{
    const Compression compression{
        .file = file,
        .params = params,
        .toolset = toolset,
        .output = outputURL(file, outputSuffix(params), u"mp4"_s, outputDirectory, namingTemplate)};
    FFmpegStep step;
    step.label = u"compress"_s;
    step.args = commandLine(compression);
    step.progressDuration = file.durationSeconds;

    JobPlan plan;
    plan.steps = {step};
    plan.finalOutputURLs = {compression.output};
    return plan;
}

} // namespace CommandBuilder
