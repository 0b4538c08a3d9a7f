// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/MediaFixture.h"
#include "support/NumberedFilm.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

class GifMedia : public MediaFixture
{
protected:
    GifMedia()
    {
        params.width = 80;
        params.fps = 10;
    }

    // Four seconds of 160x90.
    VideoFile film(const QString &name = u"a.mp4"_s)
    {
        NumberedFilm::make(folder.path(name), NumberedFilm::Sound::aac);
        return Clips::probe(folder.path(name));
    }

    // Half a second of any picture.
    VideoFile pictureOf(const QString &source)
    {
        return madeBy(u"p.mkv"_s, pictureInput(source + u":rate=20:duration=0.5"_s) +
                                      QStringList{u"-c:v"_s, u"ffv1"_s});
    }

    JobPlan planFor(const VideoFile &file) const
    {
        return CommandBuilder::gif(file, params, std::nullopt, std::nullopt);
    }

    VideoFile gifOf(const VideoFile &file)
    {
        const VideoFile result = resultOf(planFor(file));
        EXPECT_EQ(result.containerName, u"gif"_s);
        EXPECT_EQ(result.videoCodec, u"gif"_s);
        EXPECT_TRUE(result.audioStreams.isEmpty());
        EXPECT_EQ(scratchNames(), QStringList());
        return result;
    }

    QList<int> framesOf(const VideoFile &file) const
    {
        return NumberedFilm::frames(file.url.toLocalFile());
    }

    // How often the GIF says that it is repeated, 0 for ever; absent when it doesn't say.
    static std::optional<int> repeatsOf(const VideoFile &file)
    {
        const QByteArray bytes = contentOf(file.url.toLocalFile());
        // Behind the name: the length of the block and a 1, then the count, low byte first.
        const qsizetype at = bytes.indexOf("NETSCAPE2.0");
        return at < 0 ? std::nullopt : std::optional<int>(bytes.at(at + 13));
    }

    GifParams params;
};

// Dithering and colours move a grey by less than two frames' difference.
void expectFrames(const QList<int> &frames, const QList<double> &expected)
{
    ASSERT_EQ(frames.size(), expected.size());
    for (qsizetype i = 0; i < frames.size(); ++i) {
        EXPECT_NEAR(frames.at(i), expected.at(i), 1.5) << "frame " << i;
    }
}

QList<double> everyTenthOfASecond(double start, int count)
{
    QList<double> numbers;
    for (int i = 0; i < count; ++i) {
        numbers += (start + i / 10.0) * NumberedFilm::rate;
    }
    return numbers;
}

} // namespace

TEST_F(GifMedia, a_whole_film_becomes_a_gif_of_its_width_and_rate)
{
    const VideoFile result = gifOf(film());

    EXPECT_EQ(result.url, folder.url(u"a-gif.gif"_s));
    EXPECT_EQ(result.width, 80);
    EXPECT_EQ(result.height, 45);
    EXPECT_EQ(result.fps, 10);
    EXPECT_NEAR(result.durationSeconds, 4, 0.05);
    expectFrames(framesOf(result), everyTenthOfASecond(0, 40));
}

TEST_F(GifMedia, a_stretch_holds_its_frames_alone)
{
    params.start = 1.2;
    params.end = 2.2;

    const VideoFile result = gifOf(film());

    EXPECT_NEAR(result.durationSeconds, 1, 0.05);
    expectFrames(framesOf(result), everyTenthOfASecond(1.2, 10));
}

TEST_F(GifMedia, a_start_past_the_end_leaves_the_last_tenth)
{
    params.start = 99;
    const QList<int> frames = framesOf(gifOf(film()));
    ASSERT_EQ(frames.size(), 1);
    EXPECT_NEAR(frames.first(), 98, 2);
}

TEST_F(GifMedia, a_gif_repeats_as_it_is_told)
{
    const VideoFile source = pictureOf(u"testsrc2=size=64x36"_s);
    params.loopForever = true;
    EXPECT_EQ(repeatsOf(gifOf(source)), 0);
    params.loopForever = false;
    EXPECT_EQ(repeatsOf(gifOf(source)), 1);
}

TEST_F(GifMedia, a_bounced_gif_has_twice_the_frames)
{
    const VideoFile source = film();
    params.start = 1;
    params.end = 2.5;
    for (const qint64 fps : {15, 25}) {
        params.fps = fps;
        params.bounce = false;
        const qsizetype forward = framesOf(gifOf(source)).size();
        params.bounce = true;
        EXPECT_EQ(framesOf(gifOf(source)).size(), 2 * forward) << fps;
    }
}

