// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/FilmContents.h"
#include "support/MediaFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

class EnhanceMedia : public MediaFixture
{
protected:
    JobPlan planFor(const VideoFile &file) const
    {
        return CommandBuilder::enhance(file, params, Clips::tools(), std::nullopt, std::nullopt);
    }

    // Enhances the film and gives what came out, after the checks that hold for every outcome.
    VideoFile enhanced(const VideoFile &file)
    {
        const VideoFile result = resultOf(planFor(file));
        EXPECT_TRUE(result.url.fileName().contains(u"-enhanced"_s));
        EXPECT_EQ(result.containerName, u"mov,mp4,m4a,3gp,3g2,mj2"_s);
        return result;
    }

    std::string failureFor(const VideoFile &file) { return wordsOfFailure(planFor(file)); }

    void allOff()
    {
        params.denoise = EnhanceParams::DenoiseLevel::off;
        params.sharpen = EnhanceParams::SharpenLevel::off;
    }

    EnhanceParams params;
};

void expectPicture(const VideoFile &file, qint64 width, qint64 height)
{
    EXPECT_EQ(file.videoCodec, u"h264"_s);
    EXPECT_EQ(file.width, width);
    EXPECT_EQ(file.height, height);
}

} // namespace

TEST_F(EnhanceMedia, a_film_keeps_its_size_and_its_sound)
{
    const VideoFile source = film();

    const VideoFile result = enhanced(source);

    expectPicture(result, 320, 180);
    EXPECT_EQ(result.fps, 25);
    expectSoundAndLength(result, 2);
    EXPECT_EQ(result.audioStreams.first().bitrateBps, source.audioStreams.first().bitrateBps);
}

TEST_F(EnhanceMedia, every_level_of_denoising_and_sharpening_is_understood)
{
    const VideoFile source = film();
    for (const auto denoise : allCases<EnhanceParams::DenoiseLevel>()) {
        params.denoise = denoise;
        params.sharpen = EnhanceParams::SharpenLevel::medium;
        expectPicture(enhanced(source), 320, 180);
    }
}

TEST_F(EnhanceMedia, a_film_is_encoded_with_everything_off)
{
    allOff();
    const VideoFile source =
        madeBy(u"a.mkv"_s, pictureInput() + QStringList{u"-c:v"_s, u"mpeg4"_s});
    expectPicture(enhanced(source), 320, 180);
}

TEST_F(EnhanceMedia, upscaling_multiplies_the_sides)
{
    const VideoFile source = film();
    params.upscale = EnhanceParams::UpscaleFactor::x15;
    expectPicture(enhanced(source), 480, 270);
    params.upscale = EnhanceParams::UpscaleFactor::x2;
    expectPicture(enhanced(source), 640, 360);
}

// The filter cuts what the announced size rounds, so they part where a half is left over.
TEST_F(EnhanceMedia, odd_sides_come_out_even_and_up_to_two_pixels_below_the_announced_size)
{
    const VideoFile source = silentFilm(u"321x181"_s);
    params.upscale = EnhanceParams::UpscaleFactor::x15;
    expectPicture(enhanced(source), 480, 270);
    EXPECT_EQ(params.outputSize(source), (PictureSize{482, 272}));

    params.upscale = EnhanceParams::UpscaleFactor::x2;
    expectPicture(enhanced(source), 642, 362);
    EXPECT_EQ(params.outputSize(source), (PictureSize{642, 362}));
}

TEST_F(EnhanceMedia, odd_sides_are_refused_by_the_software_encoder_where_nothing_is_scaled)
{
    EXPECT_THAT(failureFor(silentFilm(u"321x180"_s)), HasSubstr("width not divisible by 2"));
    EXPECT_THAT(failureFor(silentFilm(u"320x181"_s)), HasSubstr("height not divisible by 2"));
}

TEST_F(EnhanceMedia, a_turned_film_is_scaled_as_it_is_shown)
{
    const VideoFile source = turned(film());
    params.upscale = EnhanceParams::UpscaleFactor::x2;
    expectPicture(enhanced(source), 360, 640);
}

TEST_F(EnhanceMedia, x264_takes_a_factor)
{
    const VideoFile source = film();
    params.advanced.codec = CodecChoice::softwareX264;
    params.advanced.crf = 18;
    const VideoFile fine = enhanced(source);
    params.advanced.crf = 45;
    const VideoFile coarse = enhanced(source);

    expectPicture(coarse, 320, 180);
    EXPECT_LT(coarse.fileSizeBytes, fine.fileSizeBytes / 2);
}

