// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/SplitPlanner.h"

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

// Beyond it the lines of the steps would fill the memory before ffmpeg had started once.
constexpr qsizetype mostSteps = 100'000;

QString partSuffix(qsizetype number)
{
    return u"part-"_s + QString::number(number).rightJustified(2, u'0');
}

} // namespace

JobPlan split(const VideoFile &file, const SplitParams &params,
              const std::optional<QUrl> &outputDirectory,
              const std::optional<QString> &namingTemplate)
{
    const QList<TrimSegment> parts =
        SplitPlanner::segments(file.durationSeconds, file.totalBitrateBps() / 1000, params);
    if (parts.isEmpty() || parts.size() > mostSteps) {
        throw BuilderError(BuilderError::Case::noSegments);
    }
    const QString extension = cutExtension(file);
    JobPlan plan;
    for (const TrimSegment &part : parts) {
        const QString suffix = partSuffix(plan.steps.size() + 1);
        const QUrl output = outputURL(file, suffix, extension, outputDirectory, namingTemplate);
        plan.steps += copyCutStep(file, part, output);
        plan.finalOutputURLs += output;
    }
    return plan;
}

} // namespace CommandBuilder
