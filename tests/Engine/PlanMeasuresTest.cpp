// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PlanMeasures.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

JobPlan planOf(const QString &label, const QStringList &args)
{
    JobPlan plan;
    plan.steps = {{label, args, 1, std::nullopt}};
    return plan;
}

std::optional<qint64> bitrateOf(const QString &value)
{
    return PlanMeasures::firstVideoBitrate(planOf(u"encode"_s, {u"-b:v"_s, value, u"out"_s}));
}

} // namespace

TEST(PlanMeasures, the_bitrate_is_read_without_its_unit)
{
    EXPECT_EQ(bitrateOf(u"2500k"_s), 2500);
    EXPECT_EQ(bitrateOf(u"2M"_s), 2);
    EXPECT_EQ(bitrateOf(u"64k"_s), 64);
}

TEST(PlanMeasures, a_bitrate_that_does_not_read_is_absent)
{
    for (const QString &value : {u""_s, u"k"_s, u"2.5M"_s, u"fastk"_s, u"+64k"_s, u" 64k"_s}) {
        EXPECT_FALSE(bitrateOf(value)) << value.toStdString();
    }
}

TEST(PlanMeasures, only_the_steps_encode_and_pass2_are_asked)
{
    const QStringList args{u"-b:v"_s, u"700k"_s};
    EXPECT_EQ(PlanMeasures::firstVideoBitrate(planOf(u"pass2"_s, args)), 700);
    for (const QString &label : {u"pass1"_s, u"remux"_s, u"cut-encode"_s, u"Encode"_s, u""_s}) {
        EXPECT_FALSE(PlanMeasures::firstVideoBitrate(planOf(label, args))) << label.toStdString();
    }
}

TEST(PlanMeasures, the_first_such_step_decides_even_without_a_bitrate)
{
    JobPlan plan = planOf(u"encode"_s, {u"-c"_s, u"copy"_s});
    plan.steps.append({u"pass2"_s, {u"-b:v"_s, u"700k"_s}, 1, std::nullopt});
    EXPECT_FALSE(PlanMeasures::firstVideoBitrate(plan));
}

TEST(PlanMeasures, the_first_bitrate_of_the_step_counts)
{
    EXPECT_EQ(PlanMeasures::firstVideoBitrate(
                  planOf(u"encode"_s, {u"-b:v"_s, u"500k"_s, u"-b:v"_s, u"900k"_s})),
              500);
}

TEST(PlanMeasures, a_bitrate_option_without_a_value_is_absent)
{
    EXPECT_FALSE(PlanMeasures::firstVideoBitrate(planOf(u"encode"_s, {u"-b:v"_s})));
    EXPECT_FALSE(PlanMeasures::firstVideoBitrate(planOf(u"encode"_s, {})));
    EXPECT_FALSE(PlanMeasures::firstVideoBitrate(JobPlan()));
}

TEST(PlanMeasures, the_bytes_of_all_files_are_summed_and_a_missing_one_counts_nothing)
{
    const TempFolder folder;
    folder.write(u"a"_s, QByteArray(1000, 'x'));
    folder.write(u"b"_s, QByteArray(234, 'x'));
    EXPECT_EQ(PlanMeasures::totalBytes(
                  {folder.url(u"a"_s), folder.url(u"b"_s), folder.url(u"missing"_s)}),
              1234);
    EXPECT_EQ(PlanMeasures::totalBytes({}), 0);
}

TEST(PlanMeasures, an_attempt_upward_leaps_to_twice_the_bitrate_at_most)
{
    // 100 × 0.97 ÷ 40 is 2.425.
    EXPECT_EQ(PlanMeasures::upwardBitrate(100, 40, 1000), 2000);
}

TEST(PlanMeasures, an_attempt_upward_aims_at_97_percent_and_is_cut_to_whole_kilobits)
{
    EXPECT_EQ(PlanMeasures::upwardBitrate(100, 80, 1000), 1212);
    EXPECT_EQ(PlanMeasures::upwardBitrate(100, 60, 101), 163);
}

TEST(PlanMeasures, an_empty_result_counts_as_one_byte)
{
    EXPECT_EQ(PlanMeasures::upwardBitrate(100, 0, 1000), 2000);
    EXPECT_EQ(PlanMeasures::upwardBitrate(1, 0, 1000), std::nullopt);
}

TEST(PlanMeasures, an_attempt_that_would_not_be_higher_is_absent)
{
    EXPECT_EQ(PlanMeasures::upwardBitrate(100, 97, 1000), std::nullopt);
    EXPECT_EQ(PlanMeasures::upwardBitrate(100, 96, 1), std::nullopt);
    EXPECT_EQ(PlanMeasures::upwardBitrate(100, 10, 0), std::nullopt);
}
