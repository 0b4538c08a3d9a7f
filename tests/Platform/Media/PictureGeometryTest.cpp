// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/PictureGeometry.h"

#include "Platform/Media/FrameFixture.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace {

constexpr int32_t one = 1 << 16;

// A matrix by the four numbers that turn.
Orientation turning(int32_t a, int32_t b, int32_t c, int32_t d)
{
    const std::array<int32_t, 9> matrix{a, b, 0, c, d, 0, 0, 0, 1 << 30};
    return Orientation::ofMatrix(matrix.data());
}

} // namespace

TEST(PictureGeometry, no_matrix_turns_nothing)
{
    EXPECT_EQ(Orientation::ofMatrix(nullptr), Orientation());
    EXPECT_EQ(turning(one, 0, 0, one), Orientation());
}

TEST(PictureGeometry, a_crooked_turn_counts_as_the_nearest_quarter)
{
    EXPECT_EQ(turning(65'000, 8'000, -8'000, 65'000), Orientation());
    EXPECT_EQ(turning(8'000, 65'000, -65'000, 8'000), turning(0, one, -one, 0));
}

TEST(PictureGeometry, numbers_at_the_end_of_their_range_are_taken)
{
    constexpr int32_t lowest = std::numeric_limits<int32_t>::min();

    EXPECT_TRUE(turning(0, lowest, lowest, 0).isTurned);
}

TEST(PictureGeometry, a_quarter_exchanges_the_sides)
{
    EXPECT_EQ(turning(0, one, -one, 0).applied(QSize(320, 180)), QSize(180, 320));
    EXPECT_EQ(turning(-one, 0, 0, -one).applied(QSize(320, 180)), QSize(320, 180));
}

TEST(PictureGeometry, pixels_that_are_not_square_stretch_the_lines)
{
    EXPECT_EQ(PictureGeometry::displaySize({1440, 1080}, 4.0 / 3), QSize(1920, 1080));
    EXPECT_EQ(PictureGeometry::displaySize({720, 480}, 8.0 / 9), QSize(640, 480));
}

TEST(PictureGeometry, a_shape_that_no_camera_makes_counts_as_square)
{
    for (const double aspect : {0.0, 1e-9, 1e9, -1.0, std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(PictureGeometry::displaySize({160, 90}, aspect), QSize(160, 90)) << aspect;
    }
}

TEST(PictureGeometry, a_picture_shrinks_to_the_tighter_side_and_never_grows)
{
    EXPECT_EQ(PictureGeometry::fitted({1920, 1080}, {220, 124}), QSize(220, 124));
    EXPECT_EQ(PictureGeometry::fitted({1080, 1920}, {220, 124}), QSize(70, 124));
    EXPECT_EQ(PictureGeometry::fitted({160, 90}, {220, 124}), QSize(160, 90));
    EXPECT_EQ(PictureGeometry::fitted({4000, 1}, {220, 124}), QSize(220, 1));
}

TEST(PictureGeometry, a_side_of_no_length_sets_no_bound)
{
    EXPECT_EQ(PictureGeometry::fitted({1920, 1080}, {0, 0}), QSize(1920, 1080));
    EXPECT_EQ(PictureGeometry::fitted({1920, 1080}, {}), QSize(1920, 1080));
    EXPECT_EQ(PictureGeometry::fitted({1920, 1080}, {960, 0}), QSize(960, 540));
    EXPECT_EQ(PictureGeometry::fitted({1920, 1080}, {0, 540}), QSize(960, 540));
}
