// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/FilmContents.h"
#include "support/MediaFixture.h"

#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

class MergeMedia : public MediaFixture
{
protected:
    JobPlan planFor(const QList<VideoFile> &files) const
    {
        return CommandBuilder::merge(files, params, Clips::tools(), std::nullopt, std::nullopt);
    }

    // Merges the films and gives what came out, after the checks that hold for every outcome.
    VideoFile merged(const QList<VideoFile> &files, double tolerance = 0.1)
    {
        const VideoFile result = resultOf(planFor(files));
        double sum = 0;
        for (const VideoFile &file : files) {
            sum += file.durationSeconds;
        }
        EXPECT_NEAR(result.durationSeconds, sum, tolerance) << result.url.toString().toStdString();
        EXPECT_TRUE(scratchNames().isEmpty());
        return result;
    }

    std::string failureFor(const QList<VideoFile> &files) { return wordsOfFailure(planFor(files)); }

    // A film of one colour with a tone. The grain keeps the rate, which the encode aims at, from
    // being next to nothing.
    VideoFile coloured(const QString &name, const QString &colour, const QString &size,
                       double seconds)
    {
        const QString picture = u"color=%1:s=%2:r=25:d=%3,noise=alls=20:allf=t"_s.arg(
            colour, size, QString::number(seconds));
        return madeBy(name, pictureInput(picture) + toneInput(seconds) +
                                QStringList{u"-pix_fmt"_s, u"yuv420p"_s, u"-g"_s, u"25"_s,
                                            u"-c:a"_s, u"aac"_s});
    }

    // A second that has nothing in common with the other films but its size.
    VideoFile mpeg4Film(int framesPerSecond)
    {
        const QString picture =
            u"testsrc2=size=320x180:rate=%1:duration=1"_s.arg(QString::number(framesPerSecond));
        return madeBy(u"mpeg4.mkv"_s,
                      {u"-f"_s, u"lavfi"_s, u"-i"_s, picture, u"-f"_s, u"lavfi"_s, u"-i"_s,
                       u"sine=duration=1:sample_rate=22050"_s, u"-c:v"_s, u"mpeg4"_s, u"-pix_fmt"_s,
                       u"yuv420p"_s, u"-c:a"_s, u"libmp3lame"_s});
    }

    VideoFile silent(const QString &name)
    {
        return madeBy(name, pictureInput() + QStringList{u"-pix_fmt"_s, u"yuv420p"_s});
    }

    MergeParams params;
};

} // namespace

TEST_F(MergeMedia, films_that_match_are_joined_by_copy_in_their_order)
{
    const QList<VideoFile> files{coloured(u"a.mp4"_s, u"red"_s, u"320x180"_s, 1),
                                 coloured(u"b.mp4"_s, u"blue"_s, u"320x180"_s, 1.52),
                                 coloured(u"c.mp4"_s, u"white"_s, u"320x180"_s, 1)};
    ASSERT_EQ(planFor(files).badgeKey, u"merge.badge.copy"_s);

    const VideoFile result = merged(files);

    EXPECT_EQ(result.url, folder.url(u"a-merged.mp4"_s));
    EXPECT_EQ(result.videoCodec, u"h264"_s);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(quartersAt(result, 0.5), u"RRRR"_s);
    EXPECT_EQ(quartersAt(result, 1.8), u"BBBB"_s);
    EXPECT_EQ(quartersAt(result, 3), u"WWWW"_s);
    EXPECT_GT(loudnessOf(result, 2.8, 0.4), 0.05);
}

TEST_F(MergeMedia, films_that_match_are_joined_by_an_encode_on_demand)
{
    const QList<VideoFile> files{film(u"a.mp4"_s), film(u"b.mp4"_s)};
    params.forceReencode = true;

    const VideoFile result = merged(files);

    EXPECT_EQ(result.videoCodec, u"h264"_s);
    EXPECT_EQ(result.width, 320);
    EXPECT_EQ(result.height, 180);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(result.audioStreams.first().codec, u"aac"_s);
    EXPECT_EQ(result.audioStreams.first().channels, 2);
}

