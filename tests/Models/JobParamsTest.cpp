// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/JobParams.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// The cases in declaration order with their texts, and no others.
template <typename Enum> void expectCases(const QList<std::pair<Enum, QString>> &expected)
{
    const auto cases = allCases<Enum>();
    ASSERT_EQ(cases.size(), static_cast<std::size_t>(expected.size()));
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const auto &[value, text] = expected.at(i);
        EXPECT_EQ(cases.at(static_cast<std::size_t>(i)), value) << text.toStdString();
        EXPECT_EQ(static_cast<qsizetype>(value), i) << text.toStdString();
        EXPECT_EQ(rawValue(value), text);
        EXPECT_EQ(fromRawValue<Enum>(text), value) << text.toStdString();
    }
    EXPECT_FALSE(fromRawValue<Enum>(QString()));
    EXPECT_FALSE(fromRawValue<Enum>(expected.first().second.toUpper()));
}

template <typename Change> AdvancedOptions advancedWith(Change change)
{
    AdvancedOptions options;
    change(options);
    return options;
}

bool isActiveWithExtraArgs(const QString &text)
{
    return advancedWith([&](AdvancedOptions &o) { o.extraArgs = text; }).isActive();
}

template <typename Change> AdjustParams adjustedWith(Change change)
{
    AdjustParams params;
    change(params);
    return params;
}

} // namespace

TEST(JobParams, the_enumerations_have_their_cases_in_order)
{
    using Convert = ConvertParams::AudioFormat;
    expectCases<Convert>({{Convert::keep, u"keep"_s},
                          {Convert::aac, u"aac"_s},
                          {Convert::mp3, u"mp3"_s},
                          {Convert::wav, u"wav"_s},
                          {Convert::flac, u"flac"_s}});
    using Mode = CompressParams::Mode;
    expectCases<Mode>({{Mode::smart, u"smart"_s}, {Mode::quality, u"quality"_s}});
    using Tier = CompressParams::QualityTier;
    expectCases<Tier>({{Tier::maximum, u"maximum"_s},
                       {Tier::high, u"high"_s},
                       {Tier::balanced, u"balanced"_s},
                       {Tier::small, u"small"_s},
                       {Tier::tiny, u"tiny"_s}});
    using Res = CompressParams::ResTier;
    expectCases<Res>({{Res::original, u"original"_s},
                      {Res::p2160, u"p2160"_s},
                      {Res::p1440, u"p1440"_s},
                      {Res::p1080, u"p1080"_s},
                      {Res::p720, u"p720"_s},
                      {Res::p480, u"p480"_s},
                      {Res::custom, u"custom"_s}});
    using Extract = ExtractParams::AudioFormat;
    expectCases<Extract>({{Extract::m4a, u"m4a"_s},
                          {Extract::mp3, u"mp3"_s},
                          {Extract::aac, u"aac"_s},
                          {Extract::wav, u"wav"_s}});
    using Denoise = EnhanceParams::DenoiseLevel;
    expectCases<Denoise>({{Denoise::off, u"off"_s},
                          {Denoise::light, u"light"_s},
                          {Denoise::medium, u"medium"_s},
                          {Denoise::strong, u"strong"_s}});
    using Upscale = EnhanceParams::UpscaleFactor;
    expectCases<Upscale>(
        {{Upscale::x1, u"x1"_s}, {Upscale::x15, u"x15"_s}, {Upscale::x2, u"x2"_s}});
    using Split = SplitParams::Mode;
    expectCases<Split>({{Split::bySize, u"bySize"_s},
                        {Split::byDuration, u"byDuration"_s},
                        {Split::byParts, u"byParts"_s}});
    using Rotation = AdjustParams::Rotation;
    expectCases<Rotation>({{Rotation::none, u"none"_s},
                           {Rotation::cw90, u"cw90"_s},
                           {Rotation::r180, u"r180"_s},
                           {Rotation::ccw90, u"ccw90"_s}});
    using Aspect = CropSpec::Aspect;
    expectCases<Aspect>({{Aspect::free, u"free"_s},
                         {Aspect::ratio16x9, u"ratio16x9"_s},
                         {Aspect::ratio9x16, u"ratio9x16"_s},
                         {Aspect::ratio4x3, u"ratio4x3"_s},
                         {Aspect::ratio1x1, u"ratio1x1"_s}});
}

