// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/FrameSearch.h"

#include "Platform/FrameError.h"

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Seconds that a keyframe may lie before the wanted frame until a container that has no index of
// that place is looked through for a nearer one.
constexpr double farBehind = 5;

// Seconds that a frame may be shown after it is decoded, where only the order of decoding is told.
constexpr double longestDelay = 1;

// Seconds; the clocks of a damaged film can stand years apart.
constexpr double furthestBack = 500'000;

constexpr int64_t anyTimestamp = std::numeric_limits<int64_t>::min();

// Back by a second, then by two, four, eight.
double furtherBack(double seconds)
{
    return seconds == 0 ? 1 : 2 * seconds;
}

int64_t timestampOf(const AVPacket &packet)
{
    return packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
}

bool isKeyframe(const AVPacket &packet)
{
    return (packet.flags & AV_PKT_FLAG_KEY) != 0;
}

// Frames are decoded in time to be shown, so what follows such a packet is shown later, too.
bool isBehind(const AVPacket &packet, int64_t wanted)
{
    const int64_t decodedAt = packet.dts != AV_NOPTS_VALUE ? packet.dts : packet.pts;
    return decodedAt != AV_NOPTS_VALUE && decodedAt > wanted;
}

} // namespace

FrameSearch::FrameSearch(VideoSource &source, VideoDecoder &decoder)
    : m_source(source)
    , m_decoder(decoder)
{
}

AvFrame FrameSearch::exactFrame(int64_t wanted)
{
    Found found;
    for (double back = 0; isWithinFilm(wanted, back); back = furtherBack(back)) {
        const int64_t target = wanted - m_source.ticks(back);
        if (landNear(target, wanted)) {
            // Frames that are shown before the keyframe lean on others before it.
            decodeOn(timestampOf(*m_packet), wanted, found);
        }
        if (found.upTo) {
            return std::move(found.upTo);
        }
    }
    m_source.rewind();
    if (m_source.read(*m_packet)) {
        decodeOn(anyTimestamp, wanted, found);
    }
    AvFrame frame = found.upTo ? std::move(found.upTo) : std::move(found.after);
    if (!frame) {
        throw FrameError::decodeFailed(u"no frame"_s);
    }
    return frame;
}

AvFrame FrameSearch::keyframe(int64_t wanted)
{
    if (readLastKeyframe(wanted)) {
        if (AvFrame frame = m_decoder.decodeAlone(*m_keyframe)) {
            return frame;
        }
    }
    return exactFrame(wanted);
}

bool FrameSearch::isWithinFilm(int64_t wanted, double secondsBack) const
{
    return secondsBack <= furthestBack &&
           wanted - m_source.ticks(secondsBack) >= m_source.firstTimestamp();
}

// False when no keyframe is shown at or before the wanted timestamp.
bool FrameSearch::readLastKeyframe(int64_t wanted)
{
    for (double back = 0; isWithinFilm(wanted, back); back = furtherBack(back)) {
        const int64_t target = wanted - m_source.ticks(back);
        if (land(target, wanted)) {
            holdKeyframe();
            // Seeking for the wanted place itself goes to the last keyframe that is indexed.
            if (back > 0 || !m_source.isIndexedUpTo(wanted)) {
                walk(wanted);
            }
            return true;
        }
    }
    m_source.rewind();
    if (!readToKeyframe(wanted)) {
        return false;
    }
    walk(wanted);
    return true;
}

// Goes where the container takes us for the target. True when the first keyframe from there on is
// shown at or before the wanted timestamp; it has been read then.
bool FrameSearch::land(int64_t target, int64_t wanted)
{
    return m_source.seek(target) && readToKeyframe(wanted);
}

bool FrameSearch::readToKeyframe(int64_t wanted)
{
    while (m_source.read(*m_packet)) {
        if (isKeyframe(*m_packet)) {
            return isShownUpTo(*m_packet, wanted);
        }
        if (isBehind(*m_packet, wanted)) {
            return false;
        }
    }
    return false;
}

// Fragmented films are indexed as far as they have been read: a look through them saves decoding
// all that lies between.
bool FrameSearch::landNear(int64_t target, int64_t wanted)
{
    if (!land(target, wanted)) {
        return false;
    }
    const int64_t landed = timestampOf(*m_packet);
    if (m_source.isIndexedUpTo(wanted) || wanted - landed <= m_source.ticks(farBehind)) {
        return true;
    }
    walk(wanted);
    const int64_t nearer =
        m_keyframe->dts != AV_NOPTS_VALUE ? m_keyframe->dts : timestampOf(*m_keyframe);
    return land(nearer, wanted) || land(target, wanted);
}

// From the keyframe that has been read, without decoding.
void FrameSearch::walk(int64_t wanted)
{
    do {
        if (isKeyframe(*m_packet) && isShownUpTo(*m_packet, wanted)) {
            holdKeyframe();
        }
    } while (!isBehind(*m_packet, wanted) && m_source.read(*m_packet));
}

void FrameSearch::holdKeyframe()
{
    av_packet_unref(m_keyframe.get());
    av_packet_ref(m_keyframe.get(), m_packet.get());
}

// Decodes from the packet that has been read until a frame is shown after the wanted timestamp, or
// to the end. Of the frames before the earliest nothing is kept.
void FrameSearch::decodeOn(int64_t earliest, int64_t wanted, Found &found)
{
    m_decoder.flush();
    m_nextTimestamp = std::max(earliest, m_source.firstTimestamp());
    do {
        m_decoder.send(*m_packet);
        if (takeFrames(earliest, wanted, found)) {
            return;
        }
    } while (m_source.read(*m_packet));
    m_decoder.finish();
    takeFrames(earliest, wanted, found);
}

// True when one is shown after the wanted timestamp.
bool FrameSearch::takeFrames(int64_t earliest, int64_t wanted, Found &found)
{
    while (AvFrame frame = m_decoder.receive()) {
        const int64_t timestamp = reckonedTimestamp(*frame);
        if (timestamp > wanted) {
            found.after = std::move(frame);
            return true;
        }
        if (timestamp >= earliest) {
            found.upTo = std::move(frame);
        }
    }
    return false;
}

// Whether a packet is surely shown at or before the wanted timestamp.
bool FrameSearch::isShownUpTo(const AVPacket &packet, int64_t wanted) const
{
    if (packet.pts != AV_NOPTS_VALUE) {
        return packet.pts <= wanted;
    }
    const bool isReordered = m_source.stream().codecpar->video_delay > 0;
    const int64_t delay = isReordered ? m_source.ticks(longestDelay) : 0;
    return packet.dts != AV_NOPTS_VALUE && packet.dts + delay <= wanted;
}

int64_t FrameSearch::reckonedTimestamp(const AVFrame &frame)
{
    const int64_t timestamp = frame.best_effort_timestamp != AV_NOPTS_VALUE
                                  ? frame.best_effort_timestamp
                                  : m_nextTimestamp;
    m_nextTimestamp = timestamp + std::max<int64_t>(frame.pkt_duration, 1);
    return timestamp;
}
