// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/JobPlanner.h"

#include "Engine/CommandBuilder/CommandBuilder.h"

using namespace Qt::StringLiterals;

namespace {

/// One case a mode, with what the builders of all modes are given.
struct Planner {
    const Job &job;
    const std::optional<FFmpegToolset> &located;
    const std::optional<QUrl> &directory;
    const std::optional<QString> &nameTemplate;

    // What a build without any encoder offers, where none was found.
    FFmpegToolset toolset() const { return located.value_or(FFmpegToolset()); }

    JobPlan operator()(TargetSizeParams params) const
    {
        // Two passes need x264; without it the one fast pass does the work.
        params.exactTwoPass = params.exactTwoPass && toolset().encoders.contains(u"libx264"_s);
        return CommandBuilder::targetSize(job.input, params, toolset(), directory, nameTemplate);
    }
    JobPlan operator()(const ConvertParams &params) const
    {
        return CommandBuilder::convert(job.input, params, toolset(), directory, nameTemplate);
    }
    JobPlan operator()(const CompressParams &params) const
    {
        return CommandBuilder::compress(job.input, params, located, directory, nameTemplate);
    }
    JobPlan operator()(const ExtractParams &params) const
    {
        return CommandBuilder::extract(job.input, params, directory, nameTemplate);
    }
    JobPlan operator()(const TrimParams &params) const
    {
        return CommandBuilder::trim(job.input, params, directory, nameTemplate);
    }
    JobPlan operator()(const GifParams &params) const
    {
        return CommandBuilder::gif(job.input, params, directory, nameTemplate);
    }
    JobPlan operator()(const EnhanceParams &params) const
    {
        return CommandBuilder::enhance(job.input, params, toolset(), directory, nameTemplate);
    }
    JobPlan operator()(const MergeParams &params) const
    {
        const QList<VideoFile> files = QList<VideoFile>{job.input} + job.extraInputs;
        return CommandBuilder::merge(files, params, toolset(), directory, nameTemplate);
    }
    JobPlan operator()(const SplitParams &params) const
    {
        return CommandBuilder::split(job.input, params, directory, nameTemplate);
    }
    JobPlan operator()(const AdjustParams &params) const
    {
        return CommandBuilder::adjust(job.input, params, toolset(), directory, nameTemplate);
    }
};

} // namespace

JobPlan JobPlanner::plan(const Job &job, const std::optional<FFmpegToolset> &toolset,
                         const std::optional<QUrl> &outputDirectory,
                         const std::optional<QString> &namingTemplate)
{
    return std::visit(Planner{job, toolset, outputDirectory, namingTemplate}, job.mode);
}
