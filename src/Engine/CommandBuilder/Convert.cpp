// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/Text.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

// Of the source's video rate, when the picture is encoded anew.
constexpr double keptShare = 0.85;

// There is no mute in a conversion.
constexpr bool notMuted = false;

/// How much of the source is copied.
enum class Grade { remux, partial, reencode };

/// A conversion with the decisions that its groups share.
struct Conversion {
    VideoFile file;
    OutputContainer container = OutputContainer::mp4;
    AdvancedOptions advanced;
    FFmpegToolset toolset;
    Grade grade = Grade::remux;
    /// What the user wants the audio to become; absent for a copy.
    std::optional<ConvertAudioSpec> audioSpec;
    QUrl output;
};

bool sourceAudioFits(const VideoFile &file, OutputContainer container)
{
    return CodecCompat::audioOK(firstAudioCodec(file), container);
}

bool isAudioTouched(const AdvancedOptions &advanced, const std::optional<ConvertAudioSpec> &spec)
{
    return spec || advanced.audioBitrateKbps || advanced.volumeDb || advanced.replacementAudioURL;
}

// A crop or the like only bars the remux: the picture is copied all the same and the crop dropped.
// Forcing the encode is the way to make it apply.
Grade gradeOf(const VideoFile &file, const ConvertParams &params,
              const std::optional<ConvertAudioSpec> &spec)
{
    if (params.forceReencode || !CodecCompat::videoOK(file.videoCodec, params.container)) {
        return Grade::reencode;
    }
    const bool isRemux = !isAudioTouched(params.advanced, spec) &&
                         sourceAudioFits(file, params.container) &&
                         !advancedNeedsVideoReencode(params.advanced);
    return isRemux ? Grade::remux : Grade::partial;
}

QString badgeKey(Grade grade)
{
    switch (grade) {
    case Grade::remux:
        return u"convert.badge.remux"_s;
    case Grade::partial:
        return u"convert.badge.partial"_s;
    case Grade::reencode:
        return u"convert.badge.reencode"_s;
    }
    Q_UNREACHABLE();
}

bool isQuickTimeFamily(OutputContainer container)
{
    return container == OutputContainer::mp4 || container == OutputContainer::mov;
}

QStringList inputArgs(const Conversion &conversion)
{
    return QStringList{u"-i"_s, Text::path(conversion.file.url)} +
           replacementInputArgs(conversion.advanced, notMuted);
}

// A picture that is encoded anew takes no audio of the source along: beside its map, ffmpeg picks
// none by itself. Only a source without a picture, which has no map at all, keeps its sound.
QStringList audioMapArgs(const Conversion &conversion)
{
    if (conversion.advanced.replacementAudioURL) {
        return {u"-map"_s, u"1:a:0"_s, u"-shortest"_s};
    }
    if (conversion.grade != Grade::reencode && !conversion.file.audioStreams.isEmpty()) {
        return {u"-map"_s, u"0:a"_s};
    }
    return {};
}

QStringList mapArgs(const Conversion &conversion)
{
    QStringList args;
    if (hasVideo(conversion.file)) {
        args << u"-map"_s << u"0:v:0"_s;
    }
    return args + audioMapArgs(conversion);
}

QStringList videoCodecArgs(const Conversion &conversion)
{
    const AdvancedOptions &advanced = conversion.advanced;
    const QString encoder = advancedEncoder(advanced, conversion.toolset, conversion.container);
    const qint64 kbps = shareOfSourceKbps(conversion.file, keptShare);
    const QStringList codec{u"-c:v"_s, encoder};
    if (conversion.container == OutputContainer::webm) {
        return codec + QStringList{u"-b:v"_s, QString::number(kbps) + u'k', u"-row-mt"_s, u"1"_s};
    }
    return codec + qualityOrRateArgs(advanced, encoder, kbps) +
           pixelFormatArgs(conversion.file, advanced, encoder);
}

QStringList encodedAudioArgs(const QString &codec, const AdvancedOptions &advanced)
{
    return {u"-c:a"_s, codec, u"-b:a"_s, QString::number(encodedAudioKbps(advanced)) + u'k'};
}

QStringList askedAudioArgs(const QString &codec, const AdvancedOptions &advanced)
{
    static const QSet<QString> ratelessCodecs{u"pcm_s16le"_s, u"flac"_s};
    if (ratelessCodecs.contains(codec)) {
        return {u"-c:a"_s, codec};
    }
    return encodedAudioArgs(codec, advanced);
}

