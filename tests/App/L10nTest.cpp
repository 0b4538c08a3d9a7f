// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/L10n.h"

#include "App/L10nRows.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

constexpr auto listedKeys = R"(
app.tagline
landing.drop.title landing.drop.subtitle landing.privacy landing.hero.copy
action.targetSize.title action.targetSize.subtitle action.convert.title action.convert.subtitle
action.compress.title action.compress.subtitle action.extract.title action.extract.subtitle
action.trim.title action.trim.subtitle action.gif.title action.gif.subtitle
action.short.targetSize action.short.convert action.short.compress action.short.extract
action.short.trim action.short.gif action.play.title action.play.subtitle action.short.play
action.enhance.title action.enhance.subtitle action.short.enhance action.merge.title
action.merge.subtitle action.short.merge action.split.title action.split.subtitle
action.short.split action.adjust.title action.adjust.subtitle action.short.adjust
preset.discord preset.discord.note preset.gmail preset.gmail.note preset.whatsapp
preset.whatsapp.note preset.outlook preset.outlook.note preset.nitro preset.nitro.note
preset.general preset.general.note preset.linkedin preset.linkedin.note preset.legacy
preset.legacy.note preset.custom preset.custom.note preset.menu preset.save preset.name
preset.applied preset.manage preset.none
target.custom.placeholder target.estimate target.mute target.skip.head target.skip.tail
target.exact target.exact.unavailable target.warn.lowbitrate target.warn.hopeless
target.warn.floor target.alreadyfits
convert.container convert.badge.remux convert.badge.partial convert.badge.reencode convert.force
convert.subs.movtext
compress.quality compress.quality.good compress.quality.better compress.quality.best
compress.resolution compress.resolution.original compress.mute compress.mode compress.mode.smart
compress.mode.smart.desc compress.mode.quality compress.quality.maximum compress.quality.high
compress.quality.balanced compress.quality.small compress.quality.tiny
compress.resolution.custom compress.resolution.custom.placeholder compress.hw.badge
extract.format extract.direct extract.transcode extract.bitrate extract.track
extract.warn.generation extract.noaudio
trim.mode trim.mode.keyframe trim.mode.exact trim.snap trim.segment trim.keep trim.addsplit
trim.addsegment trim.export trim.export.merged trim.export.separate trim.empty trim.total
trim.mode.exact.enabled
gif.range gif.start gif.end gif.width gif.fps gif.loop gif.bounce gif.screen gif.preset.default
gif.preset.screen gif.preset.tiny gif.preset.slack gif.preset.discord gif.preset.docs
gif.preset.small
queue.title queue.empty queue.reveal queue.cancel queue.retry queue.clear queue.status.queued
queue.status.running queue.status.done queue.status.failed queue.status.cancelled queue.saved
queue.refit queue.pause queue.resume queue.open queue.copy queue.share queue.trashoriginal
queue.trashoriginal.confirm queue.status.analyzing queue.imported
settings.title settings.language settings.sound settings.ffmpeg settings.ffmpeg.missing
settings.ffmpeg.gpl settings.ffmpeg.lgpl settings.exact.default settings.standins settings.output
settings.concurrency settings.outdir settings.outdir.same settings.outdir.choose
common.add common.addall common.remove common.done common.advanced common.original
common.estimated common.probing common.browse common.close common.save common.cancel
error.probe error.noinput error.ffmpeg error.outputwrite error.targetNotMet error.vp9
advanced.codec advanced.codec.auto advanced.codec.h264 advanced.codec.hevc
advanced.codec.software advanced.crf advanced.fps advanced.audiobitrate advanced.volume
advanced.replaceaudio advanced.replaceaudio.clear advanced.crop advanced.crop.off
advanced.crop.free advanced.crop.16x9 advanced.crop.9x16 advanced.crop.4x3 advanced.crop.1x1
advanced.crop.width advanced.crop.height advanced.extraargs advanced.audio.format
advanced.audio.keep advanced.hdr advanced.hdr.hint advanced.alpha advanced.alpha.hint
advanced.codec.prores advanced.codec.av1
file.hdr file.alpha file.est file.status file.res file.duration
watch.title watch.desc watch.add watch.preset watch.empty
dropzone.show dropzone.hint dropzone.compress dropzone.25mb dropzone.mp4 dropzone.gif
dropzone.audio
preview.generate preview.generating preview.before preview.after preview.position preview.failed
player.snapshot player.savedframe player.speed player.framestep player.info
batch.template batch.template.help batch.export batch.import batch.structure
notify.finish
enhance.desc enhance.denoise enhance.sharpen enhance.upscale enhance.upscale.x1
enhance.level.off enhance.level.light enhance.level.medium enhance.level.strong
merge.needmore merge.needmore.hint merge.order merge.button merge.badge.copy
merge.badge.reencode merge.reason.codec merge.reason.resolution merge.reason.fps
merge.reason.audiocodec merge.reason.audiomix merge.reason.novideo
split.mode split.mode.bysize split.mode.byduration split.mode.byparts split.sizeperpart
split.durationperpart split.parts split.result split.eachpart
adjust.geometry adjust.rot.none adjust.rot.cw90 adjust.rot.r180 adjust.rot.ccw90 adjust.fliph
adjust.flipv adjust.speed adjust.reverse adjust.reverse.warn
)";

