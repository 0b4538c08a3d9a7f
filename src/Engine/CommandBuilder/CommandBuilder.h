// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegToolset.h"
#include "Models/JobParams.h"
#include "Models/JobPlan.h"
#include "Models/VideoFile.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

/// Turns a file and parameters into a plan, one operation an action, without running anything. All
/// operations are pure, but for the look at which output names are free and at the temporary
/// directory. Arguments are separate texts, never a shell line: nothing is quoted or escaped. What
/// the options mean is told by ffmpeg's documentation.
namespace CommandBuilder {

/// Fits the output under a size: a copy where the file fits already, else an encode whose plan
/// brings along what the executor needs to try again. Always an MP4. Never throws.
JobPlan targetSize(const VideoFile &file, const TargetSizeParams &params,
                   const FFmpegToolset &toolset, const std::optional<QUrl> &outputDirectory,
                   const std::optional<QString> &namingTemplate);

/// Whether one or two runs of the encoder make the output.
enum class Passes { one, two };

/// One attempt at a bitrate, as targetSize() makes it.
struct EncodeAttempt {
    VideoFile file;
    TargetSizeParams params;
    /// Seconds to encode, skips taken off.
    double duration = 0;
    qint64 videoKbps = 0;
    qint64 audioKbps = 0;
    /// Height cap in pixels.
    std::optional<qint64> maxHeight;
    QUrl output;
    Passes passes = Passes::one;
    FFmpegToolset toolset;
};

/// The steps of one attempt: "encode", or "pass1" and "pass2".
QList<FFmpegStep> encodeSteps(const EncodeAttempt &attempt);

/// Denoises, upscales and sharpens. One step, "enhance"; always an MP4 whose picture is encoded
/// anew, even with everything off. A replacement file isn't opened: it only has the sound encoded.
/// Never throws.
JobPlan enhance(const VideoFile &file, const EnhanceParams &params, const FFmpegToolset &toolset,
                const std::optional<QUrl> &outputDirectory,
                const std::optional<QString> &namingTemplate);

/// The filters of enhance(); absent when nothing is asked for.
std::optional<QString> enhanceFilterChain(const VideoFile &file, const EnhanceParams &params);

/// The video rate of enhance() in kilobits per second, by the pixels of the output: 1500 to 40000,
/// and 4000 for a picture of unknown size.
qint64 enhanceBitrateKbps(const VideoFile &file, const EnhanceParams &params);

/// Rotates, flips, changes the speed or reverses. One step, "adjust"; always an MP4 whose picture
/// is encoded anew. Sound follows the speed but isn't reversed; a replacement file isn't opened.
/// The speed is to be above 0: ffmpeg refuses 0. Never throws.
JobPlan adjust(const VideoFile &file, const AdjustParams &params, const FFmpegToolset &toolset,
               const std::optional<QUrl> &outputDirectory,
               const std::optional<QString> &namingTemplate);

/// The filters of adjust(); absent when nothing is asked for.
std::optional<QString> adjustFilterChain(const VideoFile &file, const AdjustParams &params);

/// The filters that bring sound to a speed, which is held between 0.25 and 4: ffmpeg's own takes
/// 0.5 to 2 at once.
QStringList atempoChain(double speed);

/// Joins files in their order: by copying where MergePlanner finds their streams alike, else by one
/// encode onto a picture that holds them all, silent if one of them is. One step, "concat" or
/// "merge"; the badge says which. Whether the container takes copied streams is left to ffmpeg.
/// Throws BuilderError: noSegments for fewer than two files, vp9Unavailable for WebM on a build
/// without libvpx-vp9.
JobPlan merge(const QList<VideoFile> &files, const MergeParams &params,
              const FFmpegToolset &toolset, const std::optional<QUrl> &outputDirectory,
              const std::optional<QString> &namingTemplate);

/// Cuts a file into the parts that SplitPlanner finds, by copying, one "cut" step each. A part
/// begins at a keyframe, so sizes are aims and not limits. Throws BuilderError (noSegments) when
/// there is no part.
JobPlan split(const VideoFile &file, const SplitParams &params,
              const std::optional<QUrl> &outputDirectory,
              const std::optional<QString> &namingTemplate);

} // namespace CommandBuilder
