// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/GoldenLines.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;

namespace {

using Mode = CompressParams::Mode;
using QualityTier = CompressParams::QualityTier;
using ResTier = CompressParams::ResTier;

/// A case before it is planned: ten seconds of H.264 at four megabits with one AAC track, left to
/// the program, on a build that has x264.
struct Given : FilmCase<CompressParams> {
    std::optional<FFmpegToolset> toolset = offering({u"libx264"_s, u"aac"_s});

    Given()
    {
        file.fileSizeBytes = 6'000'000;
        file.videoBitrateBps = 4'000'000;
        addAudio(u"aac"_s);
    }

    void size(qint64 width, qint64 height)
    {
        file.width = width;
        file.height = height;
    }

    void quality(QualityTier tier, ResTier resolution = ResTier::original)
    {
        params.mode = Mode::quality;
        params.quality = tier;
        params.resolution = resolution;
    }

    void customHeight(qint64 height)
    {
        quality(QualityTier::balanced, ResTier::custom);
        params.customHeight = height;
    }

    JobPlan plan() const
    {
        return CommandBuilder::compress(file, params, toolset, std::nullopt, std::nullopt);
    }

    QStringList args() const { return plan().steps.first().args; }
};

using Row = LineRow<Given>;

class CompressLine : public ::testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(CompressLine, is_laid_out)
{
    const JobPlan plan = given(GetParam().change).plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().args, commandLine(GetParam().line));
}