QStringList audioCodecArgs(const Conversion &conversion)
{
    const AdvancedOptions &advanced = conversion.advanced;
    // Beside a copied picture only: an encode of the picture writes no group for a replacement.
    if (advanced.replacementAudioURL) {
        return encodedAudioArgs(u"aac"_s, advanced);
    }
    if (conversion.audioSpec) {
        return askedAudioArgs(conversion.audioSpec->codec, advanced);
    }
    if (conversion.file.audioStreams.isEmpty()) {
        return {};
    }
    if (!advanced.audioBitrateKbps && sourceAudioFits(conversion.file, conversion.container)) {
        return {u"-c:a"_s, u"copy"_s};
    }
    const bool isWebm = conversion.container == OutputContainer::webm;
    return encodedAudioArgs(isWebm ? u"libopus"_s : u"aac"_s, advanced);
}

// The gain stands even behind a copy, which ffmpeg then refuses.
QStringList audioArgs(const Conversion &conversion)
{
    const QStringList codec = audioCodecArgs(conversion);
    return codec.isEmpty() ? codec : codec + volumeArgs(conversion.advanced);
}

// A replacement beside a picture that is encoded anew goes to the container's own audio encoder.
QStringList reencodeArgs(const Conversion &conversion)
{
    const QStringList video = videoCodecArgs(conversion) +
                              videoFilterArgs(conversion.file, std::nullopt, conversion.advanced);
    return conversion.advanced.replacementAudioURL ? video : video + audioArgs(conversion);
}

QStringList codecArgs(const Conversion &conversion)
{
    switch (conversion.grade) {
    case Grade::remux:
        return {u"-c"_s, u"copy"_s};
    case Grade::partial:
        return QStringList{u"-c:v"_s, u"copy"_s} + audioArgs(conversion);
    case Grade::reencode:
        return reencodeArgs(conversion);
    }
    Q_UNREACHABLE();
}

bool isText(const SubtitleStream &stream)
{
    static const QSet<QString> textCodecs{u"subrip"_s, u"srt"_s, u"ass"_s, u"ssa"_s, u"webvtt"_s};
    return textCodecs.contains(stream.codec.toLower());
}

// MP4 and MOV have text subtitles only: one bitmap track among them drops them all.
QStringList subtitleArgs(const Conversion &conversion)
{
    if (!hasVideo(conversion.file)) {
        return {};
    }
    const QList<SubtitleStream> &streams = conversion.file.subtitleStreams;
    const bool isAllText =
        !streams.isEmpty() && std::all_of(streams.cbegin(), streams.cend(), isText);
    if (isQuickTimeFamily(conversion.container) && isAllText) {
        return {u"-map"_s, u"0:s?"_s, u"-c:s"_s, u"mov_text"_s};
    }
    if (conversion.container == OutputContainer::mkv) {
        return {u"-map"_s, u"0:s?"_s, u"-c:s"_s, u"copy"_s};
    }
    return {};
}

QStringList containerArgs(OutputContainer container)
{
    return isQuickTimeFamily(container) ? fastStartArgs() : QStringList();
}

QStringList commandLine(const Conversion &conversion)
{
    return baseArgs() + inputArgs(conversion) + mapArgs(conversion) + codecArgs(conversion) +
           subtitleArgs(conversion) + containerArgs(conversion.container) +
           rateArgs(conversion.advanced) + extraArgTokens(conversion.advanced) +
           QStringList{Text::path(conversion.output)};
}

} // namespace

JobPlan convert(const VideoFile &file, const ConvertParams &params, const FFmpegToolset &toolset,
                const std::optional<QUrl> &outputDirectory,
                const std::optional<QString> &namingTemplate)
{
    const bool isWebm = params.container == OutputContainer::webm;
    if (isWebm && !toolset.encoders.contains(u"libvpx-vp9"_s)) {
        throw BuilderError(BuilderError::Case::vp9Unavailable);
    }
    const QString ext = rawValue(params.container);
    const auto audioSpec = convertAudioSpec(file, params, params.container);
    const Conversion conversion{
        .file = file,
        .container = params.container,
        .advanced = params.advanced,
        .toolset = toolset,
        .grade = gradeOf(file, params, audioSpec),
        .audioSpec = audioSpec,
        .output = outputURL(file, ext.toUpper(), ext, outputDirectory, namingTemplate)};

    FFmpegStep step;
    step.label = u"convert"_s;
    step.args = commandLine(conversion);
    step.progressDuration = file.durationSeconds;

    JobPlan plan;
    plan.steps = {step};
    plan.finalOutputURLs = {conversion.output};
    plan.badgeKey = badgeKey(conversion.grade);
    return plan;
}

} // namespace CommandBuilder