TEST(JobParams, sharpening_knows_no_strong_level_although_denoising_does)
{
    using Sharpen = EnhanceParams::SharpenLevel;
    expectCases<Sharpen>(
        {{Sharpen::off, u"off"_s}, {Sharpen::light, u"light"_s}, {Sharpen::medium, u"medium"_s}});
    EXPECT_FALSE(fromRawValue<Sharpen>(u"strong"_s));
}

TEST(JobParams, target_size_starts_at_25_megabytes_with_sound)
{
    const TargetSizeParams params;
    EXPECT_EQ(params.targetMB, 25.0);
    EXPECT_FALSE(params.muted);
    EXPECT_FALSE(params.skipHeadSeconds);
    EXPECT_FALSE(params.skipTailSeconds);
    EXPECT_FALSE(params.exactTwoPass);
    EXPECT_EQ(params.advanced, AdvancedOptions());
}

TEST(JobParams, convert_starts_as_mp4_and_keeps_the_sound)
{
    const ConvertParams params;
    EXPECT_EQ(params.container, OutputContainer::mp4);
    EXPECT_EQ(params.audioFormat, ConvertParams::AudioFormat::keep);
    EXPECT_FALSE(params.forceReencode);
    EXPECT_EQ(params.advanced, AdvancedOptions());
}

TEST(JobParams, compress_starts_smart)
{
    const CompressParams params;
    EXPECT_EQ(params.mode, CompressParams::Mode::smart);
    EXPECT_EQ(params.quality, CompressParams::QualityTier::balanced);
    EXPECT_EQ(params.resolution, CompressParams::ResTier::original);
    EXPECT_EQ(params.customHeight, 1080);
    EXPECT_FALSE(params.muted);
    EXPECT_EQ(params.advanced, AdvancedOptions());
}

TEST(JobParams, extract_starts_as_m4a_of_the_first_track)
{
    const ExtractParams params;
    EXPECT_EQ(params.format, ExtractParams::AudioFormat::m4a);
    EXPECT_EQ(params.bitrateKbps, 192);
    EXPECT_EQ(params.audioTrackIndex, 0);
}

TEST(JobParams, trim_starts_without_segments_joined_and_fast)
{
    const TrimParams params;
    EXPECT_TRUE(params.segments.isEmpty());
    EXPECT_FALSE(params.separateFiles);
    EXPECT_FALSE(params.exactReencode);
    EXPECT_EQ(params.advanced, AdvancedOptions());
}

TEST(JobParams, every_segment_has_an_identity_of_its_own)
{
    const TrimSegment first;
    const TrimSegment second;
    EXPECT_FALSE(first.id.isNull());
    EXPECT_NE(first.id, second.id);
    EXPECT_NE(first, second);
}

TEST(JobParams, the_copy_of_a_segment_keeps_its_identity)
{
    TrimSegment segment;
    segment.start = 1;
    segment.end = 2;
    const TrimSegment copy = segment;
    EXPECT_EQ(copy.id, segment.id);
    EXPECT_EQ(copy, segment);
}

TEST(JobParams, gif_starts_whole_480_wide_at_15_frames_looping)
{
    const GifParams params;
    EXPECT_EQ(params.start, 0);
    EXPECT_FALSE(params.end);
    EXPECT_EQ(params.width, 480);
    EXPECT_EQ(params.fps, 15);
    EXPECT_TRUE(params.loopForever);
    EXPECT_FALSE(params.bounce);
    EXPECT_FALSE(params.screenContent);
}

TEST(JobParams, enhance_starts_light_and_unscaled)
{
    const EnhanceParams params;
    EXPECT_EQ(params.denoise, EnhanceParams::DenoiseLevel::light);
    EXPECT_EQ(params.sharpen, EnhanceParams::SharpenLevel::light);
    EXPECT_EQ(params.upscale, EnhanceParams::UpscaleFactor::x1);
    EXPECT_FALSE(params.muted);
    EXPECT_EQ(params.advanced, AdvancedOptions());
}

