// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ConvertCase.h"

#include <gtest/gtest.h>

#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;
using ConvertCase::Given;

namespace {

using AudioFormat = ConvertParams::AudioFormat;

bool contains(const QStringList &args, const char *part)
{
    return (u' ' + args.join(u' ') + u' ').contains(u' ' + QString::fromUtf8(part) + u' ');
}

} // namespace

TEST(Convert, a_plan_is_one_step_with_nothing_around_it)
{
    Given remux;
    Given partial;
    partial.params.audioFormat = AudioFormat::wav;
    Given reencode;
    reencode.params.forceReencode = true;
    for (const Given &g : {remux, partial, reencode}) {
        const JobPlan plan = g.plan();
        const QUrl output = QUrl::fromLocalFile(u"/films/a-MP4.mp4"_s);

        ASSERT_EQ(plan.steps.size(), 1);
        EXPECT_EQ(plan.steps.first().label, u"convert"_s);
        EXPECT_EQ(plan.steps.first().progressDuration, 10);
        EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{output});
        expectNothingBeside(plan);
    }
}

TEST(Convert, h264_and_aac_to_mov_is_a_remux_with_subtitles_and_faststart_behind)
{
    Given g;
    g.file.url = QUrl::fromLocalFile(u"/films/a.mp4"_s);
    g.params.container = OutputContainer::mov;
    g.subtitles({u"srt"_s});

    const JobPlan plan = g.plan();

    EXPECT_EQ(plan.badgeKey, u"convert.badge.remux"_s);
    EXPECT_EQ(plan.steps.first().args,
              commandLine("-i /films/a.mp4 -map 0:v:0 -map 0:a -c copy -map 0:s? -c:s mov_text "
                          "-movflags +faststart /films/a-MOV.mov"));
}

TEST(Convert, wav_on_any_source_copies_the_picture_and_has_no_audio_rate)
{
    for (const QString &codec : {u"aac"_s, u"mp3"_s, u"pcm_s16le"_s, u"opus"_s, QString()}) {
        for (const OutputContainer container : {OutputContainer::mp4, OutputContainer::mov,
                                                OutputContainer::mkv, OutputContainer::avi}) {
            Given g;
            g.sound({codec});
            g.params.container = container;
            g.params.audioFormat = AudioFormat::wav;

            const JobPlan plan = g.plan();

            EXPECT_EQ(plan.badgeKey, u"convert.badge.partial"_s);
            EXPECT_TRUE(contains(plan.steps.first().args, "-c:v copy -c:a pcm_s16le"));
            EXPECT_FALSE(plan.steps.first().args.contains(u"-b:a"_s));
        }
    }
}

TEST(Convert, a_forced_encode_that_keeps_the_sound_copies_it_but_never_maps_it)
{
    Given g;
    g.params.forceReencode = true;

    const QStringList args = g.args();

    EXPECT_EQ(valueOf(args, u"-c:v"_s), u"h264_videotoolbox"_s);
    EXPECT_EQ(valueOf(args, u"-c:a"_s), u"copy"_s);
    EXPECT_EQ(args.count(u"-map"_s), 1);
}

TEST(Convert, the_kilobits_are_85_percent_of_the_source_s_and_never_below_300)
{
    const std::vector<std::pair<qint64, QString>> rows{
        {1, u"300k"_s},          {100'000, u"300k"_s},    {352'000, u"300k"_s},
        {354'000, u"300k"_s},    {355'000, u"301k"_s},    {1'000'000, u"850k"_s},
        {1'234'567, u"1049k"_s}, {4'000'000, u"3400k"_s}, {100'000'000, u"85000k"_s},
    };
    for (const auto &[sourceBps, expected] : rows) {
        Given g;
        g.file.videoBitrateBps = sourceBps;
        for (const OutputContainer container : {OutputContainer::mp4, OutputContainer::webm}) {
            g.params.container = container;
            g.params.forceReencode = true;
            EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), expected);
        }
    }
}

