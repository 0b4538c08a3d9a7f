// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ProbeService.h"

#include "Engine/ProbeJson.h"
#include "Engine/ProcessRunner.h"
#include "Engine/Text.h"
#include "Models/BlankTrimming.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

std::optional<qint64> readInteger(const std::optional<QString> &text)
{
    return text ? Text::toInteger(*text) : std::nullopt;
}

double readDuration(const ProbeJson &document)
{
    if (!document.format || !document.format->duration) {
        return 0;
    }
    return Text::toDouble(*document.format->duration).value_or(0);
}

qint64 readSize(const ProbeJson &document, const QUrl &url)
{
    const qint64 told = document.format ? readInteger(document.format->size).value_or(0) : 0;
    return told != 0 ? told : QFileInfo(Text::path(url)).size();
}

bool isHDRTransfer(const std::optional<QString> &transfer)
{
    return transfer && (*transfer == "smpte2084"_L1 || *transfer == "arib-std-b67"_L1 ||
                        *transfer == "smpte2084hlg"_L1);
}

bool isAlphaFormat(const std::optional<QString> &pixelFormat)
{
    static constexpr std::array prefixes{"yuva"_L1, "rgba"_L1, "argb"_L1, "bgra"_L1, "pala"_L1};
    const QString lowered = pixelFormat.value_or(QString()).toLower();
    return std::ranges::any_of(
        prefixes, [&](QLatin1StringView prefix) { return lowered.startsWith(prefix); });
}

// Whatever video stream first names its codec is the video, cover art included.
void takeVideo(const ProbeJson::Stream &stream, VideoFile &file)
{
    if (file.videoCodec) {
        return;
    }
    file.width = stream.width;
    file.height = stream.height;
    file.videoCodec = stream.codecName;
    file.videoBitrateBps = readInteger(stream.bitRate);
    file.fps = ProbeService::parseFrameRate(stream.averageFrameRate);
    file.isHDR = isHDRTransfer(stream.colorTransfer);
    file.hasAlphaChannel = isAlphaFormat(stream.pixelFormat);
}

std::optional<QString> languageOf(const ProbeJson::Stream &stream)
{
    return stream.tags ? stream.tags->language : std::nullopt;
}

AudioStream audioStream(const ProbeJson::Stream &stream)
{
    return {.index = stream.index,
            .codec = stream.codecName.value_or(QString()),
            .bitrateBps = readInteger(stream.bitRate),
            .channels = stream.channels,
            .language = languageOf(stream),
            .isDefault = stream.disposition && stream.disposition->isDefault == 1};
}

SubtitleStream subtitleStream(const ProbeJson::Stream &stream)
{
    return {.index = stream.index,
            .codec = stream.codecName.value_or(QString()),
            .language = languageOf(stream)};
}

void takeStream(const ProbeJson::Stream &stream, VideoFile &file)
{
    if (stream.codecType == "video"_L1) {
        takeVideo(stream, file);
    } else if (stream.codecType == "audio"_L1) {
        file.audioStreams.append(audioStream(stream));
    } else if (stream.codecType == "subtitle"_L1) {
        file.subtitleStreams.append(subtitleStream(stream));
    }
}

ProbeJson decodeDocument(const QString &json)
{
    try {
        return ProbeJson::decode(json);
    } catch (const Json::DecodeError &error) {
        throw ProbeService::ProbeError(u"probe decode failed: "_s + error.errorDescription());
    }
}

} // namespace

VideoFile ProbeService::probe(const QUrl &url, const QUrl &ffprobeURL,
                              const ProcessRunner::OnSpawn &onSpawn)
{
    const ProcessResult result =
        ProcessRunner::runSync(ffprobeURL,
                               {u"-v"_s, u"error"_s, u"-print_format"_s, u"json"_s,
                                u"-show_format"_s, u"-show_streams"_s, Text::path(url)},
                               onSpawn);
    if (result.exitCode == 0 && !result.standardOutput.isEmpty()) {
        return parse(result.standardOutput, url);
    }
    throw ProbeError(result.standardError.isEmpty()
                         ? u"ffprobe failed"_s
                         : Text::lastCharacters(result.standardError, 300));
}

VideoFile ProbeService::parse(const QString &json, const QUrl &url)
{
    const ProbeJson document = decodeDocument(json);
    VideoFile file;
    file.url = url;
    file.durationSeconds = readDuration(document);
    file.fileSizeBytes = readSize(document, url);
    for (const ProbeJson::Stream &stream : document.streams.value_or(QList<ProbeJson::Stream>())) {
        takeStream(stream, file);
    }
    if (document.format) {
        file.containerName = document.format->formatName.value_or(QString());
    }
    return file;
}

QList<double> ProbeService::keyframeTimes(const QUrl &url, const QUrl &ffprobeURL,
                                          const ProcessRunner::OnSpawn &onSpawn)
{
    const ProcessResult result = ProcessRunner::runSync(
        ffprobeURL,
        {u"-v"_s, u"error"_s, u"-select_streams"_s, u"v:0"_s, u"-skip_frame"_s, u"nokey"_s,
         u"-show_entries"_s, u"frame=pts_time"_s, u"-of"_s, u"csv=p=0"_s, Text::path(url)},
        onSpawn);
    if (result.exitCode != 0) {
        throw ProbeError(Text::lastCharacters(result.standardError, 200));
    }
    QList<double> times;
    for (const QStringView line :
         QStringView(result.standardOutput).split(u'\n', Qt::SkipEmptyParts)) {
        if (const std::optional<double> time = Text::toDouble(trimmedOfBlanks(line))) {
            times.append(*time);
        }
    }
    return times;
}

std::optional<double> ProbeService::parseFrameRate(const std::optional<QString> &text)
{
    if (!text || text->isEmpty() || *text == "0/0"_L1) {
        return std::nullopt;
    }
    const QList<QStringView> pieces = QStringView(*text).split(u'/', Qt::SkipEmptyParts);
    if (pieces.size() == 2) {
        const std::optional<double> numerator = Text::toDouble(pieces.at(0));
        const std::optional<double> denominator = Text::toDouble(pieces.at(1));
        if (numerator && denominator && *denominator > 0) {
            return *numerator / *denominator;
        }
    }
    return Text::toDouble(*text);
}
