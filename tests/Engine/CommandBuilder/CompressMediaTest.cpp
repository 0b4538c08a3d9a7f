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

class CompressMedia : public MediaFixture
{
protected:
    // One second of H.264 with one mono AAC track.
    VideoFile film(const QString &videoBitrate = u"2000k"_s)
    {
        return MediaFixture::film(u"a.mov"_s, {.size = u"320x180"_s,
                                               .framesPerSecond = 25,
                                               .seconds = 1,
                                               .noise = 40,
                                               .hasAudio = true,
                                               .videoBitrate = videoBitrate});
    }

    void customHeight(qint64 height)
    {
        params.mode = CompressParams::Mode::quality;
        params.resolution = CompressParams::ResTier::custom;
        params.customHeight = height;
    }

    JobPlan planFor(const VideoFile &file) const
    {
        return CommandBuilder::compress(file, params, Clips::tools(), std::nullopt, std::nullopt);
    }

    // Compresses the film and gives what came out, after the checks that hold for every outcome.
    VideoFile compressed(const VideoFile &file)
    {
        const VideoFile result = resultOf(planFor(file));
        EXPECT_TRUE(result.url.path().endsWith(u".mp4"_s));
        EXPECT_EQ(result.containerName, u"mov,mp4,m4a,3gp,3g2,mj2"_s);
        return result;
    }

    std::string refusalOf(const VideoFile &file) { return wordsOfFailure(planFor(file)); }

    CompressParams params;
};

} // namespace

TEST_F(CompressMedia, smart_makes_a_film_smaller_and_copies_its_sound)
{
    const VideoFile source = film();
    ASSERT_GT(source.videoBitrateBps.value_or(0), 1'500'000);

    const VideoFile result = compressed(source);

    expectStreams(result, u"h264"_s, {u"aac"_s});
    EXPECT_EQ(result.url, folder.url(u"a-smart.mp4"_s));
    EXPECT_LT(result.fileSizeBytes, source.fileSizeBytes * 3 / 4);
    EXPECT_EQ(result.audioStreams.first().bitrateBps, source.audioStreams.first().bitrateBps);
}

TEST_F(CompressMedia, each_quality_makes_a_film_smaller_than_the_one_before)
{
    const VideoFile source = film(u"4000k"_s);
    params.mode = CompressParams::Mode::quality;
    qint64 previousBytes = source.fileSizeBytes;
    for (const CompressParams::QualityTier tier : allCases<CompressParams::QualityTier>()) {
        params.quality = tier;
        const qint64 bytes = compressed(source).fileSizeBytes;
        EXPECT_LT(bytes, previousBytes);
        previousBytes = bytes;
    }
}

TEST_F(CompressMedia, a_custom_height_is_the_output_s)
{
    customHeight(90);
    const VideoFile result = compressed(film());

    EXPECT_EQ(result.width, 160);
    EXPECT_EQ(result.height, 90);
    EXPECT_EQ(result.url, folder.url(u"a-smaller-90p.mp4"_s));
}

TEST_F(CompressMedia, a_custom_height_above_the_source_s_changes_nothing)
{
    customHeight(720);
    expectStreams(compressed(film()), u"h264"_s, {u"aac"_s});
}

TEST_F(CompressMedia, an_odd_custom_height_is_refused)
{
    const VideoFile source = film();
    for (const qint64 height : {qint64{91}, qint64{1}}) {
        customHeight(height);
        EXPECT_THAT(refusalOf(source), HasSubstr("height not divisible by 2"));
    }
}

// To the scale filter these mean the input's own size.
TEST_F(CompressMedia, a_custom_height_of_0_or_below_leaves_the_size)
{
    const VideoFile source = film();
    for (const qint64 height : {qint64{0}, qint64{-1}, qint64{-480}}) {
        customHeight(height);
        expectStreams(compressed(source), u"h264"_s, {u"aac"_s});
    }
}

