// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/FrameTiming.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QStringList timed(const QString &line)
{
    FFmpegStep step;
    step.args = line.split(u' ');
    JobPlan plan;
    plan.steps = {step};
    return FrameTiming::apply(plan).steps.first().args;
}

QStringList words(const QString &line)
{
    return line.split(u' ');
}

} // namespace

TEST(FrameTiming, a_line_that_joins_by_filter_passes_frames_at_their_own_times)
{
    EXPECT_EQ(timed(u"-i a -i b -filter_complex [v0][v1]concat=n=2:v=1:a=0[v] -map [v] out.mp4"_s),
              words(u"-i a -i b -filter_complex [v0][v1]concat=n=2:v=1:a=0[v] -map [v] "
                    "-fps_mode vfr out.mp4"_s));
}

TEST(FrameTiming, a_line_that_says_its_rate_stays)
{
    for (const QString &own : {u"-r 30"_s, u"-vsync cfr"_s, u"-fps_mode cfr"_s}) {
        const QString line =
            u"-i a -filter_complex [v0]concat=n=1:v=1:a=0[v] %1 out.mp4"_s.arg(own);
        EXPECT_EQ(timed(line), words(line));
    }
}

TEST(FrameTiming, every_other_line_stays)
{
    for (const QString &line :
         {u"-i a -c copy out.mp4"_s, u"-f concat -i list out.mp4"_s,
          u"-i a -filter_complex [0:v]reverse[v] out.gif"_s, u"-filter_complex"_s}) {
        EXPECT_EQ(timed(line), words(line));
    }
}
