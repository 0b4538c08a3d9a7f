// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/Estimator.h"

#include "Engine/BitratePlanner.h"
#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Models/Truncation.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double bytesPerSecondPerKbps = 1000.0 / 8;
constexpr double bytesPerBit = 0.125;

constexpr double shortestSeconds = 1.0;
constexpr double shortestAdjustedSeconds = 0.5;

constexpr double convertedShare = 0.85;
constexpr double adjustedShare = 0.95;

// Sound that is encoded anew.
constexpr qint64 encodedAudioKbps = 160;
// Sound that is kept and whose rate isn't known.
constexpr qint64 assumedAudioKbps = 128;
// What takes the place of the old sound beside a copied picture.
constexpr double convertedAudioBytesPerSecond = 20'000;

constexpr double gifBitsPerPixel = 2;

double seconds(const VideoFile &file)
{
    return std::max(file.durationSeconds, shortestSeconds);
}

// Whole seconds, rounded down: 10.9 seconds count as 10.
qint64 bytesAt(double kbps, const VideoFile &file)
{
    return truncated(std::floor(kbps * bytesPerSecondPerKbps) * std::trunc(seconds(file)));
}

qint64 sourceAudioKbps(const VideoFile &file)
{
    if (file.audioStreams.isEmpty()) {
        return 0;
    }
    const qint64 bitsPerSecond = file.audioStreams.first().bitrateBps.value_or(0);
    return bitsPerSecond >= 1 ? bitsPerSecond / 1000 : assumedAudioKbps;
}

// What an MP4 keeps by copy, or gets anew.
qint64 mp4AudioKbps(const VideoFile &file)
{
    const bool isKept =
        CodecCompat::audioOK(CommandBuilder::firstAudioCodec(file), OutputContainer::mp4);
    return isKept ? sourceAudioKbps(file) : encodedAudioKbps;
}

EstimateInfo estimate(const VideoFile &file, qint64 bytes,
                      const std::optional<QString> &badgeKey = std::nullopt)
{
    return {.originalBytes = file.fileSizeBytes,
            .estimatedBytes = bytes,
            .badgeKey = badgeKey,
            .warnings = {}};
}

EstimateInfo unchanged(const VideoFile &file, const std::optional<QString> &badgeKey = std::nullopt)
{
    return estimate(file, file.fileSizeBytes, badgeKey);
}

QString keyOf(BitratePlanner::Warning warning)
{
    switch (warning) {
    case BitratePlanner::Warning::lowBitrate:
        return u"target.warn.lowbitrate"_s;
    case BitratePlanner::Warning::floorReached:
        return u"target.warn.floor"_s;
    case BitratePlanner::Warning::hopeless:
        return u"target.warn.hopeless"_s;
    }
    Q_UNREACHABLE();
}

double compressedAudioKbps(const VideoFile &file, const CompressParams &params)
{
    if (params.muted) {
        return 0;
    }
    return static_cast<double>(params.advanced.audioBitrateKbps.value_or(mp4AudioKbps(file)));
}

bool isAudioUntouched(const ConvertParams &params)
{
    const AdvancedOptions &advanced = params.advanced;
    return params.audioFormat == ConvertParams::AudioFormat::keep && !advanced.audioBitrateKbps &&
           !advanced.volumeDb && !advanced.replacementAudioURL;
}

EstimateInfo reencoded(const VideoFile &file, const ConvertParams &params, bool audioOK)
{
    const qint64 videoKbps = CommandBuilder::shareOfSourceKbps(file, convertedShare);
    const bool isKept = params.audioFormat == ConvertParams::AudioFormat::keep && audioOK;
    const qint64 audioKbps = isKept ? sourceAudioKbps(file) : encodedAudioKbps;
    return estimate(file, bytesAt(static_cast<double>(videoKbps + audioKbps), file),
                    u"convert.badge.reencode"_s);
}

EstimateInfo withNewSound(const VideoFile &file)
{
    const auto audioBps = static_cast<double>(CommandBuilder::sourceAudioBitrateBps(file));
    const qint64 oldSound = truncated(audioBps / 8 * file.durationSeconds);
    const qint64 newSound = truncated(std::trunc(seconds(file)) * convertedAudioBytesPerSecond);
    return estimate(file, std::max<qint64>(file.fileSizeBytes - oldSound + newSound, 1),
                    u"convert.badge.partial"_s);
}

const AudioStream &trackAt(const VideoFile &file, qint64 index)
{
    return file.audioStreams.at(std::clamp<qint64>(index, 0, file.audioStreams.size() - 1));
}

EstimateInfo copiedTrack(const VideoFile &file, const AudioStream &track)
{
    const qint64 bitsPerSecond =
        track.bitrateBps.value_or(CommandBuilder::sourceAudioBitrateBps(file));
    const qint64 bytes =
        truncated(static_cast<double>(bitsPerSecond) * bytesPerBit * file.durationSeconds);
    return estimate(file, std::max<qint64>(bytes, 1), u"extract.direct"_s);
}

