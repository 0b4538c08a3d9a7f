// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/FilmContents.h"
#include "support/MediaFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

using Rotation = AdjustParams::Rotation;

class AdjustMedia : public MediaFixture
{
protected:
    JobPlan planFor(const VideoFile &file) const
    {
        return CommandBuilder::adjust(file, params, Clips::tools(), std::nullopt, std::nullopt);
    }

    // Adjusts the film and gives what came out, after the checks that hold for every outcome.
    VideoFile adjusted(const VideoFile &file)
    {
        const VideoFile result = resultOf(planFor(file));
        EXPECT_TRUE(result.url.fileName().contains(u"-adjusted"_s));
        EXPECT_EQ(result.containerName, u"mov,mp4,m4a,3gp,3g2,mj2"_s);
        return result;
    }

    std::string failureFor(const VideoFile &file) { return wordsOfFailure(planFor(file)); }

    // Red and green over blue and white.
    VideoFile quarters()
    {
        const QString colour = u"color=%1:s=160x90:r=25:d=1[%2];"_s;
        return drawn(u"quarters.mp4"_s,
                     colour.arg(u"red"_s, u"r"_s) + colour.arg(u"lime"_s, u"g"_s) +
                         colour.arg(u"blue"_s, u"b"_s) + colour.arg(u"white"_s, u"w"_s) +
                         u"[r][g]hstack[upper];[b][w]hstack[lower];[upper][lower]vstack"_s,
                     {u"-pix_fmt"_s, u"yuv420p"_s});
    }

    // A second of red and silence, then a second of blue and a tone.
    VideoFile silenceThenTone()
    {
        return madeBy(
            u"turns.mp4"_s,
            {u"-f"_s, u"lavfi"_s, u"-i"_s,
             u"color=red:s=320x180:r=25:d=1[r];color=blue:s=320x180:r=25:d=1[b];[r][b]concat"_s,
             u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=2,volume=0:enable='lt(t,1)'"_s,
             u"-pix_fmt"_s, u"yuv420p"_s, u"-c:a"_s, u"aac"_s});
    }

    AdjustParams params;
};

} // namespace

TEST_F(AdjustMedia, nothing_to_change_still_encodes_the_picture_and_keeps_the_sound)
{
    const VideoFile source = film();

    const VideoFile result = adjusted(source);

    EXPECT_EQ(result.videoCodec, u"h264"_s);
    EXPECT_EQ(result.width, 320);
    EXPECT_NE(result.videoBitrateBps, source.videoBitrateBps);
    expectSoundAndLength(result, 2);
    EXPECT_EQ(result.audioStreams.first().bitrateBps, source.audioStreams.first().bitrateBps);
}

TEST_F(AdjustMedia, rotations_and_flips_move_the_quarters_of_the_picture)
{
    struct Case {
        Rotation rotation;
        bool flipH;
        bool flipV;
        QString quarters;
    };
    const std::vector<Case> cases{
        {Rotation::none, false, false, u"RGBW"_s}, {Rotation::cw90, false, false, u"BRWG"_s},
        {Rotation::r180, false, false, u"WBGR"_s}, {Rotation::ccw90, false, false, u"GWRB"_s},
        {Rotation::none, true, false, u"GRWB"_s},  {Rotation::none, false, true, u"BWRG"_s},
        {Rotation::none, true, true, u"WBGR"_s},   {Rotation::cw90, true, false, u"RBGW"_s},
        {Rotation::r180, false, true, u"GRWB"_s},
    };
    const VideoFile source = quarters();
    ASSERT_EQ(quartersAt(source, 0), u"RGBW"_s);
    for (const Case &c : cases) {
        params.rotation = c.rotation;
        params.flipH = c.flipH;
        params.flipV = c.flipV;
        const VideoFile result = adjusted(source);
        EXPECT_EQ(quartersAt(result, 0), c.quarters);
        const bool isUpright = c.rotation == Rotation::cw90 || c.rotation == Rotation::ccw90;
        EXPECT_EQ(result.width, isUpright ? 180 : 320);
        EXPECT_EQ(result.height, isUpright ? 320 : 180);
    }
}

TEST_F(AdjustMedia, a_speed_changes_the_length_of_picture_and_sound)
{
    const VideoFile source = film();
    for (const double speed : {0.25, 0.5, 1.25, 2.0, 3.0, 4.0}) {
        params.speed = speed;
        const VideoFile result = adjusted(source);
        EXPECT_EQ(result.videoCodec, u"h264"_s);
        expectSoundAndLength(result, 2 / speed);
        EXPECT_NEAR(planFor(source).steps.first().progressDuration, 2 / speed, 0.05);
    }
}

TEST_F(AdjustMedia, beyond_four_times_the_speed_the_sound_outlasts_the_picture)
{
    params.speed = 8;
    const VideoFile result = adjusted(film());
    // A quarter of the sound, an eighth of the picture.
    expectSoundAndLength(result, 0.5);
}

TEST_F(AdjustMedia, a_reversed_film_keeps_its_sound_in_order)
{
    const VideoFile source = silenceThenTone();
    ASSERT_EQ(quartersAt(source, 0.5), u"RRRR"_s);
    params.reverse = true;

    const VideoFile result = adjusted(source);

    EXPECT_EQ(quartersAt(result, 0.5), u"BBBB"_s);
    EXPECT_EQ(quartersAt(result, 1.5), u"RRRR"_s);
    EXPECT_LT(loudnessOf(result, 0.2, 0.6), 0.001);
    EXPECT_GT(loudnessOf(result, 1.2, 0.6), 0.05);
    expectSoundAndLength(result, 2);
}

