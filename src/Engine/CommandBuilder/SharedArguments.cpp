// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/SharedArguments.h"

#include "Engine/OutputNaming.h"
#include "Engine/Text.h"
#include "Models/BlankTrimming.h"
#include "Models/Truncation.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// What a track of unknown rate is taken to have.
constexpr qint64 assumedAudioBps = 128'000;

constexpr qint64 defaultAudioKbps = 160;

/// A shape that a crop cuts to.
struct Ratio {
    qint64 width;
    qint64 height;
};

// None for the free shape, which has sides of its own.
std::optional<Ratio> ratioOf(CropSpec::Aspect aspect)
{
    switch (aspect) {
    case CropSpec::Aspect::free:
        return std::nullopt;
    case CropSpec::Aspect::ratio16x9:
        return Ratio{16, 9};
    case CropSpec::Aspect::ratio9x16:
        return Ratio{9, 16};
    case CropSpec::Aspect::ratio4x3:
        return Ratio{4, 3};
    case CropSpec::Aspect::ratio1x1:
        return Ratio{1, 1};
    }
    Q_UNREACHABLE();
}

bool isWiderThan(Ratio ratio, PictureSize size)
{
    return static_cast<double>(size.width) / static_cast<double>(size.height) >
           static_cast<double>(ratio.width) / static_cast<double>(ratio.height);
}

PictureSize cutToRatio(PictureSize size, Ratio ratio)
{
    if (isWiderThan(ratio, size)) {
        return {size.height * ratio.width / ratio.height, size.height};
    }
    return {size.width, size.width * ratio.height / ratio.width};
}

std::optional<PictureSize> freeCropSize(PictureSize size, const CropSpec &spec)
{
    if (spec.customWidth.value_or(0) < 1 || spec.customHeight.value_or(0) < 1) {
        return std::nullopt;
    }
    return PictureSize{std::min(size.width, *spec.customWidth),
                       std::min(size.height, *spec.customHeight)};
}

qint64 evenSide(qint64 side)
{
    return side < 4 ? 2 : side & ~qint64{1};
}

// The test and the height go by the source's size, even behind a crop.
std::optional<QString> scaleFilter(const VideoFile &file, std::optional<qint64> maxHeight)
{
    if (!file.width || !file.height) {
        return std::nullopt;
    }
    const bool isOdd = *file.width % 2 != 0 || *file.height % 2 != 0;
    const bool isTooTall = maxHeight && *maxHeight < *file.height;
    if (!isOdd && !isTooTall) {
        return std::nullopt;
    }
    const qint64 height = std::min(maxHeight.value_or(*file.height), *file.height);
    return u"scale=-2:"_s + QString::number(height);
}

bool hasReplacement(const AdvancedOptions &advanced, bool muted)
{
    return !muted && advanced.replacementAudioURL;
}

// A name that only begins with a dot has no extension.
QString extensionOf(const QUrl &url)
{
    const QFileInfo file(Text::path(url));
    return file.completeBaseName().isEmpty() ? QString() : file.suffix().toLower();
}

} // namespace

QStringList CommandBuilder::baseArgs()
{
    return {u"-hide_banner"_s, u"-nostdin"_s, u"-loglevel"_s, u"error"_s,
            u"-progress"_s,    u"pipe:1"_s,   u"-nostats"_s,  u"-y"_s};
}

QString CommandBuilder::formatMB(double megabytes)
{
    if (std::round(megabytes) == megabytes) {
        // No sign for a zero below zero.
        return Text::fixed(megabytes + 0.0, 0);
    }
    return Text::fixed(megabytes, 1);
}

bool CommandBuilder::hasVideo(const VideoFile &file)
{
    return file.videoCodec && file.width;
}

QUrl CommandBuilder::outputURL(const VideoFile &file, const QString &suffix, const QString &ext,
                               const std::optional<QUrl> &outputDirectory,
                               const std::optional<QString> &namingTemplate)
{
    const QString directory =
        outputDirectory ? Text::path(*outputDirectory) : QFileInfo(Text::path(file.url)).path();
    const QString name =
        OutputNaming::renderBase(file.url, suffix, ext, namingTemplate) + u'.' + ext;
    return OutputNaming::unique(QUrl::fromLocalFile(Text::joinedPath(directory, name)));
}

