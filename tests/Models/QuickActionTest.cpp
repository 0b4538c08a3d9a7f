// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/QuickAction.h"

#include <gtest/gtest.h>

namespace {

template <typename Params> Params paramsOf(QuickAction action)
{
    return std::get<Params>(jobMode(action));
}

} // namespace

TEST(QuickAction, there_are_five_in_the_order_of_the_drop_zone)
{
    EXPECT_EQ(allQuickActions, (std::array{QuickAction::compressSmart, QuickAction::compress25MB,
                                           QuickAction::convertMP4, QuickAction::extractAudio,
                                           QuickAction::makeGIF}));
}

TEST(QuickAction, compressing_is_smart_and_keeps_size_and_sound)
{
    CompressParams expected;
    expected.mode = CompressParams::Mode::smart;
    expected.quality = CompressParams::QualityTier::balanced;
    expected.resolution = CompressParams::ResTier::original;
    expected.customHeight = 1080;
    expected.muted = false;
    expected.advanced = AdvancedOptions();

    EXPECT_EQ(paramsOf<CompressParams>(QuickAction::compressSmart), expected);
}

TEST(QuickAction, fitting_aims_at_25_megabytes_in_one_pass)
{
    TargetSizeParams expected;
    expected.targetMB = 25;
    expected.muted = false;
    expected.skipHeadSeconds.reset();
    expected.skipTailSeconds.reset();
    expected.exactTwoPass = false;
    expected.advanced = AdvancedOptions();

    EXPECT_EQ(paramsOf<TargetSizeParams>(QuickAction::compress25MB), expected);
}

TEST(QuickAction, converting_makes_an_MP4_and_encodes_only_what_it_must)
{
    ConvertParams expected;
    expected.container = OutputContainer::mp4;
    expected.audioFormat = ConvertParams::AudioFormat::keep;
    expected.forceReencode = false;
    expected.advanced = AdvancedOptions();

    EXPECT_EQ(paramsOf<ConvertParams>(QuickAction::convertMP4), expected);
}

TEST(QuickAction, extracting_takes_the_first_track_as_M4A)
{
    ExtractParams expected;
    expected.format = ExtractParams::AudioFormat::m4a;
    expected.bitrateKbps = 192;
    expected.audioTrackIndex = 0;

    EXPECT_EQ(paramsOf<ExtractParams>(QuickAction::extractAudio), expected);
}

TEST(QuickAction, a_GIF_is_of_the_whole_film_and_loops)
{
    GifParams expected;
    expected.start = 0;
    expected.end.reset();
    expected.width = 480;
    expected.fps = 15;
    expected.loopForever = true;
    expected.bounce = false;
    expected.screenContent = false;

    EXPECT_EQ(paramsOf<GifParams>(QuickAction::makeGIF), expected);
}
