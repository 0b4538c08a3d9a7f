// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/AvHandles.h"

#include <QString>

#include <atomic>
#include <cstdint>
#include <optional>

/// The packets of a film's picture. Timestamps are in ticks of the stream's time base. One thread
/// at a time; the flag may be set by any, and ends whatever waits for the file.
class VideoSource
{
public:
    /// Opens the file. Throws FrameError. The flag outlives the source.
    VideoSource(QString path, const std::atomic<bool> &cancelled);

    /// Until the next rewind().
    AVStream &stream() const { return *m_stream; }

    /// The cover, where that is all there is to see: read() gives nothing then. Null for a film.
    const AVPacket *attachedPicture() const;

    /// The pixel's width over its height, as container or frame tell.
    AVRational sampleAspectRatio(const AVFrame &frame) const;

    /// The tick that a time in seconds falls on, within the film.
    int64_t timestampAt(double seconds) const;

    /// So many seconds in ticks, rounded down.
    int64_t ticks(double seconds) const;

    /// Where the first frame stands, as far as the container tells.
    int64_t firstTimestamp() const;

    /// Goes to the keyframe before a timestamp, as the container knows it: the next packet may be
    /// a later one or no keyframe at all. False where it can't seek.
    bool seek(int64_t timestamp);

    /// Goes to the first packet. Throws FrameError.
    void rewind();

    /// The next packet of the picture; false at the end and where the file can't be read any
    /// further. Throws FrameError::cancelled.
    bool read(AVPacket &packet);

    /// Whether the container's index names a keyframe at or behind the timestamp, so that seek()
    /// has known all keyframes up to it.
    bool isIndexedUpTo(int64_t timestamp) const;

private:
    void open();
    void throwIfCancelled() const;
    int64_t startTimestamp() const;
    std::optional<double> durationSeconds() const;

    QString m_path;
    const std::atomic<bool> &m_cancelled;
    AvFormat m_format;
    AVStream *m_stream = nullptr;
    bool m_isAtStart = false;
};
