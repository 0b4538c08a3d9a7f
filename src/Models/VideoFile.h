// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>

/// One audio track of a probed file.
struct AudioStream {
    /// The stream's index in the whole file, as ffmpeg's -map counts.
    qint64 index = 0;
    QString codec;
    std::optional<qint64> bitrateBps;
    std::optional<qint64> channels;
    std::optional<QString> language;
    bool isDefault = false;

    bool operator==(const AudioStream &) const = default;
};

/// One subtitle track of a probed file.
struct SubtitleStream {
    /// The stream's index in the whole file, as ffmpeg's -map counts.
    qint64 index = 0;
    QString codec;
    std::optional<QString> language;

    bool operator==(const SubtitleStream &) const = default;
};

/// A probed input. Only the probe makes one; nothing changes one afterwards, so it may cross
/// threads by value.
struct VideoFile {
    /// Fresh on every probe: two probes of one path are two files.
    QUuid id = QUuid::createUuid();
    QUrl url;
    /// Length of the container; 0 when unknown.
    double durationSeconds = 0;
    qint64 fileSizeBytes = 0;
    std::optional<qint64> width;
    std::optional<qint64> height;
    std::optional<QString> videoCodec;
    std::optional<qint64> videoBitrateBps;
    std::optional<double> fps;
    QList<AudioStream> audioStreams;
    QList<SubtitleStream> subtitleStreams;
    /// ffprobe's format_name, the whole comma list, or empty.
    QString containerName;
    bool isHDR = false;
    bool hasAlphaChannel = false;

    /// The seconds left after both skips, each clamped into what is there; never below 0.1, so
    /// that callers may divide by it.
    double effectiveDuration(std::optional<double> skipHead, std::optional<double> skipTail) const;

    /// Bits per second: the larger of the measured rate (size over duration) and the declared one
    /// (video plus the highest single audio track).
    qint64 totalBitrateBps() const;

    bool operator==(const VideoFile &) const = default;
};

size_t qHash(const AudioStream &stream, size_t seed = 0) noexcept;
size_t qHash(const SubtitleStream &stream, size_t seed = 0) noexcept;
size_t qHash(const VideoFile &file, size_t seed = 0) noexcept;
