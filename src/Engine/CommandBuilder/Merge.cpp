// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/MergePlanner.h"
#include "Engine/Text.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

constexpr qint64 kbpsOfUnknownRate = 4000;

/// A merge with all that its groups share.
struct Merge {
    QList<VideoFile> files;
    MergeParams params;
    QUrl output;
    double duration = 0;
};

double summedDuration(const QList<VideoFile> &files)
{
    double sum = 0;
    for (const VideoFile &file : files) {
        sum += file.durationSeconds;
    }
    return sum;
}

QStringList containerFlags(OutputContainer container)
{
    return fastStartArgs(rawValue(container));
}

// A place that no other run has.
QString temporaryFolder()
{
    return Text::joinedPath(QDir::tempPath(), u"mx-merge-"_s + Text::uuid(QUuid::createUuid()));
}

QList<QUrl> placesOf(const QList<VideoFile> &files)
{
    QList<QUrl> places;
    for (const VideoFile &file : files) {
        places += file.url;
    }
    return places;
}

// The advanced options have no place in a copy, extra arguments included.
FFmpegStep concatStep(const Merge &merge, const QUrl &list)
{
    FFmpegStep step;
    step.label = u"concat"_s;
    step.args << baseArgs() << u"-f"_s << u"concat"_s << u"-safe"_s << u"0"_s << u"-i"_s
              << Text::path(list) << u"-c"_s << u"copy"_s << containerFlags(merge.params.container)
              << Text::path(merge.output);
    step.progressDuration = merge.duration;
    return step;
}

JobPlan copyPlan(const Merge &merge)
{
    const QString folder = temporaryFolder();
    const QUrl list = QUrl::fromLocalFile(Text::joinedPath(folder, u"concat.txt"_s));

    JobPlan plan;
    plan.steps = {concatStep(merge, list)};
    plan.finalOutputURLs = {merge.output};
    plan.badgeKey = u"merge.badge.copy"_s;
    plan.prepFiles = {concatList(list, placesOf(merge.files))};
    plan.createDirs = {QUrl::fromLocalFile(folder)};
    plan.cleanupURLs = {list, QUrl::fromLocalFile(folder)};
    return plan;
}

QStringList inputArgs(const QList<VideoFile> &files)
{
    QStringList args;
    for (const VideoFile &file : files) {
        args << u"-i"_s << Text::path(file.url);
    }
    return args;
}

// One file without sound leaves the whole output without.
bool allHaveAudio(const QList<VideoFile> &files)
{
    return std::ranges::none_of(files,
                                [](const VideoFile &file) { return file.audioStreams.isEmpty(); });
}

// Each picture is fitted into the canvas, black around it.
QString pictureFilter(qsizetype input, PictureSize canvas)
{
    const QString size = QString::number(canvas.width) + u':' + QString::number(canvas.height);
    return u"[%1:v]scale=%2:force_original_aspect_ratio=decrease,pad=%2:(ow-iw)/2:(oh-ih)/2,"
           "setsar=1[v%1]"_s.arg(QString::number(input), size);
}

QString soundFilter(qsizetype input)
{
    return u"[%1:a]aresample=48000,aformat=channel_layouts=stereo[a%1]"_s.arg(
        QString::number(input));
}

QString concatFilter(qsizetype inputs, bool hasAudio)
{
    QString labels;
    for (qsizetype i = 0; i < inputs; ++i) {
        labels += u"[v%1]"_s.arg(QString::number(i));
        if (hasAudio) {
            labels += u"[a%1]"_s.arg(QString::number(i));
        }
    }
    const QString outputs = hasAudio ? u":v=1:a=1[v][a]"_s : u":v=1:a=0[v]"_s;
    return labels + u"concat=n="_s + QString::number(inputs) + outputs;
}

