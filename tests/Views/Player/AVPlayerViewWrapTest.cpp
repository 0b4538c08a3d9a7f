// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/AVPlayerViewWrap.h"

#include "Platform/Media/PlayerFixture.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Player/PictureView.h"
#include "Views/Player/Scrubber.h"
#include "support/Clips.h"
#include "support/EventLoop.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const AVPlayerViewWrap::Labels labels{.play = QStringLiteral("Play"),
                                      .pause = QStringLiteral("Pause"),
                                      .position = QStringLiteral("Position"),
                                      .mute = QStringLiteral("Mute"),
                                      .unmute = QStringLiteral("Unmute"),
                                      .volume = QStringLiteral("Volume")};

class AVPlayerViewWrapTest : public PlayerFixture
{
protected:
    AVPlayerViewWrapTest()
    {
        player->setPictureSize({});
        view->resize(640, 420);
        view->setPlayer(player.get());
        view->show();
        view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
    }

    template <typename Widget> Widget *find(const QString &name) const
    {
        for (Widget *widget : view->findChildren<Widget *>()) {
            if (widget->accessibleName() == name) {
                return widget;
            }
        }
        return nullptr;
    }
    Scrubber *scrubber() const { return find<Scrubber>(u"Position"_s); }
    PictureView *picture() const { return view->findChild<PictureView *>(); }

    // The number of the frame that stands painted on the screen.
    int paintedNumber() const { return numberOf(picture()->grab().toImage()); }
    // Where a moment of the film lies on the scrubber.
    QPoint placeOf(double seconds) const
    {
        const int handle = 14;
        const double share = seconds / player->duration();
        return {handle / 2 + static_cast<int>(share * (scrubber()->width() - handle)),
                scrubber()->height() / 2};
    }
    void waitForSeek(int number)
    {
        EventLoop::waitFor([&] { return shownNumber() == number; }, player.get(),
                           &MediaPlayer::seekFinished);
    }

    std::unique_ptr<AVPlayerViewWrap> view = std::make_unique<AVPlayerViewWrap>(labels);
};

TEST_F(AVPlayerViewWrapTest, the_painted_picture_is_the_players)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    EXPECT_EQ(paintedNumber(), 0);

    seek(*player, 2);

    EXPECT_EQ(paintedNumber(), 50);
    EXPECT_EQ(player->picture().size(),
              QSize(160, 90).scaled(picture()->size(), Qt::KeepAspectRatio));
}

TEST_F(AVPlayerViewWrapTest, what_the_picture_leaves_free_is_black)
{
    view->resize(300, 600);
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    seek(*player, 3.9);

    const QImage painted = picture()->grab().toImage();

    EXPECT_EQ(qGray(painted.pixel(painted.width() / 2, 2)), 0);
    EXPECT_EQ(qGray(painted.pixel(painted.width() / 2, painted.height() - 3)), 0);
    EXPECT_GT(qGray(painted.pixel(painted.width() / 2, painted.height() / 2)), 200);
}

TEST_F(AVPlayerViewWrapTest, the_button_and_space_play_and_pause)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));

    QTest::mouseClick(find<SymbolButton>(u"Play"_s), Qt::LeftButton);
    EXPECT_EQ(player->rate(), 1);
    ASSERT_NE(find<SymbolButton>(u"Pause"_s), nullptr);
    QTest::keyClick(view.get(), Qt::Key_Space);
    EXPECT_EQ(player->rate(), 0);
    scrubber()->setFocus();
    QTest::keyClick(scrubber(), Qt::Key_Space);
    EXPECT_EQ(player->rate(), 1);
}

TEST_F(AVPlayerViewWrapTest, a_press_on_the_scrubber_goes_to_that_moment)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));

    QTest::mouseClick(scrubber(), Qt::LeftButton, {}, placeOf(2.0));
    EventLoop::waitFor([&] { return std::abs(player->position() - 2.0) < 0.05; }, player.get(),
                       &MediaPlayer::seekFinished);

    EXPECT_NEAR(player->position(), 2.0, 0.05);
    EXPECT_EQ(scrubber()->value(), static_cast<int>(player->position() * 1000));
}