// The texts that a promise, a warning or a figure hangs on, to the letter.
constexpr L10n::Row tellingRows[] = {
    {"target.estimate", u"Estimated ~%1$@ · guaranteed under %2$@",
     u"预估 ~%1$@ · 保证不超过 %2$@"},
    {"target.alreadyfits", u"Already under target · copied without re-encoding",
     u"已小于目标 · 未重新编码直接复制"},
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
    {"convert.badge.remux", u"Lossless · instant", u"⚡\uFE0E 无损 · 秒完成"},
    {"convert.badge.partial", u"Video copied · audio converted", u"视频直拷 · 音频转码"},
    {"convert.badge.reencode", u"Re-encode required", u"需要重新编码"},
    {"convert.subs.movtext", u"Text subtitles will be converted for playback",
     u"文本字幕将自动转换以保留"},
    {"extract.direct", u"Direct copy · fast · lossless", u"直拷 · 快 · 无损"},
    {"extract.transcode", u"Re-encodes audio", u"音频将重新编码"},
    {"extract.warn.generation",
     u"Source audio is %1$@; converting to %2$@ re-encodes and loses some quality.",
     u"源音频是 %1$@，转成 %2$@ 会重新编码，有一些质量损失。"},
    {"extract.noaudio", u"This file has no audio track.", u"这个文件没有音轨。"},
    {"trim.empty", u"Mark at least one segment to keep.", u"请至少标记一个要保留的片段。"},
    {"trim.total", u"Kept: %1$@ of %2$@", u"保留 %1$@ / 共 %2$@"},
    {"queue.saved", u"−%1$@ (%2$@%% smaller)", u"省了 %1$@（小 %2$@%%）"},
    {"queue.refit", u"Auto-refitted to land under the target", u"已自动重压以达标"},
    {"queue.imported", u"Imported %1$@ jobs", u"已导入 %1$@ 个任务"},
    {"settings.ffmpeg.missing", u"FFmpeg not found. Install it with: brew install ffmpeg",
     u"未找到 FFmpeg。可用以下命令安装：brew install ffmpeg"},
    {"settings.ffmpeg.gpl", u"GPL build (libx264 available — 2-pass exact mode ready)",
     u"GPL 构建（含 libx264，两遍精确模式可用）"},
    {"settings.ffmpeg.lgpl", u"Hardware VideoToolbox encoding active",
     u"VideoToolbox 硬件编码已启用"},
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
    {"compress.mode.smart.desc", u"Best size with no visible quality loss — decisions made for you",
     u"在无明显画质损失下尽量变小——参数自动决定"},
    {"batch.template.help", u"Tokens: {name} {suffix} {ext} {date}. Empty = default.",
     u"可用标记：{name} {suffix} {ext} {date}。留空 = 默认。"},
    {"preset.applied", u"Preset applied: %1$@", u"已应用预设：%1$@"},
    {"watch.desc", u"New videos dropped into a watched folder run its preset automatically.",
     u"监视文件夹里出现的新视频会自动按预设处理。"},
    {"dropzone.hint", u"Drop on an action to run it instantly", u"拖到对应动作上松手立即执行"},
    {"preview.failed", u"Preview failed: %1$@", u"预览失败：%1$@"},
    {"player.savedframe", u"Frame saved: %1$@", u"已保存截帧：%1$@"},
    {"merge.badge.copy", u"Lossless · instant (matching streams)", u"无损 · 秒完成（参数一致）"},
    {"merge.badge.reencode", u"Streams differ — will re-encode onto a shared canvas",
     u"参数不一致——将统一画面重编码"},
    {"split.result", u"%1$@ part(s)", u"%1$@ 段"},
    {"split.eachpart", u"≈ %1$@ each · lossless keyframe cuts (sizes may vary slightly)",
     u"每段约 %1$@ · 无损关键帧切割（大小略有浮动）"},
    {"adjust.reverse.warn", u"Reversing long videos uses a lot of memory — best under 5 minutes.",
     u"长视频倒放占用大量内存——建议 5 分钟以内。"},
    {"enhance.desc",
     u"Clean up noise, sharpen edges and optionally upscale — a clearer picture without inventing "
     u"detail.",
     u"清理噪点、锐化边缘、可选放大——让画面更干净锐利（不凭空造细节）。"},
    {"advanced.alpha.hint", u"Source has transparency — software ProRes 4444 preserves it",
     u"源带透明通道——软件 ProRes 4444 可无损保留"},
    {"advanced.hdr.hint", u"Source is HDR — preserve PQ/bt2020 instead of tone-mapping",
     u"检测到 HDR 源——保留 PQ/bt2020 而非压成 SDR"},
};