TEST(JobParams, merge_starts_as_mp4_by_copying)
{
    const MergeParams params;
    EXPECT_EQ(params.container, OutputContainer::mp4);
    EXPECT_FALSE(params.forceReencode);
    EXPECT_EQ(params.advanced, AdvancedOptions());
}

TEST(JobParams, split_starts_by_size_with_all_three_measures_set)
{
    const SplitParams params;
    EXPECT_EQ(params.mode, SplitParams::Mode::bySize);
    EXPECT_EQ(params.sizePerPartMB, 25.0);
    EXPECT_EQ(params.durationPerPartSeconds, 60.0);
    EXPECT_EQ(params.parts, 2);
    EXPECT_EQ(params.advanced, AdvancedOptions());
}

TEST(JobParams, adjust_starts_with_nothing_changed)
{
    const AdjustParams params;
    EXPECT_EQ(params.rotation, AdjustParams::Rotation::none);
    EXPECT_FALSE(params.flipH);
    EXPECT_FALSE(params.flipV);
    EXPECT_EQ(params.speed, 1.0);
    EXPECT_FALSE(params.reverse);
    EXPECT_FALSE(params.muted);
    EXPECT_EQ(params.advanced, AdvancedOptions());
}

TEST(JobParams, a_crop_has_no_size_of_its_own_at_first)
{
    const CropSpec crop;
    EXPECT_FALSE(crop.customWidth);
    EXPECT_FALSE(crop.customHeight);
}

TEST(AdvancedOptions, everything_starts_absent_or_off)
{
    const AdvancedOptions options;
    EXPECT_EQ(options.codec, CodecChoice::automatic);
    EXPECT_FALSE(options.crf);
    EXPECT_FALSE(options.fpsCap);
    EXPECT_FALSE(options.audioBitrateKbps);
    EXPECT_FALSE(options.volumeDb);
    EXPECT_FALSE(options.replacementAudioURL);
    EXPECT_FALSE(options.crop);
    EXPECT_FALSE(options.hdrPassthrough);
    EXPECT_FALSE(options.preserveAlpha);
    EXPECT_EQ(options.extraArgs, u""_s);
    EXPECT_FALSE(options.isActive());
}

TEST(AdvancedOptions, every_codec_but_the_automatic_one_is_active)
{
    for (const CodecChoice choice : allCases<CodecChoice>()) {
        EXPECT_EQ(advancedWith([&](AdvancedOptions &o) { o.codec = choice; }).isActive(),
                  choice != CodecChoice::automatic)
            << rawValue(choice).toStdString();
    }
}

TEST(AdvancedOptions, each_single_option_makes_them_active)
{
    const std::pair<const char *, AdvancedOptions> table[] = {
        {"crf", advancedWith([](AdvancedOptions &o) { o.crf = 23; })},
        {"fpsCap", advancedWith([](AdvancedOptions &o) { o.fpsCap = 30; })},
        {"audioBitrateKbps", advancedWith([](AdvancedOptions &o) { o.audioBitrateKbps = 128; })},
        {"volumeDb", advancedWith([](AdvancedOptions &o) { o.volumeDb = -3; })},
        {"replacementAudioURL", advancedWith([](AdvancedOptions &o) {
             o.replacementAudioURL = QUrl::fromLocalFile(u"/music/a.mp3"_s);
         })},
        {"crop", advancedWith([](AdvancedOptions &o) { o.crop = CropSpec(); })},
        {"hdrPassthrough", advancedWith([](AdvancedOptions &o) { o.hdrPassthrough = true; })},
        {"preserveAlpha", advancedWith([](AdvancedOptions &o) { o.preserveAlpha = true; })},
        {"extraArgs", advancedWith([](AdvancedOptions &o) { o.extraArgs = u"-tune film"_s; })},
    };
    for (const auto &[name, options] : table) {
        EXPECT_TRUE(options.isActive()) << name;
    }
}

