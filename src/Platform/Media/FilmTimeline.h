// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/AvHandles.h"
#include "Platform/Media/PictureGeometry.h"

#include <QByteArray>

#include <atomic>
#include <optional>

/// What the player itself doesn't tell of a film.
struct FilmTraits {
    /// How a decoded picture is turned to be shown.
    Orientation orientation;
    /// Its picture has to be brought down to what a screen shows.
    bool isHdr = false;
    /// A jump by the container lands behind the time asked for, unless it begins far before it.
    bool hasRoughSeeks = false;
};

/// A frame and what is around it, in seconds from the film's start.
struct FrameMoment {
    double shown = 0;
    /// Absent for the last frame.
    std::optional<double> next;
    /// Where decoding has to begin to get at the frame.
    double keyframe = 0;
};

/// The times of a film's frames, read off its packets without decoding: a few milliseconds around
/// any moment. For one thread at a time.
class FilmTimeline
{
public:
    /// Opens the file. A file without a readable picture has default traits and no moments. Once
    /// `isStopped` is set, from any thread, calls under way and those to come end soon, with
    /// nothing found; it has to outlive the timeline.
    FilmTimeline(const QByteArray &path, const std::atomic<bool> &isStopped);

    const FilmTraits &traits() const { return m_traits; }

    /// The last frame that begins at or before the time; the first one when there is none. Absent
    /// where packets don't tell.
    std::optional<FrameMoment> at(double seconds);

private:
    bool open(const QByteArray &path);
    void readTraits();
    double secondsOf(qint64 timestamp) const;
    bool seekTo(double seconds);
    bool readPacket();
    bool isPast(double seconds, int packetsSince) const;
    std::optional<FrameMoment> scan(double seconds);

    const std::atomic<bool> &m_isStopped;
    AvFormat m_format;
    AvPacket m_packet = makePacket();
    /// Null without a picture.
    const AVStream *m_stream = nullptr;
    /// Of the whole film, in seconds; times count from it.
    double m_start = 0;
    /// How far the container may have rounded a frame's time, in seconds.
    double m_slack = 0;
    FilmTraits m_traits;
};
