// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/Text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

// The raw AAC choice lands in an M4A file, too.
QString extensionFor(ExtractParams::AudioFormat format)
{
    switch (format) {
    case ExtractParams::AudioFormat::m4a:
    case ExtractParams::AudioFormat::aac:
        return u"m4a"_s;
    case ExtractParams::AudioFormat::mp3:
        return u"mp3"_s;
    case ExtractParams::AudioFormat::wav:
        return u"wav"_s;
    }
    Q_UNREACHABLE();
}

const AudioStream &chosenTrack(const VideoFile &file, qint64 index)
{
    return file.audioStreams.at(std::clamp<qint64>(index, 0, file.audioStreams.size() - 1));
}

// The other formats are encoded even from a track of their own kind: they are asked for by name.
bool isCopied(const AudioStream &track, ExtractParams::AudioFormat format)
{
    return format == ExtractParams::AudioFormat::m4a &&
           CodecCompat::audioOK(track.codec, OutputContainer::mp4);
}

QStringList encodeArgs(const ExtractParams &params)
{
    const QStringList rate{u"-b:a"_s, QString::number(params.bitrateKbps) + u'k'};
    switch (params.format) {
    case ExtractParams::AudioFormat::m4a:
    case ExtractParams::AudioFormat::aac:
        return QStringList{u"-c:a"_s, u"aac"_s} + rate;
    case ExtractParams::AudioFormat::mp3:
        return QStringList{u"-c:a"_s, u"libmp3lame"_s} + rate;
    case ExtractParams::AudioFormat::wav:
        return {u"-c:a"_s, u"pcm_s16le"_s};
    }
    Q_UNREACHABLE();
}

QStringList codecArgs(const AudioStream &track, const ExtractParams &params)
{
    return isCopied(track, params.format) ? QStringList{u"-c:a"_s, u"copy"_s} : encodeArgs(params);
}

} // namespace

JobPlan extract(const VideoFile &file, const ExtractParams &params,
                const std::optional<QUrl> &outputDirectory,
                const std::optional<QString> &namingTemplate)
{
    if (file.audioStreams.isEmpty()) {
        throw BuilderError(BuilderError::Case::noAudioTrack);
    }
    const AudioStream &track = chosenTrack(file, params.audioTrackIndex);
    const QUrl output =
        outputURL(file, u"audio"_s, extensionFor(params.format), outputDirectory, namingTemplate);
    FFmpegStep step;
    step.label = u"extract"_s;
    step.args << baseArgs() << u"-i"_s << Text::path(file.url) << u"-vn"_s << u"-map"_s
              << u"0:"_s + QString::number(track.index) << codecArgs(track, params)
              << Text::path(output);
    step.progressDuration = file.durationSeconds;

    JobPlan plan;
    plan.steps = {step};
    plan.finalOutputURLs = {output};
    plan.badgeKey = isCopied(track, params.format) ? u"extract.direct"_s : u"extract.transcode"_s;
    return plan;
}

} // namespace CommandBuilder
