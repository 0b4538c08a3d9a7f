// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PlanMeasures.h"

#include "Engine/Text.h"
#include "Models/Truncation.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Where an attempt upward aims, and how far it may leap.
constexpr double upwardAim = 0.97;
constexpr double steepestLeap = 2.0;

bool carriesBitrate(const FFmpegStep &step)
{
    return step.label == "encode"_L1 || step.label == "pass2"_L1;
}

} // namespace

std::optional<qint64> PlanMeasures::firstVideoBitrate(const JobPlan &plan)
{
    const auto step = std::ranges::find_if(plan.steps, carriesBitrate);
    if (step == plan.steps.end()) {
        return std::nullopt;
    }
    const qsizetype option = step->args.indexOf(u"-b:v"_s);
    if (option < 0 || option + 1 >= step->args.size()) {
        return std::nullopt;
    }
    // The last character is the unit.
    const QStringView value = step->args.at(option + 1);
    return Text::toInteger(value.first(std::max<qsizetype>(value.size() - 1, 0)));
}

qint64 PlanMeasures::totalBytes(const QList<QUrl> &urls)
{
    qint64 sum = 0;
    for (const QUrl &url : urls) {
        sum += QFileInfo(Text::path(url)).size();
    }
    return sum;
}

std::optional<qint64> PlanMeasures::upwardBitrate(qint64 limit, qint64 bytes, qint64 kbps)
{
    const double ratio =
        static_cast<double>(limit) * upwardAim / static_cast<double>(std::max<qint64>(bytes, 1));
    const double factor = std::min(ratio, steepestLeap);
    const qint64 next = std::min(kbps * 2, truncated(factor * static_cast<double>(kbps)));
    return next > kbps ? std::optional(next) : std::nullopt;
}
