// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegToolset.h"
#include "Models/JobParams.h"
#include "Models/JobPlan.h"
#include "Models/VideoFile.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <variant>

class PlanExecutor;

/// Two stills for a look at the quality before a long encode: one of the source, one out of a short
/// sample with the settings that the real job would use.
namespace PreviewEngine {

/// The actions that have a preview, each with its parameters.
using Request = std::variant<TargetSizeParams, CompressParams, EnhanceParams>;

/// How a sample is encoded.
struct Settings {
    QString encoder;
    std::optional<qint64> bitrateKbps;
    std::optional<qint64> crf;
    /// Pixels.
    std::optional<qint64> maxHeight;

    bool operator==(const Settings &) const = default;
};

/// Without a toolset x264 counts as unavailable.
Settings settings(const VideoFile &file, const Request &request,
                  const std::optional<FFmpegToolset> &toolset);

/// The plan of both stills, in a temporary folder of their own. `position` is in seconds and is
/// moved to where a sample fits. Names the VideoToolbox encoders whatever the build offers: hand it
/// through EncoderStandIns. Throws BuilderError (noSegments) for a file without a picture or
/// without the length for a sample.
JobPlan plan(const VideoFile &file, double position, const Request &request,
             const FFmpegToolset &toolset);

/// The advanced options of the request.
const AdvancedOptions &advancedOf(const Request &request);

/// The contents of two PNG files.
struct Images {
    QByteArray before;
    QByteArray after;

    bool operator==(const Images &) const = default;
};

/// Runs such a plan and reads the stills; blocks, so call it off the main thread. Nothing is left
/// on disk then. Throws EngineError when ffmpeg fails and FileError when a still can't be read, as
/// where ffmpeg found no frame to write; the temporary folder then stays as it is. The executor is
/// for this one call; cancelling it ends the preview as a failure.
Images generate(const JobPlan &plan, PlanExecutor &executor);

} // namespace PreviewEngine
