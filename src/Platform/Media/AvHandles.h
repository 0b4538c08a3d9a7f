// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <new>

/// Gives a libav object back by the function that belongs to it, which takes the pointer's address.
template <auto release> struct AvRelease {
    template <typename T> void operator()(T *object) const { release(&object); }
};

struct SwsRelease {
    void operator()(SwsContext *context) const { sws_freeContext(context); }
};

using AvFormat = std::unique_ptr<AVFormatContext, AvRelease<avformat_close_input>>;
using AvCodec = std::unique_ptr<AVCodecContext, AvRelease<avcodec_free_context>>;
using AvPacket = std::unique_ptr<AVPacket, AvRelease<av_packet_free>>;
using AvFrame = std::unique_ptr<AVFrame, AvRelease<av_frame_free>>;
using AvGraph = std::unique_ptr<AVFilterGraph, AvRelease<avfilter_graph_free>>;
using Scaler = std::unique_ptr<SwsContext, SwsRelease>;

inline AvPacket makePacket()
{
    AvPacket packet(av_packet_alloc());
    if (!packet) {
        throw std::bad_alloc();
    }
    return packet;
}

inline AvFrame makeFrame()
{
    AvFrame frame(av_frame_alloc());
    if (!frame) {
        throw std::bad_alloc();
    }
    return frame;
}
