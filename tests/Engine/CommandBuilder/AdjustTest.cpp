// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/GoldenLines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;

namespace {

using Rotation = AdjustParams::Rotation;

/// A case before it is planned: a film of ten seconds in H.264 at 5000 kilobits and AAC, on a build
/// that has x264, with the parameters as they come.
struct Given : FilmCase<AdjustParams> {
    FFmpegToolset toolset = offering({u"libx264"_s, u"aac"_s});

    Given()
    {
        file.fileSizeBytes = 9'000'000;
        file.videoBitrateBps = 5'000'000;
        addAudio(u"aac"_s);
    }

    JobPlan plan() const
    {
        return CommandBuilder::adjust(file, params, toolset, std::nullopt, std::nullopt);
    }
};

using Row = LineRow<Given>;

class AdjustLine : public ::testing::TestWithParam<Row>
{
};

QString chainOf(const std::function<void(AdjustParams &)> &change)
{
    AdjustParams params;
    change(params);
    return CommandBuilder::adjustFilterChain({}, params).value_or(u"absent"_s);
}

QString rateOf(const Given &g)
{
    return valueOf(g.plan().steps.first().args, u"-b:v"_s);
}

} // namespace

TEST_P(AdjustLine, is_laid_out)
{
    Given g;
    GetParam().change(g);

    const JobPlan plan = g.plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().args, commandLine(GetParam().line));
}