TEST_F(GifMedia, a_bounced_gif_goes_forward_and_back)
{
    const VideoFile source = film();
    params.bounce = true;
    params.fps = 5;

    const VideoFile result = gifOf(source);

    EXPECT_NEAR(result.durationSeconds, 8, 0.1);
    const QList<int> frames = framesOf(result);
    ASSERT_EQ(frames.size(), 40);
    for (qsizetype i = 0; i < 20; ++i) {
        // The second encode chooses its colours anew and coarsely.
        EXPECT_NEAR(frames.at(i), static_cast<double>(i) * 5, 15) << i;
        EXPECT_NEAR(frames.at(39 - i), static_cast<double>(i) * 5, 15) << i;
    }
}

TEST_F(GifMedia, a_bounced_gif_repeats_for_ever_whatever_it_is_told)
{
    const VideoFile source = pictureOf(u"testsrc2=size=64x36"_s);
    params.bounce = true;
    for (const bool loopForever : {false, true}) {
        params.loopForever = loopForever;
        EXPECT_EQ(repeatsOf(gifOf(source)), 0);
    }
}

TEST_F(GifMedia, frames_a_second_stop_at_30)
{
    params.fps = 50;
    params.start = 1;
    params.end = 2;
    EXPECT_EQ(framesOf(gifOf(film())).size(), 30);
}

TEST_F(GifMedia, a_screen_recording_becomes_a_gif)
{
    params.screenContent = true;
    const VideoFile result = gifOf(film());
    expectFrames(framesOf(result), everyTenthOfASecond(0, 40));
}

TEST_F(GifMedia, a_width_of_0_or_below_keeps_the_source_s_size)
{
    const VideoFile source = pictureOf(u"testsrc2=size=64x36"_s);
    for (const qint64 width : {0, -1, -5}) {
        params.width = width;
        const VideoFile result = gifOf(source);
        EXPECT_EQ(result.width, 64) << width;
        EXPECT_EQ(result.height, 36) << width;
    }
}

TEST_F(GifMedia, a_width_beyond_reason_fails_in_ffmpeg_s_words_and_leaves_nothing)
{
    const VideoFile source = pictureOf(u"testsrc2=size=64x36"_s);
    params.width = 1'000'000;
    const JobPlan plan = planFor(source);

    EXPECT_THAT(wordsOfFailure(plan), HasSubstr("Error reinitializing filters"));

    EXPECT_EQ(scratchNames(), QStringList());
    EXPECT_EQ(folder.names(), (QStringList{u"p.mkv"_s, u"scratch"_s}));
}

TEST_F(GifMedia, a_recording_fails_for_want_of_a_picture)
{
    const VideoFile source = madeBy(u"a.m4a"_s, toneInput(1));
    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("does not contain any stream"));
    EXPECT_EQ(scratchNames(), QStringList());
}

TEST_F(GifMedia, odd_sizes_deep_colours_and_alpha_become_gifs)
{
    params.width = 33;
    for (const QString &format : {u"yuv444p"_s, u"yuv420p10le"_s, u"yuva420p"_s}) {
        const VideoFile source =
            madeBy(u"p.mkv"_s,
                   pictureInput(u"testsrc=size=65x37:rate=20:duration=0.2,format="_s + format) +
                       QStringList{u"-c:v"_s, u"ffv1"_s});
        ASSERT_EQ(source.hasAlphaChannel, format.startsWith(u"yuva"_s));
        EXPECT_EQ(gifOf(source).width, 33) << format.toStdString();
    }
}

TEST_F(GifMedia, a_rotated_film_becomes_an_upright_gif)
{
    const VideoFile source = turned(film());
    params.end = 0.5;
    params.width = 45;

    const VideoFile result = gifOf(source);

    EXPECT_EQ(result.width, 45);
    EXPECT_EQ(result.height, 80);
}

TEST_F(GifMedia, odd_characters_of_a_name_reach_ffmpeg)
{
    params.bounce = true;
    params.end = 0.5;
    const VideoFile result = gifOf(film(u"it's \"a\" %d 片 ?#.mp4"_s));
    EXPECT_EQ(result.url, folder.url(u"it's \"a\" %d 片 ?#-gif.gif"_s));
}