TEST_F(CompressMedia, a_custom_height_beyond_the_filter_s_integers_is_refused)
{
    customHeight(-3'000'000'000);
    EXPECT_FALSE(refusalOf(film()).empty());
}

TEST_F(CompressMedia, hevc_stays_hevc)
{
    const VideoFile source =
        madeBy(u"a.mkv"_s,
               pictureInput() + QStringList{u"-c:v"_s, u"libx265"_s, u"-x265-params"_s,
                                            u"log-level=error"_s, u"-pix_fmt"_s, u"yuv420p"_s});
    expectStreams(compressed(source), u"hevc"_s, {});
}

TEST_F(CompressMedia, hdr_is_passed_through_by_hevc)
{
    const VideoFile source = hdrFilm();
    ASSERT_TRUE(source.isHDR);
    params.advanced.hdrPassthrough = true;

    const VideoFile result = compressed(source);

    expectStreams(result, u"hevc"_s, {});
    EXPECT_TRUE(result.isHDR);
}

TEST_F(CompressMedia, x264_takes_a_quality)
{
    const VideoFile source = film();
    params.advanced.codec = CodecChoice::softwareX264;
    params.advanced.crf = 18;
    const VideoFile fine = compressed(source);
    params.advanced.crf = 45;
    const VideoFile coarse = compressed(source);

    expectStreams(fine, u"h264"_s, {u"aac"_s});
    EXPECT_LT(coarse.fileSizeBytes, fine.fileSizeBytes / 2);
}

TEST_F(CompressMedia, prores_is_refused_by_the_mp4_whether_chosen_or_for_alpha)
{
    params.advanced.codec = CodecChoice::proresVideoToolbox;
    EXPECT_THAT(refusalOf(film()), HasSubstr("Could not find tag for codec prores"));

    params.advanced.codec = CodecChoice::automatic;
    params.advanced.preserveAlpha = true;
    const VideoFile alpha = alphaFilm();
    ASSERT_TRUE(alpha.hasAlphaChannel);
    EXPECT_THAT(refusalOf(alpha), HasSubstr("Could not find tag for codec prores"));
}

TEST_F(CompressMedia, a_muted_film_has_no_sound)
{
    params.muted = true;
    expectStreams(compressed(film()), u"h264"_s, {});
}

TEST_F(CompressMedia, a_replacement_is_opened_but_the_source_s_sound_goes_in_at_its_own_length)
{
    const VideoFile source = film();
    params.advanced.replacementAudioURL = stereoWav(0.3);

    const VideoFile result = compressed(source);

    expectStreams(result, u"h264"_s, {u"aac"_s});
    EXPECT_EQ(result.audioStreams.first().channels, 1);
}

TEST_F(CompressMedia, a_replacement_gives_a_silent_film_no_sound)
{
    params.advanced.replacementAudioURL = stereoWav(1);
    expectStreams(compressed(silentFilm(u"320x180"_s)), u"h264"_s, {});
}

TEST_F(CompressMedia, a_replacement_that_can_t_be_read_is_refused_unless_muted)
{
    const VideoFile source = film();
    params.advanced.replacementAudioURL =
        QUrl::fromLocalFile(folder.write(u"b.txt"_s, "no music at all"));
    EXPECT_THAT(refusalOf(source), HasSubstr("Invalid data found when processing input"));

    params.advanced.replacementAudioURL = folder.url(u"none.m4a"_s);
    EXPECT_THAT(refusalOf(source), HasSubstr("No such file or directory"));

    params.muted = true;
    expectStreams(compressed(source), u"h264"_s, {});
}

// Its sound isn't mapped, so that it has none doesn't matter.
TEST_F(CompressMedia, a_replacement_that_is_no_audio_is_good_enough)
{
    params.advanced.replacementAudioURL = silentFilm(u"320x180"_s).url;
    expectStreams(compressed(film()), u"h264"_s, {u"aac"_s});
}

TEST_F(CompressMedia, all_audio_tracks_come_along)
{
    expectStreams(compressed(filmWithTwoTracks(u"aac"_s)), u"h264"_s, {u"aac"_s, u"aac"_s});
}

TEST_F(CompressMedia, a_second_track_that_an_mp4_can_t_hold_is_refused_unless_encoded)
{
    const VideoFile source = filmWithTwoTracks(u"pcm_s16le"_s);
    EXPECT_THAT(refusalOf(source), HasSubstr("Could not find tag for codec pcm_s16le"));

    params.advanced.audioBitrateKbps = 64;
    expectStreams(compressed(source), u"h264"_s, {u"aac"_s, u"aac"_s});
}

TEST_F(CompressMedia, subtitles_stay_behind)
{
    const VideoFile source =
        madeBy(u"subtitled.mkv"_s,
               pictureInput() + QStringList{u"-i"_s, subtitles(), u"-c:v"_s, u"libx264"_s});
    ASSERT_EQ(source.subtitleStreams.size(), 1);

    EXPECT_TRUE(compressed(source).subtitleStreams.isEmpty());
}

TEST_F(CompressMedia, a_gain_over_copied_sound_is_refused_and_taken_by_an_encode)
{
    const VideoFile source = film();
    params.advanced.volumeDb = 3;
    EXPECT_THAT(refusalOf(source), HasSubstr("Filtering and streamcopy cannot be used together"));

    params.advanced.audioBitrateKbps = 64;
    expectStreams(compressed(source), u"h264"_s, {u"aac"_s});
}

TEST_F(CompressMedia, a_recording_keeps_its_sound_alone)
{
    const VideoFile aac = madeBy(u"a.m4a"_s, toneInput());
    const VideoFile pcm = madeBy(u"b.wav"_s, toneInput());
    for (const VideoFile &source : {aac, pcm}) {
        const VideoFile result = compressed(source);
        EXPECT_FALSE(result.videoCodec);
        EXPECT_EQ(audioCodecs(result), QStringList{u"aac"_s});
        EXPECT_NEAR(result.durationSeconds, 1, 0.1);
    }
}

TEST_F(CompressMedia, a_muted_recording_has_no_stream_left)
{
    params.muted = true;
    EXPECT_THAT(refusalOf(madeBy(u"a.m4a"_s, toneInput())),
                HasSubstr("does not contain any stream"));
}

TEST_F(CompressMedia, a_crop_and_a_cap_cut_and_scale_the_picture)
{
    customHeight(90);
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};

    const VideoFile result = compressed(film());

    EXPECT_EQ(result.width, 90);
    EXPECT_EQ(result.height, 90);
}

