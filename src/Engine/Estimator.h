// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobParams.h"
#include "Models/VideoFile.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// Something that the user should know before the job is queued.
struct EstimateWarning {
    /// Key of the text, and what is filled into it.
    QString key;
    QStringList args;

    bool operator==(const EstimateWarning &) const = default;
};

/// What an action will make of a file.
struct EstimateInfo {
    /// Size of the input.
    qint64 originalBytes = 0;
    /// Size of the output.
    qint64 estimatedBytes = 0;
    /// Key of the badge that tells how the job will run.
    std::optional<QString> badgeKey;
    QList<EstimateWarning> warnings;

    bool operator==(const EstimateInfo &) const = default;
};

/// How large the output of an action will be, before anything runs. Sums only, cheap enough for
/// every redraw of a panel; from any thread. Trimming, merging, splitting and playing have no
/// estimate.
namespace Estimator {

EstimateInfo compress(const VideoFile &file, const CompressParams &params);

/// The sums of the job itself; the warnings are those of the bitrate planner.
EstimateInfo targetSize(const VideoFile &file, const TargetSizeParams &params);

/// The badge says whether all, the picture alone or nothing is copied. A picture that fits counts
/// as copied even where the advanced options ask for more.
EstimateInfo convert(const VideoFile &file, const ConvertParams &params);

/// A track beyond the list counts as the nearest. Without a track there is a warning, and the size
/// is the input's.
EstimateInfo extract(const VideoFile &file, ExtractParams::AudioFormat format, qint64 bitrateKbps,
                     qint64 audioTrackIndex);

EstimateInfo adjust(const VideoFile &file, const AdjustParams &params);

EstimateInfo enhance(const VideoFile &file, const EnhanceParams &params);

EstimateInfo gif(const VideoFile &file, const GifParams &params);

} // namespace Estimator
