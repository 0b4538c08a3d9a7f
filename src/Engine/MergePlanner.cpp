// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/MergePlanner.h"

#include "Engine/CommandBuilder/SharedArguments.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// Wide enough to take 29.97 and 30 for one rate.
constexpr double rateTolerance = 0.05;

constexpr PictureSize unknownCanvas{1280, 720};

bool someLackVideo(const QList<VideoFile> &files)
{
    return !std::ranges::all_of(files, CommandBuilder::hasVideo);
}

bool codecsDiffer(const QList<VideoFile> &files)
{
    return std::ranges::any_of(files, [&first = files.first()](const VideoFile &file) {
        return file.videoCodec != first.videoCodec;
    });
}

bool sizesDiffer(const QList<VideoFile> &files)
{
    const VideoFile &first = files.first();
    if (!first.width || !first.height) {
        return false;
    }
    return std::ranges::any_of(files, [&first](const VideoFile &file) {
        return file.width != first.width || file.height != first.height;
    });
}

bool frameRatesDiffer(const QList<VideoFile> &files)
{
    const double first = files.first().fps.value_or(0);
    if (!(first > 0)) {
        return false;
    }
    return std::ranges::any_of(files, [first](const VideoFile &file) {
        const double rate = file.fps.value_or(0);
        return rate <= 0 || std::abs(rate - first) >= first * rateTolerance;
    });
}

bool someLackAudio(const QList<VideoFile> &files)
{
    const auto hasAudio = [](const VideoFile &file) { return !file.audioStreams.isEmpty(); };
    return std::ranges::any_of(files, hasAudio) && !std::ranges::all_of(files, hasAudio);
}

bool audioCodecsDiffer(const QList<VideoFile> &files)
{
    return std::ranges::any_of(files, [&first = files.first()](const VideoFile &file) {
        return CommandBuilder::firstAudioCodec(file) != CommandBuilder::firstAudioCodec(first);
    });
}

/// Why clips can't be joined as they are.
struct Reason {
    QLatin1StringView key;
    bool (*applies)(const QList<VideoFile> &files);
};

// In the order of telling. The later tests rest on the earlier ones: every clip has a codec by
// then, and either all have sound or none has.
constexpr std::array reasons{
    Reason{"merge.reason.novideo"_L1, someLackVideo},
    Reason{"merge.reason.codec"_L1, codecsDiffer},
    Reason{"merge.reason.resolution"_L1, sizesDiffer},
    Reason{"merge.reason.fps"_L1, frameRatesDiffer},
    Reason{"merge.reason.audiomix"_L1, someLackAudio},
    Reason{"merge.reason.audiocodec"_L1, audioCodecsDiffer},
};

qint64 largestSide(const QList<VideoFile> &files, std::optional<qint64> VideoFile::*side,
                   qint64 unknown)
{
    std::optional<qint64> largest;
    for (const VideoFile &file : files) {
        largest = std::max(largest, file.*side);
    }
    return largest ? std::max<qint64>(*largest & ~qint64{1}, 2) : unknown;
}

} // namespace

MergePlanner::Compatibility MergePlanner::compatibility(const QList<VideoFile> &files)
{
    if (files.size() < 2) {
        return {};
    }
    const auto reason = std::ranges::find_if(
        reasons, [&files](const Reason &candidate) { return candidate.applies(files); });
    if (reason == reasons.end()) {
        return {};
    }
    return {.streamsMatch = false, .reasonKey = reason->key};
}

PictureSize MergePlanner::canvas(const QList<VideoFile> &files)
{
    return {largestSide(files, &VideoFile::width, unknownCanvas.width),
            largestSide(files, &VideoFile::height, unknownCanvas.height)};
}