// How many arguments the callers of a template hand over. All other texts are no templates.
const QHash<QString, qsizetype> templates{
    {u"target.estimate"_s, 2}, {u"extract.warn.generation"_s, 2}, {u"trim.total"_s, 2},
    {u"queue.saved"_s, 2},     {u"queue.imported"_s, 1},          {u"error.ffmpeg"_s, 1},
    {u"preset.applied"_s, 1},  {u"preview.failed"_s, 1},          {u"player.savedframe"_s, 1},
    {u"split.result"_s, 1},    {u"split.eachpart"_s, 1},
};

// Names, formats and figures, which read the same in every language.
const QString sameInBoth = uR"(
    preset.discord preset.gmail preset.whatsapp preset.outlook preset.nitro preset.general
    preset.linkedin target.custom.placeholder gif.preset.slack gif.preset.discord settings.ffmpeg
    advanced.codec.h264 advanced.codec.hevc advanced.codec.prores advanced.crop.16x9
    advanced.crop.9x16 advanced.crop.4x3 advanced.crop.1x1 file.hdr dropzone.25mb dropzone.mp4
    dropzone.gif dropzone.audio adjust.rot.none adjust.rot.cw90 adjust.rot.r180 adjust.rot.ccw90
)"_s;

// What a Chinese reader knows in Latin letters: names, formats, units, and a command to be typed.
const QString latinWords = uR"(
    AAC AV1 AVI brew bt2020 CRF Discord FFmpeg ffmpeg GB GIF GPL H HDR HEVC install kbps libvpx
    libx264 M4A Mac MB MKV Morvix MOV MP3 MP4 PQ ProRes SDR SVT VideoToolbox WAV WebM x264
)"_s;

// One Chinese character, marks such as the ideographic comma not among them.
const QString han = u"[\u4e00-\u9fff]"_s;

QStringList words(const QString &text)
{
    return text.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts);
}

QSet<QString> wordSet(const QString &text)
{
    const QStringList list = words(text);
    return {list.begin(), list.end()};
}

