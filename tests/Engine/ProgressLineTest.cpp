// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ProgressLine.h"

#include <gtest/gtest.h>

#include <QString>

#include <array>

namespace {

struct Row {
    QStringView line;
    std::optional<double> seconds;
};

constexpr std::array rows{
    Row{u"out_time_us=2500000", 2.5},
    // Microseconds too, in spite of the name.
    Row{u"out_time_ms=2500000", 2.5},
    Row{u"out_time_us=-40000", -0.04},
    Row{u"out_time_us=1e6", 1.0},
    Row{u"out_time=00:01:02.500000", 62.5},
    Row{u"out_time=01:00:00.000000", 3600.0},
    Row{u"out_time=-00:00:00.02", 0.02},
    // Empty pieces don't count.
    Row{u"out_time=00::01:02", 62.0},
    Row{u"out_time=:00:01:02:", 62.0},
    Row{u"out_time_us=N/A", std::nullopt},
    Row{u"out_time_ms=N/A", std::nullopt},
    Row{u"out_time=N/A", std::nullopt},
    Row{u"out_time_us=", std::nullopt},
    Row{u"out_time_us=1 ", std::nullopt},
    Row{u"out_time_us=inf", std::nullopt},
    Row{u"out_time=", std::nullopt},
    Row{u"out_time=01:02", std::nullopt},
    Row{u"out_time=00:00:01:02", std::nullopt},
    Row{u"out_time=00:xx:02", std::nullopt},
    Row{u"out_time==00:00:01", std::nullopt},
    Row{u" out_time_us=1000000", std::nullopt},
    Row{u"frame=25", std::nullopt},
    Row{u"progress=end", std::nullopt},
    Row{u"", std::nullopt},
};

} // namespace

TEST(ProgressLine, every_form_of_line_gives_its_seconds_or_none)
{
    for (const Row &row : rows) {
        EXPECT_EQ(ProgressLine::seconds(row.line), row.seconds)
            << row.line.toString().toStdString();
    }
}
