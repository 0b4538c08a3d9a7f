// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/VideoDecoder.h"

#include "Platform/FrameError.h"
#include "Platform/Media/AvError.h"

#include <QThread>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// More threads hold more frames of a large film, and gain little on a few frames.
constexpr int mostThreads = 4;

// A decoder that only complains must not hold us for ever.
constexpr int mostErrorsInARow = 100;

} // namespace

VideoDecoder::VideoDecoder(const AVStream &stream)
{
    const AVCodec *codec = avcodec_find_decoder(stream.codecpar->codec_id);
    if (codec == nullptr) {
        throw FrameError::decodeFailed(
            u"no decoder for "_s + QString::fromUtf8(avcodec_get_name(stream.codecpar->codec_id)));
    }
    m_codec.reset(avcodec_alloc_context3(codec));
    int result = avcodec_parameters_to_context(m_codec.get(), stream.codecpar);
    if (result >= 0) {
        m_codec->pkt_timebase = stream.time_base;
        m_codec->thread_count = std::clamp(QThread::idealThreadCount(), 1, mostThreads);
        result = avcodec_open2(m_codec.get(), codec, nullptr);
    }
    if (result < 0) {
        throw FrameError::decodeFailed(avErrorText(result));
    }
}

void VideoDecoder::send(const AVPacket &packet)
{
    avcodec_send_packet(m_codec.get(), &packet);
}

void VideoDecoder::finish()
{
    avcodec_send_packet(m_codec.get(), nullptr);
}

AvFrame VideoDecoder::receive()
{
    AvFrame frame = makeFrame();
    for (int errors = 0; errors < mostErrorsInARow; ++errors) {
        const int result = avcodec_receive_frame(m_codec.get(), frame.get());
        if (result >= 0) {
            return frame;
        }
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
            return nullptr;
        }
    }
    return nullptr;
}

void VideoDecoder::flush()
{
    avcodec_flush_buffers(m_codec.get());
}

AvFrame VideoDecoder::decodeAlone(const AVPacket &packet)
{
    flush();
    send(packet);
    finish();
    AvFrame frame = receive();
    flush();
    return frame;
}