TEST_F(MergeMedia, films_of_different_shapes_share_a_canvas_with_black_around_them)
{
    const QList<VideoFile> files{coloured(u"a.mp4"_s, u"red"_s, u"320x180"_s, 1),
                                 coloured(u"b.mp4"_s, u"blue"_s, u"180x320"_s, 1)};
    ASSERT_EQ(planFor(files).badgeKey, u"merge.badge.reencode"_s);

    const VideoFile result = merged(files);

    EXPECT_EQ(result.width, 320);
    EXPECT_EQ(result.height, 320);
    EXPECT_EQ(colourAt(result, 0.5, 160, 160), u'R');
    EXPECT_EQ(colourAt(result, 0.5, 10, 160), u'R');
    EXPECT_EQ(colourAt(result, 0.5, 160, 10), u'K');
    EXPECT_EQ(colourAt(result, 1.5, 160, 160), u'B');
    EXPECT_EQ(colourAt(result, 1.5, 160, 10), u'B');
    EXPECT_EQ(colourAt(result, 1.5, 10, 160), u'K');
}

TEST_F(MergeMedia, a_small_film_is_enlarged_to_the_canvas)
{
    const VideoFile result = merged({coloured(u"a.mp4"_s, u"red"_s, u"320x180"_s, 1),
                                     coloured(u"b.mp4"_s, u"blue"_s, u"160x90"_s, 1)});
    EXPECT_EQ(quartersAt(result, 1.5), u"BBBB"_s);
}

TEST_F(MergeMedia, films_of_different_codecs_and_sound_are_brought_together)
{
    const VideoFile result = merged({film(), mpeg4Film(25)});

    EXPECT_EQ(result.videoCodec, u"h264"_s);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_GT(loudnessOf(result, 2.3, 0.5), 0.05);
}

TEST_F(MergeMedia, films_of_different_frame_rates_share_an_mkv)
{
    params.container = OutputContainer::mkv;
    const VideoFile result = merged({film(), mpeg4Film(15)});
    EXPECT_EQ(result.videoCodec, u"h264"_s);
    EXPECT_EQ(result.audioStreams.size(), 1);
}

// The graph joins them at no rate of its own. For an MP4, ffmpeg 5.1 makes a million frames a
// second of that, so the user has to name a rate.
TEST_F(MergeMedia, films_of_different_frame_rates_share_an_mp4_at_a_rate_that_is_named)
{
    params.advanced.extraArgs = u"-r 30"_s;
    const VideoFile result = merged({film(), mpeg4Film(15)});
    EXPECT_EQ(result.fps, 30);
}

TEST_F(MergeMedia, an_odd_canvas_is_made_even)
{
    const auto odd = [this](const QString &name, const QString &size) {
        return drawn(name, u"testsrc=size=%1:rate=25:duration=1,format=yuv420p"_s.arg(size),
                     {u"-c:v"_s, u"rawvideo"_s});
    };

    const VideoFile result = merged({odd(u"a.mkv"_s, u"321x181"_s), odd(u"b.mkv"_s, u"161x91"_s)});

    EXPECT_EQ(result.width, 320);
    EXPECT_EQ(result.height, 180);
}

TEST_F(MergeMedia, one_silent_film_leaves_the_whole_without_sound)
{
    const VideoFile result = merged({film(), silent(u"b.mp4"_s)});
    EXPECT_EQ(result.videoCodec, u"h264"_s);
    EXPECT_TRUE(result.audioStreams.isEmpty());
}

TEST_F(MergeMedia, silent_films_are_joined_by_copy_too)
{
    const QList<VideoFile> files{silent(u"a.mp4"_s), silent(u"b.mp4"_s)};
    ASSERT_EQ(planFor(files).badgeKey, u"merge.badge.copy"_s);
    EXPECT_TRUE(merged(files).audioStreams.isEmpty());
}

TEST_F(MergeMedia, a_copy_goes_into_containers_that_hold_it)
{
    const QList<VideoFile> files{film(u"a.mp4"_s), film(u"b.mp4"_s)};
    const std::vector<std::pair<OutputContainer, QString>> rows{
        {OutputContainer::mov, u"mov,mp4,m4a,3gp,3g2,mj2"_s},
        {OutputContainer::mkv, u"matroska,webm"_s},
        {OutputContainer::avi, u"avi"_s},
    };
    for (const auto &[container, name] : rows) {
        params.container = container;
        const VideoFile result = merged(files);
        EXPECT_EQ(result.containerName, name);
        EXPECT_EQ(result.videoCodec, u"h264"_s);
        EXPECT_EQ(result.audioStreams.size(), 1);
    }
}