std::optional<qint64> CommandBuilder::effectiveWidth(const VideoFile &file,
                                                     const std::optional<CropSpec> &crop)
{
    if (!file.width || !file.height || *file.width < 1 || *file.height < 1 || !crop) {
        return file.width;
    }
    const std::optional<Ratio> ratio = ratioOf(crop->aspect);
    return ratio ? cutToRatio({*file.width, *file.height}, *ratio).width : *file.width;
}

QString CommandBuilder::passLogPrefix(const QUuid &fileID)
{
    return Text::joinedPath(QDir::tempPath(), u"mx-2pass-"_s + Text::uuid(fileID));
}

QStringList CommandBuilder::replacementInputArgs(const AdvancedOptions &advanced, bool muted)
{
    if (!hasReplacement(advanced, muted)) {
        return {};
    }
    return {u"-i"_s, Text::path(*advanced.replacementAudioURL)};
}

std::optional<QString> CommandBuilder::cropFilter(const CropSpec &spec,
                                                  std::optional<qint64> sourceWidth,
                                                  std::optional<qint64> sourceHeight)
{
    if (sourceWidth.value_or(0) < 1 || sourceHeight.value_or(0) < 1) {
        return std::nullopt;
    }
    const PictureSize source{*sourceWidth, *sourceHeight};
    const std::optional<Ratio> ratio = ratioOf(spec.aspect);
    const std::optional<PictureSize> size =
        ratio ? cutToRatio(source, *ratio) : freeCropSize(source, spec);
    if (!size) {
        return std::nullopt;
    }
    return u"crop=%1:%2:(iw-ow)/2:(ih-oh)/2"_s.arg(QString::number(evenSide(size->width)),
                                                   QString::number(evenSide(size->height)));
}

QStringList CommandBuilder::videoFilterArgs(const VideoFile &file, std::optional<qint64> maxHeight,
                                            const AdvancedOptions &advanced)
{
    QStringList filters;
    if (advanced.crop) {
        if (const auto crop = cropFilter(*advanced.crop, file.width, file.height)) {
            filters += *crop;
        }
    }
    if (const auto scale = scaleFilter(file, maxHeight)) {
        filters += *scale;
    }
    if (filters.isEmpty()) {
        return {};
    }
    return {u"-vf"_s, filters.join(u',')};
}

CommandBuilder::MapArgs CommandBuilder::replacementMapArgs(const AdvancedOptions &advanced,
                                                           bool muted, bool hasVideo)
{
    const QStringList video = hasVideo ? QStringList{u"-map"_s, u"0:v:0"_s} : QStringList();
    if (hasReplacement(advanced, muted)) {
        return {video + QStringList{u"-map"_s, u"1:a:0"_s, u"-shortest"_s}, video};
    }
    // A muted job keeps the audio map too: "-an" behind it drops the sound.
    return {video + QStringList{u"-map"_s, u"0:a?"_s}, video};
}

QStringList CommandBuilder::extraArgTokens(const AdvancedOptions &advanced)
{
    return advanced.extraArgs.split(u' ', Qt::SkipEmptyParts);
}

bool CommandBuilder::advancedNeedsVideoReencode(const AdvancedOptions &advanced)
{
    return advanced.crop || advanced.fpsCap || advanced.codec == CodecChoice::softwareX264 ||
           !trimmedOfBlanks(advanced.extraArgs).isEmpty();
}

QStringList CommandBuilder::pixelFormatArgs(const VideoFile &file, const AdvancedOptions &advanced,
                                            const QString &encoder)
{
    if (advanced.preserveAlpha && file.hasAlphaChannel) {
        return {u"-pix_fmt"_s, u"yuva444p10le"_s};
    }
    if (advanced.hdrPassthrough && file.isHDR && encoder == "hevc_videotoolbox"_L1) {
        return {u"-pix_fmt"_s,   u"p010le"_s,    u"-color_primaries"_s, u"bt2020"_s,
                u"-color_trc"_s, u"smpte2084"_s, u"-colorspace"_s,      u"bt2020nc"_s};
    }
    return {u"-pix_fmt"_s, u"yuv420p"_s};
}

