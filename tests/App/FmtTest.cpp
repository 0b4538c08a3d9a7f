// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/Fmt.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

struct Case {
    qint64 count;
    QString text;
};

void expectTexts(const std::vector<Case> &cases, const QLocale &locale)
{
    for (const Case &expected : cases) {
        EXPECT_EQ(Fmt::bytes(expected.count, locale), expected.text) << expected.count;
    }
}

} // namespace

TEST(Fmt, times_under_an_hour_are_minutes_and_seconds)
{
    const std::vector<std::pair<double, QString>> cases{
        {0, u"0:00"_s},  {7, u"0:07"_s},   {59, u"0:59"_s},   {60, u"1:00"_s},
        {83, u"1:23"_s}, {599, u"9:59"_s}, {600, u"10:00"_s}, {3599, u"59:59"_s},
    };
    for (const auto &[seconds, text] : cases) {
        EXPECT_EQ(Fmt::time(seconds), text) << seconds;
    }
}

TEST(Fmt, times_from_an_hour_on_are_hours_minutes_and_seconds)
{
    const std::vector<std::pair<double, QString>> cases{
        {3600, u"1:00:00"_s},
        {3723, u"1:02:03"_s},
        {36'000, u"10:00:00"_s},
        {360'000, u"100:00:00"_s},
    };
    for (const auto &[seconds, text] : cases) {
        EXPECT_EQ(Fmt::time(seconds), text) << seconds;
    }
}

TEST(Fmt, times_are_cut_to_whole_seconds_and_never_negative)
{
    EXPECT_EQ(Fmt::time(59.999), u"0:59"_s);
    EXPECT_EQ(Fmt::time(3599.999), u"59:59"_s);
    EXPECT_EQ(Fmt::time(-0.5), u"0:00"_s);
    EXPECT_EQ(Fmt::time(-100), u"0:00"_s);
    EXPECT_EQ(Fmt::time(std::numeric_limits<double>::quiet_NaN()), u"0:00"_s);
    EXPECT_EQ(Fmt::time(std::numeric_limits<double>::infinity()), Fmt::time(1e300));
}

TEST(Fmt, less_than_a_kilobyte_is_told_in_bytes)
{
    expectTexts({{0, u"Zero KB"_s},
                 {1, u"1 byte"_s},
                 {2, u"2 bytes"_s},
                 {10, u"10 bytes"_s},
                 {999, u"999 bytes"_s}},
                QLocale::c());
}

TEST(Fmt, kilobytes_are_whole)
{
    expectTexts({{1000, u"1 KB"_s},
                 {1023, u"1 KB"_s},
                 {1024, u"1 KB"_s},
                 {1499, u"1 KB"_s},
                 {1501, u"2 KB"_s},
                 {12'345, u"12 KB"_s},
                 {100'000, u"100 KB"_s},
                 {999'499, u"999 KB"_s}},
                QLocale::c());
}

TEST(Fmt, megabytes_have_at_most_one_decimal)
{
    expectTexts({{1'000'000, u"1 MB"_s},
                 {1'040'000, u"1 MB"_s},
                 {1'060'000, u"1.1 MB"_s},
                 {3'400'000, u"3.4 MB"_s},
                 {10'000'000, u"10 MB"_s},
                 {24'960'000, u"25 MB"_s},
                 {100'000'000, u"100 MB"_s},
                 {123'456'789, u"123.5 MB"_s},
                 {999'949'999, u"999.9 MB"_s}},
                QLocale::c());
}

TEST(Fmt, from_gigabytes_on_there_are_at_most_two_decimals)
{
    expectTexts({{1'000'000'000, u"1 GB"_s},
                 {1'004'000'000, u"1 GB"_s},
                 {1'006'000'000, u"1.01 GB"_s},
                 {1'100'000'000, u"1.1 GB"_s},
                 {1'250'000'000, u"1.25 GB"_s},
                 {10'000'000'000, u"10 GB"_s},
                 {200'000'000'000, u"200 GB"_s},
                 {999'994'000'000, u"999.99 GB"_s},
                 {1'250'000'000'000, u"1.25 TB"_s},
                 {1'000'000'000'000'000, u"1 PB"_s},
                 {2'340'000'000'000'000, u"2.34 PB"_s},
                 {1'000'000'000'000'000'000, u"1 EB"_s},
                 {std::numeric_limits<qint64>::max(), u"9.22 EB"_s}},
                QLocale::c());
}

TEST(Fmt, the_unit_is_chosen_after_rounding)
{
    expectTexts({{999'501, u"1 MB"_s},
                 {999'950, u"1 MB"_s},
                 {999'999, u"1 MB"_s},
                 {999'950'001, u"1 GB"_s},
                 {999'999'999, u"1 GB"_s},
                 {999'996'000'000, u"1 TB"_s},
                 {999'999'999'999, u"1 TB"_s},
                 {999'999'999'999'999, u"1 PB"_s}},
                QLocale::c());
}

TEST(Fmt, the_separators_are_the_locales)
{
    expectTexts({{1'250'000'000, u"1,25 GB"_s},
                 {3'400'000, u"3,4 MB"_s},
                 {3'000'000, u"3 MB"_s},
                 {12'000, u"12 KB"_s},
                 {999, u"999 bytes"_s}},
                QLocale(QLocale::German, QLocale::Germany));
    expectTexts({{1'250'000'000, u"1.25 GB"_s}}, QLocale(QLocale::Chinese, QLocale::China));
    expectTexts({{1'200'000, u"1,2 MB"_s}, {20'000'000, u"20 MB"_s}},
                QLocale(QLocale::French, QLocale::France));
}

TEST(Fmt, zeros_at_the_end_go_whatever_the_digits_look_like)
{
    const QLocale persian(QLocale::Persian, QLocale::Iran);
    ASSERT_NE(persian.zeroDigit(), u"0"_s);

    const QString whole = Fmt::bytes(20'000'000, persian);
    const QString half = Fmt::bytes(1'500'000'000, persian);

    EXPECT_EQ(whole, persian.toString(20) + u" MB"_s);
    EXPECT_EQ(half, persian.toString(1.5, 'f', 1) + u" GB"_s);
}

TEST(Fmt, without_a_locale_the_systems_is_taken)
{
    EXPECT_EQ(Fmt::bytes(1'250'000'000), Fmt::bytes(1'250'000'000, QLocale::system()));
}

TEST(Fmt, megabytes_of_a_limit_are_whole_or_have_one_decimal)
{
    const std::vector<std::pair<double, QString>> cases{
        {25, u"25 MB"_s},         {0, u"0 MB"_s},      {1.5, u"1.5 MB"_s},    {0.3, u"0.3 MB"_s},
        {8.04, u"8.0 MB"_s},      {8.06, u"8.1 MB"_s}, {25.55, u"25.6 MB"_s}, {0.01, u"0.0 MB"_s},
        {1234.5, u"1234.5 MB"_s}, {-2, u"-2 MB"_s},
    };
    for (const auto &[value, text] : cases) {
        EXPECT_EQ(Fmt::mb(value), text) << value;
    }
}

TEST(Fmt, a_saving_is_told_in_whole_percent_rounded_towards_nothing)
{
    EXPECT_EQ(Fmt::saving(1000, 500), u"\u221250%"_s);
    EXPECT_EQ(Fmt::saving(1000, 404), u"\u221259%"_s);
    EXPECT_EQ(Fmt::saving(1000, 1), u"\u221299%"_s);
    EXPECT_EQ(Fmt::saving(1000, 0), u"\u2212100%"_s);
    EXPECT_EQ(Fmt::saving(100'000, 98'999), u"\u22121%"_s);
    EXPECT_EQ(Fmt::saving(8'000'000'000'000, 4'000'000'000'000), u"\u221250%"_s);
}

TEST(Fmt, a_saving_of_a_hundredth_or_less_is_not_told)
{
    for (const auto &[before, after] :
         std::vector<std::pair<qint64, qint64>>{{100, 99},
                                                {1000, 990},
                                                {700, 693},
                                                {3'000'000, 2'970'000},
                                                {1000, 991},
                                                {1000, 1000},
                                                {1000, 2000}}) {
        EXPECT_EQ(Fmt::saving(before, after), std::nullopt) << before << " to " << after;
    }
}

TEST(Fmt, a_saving_beyond_every_measure_is_a_number_all_the_same)
{
    EXPECT_EQ(Fmt::saving(1, -30'000'000'000), u"\u22123000000000100%"_s);
}

TEST(Fmt, of_nothing_no_saving_is_told)
{
    EXPECT_EQ(Fmt::saving(0, 0), std::nullopt);
    EXPECT_EQ(Fmt::saving(0, 10), std::nullopt);
    EXPECT_EQ(Fmt::saving(-5, -10), std::nullopt);
}
