// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/FilmTimeline.h"

#include "Platform/Media/PlayerFixture.h"
#include "support/Clips.h"
#include "support/NumberedFilm.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class FilmTimelineTest : public ::testing::Test
{
protected:
    QString film(const QString &name, const QStringList &encoderOptions = {}) const
    {
        NumberedFilm::make(folder.path(name), NumberedFilm::Sound::aac, encoderOptions);
        return folder.path(name);
    }
    std::unique_ptr<FilmTimeline> timelineOf(const QString &path) const
    {
        return std::make_unique<FilmTimeline>(path.toUtf8(), isStopped);
    }

    TempFolder folder;
    std::atomic<bool> isStopped = false;
};

TEST_F(FilmTimelineTest, a_moment_tells_the_frame_its_successor_and_its_keyframe)
{
    const auto timeline = timelineOf(film(u"a.mp4"_s, {u"-bf"_s, u"3"_s}));

    const std::optional<FrameMoment> moment = timeline->at(1.99);

    ASSERT_TRUE(moment);
    EXPECT_NEAR(moment->shown, 1.96, 1e-6);
    ASSERT_TRUE(moment->next);
    EXPECT_NEAR(*moment->next, 2.0, 1e-6);
    EXPECT_NEAR(moment->keyframe, 1.4, 1e-6);
}

TEST_F(FilmTimelineTest, the_last_frame_has_no_successor)
{
    const auto timeline = timelineOf(film(u"a.mp4"_s, {u"-bf"_s, u"3"_s}));

    const std::optional<FrameMoment> moment = timeline->at(100);

    ASSERT_TRUE(moment);
    EXPECT_NEAR(moment->shown, 3.96, 1e-6);
    EXPECT_FALSE(moment->next);
}

TEST_F(FilmTimelineTest, moments_in_any_order_agree_with_the_packets)
{
    const QString path = film(u"t.ts"_s, {u"-bf"_s, u"3"_s, u"-force_key_frames"_s, u"0"_s});
    const QList<double> times = frameTimes(path);
    const auto timeline = timelineOf(path);

    for (const int frame : {99, 0, 50, 49, 98, 3}) {
        const std::optional<FrameMoment> moment = timeline->at(times.at(frame) + 0.02);
        ASSERT_TRUE(moment) << frame;
        EXPECT_NEAR(moment->shown, times.at(frame), 1e-5);
        EXPECT_EQ(moment->next.has_value(), frame < 99);
    }
}

TEST_F(FilmTimelineTest, the_cover_of_a_recording_is_no_film)
{
    Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=1"_s, u"-f"_s, u"lavfi"_s, u"-i"_s,
                   u"color=red:size=32x32:duration=0.04"_s, u"-map"_s, u"0"_s, u"-map"_s, u"1"_s,
                   u"-frames:v"_s, u"1"_s, u"-c:v"_s, u"mjpeg"_s, u"-disposition:v"_s,
                   u"attached_pic"_s, folder.path(u"a.m4a"_s)});

    EXPECT_FALSE(timelineOf(folder.path(u"a.m4a"_s))->at(0));
}

TEST_F(FilmTimelineTest, a_file_that_is_none_has_no_moments)
{
    EXPECT_FALSE(timelineOf(folder.path(u"absent.mp4"_s))->at(0));
    EXPECT_FALSE(timelineOf(folder.write(u"text.mp4"_s, "Nothing to see here.\n"))->at(0));
    EXPECT_FALSE(timelineOf(folder.path())->at(0));
}

TEST_F(FilmTimelineTest, once_stopped_it_finds_nothing)
{
    const auto timeline = timelineOf(film(u"a.mp4"_s));

    isStopped = true;

    EXPECT_FALSE(timeline->at(1));
}

TEST_F(FilmTimelineTest, traits_tell_turned_and_transport_streams)
{
    const QString plain = film(u"a.mp4"_s);
    Clips::ffmpeg({u"-i"_s, plain, u"-c"_s, u"copy"_s, u"-metadata:s:v:0"_s, u"rotate=180"_s,
                   folder.path(u"r.mp4"_s)});

    EXPECT_TRUE(timelineOf(plain)->traits().orientation == Orientation{});
    EXPECT_FALSE(timelineOf(plain)->traits().hasRoughSeeks);
    EXPECT_EQ(timelineOf(folder.path(u"r.mp4"_s))->traits().orientation,
              (Orientation{false, true, true}));
    EXPECT_TRUE(timelineOf(film(u"t.ts"_s))->traits().hasRoughSeeks);
}

} // namespace
