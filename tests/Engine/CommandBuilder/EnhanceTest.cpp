// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/GoldenLines.h"

#include <gtest/gtest.h>

#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;

namespace {

using Denoise = EnhanceParams::DenoiseLevel;
using Sharpen = EnhanceParams::SharpenLevel;
using Upscale = EnhanceParams::UpscaleFactor;

/// A case before it is planned: a film of ten seconds in H.264 and AAC, on a build that has x264,
/// with the parameters as they come.
struct Given : FilmCase<EnhanceParams> {
    FFmpegToolset toolset = offering({u"libx264"_s, u"aac"_s});

    Given()
    {
        file.fileSizeBytes = 9'000'000;
        file.fps = 25;
        addAudio(u"aac"_s);
    }

    void allOff()
    {
        params.denoise = Denoise::off;
        params.sharpen = Sharpen::off;
    }

    JobPlan plan() const
    {
        return CommandBuilder::enhance(file, params, toolset, std::nullopt, std::nullopt);
    }
};

using Row = LineRow<Given>;

class EnhanceLine : public ::testing::TestWithParam<Row>
{
};

VideoFile pictureOf(std::optional<qint64> width, std::optional<qint64> height,
                    std::optional<double> fps)
{
    VideoFile file;
    file.width = width;
    file.height = height;
    file.fps = fps;
    return file;
}

EnhanceParams upscaledBy(Upscale factor)
{
    EnhanceParams params;
    params.upscale = factor;
    return params;
}

} // namespace

TEST_P(EnhanceLine, is_laid_out)
{
    Given g;
    GetParam().change(g);

    const JobPlan plan = g.plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().args, commandLine(GetParam().line));
}

