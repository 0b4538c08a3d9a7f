// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/L10nRows.h"

#include <array>

namespace L10n {
namespace {

constexpr auto texts = std::to_array<Row>({
    {"target.custom.placeholder", u"48", u"48"},
    {"target.estimate", u"Estimated ~%1$@ · guaranteed under %2$@",
     u"预估 ~%1$@ · 保证不超过 %2$@"},
    {"target.mute", u"Remove audio", u"移除音频"},
    {"target.skip.head", u"Skip first (sec)", u"跳过开头（秒）"},
    {"target.skip.tail", u"Skip last (sec)", u"跳过结尾（秒）"},
    {"target.exact", u"Exact 2-pass mode (slower, needs x264 ffmpeg)",
     u"精确两遍编码（较慢，需要带 libx264 的 ffmpeg）"},
    {"target.exact.unavailable",
     u"2-pass exact mode unavailable — install a GPL ffmpeg with libx264 to enable",
     u"两遍精确模式不可用——安装含 libx264 的 GPL ffmpeg 后可开启"},
    {"target.warn.lowbitrate",
     u"Bitrate budget is very low — quality will drop noticeably. Trim or mute to help.",
     u"码率预算很低，画质会明显下降。可裁剪或静音来改善。"},
    {"target.warn.hopeless",
     u"Target is unreachable for this length even at minimum bitrate. Trim the clip or raise the "
     u"target.",
     u"这个时长即使压到最低码率也达不到目标。请裁剪片段或调大目标。"},
    {"target.warn.floor",
     u"Video hit the minimum bitrate floor; audio still counts toward the budget.",
     u"视频已达最低码率，音频仍占用预算。"},
    {"target.alreadyfits", u"Already under target · copied without re-encoding",
     u"已小于目标 · 未重新编码直接复制"},

    {"convert.container", u"Output format", u"输出格式"},
    // The selector after the sign asks for a plain glyph, not for a coloured one.
    {"convert.badge.remux", u"Lossless · instant", u"⚡\uFE0E 无损 · 秒完成"},
    {"convert.badge.partial", u"Video copied · audio converted", u"视频直拷 · 音频转码"},
    {"convert.badge.reencode", u"Re-encode required", u"需要重新编码"},
    {"convert.force", u"Force re-encode", u"强制重新编码"},
    {"convert.subs.movtext", u"Text subtitles will be converted for playback",
     u"文本字幕将自动转换以保留"},

    {"compress.quality", u"Quality", u"画质"},
    {"compress.quality.good", u"Good", u"良好"},
    {"compress.quality.better", u"Better", u"更好"},
    {"compress.quality.best", u"Best", u"最佳"},
    {"compress.resolution", u"Resolution", u"分辨率"},
    {"compress.resolution.original", u"Original", u"原始"},
    {"compress.mute", u"Remove audio", u"移除音频"},
    {"compress.mode", u"Mode", u"模式"},
    {"compress.mode.smart", u"Smart", u"智能"},
    {"compress.mode.smart.desc", u"Best size with no visible quality loss — decisions made for you",
     u"在无明显画质损失下尽量变小——参数自动决定"},
    {"compress.mode.quality", u"Quality & Resolution", u"画质与分辨率"},
    {"compress.quality.maximum", u"Maximum", u"最高"},
    {"compress.quality.high", u"High", u"高"},
    {"compress.quality.balanced", u"Balanced", u"均衡"},
    {"compress.quality.small", u"Small", u"小体积"},
    {"compress.quality.tiny", u"Tiny", u"极小体积"},
    {"compress.resolution.custom", u"Custom", u"自定义"},
    {"compress.resolution.custom.placeholder", u"Height (px)", u"高度（像素）"},
    {"compress.hw.badge", u"Hardware accelerated", u"硬件加速"},

    {"extract.format", u"Format", u"格式"},
    {"extract.direct", u"Direct copy · fast · lossless", u"直拷 · 快 · 无损"},
    {"extract.transcode", u"Re-encodes audio", u"音频将重新编码"},
    {"extract.bitrate", u"Bitrate", u"码率"},
    {"extract.track", u"Audio track", u"音轨"},
    {"extract.warn.generation",
     u"Source audio is %1$@; converting to %2$@ re-encodes and loses some quality.",
     u"源音频是 %1$@，转成 %2$@ 会重新编码，有一些质量损失。"},
    {"extract.noaudio", u"This file has no audio track.", u"这个文件没有音轨。"},

    {"trim.mode", u"Cut mode", u"切割方式"},
    {"trim.mode.keyframe", u"Keyframe cut · instant · lossless", u"关键帧切割 · 秒完成 · 无损"},
    {"trim.mode.exact", u"Exact cut", u"精确切割"},
    {"trim.snap", u"Snap to keyframes", u"吸附到关键帧"},
    {"trim.segment", u"Segment", u"片段"},
    {"trim.keep", u"Keep", u"保留"},
    {"trim.addsplit", u"Split at playhead", u"在播放头处分割"},
    {"trim.addsegment", u"Add segment", u"添加片段"},
    {"trim.export", u"Export", u"导出"},
    {"trim.export.merged", u"Merge into one file", u"合并为一个文件"},
    {"trim.export.separate", u"Separate files", u"分成多个文件"},
    {"trim.empty", u"Mark at least one segment to keep.", u"请至少标记一个要保留的片段。"},
    {"trim.total", u"Kept: %1$@ of %2$@", u"保留 %1$@ / 共 %2$@"},
    {"trim.mode.exact.enabled", u"Exact · re-encodes · frame-accurate",
     u"精确切割 · 重新编码 · 精确到帧"},

    {"gif.range", u"Range", u"范围"},
    {"gif.start", u"Start (sec)", u"开始（秒）"},
    {"gif.end", u"End (sec)", u"结束（秒）"},
    {"gif.width", u"Width", u"宽度"},
    {"gif.fps", u"FPS", u"帧率"},
    {"gif.loop", u"Loop forever", u"无限循环"},
    {"gif.bounce", u"Bounce (reverse loop)", u"来回播放（正放后倒放）"},
    {"gif.screen", u"Screen-recording palette", u"录屏调色板"},
    {"gif.preset.default", u"Default", u"默认"},
    {"gif.preset.screen", u"Screen recording", u"录屏"},
    {"gif.preset.tiny", u"Tiny", u"极小"},
    {"gif.preset.slack", u"Slack", u"Slack"},
    {"gif.preset.discord", u"Discord", u"Discord"},
    {"gif.preset.docs", u"Docs", u"文档"},
    {"gif.preset.small", u"Small GIF", u"小尺寸 GIF"},
});

} // namespace

std::span<const Row> panelRows()
{
    return texts;
}

} // namespace L10n
