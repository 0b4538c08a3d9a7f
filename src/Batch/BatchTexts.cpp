// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/BatchTexts.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Row {
    BatchTexts::Sentence sentence;
    QStringView english;
    QStringView chinese;
};

using enum BatchTexts::Sentence;

constexpr std::array rows{
    Row{noSuchFile, u"There is no such file.", u"文件不存在。"},
    Row{noRegularFile, u"This is no regular file.", u"这不是普通文件。"},
    Row{cannotBeRead, u"This file can't be read: %1$@.", u"无法读取这个文件：%1$@。"},
    Row{empty, u"This file is empty.", u"这个文件是空的。"},
    Row{noMediaFile, u"This is no media file by its name's extension.",
        u"从扩展名看，这不是媒体文件。"},
    Row{noMediaInFolder, u"There is no media file in this folder.", u"这个文件夹里没有媒体文件。"},
    Row{tooMany, u"Only the first %1$@ files are taken at a time.",
        u"一次最多处理前 %1$@ 个文件。"},
    Row{cutOff, u"This film has been cut off: the result holds %1$@ of %2$@ seconds.",
        u"这个视频不完整：结果只有 %1$@ 秒，应为 %2$@ 秒。"},
    Row{clipsLost, u"A clip couldn't be joined: the result holds %1$@ of %2$@ seconds.",
        u"有片段未能合并：结果只有 %1$@ 秒，应为 %2$@ 秒。"},
    Row{noFilmInResult, u"FFmpeg told no error, but the result holds no film.",
        u"FFmpeg 没有报错，但结果里没有视频。"},
    Row{incompleteResult, u"FFmpeg told no error, but the result is incomplete.",
        u"FFmpeg 没有报错，但结果不完整。"},
    Row{diskFull, u"There is no space left on the disk.", u"磁盘空间不足。"},
    Row{interrupted, u"Interrupted.", u"已中断。"},
    Row{noSuchEntry, u"There is no entry %1$@; the file holds %2$@.",
        u"没有第 %1$@ 项；文件中共有 %2$@ 项。"},
    Row{targetOutOfRange, u"targetMB: a number of megabytes above 0 and up to %1$@ is expected",
        u"targetMB：应为大于 0 且不超过 %1$@ 的兆字节数"},
    Row{speedOutOfRange, u"speed: a number above 0 is expected", u"speed：应为大于 0 的数"},
};

} // namespace

QString BatchTexts::text(Sentence sentence, AppLanguage language, const QStringList &arguments)
{
    const auto row = std::ranges::find(rows, sentence, &Row::sentence);
    const QStringView words =
        language == AppLanguage::simplifiedChinese ? row->chinese : row->english;
    return L10n::format(words.toString(), arguments);
}
