// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Panels/EstimateKey.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(EstimateKey, whole_numbers_have_a_zero_behind_them)
{
    EXPECT_EQ(EstimateKey::number(25.0), u"25.0"_s);
    EXPECT_EQ(EstimateKey::number(-3.0), u"-3.0"_s);
    EXPECT_EQ(EstimateKey::number(100'000.0), u"100000.0"_s);
}

TEST(EstimateKey, numbers_have_as_few_digits_as_tell_them_apart)
{
    EXPECT_EQ(EstimateKey::number(8.005), u"8.005"_s);
    EXPECT_EQ(EstimateKey::number(0.1), u"0.1"_s);
    EXPECT_NE(EstimateKey::number(0.1), EstimateKey::number(0.1 + 1e-16));
}

TEST(EstimateKey, an_absent_number_is_minus_one)
{
    EXPECT_EQ(EstimateKey::number(std::nullopt), u"-1.0"_s);
}

TEST(EstimateKey, pieces_are_joined_by_hyphens)
{
    EXPECT_EQ(EstimateKey::joined({u"25.0"_s, EstimateKey::truth(true), EstimateKey::truth(false)}),
              u"25.0-true-false"_s);
}
