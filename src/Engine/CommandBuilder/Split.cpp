// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/SplitPlanner.h"
#include "Engine/Text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

QString partSuffix(qsizetype number)
{
    return u"part-"_s + QString::number(number).rightJustified(2, u'0');
}

QStringList mapArgs(const VideoFile &file)
{
    const QStringList video = hasVideo(file) ? QStringList{u"-map"_s, u"0:v:0"_s} : QStringList();
    return video + QStringList{u"-map"_s, u"0:a?"_s};
}

// With the seek before the input and a copy behind it, the part begins at the keyframe before its
// start.
FFmpegStep cutStep(const VideoFile &file, const TrimSegment &part, const QString &extension,
                   const QUrl &output)
{
    const double length = std::max(part.end - part.start, 0.0);
    FFmpegStep step;
    step.label = u"cut"_s;
    step.args << baseArgs() << u"-ss"_s << Text::fixed(part.start, 3) << u"-t"_s
              << Text::fixed(length, 3) << u"-i"_s << Text::path(file.url) << mapArgs(file)
              << u"-c"_s << u"copy"_s << u"-avoid_negative_ts"_s << u"make_zero"_s
              << partFlags(extension) << Text::path(output);
    step.progressDuration = length;
    return step;
}

} // namespace

JobPlan split(const VideoFile &file, const SplitParams &params,
              const std::optional<QUrl> &outputDirectory,
              const std::optional<QString> &namingTemplate)
{
    const QList<TrimSegment> parts =
        SplitPlanner::segments(file.durationSeconds, file.totalBitrateBps() / 1000, params);
    if (parts.isEmpty()) {
        throw BuilderError(BuilderError::Case::noSegments);
    }
    const QString extension = partExtension(file);
    JobPlan plan;
    for (const TrimSegment &part : parts) {
        const QString suffix = partSuffix(plan.steps.size() + 1);
        const QUrl output = outputURL(file, suffix, extension, outputDirectory, namingTemplate);
        plan.steps += cutStep(file, part, extension, output);
        plan.finalOutputURLs += output;
    }
    return plan;
}

} // namespace CommandBuilder