// What is done to the picture.
static const std::vector<Row> filterRows{
    {"the_defaults_denoise_and_sharpen_lightly", [](Given &) {},
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"everything_off_encodes_without_a_filter", [](Given &g) { g.allOff(); },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-map 0:a? -c:a copy -movflags +faststart /films/a-enhanced.mp4"},
    {"all_filters_stand_in_their_order",
     [](Given &g) {
         g.params.denoise = Denoise::strong;
         g.params.upscale = Upscale::x2;
         g.params.sharpen = Sharpen::medium;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 8294k -pix_fmt yuv420p "
     "-vf hqdn3d=4:2:6:6,scale='trunc(iw*2.0/2)*2':'trunc(ih*2.0/2)*2':flags=lanczos,"
     "cas=strength=0.6 -map 0:a? -c:a copy -movflags +faststart /films/a-enhanced.mp4"},
    {"a_scale_by_a_half_more_stands_alone",
     [](Given &g) {
         g.allOff();
         g.params.upscale = Upscale::x15;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 4665k -pix_fmt yuv420p "
     "-vf scale='trunc(iw*1.5/2)*2':'trunc(ih*1.5/2)*2':flags=lanczos -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_medium_denoise_stands_alone",
     [](Given &g) {
         g.allOff();
         g.params.denoise = Denoise::medium;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=2:1.5:4:4 -map 0:a? -c:a copy -movflags +faststart /films/a-enhanced.mp4"},
    {"a_crop_counts_for_nothing_and_an_odd_size_is_left_odd",
     [](Given &g) {
         g.allOff();
         g.file.width = 1281;
         g.file.height = 721;
         g.params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-map 0:a? -c:a copy -movflags +faststart /films/a-enhanced.mp4"},
};

// How the picture is encoded.
static const std::vector<Row> pictureRows{
    {"x264_without_a_factor_has_a_rate",
     [](Given &g) { g.params.advanced.codec = CodecChoice::softwareX264; },
     "-i /films/a.mov -map 0:v:0 -c:v libx264 -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"x264_with_a_factor_has_no_rate",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 20;
     },
     "-i /films/a.mov -map 0:v:0 -c:v libx264 -crf 20 -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"without_x264_the_factor_is_dropped",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 20;
         g.toolset.encoders.clear();
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"other_encoders_take_no_factor",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.crf = 20;
     },
     "-i /films/a.mov -map 0:v:0 -c:v hevc_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"prores_has_a_rate",
     [](Given &g) { g.params.advanced.codec = CodecChoice::proresVideoToolbox; },
     "-i /films/a.mov -map 0:v:0 -c:v prores_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"av1_falls_to_h264", [](Given &g) { g.params.advanced.codec = CodecChoice::svtAV1; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"hdr_goes_through_hevc",
     [](Given &g) {
         g.file.isHDR = true;
         g.params.advanced.hdrPassthrough = true;
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
     },
     "-i /films/a.mov -map 0:v:0 -c:v hevc_videotoolbox -b:v 2073k -pix_fmt p010le "
     "-color_primaries bt2020 -color_trc smpte2084 -colorspace bt2020nc "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"hdr_doesn_t_go_through_h264",
     [](Given &g) {
         g.file.isHDR = true;
         g.params.advanced.hdrPassthrough = true;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"alpha_is_asked_of_any_encoder",
     [](Given &g) {
         g.file.hasAlphaChannel = true;
         g.params.advanced.preserveAlpha = true;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuva444p10le "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_picture_of_unknown_height_has_a_fixed_rate", [](Given &g) { g.file.height.reset(); },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 4000k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"without_a_picture_the_filter_stays", [](Given &g) { g.file.videoCodec.reset(); },
     "-i /films/a.mov -vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_picture_of_unknown_width_counts_as_none",
     [](Given &g) {
         g.file.width.reset();
         g.allOff();
     },
     "-i /films/a.mov -map 0:a? -c:a copy -movflags +faststart /films/a-enhanced.mp4"},
};

// Sound.
static const std::vector<Row> soundRows{
    {"a_muted_film_keeps_the_audio_map_and_drops_the_sound",
     [](Given &g) {
         g.params.muted = true;
         g.params.advanced.volumeDb = 3;
         g.replaceAudio();
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -an "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"without_sound_there_is_no_audio_group_even_when_muted_or_replaced",
     [](Given &g) {
         g.file.audioStreams.clear();
         g.params.muted = true;
         g.params.advanced.volumeDb = 3;
         g.replaceAudio();
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -movflags +faststart /films/a-enhanced.mp4"},
    {"a_replacement_has_the_sound_encoded_and_isn_t_opened", [](Given &g) { g.replaceAudio(); },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a aac -b:a 160k "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_codec_without_a_place_in_an_mp4_is_encoded",
     [](Given &g) { g.file.audioStreams.first().codec = u"opus"_s; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a aac -b:a 160k "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"the_first_track_decides_for_all", [](Given &g) { g.addAudio(u"opus"_s); },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_track_of_unknown_codec_is_copied",
     [](Given &g) { g.file.audioStreams.first().codec.clear(); },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_chosen_audio_rate_is_the_picture_s_too",
     [](Given &g) { g.params.advanced.audioBitrateKbps = 96; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 96k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a aac -b:a 96k "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_chosen_audio_rate_is_the_picture_s_even_when_muted",
     [](Given &g) {
         g.params.advanced.audioBitrateKbps = 96;
         g.params.muted = true;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 96k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -an "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_factor_keeps_the_audio_rate_off_the_picture",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 0;
         g.params.advanced.audioBitrateKbps = 96;
         g.replaceAudio();
     },
     "-i /films/a.mov -map 0:v:0 -c:v libx264 -crf 0 -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a aac -b:a 96k "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_gain_stands_behind_a_copy_too", [](Given &g) { g.params.advanced.volumeDb = -4.25; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy -af volume=-4.2dB "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_gain_stands_behind_encoded_sound",
     [](Given &g) {
         g.params.advanced.volumeDb = 0;
         g.replaceAudio();
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a aac -b:a 160k -af volume=0.0dB "
     "-movflags +faststart /films/a-enhanced.mp4"},
};

// The end of the line.
static const std::vector<Row> tailRows{
    {"a_frame_rate_cap_and_extra_arguments_stand_before_the_container_flags",
     [](Given &g) {
         g.params.advanced.fpsCap = 24;
         g.params.advanced.extraArgs = u"  -tune   film "_s;
     },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy -r 24 -tune film "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"a_frame_rate_cap_of_0_is_none", [](Given &g) { g.params.advanced.fpsCap = 0; },
     "-i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 2073k -pix_fmt yuv420p "
     "-vf hqdn3d=1.0:1.0:2:2,cas=strength=0.4 -map 0:a? -c:a copy "
     "-movflags +faststart /films/a-enhanced.mp4"},
    {"all_groups_stand_in_their_order",
     [](Given &g) {
         g.file.isHDR = true;
         g.params.upscale = Upscale::x15;
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.hdrPassthrough = true;
         g.params.advanced.audioBitrateKbps = 256;
         g.params.advanced.volumeDb = 6;
         g.params.advanced.fpsCap = 1;
         g.params.advanced.extraArgs = u"-tag:v hvc1"_s;
         g.replaceAudio();
     },
     "-i /films/a.mov -map 0:v:0 -c:v hevc_videotoolbox -b:v 256k -pix_fmt p010le "
     "-color_primaries bt2020 -color_trc smpte2084 -colorspace bt2020nc "
     "-vf hqdn3d=1.0:1.0:2:2,scale='trunc(iw*1.5/2)*2':'trunc(ih*1.5/2)*2':flags=lanczos,"
     "cas=strength=0.4 -map 0:a? -c:a aac -b:a 256k -af volume=6.0dB -r 1 -tag:v hvc1 "
     "-movflags +faststart /films/a-enhanced.mp4"},
};

INSTANTIATE_TEST_SUITE_P(Filters, EnhanceLine, ::testing::ValuesIn(filterRows), RowName());
INSTANTIATE_TEST_SUITE_P(Picture, EnhanceLine, ::testing::ValuesIn(pictureRows), RowName());
INSTANTIATE_TEST_SUITE_P(Sound, EnhanceLine, ::testing::ValuesIn(soundRows), RowName());
INSTANTIATE_TEST_SUITE_P(Tail, EnhanceLine, ::testing::ValuesIn(tailRows), RowName());

TEST(Enhance, the_plan_is_one_step_of_the_whole_length_and_nothing_else)
{
    const JobPlan plan = Given().plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().label, u"enhance"_s);
    EXPECT_EQ(plan.steps.first().progressDuration, 10);
    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{QUrl::fromLocalFile(u"/films/a-enhanced.mp4"_s)});
    EXPECT_EQ(plan.badgeKey, std::nullopt);
    expectNothingBeside(plan);
}

TEST(Enhance, folder_and_template_name_the_output_and_a_taken_name_is_numbered)
{
    const TempFolder folder;
    folder.write(u"enhanced a.mp4"_s, "taken");
    const Given g;

    const JobPlan plan = CommandBuilder::enhance(g.file, g.params, g.toolset, folder.url(QString()),
                                                 u"{suffix} {name}"_s);

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"enhanced a 2.mp4"_s)});
    EXPECT_EQ(plan.steps.first().args.last(), folder.path(u"enhanced a 2.mp4"_s));
}

TEST(Enhance, each_level_of_denoising_and_sharpening_has_its_filter)
{
    const std::vector<std::pair<Denoise, QString>> denoise{
        {Denoise::off, {}},
        {Denoise::light, u"hqdn3d=1.0:1.0:2:2"_s},
        {Denoise::medium, u"hqdn3d=2:1.5:4:4"_s},
        {Denoise::strong, u"hqdn3d=4:2:6:6"_s},
    };
    const std::vector<std::pair<Sharpen, QString>> sharpen{
        {Sharpen::off, {}},
        {Sharpen::light, u"cas=strength=0.4"_s},
        {Sharpen::medium, u"cas=strength=0.6"_s},
    };
    for (const auto &[denoiseLevel, denoiseFilter] : denoise) {
        for (const auto &[sharpenLevel, sharpenFilter] : sharpen) {
            EnhanceParams params;
            params.denoise = denoiseLevel;
            params.sharpen = sharpenLevel;
            QStringList filters{denoiseFilter, sharpenFilter};
            filters.removeAll(QString());
            EXPECT_EQ(CommandBuilder::enhanceFilterChain({}, params).value_or(QString()),
                      filters.join(u','));
        }
    }
}

TEST(Enhance, with_everything_off_there_is_no_filter_chain)
{
    Given g;
    g.allOff();
    EXPECT_EQ(CommandBuilder::enhanceFilterChain(g.file, g.params), std::nullopt);
}

TEST(Enhance, the_video_rate_goes_by_the_pixels_of_the_output)
{
    struct Case {
        VideoFile file;
        Upscale factor;
        qint64 kbps;
    };
    const std::vector<Case> cases{
        {pictureOf(1920, 1080, 30), Upscale::x1, 5598},
        {pictureOf(1920, 1080, std::nullopt), Upscale::x1, 5598},
        {pictureOf(1920, 1080, 23.976), Upscale::x1, 4474},
        {pictureOf(1280, 720, 30), Upscale::x1, 2488},
        {pictureOf(1280, 720, 30), Upscale::x15, 5598},
        {pictureOf(1280, 720, 30), Upscale::x2, 9953},
        // Odd sides count as the even ones that come out.
        {pictureOf(1281, 721, 30), Upscale::x1, 2488},
        // The frame rate is held between 1 and 60.
        {pictureOf(1920, 1080, 60), Upscale::x1, 11197},
        {pictureOf(1920, 1080, 240), Upscale::x1, 11197},
        {pictureOf(7680, 4320, 1), Upscale::x1, 2985},
        {pictureOf(7680, 4320, 0.5), Upscale::x1, 2985},
        {pictureOf(7680, 4320, 0), Upscale::x1, 2985},
        // The rate is held between 1500 and 40000.
        {pictureOf(3840, 2160, 60), Upscale::x1, 40000},
        {pictureOf(320, 240, 15), Upscale::x1, 1500},
        {pictureOf(0, 0, 30), Upscale::x1, 1500},
        {pictureOf(2'147'483'647, 2'147'483'647, 30), Upscale::x2, 40000},
        // Without a size there is a rate for all.
        {pictureOf(std::nullopt, 1080, 30), Upscale::x1, 4000},
        {pictureOf(1920, std::nullopt, 30), Upscale::x2, 4000},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(CommandBuilder::enhanceBitrateKbps(c.file, upscaledBy(c.factor)), c.kbps);
    }
}

TEST(Enhance, full_hd_at_30_frames_takes_5598_kilobits)
{
    EXPECT_EQ(CommandBuilder::enhanceBitrateKbps(pictureOf(1920, 1080, 30), {}), 5598);
}

TEST(Enhance, a_4k_picture_at_60_frames_stops_at_40000_kilobits)
{
    EXPECT_EQ(CommandBuilder::enhanceBitrateKbps(pictureOf(3840, 2160, 60), {}), 40000);
}

TEST(Enhance, a_small_picture_at_15_frames_rises_to_1500_kilobits)
{
    EXPECT_EQ(CommandBuilder::enhanceBitrateKbps(pictureOf(320, 240, 15), {}), 1500);
}

TEST(Enhance, paths_go_in_as_they_are)
{
    Given g;
    const QString odd = u"/films/it's a \"film\" %20 %1 ?#$HOME;"_s;
    g.file.url = QUrl::fromLocalFile(odd + u".mov"_s);

    const QStringList args = g.plan().steps.first().args;

    EXPECT_EQ(valueOf(args, u"-i"_s), odd + u".mov"_s);
    EXPECT_EQ(args.last(), odd + u"-enhanced.mp4"_s);
}