QStringList allMatches(const QString &pattern, const QString &text)
{
    QStringList found;
    for (auto matches = QRegularExpression(pattern).globalMatch(text); matches.hasNext();) {
        found << matches.next().captured();
    }
    return found;
}

QSet<QString> keysOf(const L10n::Dictionary &texts)
{
    return {texts.keyBegin(), texts.keyEnd()};
}

struct Text {
    QString key;
    QString english;
    QString chinese;
};

QList<Text> allTexts()
{
    QList<Text> texts;
    for (const L10n::Row &row : L10n::allRows()) {
        texts.append(
            {QString::fromLatin1(row.key), row.english.toString(), row.chinese.toString()});
    }
    return texts;
}

} // namespace

TEST(AppLanguage, the_two_languages_are_written_and_read_by_their_tags)
{
    const auto languages = allCases<AppLanguage>();

    ASSERT_EQ(languages.size(), 2U);
    EXPECT_EQ(languages[0], AppLanguage::english);
    EXPECT_EQ(languages[1], AppLanguage::simplifiedChinese);
    EXPECT_EQ(rawValue(AppLanguage::english), u"en"_s);
    EXPECT_EQ(rawValue(AppLanguage::simplifiedChinese), u"zh-Hans"_s);
    for (const AppLanguage language : languages) {
        EXPECT_EQ(fromRawValue<AppLanguage>(rawValue(language)), language);
    }
}

TEST(AppLanguage, a_tag_in_another_spelling_or_of_another_language_is_none)
{
    for (const QString &tag : {u"fr"_s, u"EN"_s, u"zh"_s, u"zh-hans"_s, u"zh_Hans"_s, u""_s}) {
        EXPECT_FALSE(fromRawValue<AppLanguage>(tag)) << tag.toStdString();
    }
}

TEST(L10nTables, the_rows_are_the_292_keys_in_their_order)
{
    QStringList keys;
    for (const Text &text : allTexts()) {
        keys << text.key;
    }

    EXPECT_EQ(keys, words(QString::fromUtf8(listedKeys)));
    EXPECT_EQ(keys.size(), 292);
    EXPECT_EQ(QSet<QString>(keys.begin(), keys.end()).size(), 292);
}

TEST(L10nTables, both_languages_have_all_keys)
{
    const QSet<QString> keys = wordSet(QString::fromUtf8(listedKeys));

    EXPECT_EQ(keysOf(L10n::english()), keys);
    EXPECT_EQ(keysOf(L10n::chinese()), keys);
}

TEST(L10nTables, each_language_has_its_own_table)
{
    EXPECT_EQ(&L10n::tables(AppLanguage::english), &L10n::english());
    EXPECT_EQ(&L10n::tables(AppLanguage::simplifiedChinese), &L10n::chinese());
    EXPECT_NE(&L10n::english(), &L10n::chinese());
}

TEST(L10nTables, keys_are_lower_case_dotted_paths_but_for_names_from_the_code)
{
    const QRegularExpression path(u"^[a-z]+(\\.[a-z0-9]+)+$"_s);
    const QSet<QString> withCapitals{u"action.targetSize.title"_s, u"action.targetSize.subtitle"_s,
                                     u"action.short.targetSize"_s, u"error.targetNotMet"_s};
    for (const Text &text : allTexts()) {
        EXPECT_NE(path.match(text.key).hasMatch(), withCapitals.contains(text.key))
            << text.key.toStdString();
    }
}

TEST(L10nTables, the_telling_texts_stand_to_the_letter)
{
    for (const L10n::Row &row : tellingRows) {
        const auto key = QString::fromLatin1(row.key);
        EXPECT_EQ(L10n::t(key, AppLanguage::english), row.english.toString());
        EXPECT_EQ(L10n::t(key, AppLanguage::simplifiedChinese), row.chinese.toString());
    }
}

TEST(L10nTables, texts_have_no_blanks_at_their_ends_nor_two_in_a_row)
{
    for (const Text &text : allTexts()) {
        for (const QString &words : {text.english, text.chinese}) {
            EXPECT_FALSE(words.isEmpty()) << text.key.toStdString();
            EXPECT_EQ(words, words.simplified()) << text.key.toStdString();
        }
    }
}

