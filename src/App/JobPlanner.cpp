// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/JobPlanner.h"

#include "Engine/CommandBuilder/BuilderError.h"
#include "Engine/CommandBuilder/CommandBuilder.h"

using namespace Qt::StringLiterals;

namespace {

/// What the builders of all modes are given.
struct Setting {
    const Job &job;
    const std::optional<FFmpegToolset> &toolset;
    const std::optional<QUrl> &outputDirectory;
    const std::optional<QString> &namingTemplate;

    JobPlan operator()(const TargetSizeParams &asked) const
    {
        TargetSizeParams params = asked;
        // Two passes need x264; without it the one fast pass does the work.
        if (!toolset || !toolset->encoders.contains(u"libx264"_s)) {
            params.exactTwoPass = false;
        }
        return CommandBuilder::targetSize(job.input, params, toolset.value_or(FFmpegToolset()),
                                          outputDirectory, namingTemplate);
    }

    // The others have no builder yet.
    template <typename Params> JobPlan operator()(const Params &) const
    {
        throw BuilderError(BuilderError::Case::noSegments);
    }
};

} // namespace

JobPlan JobPlanner::plan(const Job &job, const std::optional<FFmpegToolset> &toolset,
                         const std::optional<QUrl> &outputDirectory,
                         const std::optional<QString> &namingTemplate)
{
    return std::visit(Setting{job, toolset, outputDirectory, namingTemplate}, job.mode);
}