QString filterGraph(const QList<VideoFile> &files)
{
    const PictureSize canvas = MergePlanner::canvas(files);
    const bool hasAudio = allHaveAudio(files);
    QStringList parts;
    for (qsizetype i = 0; i < files.size(); ++i) {
        parts += pictureFilter(i, canvas);
        if (hasAudio) {
            parts += soundFilter(i);
        }
    }
    parts += concatFilter(files.size(), hasAudio);
    return parts.join(u';');
}

QStringList graphArgs(const QList<VideoFile> &files)
{
    const QStringList picture{u"-filter_complex"_s, filterGraph(files), u"-map"_s, u"[v]"_s};
    return allHaveAudio(files) ? picture + QStringList{u"-map"_s, u"[a]"_s} : picture;
}

qint64 highestVideoKbps(const QList<VideoFile> &files)
{
    std::optional<qint64> highestBps;
    for (const VideoFile &file : files) {
        highestBps = std::max(highestBps, file.videoBitrateBps);
    }
    return highestBps ? *highestBps / 1000 : kbpsOfUnknownRate;
}

// No audio group and no pixel layout: ffmpeg picks the sound's encoder for WebM.
QStringList webmCodecArgs(qint64 videoKbps)
{
    return {u"-c:v"_s,    u"libvpx-vp9"_s, u"-b:v"_s, QString::number(videoKbps) + u'k',
            u"-row-mt"_s, u"1"_s};
}

QStringList codecArgs(const Merge &merge, const FFmpegToolset &toolset)
{
    const qint64 videoKbps = highestVideoKbps(merge.files);
    const OutputContainer container = merge.params.container;
    if (container == OutputContainer::webm) {
        return webmCodecArgs(videoKbps);
    }
    const QString encoder = advancedEncoder(merge.params.advanced, toolset, container);
    const QStringList audio = allHaveAudio(merge.files)
                                  ? QStringList{u"-c:a"_s, u"aac"_s, u"-b:a"_s, u"160k"_s}
                                  : QStringList();
    return QStringList{u"-c:v"_s, encoder} +
           qualityOrRateArgs(merge.params.advanced, encoder, videoKbps) +
           QStringList{u"-pix_fmt"_s, u"yuv420p"_s} + audio + containerFlags(container);
}

JobPlan encodePlan(const Merge &merge, const FFmpegToolset &toolset)
{
    FFmpegStep step;
    step.label = u"merge"_s;
    step.args << baseArgs() << inputArgs(merge.files) << graphArgs(merge.files)
              << codecArgs(merge, toolset) << extraArgTokens(merge.params.advanced)
              << Text::path(merge.output);
    step.progressDuration = merge.duration;

    JobPlan plan;
    plan.steps = {step};
    plan.finalOutputURLs = {merge.output};
    plan.badgeKey = u"merge.badge.reencode"_s;
    return plan;
}

void refuseImpossible(const QList<VideoFile> &files, OutputContainer container,
                      const FFmpegToolset &toolset)
{
    if (files.size() < 2) {
        throw BuilderError(BuilderError::Case::noSegments);
    }
    // Asked of a copy, too, which needs no encoder.
    if (container == OutputContainer::webm && !toolset.encoders.contains(u"libvpx-vp9"_s)) {
        throw BuilderError(BuilderError::Case::vp9Unavailable);
    }
}

} // namespace

JobPlan merge(const QList<VideoFile> &files, const MergeParams &params,
              const FFmpegToolset &toolset, const std::optional<QUrl> &outputDirectory,
              const std::optional<QString> &namingTemplate)
{
    refuseImpossible(files, params.container, toolset);
    const Merge job{.files = files,
                    .params = params,
                    .output = outputURL(files.first(), u"merged"_s, rawValue(params.container),
                                        outputDirectory, namingTemplate),
                    .duration = summedDuration(files)};
    const bool isCopied = MergePlanner::compatibility(files).streamsMatch && !params.forceReencode;
    return isCopied ? copyPlan(job) : encodePlan(job, toolset);
}

} // namespace CommandBuilder