TEST(L10nTables, templates_take_what_their_callers_hand_over_in_both_languages)
{
    for (const Text &text : allTexts()) {
        QStringList expected;
        for (qsizetype i = 1; i <= templates.value(text.key); ++i) {
            expected << u"%"_s + QString::number(i) + u"$@"_s;
        }
        if (text.key == u"queue.saved"_s) {
            expected << u"%%"_s;
        }
        const QString percentSigns = u"%(?:[0-9]+\\$@|.)?"_s;
        EXPECT_EQ(allMatches(percentSigns, text.english), expected) << text.key.toStdString();
        EXPECT_EQ(allMatches(percentSigns, text.chinese), expected) << text.key.toStdString();
    }
}

TEST(L10nTables, what_has_no_chinese_writing_is_a_name_or_a_figure_and_the_same_in_english)
{
    const QSet<QString> names = wordSet(sameInBoth);
    const QRegularExpression chinese(han);
    for (const Text &text : allTexts()) {
        EXPECT_NE(text.chinese.contains(chinese), names.contains(text.key))
            << text.key.toStdString();
        EXPECT_EQ(text.chinese == text.english, names.contains(text.key)) << text.key.toStdString();
        EXPECT_FALSE(text.english.contains(chinese)) << text.key.toStdString();
    }
}

TEST(L10nTables, no_english_is_left_in_chinese_sentences)
{
    const QSet<QString> names = wordSet(sameInBoth);
    const QSet<QString> known = wordSet(latinWords);
    for (Text text : allTexts()) {
        if (names.contains(text.key)) {
            continue;
        }
        // Tokens of output names are typed as they are, in any language.
        text.chinese.remove(QRegularExpression(u"\\{[a-z]+\\}"_s));
        for (const QString &word : allMatches(u"[A-Za-z][A-Za-z0-9]*"_s, text.chinese)) {
            EXPECT_TRUE(known.contains(word))
                << word.toStdString() << " in " << text.key.toStdString();
        }
    }
}

TEST(L10nTables, chinese_texts_use_full_width_marks_and_set_other_writing_apart)
{
    const QString halfWidthMark = han + u"[,;:!?.()]|[,;:!?.(]"_s + han;
    const QString touching = han + u"[A-Za-z0-9%]|[A-Za-z0-9%@]"_s + han;
    for (const Text &text : allTexts()) {
        EXPECT_EQ(allMatches(halfWidthMark, text.chinese), QStringList()) << text.key.toStdString();
        EXPECT_EQ(allMatches(touching, text.chinese), QStringList()) << text.key.toStdString();
    }
}

TEST(L10nLookUp, a_text_comes_in_the_language_asked_for)
{
    EXPECT_EQ(L10n::t(u"common.add"_s, AppLanguage::english), u"Add to Queue"_s);
    EXPECT_EQ(L10n::t(u"common.add"_s, AppLanguage::simplifiedChinese), u"加入队列"_s);
}

TEST(L10nLookUp, a_key_that_only_the_english_table_has_gives_english)
{
    const L10n::Dictionary english{{u"area.both"_s, u"Both"_s}, {u"area.one"_s, u"One"_s}};
    const L10n::Dictionary chinese{{u"area.both"_s, u"都有"_s}};

    EXPECT_EQ(L10n::lookUp(u"area.both"_s, chinese, english), u"都有"_s);
    EXPECT_EQ(L10n::lookUp(u"area.one"_s, chinese, english), u"One"_s);
    EXPECT_EQ(L10n::lookUp(u"area.one"_s, english, english), u"One"_s);
}

TEST(L10nLookUp, an_unknown_key_is_its_own_text)
{
    for (const QString &key : {u"trim.segments"_s, u"Common.add"_s, u"common.add "_s, u""_s}) {
        EXPECT_EQ(L10n::t(key, AppLanguage::english), key);
        EXPECT_EQ(L10n::t(key, AppLanguage::simplifiedChinese), key);
    }
}

