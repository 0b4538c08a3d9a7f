// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/L10nRows.h"

#include <array>

namespace L10n {
namespace {

constexpr auto texts = std::to_array<Row>({
    {"queue.title", u"Queue", u"队列"},
    {"queue.empty", u"Nothing queued yet", u"队列中还没有任务"},
    {"queue.reveal", u"Show in Finder", u"在文件管理器中显示"},
    {"queue.cancel", u"Cancel", u"取消"},
    {"queue.retry", u"Retry", u"重试"},
    {"queue.clear", u"Clear finished", u"清除已完成"},
    {"queue.status.queued", u"Queued", u"排队中"},
    {"queue.status.running", u"Working…", u"处理中…"},
    {"queue.status.done", u"Done", u"已完成"},
    {"queue.status.failed", u"Failed", u"失败"},
    {"queue.status.cancelled", u"Cancelled", u"已取消"},
    {"queue.saved", u"−%1$@ (%2$@%% smaller)", u"省了 %1$@（小 %2$@%%）"},
    {"queue.refit", u"Auto-refitted to land under the target", u"已自动重压以达标"},
    {"queue.pause", u"Pause", u"暂停"},
    {"queue.resume", u"Resume", u"继续"},
    {"queue.open", u"Open", u"打开"},
    {"queue.copy", u"Copy path", u"复制路径"},
    {"queue.share", u"Share…", u"分享…"},
    {"queue.trashoriginal", u"Move original to Trash", u"将原文件移到回收站"},
    {"queue.trashoriginal.confirm", u"Move the original file to Trash?",
     u"要将原文件移到回收站吗？"},
    {"queue.status.analyzing", u"Analyzing…", u"分析中…"},
    {"queue.imported", u"Imported %1$@ jobs", u"已导入 %1$@ 个任务"},

    {"settings.title", u"Settings", u"设置"},
    {"settings.language", u"Language", u"语言"},
    {"settings.sound", u"Play a sound when a job finishes", u"任务完成时播放提示音"},
    {"settings.ffmpeg", u"FFmpeg", u"FFmpeg"},
    {"settings.ffmpeg.missing", u"FFmpeg not found. Install it with: brew install ffmpeg",
     u"未找到 FFmpeg。可用以下命令安装：brew install ffmpeg"},
    {"settings.ffmpeg.gpl", u"GPL build (libx264 available — 2-pass exact mode ready)",
     u"GPL 构建（含 libx264，两遍精确模式可用）"},
    {"settings.ffmpeg.lgpl", u"Hardware VideoToolbox encoding active",
     u"VideoToolbox 硬件编码已启用"},
    {"settings.exact.default", u"Prefer 2-pass exact mode when available",
     u"可用时优先使用两遍精确模式"},
    {"settings.standins", u"Encoders in use", u"实际使用的编码器"},
    {"settings.output", u"Output", u"输出"},
    {"settings.concurrency", u"Simultaneous encodes", u"同时编码的任务数"},
    {"settings.outdir", u"Save outputs to", u"输出保存到"},
    {"settings.outdir.same", u"Next to original", u"原文件所在位置"},
    {"settings.outdir.choose", u"Choose…", u"选择…"},

    {"common.add", u"Add to Queue", u"加入队列"},
    {"common.addall", u"Add All Files", u"加入全部文件"},
    {"common.remove", u"Remove", u"移除"},
    {"common.done", u"Done", u"完成"},
    {"common.advanced", u"Advanced", u"高级"},
    {"common.original", u"Original", u"原始"},
    {"common.estimated", u"Estimated", u"预估"},
    {"common.probing", u"Reading file…", u"正在读取文件…"},
    {"common.browse", u"Browse", u"浏览"},
    {"common.close", u"Close", u"关闭"},
    {"common.save", u"Save", u"保存"},
    {"common.cancel", u"Cancel", u"取消"},

    {"error.probe", u"Could not read this file. Is it a valid video?",
     u"无法读取这个文件，它可能是无效的视频。"},
    {"error.noinput", u"Drop a video first.", u"请先拖入一个视频。"},
    {"error.ffmpeg", u"FFmpeg error: %1$@", u"FFmpeg 出错：%1$@"},
    {"error.outputwrite", u"Could not write the output file.", u"无法写入输出文件。"},
    {"error.targetNotMet",
     u"Still over the target after retries — trim the clip or raise the target a little.",
     u"重试后仍超出目标——请裁剪片段或稍微调大目标。"},
    {"error.vp9", u"WebM export needs an ffmpeg build with libvpx. Try: brew install ffmpeg",
     u"导出 WebM 需要带 libvpx 的 ffmpeg。可运行：brew install ffmpeg"},
});

} // namespace

std::span<const Row> queueRows()
{
    return texts;
}

} // namespace L10n