// What is done to the picture.
static const std::vector<Row> filterRows{
    {"the_defaults_encode_without_a_filter", [](Given &) {},
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -c:a copy -movflags +faststart /films/a-adjusted.mp4"},
    {"a_rotation_leaves_the_sound_alone", [](Given &g) { g.params.rotation = Rotation::ccw90; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-vf transpose=2 -map 0:a? -c:a copy -movflags +faststart /films/a-adjusted.mp4"},
    {"half_a_turn_is_two_quarters",
     [](Given &g) {
         g.params.rotation = Rotation::r180;
         g.params.flipV = true;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-vf transpose=1,transpose=1,vflip -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-adjusted.mp4"},
    {"all_filters_stand_in_their_order",
     [](Given &g) {
         g.params.rotation = Rotation::cw90;
         g.params.flipH = true;
         g.params.flipV = true;
         g.params.reverse = true;
         g.params.speed = 1.25;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-vf transpose=1,vflip,hflip,reverse,setpts=PTS/1.25 -map 0:a? -af atempo=1.25 -c:a aac "
     "-b:a 160k -movflags +faststart /films/a-adjusted.mp4"},
    {"a_crop_and_a_frame_rate_cap_count_for_nothing",
     [](Given &g) {
         g.params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};
         g.params.advanced.fpsCap = 24;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -c:a copy -movflags +faststart /films/a-adjusted.mp4"},
};

// How the picture is encoded.
static const std::vector<Row> pictureRows{
    {"x264_without_a_factor_has_a_rate",
     [](Given &g) { g.params.advanced.codec = CodecChoice::softwareX264; },
     "-i /films/a.mov -map 0:v:0 -c:v libx264 -b:v 3500k -pix_fmt yuv420p -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-adjusted.mp4"},
    {"x264_with_a_factor_has_no_rate",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 28;
     },
     "-i /films/a.mov -map 0:v:0 -c:v libx264 -crf 28 -pix_fmt yuv420p -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-adjusted.mp4"},
    {"without_x264_the_factor_is_dropped",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 28;
         g.toolset.encoders.clear();
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -c:a copy -movflags +faststart /films/a-adjusted.mp4"},
    {"hdr_goes_through_hevc_at_a_rate",
     [](Given &g) {
         g.file.isHDR = true;
         g.params.advanced.hdrPassthrough = true;
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.crf = 28;
     },
     "-i /films/a.mov -map 0:v:0 -c:v hevc_videotoolbox -b:v 3500k -pix_fmt p010le "
     "-color_primaries bt2020 -color_trc smpte2084 -colorspace bt2020nc -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-adjusted.mp4"},
    {"alpha_goes_to_prores",
     [](Given &g) {
         g.file.hasAlphaChannel = true;
         g.params.advanced.preserveAlpha = true;
         g.params.advanced.codec = CodecChoice::proresVideoToolbox;
     },
     "-i /films/a.mov -map 0:v:0 -c:v prores_videotoolbox -b:v 3500k -pix_fmt yuva444p10le "
     "-map 0:a? -c:a copy -movflags +faststart /films/a-adjusted.mp4"},
    {"av1_falls_to_h264", [](Given &g) { g.params.advanced.codec = CodecChoice::svtAV1; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -c:a copy -movflags +faststart /films/a-adjusted.mp4"},
    {"without_a_picture_the_filter_stays",
     [](Given &g) {
         g.file.width.reset();
         g.params.speed = 2;
     },
     "-i /films/a.mov -vf setpts=PTS/2 -map 0:a? -af atempo=2 -c:a aac -b:a 160k "
     "-movflags +faststart /films/a-adjusted.mp4"},
    {"a_picture_of_unknown_codec_counts_as_none", [](Given &g) { g.file.videoCodec.reset(); },
     "-i /films/a.mov -map 0:a? -c:a copy -movflags +faststart /films/a-adjusted.mp4"},
};

// Sound.
static const std::vector<Row> soundRows{
    {"a_muted_film_keeps_the_audio_map_and_drops_the_sound",
     [](Given &g) {
         g.params.muted = true;
         g.params.advanced.volumeDb = 3;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -an -movflags +faststart /films/a-adjusted.mp4"},
    {"muting_wins_over_the_speed",
     [](Given &g) {
         g.params.muted = true;
         g.params.speed = 2;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-vf setpts=PTS/2 -map 0:a? -an -movflags +faststart /films/a-adjusted.mp4"},
    {"without_sound_there_is_no_audio_group",
     [](Given &g) {
         g.file.audioStreams.clear();
         g.params.muted = true;
         g.params.speed = 0.5;
         g.replaceAudio();
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-vf setpts=PTS/0.5 -movflags +faststart /films/a-adjusted.mp4"},
    {"a_speed_takes_neither_gain_nor_chosen_rate",
     [](Given &g) {
         g.params.speed = 3;
         g.params.advanced.volumeDb = 3;
         g.params.advanced.audioBitrateKbps = 96;
         g.replaceAudio();
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-vf setpts=PTS/3 -map 0:a? -af atempo=2.0,atempo=1.5 -c:a aac -b:a 160k "
     "-movflags +faststart /films/a-adjusted.mp4"},
    {"a_reversed_film_keeps_its_sound_in_order", [](Given &g) { g.params.reverse = true; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-vf reverse -map 0:a? -af atempo=1 -c:a aac -b:a 160k "
     "-movflags +faststart /films/a-adjusted.mp4"},
    {"a_replacement_has_the_sound_encoded_and_isn_t_opened", [](Given &g) { g.replaceAudio(); },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -c:a aac -b:a 160k -movflags +faststart /films/a-adjusted.mp4"},
    {"a_chosen_audio_rate_is_the_sound_s_alone",
     [](Given &g) {
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = -4.25;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -c:a aac -b:a 96k -af volume=-4.2dB -movflags +faststart /films/a-adjusted.mp4"},
    {"a_codec_without_a_place_in_an_mp4_is_encoded",
     [](Given &g) { g.file.audioStreams.first().codec = u"pcm_s16le"_s; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -c:a aac -b:a 160k -movflags +faststart /films/a-adjusted.mp4"},
    {"the_first_track_decides_for_all",
     [](Given &g) {
         g.file.audioStreams.first().codec = u"AC3"_s;
         g.addAudio(u"opus"_s);
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -c:a copy -movflags +faststart /films/a-adjusted.mp4"},
    {"a_gain_stands_behind_a_copy_too", [](Given &g) { g.params.advanced.volumeDb = 6; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -c:a copy -af volume=6.0dB -movflags +faststart /films/a-adjusted.mp4"},
};

// The end of the line.
static const std::vector<Row> tailRows{
    {"extra_arguments_stand_before_the_container_flags",
     [](Given &g) { g.params.advanced.extraArgs = u"  -tune   film "_s; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3500k -pix_fmt yuv420p "
     "-map 0:a? -c:a copy -tune film -movflags +faststart /films/a-adjusted.mp4"},
    {"all_groups_stand_in_their_order",
     [](Given &g) {
         g.params.rotation = Rotation::cw90;
         g.params.flipH = true;
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 20;
         g.params.advanced.audioBitrateKbps = 256;
         g.params.advanced.volumeDb = 0;
         g.params.advanced.extraArgs = u"-preset slow"_s;
         g.replaceAudio();
     },
     "-i /films/a.mov -map 0:v:0 -c:v libx264 -crf 20 -pix_fmt yuv420p -vf transpose=1,hflip "
     "-map 0:a? -c:a aac -b:a 256k -af volume=0.0dB -preset slow -movflags +faststart "
     "/films/a-adjusted.mp4"},
};

INSTANTIATE_TEST_SUITE_P(Filters, AdjustLine, ::testing::ValuesIn(filterRows), RowName());
INSTANTIATE_TEST_SUITE_P(Picture, AdjustLine, ::testing::ValuesIn(pictureRows), RowName());
INSTANTIATE_TEST_SUITE_P(Sound, AdjustLine, ::testing::ValuesIn(soundRows), RowName());
INSTANTIATE_TEST_SUITE_P(Tail, AdjustLine, ::testing::ValuesIn(tailRows), RowName());

TEST(Adjust, the_plan_is_one_step_and_nothing_else)
{
    const JobPlan plan = Given().plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().label, u"adjust"_s);
    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{QUrl::fromLocalFile(u"/films/a-adjusted.mp4"_s)});
    EXPECT_EQ(plan.badgeKey, std::nullopt);
    expectNothingBeside(plan);
}

TEST(Adjust, the_length_follows_the_speed_unless_the_film_is_reversed)
{
    struct Case {
        double speed;
        bool reverse;
        double seconds;
    };
    const std::vector<Case> cases{
        {1, false, 10}, {2, false, 5},   {0.25, false, 40}, {5, false, 2},
        {1, true, 10},  {0.5, true, 10}, {4, true, 10},
    };
    for (const Case &c : cases) {
        Given g;
        g.params.speed = c.speed;
        g.params.reverse = c.reverse;
        EXPECT_EQ(g.plan().steps.first().progressDuration, c.seconds);
    }
}

TEST(Adjust, a_reversed_film_at_twice_the_speed_counts_whole)
{
    Given g;
    g.params.reverse = true;
    g.params.speed = 2;
    EXPECT_EQ(g.plan().steps.first().progressDuration, 10);
}

TEST(Adjust, a_speed_of_0_makes_the_length_infinite)
{
    Given g;
    g.params.speed = 0;

    const JobPlan plan = g.plan();

    EXPECT_TRUE(std::isinf(plan.steps.first().progressDuration));
    EXPECT_EQ(valueOf(plan.steps.first().args, u"-vf"_s), u"setpts=PTS/0"_s);
}

TEST(Adjust, folder_and_template_name_the_output_and_a_taken_name_is_numbered)
{
    const TempFolder folder;
    folder.write(u"adjusted a.mp4"_s, "taken");
    const Given g;

    const JobPlan plan = CommandBuilder::adjust(g.file, g.params, g.toolset, folder.url(QString()),
                                                u"{suffix} {name}"_s);

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"adjusted a 2.mp4"_s)});
    EXPECT_EQ(plan.steps.first().args.last(), folder.path(u"adjusted a 2.mp4"_s));
}

TEST(Adjust, each_change_has_its_filter)
{
    EXPECT_EQ(chainOf([](AdjustParams &) {}), u"absent"_s);
    EXPECT_EQ(chainOf([](AdjustParams &p) { p.muted = true; }), u"absent"_s);
    EXPECT_EQ(chainOf([](AdjustParams &p) { p.rotation = Rotation::cw90; }), u"transpose=1"_s);
    EXPECT_EQ(chainOf([](AdjustParams &p) { p.rotation = Rotation::r180; }),
              u"transpose=1,transpose=1"_s);
    EXPECT_EQ(chainOf([](AdjustParams &p) { p.rotation = Rotation::ccw90; }), u"transpose=2"_s);
    EXPECT_EQ(chainOf([](AdjustParams &p) { p.flipV = true; }), u"vflip"_s);
    EXPECT_EQ(chainOf([](AdjustParams &p) { p.flipH = true; }), u"hflip"_s);
    EXPECT_EQ(chainOf([](AdjustParams &p) { p.reverse = true; }), u"reverse"_s);
}

TEST(Adjust, half_a_turn_with_a_vertical_flip_is_two_transposes_and_the_flip)
{
    EXPECT_EQ(chainOf([](AdjustParams &p) {
                  p.rotation = Rotation::r180;
                  p.flipV = true;
              }),
              u"transpose=1,transpose=1,vflip"_s);
}

TEST(Adjust, the_speed_is_written_as_short_as_it_goes)
{
    const std::vector<std::pair<double, QString>> rows{
        {2, u"2"_s},
        {0.25, u"0.25"_s},
        {1.1, u"1.1"_s},
        {0.3, u"0.3"_s},
        {5, u"5"_s},
        {100, u"100"_s},
        // Six digits count; ties go to the even one.
        {1.2345678, u"1.23457"_s},
        {1.015625, u"1.01562"_s},
        {1.046875, u"1.04688"_s},
        {1.0000001, u"1"_s},
        {123456.5, u"123456"_s},
        {1'000'000, u"1e+06"_s},
        {0.00001, u"1e-05"_s},
        {-2, u"-2"_s},
    };
    for (const auto &[speed, text] : rows) {
        EXPECT_EQ(chainOf([&](AdjustParams &p) { p.speed = speed; }), u"setpts=PTS/"_s + text);
    }
}

TEST(Adjust, the_tempo_is_split_into_what_a_filter_takes)
{
    const std::vector<std::pair<double, QString>> rows{
        {1, u"atempo=1"_s},
        {1.25, u"atempo=1.25"_s},
        {2, u"atempo=2"_s},
        {2.5, u"atempo=2.0,atempo=1.25"_s},
        {3, u"atempo=2.0,atempo=1.5"_s},
        {4, u"atempo=2.0,atempo=2"_s},
        {0.5, u"atempo=0.5"_s},
        {0.4, u"atempo=0.5,atempo=0.8"_s},
        {0.25, u"atempo=0.5,atempo=0.5"_s},
        // Beyond 0.25 and 4 the speed is held.
        {5, u"atempo=2.0,atempo=2"_s},
        {1000, u"atempo=2.0,atempo=2"_s},
        {0.1, u"atempo=0.5,atempo=0.5"_s},
        {0, u"atempo=0.5,atempo=0.5"_s},
        {-1, u"atempo=0.5,atempo=0.5"_s},
    };
    for (const auto &[speed, chain] : rows) {
        EXPECT_EQ(CommandBuilder::atempoChain(speed).join(u','), chain);
    }
}

TEST(Adjust, a_speed_of_5_is_4_for_the_sound_and_5_for_the_picture)
{
    Given g;
    g.params.speed = 5;

    const QStringList args = g.plan().steps.first().args;

    EXPECT_EQ(valueOf(args, u"-vf"_s), u"setpts=PTS/5"_s);
    EXPECT_EQ(valueOf(args, u"-af"_s), u"atempo=2.0,atempo=2"_s);
}

TEST(Adjust, the_video_rate_is_seven_tenths_of_the_source_s)
{
    const std::vector<std::pair<qint64, QString>> rows{
        {5'000'000, u"3500k"_s}, {999'999, u"699k"_s}, {430'000, u"301k"_s},
        {428'571, u"300k"_s},    {100'000, u"300k"_s}, {1, u"300k"_s},
    };
    for (const auto &[bps, kbps] : rows) {
        Given g;
        g.file.videoBitrateBps = bps;
        EXPECT_EQ(rateOf(g), kbps);
    }
}

TEST(Adjust, an_unknown_video_rate_is_what_the_sound_leaves_of_the_whole)
{
    // 9 MB in ten seconds are 7200 kilobits a second.
    struct Case {
        std::optional<qint64> videoBps;
        QList<std::optional<qint64>> audioBps;
        QString kbps;
    };
    const std::vector<Case> cases{
        {std::nullopt, {}, u"5040k"_s},
        {0, {}, u"5040k"_s},
        {-1, {}, u"5040k"_s},
        {std::nullopt, {200'000}, u"4900k"_s},
        {std::nullopt, {std::nullopt}, u"4950k"_s},
        {std::nullopt, {0}, u"4950k"_s},
        // The first track counts, and it alone.
        {std::nullopt, {200'000, 700'000}, u"4900k"_s},
        {std::nullopt, {8'000'000}, u"300k"_s},
    };
    for (const Case &c : cases) {
        Given g;
        g.file.videoBitrateBps = c.videoBps;
        g.file.audioStreams.clear();
        for (const std::optional<qint64> &bps : c.audioBps) {
            g.addAudio(u"aac"_s);
            g.file.audioStreams.last().bitrateBps = bps;
        }
        EXPECT_EQ(rateOf(g), c.kbps);
    }
}

TEST(Adjust, a_muted_film_maps_its_sound_and_drops_it)
{
    Given g;
    g.params.muted = true;

    const QStringList args = g.plan().steps.first().args;

    const qsizetype map = args.indexOf(u"0:a?"_s);
    ASSERT_GT(map, 0);
    EXPECT_EQ(args.at(map - 1), u"-map"_s);
    EXPECT_EQ(args.value(map + 1), u"-an"_s);
}