qint64 CommandBuilder::sourceAudioBitrateBps(const VideoFile &file)
{
    if (file.audioStreams.isEmpty()) {
        return 0;
    }
    const qint64 declared = file.audioStreams.first().bitrateBps.value_or(0);
    return declared >= 1 ? declared : assumedAudioBps;
}

qint64 CommandBuilder::sourceVideoBitrateBps(const VideoFile &file)
{
    if (file.videoBitrateBps.value_or(0) > 0) {
        return *file.videoBitrateBps;
    }
    return std::max<qint64>(file.totalBitrateBps() - sourceAudioBitrateBps(file), 0);
}

qint64 CommandBuilder::shareOfSourceKbps(const VideoFile &file, double share)
{
    const double kbps = static_cast<double>(sourceVideoBitrateBps(file)) / 1000.0 * share;
    return truncated(std::max(kbps, lowestShareKbps));
}

QStringList CommandBuilder::qualityOrRateArgs(const AdvancedOptions &advanced,
                                              const QString &encoder, qint64 videoKbps)
{
    if (encoder == "libx264"_L1 && advanced.crf) {
        return {u"-crf"_s, QString::number(*advanced.crf)};
    }
    return {u"-b:v"_s, QString::number(videoKbps) + u'k'};
}

QString CommandBuilder::advancedEncoder(const AdvancedOptions &advanced,
                                        const FFmpegToolset &toolset, OutputContainer container)
{
    if (container == OutputContainer::webm) {
        return u"libvpx-vp9"_s;
    }
    return encoderForChoice(advanced.codec, toolset);
}

QString CommandBuilder::encoderForChoice(CodecChoice codec, const FFmpegToolset &toolset)
{
    switch (codec) {
    case CodecChoice::hevcVideoToolbox:
        return u"hevc_videotoolbox"_s;
    case CodecChoice::proresVideoToolbox:
        return u"prores_videotoolbox"_s;
    case CodecChoice::softwareX264:
        return toolset.encoders.contains(u"libx264"_s) ? u"libx264"_s : u"h264_videotoolbox"_s;
    // AV1 has no argument path in the builders that ask here: it falls to H.264 on purpose.
    case CodecChoice::svtAV1:
    case CodecChoice::automatic:
    case CodecChoice::h264VideoToolbox:
        return u"h264_videotoolbox"_s;
    }
    Q_UNREACHABLE();
}

std::optional<CommandBuilder::ConvertAudioSpec>
CommandBuilder::convertAudioSpec(const VideoFile &file, const ConvertParams &params,
                                 OutputContainer container)
{
    if (file.audioStreams.isEmpty()) {
        return std::nullopt;
    }
    const QString source = file.audioStreams.first().codec.toLower();
    const QSet<QString> &copyable = CodecCompat::audioByContainer(container);
    switch (params.audioFormat) {
    case ConvertParams::AudioFormat::keep:
        return std::nullopt;
    case ConvertParams::AudioFormat::aac:
        if (source == "aac"_L1) {
            return std::nullopt;
        }
        return copyable.contains(u"aac"_s) ? ConvertAudioSpec{u"aac"_s, u"aac"_s}
                                           : ConvertAudioSpec{u"libopus"_s, u"opus"_s};
    case ConvertParams::AudioFormat::mp3:
        if (source == "mp3"_L1) {
            return std::nullopt;
        }
        return ConvertAudioSpec{u"libmp3lame"_s, u"mp3"_s};
    case ConvertParams::AudioFormat::wav:
        // Even a PCM source is encoded anew.
        return ConvertAudioSpec{u"pcm_s16le"_s, u"wav"_s};
    case ConvertParams::AudioFormat::flac:
        return copyable.contains(u"flac"_s) ? ConvertAudioSpec{u"flac"_s, u"flac"_s}
                                            : ConvertAudioSpec{u"aac"_s, u"aac"_s};
    }
    Q_UNREACHABLE();
}

qint64 CommandBuilder::encodedAudioKbps(const AdvancedOptions &advanced)
{
    return advanced.audioBitrateKbps.value_or(defaultAudioKbps);
}