TEST_F(CompressMedia, a_turned_film_is_capped_as_it_is_shown)
{
    const VideoFile source = turned(film());
    customHeight(160);

    const VideoFile result = compressed(source);

    EXPECT_EQ(result.width, 90);
    EXPECT_EQ(result.height, 160);
}

TEST_F(CompressMedia, an_odd_width_is_made_even_and_an_odd_height_is_refused)
{
    const VideoFile result = compressed(silentFilm(u"321x180"_s));
    EXPECT_EQ(result.width.value_or(1) % 2, 0);
    EXPECT_EQ(result.height, 180);

    EXPECT_THAT(refusalOf(silentFilm(u"320x181"_s)), HasSubstr("height not divisible by 2"));
}

TEST_F(CompressMedia, a_frame_rate_cap_and_extra_arguments_reach_the_output)
{
    params.advanced.fpsCap = 10;
    params.advanced.audioBitrateKbps = 64;
    params.advanced.extraArgs = u"-ac 2"_s;

    const VideoFile result = compressed(film());

    EXPECT_EQ(result.fps, 10);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(result.audioStreams.first().channels, 2);
}

TEST_F(CompressMedia, extra_arguments_that_are_rubbish_are_refused)
{
    params.advanced.extraArgs = u"-nonsense 1"_s;
    EXPECT_THAT(refusalOf(film()), HasSubstr("Unrecognized option 'nonsense'"));
}
