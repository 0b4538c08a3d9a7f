// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/Estimates.h"

#include "App/Fmt.h"

using namespace Qt::StringLiterals;

namespace {

// Trimming, merging and splitting have none: the options don't let them through.
struct Estimate {
    const VideoFile &file;

    EstimateInfo operator()(const TargetSizeParams &params) const
    {
        return Estimator::targetSize(file, params);
    }
    EstimateInfo operator()(const ConvertParams &params) const
    {
        return Estimator::convert(file, params);
    }
    EstimateInfo operator()(const CompressParams &params) const
    {
        return Estimator::compress(file, params);
    }
    EstimateInfo operator()(const ExtractParams &params) const
    {
        return Estimator::extract(file, params.format, params.bitrateKbps, params.audioTrackIndex);
    }
    EstimateInfo operator()(const GifParams &params) const { return Estimator::gif(file, params); }
    EstimateInfo operator()(const EnhanceParams &params) const
    {
        return Estimator::enhance(file, params);
    }
    EstimateInfo operator()(const AdjustParams &params) const
    {
        return Estimator::adjust(file, params);
    }
    template <typename Params> EstimateInfo operator()(const Params &) const
    {
        EstimateInfo info;
        info.originalBytes = info.estimatedBytes = file.fileSizeBytes;
        return info;
    }
};

} // namespace

EstimatedJob Estimates::estimatedJob(const BatchItem &item, const AppModel &model)
{
    EstimatedJob job;
    job.subject = item.subject;
    job.info = std::visit(Estimate{*item.file}, item.mode);
    if (const auto *params = std::get_if<TargetSizeParams>(&item.mode)) {
        job.guarantee = model.tf(u"target.estimate"_s,
                                 {Fmt::bytes(job.info.estimatedBytes), Fmt::mb(params->targetMB)});
    }
    if (job.info.badgeKey) {
        job.badge = model.t(*job.info.badgeKey);
    }
    for (const EstimateWarning &warning : job.info.warnings) {
        job.warnings +=
            warning.args.isEmpty() ? model.t(warning.key) : model.tf(warning.key, warning.args);
    }
    return job;
}
