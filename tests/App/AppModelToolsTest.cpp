// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "Engine/FFmpegLocator.h"
#include "support/EventLoop.h"
#include "support/Processes.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace {

// Far below what a child that hears nothing is given before it is killed.
constexpr int soonMs = 4'000;

class AppModelTools : public AppFixture
{
protected:
    /// What a child waits for that tells its encoders.
    const VideoFile m_held = film(u"held.mp4"_s);
};

} // namespace

TEST_F(AppModelTools, asked_for_at_once_they_are_those_that_the_search_finds)
{
    start();

    ASSERT_TRUE(m_model->toolset());
    EXPECT_EQ(m_model->toolset()->ffmpegURL, m_tools.url(u"ffmpeg"_s));
    EXPECT_TRUE(m_model->toolset()->encoders.contains(u"libx264"_s));
    EXPECT_EQ(FFmpegLocator::shared().toolset, m_model->toolset());
}

TEST_F(AppModelTools, nobody_waits_for_a_slow_ffmpeg_who_does_not_need_it)
{
    const Gate gate(m_held);
    holdEncoders(m_held);

    start();
    m_model->setAction(ActionKind::convert);
    m_model->checkHardwareEncoders();
    ASSERT_TRUE(Processes::eventually([this] { return askedForEncoders().size() == 1; }));
    turnTheLoop();

    EXPECT_TRUE(FFmpegLocator::shared().searched);
    gate.open();
    EXPECT_TRUE(m_model->offersExactMode());
}

TEST_F(AppModelTools, the_path_of_the_start_counts_whenever_they_are_first_needed)
{
    start();

    removeTools();

    ASSERT_TRUE(m_model->toolset());
    EXPECT_EQ(m_model->toolset()->ffprobeURL, m_tools.url(u"ffprobe"_s));
}

TEST_F(AppModelTools, they_stay_the_same_once_they_are_known)
{
    start();
    const std::optional<FFmpegToolset> known = m_model->toolset();

    installEncoders({u"libx265"_s});

    EXPECT_EQ(m_model->toolset(), known);
}

TEST_F(AppModelTools, the_hardware_is_tried_though_nobody_has_needed_them_yet)
{
    installEncoders({u"libx264"_s, u"h264_nvenc"_s}, "exit 0");
    start();
    int changes = 0;
    QObject::connect(m_model.get(), &AppModel::encoderStandInsChanged, m_model.get(),
                     [&changes] { ++changes; });

    m_model->checkHardwareEncoders();

    EXPECT_TRUE(EventLoop::waitFor([&] { return changes == 1; }, m_model.get(),
                                   &AppModel::encoderStandInsChanged));
}

TEST_F(AppModelTools, going_away_while_ffmpeg_hangs_is_soon_done_and_leaves_no_child)
{
    const Gate closed(m_held);
    holdEncoders(m_held);
    start();
    m_model->checkHardwareEncoders();
    ASSERT_TRUE(Processes::eventually([this] { return askedForEncoders().size() == 1; }));
    QElapsedTimer timer;
    timer.start();

    m_model.reset();

    EXPECT_LT(timer.elapsed(), soonMs);
    EXPECT_TRUE(askedForEncoders().isEmpty());
}