TEST(AdvancedOptions, a_present_zero_counts_as_present)
{
    EXPECT_TRUE(advancedWith([](AdvancedOptions &o) { o.crf = 0; }).isActive());
    EXPECT_TRUE(advancedWith([](AdvancedOptions &o) { o.fpsCap = 0; }).isActive());
    EXPECT_TRUE(advancedWith([](AdvancedOptions &o) { o.audioBitrateKbps = 0; }).isActive());
    EXPECT_TRUE(advancedWith([](AdvancedOptions &o) { o.volumeDb = 0; }).isActive());
    EXPECT_TRUE(
        advancedWith([](AdvancedOptions &o) { o.replacementAudioURL = QUrl(); }).isActive());
}

TEST(AdvancedOptions, extra_arguments_of_blanks_and_tabs_are_not_active)
{
    for (const QString &text : {u""_s, u" "_s, u"   "_s, u"\t"_s, u" \t \t"_s}) {
        EXPECT_FALSE(isActiveWithExtraArgs(text)) << text.toStdString();
    }
}

TEST(AdvancedOptions, extra_arguments_between_blanks_are_active)
{
    for (const QString &text : {u" x "_s, u"x"_s, u"\tx"_s, u"x\t"_s, u"   -y"_s}) {
        EXPECT_TRUE(isActiveWithExtraArgs(text)) << text.toStdString();
    }
}

TEST(AdvancedOptions, extra_arguments_of_line_breaks_alone_are_active)
{
    for (const QString &text : {u"\n"_s, u"\r\n"_s, u" \n "_s, u"\r"_s, u"\t\n\t"_s}) {
        EXPECT_TRUE(isActiveWithExtraArgs(text)) << text.toLatin1().toHex().toStdString();
    }
}

TEST(AdjustParams, without_changes_the_picture_stays)
{
    EXPECT_FALSE(AdjustParams().changesVideo());
}

TEST(AdjustParams, muting_alone_leaves_the_picture_alone)
{
    EXPECT_FALSE(adjustedWith([](AdjustParams &p) { p.muted = true; }).changesVideo());
}

TEST(AdjustParams, advanced_options_alone_leave_the_picture_alone)
{
    const auto params = adjustedWith([](AdjustParams &p) { p.advanced.crop = CropSpec(); });
    EXPECT_FALSE(params.changesVideo());
}

TEST(AdjustParams, each_single_change_of_the_picture_counts)
{
    EXPECT_TRUE(adjustedWith([](AdjustParams &p) { p.flipH = true; }).changesVideo());
    EXPECT_TRUE(adjustedWith([](AdjustParams &p) { p.flipV = true; }).changesVideo());
    EXPECT_TRUE(adjustedWith([](AdjustParams &p) { p.reverse = true; }).changesVideo());
    for (const AdjustParams::Rotation rotation : allCases<AdjustParams::Rotation>()) {
        EXPECT_EQ(adjustedWith([&](AdjustParams &p) { p.rotation = rotation; }).changesVideo(),
                  rotation != AdjustParams::Rotation::none)
            << rawValue(rotation).toStdString();
    }
}

TEST(AdjustParams, any_speed_but_exactly_one_changes_the_picture)
{
    for (const double speed : {0.5, 2.0, 0.0, -1.0, std::nextafter(1.0, 2.0), 0.999}) {
        EXPECT_TRUE(adjustedWith([&](AdjustParams &p) { p.speed = speed; }).changesVideo())
            << speed;
    }
    EXPECT_FALSE(adjustedWith([](AdjustParams &p) { p.speed = 1.0; }).changesVideo());
}

TEST(JobParams, a_copy_holds_everything_and_lives_on_its_own)
{
    TrimParams params;
    params.segments.append(TrimSegment());
    params.advanced.crop = CropSpec{CropSpec::Aspect::free, 640, 360};
    TrimParams copy = params;
    EXPECT_EQ(copy, params);
    copy.segments.first().start = 3;
    copy.advanced.crop->customWidth = 320;
    EXPECT_EQ(params.segments.first().start, 0);
    EXPECT_EQ(params.advanced.crop->customWidth, 640);
}
