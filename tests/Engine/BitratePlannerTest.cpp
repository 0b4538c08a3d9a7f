// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/BitratePlanner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>

using BitratePlanner::Plan;
using BitratePlanner::plan;
using BitratePlanner::Request;
using BitratePlanner::Warning;

namespace BitratePlanner {

static void PrintTo(const Plan &plan, std::ostream *out)
{
    *out << "target " << plan.targetBytes << " duration " << plan.durationSeconds << " video "
         << plan.videoBitrateKbps << " audio " << plan.audioBitrateKbps << " height "
         << plan.maxHeight.value_or(-1) << " estimate " << plan.estimatedBytes << " warnings";
    for (const Warning warning : plan.warnings) {
        *out << ' ' << static_cast<int>(warning);
    }
}

} // namespace BitratePlanner

namespace {

using Warnings = QList<Warning>;
using Height = std::optional<qint64>;

// Kilobits that a megabyte gives to the sum, margin taken off: 8192 × 0.95.
constexpr double budgetPerMegabyte = 7782.4;

struct RawCase {
    /// The video bitrate before the floor, with any fraction that is to be cut off.
    double raw = 0;
    double duration = 60;
    std::optional<qint64> width = {};
    bool hasAudio = false;
};

// A plan whose raw bitrate is the wanted one: the target is reckoned backwards from it.
Plan planAtRaw(const RawCase &wanted)
{
    const double audio = wanted.hasAudio ? 64 : 0;
    const double targetMB = (wanted.raw + audio) * wanted.duration / budgetPerMegabyte;
    EXPECT_LT(targetMB, 50) << "the audio budget would be 128";
    return plan({targetMB, wanted.duration, wanted.hasAudio, false, wanted.width});
}

// In the middle between two whole bitrates, far from both truncation edges.
Height capOf(std::optional<qint64> width, int raw)
{
    return planAtRaw({raw + 0.5, 20, width}).maxHeight;
}

} // namespace

TEST(BitratePlanner, the_worked_rows_come_out_to_the_byte)
{
    struct Row {
        double targetMB;
        double duration;
        qint64 width;
        Plan expected;
    };
    const Row table[] = {
        {25, 60, 1920, {25'000'000, 60, 3178, 64, std::nullopt, 24'315'000, {}}},
        {25, 600, 1920, {25'000'000, 600, 260, 64, 720, 24'300'000, {}}},
        {10, 600, 3840, {10'000'000, 600, 65, 64, 1080, 9'675'000, {Warning::lowBitrate}}},
        {50, 60, 3840, {50'000'000, 60, 6357, 128, std::nullopt, 48'637'500, {}}},
        {4.9,
         300,
         1920,
         {4'900'000, 300, 64, 64, 720, 4'800'000, {Warning::floorReached, Warning::lowBitrate}}},
        {4,
         300,
         1920,
         {4'000'000, 300, 64, 64, 720, 4'800'000, {Warning::hopeless, Warning::lowBitrate}}},
        {8,
         1200,
         1920,
         {8'000'000, 1200, 64, 64, 720, 19'200'000, {Warning::hopeless, Warning::lowBitrate}}},
    };
    for (const Row &row : table) {
        EXPECT_EQ(plan({row.targetMB, row.duration, true, false, row.width}), row.expected)
            << row.targetMB << " MB for " << row.duration << " s";
    }
}

TEST(BitratePlanner, the_same_request_gives_the_same_plan)
{
    const Request request{4.9, 300, true, false, 1920};
    EXPECT_EQ(plan(request), plan(request));
}

TEST(BitratePlanner, the_limit_is_decimal_and_cut_to_whole_bytes)
{
    struct Row {
        double targetMB;
        qint64 bytes;
    };
    const Row table[] = {
        {0, 0},
        {1, 1'000'000},
        {25, 25'000'000},
        {0.0000019, 1},
        {2.01, 2'009'999}, // the product lies just below 2,010,000
        {4.9, 4'900'000},
        {1'000'000, 1'000'000'000'000},
    };
    for (const Row &row : table) {
        EXPECT_EQ(plan({row.targetMB, 60, true, false, 1920}).targetBytes, row.bytes)
            << row.targetMB;
    }
}

