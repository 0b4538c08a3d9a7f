// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/ToneMapping.h"

extern "C" {
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/mastering_display_metadata.h>
}

#include <QByteArray>
#include <QString>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Nits of the white that a plain screen shows, as the filters count.
constexpr double plainWhite = 100;

// Nits of the brightest spot in a film that doesn't tell: what most are graded for.
constexpr double usualPeak = 1000;

// What any film can hold.
constexpr double highestPeak = 10'000;

const AVFrameSideData *sideData(const AVFrame &frame, AVFrameSideDataType type)
{
    return av_frame_get_side_data(&frame, type);
}

double toldPeak(const AVFrame &frame)
{
    if (const AVFrameSideData *data = sideData(frame, AV_FRAME_DATA_CONTENT_LIGHT_LEVEL)) {
        return reinterpret_cast<const AVContentLightMetadata *>(data->data)->MaxCLL;
    }
    if (const AVFrameSideData *data = sideData(frame, AV_FRAME_DATA_MASTERING_DISPLAY_METADATA)) {
        const auto *display = reinterpret_cast<const AVMasteringDisplayMetadata *>(data->data);
        return display->has_luminance != 0 ? av_q2d(display->max_luminance) : 0;
    }
    return 0;
}

double peakOf(const AVFrame &frame)
{
    const double told = toldPeak(frame);
    return told > plainWhite && told <= highestPeak ? told : usualPeak;
}

// What an HDR film means when it says no more than its curve.
int orElse(int value, int unspecified, int usual)
{
    return value == unspecified ? usual : value;
}

// Scaled first, since light is reckoned in 32 bits a channel.
QString filtersFor(const AVFrame &frame, QSize size)
{
    const int matrix = orElse(frame.colorspace, AVCOL_SPC_UNSPECIFIED, AVCOL_SPC_BT2020_NCL);
    const int primaries = orElse(frame.color_primaries, AVCOL_PRI_UNSPECIFIED, AVCOL_PRI_BT2020);
    const bool isFull = frame.color_range == AVCOL_RANGE_JPEG;
    return u"scale=%1:%2:flags=bicubic,"
           "zscale=matrixin=%3:primariesin=%4:transferin=%5:rangein=%6:"
           "transfer=linear:primaries=bt709:matrix=gbr:range=full:npl=%7,format=gbrpf32le,"
           "tonemap=hable:desat=0:peak=%8,"
           "zscale=transfer=iec61966-2-1:matrix=gbr:range=full,format=gbrp"_s.arg(
               QString::number(size.width()), QString::number(size.height()),
               QString::number(matrix), QString::number(primaries),
               QString::number(frame.color_trc), isFull ? u"full"_s : u"limited"_s,
               QString::number(plainWhite), QString::number(peakOf(frame) / plainWhite));
}

QString describe(const AVFrame &frame)
{
    return u"video_size=%1x%2:pix_fmt=%3:time_base=1/1:pixel_aspect=1/1"_s.arg(
        QString::number(frame.width), QString::number(frame.height), QString::number(frame.format));
}

AVFilterContext *addEnd(AVFilterGraph &graph, const char *filter, const QByteArray &args)
{
    AVFilterContext *end = nullptr;
    avfilter_graph_create_filter(&end, avfilter_get_by_name(filter), filter,
                                 args.isEmpty() ? nullptr : args.constData(), nullptr, &graph);
    return end;
}

AVFilterInOut *openPad(const char *name, AVFilterContext *filter)
{
    AVFilterInOut *pad = avfilter_inout_alloc();
    pad->name = av_strdup(name);
    pad->filter_ctx = filter;
    return pad;
}

// True when the filters stand between the two ends.
bool connect(AVFilterGraph &graph, AVFilterContext *source, AVFilterContext *sink,
             const QString &filters)
{
    if (source == nullptr || sink == nullptr) {
        return false;
    }
    AVFilterInOut *outputs = openPad("in", source);
    AVFilterInOut *inputs = openPad("out", sink);
    const int parsed = avfilter_graph_parse_ptr(&graph, filters.toLatin1().constData(), &inputs,
                                                &outputs, nullptr);
    avfilter_inout_free(&inputs);
    avfilter_inout_free(&outputs);
    return parsed >= 0 && avfilter_graph_config(&graph, nullptr) >= 0;
}

} // namespace

bool ToneMapping::isNeededFor(const AVFrame &frame)
{
    return frame.color_trc == AVCOL_TRC_SMPTE2084 || frame.color_trc == AVCOL_TRC_ARIB_STD_B67;
}

AvFrame ToneMapping::mapped(const AVFrame &frame, QSize size)
{
    const AvGraph graph(avfilter_graph_alloc());
    AVFilterContext *source = addEnd(*graph, "buffer", describe(frame).toLatin1());
    AVFilterContext *sink = addEnd(*graph, "buffersink", {});
    if (!connect(*graph, source, sink, filtersFor(frame, size))) {
        return nullptr;
    }
    AvFrame result = makeFrame();
    const AvFrame input(av_frame_clone(&frame));
    if (av_buffersrc_add_frame(source, input.get()) < 0 ||
        av_buffersink_get_frame(sink, result.get()) < 0) {
        return nullptr;
    }
    return result;
}
