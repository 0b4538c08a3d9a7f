// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Desktop/DesktopDoneSound.h"

#include "support/TempFolder.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// A desktop without a sound server, and with no sound card but the test's.
class DesktopDoneSoundTest : public ::testing::Test
{
protected:
    const TempFolder m_folder;
    const QString m_cards = m_folder.path(u"cards.conf"_s);

private:
    const ScopedEnvironment m_runtime{"XDG_RUNTIME_DIR", m_folder.path().toUtf8()};
    const ScopedEnvironment m_home{"HOME", m_folder.path().toUtf8()};
    const ScopedEnvironment m_server{"PULSE_SERVER", "unix:/nowhere"};
    const ScopedEnvironment m_cardsPath{"ALSA_CONFIG_PATH", m_cards.toUtf8()};
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

#ifdef MORVIX_HAS_THEME_SOUNDS
TEST_F(DesktopDoneSoundTest, the_themes_sound_is_played_again_and_again)
{
    m_folder.write(u"cards.conf"_s, "pcm.!default { type null }\n");
    DesktopDoneSound sound;

    EXPECT_TRUE(sound.play()) << "is sound-theme-freedesktop installed?";
    EXPECT_TRUE(sound.play());
}
#endif
