// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/L10nRows.h"

#include <array>

namespace L10n {
namespace {

constexpr auto texts = std::to_array<Row>({
    {"app.tagline", u"Morvix compression and conversion for Mac.",
     u"Morvix，适用于 Mac 的视频压缩与转换工具。"},

    {"landing.drop.title", u"Drop videos here", u"把视频拖到这里"},
    {"landing.drop.subtitle", u"or click to browse", u"或点击选择文件"},
    {"landing.privacy", u"No upload · No watermark · No queue", u"不上传 · 无水印 · 不排队"},
    {"landing.hero.copy", u"1.2 GB → 100 MB · 83 MB → under 25 MB",
     u"1.2 GB → 100 MB · 83 MB → 25 MB 以内"},

    {"action.targetSize.title", u"Compress to Target Size", u"压缩到目标大小"},
    {"action.targetSize.subtitle", u"Set a limit — the output is measured and made to fit",
     u"设定大小上限，按实测结果压到达标"},
    {"action.convert.title", u"Convert", u"格式转换"},
    {"action.convert.subtitle", u"MP4, MOV, MKV, WebM or AVI, lossless when possible",
     u"MP4、MOV、MKV、WebM、AVI，能无损就不重新编码"},
    {"action.compress.title", u"Compress", u"压缩"},
    {"action.compress.subtitle", u"Smaller files at the quality you choose", u"按所选画质缩小文件"},
    {"action.extract.title", u"Extract Audio", u"提取音频"},
    {"action.extract.subtitle", u"Save the sound as M4A, MP3, AAC or WAV",
     u"把声音存为 M4A、MP3、AAC 或 WAV"},
    {"action.trim.title", u"Trim", u"裁剪"},
    {"action.trim.subtitle", u"Keep only the parts you want, lossless or frame-accurate",
     u"只留想要的片段，可无损，也可精确到帧"},
    {"action.gif.title", u"GIF", u"GIF 动图"},
    {"action.gif.subtitle", u"Turn a moment into a looping GIF", u"把精彩瞬间做成循环动图"},
    {"action.short.targetSize", u"Target", u"目标大小"},
    {"action.short.convert", u"Convert", u"转换"},
    {"action.short.compress", u"Compress", u"压缩"},
    {"action.short.extract", u"Extract", u"提取"},
    {"action.short.trim", u"Trim", u"裁剪"},
    {"action.short.gif", u"GIF", u"动图"},
    {"action.play.title", u"Play", u"播放"},
    {"action.play.subtitle", u"Step through frames and take snapshots", u"逐帧查看，随时截帧"},
    {"action.short.play", u"Play", u"播放"},
    {"action.enhance.title", u"Enhance", u"画质增强"},
    {"action.enhance.subtitle", u"Denoise, sharpen and upscale", u"降噪、锐化、放大"},
    {"action.short.enhance", u"Enhance", u"增强"},
    {"action.merge.title", u"Merge", u"合并"},
    {"action.merge.subtitle", u"Join several clips into one video", u"把多个片段合成一个视频"},
    {"action.short.merge", u"Merge", u"合并"},
    {"action.split.title", u"Split", u"分割"},
    {"action.split.subtitle", u"By size, by duration or into parts", u"按大小、时长或段数分割"},
    {"action.short.split", u"Split", u"分割"},
    {"action.adjust.title", u"Adjust", u"调整"},
    {"action.adjust.subtitle", u"Rotate, flip, change speed or reverse", u"旋转、翻转、变速、倒放"},
    {"action.short.adjust", u"Adjust", u"调整"},

    {"preset.discord", u"Discord", u"Discord"},
    {"preset.discord.note", u"Free tier, since Aug 2026", u"免费版，2026 年 8 月起"},
    {"preset.gmail", u"Gmail", u"Gmail"},
    {"preset.gmail.note", u"Attachment limit", u"附件上限"},
    {"preset.whatsapp", u"WhatsApp", u"WhatsApp"},
    {"preset.whatsapp.note", u"Video message", u"视频消息"},
    {"preset.outlook", u"Outlook", u"Outlook"},
    {"preset.outlook.note", u"Attachment limit", u"附件上限"},
    {"preset.nitro", u"Discord Nitro Basic", u"Discord Nitro Basic"},
    {"preset.nitro.note", u"50 MB tier", u"50 MB 档"},
    {"preset.general", u"100 MB", u"100 MB"},
    {"preset.general.note", u"Custom size range", u"自定义大小范围"},
    {"preset.linkedin", u"LinkedIn", u"LinkedIn"},
    {"preset.linkedin.note", u"Native video", u"原生视频"},
    {"preset.legacy", u"Legacy Discord", u"旧版 Discord"},
    {"preset.legacy.note", u"Old 8 MB limit", u"旧的 8 MB 上限"},
    {"preset.custom", u"Custom", u"自定义"},
    {"preset.custom.note", u"Type any size in MB", u"输入任意大小（MB）"},
    {"preset.menu", u"Presets", u"预设"},
    {"preset.save", u"Save as Preset…", u"存为预设…"},
    {"preset.name", u"Preset name", u"预设名称"},
    {"preset.applied", u"Preset applied: %1$@", u"已应用预设：%1$@"},
    {"preset.manage", u"Manage presets", u"管理预设"},
    {"preset.none", u"No presets yet", u"还没有预设"},
});

} // namespace

std::span<const Row> startRows()
{
    return texts;
}

} // namespace L10n
