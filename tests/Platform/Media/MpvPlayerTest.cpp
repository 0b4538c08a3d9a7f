// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/PlayerFixture.h"
#include "support/Clips.h"
#include "support/EventLoop.h"

#include <QElapsedTimer>
#include <QPointer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using MpvPlayerTest = PlayerFixture;

bool waitForEnd(MediaPlayer &player)
{
    bool hasEnded = false;
    QObject context;
    QObject::connect(&player, &MediaPlayer::ended, &context, [&] { hasEnded = true; });
    EventLoop::waitFor([&] { return hasEnded; }, &player, &MediaPlayer::ended);
    return hasEnded;
}

TEST_F(MpvPlayerTest, a_loaded_film_stands_paused_at_its_first_frame)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));

    EXPECT_EQ(player->rate(), 0);
    EXPECT_EQ(player->position(), 0);
    EXPECT_NEAR(player->duration(), NumberedFilm::length, 0.05);
    EXPECT_EQ(shownNumber(), 0);
}

TEST_F(MpvPlayerTest, it_plays_to_the_end_and_tells_so_once)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    int endings = 0;
    QObject::connect(player.get(), &MediaPlayer::ended, player.get(), [&] { ++endings; });
    seek(*player, 3.2);

    player->play();
    ASSERT_TRUE(waitForEnd(*player));

    EXPECT_EQ(player->rate(), 0);
    EXPECT_EQ(player->position(), player->duration());
    // A machine that is busy drops pictures of a film that plays, and may drop the last one.
    EXPECT_GE(shownNumber(), 95);
    EventLoop::deliverPosted();
    EXPECT_EQ(endings, 1);
}

TEST_F(MpvPlayerTest, a_seek_to_the_end_while_paused_is_no_ending)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    bool hasEnded = false;
    QObject::connect(player.get(), &MediaPlayer::ended, player.get(), [&] { hasEnded = true; });

    seek(*player, 99);
    seek(*player, 1);

    EXPECT_FALSE(hasEnded);
}

TEST_F(MpvPlayerTest, at_the_end_it_begins_again)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    seek(*player, 3.6);
    player->play();
    ASSERT_TRUE(waitForEnd(*player));

    player->play();
    EventLoop::waitFor([&] { return player->position() > 0.1 && player->position() < 2; },
                       player.get(), &MediaPlayer::positionChanged);

    EXPECT_LT(player->position(), 2);
    EXPECT_EQ(player->rate(), 1);
}

TEST_F(MpvPlayerTest, positions_come_five_times_a_second)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    QList<double> positions;
    QObject::connect(player.get(), &MediaPlayer::positionChanged, player.get(),
                     [&](double position) { positions += position; });

    player->play();
    EventLoop::waitFor([&] { return player->position() > 1.5; }, player.get(),
                       &MediaPlayer::positionChanged);

    EXPECT_TRUE(std::ranges::is_sorted(positions));
    EXPECT_GE(positions.size(), 5);
    EXPECT_LE(positions.size(), 11);
}

TEST_F(MpvPlayerTest, twice_the_rate_takes_half_the_time)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    QElapsedTimer timer;

    timer.start();
    player->setRate(2);
    ASSERT_TRUE(waitForEnd(*player));

    EXPECT_GT(timer.elapsed(), 1'500);
    EXPECT_LT(timer.elapsed(), 3'300);
}

TEST_F(MpvPlayerTest, a_pause_stays_where_it_is)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    player->play();
    EventLoop::waitFor([&] { return player->position() > 0.3; }, player.get(),
                       &MediaPlayer::positionChanged);

    player->pause();
    const double paused = player->position();
    QTimer::singleShot(300, player.get(), [&] { player->seek(0, MediaPlayer::Tolerance::zero); });
    double before = paused;
    EventLoop::waitFor(
        [&] {
            before = player->position() > 0 ? player->position() : before;
            return player->position() == 0;
        },
        player.get(), &MediaPlayer::positionChanged);

    EXPECT_EQ(player->rate(), 0);
    EXPECT_NEAR(before, paused, 0.1);
}