// How small: the share of the source's rate and the height cap.
static const std::vector<Row> measureRows{
    {"smart", [](Given &) {},
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"smart_takes_no_notice_of_quality_and_resolution",
     [](Given &g) {
         g.params.quality = QualityTier::tiny;
         g.params.resolution = ResTier::p480;
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"smart_caps_a_tall_film",
     [](Given &g) {
         g.size(3840, 2160);
         g.file.videoBitrateBps = 40'000'000;
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 10311k -pix_fmt yuv420p "
     "-vf scale=-2:1440 -c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"quality_at_the_original_size", [](Given &g) { g.quality(QualityTier::maximum); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smaller.mp4"},
    {"quality_at_the_original_size_doesn_t_cap_a_tall_film",
     [](Given &g) {
         g.quality(QualityTier::maximum);
         g.size(3840, 2160);
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smaller.mp4"},
    {"quality_with_a_cap", [](Given &g) { g.quality(QualityTier::balanced, ResTier::p480); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 976k -pix_fmt yuv420p -vf "
     "scale=-2:480 -c:a copy -movflags +faststart /films/a-smaller-480p.mp4"},
    {"quality_with_a_cap_above_the_source_s_height_is_named_after_it_all_the_same",
     [](Given &g) { g.quality(QualityTier::balanced, ResTier::p1080); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2200k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smaller-1080p.mp4"},
    {"quality_with_a_custom_height", [](Given &g) { g.customHeight(718); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2187k -pix_fmt yuv420p -vf "
     "scale=-2:718 -c:a copy -movflags +faststart /films/a-smaller-718p.mp4"},
    {"quality_with_an_odd_custom_height_leaves_it_odd", [](Given &g) { g.customHeight(719); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2193k -pix_fmt yuv420p -vf "
     "scale=-2:719 -c:a copy -movflags +faststart /films/a-smaller-719p.mp4"},
    {"quality_with_a_custom_height_of_0", [](Given &g) { g.customHeight(0); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 300k -pix_fmt yuv420p -vf "
     "scale=-2:0 -c:a copy -movflags +faststart /films/a-smaller-0p.mp4"},
    {"quality_with_a_custom_height_below_0", [](Given &g) { g.customHeight(-480); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 976k -pix_fmt yuv420p -vf "
     "scale=-2:-480 -c:a copy -movflags +faststart /films/a-smaller--480p.mp4"},
};

// Sound, and what there is of streams.
static const std::vector<Row> soundRows{
    {"a_muted_film_keeps_the_audio_map_and_drops_the_sound",
     [](Given &g) {
         g.params.muted = true;
         g.params.advanced.volumeDb = 3;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p -an "
     "-movflags +faststart /films/a-smart.mp4"},
    {"a_muted_silent_film_still_says_so",
     [](Given &g) {
         g.params.muted = true;
         g.sound({});
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p -an -movflags "
     "+faststart /films/a-smart.mp4"},
    {"a_silent_film_has_no_sound_and_no_gain",
     [](Given &g) {
         g.sound({});
         g.params.advanced.volumeDb = 3;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p -movflags "
     "+faststart /films/a-smart.mp4"},
    {"sound_that_mp4_lacks_is_encoded", [](Given &g) { g.sound({u"opus"_s}); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a aac -b:a 160k -movflags +faststart /films/a-smart.mp4"},
    {"the_first_audio_track_alone_decides",
     [](Given &g) {
         g.sound({u"EAC3"_s, u"opus"_s});
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"sound_of_unknown_codec_is_copied", [](Given &g) { g.sound({QString()}); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"a_chosen_audio_rate_encodes_sound_that_fits",
     [](Given &g) { g.params.advanced.audioBitrateKbps = 96; },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a aac -b:a 96k -movflags +faststart /films/a-smart.mp4"},
    {"a_gain_follows_even_a_copy", [](Given &g) { g.params.advanced.volumeDb = -4.25; },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a copy -af volume=-4.2dB -movflags +faststart /films/a-smart.mp4"},
    {"a_gain_of_0_is_written_behind_an_encode",
     [](Given &g) {
         g.params.advanced.volumeDb = 0;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a aac -b:a 96k -af volume=0.0dB -movflags +faststart /films/a-smart.mp4"},
    {"a_replacement_is_opened_but_not_mapped", [](Given &g) { g.replaceAudio(); },
     "-i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k "
     "-pix_fmt yuv420p -c:a aac -b:a 160k -movflags +faststart -shortest /films/a-smart.mp4"},
    {"a_replacement_takes_rate_and_gain",
     [](Given &g) {
         g.replaceAudio();
         g.params.advanced.volumeDb = 1.5;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k "
     "-pix_fmt yuv420p -c:a aac -b:a 96k -af volume=1.5dB -movflags +faststart -shortest "
     "/films/a-smart.mp4"},
    {"a_replacement_on_a_silent_film_maps_the_sound_that_isn_t_there",
     [](Given &g) {
         g.sound({});
         g.replaceAudio();
     },
     "-i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k "
     "-pix_fmt yuv420p -c:a aac -b:a 160k -movflags +faststart -shortest /films/a-smart.mp4"},
    {"a_muted_replacement_isn_t_opened_but_leaves_its_map_and_its_end",
     [](Given &g) {
         g.sound({});
         g.replaceAudio();
         g.params.muted = true;
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p -an "
     "-movflags +faststart -shortest /films/a-smart.mp4"},
    {"a_recording_has_no_video_group", [](Given &g) { g.dropVideo(); },
     "-i /films/a.mov -map 0:a? -c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"a_picture_of_unknown_width_has_no_video_group_and_no_filter",
     [](Given &g) {
         g.file.width.reset();
         g.customHeight(480);
     },
     "-i /films/a.mov -map 0:a? -c:a copy -movflags +faststart /films/a-smaller-480p.mp4"},
    {"a_picture_of_unknown_codec_has_no_video_group_but_is_filtered",
     [](Given &g) {
         g.file.videoCodec.reset();
         g.customHeight(480);
     },
     "-i /films/a.mov -map 0:a? -vf scale=-2:480 -c:a copy -movflags +faststart "
     "/films/a-smaller-480p.mp4"},
    {"a_file_with_neither_picture_nor_sound_has_the_container_alone",
     [](Given &g) {
         g.dropVideo();
         g.sound({});
     },
     "-i /films/a.mov -movflags +faststart /films/a-smart.mp4"},
};

// The picture.
static const std::vector<Row> pictureRows{
    {"x264_at_a_quality",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 18;
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v libx264 -crf 18 -pix_fmt yuv420p -c:a copy "
     "-movflags +faststart /films/a-smart.mp4"},
    {"x264_without_a_quality_goes_by_rate",
     [](Given &g) { g.params.advanced.codec = CodecChoice::softwareX264; },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v libx264 -b:v 2320k -pix_fmt yuv420p -c:a copy "
     "-movflags +faststart /films/a-smart.mp4"},
    {"another_encoder_drops_the_quality", [](Given &g) { g.params.advanced.crf = 18; },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"hevc_keeps_hdr",
     [](Given &g) {
         g.file.videoCodec = u"hevc"_s;
         g.file.isHDR = true;
         g.params.advanced.hdrPassthrough = true;
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v hevc_videotoolbox -b:v 2320k -pix_fmt p010le "
     "-color_primaries bt2020 -color_trc smpte2084 -colorspace bt2020nc -c:a copy -movflags "
     "+faststart /films/a-smart.mp4"},
    {"h264_drops_hdr",
     [](Given &g) {
         g.file.isHDR = true;
         g.params.advanced.hdrPassthrough = true;
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"alpha_goes_by_prores_without_a_rate_whatever_was_chosen",
     [](Given &g) {
         g.file.hasAlphaChannel = true;
         g.file.isHDR = true;
         g.params.advanced.preserveAlpha = true;
         g.params.advanced.hdrPassthrough = true;
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 18;
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v prores_ks -profile:v 4 -pix_fmt yuva444p10le -c:a "
     "copy -movflags +faststart /films/a-smart.mp4"},
    {"alpha_that_isn_t_there_isn_t_preserved",
     [](Given &g) { g.params.advanced.preserveAlpha = true; },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"alpha_that_isn_t_asked_for_is_dropped", [](Given &g) { g.file.hasAlphaChannel = true; },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"a_crop_leaves_the_rate_alone", [](Given &g) { g.crop(CropSpec::Aspect::ratio1x1); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p -vf "
     "crop=720:720:(iw-ow)/2:(ih-oh)/2 -c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"a_crop_stands_before_the_cap_and_takes_its_width_along",
     [](Given &g) {
         g.quality(QualityTier::balanced, ResTier::p480);
         g.crop(CropSpec::Aspect::ratio1x1);
     },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 977k -pix_fmt yuv420p -vf "
     "crop=720:720:(iw-ow)/2:(ih-oh)/2,scale=-2:480 -c:a copy -movflags +faststart "
     "/films/a-smaller-480p.mp4"},
    {"an_odd_size_is_rescaled_at_its_own_height", [](Given &g) { g.size(1279, 719); },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p -vf "
     "scale=-2:719 -c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"a_frame_rate_cap_of_0_is_none", [](Given &g) { g.params.advanced.fpsCap = 0; },
     "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 2320k -pix_fmt yuv420p "
     "-c:a copy -movflags +faststart /films/a-smart.mp4"},
    {"all_groups_stand_in_their_order",
     [](Given &g) {
         g.quality(QualityTier::tiny, ResTier::p480);
         g.replaceAudio();
         g.crop(CropSpec::Aspect::ratio4x3);
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 28;
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = 1.5;
         g.params.advanced.fpsCap = 30;
         g.params.advanced.extraArgs = u"  -tune   film "_s;
     },
     "-i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 0:a? -c:v libx264 -crf 28 -pix_fmt yuv420p "
     "-vf crop=960:720:(iw-ow)/2:(ih-oh)/2,scale=-2:480 -c:a aac -b:a 96k -af volume=1.5dB "
     "-movflags +faststart -shortest -r 30 -tune film /films/a-smaller-480p.mp4"},
};

INSTANTIATE_TEST_SUITE_P(Measure, CompressLine, ::testing::ValuesIn(measureRows), RowName());
INSTANTIATE_TEST_SUITE_P(Sound, CompressLine, ::testing::ValuesIn(soundRows), RowName());
INSTANTIATE_TEST_SUITE_P(Picture, CompressLine, ::testing::ValuesIn(pictureRows), RowName());

TEST(Compress, a_plan_is_one_step_with_nothing_around_it)
{
    Given smart;
    Given quality;
    quality.quality(QualityTier::tiny);
    for (const Given &g : {smart, quality}) {
        const JobPlan plan = g.plan();

        ASSERT_EQ(plan.steps.size(), 1);
        EXPECT_EQ(plan.steps.first().label, u"compress"_s);
        EXPECT_EQ(plan.steps.first().progressDuration, 10);
        EXPECT_EQ(plan.finalOutputURLs.size(), 1);
        EXPECT_EQ(plan.badgeKey, std::nullopt);
        expectNothingBeside(plan);
    }
}

TEST(Compress, each_quality_keeps_its_share_of_the_rate)
{
    const std::vector<std::pair<QualityTier, QString>> rows{
        {QualityTier::maximum, u"3400k"_s},  {QualityTier::high, u"2800k"_s},
        {QualityTier::balanced, u"2200k"_s}, {QualityTier::small, u"1680k"_s},
        {QualityTier::tiny, u"1200k"_s},
    };
    for (const auto &[tier, expected] : rows) {
        Given g;
        g.quality(tier);
        EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), expected);
    }
}

TEST(Compress, each_resolution_has_its_cap_its_name_and_its_rate)
{
    struct Case {
        ResTier resolution;
        QString filter;
        QString path;
        QString rate;
    };
    const std::vector<Case> cases{
        {ResTier::original, QString(), u"/films/a-smaller.mp4"_s, u"22000k"_s},
        {ResTier::p2160, u"scale=-2:2160"_s, u"/films/a-smaller-2160p.mp4"_s, u"21978k"_s},
        {ResTier::p1440, u"scale=-2:1440"_s, u"/films/a-smaller-1440p.mp4"_s, u"9765k"_s},
        {ResTier::p1080, u"scale=-2:1080"_s, u"/films/a-smaller-1080p.mp4"_s, u"5491k"_s},
        {ResTier::p720, u"scale=-2:720"_s, u"/films/a-smaller-720p.mp4"_s, u"2439k"_s},
        {ResTier::p480, u"scale=-2:480"_s, u"/films/a-smaller-480p.mp4"_s, u"1084k"_s},
        {ResTier::custom, u"scale=-2:300"_s, u"/films/a-smaller-300p.mp4"_s, u"423k"_s},
    };
    for (const Case &c : cases) {
        Given g;
        g.size(3840, 2161);
        g.file.videoBitrateBps = 40'000'000;
        g.quality(QualityTier::balanced, c.resolution);
        g.params.customHeight = 300;
        // The odd height is rescaled even without a cap.
        const QString filter = c.filter.isEmpty() ? u"scale=-2:2161"_s : c.filter;

        const JobPlan plan = g.plan();

        EXPECT_EQ(valueOf(plan.steps.first().args, u"-vf"_s), filter);
        EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{QUrl::fromLocalFile(c.path)});
        EXPECT_EQ(plan.steps.first().args.last(), c.path);
        EXPECT_EQ(valueOf(plan.steps.first().args, u"-b:v"_s), c.rate);
    }
}

TEST(Compress, smart_has_no_cap_at_1440_and_one_at_1441)
{
    Given g;
    g.file.videoBitrateBps = 20'000'000;
    g.size(2560, 1440);
    EXPECT_FALSE(g.args().contains(u"-vf"_s));
    EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"11600k"_s);

    g.size(2562, 1441);
    EXPECT_EQ(valueOf(g.args(), u"-vf"_s), u"scale=-2:1440"_s);
    EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"11582k"_s);
}

TEST(Compress, smart_has_no_cap_for_an_unknown_height)
{
    Given g;
    g.file.height.reset();
    EXPECT_FALSE(g.args().contains(u"-vf"_s));
    EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"2320k"_s);
}

TEST(Compress, a_cap_at_or_above_the_source_s_height_neither_scales_nor_lowers_the_rate)
{
    for (const qint64 height : {qint64{720}, qint64{721}, qint64{2160}}) {
        Given g;
        g.customHeight(height);
        EXPECT_FALSE(g.args().contains(u"-vf"_s));
        EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"2200k"_s);
    }
}

TEST(Compress, the_rate_falls_with_the_pixels_that_a_cap_takes)
{
    struct Case {
        std::optional<qint64> width;
        std::optional<qint64> height;
        std::optional<CropSpec::Aspect> crop;
        qint64 cap;
        qint64 expected;
    };
    // 2200 kilobits without a cap.
    const std::vector<Case> cases{
        {1280, 720, std::nullopt, 719, 2193},
        {1280, 720, std::nullopt, 480, 976},
        {1280, 720, std::nullopt, 2, 300},
        {1280, 720, std::nullopt, 0, 300},
        {1280, 720, std::nullopt, -1, 300},
        {1280, 720, std::nullopt, -480, 976},
        {1280, 720, CropSpec::Aspect::ratio1x1, 480, 977},
        {1280, 720, CropSpec::Aspect::ratio9x16, 480, 977},
        // A free crop doesn't count.
        {1280, 720, CropSpec::Aspect::free, 480, 976},
        {std::nullopt, 720, std::nullopt, 480, 2200},
        {1280, std::nullopt, std::nullopt, 480, 2200},
        {1280, 0, std::nullopt, -480, 2200},
        {1280, -720, std::nullopt, -1440, 2200},
        // Without a pixel there is no share of them.
        {0, 720, std::nullopt, 480, 300},
        {1, 720, std::nullopt, 480, 300},
    };
    for (const Case &c : cases) {
        Given g;
        g.customHeight(c.cap);
        g.file.width = c.width;
        g.file.height = c.height;
        if (c.crop) {
            g.crop(*c.crop);
        }
        EXPECT_EQ(CommandBuilder::compressVideoKbps(g.file, g.params), c.expected)
            << "case " << (&c - cases.data());
    }
}

TEST(Compress, the_farthest_custom_height_still_has_a_rate)
{
    Given g;
    for (const qint64 height :
         {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()}) {
        g.customHeight(height);
        EXPECT_GE(CommandBuilder::compressVideoKbps(g.file, g.params), 2200);
    }
}

TEST(Compress, a_source_of_100_kilobits_is_encoded_at_300_even_when_tiny)
{
    Given g;
    g.quality(QualityTier::tiny);
    g.file.videoBitrateBps = 100'000;
    EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"300k"_s);

    g.file.videoBitrateBps = 1'003'000;
    EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"300k"_s);

    g.file.videoBitrateBps = 1'004'000;
    EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"301k"_s);
}

TEST(Compress, an_unknown_video_rate_is_what_the_sound_leaves_of_the_whole)
{
    Given g;
    g.file.fileSizeBytes = 1'000'000;
    for (const std::optional<qint64> unknown :
         {std::optional<qint64>(), std::optional<qint64>(0), std::optional<qint64>(-8)}) {
        g.file.videoBitrateBps = unknown;
        g.sound({});
        EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"463k"_s);
        g.sound({u"aac"_s});
        EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"389k"_s);
        g.file.audioStreams.first().bitrateBps = 64'000;
        EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"426k"_s);
    }
}

TEST(Compress, the_automatic_choice_leaves_hevc_in_hevc_and_makes_h264_of_all_else)
{
    const QString h264 = u"h264_videotoolbox"_s;
    const QString hevc = u"hevc_videotoolbox"_s;
    const std::vector<std::pair<QString, QString>> rows{
        {u"hevc"_s, hevc},   {u"HEVC"_s, hevc}, {u"h264"_s, h264}, {u"vp9"_s, h264},
        {u"prores"_s, h264}, {u"av1"_s, h264},  {u""_s, h264},
    };
    for (const auto &[codec, encoder] : rows) {
        Given g;
        g.file.videoCodec = codec;
        EXPECT_EQ(valueOf(g.args(), u"-c:v"_s), encoder);
    }
}

TEST(Compress, each_codec_choice_has_its_encoder_even_for_an_hevc_source)
{
    const QString h264 = u"h264_videotoolbox"_s;
    const std::vector<std::pair<CodecChoice, QString>> rows{
        {CodecChoice::h264VideoToolbox, h264},
        {CodecChoice::hevcVideoToolbox, u"hevc_videotoolbox"_s},
        {CodecChoice::softwareX264, u"libx264"_s},
        {CodecChoice::proresVideoToolbox, u"prores_videotoolbox"_s},
        {CodecChoice::svtAV1, h264},
    };
    for (const QString &source : {u"h264"_s, u"hevc"_s}) {
        for (const auto &[codec, encoder] : rows) {
            Given g;
            g.file.videoCodec = source;
            g.params.advanced.codec = codec;
            EXPECT_EQ(valueOf(g.args(), u"-c:v"_s), encoder);
            EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), u"2320k"_s);
        }
    }
}

TEST(Compress, x264_that_is_missing_gives_hardware_h264_at_a_rate)
{
    Given g;
    g.params.advanced.codec = CodecChoice::softwareX264;
    g.params.advanced.crf = 18;
    FFmpegToolset withoutX264;
    withoutX264.encoders = {u"libx264rgb"_s};
    for (const std::optional<FFmpegToolset> &toolset :
         {std::optional<FFmpegToolset>(), std::optional(withoutX264)}) {
        g.toolset = toolset;
        EXPECT_EQ(g.args(),
                  commandLine("-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v "
                              "2320k -pix_fmt yuv420p -c:a copy -movflags +faststart "
                              "/films/a-smart.mp4"));
    }
}

TEST(Compress, a_muted_film_with_sound_keeps_the_audio_map)
{
    Given g;
    g.sound({u"aac"_s, u"opus"_s});
    g.params.muted = true;

    const QStringList args = g.args();

    EXPECT_TRUE(args.contains(u"0:a?"_s));
    EXPECT_TRUE(args.contains(u"-an"_s));
}

TEST(Compress, a_muted_job_never_opens_the_replacement)
{
    Given g;
    g.params.muted = true;
    g.replaceAudio();

    const QStringList args = g.args();

    EXPECT_EQ(args.count(u"-i"_s), 1);
    EXPECT_EQ(args.count(u"-shortest"_s), 1);
}

TEST(Compress, smart_measures_by_the_height_and_quality_by_the_parameters)
{
    Given g;
    EXPECT_EQ(CommandBuilder::compressMeasure(g.file, g.params),
              (CommandBuilder::CompressMeasure{0.58, std::nullopt}));

    g.file.height = 1440;
    EXPECT_EQ(CommandBuilder::compressMeasure(g.file, g.params),
              (CommandBuilder::CompressMeasure{0.58, std::nullopt}));

    g.file.height = 1441;
    EXPECT_EQ(CommandBuilder::compressMeasure(g.file, g.params),
              (CommandBuilder::CompressMeasure{0.58, 1440}));

    g.customHeight(-3);
    EXPECT_EQ(CommandBuilder::compressMeasure(g.file, g.params),
              (CommandBuilder::CompressMeasure{0.55, -3}));
}

TEST(Compress, a_taken_output_name_is_numbered)
{
    const TempFolder folder;
    folder.write(u"a-smart.mp4"_s, "taken");
    Given g;
    g.file.url = folder.url(u"a.mov"_s);

    const JobPlan plan = g.plan();

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"a-smart 2.mp4"_s)});
    EXPECT_EQ(plan.steps.first().args.last(), folder.path(u"a-smart 2.mp4"_s));
}

TEST(Compress, folder_and_template_name_the_output_and_the_container_is_always_mp4)
{
    const TempFolder folder;
    Given g;
    g.file.url = QUrl::fromLocalFile(u"/films/a.b.webm"_s);
    g.quality(QualityTier::high, ResTier::p720);

    const JobPlan plan = CommandBuilder::compress(
        g.file, g.params, g.toolset, folder.url(QString()), u"{suffix} {name} {ext}"_s);

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"smaller-720p a.b mp4.mp4"_s)});
}

TEST(Compress, paths_go_in_as_they_are)
{
    Given g;
    const QString odd = u"/films/it's a \"film\" %20 ?#$HOME;"_s;
    g.file.url = QUrl::fromLocalFile(odd + u".mov"_s);
    g.params.advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/b c&d.m4a"_s);

    const QStringList args = g.args();

    EXPECT_EQ(valueOf(args, u"-i"_s), odd + u".mov"_s);
    EXPECT_EQ(args.count(u"/music/b c&d.m4a"_s), 1);
    EXPECT_EQ(args.last(), odd + u"-smart.mp4"_s);
}
