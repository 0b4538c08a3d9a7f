// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Desktop/DesktopDoneSound.h"

#include "support/TempFolder.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// A desktop without a sound card and without a sound server.
class DesktopDoneSoundTest : public ::testing::Test
{
    const TempFolder m_nowhere;
    const ScopedEnvironment m_runtime{"XDG_RUNTIME_DIR", m_nowhere.path().toUtf8()};
    const ScopedEnvironment m_home{"HOME", m_nowhere.path().toUtf8()};
    const ScopedEnvironment m_server{"PULSE_SERVER", "unix:/nowhere"};
    const ScopedEnvironment m_cards{"ALSA_CONFIG_PATH", "/nowhere"};
};

} // namespace

TEST_F(DesktopDoneSoundTest, without_a_device_there_is_no_sound_soon_and_nothing_is_said)
{
    QElapsedTimer timer;
    timer.start();
    ::testing::internal::CaptureStderr();
    DesktopDoneSound sound;

    EXPECT_FALSE(sound.play());
    EXPECT_FALSE(sound.play());

    EXPECT_EQ(::testing::internal::GetCapturedStderr(), std::string());
    EXPECT_LT(timer.elapsed(), 2'000);
}

TEST_F(DesktopDoneSoundTest, the_beep_needs_no_device)
{
    DesktopDoneSound sound;

    EXPECT_NO_FATAL_FAILURE(sound.beep());
}
