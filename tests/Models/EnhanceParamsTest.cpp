// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/JobParams.h"
#include "Models/VideoFile.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <ostream>

using Factor = EnhanceParams::UpscaleFactor;

static void PrintTo(const PictureSize &size, std::ostream *out)
{
    *out << size.width << 'x' << size.height;
}

namespace {

VideoFile pictureOf(std::optional<qint64> width, std::optional<qint64> height)
{
    VideoFile file;
    file.width = width;
    file.height = height;
    return file;
}

std::optional<PictureSize> scaled(Factor factor, std::optional<qint64> width,
                                  std::optional<qint64> height)
{
    EnhanceParams params;
    params.upscale = factor;
    return params.outputSize(pictureOf(width, height));
}

} // namespace

TEST(EnhanceParams, the_output_of_a_picture_of_unknown_size_is_unknown)
{
    for (const Factor factor : allCases<Factor>()) {
        EXPECT_FALSE(scaled(factor, std::nullopt, std::nullopt));
        EXPECT_FALSE(scaled(factor, 1920, std::nullopt));
        EXPECT_FALSE(scaled(factor, std::nullopt, 1080));
    }
}

TEST(EnhanceParams, each_side_is_scaled_rounded_and_cut_to_an_even_number)
{
    struct Row {
        Factor factor;
        qint64 side;
        qint64 expected;
    };
    const Row table[] = {
        {Factor::x1, 1920, 1920},   {Factor::x1, 1081, 1080},  {Factor::x1, 101, 100},
        {Factor::x1, 3, 2},         {Factor::x15, 1920, 2880}, {Factor::x15, 1080, 1620},
        {Factor::x15, 1921, 2882}, // 2881.5 goes up to 2882
        {Factor::x15, 1919, 2878}, // 2878.5 goes up to 2879, which is odd
        {Factor::x15, 1922, 2882}, // 2883 is odd
        {Factor::x15, 5, 8},       // 7.5 goes up to 8
        {Factor::x15, 3, 4},       // 4.5 goes up to 5, which is odd
        {Factor::x15, 7680, 11520}, {Factor::x2, 1920, 3840},  {Factor::x2, 101, 202},
        {Factor::x2, 1, 2},
    };
    for (const Row &row : table) {
        EXPECT_EQ(scaled(row.factor, row.side, 480)->width, row.expected) << row.side;
        EXPECT_EQ(scaled(row.factor, 640, row.side)->height, row.expected) << row.side;
    }
}

TEST(EnhanceParams, without_upscaling_an_odd_side_still_becomes_even)
{
    EXPECT_EQ(scaled(Factor::x1, 101, 101), (PictureSize{100, 100}));
}

TEST(EnhanceParams, upscaling_1921_by_one_and_a_half_gives_2882_and_1919_gives_2878)
{
    EXPECT_EQ(scaled(Factor::x15, 1921, 1919), (PictureSize{2882, 2878}));
}

TEST(EnhanceParams, no_side_falls_below_two_pixels)
{
    for (const Factor factor : allCases<Factor>()) {
        EXPECT_EQ(scaled(factor, 1, 1), (PictureSize{2, 2}));
        EXPECT_EQ(scaled(factor, 0, 0), (PictureSize{2, 2}));
        EXPECT_EQ(scaled(factor, -5, -5), (PictureSize{2, 2}));
    }
}

TEST(EnhanceParams, the_sides_are_scaled_apart_and_keep_their_places)
{
    EXPECT_EQ(scaled(Factor::x2, 640, 360), (PictureSize{1280, 720}));
    EXPECT_EQ(scaled(Factor::x15, 360, 640), (PictureSize{540, 960}));
}

TEST(EnhanceParams, nothing_but_the_factor_changes_the_size)
{
    EnhanceParams params;
    params.denoise = EnhanceParams::DenoiseLevel::strong;
    params.sharpen = EnhanceParams::SharpenLevel::off;
    params.muted = true;
    params.advanced.crop = CropSpec{CropSpec::Aspect::free, 100, 100};
    EXPECT_EQ(params.outputSize(pictureOf(640, 360)), (PictureSize{640, 360}));
}
