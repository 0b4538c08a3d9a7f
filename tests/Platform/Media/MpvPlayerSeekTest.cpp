// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/PlayerFixture.h"
#include "support/Clips.h"
#include "support/EventLoop.h"

#include <random>

using namespace Qt::StringLiterals;

namespace {

using MpvPlayerSeekTest = PlayerFixture;

constexpr double frame = 1.0 / NumberedFilm::rate;

struct FilmKind {
    const char *name;
    const char *file;
    QStringList encoding;
};

void PrintTo(const FilmKind &kind, std::ostream *out)
{
    *out << kind.name;
}

// Rates that change: pictures stay for one, two or three frames of the source, or for a tenth more.
const QString unevenTimes = u"setpts='(N+floor(N/3)+floor(N/7)*2+0.1*mod(N,2))/25/TB'"_s;

class ExactSeekTest : public PlayerFixture, public ::testing::WithParamInterface<FilmKind>
{
};

const QList<FilmKind> kinds{
    {"constant_rate", "a.mp4", {u"-bf"_s, u"0"_s}},
    {"b_frames", "b.mp4", {u"-bf"_s, u"3"_s, u"-b_strategy"_s, u"0"_s}},
    {"open_group",
     "o.mp4",
     {u"-c:v"_s, u"libx265"_s, u"-x265-params"_s, u"open-gop=1:keyint=20:log-level=error"_s}},
    {"one_keyframe", "k.mp4", {u"-bf"_s, u"3"_s, u"-force_key_frames"_s, u"0"_s}},
    {"matroska", "m.mkv", {u"-bf"_s, u"3"_s}},
    {"uneven_matroska", "v.mkv", {u"-vf"_s, unevenTimes, u"-vsync"_s, u"vfr"_s}},
    {"uneven_mp4",
     "u.mp4",
     {u"-vf"_s, u"setpts='(N+floor(N/3)+floor(N/7)*2)/25/TB'"_s, u"-vsync"_s, u"vfr"_s, u"-bf"_s,
      u"3"_s}},
    {"transport_stream", "t.ts", {u"-bf"_s, u"3"_s}},
    {"transport_stream_one_keyframe", "g.ts", {u"-bf"_s, u"3"_s, u"-force_key_frames"_s, u"0"_s}},
};

TEST_P(ExactSeekTest, every_seek_shows_the_frame_that_is_on_the_screen_at_that_time)
{
    const QString path = film(QString::fromUtf8(GetParam().file), GetParam().encoding);
    const QList<int> numbers = NumberedFilm::frames(path);
    const QList<double> times = frameTimes(path);
    ASSERT_EQ(times.size(), numbers.size());
    ASSERT_TRUE(load(*player, path));

    std::mt19937 random(7);
    std::uniform_real_distribution<double> anywhere(0, player->duration());
    for (int i = 0; i < 200; ++i) {
        const double wanted = anywhere(random);
        const int expected = frameAt(times, wanted);
        const double landed = seek(*player, wanted);
        ASSERT_EQ(shownNumber(), numbers.at(expected)) << "at " << wanted;
        ASSERT_NEAR(landed, times.at(expected), 1e-4) << "at " << wanted;
    }
}

INSTANTIATE_TEST_SUITE_P(, ExactSeekTest, ::testing::ValuesIn(kinds),
                         [](const auto &kind) { return std::string(kind.param.name); });

TEST_F(MpvPlayerSeekTest, a_seek_to_a_frames_own_time_shows_that_frame)
{
    const QString path = film(u"a.mp4"_s);
    ASSERT_TRUE(load(*player, path));

    for (const int number : {0, 1, 2, 15, 50, 98, 99}) {
        seek(*player, number * frame);
        EXPECT_EQ(shownNumber(), number);
        EXPECT_NEAR(player->position(), number * frame, 1e-6);
    }
}

TEST_F(MpvPlayerSeekTest, times_beyond_the_film_are_its_start_and_its_end)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));

    EXPECT_EQ(seek(*player, 99), player->duration());
    EXPECT_EQ(shownNumber(), 99);
    EXPECT_EQ(seek(*player, -5), 0);
    EXPECT_EQ(shownNumber(), 0);
}

