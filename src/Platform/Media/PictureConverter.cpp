// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/PictureConverter.h"

#include "Platform/FrameError.h"
#include "Platform/Media/AvError.h"
#include "Platform/Media/ToneMapping.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// From this width on, a picture that doesn't tell is taken for HD.
constexpr int widthOfHd = 1280;

// Exact sums, and colour at each pixel instead of at each second one.
constexpr int scaling = SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_BITEXACT;

constexpr int unity = 1 << 16;

AVPixelFormat formatOf(const AVFrame &frame)
{
    return static_cast<AVPixelFormat>(frame.format);
}

bool hasAlpha(const AVFrame &frame)
{
    const AVPixFmtDescriptor *format = av_pix_fmt_desc_get(formatOf(frame));
    return format != nullptr && (format->flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
}

int colourSpaceOf(const AVFrame &frame)
{
    if (frame.colorspace != AVCOL_SPC_UNSPECIFIED) {
        return frame.colorspace;
    }
    return frame.width >= widthOfHd ? SWS_CS_ITU709 : SWS_CS_ITU601;
}

// Formats of photographs and of plain grey are of full range by themselves.
bool isFullByFormat(AVPixelFormat format)
{
    static constexpr std::array formats{AV_PIX_FMT_YUVJ411P, AV_PIX_FMT_YUVJ420P,
                                        AV_PIX_FMT_YUVJ422P, AV_PIX_FMT_YUVJ440P,
                                        AV_PIX_FMT_YUVJ444P, AV_PIX_FMT_GRAY8};
    return std::ranges::find(formats, format) != formats.end();
}

bool isFullRange(const AVFrame &frame)
{
    if (frame.color_range == AVCOL_RANGE_UNSPECIFIED) {
        return isFullByFormat(formatOf(frame));
    }
    return frame.color_range == AVCOL_RANGE_JPEG;
}

Scaler makeScaler(const AVFrame &frame, QSize size)
{
    Scaler scaler(sws_getContext(frame.width, frame.height, formatOf(frame), size.width(),
                                 size.height(), AV_PIX_FMT_RGB32, scaling, nullptr, nullptr,
                                 nullptr));
    if (!scaler) {
        throw FrameError::decodeFailed(u"no way to show its pixels"_s);
    }
    // Refuses what is no YUV, which needs nothing of it.
    sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(colourSpaceOf(frame)),
                             isFullRange(frame) ? 1 : 0, sws_getCoefficients(SWS_CS_DEFAULT), 1, 0,
                             unity, unity);
    return scaler;
}

// With room behind each line, where the scaler writes in blocks.
AvFrame makeCanvas(QSize size)
{
    AvFrame canvas = makeFrame();
    canvas->format = AV_PIX_FMT_RGB32;
    canvas->width = size.width();
    canvas->height = size.height();
    const int result = av_frame_get_buffer(canvas.get(), 0);
    if (result < 0) {
        throw FrameError::decodeFailed(avErrorText(result));
    }
    return canvas;
}

QImage scaled(const AVFrame &frame, QSize size, QImage::Format format)
{
    const AvFrame canvas = makeCanvas(size);
    const Scaler scaler = makeScaler(frame, size);
    const int lines = sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height,
                                canvas->data, canvas->linesize);
    if (lines < 0) {
        throw FrameError::decodeFailed(avErrorText(lines));
    }
    const QImage view(canvas->data[0], size.width(), size.height(), canvas->linesize[0], format);
    return view.copy();
}

} // namespace

QImage PictureConverter::image(const AVFrame &frame, QSize size)
{
    const QImage::Format format = hasAlpha(frame) ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    if (ToneMapping::isNeededFor(frame)) {
        if (const AvFrame mapped = ToneMapping::mapped(frame, size)) {
            return scaled(*mapped, size, format);
        }
    }
    return scaled(frame, size, format);
}
