// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/VideoSource.h"

#include "Platform/FrameError.h"
#include "Platform/Media/AvError.h"
#include "Platform/Media/AvLog.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Ends libav's waits.
int isCancelled(void *flag)
{
    return static_cast<const std::atomic<bool> *>(flag)->load() ? 1 : 0;
}

bool isPicture(const AVStream *stream)
{
    return stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO;
}

bool isAttached(const AVStream *stream)
{
    return (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
}

// Throws FrameError. The flag outlives the context.
AvFormat openFormat(const QString &path, const std::atomic<bool> &cancelled)
{
    // Pipes and devices would wait for a writer.
    if (!QFileInfo(path).isFile()) {
        throw FrameError::cannotOpen(u"not a file"_s);
    }
    AVFormatContext *format = avformat_alloc_context();
    format->interrupt_callback = {isCancelled, const_cast<std::atomic<bool> *>(&cancelled)};
    // A name may look like a protocol's: "file:" says that it isn't, and keeps a playlist to files,
    // too. A failure frees the context.
    const QByteArray url = "file:" + QFile::encodeName(path);
    const int result = avformat_open_input(&format, url.constData(), nullptr, nullptr);
    if (result < 0) {
        throw cancelled.load() ? FrameError::cancelled()
                               : FrameError::cannotOpen(avErrorText(result));
    }
    return AvFormat(format);
}

// The first one that is no cover, and a cover where that is all. The others are skipped unread.
AVStream *chooseStream(AVFormatContext &format)
{
    const std::span<AVStream *> streams(format.streams, format.nb_streams);
    const auto isFilm = [](const AVStream *stream) {
        return isPicture(stream) && !isAttached(stream);
    };
    auto chosen = std::ranges::find_if(streams, isFilm);
    if (chosen == streams.end()) {
        chosen = std::ranges::find_if(streams, isPicture);
    }
    if (chosen == streams.end()) {
        throw FrameError::noVideo();
    }
    for (AVStream *stream : streams) {
        stream->discard = stream == *chosen ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
    return *chosen;
}

} // namespace

VideoSource::VideoSource(QString path, const std::atomic<bool> &cancelled)
    : m_path(std::move(path))
    , m_cancelled(cancelled)
{
    open();
}

const AVPacket *VideoSource::attachedPicture() const
{
    return isAttached(m_stream) ? &m_stream->attached_pic : nullptr;
}

AVRational VideoSource::sampleAspectRatio(const AVFrame &frame) const
{
    // Takes the frame for its tag alone.
    return av_guess_sample_aspect_ratio(m_format.get(), m_stream, const_cast<AVFrame *>(&frame));
}

int64_t VideoSource::timestampAt(double seconds) const
{
    // Beyond any film, and still within 64 bits of nanoseconds.
    constexpr double longest = 1e9;
    const double end = durationSeconds().value_or(longest);
    const double time = std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, end);
    return std::max(startTimestamp() + ticks(time), firstTimestamp());
}

int64_t VideoSource::ticks(double seconds) const
{
    // ffprobe cuts times to microseconds, and a frame's own time must still find that frame.
    constexpr double slack = 2e-6;
    return static_cast<int64_t>(std::floor((seconds + slack) / av_q2d(m_stream->time_base)));
}

int64_t VideoSource::firstTimestamp() const
{
    return m_stream->start_time != AV_NOPTS_VALUE ? m_stream->start_time : startTimestamp();
}

bool VideoSource::seek(int64_t timestamp)
{
    m_isAtStart = false;
    return av_seek_frame(m_format.get(), m_stream->index, timestamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

// A container without an index finds its first packet by seeking no better than any other.
void VideoSource::rewind()
{
    if (!m_isAtStart) {
        open();
    }
}

bool VideoSource::read(AVPacket &packet)
{
    m_isAtStart = false;
    do {
        throwIfCancelled();
        av_packet_unref(&packet);
        if (av_read_frame(m_format.get(), &packet) < 0) {
            throwIfCancelled();
            return false;
        }
    } while (packet.stream_index != m_stream->index);
    return true;
}

bool VideoSource::isIndexedUpTo(int64_t timestamp) const
{
    return av_index_search_timestamp(m_stream, timestamp, 0) >= 0;
}

void VideoSource::throwIfCancelled() const
{
    if (m_cancelled.load()) {
        throw FrameError::cancelled();
    }
}

void VideoSource::open()
{
    silenceAvLog();
    AvFormat format = openFormat(m_path, m_cancelled);
    // What it can't find out shows when decoding.
    avformat_find_stream_info(format.get(), nullptr);
    throwIfCancelled();
    m_stream = chooseStream(*format);
    m_format = std::move(format);
    m_isAtStart = true;
}

// Players count from the first packet of any stream.
int64_t VideoSource::startTimestamp() const
{
    if (m_format->start_time != AV_NOPTS_VALUE) {
        return av_rescale_q(m_format->start_time, AV_TIME_BASE_Q, m_stream->time_base);
    }
    return m_stream->start_time != AV_NOPTS_VALUE ? m_stream->start_time : 0;
}

// What is reckoned from the size of the file may end within the film.
std::optional<double> VideoSource::durationSeconds() const
{
    const bool isKnown = m_format->duration != AV_NOPTS_VALUE && m_format->duration > 0 &&
                         m_format->duration_estimation_method != AVFMT_DURATION_FROM_BITRATE;
    if (!isKnown) {
        return std::nullopt;
    }
    return static_cast<double>(m_format->duration) / AV_TIME_BASE;
}
