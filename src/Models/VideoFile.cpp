// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/VideoFile.h"

#include "Models/Truncation.h"

#include <algorithm>

namespace {

constexpr double shortestSelection = 0.1;

double clampedSkip(std::optional<double> skip, double available)
{
    return std::min(std::max(skip.value_or(0), 0.0), available);
}

double measuredBitrate(const VideoFile &file)
{
    if (!(file.durationSeconds > 0)) {
        return 0;
    }
    return static_cast<double>(file.fileSizeBytes) * 8 / file.durationSeconds;
}

// The highest single track and not the sum: most outputs keep one track only.
double declaredBitrate(const VideoFile &file)
{
    std::optional<qint64> audio;
    for (const AudioStream &stream : file.audioStreams) {
        audio = std::max(audio, stream.bitrateBps);
    }
    return static_cast<double>(file.videoBitrateBps.value_or(0)) +
           static_cast<double>(audio.value_or(0));
}

template <typename Value> size_t hashOf(const std::optional<Value> &value, size_t seed)
{
    return value ? qHash(*value, seed) : seed;
}

} // namespace

double VideoFile::effectiveDuration(std::optional<double> skipHead,
                                    std::optional<double> skipTail) const
{
    const double head = clampedSkip(skipHead, durationSeconds);
    const double tail = clampedSkip(skipTail, durationSeconds - head);
    return std::max(durationSeconds - head - tail, shortestSelection);
}

qint64 VideoFile::totalBitrateBps() const
{
    return truncated(std::max(measuredBitrate(*this), declaredBitrate(*this)));
}

size_t qHash(const AudioStream &stream, size_t seed) noexcept
{
    seed = qHashMulti(seed, stream.index, stream.codec, stream.isDefault);
    seed = hashOf(stream.bitrateBps, seed);
    seed = hashOf(stream.channels, seed);
    return hashOf(stream.language, seed);
}

size_t qHash(const SubtitleStream &stream, size_t seed) noexcept
{
    return hashOf(stream.language, qHashMulti(seed, stream.index, stream.codec));
}

size_t qHash(const VideoFile &file, size_t seed) noexcept
{
    seed = qHashMulti(seed, file.id, file.url, file.durationSeconds, file.fileSizeBytes,
                      file.audioStreams, file.subtitleStreams, file.containerName, file.isHDR,
                      file.hasAlphaChannel);
    seed = hashOf(file.width, seed);
    seed = hashOf(file.height, seed);
    seed = hashOf(file.videoCodec, seed);
    seed = hashOf(file.videoBitrateBps, seed);
    return hashOf(file.fps, seed);
}