TEST_F(MpvPlayerTest, play_takes_up_the_last_rate)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    QList<double> rates;
    QObject::connect(player.get(), &MediaPlayer::rateChanged, player.get(),
                     [&] { rates += player->rate(); });

    player->setRate(1.5);
    player->setRate(1.5);
    player->setRate(0);
    player->play();
    player->pause();

    EXPECT_EQ(rates, (QList<double>{1.5, 0, 1.5, 0}));
}

TEST_F(MpvPlayerTest, volume_and_mute_are_told_when_they_change)
{
    int changes = 0;
    QObject::connect(player.get(), &MediaPlayer::volumeChanged, player.get(), [&] { ++changes; });

    player->setVolume(0.5);
    player->setVolume(0.5);
    player->setMuted(true);
    player->setVolume(7);

    EXPECT_EQ(changes, 3);
    EXPECT_EQ(player->volume(), 1);
    EXPECT_TRUE(player->isMuted());
}

TEST_F(MpvPlayerTest, a_film_without_sound_plays)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s, {}, NumberedFilm::Sound::none)));
    seek(*player, 3.7);

    player->play();

    EXPECT_TRUE(waitForEnd(*player));
    EXPECT_GE(shownNumber(), 95);
}

TEST_F(MpvPlayerTest, sound_without_a_picture_plays_and_seeks)
{
    Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=2"_s, folder.path(u"a.m4a"_s)});
    ASSERT_TRUE(load(*player, folder.path(u"a.m4a"_s)));

    EXPECT_TRUE(player->picture().isNull());
    EXPECT_NEAR(seek(*player, 1.5), 1.5, 0.05);
    player->play();
    EXPECT_TRUE(waitForEnd(*player));
}

// The machine that tests run on may have none; the player takes what the desktop has.
TEST_F(MpvPlayerTest, sound_for_which_there_is_no_device_is_no_failure)
{
    MpvPlayer withDevice(MpvHandle::Sound::device);
    withDevice.setPictureSize({160, 90});
    ASSERT_TRUE(load(withDevice, film(u"a.mp4"_s)));
    seek(withDevice, 3.5);

    withDevice.play();

    EXPECT_TRUE(waitForEnd(withDevice));
    EXPECT_EQ(numberOf(withDevice.picture()), 99);
}