TEST_F(MergeMedia, an_encode_goes_into_every_container)
{
    const QList<VideoFile> files{film(u"a.mp4"_s), film(u"b.mp4"_s)};
    struct Case {
        OutputContainer container;
        QString video;
        QString audio;
        double tolerance;
    };
    // An AVI keeps no times, so the delay of B-frames comes on top of the sound's length.
    const std::vector<Case> cases{
        {OutputContainer::mov, u"h264"_s, u"aac"_s, 0.1},
        {OutputContainer::mkv, u"h264"_s, u"aac"_s, 0.1},
        {OutputContainer::avi, u"h264"_s, u"aac"_s, 0.2},
        {OutputContainer::webm, u"vp9"_s, u"opus"_s, 0.1},
    };
    params.forceReencode = true;
    for (const Case &c : cases) {
        params.container = c.container;
        params.advanced.extraArgs =
            c.container == OutputContainer::webm ? u"-deadline realtime -cpu-used 8"_s : QString();
        const VideoFile result = merged(files, c.tolerance);
        EXPECT_EQ(result.videoCodec, c.video);
        ASSERT_EQ(result.audioStreams.size(), 1);
        EXPECT_EQ(result.audioStreams.first().codec, c.audio);
    }
}

TEST_F(MergeMedia, a_copy_into_a_webm_that_can_t_hold_it_fails)
{
    params.container = OutputContainer::webm;
    const std::string failure = failureFor({film(u"a.mp4"_s), film(u"b.mp4"_s)});
    EXPECT_THAT(failure, HasSubstr("Only VP8 or VP9 or AV1 video"));
    EXPECT_TRUE(scratchNames().isEmpty());
}

TEST_F(MergeMedia, prores_is_refused_by_an_mp4_and_taken_by_a_mov)
{
    const QList<VideoFile> files{silent(u"a.mp4"_s), silent(u"b.mp4"_s)};
    params.forceReencode = true;
    params.advanced.codec = CodecChoice::proresVideoToolbox;
    EXPECT_THAT(failureFor(files), HasSubstr("Could not find tag for codec prores"));

    params.container = OutputContainer::mov;
    EXPECT_EQ(merged(files).videoCodec, u"prores"_s);
}

TEST_F(MergeMedia, odd_names_stand_in_the_list_as_they_are)
{
    const QString odd = u"b \\ \"q\" é %1 (x) #$&.mp4"_s;
    const VideoFile result = merged({film(u"a.mp4"_s), film(odd)});
    EXPECT_EQ(result.videoCodec, u"h264"_s);
}

// The quote ends the path in the list, so ffmpeg looks for a name without it.
TEST_F(MergeMedia, a_quote_in_the_first_name_fails_a_copy)
{
    const std::string failure = failureFor({film(u"it's.mp4"_s), film(u"a.mp4"_s)});

    EXPECT_THAT(failure, HasSubstr("Impossible to open"));
    EXPECT_THAT(failure, HasSubstr("/its.mp4'"));
    EXPECT_TRUE(scratchNames().isEmpty());
}

// ffmpeg says that it can't open the next file, ends what it has, and exits as if all were well.
TEST_F(MergeMedia, a_quote_in_a_later_name_leaves_that_film_out_of_a_copy)
{
    const QList<VideoFile> files{film(u"a.mp4"_s), film(u"it's.mp4"_s)};
    EXPECT_NEAR(resultOf(planFor(files)).durationSeconds, 2, 0.1);
}

TEST_F(MergeMedia, a_quote_in_a_name_does_an_encode_no_harm)
{
    params.forceReencode = true;
    const VideoFile result = merged({film(u"it's.mp4"_s), film(u"a.mp4"_s)});
    EXPECT_EQ(result.url, folder.url(u"it's-merged.mp4"_s));
}

TEST_F(MergeMedia, a_file_without_a_picture_fails_in_the_graph)
{
    const VideoFile recording = madeBy(u"b.m4a"_s, toneInput());
    EXPECT_THAT(failureFor({film(), recording}), HasSubstr("matches no streams"));
}

TEST_F(MergeMedia, rubbish_in_the_extra_arguments_fails_an_encode_in_ffmpeg_s_own_words)
{
    const QList<VideoFile> files{film(u"a.mp4"_s), film(u"b.mp4"_s)};
    params.advanced.extraArgs = u"-frobnicate 1"_s;
    merged(files);

    params.forceReencode = true;
    EXPECT_THAT(failureFor(files), HasSubstr("Unrecognized option 'frobnicate'"));
}

TEST_F(MergeMedia, a_film_that_is_gone_fails_an_encode_and_is_left_out_of_a_copy)
{
    const QList<VideoFile> files{film(u"a.mp4"_s), film(u"b.mp4"_s)};
    QFile::remove(folder.path(u"b.mp4"_s));
    EXPECT_NEAR(resultOf(planFor(files)).durationSeconds, 2, 0.1);

    params.forceReencode = true;
    EXPECT_THAT(failureFor(files), HasSubstr("No such file or directory"));
}