TEST_F(MpvPlayerSeekTest, steps_go_forward_and_back_frame_by_frame)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    seek(*player, 50 * frame);

    for (int number = 51; number < 70; ++number) {
        ASSERT_EQ(step(*player, frame), number);
    }
    for (int number = 68; number > 40; --number) {
        ASSERT_EQ(step(*player, -frame), number);
    }
    EXPECT_EQ(step(*player, frame), 42);
}

TEST_F(MpvPlayerSeekTest, steps_stop_at_both_ends)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));

    EXPECT_EQ(step(*player, -frame), 0);
    EXPECT_EQ(player->position(), 0);
    seek(*player, 98 * frame);
    EXPECT_EQ(step(*player, frame), 99);
    EXPECT_EQ(step(*player, frame), 99);
    EXPECT_EQ(player->position(), player->duration());
}

// Matroska counts milliseconds: at 24 frames a second each time is off by up to half of one.
TEST_F(MpvPlayerSeekTest, no_step_is_lost_where_the_container_rounds_times)
{
    const QString path = film(u"r.mkv"_s, {u"-vf"_s, u"setpts=N/24/TB"_s, u"-r"_s, u"24"_s});
    ASSERT_TRUE(load(*player, path));

    for (int number = 1; number < 40; ++number) {
        ASSERT_EQ(step(*player, 1.0 / 24), number);
    }
    for (int number = 38; number >= 0; --number) {
        ASSERT_EQ(step(*player, -1.0 / 24), number);
    }
}

TEST_F(MpvPlayerSeekTest, a_step_forward_leaves_a_frame_that_stays_for_long)
{
    const QString path = film(u"v.mkv"_s, {u"-vf"_s, unevenTimes, u"-vsync"_s, u"vfr"_s});
    ASSERT_TRUE(load(*player, path));
    const QList<int> numbers = NumberedFilm::frames(path);

    for (int at = 1; at < 30; ++at) {
        ASSERT_EQ(step(*player, 0.001), numbers.at(at));
    }
}

TEST_F(MpvPlayerSeekTest, of_many_steps_at_once_each_counts)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    seek(*player, 50 * frame);

    for (int i = 0; i < 9; ++i) {
        player->step(-frame);
    }
    EXPECT_EQ(step(*player, -frame), 49);
    EventLoop::waitFor([&] { return shownNumber() == 40; }, player.get(),
                       &MediaPlayer::seekFinished);
    EXPECT_EQ(shownNumber(), 40);
}

TEST_F(MpvPlayerSeekTest, of_many_wishes_only_the_first_and_the_last_are_granted)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    QList<double> landings;
    QObject::connect(player.get(), &MediaPlayer::seekFinished, player.get(),
                     [&](double position) { landings += position; });

    for (int number = 10; number < 90; ++number) {
        player->seek(number * frame, MediaPlayer::Tolerance::zero);
    }
    EventLoop::waitFor([&] { return landings.size() == 2; }, player.get(),
                       &MediaPlayer::seekFinished);

    ASSERT_EQ(landings.size(), 2);
    EXPECT_NEAR(landings.at(0), 10 * frame, 1e-6);
    EXPECT_NEAR(landings.at(1), 89 * frame, 1e-6);
    EXPECT_EQ(shownNumber(), 89);
}

TEST_F(MpvPlayerSeekTest, a_keyframe_seek_lands_on_a_keyframe)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    const QList<int> keyframes{0, 15, 35, 55, 75};

    for (const double wanted : {0.7, 1.3, 2.0, 3.9}) {
        seek(*player, wanted, MediaPlayer::Tolerance::keyframe);
        EXPECT_TRUE(keyframes.contains(shownNumber())) << wanted << " gave " << shownNumber();
    }
}

TEST_F(MpvPlayerSeekTest, a_wish_before_the_film_is_there_is_granted_after)
{
    const QString path = film(u"a.mp4"_s);
    player->load(QUrl::fromLocalFile(path));
    const double landed = seek(*player, 2);

    EXPECT_EQ(landed, 2);
    EXPECT_EQ(shownNumber(), 50);
}

TEST_F(MpvPlayerSeekTest, a_film_that_starts_late_counts_from_its_start)
{
    const QString path = film(u"t.ts"_s, {u"-output_ts_offset"_s, u"700"_s});
    ASSERT_TRUE(load(*player, path));

    EXPECT_LT(seek(*player, 2.0), 2.01);
    EXPECT_EQ(shownNumber(), frameAt(frameTimes(path), 2.0));
}

} // namespace
