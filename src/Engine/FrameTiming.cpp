// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/FrameTiming.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool joinsByFilter(const QStringList &args)
{
    const qsizetype option = args.indexOf(u"-filter_complex"_s);
    return option >= 0 && args.value(option + 1).contains("concat=n="_L1);
}

bool saysItsRate(const QStringList &args)
{
    const QStringList options{u"-r"_s, u"-vsync"_s, u"-fps_mode"_s};
    return std::ranges::any_of(options,
                               [&](const QString &option) { return args.contains(option); });
}

} // namespace

JobPlan FrameTiming::apply(JobPlan plan)
{
    for (FFmpegStep &step : plan.steps) {
        if (joinsByFilter(step.args) && !saysItsRate(step.args)) {
            const qsizetype output = step.args.size() - 1;
            step.args.insert(output, u"vfr"_s);
            step.args.insert(output, u"-fps_mode"_s);
        }
    }
    return plan;
}