TEST_F(MpvPlayerTest, what_is_no_film_fails_and_the_next_film_plays)
{
    const QString good = film(u"a.mp4"_s);
    const QList<QString> bad{
        folder.path(u"absent.mp4"_s),
        folder.path(),
        folder.write(u"empty.mp4"_s, {}),
        folder.write(u"text.mp4"_s, "Nothing to see here.\n"),
        folder.write(u"noise.mkv"_s, QByteArray(100'000, '\x5a')),
        folder.write(u"cut.mp4"_s, contentOf(good).left(3'000)),
        folder.write(u"list.m3u8"_s, "#EXTM3U\n" + good.toUtf8() + "\n"),
    };

    for (const QString &path : bad) {
        EXPECT_FALSE(failureOf(*player, path).isEmpty()) << path.toStdString();
        EXPECT_TRUE(player->picture().isNull());
        EXPECT_EQ(player->duration(), 0);
    }
    ASSERT_TRUE(load(*player, good));
    EXPECT_EQ(shownNumber(), 0);
}

TEST_F(MpvPlayerTest, a_film_damaged_in_the_middle_can_be_gone_through)
{
    QByteArray content = contentOf(film(u"a.ts"_s));
    content.replace(content.size() / 3, content.size() / 6, QByteArray(content.size() / 6, '\x00'));
    ASSERT_TRUE(load(*player, folder.write(u"damaged.ts"_s, content)));

    for (double wanted = 0; wanted < 4; wanted += 0.3) {
        EXPECT_GE(seek(*player, wanted), 0);
    }
    player->setRate(4);
    EXPECT_TRUE(waitForEnd(*player));
}

TEST_F(MpvPlayerTest, a_change_of_film_never_shows_the_last_one)
{
    const QString grey = film(u"grey.mp4"_s);
    Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=red:size=64x64:duration=1"_s,
                   folder.path(u"red.mp4"_s)});
    bool isRedWanted = false;
    int wrong = 0;
    int shown = 0;
    QObject::connect(player.get(), &MediaPlayer::frameReady, player.get(), [&] {
        const QImage picture = player->picture();
        if (!picture.isNull()) {
            ++shown;
            const bool isRed = qRed(picture.pixel(1, 1)) > qBlue(picture.pixel(1, 1)) + 60;
            wrong += isRed == isRedWanted ? 0 : 1;
        }
    });

    for (int i = 0; i < 100; ++i) {
        isRedWanted = i % 2 == 1;
        ASSERT_TRUE(load(*player, isRedWanted ? folder.path(u"red.mp4"_s) : grey));
        EXPECT_FALSE(player->picture().isNull());
        player->play();
        if (i % 3 == 0) {
            player->seek(0.5, MediaPlayer::Tolerance::zero);
        }
    }

    EXPECT_EQ(wrong, 0);
    EXPECT_GE(shown, 100);
}

TEST_F(MpvPlayerTest, of_many_films_loaded_at_once_the_last_one_comes)
{
    const QString first = film(u"a.mp4"_s);
    Clips::make(folder.path(u"b.mp4"_s), {.size = u"100x100"_s, .seconds = 1});
    int loads = 0;
    QObject::connect(player.get(), &MediaPlayer::loaded, player.get(), [&] { ++loads; });

    for (int i = 0; i < 50; ++i) {
        player->load(QUrl::fromLocalFile(first));
        player->load(folder.url(u"absent.mp4"_s));
    }
    ASSERT_TRUE(load(*player, folder.path(u"b.mp4"_s)));

    EXPECT_EQ(loads, 1);
    EXPECT_NEAR(player->duration(), 1, 0.1);
    EXPECT_EQ(player->picture().size(), QSize(90, 90));
}

TEST_F(MpvPlayerTest, an_unloaded_film_is_gone)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));

    player->unload();

    EXPECT_TRUE(player->picture().isNull());
    EXPECT_EQ(player->duration(), 0);
    player->play();
    player->seek(1, MediaPlayer::Tolerance::zero);
    player->step(1);
    EXPECT_EQ(player->rate(), 0);
    EXPECT_EQ(player->position(), 0);
}

TEST_F(MpvPlayerTest, it_can_go_at_any_moment)
{
    const QString path = film(u"a.mp4"_s);
    const auto freshPlayer = [] {
        auto fresh = std::make_unique<MpvPlayer>(MpvHandle::Sound::none);
        fresh->setPictureSize({160, 90});
        return fresh;
    };
    QElapsedTimer timer;
    timer.start();

    for (int i = 0; i < 5; ++i) {
        freshPlayer()->load(QUrl::fromLocalFile(path));

        auto seeking = freshPlayer();
        ASSERT_TRUE(load(*seeking, path));
        seeking->seek(3.7, MediaPlayer::Tolerance::zero);
        seeking.reset();

        auto playing = freshPlayer();
        ASSERT_TRUE(load(*playing, path));
        playing->play();
        EventLoop::waitFor([&] { return playing->position() > 0.1; }, playing.get(),
                           &MediaPlayer::positionChanged);
        playing.reset();
    }

    EXPECT_LT(timer.elapsed(), 15'000);
}

TEST_F(MpvPlayerTest, it_can_go_from_within_its_own_news)
{
    const QString path = film(u"a.mp4"_s);
    ASSERT_TRUE(load(*player, path));
    QObject context;
    bool isGone = false;
    QObject::connect(player.get(), &MediaPlayer::seekFinished, &context, [&] {
        player.release()->deleteLater();
        isGone = true;
    });
    QPointer<MpvPlayer> watched = player.get();

    player->seek(2, MediaPlayer::Tolerance::zero);
    EventLoop::waitFor([&] { return isGone && watched.isNull(); }, watched.data(),
                       &QObject::destroyed);

    EXPECT_TRUE(watched.isNull());
}

} // namespace
