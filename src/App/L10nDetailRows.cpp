// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/L10nRows.h"

#include <array>

namespace L10n {
namespace {

constexpr auto texts = std::to_array<Row>({
    {"advanced.codec", u"Video codec", u"视频编码"},
    {"advanced.codec.auto", u"Auto (H.264 VideoToolbox)", u"自动（H.264 VideoToolbox）"},
    {"advanced.codec.h264", u"H.264 · VideoToolbox", u"H.264 · VideoToolbox"},
    {"advanced.codec.hevc", u"HEVC · VideoToolbox", u"HEVC · VideoToolbox"},
    {"advanced.codec.software", u"H.264 · Software (x264)", u"H.264 · 软件编码（x264）"},
    {"advanced.crf", u"CRF (software codec only)", u"CRF（仅软件编码）"},
    {"advanced.fps", u"FPS cap", u"帧率上限"},
    {"advanced.audiobitrate", u"Audio bitrate (kbps)", u"音频码率（kbps）"},
    {"advanced.volume", u"Volume", u"音量"},
    {"advanced.replaceaudio", u"Replace audio with…", u"替换音频…"},
    {"advanced.replaceaudio.clear", u"Keep original audio", u"保留原音频"},
    {"advanced.crop", u"Crop", u"画面裁切"},
    {"advanced.crop.off", u"Off", u"不裁切"},
    {"advanced.crop.free", u"Free", u"自由"},
    {"advanced.crop.16x9", u"16:9 · YouTube", u"16:9 · YouTube"},
    {"advanced.crop.9x16", u"9:16 · TikTok / Shorts", u"9:16 · TikTok / Shorts"},
    {"advanced.crop.4x3", u"4:3", u"4:3"},
    {"advanced.crop.1x1", u"1:1", u"1:1"},
    {"advanced.crop.width", u"Width", u"宽度"},
    {"advanced.crop.height", u"Height", u"高度"},
    {"advanced.extraargs", u"Extra FFmpeg arguments", u"额外的 FFmpeg 参数"},
    {"advanced.audio.format", u"Audio format", u"音频格式"},
    {"advanced.audio.keep", u"Keep original", u"保持原样"},
    {"advanced.hdr", u"Keep HDR (HEVC output)", u"保留 HDR（输出 HEVC）"},
    {"advanced.hdr.hint", u"Source is HDR — preserve PQ/bt2020 instead of tone-mapping",
     u"检测到 HDR 源——保留 PQ/bt2020 而非压成 SDR"},
    {"advanced.alpha", u"Keep alpha channel (ProRes 4444 · use MOV)",
     u"保留透明通道（ProRes 4444 · 请用 MOV）"},
    {"advanced.alpha.hint", u"Source has transparency — software ProRes 4444 preserves it",
     u"源带透明通道——软件 ProRes 4444 可无损保留"},
    {"advanced.codec.prores", u"ProRes · VideoToolbox", u"ProRes · VideoToolbox"},
    {"advanced.codec.av1", u"AV1 · SVT (GPL ffmpeg)", u"AV1 · SVT（GPL 版 ffmpeg）"},

    {"file.hdr", u"HDR", u"HDR"},
    {"file.alpha", u"Alpha", u"透明通道"},
    {"file.est", u"Estimate", u"预估"},
    {"file.status", u"Status", u"状态"},
    {"file.res", u"Resolution", u"分辨率"},
    {"file.duration", u"Duration", u"时长"},

    {"watch.title", u"Watch folders", u"监视文件夹"},
    {"watch.desc", u"New videos dropped into a watched folder run its preset automatically.",
     u"监视文件夹里出现的新视频会自动按预设处理。"},
    {"watch.add", u"Add folder…", u"添加文件夹…"},
    {"watch.preset", u"Preset", u"预设"},
    {"watch.empty", u"No watched folders", u"没有监视的文件夹"},

    {"dropzone.show", u"Drop Zone", u"拖放区"},
    {"dropzone.hint", u"Drop on an action to run it instantly", u"拖到对应动作上松手立即执行"},
    {"dropzone.compress", u"Compress", u"压缩"},
    {"dropzone.25mb", u"25 MB", u"25 MB"},
    {"dropzone.mp4", u"MP4", u"MP4"},
    {"dropzone.gif", u"GIF", u"GIF"},
    {"dropzone.audio", u"M4A", u"M4A"},

    {"preview.generate", u"Quality Preview", u"画质预览"},
    {"preview.generating", u"Generating preview…", u"正在生成预览…"},
    {"preview.before", u"Original", u"原片"},
    {"preview.after", u"Compressed", u"压缩后"},
    {"preview.position", u"Sample position (sec)", u"取样位置（秒）"},
    {"preview.failed", u"Preview failed: %1$@", u"预览失败：%1$@"},

    {"player.snapshot", u"Snapshot", u"截帧"},
    {"player.savedframe", u"Frame saved: %1$@", u"已保存截帧：%1$@"},
    {"player.speed", u"Speed", u"速度"},
    {"player.framestep", u"Frame step", u"逐帧"},
    {"player.info", u"Info", u"信息"},

    {"batch.template", u"Output name template", u"输出文件名模板"},
    {"batch.template.help", u"Tokens: {name} {suffix} {ext} {date}. Empty = default.",
     u"可用标记：{name} {suffix} {ext} {date}。留空 = 默认。"},
    {"batch.export", u"Export queue", u"导出队列"},
    {"batch.import", u"Import queue", u"导入队列"},
    {"batch.structure", u"Keep folder structure in output", u"输出时保持文件夹结构"},

    {"notify.finish", u"Notify when a job finishes", u"任务完成时发送通知"},
});

} // namespace

std::span<const Row> detailRows()
{
    return texts;
}

} // namespace L10n