TEST_F(AVPlayerViewWrapTest, a_drag_shows_keyframes_and_ends_on_the_very_frame)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    QSignalSpy landings(player.get(), &MediaPlayer::seekFinished);

    QTest::mousePress(scrubber(), Qt::LeftButton, {}, placeOf(0.5));
    for (const double passed : {1.0, 1.5, 2.0, 2.5, 3.5}) {
        QTest::mouseMove(scrubber(), placeOf(passed));
        EventLoop::waitFor([&, before = landings.size()] { return landings.size() > before; },
                           player.get(), &MediaPlayer::seekFinished);
    }
    const double dragged = player->position();
    QTest::mouseRelease(scrubber(), Qt::LeftButton, {}, placeOf(3.5));
    EventLoop::waitFor([&] { return std::abs(player->position() - 3.5) < 0.05; }, player.get(),
                       &MediaPlayer::seekFinished);

    EXPECT_GE(landings.size(), 5);
    EXPECT_NE(dragged, player->position());
    EXPECT_NEAR(player->position(), 3.5, 0.05);
}

TEST_F(AVPlayerViewWrapTest, arrows_on_the_scrubber_move_by_a_second)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    scrubber()->setFocus();

    QTest::keyClick(scrubber(), Qt::Key_Right);
    waitForSeek(25);
    EXPECT_EQ(shownNumber(), 25);
    QTest::keyClick(scrubber(), Qt::Key_Right);
    waitForSeek(50);
    QTest::keyClick(scrubber(), Qt::Key_Left);
    waitForSeek(25);
    EXPECT_EQ(shownNumber(), 25);
}

TEST_F(AVPlayerViewWrapTest, the_sound_controls_work_the_player)
{
    auto *volume = find<QSlider>(u"Volume"_s);

    volume->setValue(30);
    QTest::mouseClick(find<SymbolButton>(u"Mute"_s), Qt::LeftButton);
    EXPECT_DOUBLE_EQ(player->volume(), 0.3);
    EXPECT_TRUE(player->isMuted());

    player->setMuted(false);
    player->setVolume(0.8);
    EXPECT_NE(find<SymbolButton>(u"Mute"_s), nullptr);
    EXPECT_EQ(volume->value(), 80);
}

TEST_F(AVPlayerViewWrapTest, another_player_takes_the_place_of_the_first)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    seek(*player, 2);
    MpvPlayer other(MpvHandle::Sound::none);
    ASSERT_TRUE(load(other, folder.path(u"a.mp4"_s)));
    seek(other, 1);

    view->setPlayer(&other);

    EXPECT_TRUE(player->picture().isNull());
    EXPECT_EQ(paintedNumber(), 25);
    QTest::keyClick(view.get(), Qt::Key_Space);
    EXPECT_EQ(player->rate(), 0);
    EXPECT_EQ(other.rate(), 1);
    view->setPlayer(nullptr);
    EXPECT_EQ(qGray(picture()->grab().toImage().pixel(100, 100)), 0);
    EXPECT_FALSE(scrubber()->isEnabled());
}

TEST_F(AVPlayerViewWrapTest, a_view_that_goes_lets_the_player_be)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));

    view.reset();

    EXPECT_TRUE(player->picture().isNull());
    EXPECT_EQ(seek(*player, 1), 1);
}

TEST_F(AVPlayerViewWrapTest, a_player_that_goes_first_leaves_an_empty_view)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));

    player.reset();

    EXPECT_EQ(qGray(picture()->grab().toImage().pixel(100, 100)), 0);
    EXPECT_FALSE(find<SymbolButton>(u"Play"_s)->isEnabled());
    QTest::keyClick(view.get(), Qt::Key_Space);
}

TEST_F(AVPlayerViewWrapTest, a_hidden_view_paints_nothing_and_a_shown_one_again)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));

    view->hide();
    EXPECT_TRUE(player->picture().isNull());
    view->show();

    EXPECT_EQ(shownNumber(), 0);
    EXPECT_EQ(paintedNumber(), 0);
}

} // namespace
