// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SettingsFixture.h"

#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/Switch.h"
#include "Views/Controls/TextLabel.h"
#include "support/EventLoop.h"

using namespace Qt::StringLiterals;

namespace {

const QString exactWords = u"Prefer 2-pass exact mode when available"_s;
const QString withExactWords = u"GPL build (libx264 available — 2-pass exact mode ready)"_s;
const QString withoutExactWords = u"Hardware VideoToolbox encoding active"_s;

class FFmpegSettingsTest : public SettingsFixture
{
};

} // namespace

TEST_F(FFmpegSettingsTest, a_build_with_the_exact_mode_says_so_and_offers_it)
{
    showSheet();

    EXPECT_NE(find<ElidedLabel>(m_tools.path(u"ffmpeg"_s)), nullptr);
    EXPECT_TRUE(shows(withExactWords));
    EXPECT_FALSE(shows(withoutExactWords));
    EXPECT_TRUE(find<Switch>(exactWords)->isEnabled());
}

TEST_F(FFmpegSettingsTest, a_build_without_the_exact_mode_shows_its_switch_but_takes_no_click)
{
    installEncoders({u"h264_videotoolbox"_s});
    showSheet();
    auto *control = find<Switch>(exactWords);
    ASSERT_NE(control, nullptr);

    reach(control);
    reach(find<TextLabel>(exactWords));

    EXPECT_TRUE(shows(withoutExactWords));
    EXPECT_FALSE(shows(withExactWords));
    EXPECT_FALSE(control->isEnabled());
    EXPECT_TRUE(m_model->preferExactMode());
}

TEST_F(FFmpegSettingsTest, without_tools_there_is_only_the_word_that_they_are_missing)
{
    removeTools();
    showSheet();

    EXPECT_TRUE(shows(u"FFmpeg not found. Install it with: brew install ffmpeg"_s));
    EXPECT_EQ(find<Switch>(exactWords), nullptr);
    EXPECT_FALSE(shows(u"Encoders in use"_s));
    EXPECT_FALSE(shows(withExactWords) || shows(withoutExactWords));
}

TEST_F(FFmpegSettingsTest, with_tools_nothing_is_called_missing)
{
    showSheet();

    EXPECT_FALSE(shows(u"FFmpeg not found. Install it with: brew install ffmpeg"_s));
}

TEST_F(FFmpegSettingsTest, the_encoders_that_stand_in_are_told)
{
    installEncoders({u"libx264"_s, u"libx265"_s, u"prores_ks"_s});
    showSheet();

    EXPECT_TRUE(shows(u"Encoders in use"_s));
    EXPECT_TRUE(shows(u"H.264: libx264 · HEVC: libx265 · ProRes: prores_ks"_s));
}

TEST_F(FFmpegSettingsTest, hardware_that_works_is_told_as_soon_as_it_is_known)
{
    installEncoders({u"libx264"_s, u"libx265"_s, u"hevc_nvenc"_s}, "exit 0");
    showSheet();
    ASSERT_TRUE(shows(u"H.264: libx264 · HEVC: libx265"_s));
    const QString known = u"H.264: libx264 · HEVC: hevc_nvenc"_s;

    m_model->checkHardwareEncoders();
    const auto isTold = [&] {
        settle();
        return shows(known);
    };

    EXPECT_TRUE(EventLoop::waitFor(isTold, m_model.get(), &AppModel::encoderStandInsChanged));
}

TEST_F(FFmpegSettingsTest, a_build_that_needs_no_stand_in_has_no_line_of_them)
{
    installEncoders({u"libx264"_s, u"h264_videotoolbox"_s});
    showSheet();

    EXPECT_FALSE(shows(u"Encoders in use"_s));
}