TEST_F(AdjustMedia, a_reversed_film_may_be_sped_up_too)
{
    params.reverse = true;
    params.speed = 2;

    const VideoFile result = adjusted(silenceThenTone());

    EXPECT_EQ(quartersAt(result, 0.2), u"BBBB"_s);
    expectSoundAndLength(result, 1);
}

// No error comes back: ffmpeg drops every frame, and slows the sound as far as it is held to.
TEST_F(AdjustMedia, a_speed_of_0_leaves_no_picture)
{
    params.speed = 0;
    const VideoFile result = adjusted(film());
    EXPECT_FALSE(result.videoCodec);
    expectSoundAndLength(result, 8);
}

TEST_F(AdjustMedia, a_muted_film_has_no_sound)
{
    params.muted = true;
    for (const double speed : {1.0, 2.0}) {
        params.speed = speed;
        const VideoFile result = adjusted(film());
        EXPECT_EQ(result.videoCodec, u"h264"_s);
        EXPECT_TRUE(result.audioStreams.isEmpty());
    }
}

TEST_F(AdjustMedia, a_film_without_sound_stays_without)
{
    params.speed = 2;
    const VideoFile result = adjusted(quarters());
    EXPECT_EQ(result.videoCodec, u"h264"_s);
    EXPECT_TRUE(result.audioStreams.isEmpty());
    EXPECT_NEAR(result.durationSeconds, 0.5, 0.1);
}

TEST_F(AdjustMedia, a_recording_changes_its_speed_without_a_picture)
{
    const VideoFile source = madeBy(u"a.wav"_s, toneInput(2));
    ASSERT_FALSE(source.videoCodec);
    params.speed = 2;

    const VideoFile result = adjusted(source);

    EXPECT_FALSE(result.videoCodec);
    expectSoundAndLength(result, 1);
}

TEST_F(AdjustMedia, all_audio_tracks_change_their_speed)
{
    const VideoFile source =
        madeBy(u"two.mkv"_s, pictureInput() + toneInput() +
                                 QStringList{u"-map"_s, u"0:v"_s, u"-map"_s, u"1:a"_s, u"-map"_s,
                                             u"1:a"_s, u"-c:v"_s, u"mpeg4"_s});
    ASSERT_EQ(source.audioStreams.size(), 2);
    params.speed = 0.5;

    const VideoFile result = adjusted(source);

    EXPECT_EQ(result.audioStreams.size(), 2);
    EXPECT_NEAR(result.durationSeconds, 2, 0.1);
}

TEST_F(AdjustMedia, a_turned_film_is_rotated_as_it_is_shown)
{
    const VideoFile source = turned(quarters(), 180);
    params.rotation = Rotation::r180;

    EXPECT_EQ(quartersAt(adjusted(source), 0), u"RGBW"_s);
}

TEST_F(AdjustMedia, odd_sides_are_refused_by_the_software_encoder)
{
    const VideoFile source = silentFilm(u"320x181"_s);
    EXPECT_THAT(failureFor(source), HasSubstr("height not divisible by 2"));

    params.rotation = Rotation::cw90;
    EXPECT_THAT(failureFor(source), HasSubstr("width not divisible by 2"));
}

TEST_F(AdjustMedia, a_frame_rate_cap_changes_nothing_and_extra_arguments_do)
{
    params.advanced.fpsCap = 10;
    EXPECT_EQ(adjusted(film()).fps, 25);

    params.advanced.extraArgs = u"-r 10"_s;
    EXPECT_EQ(adjusted(film()).fps, 10);
}

TEST_F(AdjustMedia, a_gain_behind_copied_sound_is_refused_and_left_out_at_another_speed)
{
    const VideoFile source = film();
    params.advanced.volumeDb = 6;
    EXPECT_THAT(failureFor(source), HasSubstr("Filtering and streamcopy cannot be used together"));

    params.speed = 1.25;
    EXPECT_NEAR(loudnessOf(adjusted(source), 0.5, 0.5), loudnessOf(source, 0.5, 0.5), 0.01);
}

TEST_F(AdjustMedia, a_replacement_isn_t_opened_not_even_to_see_that_it_is_none)
{
    const VideoFile source = film();
    params.advanced.replacementAudioURL = QUrl::fromLocalFile(folder.write(u"a.txt"_s, "no sound"));

    const VideoFile result = adjusted(source);

    expectSoundAndLength(result, 2);
    EXPECT_NEAR(loudnessOf(result, 0.5, 1), loudnessOf(source, 0.5, 1), 0.01);
}

TEST_F(AdjustMedia, prores_is_refused_by_the_mp4)
{
    params.advanced.codec = CodecChoice::proresVideoToolbox;
    EXPECT_THAT(failureFor(film()), HasSubstr("Could not find tag for codec prores"));
}

TEST_F(AdjustMedia, rubbish_in_the_extra_arguments_fails_in_ffmpeg_s_own_words)
{
    params.advanced.extraArgs = u"-crf lots"_s;
    EXPECT_THAT(failureFor(film()), HasSubstr("lots"));
}