TEST_F(EnhanceMedia, a_chosen_audio_rate_starves_the_picture)
{
    const VideoFile source = film();
    const VideoFile plain = enhanced(source);
    params.advanced.audioBitrateKbps = 64;

    const VideoFile result = enhanced(source);

    expectPicture(result, 320, 180);
    expectSoundAndLength(result, 2);
    EXPECT_LT(result.videoBitrateBps.value_or(0), plain.videoBitrateBps.value_or(0) / 3);
}

TEST_F(EnhanceMedia, the_hevc_choice_keeps_hdr_on_demand)
{
    const VideoFile source = hdrFilm();
    ASSERT_TRUE(source.isHDR);
    params.advanced.codec = CodecChoice::hevcVideoToolbox;
    params.advanced.hdrPassthrough = true;

    const VideoFile result = enhanced(source);

    EXPECT_EQ(result.videoCodec, u"hevc"_s);
    EXPECT_TRUE(result.isHDR);
}

TEST_F(EnhanceMedia, alpha_is_lost_in_h264_and_refused_as_prores_by_the_mp4)
{
    const VideoFile source = alphaFilm();
    ASSERT_TRUE(source.hasAlphaChannel);
    params.advanced.preserveAlpha = true;

    const VideoFile result = enhanced(source);

    expectPicture(result, 320, 180);
    EXPECT_FALSE(result.hasAlphaChannel);

    params.advanced.codec = CodecChoice::proresVideoToolbox;
    EXPECT_THAT(failureFor(source), HasSubstr("Could not find tag for codec prores"));
}

TEST_F(EnhanceMedia, a_muted_film_has_no_sound)
{
    params.muted = true;
    const VideoFile result = enhanced(film());
    expectPicture(result, 320, 180);
    EXPECT_TRUE(result.audioStreams.isEmpty());
}

TEST_F(EnhanceMedia, a_gain_behind_copied_sound_is_refused)
{
    params.advanced.volumeDb = 3;
    EXPECT_THAT(failureFor(film()), HasSubstr("Filtering and streamcopy cannot be used together"));
}

TEST_F(EnhanceMedia, a_gain_makes_encoded_sound_louder)
{
    const VideoFile source = film();
    params.advanced.audioBitrateKbps = 128;
    params.advanced.volumeDb = 6;
    EXPECT_NEAR(loudnessOf(enhanced(source), 0.5, 1) / loudnessOf(source, 0.5, 1), 2, 0.1);
}

TEST_F(EnhanceMedia, a_replacement_isn_t_opened_not_even_to_see_that_it_is_none)
{
    const VideoFile source = film();
    params.advanced.replacementAudioURL = folder.url(u"nowhere.m4a"_s);

    const VideoFile result = enhanced(source);

    expectSoundAndLength(result, 2);
    EXPECT_NEAR(loudnessOf(result, 0.5, 1), loudnessOf(source, 0.5, 1), 0.01);
}

TEST_F(EnhanceMedia, all_audio_tracks_come_along_and_subtitles_don_t)
{
    const VideoFile source =
        madeBy(u"much.mkv"_s, pictureInput() + toneInput() +
                                  QStringList{u"-i"_s, subtitles(), u"-map"_s, u"0:v"_s, u"-map"_s,
                                              u"1:a"_s, u"-map"_s, u"1:a"_s, u"-map"_s, u"2:s"_s,
                                              u"-c:v"_s, u"mpeg4"_s, u"-c:a"_s, u"libopus"_s});
    ASSERT_EQ(source.audioStreams.size(), 2);
    ASSERT_EQ(source.subtitleStreams.size(), 1);

    const VideoFile result = enhanced(source);

    expectPicture(result, 320, 180);
    ASSERT_EQ(result.audioStreams.size(), 2);
    EXPECT_EQ(result.audioStreams.last().codec, u"aac"_s);
    EXPECT_TRUE(result.subtitleStreams.isEmpty());
}

TEST_F(EnhanceMedia, a_recording_is_copied_and_its_filter_left_unused)
{
    const VideoFile source = madeBy(u"a.m4a"_s, toneInput());
    ASSERT_FALSE(source.videoCodec);

    const VideoFile result = enhanced(source);

    EXPECT_FALSE(result.videoCodec);
    expectSoundAndLength(result, 1);
}

TEST_F(EnhanceMedia, a_frame_rate_cap_and_extra_arguments_reach_the_output)
{
    params.advanced.fpsCap = 10;
    params.advanced.extraArgs = u"-c:a aac -ac 2"_s;

    const VideoFile result = enhanced(film());

    EXPECT_EQ(result.fps, 10);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(result.audioStreams.first().channels, 2);
}

TEST_F(EnhanceMedia, rubbish_in_the_extra_arguments_fails_in_ffmpeg_s_own_words)
{
    params.advanced.extraArgs = u"-frobnicate 1"_s;
    EXPECT_THAT(failureFor(film()), HasSubstr("Unrecognized option 'frobnicate'"));
}
