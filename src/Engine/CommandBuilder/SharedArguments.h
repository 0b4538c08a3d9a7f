// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/CommandBuilder/BuilderError.h"
#include "Engine/FFmpegToolset.h"
#include "Models/JobParams.h"
#include "Models/JobPlan.h"
#include "Models/VideoFile.h"

#include <QString>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <optional>

/// The pieces of a command line that the builders share. Every encoding line is laid out as: base,
/// seek, input, replacement input, maps, video codec, filter, audio, container flags, rate, extra
/// arguments, output; a builder that departs from it says so.
namespace CommandBuilder {

/// The head of every command line. The progress stream goes to standard output, and standard error
/// is kept down to real messages.
QStringList baseArgs();

/// Megabytes as they stand in output names: "25", "25.5".
QString formatMB(double megabytes);

/// Whether the file has a picture that a builder can work with.
bool hasVideo(const VideoFile &file);

/// The name-and-place rule of all actions: beside the source, or in `outputDirectory`, at a name
/// that is free.
QUrl outputURL(const VideoFile &file, const QString &suffix, const QString &ext,
               const std::optional<QUrl> &outputDirectory,
               const std::optional<QString> &namingTemplate);

/// The picture's width after the crop, without even rounding; a free crop doesn't count. Absent
/// when the file's width is.
std::optional<qint64> effectiveWidth(const VideoFile &file, const std::optional<CropSpec> &crop);

/// Path of the pass log, without the "-0.log" that x264 adds. The same for all passes and retries
/// of a file.
QString passLogPrefix(const QUuid &fileID);

/// The replacement audio as input 1; goes right behind the main input. Empty when muted.
QStringList replacementInputArgs(const AdvancedOptions &advanced, bool muted);

/// The centred crop filter; absent when the size isn't known or a free crop lacks a side.
std::optional<QString> cropFilter(const CropSpec &spec, std::optional<qint64> sourceWidth,
                                  std::optional<qint64> sourceHeight);

/// "-vf" with crop, then scale; empty when neither is needed. An odd-sized picture is rescaled at
/// its own height, which mends an odd width; an odd height stays, for the encoder to refuse.
QStringList videoFilterArgs(const VideoFile &file, std::optional<qint64> maxHeight,
                            const AdvancedOptions &advanced);

/// Stream maps: `full` for a command that writes audio, `videoOnly` for the first of two passes.
struct MapArgs {
    QStringList full;
    QStringList videoOnly;

    bool operator==(const MapArgs &) const = default;
};
MapArgs replacementMapArgs(const AdvancedOptions &advanced, bool muted, bool hasVideo);

/// The user's extra arguments, split at blanks; no quoting of any kind, tabs stay.
QStringList extraArgTokens(const AdvancedOptions &advanced);

/// Whether the advanced options rule out a copy of the picture.
bool advancedNeedsVideoReencode(const AdvancedOptions &advanced);

/// "-pix_fmt" and what goes with it: alpha, HDR passthrough (by HEVC on VideoToolbox only) or plain
/// 4:2:0.
QStringList pixelFormatArgs(const VideoFile &file, const AdvancedOptions &advanced,
                            const QString &encoder);

/// Bits per second of the source's sound: the first track's, 128000 where it isn't known, 0 without
/// a track.
qint64 sourceAudioBitrateBps(const VideoFile &file);

/// Bits per second of the source's picture: what is declared, else what the sound leaves of the
/// whole; never below 0.
qint64 sourceVideoBitrateBps(const VideoFile &file);

/// The kilobits per second below which no encode at a share of the source's rate goes.
inline constexpr double lowestShareKbps = 300.0;

/// A share of the source's picture rate in whole kilobits per second, never below lowestShareKbps.
qint64 shareOfSourceKbps(const VideoFile &file, double share);

/// "-crf" where the encoder is x264 and a factor is chosen, else "-b:v" at the rate.
QStringList qualityOrRateArgs(const AdvancedOptions &advanced, const QString &encoder,
                              qint64 videoKbps);

/// The encoder for a choice and a container.
QString advancedEncoder(const AdvancedOptions &advanced, const FFmpegToolset &toolset,
                        OutputContainer container);

/// The encoder for a choice where the container doesn't rule it.
QString encoderForChoice(CodecChoice codec, const FFmpegToolset &toolset);

/// What to encode the audio to; `ext` is the extension of a file of that kind.
struct ConvertAudioSpec {
    QString codec;
    QString ext;

    bool operator==(const ConvertAudioSpec &) const = default;
};
/// Absent means that the audio is copied.
std::optional<ConvertAudioSpec> convertAudioSpec(const VideoFile &file, const ConvertParams &params,
                                                 OutputContainer container);

/// Kilobits per second of sound that is encoded where the action has no budget of its own: the
/// chosen rate, or 160.
qint64 encodedAudioKbps(const AdvancedOptions &advanced);

/// The first audio track's codec; absent without a track.
std::optional<QString> firstAudioCodec(const VideoFile &file);

/// The audio group of an MP4 that keeps its sound: a copy where the first track fits and no option
/// asks for another, else AAC; then the gain, which ffmpeg refuses behind a copy.
QStringList mp4AudioArgs(const VideoFile &file, const AdvancedOptions &advanced);

/// "-r" with the frame-rate cap, when there is one of at least 1.
QStringList rateArgs(const AdvancedOptions &advanced);

/// "-af" with the gain, when there is one.
QStringList volumeArgs(const AdvancedOptions &advanced);

/// The picture of an MP4 that enhance() and adjust() make, map included; empty when the file has
/// none.
QStringList mp4VideoArgs(const VideoFile &file, const AdvancedOptions &advanced,
                         const FFmpegToolset &toolset, qint64 videoKbps);

/// Puts the index at the head of an MP4, so that it plays while it loads.
QStringList fastStartArgs();

/// The same, for an output that keeps its source's container: empty but for "mp4", "mov" and "m4v".
QStringList fastStartArgs(const QString &extension);

/// The extension of a part that is cut out of the file: the source's in lower case, "mp4" where
/// parts aren't written in the source's container.
QString cutExtension(const VideoFile &file);

/// Seconds from the start to the end, never below 0.
double segmentLength(const TrimSegment &segment);

/// Seek and length before the input: the reader makes the cut.
QStringList segmentSeekArgs(const TrimSegment &segment);

/// The step "cut": one segment by copy, from the keyframe before its start.
FFmpegStep copyCutStep(const VideoFile &file, const TrimSegment &segment, const QUrl &output);

/// The list that the concat demuxer reads. A quote in a path isn't escaped and ends the path early.
PrepFile concatList(const QUrl &url, const QList<QUrl> &files);

} // namespace CommandBuilder
