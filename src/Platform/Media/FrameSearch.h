// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/AvHandles.h"
#include "Platform/Media/VideoDecoder.h"
#include "Platform/Media/VideoSource.h"

#include <cstdint>

/// Finds the frame that stands on the screen at a time. Containers tell only roughly where to
/// begin: some by the order of decoding, some anywhere. So it looks where it has landed, and goes
/// back further until what it decodes begins at or before the time. One thread at a time.
class FrameSearch
{
public:
    /// Both outlive the search.
    FrameSearch(VideoSource &source, VideoDecoder &decoder);

    /// The last frame at or before the timestamp, or the first of all. Throws FrameError.
    AvFrame exactFrame(int64_t wanted);

    /// The last keyframe at or before the timestamp; where that shows nothing by itself, the exact
    /// frame. Throws FrameError.
    AvFrame keyframe(int64_t wanted);

private:
    struct Found {
        AvFrame upTo;
        AvFrame after;
    };

    bool isWithinFilm(int64_t wanted, double secondsBack) const;
    bool readLastKeyframe(int64_t wanted);
    bool land(int64_t target, int64_t wanted);
    bool landNear(int64_t target, int64_t wanted);
    bool readToKeyframe(int64_t wanted);
    void walk(int64_t wanted);
    void holdKeyframe();
    void decodeOn(int64_t earliest, int64_t wanted, Found &found);
    bool takeFrames(int64_t earliest, int64_t wanted, Found &found);
    bool isShownUpTo(const AVPacket &packet, int64_t wanted) const;
    int64_t reckonedTimestamp(const AVFrame &frame);

    VideoSource &m_source;
    VideoDecoder &m_decoder;
    /// What was read last.
    AvPacket m_packet = makePacket();
    /// The last keyframe that was walked past.
    AvPacket m_keyframe = makePacket();
    /// Where the next frame is reckoned to stand, for films that don't tell.
    int64_t m_nextTimestamp = 0;
};
