// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/FilmTimeline.h"

#include "Platform/Media/AvLog.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace {

// Against the rounding of sums of doubles.
constexpr double rounding = 1e-6;

// A jump that lands too late is tried again from so much earlier, in seconds.
constexpr std::array earlierStarts{0.0, 1.0, 2.0, 4.0, 8.0, 16.0};

// By how much a jump to the very start may still miss the first keyframe, which is decoded before
// it is shown, in seconds.
constexpr double leadIn = 1;

int wantsStop(void *flag)
{
    return static_cast<const std::atomic<bool> *>(flag)->load() ? 1 : 0;
}

Orientation orientationOf(const AVStream *stream)
{
    size_t size = 0;
    const uint8_t *data = av_stream_get_side_data(stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    const bool isTold = data != nullptr && size >= 9 * sizeof(int32_t);
    return Orientation::ofMatrix(isTold ? reinterpret_cast<const int32_t *>(data) : nullptr);
}

bool isHdrTransfer(AVColorTransferCharacteristic transfer)
{
    return transfer == AVCOL_TRC_SMPTE2084 || transfer == AVCOL_TRC_ARIB_STD_B67;
}

bool hasRoughSeeks(const AVInputFormat *format)
{
    constexpr std::array<std::string_view, 2> names{"mpegts", "mpeg"};
    return std::ranges::find(names, std::string_view(format->name)) != names.end();
}

// A container that counts in ticks has to round the times of a rate that they don't divide: a frame
// of 1/24 s stands at 42 ms in one that counts milliseconds. Two times that are compared may be off
// by half a tick each. Where the rate fits, times are exact.
double slackOf(const AVStream *stream)
{
    const AVRational rate = stream->avg_frame_rate;
    const AVRational tick = stream->time_base;
    if (rate.num <= 0 || rate.den <= 0 ||
        int64_t{rate.den} * tick.den % (int64_t{rate.num} * tick.num) == 0) {
        return rounding;
    }
    return std::min(av_q2d(tick), 0.25 / av_q2d(rate)) + rounding;
}

} // namespace

FilmTimeline::FilmTimeline(const QByteArray &path, const std::atomic<bool> &isStopped)
    : m_isStopped(isStopped)
{
    silenceAvLog();
    if (open(path)) {
        readTraits();
    }
}

bool FilmTimeline::open(const QByteArray &path)
{
    AVFormatContext *format = avformat_alloc_context();
    format->interrupt_callback = {&wantsStop, const_cast<std::atomic<bool> *>(&m_isStopped)};
    // A failure frees the context.
    if (avformat_open_input(&format, path.constData(), nullptr, nullptr) < 0) {
        return false;
    }
    m_format.reset(format);
    if (avformat_find_stream_info(format, nullptr) < 0) {
        return false;
    }
    const int best = av_find_best_stream(format, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        AVStream *stream = format->streams[i];
        const bool isWanted = static_cast<int>(i) == best;
        stream->discard = isWanted ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
        if (isWanted && (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) == 0) {
            m_stream = stream;
        }
    }
    return m_stream != nullptr;
}

void FilmTimeline::readTraits()
{
    if (m_format->start_time != AV_NOPTS_VALUE) {
        m_start = static_cast<double>(m_format->start_time) / AV_TIME_BASE;
    }
    m_slack = slackOf(m_stream);
    m_traits.orientation = orientationOf(m_stream);
    m_traits.isHdr = isHdrTransfer(m_stream->codecpar->color_trc);
    m_traits.hasRoughSeeks = hasRoughSeeks(m_format->iformat);
}

double FilmTimeline::secondsOf(qint64 timestamp) const
{
    return static_cast<double>(timestamp) * av_q2d(m_stream->time_base) - m_start;
}

bool FilmTimeline::seekTo(double seconds)
{
    const double ticks = (seconds + m_start) / av_q2d(m_stream->time_base);
    return av_seek_frame(m_format.get(), m_stream->index, static_cast<int64_t>(std::floor(ticks)),
                         AVSEEK_FLAG_BACKWARD) >= 0;
}

// The next packet of the picture; false at the end and where the file can't be read on.
bool FilmTimeline::readPacket()
{
    do {
        av_packet_unref(m_packet.get());
        if (m_isStopped || av_read_frame(m_format.get(), m_packet.get()) < 0) {
            return false;
        }
    } while (m_packet->stream_index != m_stream->index);
    return true;
}

std::optional<FrameMoment> FilmTimeline::at(double seconds)
{
    if (m_stream == nullptr) {
        return std::nullopt;
    }
    const double bound = seconds + m_slack;
    std::optional<FrameMoment> found;
    for (const double earlier : earlierStarts) {
        if (!seekTo(seconds - earlier)) {
            continue;
        }
        found = scan(bound);
        // A keyframe may be decoded before frames that are shown before it.
        const bool isBehind = found && std::max(found->shown, found->keyframe) > bound;
        if ((found && !isBehind) || seconds + leadIn < earlier || m_isStopped) {
            break;
        }
    }
    // Only the film's first frame is shown before its time.
    if (found && found->shown > bound && seekTo(seconds - earlierStarts.back())) {
        found = scan(found->shown + m_slack);
    }
    return m_isStopped ? std::nullopt : found;
}

// Whether all packets from the one at hand on are shown after that time. Some containers leave the
// time of decoding open; no codec holds back more than 16 frames.
bool FilmTimeline::isPast(double seconds, int packetsSince) const
{
    constexpr int mostHeldBack = 16;
    return m_packet->dts == AV_NOPTS_VALUE ? packetsSince > mostHeldBack
                                           : secondsOf(m_packet->dts) > seconds;
}

// From the first keyframe on. Packets come in the order of decoding, and none is shown before it is
// decoded: once that order is past the next frame's time, no frame is to come that lies between.
std::optional<FrameMoment> FilmTimeline::scan(double seconds)
{
    std::optional<double> keyframe;
    std::optional<double> shown;
    std::optional<double> next;
    int packetsWithNext = 0;
    while (readPacket()) {
        const bool isKeyframe = (m_packet->flags & AV_PKT_FLAG_KEY) != 0;
        if ((!keyframe && !isKeyframe) || (m_packet->flags & AV_PKT_FLAG_DISCARD) != 0) {
            continue;
        }
        if (m_packet->pts == AV_NOPTS_VALUE) {
            return std::nullopt;
        }
        const double time = secondsOf(m_packet->pts);
        if (isKeyframe && (!keyframe || time <= seconds)) {
            keyframe = time;
        }
        if (time <= seconds) {
            shown = std::max(shown.value_or(time), time);
        } else {
            next = std::min(next.value_or(time), time);
        }
        if (next && isPast(*next, ++packetsWithNext)) {
            break;
        }
    }
    if (!keyframe || (!shown && !next)) {
        return std::nullopt;
    }
    return shown ? FrameMoment{*shown, next, *keyframe} : FrameMoment{*next, {}, *keyframe};
}