double gifSeconds(const VideoFile &file, const GifParams &params)
{
    const double end = std::min(file.durationSeconds, params.end.value_or(file.durationSeconds));
    return std::max(end - std::max(params.start, 0.0), 0.0);
}

double gifHeight(double width, const VideoFile &file)
{
    const double height =
        std::trunc(static_cast<double>(*file.height) * width / static_cast<double>(*file.width));
    return height < 4 ? 2 : 2 * std::trunc(height / 2);
}

} // namespace

EstimateInfo Estimator::compress(const VideoFile &file, const CompressParams &params)
{
    const auto videoKbps = static_cast<double>(CommandBuilder::compressVideoKbps(file, params));
    return estimate(file, bytesAt(videoKbps + compressedAudioKbps(file, params), file));
}

EstimateInfo Estimator::targetSize(const VideoFile &file, const TargetSizeParams &params)
{
    const BitratePlanner::Plan plan = BitratePlanner::plan(
        {.targetMB = params.targetMB,
         .durationSeconds = file.effectiveDuration(params.skipHeadSeconds, params.skipTailSeconds),
         .hasAudio = !file.audioStreams.isEmpty(),
         .muted = params.muted,
         .width = std::nullopt});
    if (file.fileSizeBytes <= plan.targetBytes) {
        return unchanged(file, u"target.alreadyfits"_s);
    }
    EstimateInfo info = estimate(file, plan.estimatedBytes);
    for (const BitratePlanner::Warning warning : plan.warnings) {
        info.warnings.append({keyOf(warning), {}});
    }
    return info;
}

EstimateInfo Estimator::convert(const VideoFile &file, const ConvertParams &params)
{
    const bool audioOK =
        CodecCompat::audioOK(CommandBuilder::firstAudioCodec(file), params.container);
    if (params.forceReencode || !CodecCompat::videoOK(file.videoCodec, params.container)) {
        return reencoded(file, params, audioOK);
    }
    if (audioOK && isAudioUntouched(params) &&
        !CommandBuilder::advancedNeedsVideoReencode(params.advanced)) {
        return unchanged(file, u"convert.badge.remux"_s);
    }
    return withNewSound(file);
}

EstimateInfo Estimator::extract(const VideoFile &file, ExtractParams::AudioFormat format,
                                qint64 bitrateKbps, qint64 audioTrackIndex)
{
    if (file.audioStreams.isEmpty()) {
        EstimateInfo info = unchanged(file);
        info.warnings.append({u"extract.noaudio"_s, {}});
        return info;
    }
    const AudioStream &track = trackAt(file, audioTrackIndex);
    if (format == ExtractParams::AudioFormat::m4a &&
        CodecCompat::audioOK(track.codec, OutputContainer::mp4)) {
        return copiedTrack(file, track);
    }
    const qint64 bytes = bytesAt(static_cast<double>(bitrateKbps), file);
    return estimate(file, std::max<qint64>(bytes, 1), u"extract.transcode"_s);
}

EstimateInfo Estimator::adjust(const VideoFile &file, const AdjustParams &params)
{
    if (!params.changesVideo()) {
        return unchanged(file);
    }
    const qint64 videoKbps = CommandBuilder::shareOfSourceKbps(file, adjustedShare);
    // A silent film counts as having sound, too.
    const auto totalKbps = static_cast<double>(videoKbps + (params.muted ? 0 : encodedAudioKbps));
    const double outSeconds =
        std::max(file.durationSeconds / params.speed, shortestAdjustedSeconds);
    return estimate(file, truncated(totalKbps * 1000.0 * bytesPerBit * outSeconds));
}

EstimateInfo Estimator::enhance(const VideoFile &file, const EnhanceParams &params)
{
    if (!params.outputSize(file)) {
        return unchanged(file);
    }
    const qint64 videoKbps = CommandBuilder::enhanceBitrateKbps(file, params);
    const auto totalKbps = static_cast<double>(videoKbps + (params.muted ? 0 : mp4AudioKbps(file)));
    return estimate(file, truncated(totalKbps * 1000.0 * bytesPerBit * seconds(file)));
}

EstimateInfo Estimator::gif(const VideoFile &file, const GifParams &params)
{
    if (file.width.value_or(0) < 1 || file.height.value_or(0) < 1) {
        return unchanged(file);
    }
    const auto width = static_cast<double>(params.width);
    const double bits = gifBitsPerPixel * gifSeconds(file, params) * width *
                        gifHeight(width, file) * static_cast<double>(params.fps);
    return estimate(file, truncated((params.bounce ? 2 : 1) * bits * bytesPerBit));
}
