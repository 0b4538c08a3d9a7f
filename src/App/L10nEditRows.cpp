// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/L10nRows.h"

#include <array>

namespace L10n {
namespace {

constexpr auto texts = std::to_array<Row>({
    {"enhance.desc",
     u"Clean up noise, sharpen edges and optionally upscale — a clearer picture without inventing "
     u"detail.",
     u"清理噪点、锐化边缘、可选放大——让画面更干净锐利（不凭空造细节）。"},
    {"enhance.denoise", u"Denoise", u"降噪"},
    {"enhance.sharpen", u"Sharpen", u"锐化"},
    {"enhance.upscale", u"Upscale", u"放大"},
    {"enhance.upscale.x1", u"Keep size", u"保持尺寸"},
    {"enhance.level.off", u"Off", u"关闭"},
    {"enhance.level.light", u"Light", u"轻度"},
    {"enhance.level.medium", u"Medium", u"中度"},
    {"enhance.level.strong", u"Strong", u"强力"},

    {"merge.needmore", u"Load at least two videos to merge", u"至少载入两个视频才能合并"},
    {"merge.needmore.hint", u"Drag in the clips in the order you want them joined.",
     u"请按想要的先后顺序拖入片段。"},
    {"merge.order", u"Join order", u"合并顺序"},
    {"merge.button", u"Merge", u"合并"},
    {"merge.badge.copy", u"Lossless · instant (matching streams)", u"无损 · 秒完成（参数一致）"},
    {"merge.badge.reencode", u"Streams differ — will re-encode onto a shared canvas",
     u"参数不一致——将统一画面重编码"},
    {"merge.reason.codec", u"Different video codecs", u"视频编码不同"},
    {"merge.reason.resolution", u"Different resolutions", u"分辨率不同"},
    {"merge.reason.fps", u"Different frame rates", u"帧率不同"},
    {"merge.reason.audiocodec", u"Different audio codecs", u"音频编码不同"},
    {"merge.reason.audiomix", u"Some clips have audio, some don't", u"部分片段有音频，部分没有"},
    {"merge.reason.novideo", u"A clip has no video track", u"有片段不含视频轨"},

    {"split.mode", u"Split mode", u"分割方式"},
    {"split.mode.bysize", u"By size", u"按大小"},
    {"split.mode.byduration", u"By duration", u"按时长"},
    {"split.mode.byparts", u"Into parts", u"按段数"},
    {"split.sizeperpart", u"Size per part", u"每段大小"},
    {"split.durationperpart", u"Duration per part", u"每段时长"},
    {"split.parts", u"Number of parts", u"段数"},
    {"split.result", u"%1$@ part(s)", u"%1$@ 段"},
    {"split.eachpart", u"≈ %1$@ each · lossless keyframe cuts (sizes may vary slightly)",
     u"每段约 %1$@ · 无损关键帧切割（大小略有浮动）"},

    {"adjust.geometry", u"Rotate & flip", u"旋转与翻转"},
    {"adjust.rot.none", u"0°", u"0°"},
    {"adjust.rot.cw90", u"90° →", u"90° →"},
    {"adjust.rot.r180", u"180°", u"180°"},
    {"adjust.rot.ccw90", u"90° ←", u"90° ←"},
    {"adjust.fliph", u"Flip H", u"水平翻转"},
    {"adjust.flipv", u"Flip V", u"垂直翻转"},
    {"adjust.speed", u"Speed", u"速度"},
    {"adjust.reverse", u"Play backwards", u"倒放"},
    {"adjust.reverse.warn", u"Reversing long videos uses a lot of memory — best under 5 minutes.",
     u"长视频倒放占用大量内存——建议 5 分钟以内。"},
});

} // namespace

std::span<const Row> editRows()
{
    return texts;
}

} // namespace L10n