TEST(L10nLookUp, a_template_looked_up_shows_its_placeholders)
{
    EXPECT_EQ(L10n::t(u"queue.saved"_s, AppLanguage::english), u"−%1$@ (%2$@%% smaller)"_s);
}

TEST(L10nDeathTest, a_key_that_stands_in_two_rows_ends_the_program)
{
    const std::vector<L10n::Row> rows{
        {"area.one", u"One", u"一"}, {"area.two", u"Two", u"二"}, {"area.one", u"One", u"一"}};

    EXPECT_EQ(L10n::dictionary(std::span(rows).first(2), &L10n::Row::chinese).size(), 2);
    EXPECT_DEATH(L10n::dictionary(rows, &L10n::Row::chinese), "area.one");
}

TEST(L10nFormat, the_saving_of_a_job_reads_as_a_sentence)
{
    const QStringList arguments{u"3 MB"_s, u"40"_s};

    EXPECT_EQ(L10n::format(L10n::t(u"queue.saved"_s, AppLanguage::english), arguments),
              u"−3 MB (40% smaller)"_s);
    EXPECT_EQ(L10n::format(L10n::t(u"queue.saved"_s, AppLanguage::simplifiedChinese), arguments),
              u"省了 3 MB（小 40%）"_s);
}

TEST(L10nFormat, numbered_placeholders_may_stand_in_any_order_and_twice)
{
    EXPECT_EQ(L10n::format(u"%2$@-%1$@-%2$@"_s, {u"a"_s, u"b"_s}), u"b-a-b"_s);
    EXPECT_EQ(L10n::format(u"%10$@"_s, u"a b c d e f g h i j"_s.split(u' ')), u"j"_s);
}

TEST(L10nFormat, plain_placeholders_take_one_argument_after_the_other)
{
    EXPECT_EQ(L10n::format(u"%@ of %@"_s, {u"1"_s, u"3"_s}), u"1 of 3"_s);
    EXPECT_EQ(L10n::format(u"%2$@ %@ %@"_s, {u"a"_s, u"b"_s}), u"b a b"_s);
}

TEST(L10nFormat, whatever_stands_in_an_argument_comes_out_as_it_is)
{
    const QStringList arguments{u"%2$@"_s, u"100%% %1$@ %@ \\1 %1"_s};

    EXPECT_EQ(L10n::format(u"%1$@ and %2$@"_s, arguments), u"%2$@ and 100%% %1$@ %@ \\1 %1"_s);
    EXPECT_EQ(L10n::format(u"%1$@%2$@"_s, {u"%"_s, u"%"_s}), u"%%"_s);
    EXPECT_EQ(L10n::format(u"[%1$@]"_s, {QString()}), u"[]"_s);
}

TEST(L10nFormat, a_placeholder_without_an_argument_stays)
{
    EXPECT_EQ(L10n::format(u"%1$@ %2$@"_s, {u"a"_s}), u"a %2$@"_s);
    EXPECT_EQ(L10n::format(u"%@ %@"_s, {u"a"_s}), u"a %@"_s);
    EXPECT_EQ(L10n::format(u"%0$@ %99999999999$@"_s, {u"a"_s}), u"%0$@ %99999999999$@"_s);
    EXPECT_EQ(L10n::format(u"%1$@"_s, {}), u"%1$@"_s);
}

TEST(L10nFormat, two_percent_signs_are_one_and_others_stay)
{
    EXPECT_EQ(L10n::format(u"%%"_s, {}), u"%"_s);
    EXPECT_EQ(L10n::format(u"%%1$@ %%%1$@"_s, {u"a"_s}), u"%1$@ %a"_s);
    EXPECT_EQ(L10n::format(u"100% of %d, %1$d, 5%"_s, {u"a"_s}), u"100% of %d, %1$d, 5%"_s);
}

TEST(L10nFormat, text_without_placeholders_ignores_arguments)
{
    EXPECT_EQ(L10n::format(u"Queue"_s, {u"a"_s}), u"Queue"_s);
    EXPECT_EQ(L10n::format(QString(), {u"a"_s}), QString());
}