std::optional<QString> CommandBuilder::firstAudioCodec(const VideoFile &file)
{
    if (file.audioStreams.isEmpty()) {
        return std::nullopt;
    }
    return file.audioStreams.first().codec;
}

QStringList CommandBuilder::mp4AudioArgs(const VideoFile &file, const AdvancedOptions &advanced)
{
    const bool isCopied = !advanced.replacementAudioURL && !advanced.audioBitrateKbps &&
                          CodecCompat::audioOK(firstAudioCodec(file), OutputContainer::mp4);
    if (isCopied) {
        return QStringList{u"-c:a"_s, u"copy"_s} + volumeArgs(advanced);
    }
    return QStringList{u"-c:a"_s, u"aac"_s, u"-b:a"_s,
                       QString::number(encodedAudioKbps(advanced)) + u'k'} +
           volumeArgs(advanced);
}

QStringList CommandBuilder::rateArgs(const AdvancedOptions &advanced)
{
    if (advanced.fpsCap.value_or(0) < 1) {
        return {};
    }
    return {u"-r"_s, QString::number(*advanced.fpsCap)};
}

QStringList CommandBuilder::volumeArgs(const AdvancedOptions &advanced)
{
    if (!advanced.volumeDb) {
        return {};
    }
    return {u"-af"_s, u"volume=%1dB"_s.arg(Text::fixed(*advanced.volumeDb, 1))};
}

QStringList CommandBuilder::mp4VideoArgs(const VideoFile &file, const AdvancedOptions &advanced,
                                         const FFmpegToolset &toolset, qint64 videoKbps)
{
    if (!hasVideo(file)) {
        return {};
    }
    const QString encoder = advancedEncoder(advanced, toolset, OutputContainer::mp4);
    return QStringList{u"-map"_s, u"0:v:0"_s, u"-c:v"_s, encoder} +
           qualityOrRateArgs(advanced, encoder, videoKbps) +
           pixelFormatArgs(file, advanced, encoder);
}

QStringList CommandBuilder::fastStartArgs()
{
    return {u"-movflags"_s, u"+faststart"_s};
}

QStringList CommandBuilder::fastStartArgs(const QString &extension)
{
    static const QSet<QString> kinds{u"mp4"_s, u"mov"_s, u"m4v"_s};
    return kinds.contains(extension) ? fastStartArgs() : QStringList();
}

QString CommandBuilder::cutExtension(const VideoFile &file)
{
    static const QSet<QString> kept{u"mp4"_s, u"mov"_s, u"mkv"_s, u"webm"_s,
                                    u"avi"_s, u"m4v"_s, u"ts"_s};
    const QString extension = extensionOf(file.url);
    return kept.contains(extension) ? extension : u"mp4"_s;
}

double CommandBuilder::segmentLength(const TrimSegment &segment)
{
    return std::max(segment.end - segment.start, 0.0);
}

QStringList CommandBuilder::segmentSeekArgs(const TrimSegment &segment)
{
    return {u"-ss"_s, Text::fixed(segment.start, 3), u"-t"_s,
            Text::fixed(segmentLength(segment), 3)};
}

FFmpegStep CommandBuilder::copyCutStep(const VideoFile &file, const TrimSegment &segment,
                                       const QUrl &output)
{
    FFmpegStep step;
    step.label = u"cut"_s;
    step.args << baseArgs() << segmentSeekArgs(segment) << u"-i"_s << Text::path(file.url);
    if (hasVideo(file)) {
        step.args << u"-map"_s << u"0:v:0"_s;
    }
    // What stands between the keyframe and the start has negative times: they are moved up, since
    // players disagree on them.
    step.args << u"-map"_s << u"0:a?"_s << u"-c"_s << u"copy"_s << u"-avoid_negative_ts"_s
              << u"make_zero"_s << fastStartArgs(cutExtension(file)) << Text::path(output);
    step.progressDuration = segmentLength(segment);
    return step;
}

PrepFile CommandBuilder::concatList(const QUrl &url, const QList<QUrl> &files)
{
    QString content;
    for (const QUrl &file : files) {
        content += u"file '"_s + Text::path(file) + u"'\n"_s;
    }
    return {url, content};
}