TEST(BitratePlanner, a_duration_up_to_a_tenth_counts_as_a_tenth)
{
    for (const double duration : {0.1, 0.05, 0.0, -0.0, -7.0}) {
        EXPECT_EQ(plan({25, duration, true, false, 1920}).durationSeconds, 0.1) << duration;
    }
    for (const double duration : {std::nextafter(0.1, 1.0), 0.2, 60.0, 86'400.0}) {
        EXPECT_EQ(plan({25, duration, true, false, 1920}).durationSeconds, duration);
    }
}

TEST(BitratePlanner, a_duration_of_zero_gives_an_enormous_bitrate_without_warning_or_cap)
{
    const Plan expected{25'000'000, 0.1, 1'945'536, 64, std::nullopt, 24'320'000, {}};
    EXPECT_EQ(plan({25, 0, true, false, 3840}), expected);
}

TEST(BitratePlanner, a_target_of_50_megabytes_has_the_full_audio_budget)
{
    struct Row {
        double targetMB;
        qint64 audio;
    };
    const Row table[] = {{0.5, 64}, {49.9, 64},  {std::nextafter(50.0, 0.0), 64},
                         {50, 128}, {50.1, 128}, {2000, 128}};
    for (const Row &row : table) {
        EXPECT_EQ(plan({row.targetMB, 60, true, false, 1920}).audioBitrateKbps, row.audio)
            << row.targetMB;
    }
}

TEST(BitratePlanner, a_muted_file_and_one_without_sound_have_the_same_plan)
{
    for (const double targetMB : {0.5, 4.0, 25.0, 80.0}) {
        const Plan muted = plan({targetMB, 300, true, true, 1920});
        EXPECT_EQ(muted, plan({targetMB, 300, false, false, 1920})) << targetMB;
        EXPECT_EQ(muted, plan({targetMB, 300, false, true, 1920})) << targetMB;
        EXPECT_EQ(muted.audioBitrateKbps, 0);
    }
}

TEST(BitratePlanner, without_sound_all_of_the_budget_and_of_the_estimate_is_video)
{
    const Plan expected{25'000'000, 60, 3242, 0, std::nullopt, 24'315'000, {}};
    EXPECT_EQ(plan({25, 60, true, true, 1920}), expected);
}

TEST(BitratePlanner, the_bitrate_is_cut_and_not_rounded)
{
    EXPECT_EQ(planAtRaw({500.01}).videoBitrateKbps, 500);
    EXPECT_EQ(planAtRaw({500.99}).videoBitrateKbps, 500);
    EXPECT_EQ(planAtRaw({500.99, 60, 1920, true}).videoBitrateKbps, 500);
}

TEST(BitratePlanner, the_order_of_the_sums_decides_about_the_last_kilobit)
{
    struct Row {
        double targetMB;
        double duration;
        qint64 video;
    };
    // Dividing before the margin is taken off gives one more or one less in each row.
    const Row table[] = {{0.5, 1.6, 2367}, {0.5, 1.9, 1984}, {0.5, 3.2, 1151},
                         {0.5, 3.8, 960},  {0.5, 6.4, 543},  {0.5, 7.6, 448}};
    for (const Row &row : table) {
        EXPECT_EQ(plan({row.targetMB, row.duration, true, false, 1920}).videoBitrateKbps, row.video)
            << row.duration;
    }
}

TEST(BitratePlanner, the_order_of_the_products_decides_about_the_last_byte)
{
    struct Row {
        double duration;
        qint64 video;
        qint64 estimate;
    };
    // Multiplying the duration in first gives one byte less in each row.
    const Row table[] = {{0.142, 273'964, 4'863'997},
                         {0.688, 56'494, 4'863'988},
                         {1.136, 34'189, 4'863'926},
                         {1.15, 33'772, 4'863'925}};
    for (const Row &row : table) {
        const Plan made = plan({5, row.duration, true, false, 1920});
        EXPECT_EQ(made.videoBitrateKbps, row.video) << row.duration;
        EXPECT_EQ(made.estimatedBytes, row.estimate) << row.duration;
    }
}

TEST(BitratePlanner, the_plan_aims_at_some_97_percent_of_the_limit)
{
    const Plan made = plan({100, 600, true, false, 1920});
    EXPECT_NEAR(static_cast<double>(made.estimatedBytes) / static_cast<double>(made.targetBytes),
                0.9728, 0.001);
}

TEST(BitratePlanner, the_floor_is_64_kilobits)
{
    struct Row {
        double raw;
        qint64 video;
    };
    const Row table[] = {{65.5, 65}, {64.5, 64}, {64.01, 64}, {63.99, 64}, {30, 64}, {0.5, 64}};
    for (const Row &row : table) {
        EXPECT_EQ(planAtRaw({row.raw, 20}).videoBitrateKbps, row.video) << row.raw;
        EXPECT_EQ(planAtRaw({row.raw, 20, 1920, true}).videoBitrateKbps, row.video) << row.raw;
    }
}

TEST(BitratePlanner, a_raw_bitrate_of_64_has_no_floor_warning_and_63_has_one)
{
    const Plan above = planAtRaw({64.01, 20});
    EXPECT_EQ(above.videoBitrateKbps, 64);
    EXPECT_EQ(above.warnings, Warnings{});
    const Plan below = planAtRaw({63.99, 20});
    EXPECT_EQ(below.videoBitrateKbps, 64);
    EXPECT_EQ(below.warnings, Warnings{Warning::floorReached});
}

TEST(BitratePlanner, a_raw_bitrate_below_zero_gives_64_and_never_less)
{
    for (const double targetMB : {0.0, 0.001, 0.1, 1.0, -3.0}) {
        const Plan made = plan({targetMB, 1200, true, false, 1920});
        EXPECT_EQ(made.videoBitrateKbps, 64) << targetMB;
        EXPECT_EQ(made.estimatedBytes, 19'200'000) << targetMB;
        EXPECT_EQ(made.warnings, (Warnings{Warning::hopeless, Warning::lowBitrate})) << targetMB;
    }
}

TEST(BitratePlanner, the_ladder_caps_by_width_and_bitrate_and_the_first_rung_wins)
{
    struct Row {
        std::optional<qint64> width;
        int raw;
        Height expected;
    };
    const Row table[] = {
        // Wide pictures only know the first rung below its bound, so 4K never falls to 720 or 480.
        {1921, 2499, 1080},
        {1921, 2500, std::nullopt},
        {1921, 1500, 1080},
        {1921, 1499, 1080},
        {1921, 300, 1080},
        {3840, 2499, 1080},
        {3840, 2500, std::nullopt},
        {3840, 300, 1080},
        {3840, 20, 1080},
        // The second rung leaves 1500 out.
        {1920, 2499, std::nullopt},
        {1920, 2000, std::nullopt},
        {1920, 1500, std::nullopt},
        {1920, 1499, 720},
        {1920, 1400, 720},
        {1920, 700, 720},
        {1920, 300, 720},
        {1281, 1500, std::nullopt},
        {1281, 1499, 720},
        {1281, 699, 720},
        {1281, 20, 720},
        // The third rung takes 699 in.
        {1280, 1499, std::nullopt},
        {1280, 700, std::nullopt},
        {1280, 699, 480},
        {855, 700, std::nullopt},
        {855, 699, 480},
        {855, 20, 480},
        // Small and unknown pictures are left alone.
        {854, 699, std::nullopt},
        {854, 20, std::nullopt},
        {320, 20, std::nullopt},
        {0, 20, std::nullopt},
        {-1, 20, std::nullopt},
        {std::nullopt, 2499, std::nullopt},
        {std::nullopt, 20, std::nullopt},
    };
    for (const Row &row : table) {
        EXPECT_EQ(capOf(row.width, row.raw), row.expected)
            << "width " << row.width.value_or(-99) << " raw " << row.raw;
    }
}

TEST(BitratePlanner, a_picture_1920_wide_is_below_the_first_rung)
{
    EXPECT_EQ(capOf(1920, 2000), std::nullopt);
    EXPECT_EQ(capOf(1921, 2000), 1080);
    EXPECT_EQ(capOf(1920, 1400), 720);
}

TEST(BitratePlanner, a_picture_854_wide_is_never_capped)
{
    for (const int raw : {1, 63, 64, 300, 699, 700, 1499, 2499}) {
        EXPECT_EQ(capOf(854, raw), std::nullopt) << raw;
    }
}

TEST(BitratePlanner, a_raw_bitrate_of_160_warns_on_a_long_clip_and_161_does_not)
{
    EXPECT_EQ(planAtRaw({160.01, 60}).warnings, Warnings{Warning::lowBitrate});
    EXPECT_EQ(planAtRaw({160.99, 60}).warnings, Warnings{Warning::lowBitrate});
    EXPECT_EQ(planAtRaw({161.01, 60}).warnings, Warnings{});
    EXPECT_EQ(planAtRaw({160.99, 60, 1920, true}).warnings, Warnings{Warning::lowBitrate});
    EXPECT_EQ(planAtRaw({161.01, 60, 1920, true}).warnings, Warnings{});
}

TEST(BitratePlanner, a_clip_of_30_seconds_never_has_the_warning_of_a_low_bitrate)
{
    for (const double duration : {0.1, 20.0, 29.999, 30.0}) {
        EXPECT_EQ(planAtRaw({100.5, duration}).warnings, Warnings{}) << duration;
    }
    for (const double duration : {std::nextafter(30.0, 31.0), 31.0, 600.0}) {
        EXPECT_EQ(planAtRaw({100.5, duration}).warnings, Warnings{Warning::lowBitrate}) << duration;
    }
}

TEST(BitratePlanner, a_short_clip_under_the_floor_has_the_floor_warning_alone)
{
    EXPECT_EQ(planAtRaw({20, 30}).warnings, Warnings{Warning::hopeless});
    EXPECT_EQ(planAtRaw({63.5, 30}).warnings, Warnings{Warning::floorReached});
}

TEST(BitratePlanner, a_long_clip_under_the_floor_has_the_floor_warning_first)
{
    EXPECT_EQ(planAtRaw({63.5, 31}).warnings,
              (Warnings{Warning::floorReached, Warning::lowBitrate}));
    EXPECT_EQ(planAtRaw({20, 31}).warnings, (Warnings{Warning::hopeless, Warning::lowBitrate}));
}

TEST(BitratePlanner, a_target_of_exactly_the_floors_size_is_reachable_and_a_byte_less_is_not)
{
    struct Row {
        double targetMB;
        double duration;
        bool hasAudio;
        Warning expected;
    };
    const Row table[] = {
        {0.16, 20, false, Warning::floorReached},
        {0.159999, 20, false, Warning::hopeless},
        {0.32, 20, true, Warning::floorReached},
        {0.319999, 20, true, Warning::hopeless},
        // A target between the two sizes is only reachable without sound.
        {0.162, 20, false, Warning::floorReached},
        {0.162, 20, true, Warning::hopeless},
    };
    for (const Row &row : table) {
        const Plan made = plan({row.targetMB, row.duration, row.hasAudio, false, 1920});
        EXPECT_EQ(made.warnings, Warnings{row.expected}) << row.targetMB << ' ' << row.hasAudio;
    }
}

TEST(BitratePlanner, the_size_at_the_floor_is_cut_before_it_is_compared)
{
    // 20.00001 seconds at the floor are 160000.08 bytes, so 160,000 are still enough.
    EXPECT_EQ(plan({0.16, 20.00001, false, false, 1920}).warnings, Warnings{Warning::floorReached});
}

TEST(BitratePlanner, the_estimate_of_a_hopeless_target_lies_above_the_limit)
{
    const Plan made = plan({4, 300, true, false, 1920});
    EXPECT_GT(made.estimatedBytes, made.targetBytes);
}

TEST(BitratePlanner, the_width_changes_nothing_but_the_cap)
{
    Plan capped = plan({25, 600, true, false, 1920});
    const Plan free = plan({25, 600, true, false, std::nullopt});
    EXPECT_EQ(capped.maxHeight, 720);
    capped.maxHeight.reset();
    EXPECT_EQ(capped, free);
}

TEST(BitratePlanner, a_target_beyond_all_integers_is_the_highest_one)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    const Plan made = plan({1e300, 10, true, false, 1920});
    EXPECT_EQ(made.targetBytes, most);
    EXPECT_EQ(made.videoBitrateKbps, most);
    EXPECT_EQ(made.estimatedBytes, most);
    EXPECT_EQ(made.warnings, Warnings{});
    EXPECT_EQ(plan({-1e300, 10, true, false, 1920}).targetBytes,
              std::numeric_limits<qint64>::min());
}

TEST(BitratePlanner, the_warnings_stand_in_their_order)
{
    EXPECT_LT(Warning::lowBitrate, Warning::floorReached);
    EXPECT_LT(Warning::floorReached, Warning::hopeless);
}
