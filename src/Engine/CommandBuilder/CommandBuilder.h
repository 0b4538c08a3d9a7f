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

/// Changes the container and encodes only what the new one can't hold. One step, "convert", in one
/// of three grades that the badge names: all copied, the picture copied, or all encoded anew.
/// Throws BuilderError (vp9Unavailable) for WebM on a build without libvpx-vp9.
JobPlan convert(const VideoFile &file, const ConvertParams &params, const FFmpegToolset &toolset,
                const std::optional<QUrl> &outputDirectory,
                const std::optional<QString> &namingTemplate);

/// Shrinks a film by quality rather than to a size. One step, "compress"; always an MP4. Without a
/// toolset x264 counts as unavailable. Never throws.
JobPlan compress(const VideoFile &file, const CompressParams &params,
                 const std::optional<FFmpegToolset> &toolset,
                 const std::optional<QUrl> &outputDirectory,
                 const std::optional<QString> &namingTemplate);

/// How far compress() goes.
struct CompressMeasure {
    /// Share of the source's video rate that is kept.
    double share = 1;
    /// Height cap in pixels, unchecked: a custom one may be above the source's height, or below 1.
    std::optional<qint64> maxHeight;

    bool operator==(const CompressMeasure &) const = default;
};
CompressMeasure compressMeasure(const VideoFile &file, const CompressParams &params);

/// The video rate of compress() in kilobits per second: the share of the source's, less as the cap
/// takes pixels away, never below 300.
qint64 compressVideoKbps(const VideoFile &file, const CompressParams &params);

/// The encoder of compress() where no alpha is kept: the automatic choice leaves HEVC in HEVC.
QString compressEncoder(const VideoFile &file, CodecChoice codec,
                        const std::optional<FFmpegToolset> &toolset);

/// Takes one audio track out as a file, by copy where an M4A is wanted and takes it. A track beyond
/// the list counts as the nearest. Throws BuilderError::noAudioTrack.
JobPlan extract(const VideoFile &file, const ExtractParams &params,
                const std::optional<QUrl> &outputDirectory,
                const std::optional<QString> &namingTemplate);

/// Keeps the segments in the order of their starts, as one joined file or one file each: by copy
/// from keyframes, or encoded where the parameters ask for it. Segments of up to 0.05 seconds are
/// left out. Throws BuilderError::noSegments when none is left.
JobPlan trim(const VideoFile &file, const TrimParams &params,
             const std::optional<QUrl> &outputDirectory,
             const std::optional<QString> &namingTemplate);

/// Makes an animated GIF of a stretch, over a palette of its own. Never throws.
JobPlan gif(const VideoFile &file, const GifParams &params,
            const std::optional<QUrl> &outputDirectory,
            const std::optional<QString> &namingTemplate);

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
