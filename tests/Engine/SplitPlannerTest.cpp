// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/SplitPlanner.h"

#include <QSet>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

SplitParams bySize(double megabytes)
{
    SplitParams params;
    params.mode = SplitParams::Mode::bySize;
    params.sizePerPartMB = megabytes;
    return params;
}

SplitParams byDuration(double seconds)
{
    SplitParams params;
    params.mode = SplitParams::Mode::byDuration;
    params.durationPerPartSeconds = seconds;
    return params;
}

SplitParams byParts(qint64 parts)
{
    SplitParams params;
    params.mode = SplitParams::Mode::byParts;
    params.parts = parts;
    return params;
}

// The ends of the parts, after the check that each begins where the one before ends.
std::vector<double> endsOf(double duration, qint64 totalKbps, const SplitParams &params)
{
    std::vector<double> ends;
    double expectedStart = 0;
    for (const TrimSegment &part : SplitPlanner::segments(duration, totalKbps, params)) {
        EXPECT_EQ(part.start, expectedStart);
        expectedStart = part.end;
        ends.push_back(part.end);
    }
    return ends;
}

std::vector<double> endsOf(double duration, const SplitParams &params)
{
    return endsOf(duration, 0, params);
}

using Ends = std::vector<double>;

} // namespace

TEST(SplitPlanner, a_remainder_of_two_hundredths_is_dropped)
{
    EXPECT_EQ(endsOf(10.02, byDuration(5)), (Ends{5, 10}));
}

TEST(SplitPlanner, a_remainder_of_a_tenth_is_a_part)
{
    EXPECT_EQ(endsOf(10.1, byDuration(5)), (Ends{5, 10, 10.1}));
}

// In binary, 0.0625 above is exact and 0.046875, too.
TEST(SplitPlanner, a_remainder_counts_from_five_hundredths_on)
{
    EXPECT_EQ(endsOf(10.0625, byDuration(5)), (Ends{5, 10, 10.0625}));
    EXPECT_EQ(endsOf(10.046875, byDuration(5)), (Ends{5, 10}));
    // The end isn't below the duration less 0.05.
    EXPECT_EQ(endsOf(1.05, byDuration(1)), (Ends{1}));
}

TEST(SplitPlanner, the_last_part_ends_with_the_file)
{
    EXPECT_EQ(endsOf(12, byDuration(5)), (Ends{5, 10, 12}));
    EXPECT_EQ(endsOf(10, byDuration(5)), (Ends{5, 10}));
    EXPECT_EQ(endsOf(3, byDuration(60)), (Ends{3}));
}

TEST(SplitPlanner, parts_by_duration_are_never_below_a_second)
{
    EXPECT_EQ(endsOf(3, byDuration(0.25)), (Ends{1, 2, 3}));
    EXPECT_EQ(endsOf(3, byDuration(0)), (Ends{1, 2, 3}));
    EXPECT_EQ(endsOf(3, byDuration(-5)), (Ends{1, 2, 3}));
}

TEST(SplitPlanner, parts_by_size_go_by_the_rate)
{
    // 7782.4 kilobits to the megabyte.
    EXPECT_EQ(endsOf(20, 778, bySize(1)), (Ends{7782.4 / 778, 20}));
    EXPECT_EQ(endsOf(100, 1000, bySize(25)), (Ends{100}));
}

TEST(SplitPlanner, a_tiny_size_gives_parts_of_a_second)
{
    EXPECT_EQ(endsOf(3, 10'000, bySize(0.01)), (Ends{1, 2, 3}));
    EXPECT_EQ(endsOf(3, 10'000, bySize(0)), (Ends{1, 2, 3}));
    EXPECT_EQ(endsOf(3, 10'000, bySize(-1)), (Ends{1, 2, 3}));
}

TEST(SplitPlanner, without_a_rate_there_are_no_parts_by_size)
{
    EXPECT_EQ(endsOf(10, 0, bySize(25)), Ends{});
    EXPECT_EQ(endsOf(10, -1, bySize(25)), Ends{});
    EXPECT_EQ(endsOf(10, 1, bySize(25)), Ends{10});
}

TEST(SplitPlanner, the_rate_counts_for_nothing_in_other_modes)
{
    EXPECT_EQ(endsOf(10, -1, byDuration(5)), (Ends{5, 10}));
    EXPECT_EQ(endsOf(10, 0, byParts(2)), (Ends{5, 10}));
}

TEST(SplitPlanner, a_number_of_parts_shares_the_file_out)
{
    EXPECT_EQ(endsOf(10, byParts(4)), (Ends{2.5, 5, 7.5, 10}));
    for (const qint64 parts : {3, 7, 11, 13}) {
        EXPECT_EQ(endsOf(10, byParts(parts)).size(), static_cast<size_t>(parts));
    }
}

TEST(SplitPlanner, fewer_than_one_part_is_one)
{
    EXPECT_EQ(endsOf(10, byParts(1)), Ends{10});
    EXPECT_EQ(endsOf(10, byParts(0)), Ends{10});
    EXPECT_EQ(endsOf(10, byParts(-3)), Ends{10});
}

TEST(SplitPlanner, three_parts_of_nine_tenths_of_a_second_become_two)
{
    EXPECT_EQ(endsOf(0.9, byParts(3)), (Ends{0.5, 0.9}));
}

TEST(SplitPlanner, a_week_in_seconds_is_shared_out_and_a_length_that_is_a_lie_is_not)
{
    constexpr size_t secondsOfWeek = 604'800;
    EXPECT_EQ(endsOf(secondsOfWeek, byDuration(1)).size(), secondsOfWeek);
    EXPECT_EQ(endsOf(1e18, byDuration(1)), Ends{});
}

TEST(SplitPlanner, a_file_of_a_fifth_of_a_second_or_less_has_no_parts)
{
    for (const double duration : {0.2, 0.1, 0.0, -1.0, std::nan("")}) {
        EXPECT_EQ(endsOf(duration, 1000, bySize(1)), Ends{});
        EXPECT_EQ(endsOf(duration, byDuration(1)), Ends{});
        EXPECT_EQ(endsOf(duration, byParts(2)), Ends{});
    }
    EXPECT_EQ(endsOf(0.25, byParts(2)), Ends{0.25});
}

TEST(SplitPlanner, each_part_has_an_identity_of_its_own)
{
    QSet<QUuid> ids;
    for (const TrimSegment &part : SplitPlanner::segments(10, 0, byDuration(1))) {
        EXPECT_FALSE(part.id.isNull());
        ids.insert(part.id);
    }
    EXPECT_EQ(ids.size(), 10);
}