TEST(Convert, an_unknown_video_rate_is_what_the_sound_leaves_of_the_whole)
{
    struct Case {
        std::optional<qint64> videoBps;
        qint64 bytes;
        std::vector<std::optional<qint64>> audioBps;
        QString expected;
    };
    // Ten seconds.
    const std::vector<Case> cases{
        {std::nullopt, 1'000'000, {}, u"680k"_s},
        {std::nullopt, 1'000'000, {std::nullopt}, u"571k"_s},
        {std::nullopt, 1'000'000, {0}, u"571k"_s},
        {std::nullopt, 1'000'000, {-5}, u"571k"_s},
        {std::nullopt, 1'000'000, {1}, u"679k"_s},
        {std::nullopt, 1'000'000, {64'000}, u"625k"_s},
        {std::nullopt, 1'000'000, {64'000, 128'000}, u"625k"_s},
        {std::nullopt, 1'000'000, {std::nullopt, 64'000}, u"571k"_s},
        {0, 1'000'000, {64'000}, u"625k"_s},
        {-8, 1'000'000, {64'000}, u"625k"_s},
        // The second track alone is more than all bytes over the length.
        {std::nullopt, 1'000, {64'000, 864'000}, u"680k"_s},
        {std::nullopt, 1'000, {std::nullopt}, u"300k"_s},
        {std::nullopt, 0, {}, u"300k"_s},
        {1, 1'000'000'000, {}, u"300k"_s},
    };
    for (const Case &c : cases) {
        Given g;
        g.params.forceReencode = true;
        g.file.videoBitrateBps = c.videoBps;
        g.file.fileSizeBytes = c.bytes;
        g.file.audioStreams.clear();
        for (const std::optional<qint64> &bitrate : c.audioBps) {
            AudioStream stream;
            stream.codec = u"aac"_s;
            stream.bitrateBps = bitrate;
            g.file.audioStreams.append(stream);
        }
        EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), c.expected) << "case " << (&c - cases.data());
    }
}

TEST(Convert, a_film_of_unknown_length_is_encoded_at_the_floor)
{
    Given g;
    g.params.forceReencode = true;
    g.file.videoBitrateBps.reset();
    g.file.durationSeconds = 0;

    const JobPlan plan = g.plan();

    EXPECT_EQ(valueOf(plan.steps.first().args, u"-b:v"_s), u"300k"_s);
    EXPECT_EQ(plan.steps.first().progressDuration, 0);
}

TEST(Convert, a_webm_takes_no_notice_of_codec_and_quality)
{
    Given plain;
    plain.params.container = OutputContainer::webm;
    for (const CodecChoice codec : allCases<CodecChoice>()) {
        Given g = plain;
        g.params.advanced.codec = codec;
        g.params.advanced.crf = 18;
        EXPECT_EQ(g.args(), plain.args());
    }
    EXPECT_EQ(valueOf(plain.args(), u"-c:v"_s), u"libvpx-vp9"_s);
}

TEST(Convert, each_codec_choice_has_its_encoder)
{
    const QString h264 = u"h264_videotoolbox"_s;
    const std::vector<std::pair<CodecChoice, QString>> rows{
        {CodecChoice::automatic, h264},
        {CodecChoice::h264VideoToolbox, h264},
        {CodecChoice::hevcVideoToolbox, u"hevc_videotoolbox"_s},
        {CodecChoice::softwareX264, u"libx264"_s},
        {CodecChoice::proresVideoToolbox, u"prores_videotoolbox"_s},
        {CodecChoice::svtAV1, h264},
    };
    for (const auto &[codec, encoder] : rows) {
        for (const OutputContainer container : {OutputContainer::mp4, OutputContainer::mov,
                                                OutputContainer::mkv, OutputContainer::avi}) {
            Given g;
            g.params.forceReencode = true;
            g.params.container = container;
            g.params.advanced.codec = codec;
            EXPECT_TRUE(
                contains(g.args(), ("-c:v " + encoder.toUtf8() + " -b:v 3400k").constData()));
        }
    }
}

TEST(Convert, a_missing_width_drops_the_picture_s_map_and_the_subtitles)
{
    for (const OutputContainer container :
         {OutputContainer::mp4, OutputContainer::mov, OutputContainer::mkv}) {
        Given g;
        g.params.container = container;
        g.subtitles({u"subrip"_s});
        g.file.width.reset();

        const QStringList args = g.args();

        EXPECT_FALSE(args.contains(u"0:v:0"_s));
        EXPECT_FALSE(args.contains(u"0:s?"_s));
        EXPECT_FALSE(args.contains(u"-c:s"_s));
    }
}

TEST(Convert, an_mkv_asks_for_subtitles_that_the_source_hasn_t)
{
    Given g;
    g.params.container = OutputContainer::mkv;
    ASSERT_TRUE(g.file.subtitleStreams.isEmpty());

    EXPECT_TRUE(contains(g.args(), "-map 0:s? -c:s copy"));
}

TEST(Convert, the_copy_tables_rule_what_is_copied)
{
    struct Case {
        OutputContainer container;
        QString video;
        QString audio;
        QString badgeKey;
    };
    const std::vector<Case> cases{
        {OutputContainer::mp4, u"av1"_s, u"eac3"_s, u"convert.badge.remux"_s},
        {OutputContainer::mp4, u"hevc"_s, u"alac"_s, u"convert.badge.partial"_s},
        {OutputContainer::mp4, u"vp9"_s, u"aac"_s, u"convert.badge.reencode"_s},
        {OutputContainer::mp4, u""_s, u"aac"_s, u"convert.badge.reencode"_s},
        {OutputContainer::mov, u"prores"_s, u"pcm_s16le"_s, u"convert.badge.remux"_s},
        {OutputContainer::mov, u"h264"_s, u"eac3"_s, u"convert.badge.partial"_s},
        {OutputContainer::mov, u"av1"_s, u"aac"_s, u"convert.badge.reencode"_s},
        {OutputContainer::mkv, u"ffv1"_s, u"flac"_s, u"convert.badge.remux"_s},
        {OutputContainer::mkv, u"vp8"_s, u"alac"_s, u"convert.badge.partial"_s},
        {OutputContainer::mkv, u"dnxhd"_s, u"aac"_s, u"convert.badge.reencode"_s},
        {OutputContainer::webm, u"av1"_s, u"vorbis"_s, u"convert.badge.remux"_s},
        {OutputContainer::webm, u"vp8"_s, u"aac"_s, u"convert.badge.partial"_s},
        {OutputContainer::webm, u"h264"_s, u"opus"_s, u"convert.badge.reencode"_s},
        {OutputContainer::avi, u"mpeg2video"_s, u"ac3"_s, u"convert.badge.remux"_s},
        {OutputContainer::avi, u"mpeg4"_s, u"aac"_s, u"convert.badge.partial"_s},
        {OutputContainer::avi, u"hevc"_s, u"mp3"_s, u"convert.badge.reencode"_s},
    };
    for (const Case &c : cases) {
        Given g;
        g.params.container = c.container;
        g.file.videoCodec = c.video;
        g.sound({c.audio});
        EXPECT_EQ(g.plan().badgeKey, c.badgeKey) << "case " << (&c - cases.data());
    }
}

TEST(Convert, a_webm_without_vp9_is_refused_before_anything_else)
{
    Given g;
    g.params.container = OutputContainer::webm;
    g.toolset.encoders = {u"libx264"_s, u"libvpx"_s, u"libaom-av1"_s};
    // Nothing would have to be encoded.
    g.vp9AndOpus();

    std::optional<BuilderError> refusal;
    try {
        g.plan();
    } catch (const BuilderError &error) {
        refusal = error;
    }

    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->kind(), BuilderError::Case::vp9Unavailable);
    EXPECT_EQ(refusal->errorDescription(), u"libvpx-vp9 encoder not available"_s);
}

TEST(Convert, only_a_webm_needs_vp9)
{
    for (const OutputContainer container :
         {OutputContainer::mp4, OutputContainer::mov, OutputContainer::mkv, OutputContainer::avi}) {
        Given g;
        g.params.container = container;
        g.params.forceReencode = true;
        g.toolset.encoders.clear();
        EXPECT_NO_THROW(g.plan());
    }
}

TEST(Convert, the_output_is_named_after_the_container)
{
    const std::vector<std::pair<OutputContainer, QString>> rows{
        {OutputContainer::mp4, u"/films/a-MP4.mp4"_s},
        {OutputContainer::mov, u"/films/a-MOV.mov"_s},
        {OutputContainer::mkv, u"/films/a-MKV.mkv"_s},
        {OutputContainer::webm, u"/films/a-WEBM.webm"_s},
        {OutputContainer::avi, u"/films/a-AVI.avi"_s},
    };
    for (const auto &[container, path] : rows) {
        Given g;
        g.params.container = container;
        const JobPlan plan = g.plan();
        EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{QUrl::fromLocalFile(path)});
        EXPECT_EQ(plan.steps.first().args.last(), path);
    }
}

TEST(Convert, a_taken_output_name_is_numbered)
{
    const TempFolder folder;
    folder.write(u"a-MP4.mp4"_s, "taken");
    Given g;
    g.file.url = folder.url(u"a.mov"_s);

    const JobPlan plan = g.plan();

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"a-MP4 2.mp4"_s)});
    EXPECT_EQ(plan.steps.first().args.last(), folder.path(u"a-MP4 2.mp4"_s));
}

TEST(Convert, folder_and_template_name_the_output)
{
    const TempFolder folder;
    Given g;
    g.params.container = OutputContainer::mkv;

    const JobPlan plan = CommandBuilder::convert(g.file, g.params, g.toolset, folder.url(QString()),
                                                 u"{suffix} {name} {ext}"_s);

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"MKV a mkv.mkv"_s)});
}

TEST(Convert, paths_go_in_as_they_are)
{
    Given g;
    const QString odd = u"/films/it's a \"film\" %20 ?#$HOME;"_s;
    g.file.url = QUrl::fromLocalFile(odd + u".mov"_s);
    g.params.advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/b c&d.m4a"_s);

    const QStringList args = g.args();

    EXPECT_EQ(valueOf(args, u"-i"_s), odd + u".mov"_s);
    EXPECT_EQ(args.count(u"/music/b c&d.m4a"_s), 1);
    EXPECT_EQ(args.last(), odd + u"-MP4.mp4"_s);
}
