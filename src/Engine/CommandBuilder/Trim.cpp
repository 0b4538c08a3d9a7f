// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/Text.h"

#include <QDir>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

constexpr double longestSlip = 0.05;
constexpr double sourceRateShare = 0.85;
// How much of the segments' length the final joining weighs in the progress bar.
constexpr double concatShare = 0.1;

/// What one trim asks of each of its cuts.
struct TrimJob {
    VideoFile file;
    AdvancedOptions advanced;
    QString extension;
    bool encodes = false;
};

/// Whether a cut is delivered or only waits to be joined.
enum class CutRole { delivered, temporary };

// A slip of the mouse makes no segment. Overlaps stay as they are.
QList<TrimSegment> keptSegments(const TrimParams &params)
{
    QList<TrimSegment> kept;
    std::copy_if(
        params.segments.begin(), params.segments.end(), std::back_inserter(kept),
        [](const TrimSegment &segment) { return segment.end - segment.start > longestSlip; });
    std::stable_sort(kept.begin(), kept.end(),
                     [](const TrimSegment &a, const TrimSegment &b) { return a.start < b.start; });
    return kept;
}

double totalLength(const QList<TrimSegment> &segments)
{
    double total = 0;
    for (const TrimSegment &segment : segments) {
        total += segmentLength(segment);
    }
    return total;
}

QString twoDigits(qsizetype number)
{
    return QString::number(number).rightJustified(2, u'0');
}

bool hasReplacement(const TrimJob &job)
{
    return job.advanced.replacementAudioURL.has_value();
}

QStringList inputArgs(const TrimJob &job, const TrimSegment &segment)
{
    constexpr bool muted = false;
    return segmentSeekArgs(segment) + QStringList{u"-i"_s, Text::path(job.file.url)} +
           replacementInputArgs(job.advanced, muted);
}

// No map names the replacement, on purpose: it is opened and goes unheard, and the sound stays the
// source's own.
QStringList mapArgs(const TrimJob &job)
{
    QStringList args;
    if (hasVideo(job.file)) {
        args << u"-map"_s << u"0:v:0"_s;
    }
    if (!job.file.audioStreams.isEmpty() || hasReplacement(job)) {
        args << u"-map"_s << u"0:a?"_s;
    }
    return args;
}

QStringList videoArgs(const TrimJob &job)
{
    if (!hasVideo(job.file)) {
        return {};
    }
    // A trim isn't told what the build offers, so the software choice falls to the hardware, too.
    const QString encoder = encoderForChoice(job.advanced.codec, FFmpegToolset());
    const qint64 kbps = shareOfSourceKbps(job.file, sourceRateShare);
    return QStringList{u"-c:v"_s, encoder, u"-b:v"_s, QString::number(kbps) + u'k'} +
           pixelFormatArgs(job.file, job.advanced, encoder) +
           videoFilterArgs(job.file, std::nullopt, job.advanced);
}

QStringList audioArgs(const TrimJob &job)
{
    const bool hasSound = hasReplacement(job) || !job.file.audioStreams.isEmpty();
    return hasSound ? mp4AudioArgs(job.file, job.advanced) : QStringList();
}

QStringList shortestArgs(const TrimJob &job)
{
    return hasReplacement(job) ? QStringList{u"-shortest"_s} : QStringList();
}

FFmpegStep encodeCutStep(const TrimJob &job, const TrimSegment &segment, const QUrl &output)
{
    FFmpegStep step;
    step.label = u"cut-encode"_s;
    step.args << baseArgs() << inputArgs(job, segment) << mapArgs(job) << videoArgs(job)
              << audioArgs(job) << fastStartArgs(job.extension) << shortestArgs(job)
              << rateArgs(job.advanced) << extraArgTokens(job.advanced) << Text::path(output);
    step.progressDuration = segmentLength(segment);
    return step;
}

FFmpegStep cutStep(const TrimJob &job, const TrimSegment &segment, const QUrl &output, CutRole role)
{
    FFmpegStep step =
        job.encodes ? encodeCutStep(job, segment, output) : copyCutStep(job.file, segment, output);
    if (role == CutRole::temporary) {
        step.tempOutputURL = output;
    }
    return step;
}

// Joining copies: whatever is encoded has been encoded in the cuts. The list is called unsafe for
// its absolute paths alone.
FFmpegStep concatStep(const TrimJob &job, const QUrl &list, double total, const QUrl &output)
{
    FFmpegStep step;
    step.label = u"concat"_s;
    step.args << baseArgs() << u"-f"_s << u"concat"_s << u"-safe"_s << u"0"_s << u"-i"_s
              << Text::path(list) << u"-c"_s << u"copy"_s << u"-avoid_negative_ts"_s
              << u"make_zero"_s << fastStartArgs(job.extension) << Text::path(output);
    step.progressDuration = total * concatShare;
    return step;
}

/// The files of a joined trim, in a folder of their own.
struct Workspace {
    QUrl folder;
    QList<QUrl> parts;
    QUrl list;
};

Workspace workspaceFor(const TrimJob &job, qsizetype count)
{
    const QString folder =
        Text::joinedPath(QDir::tempPath(), u"mx-trim-"_s + Text::uuid(QUuid::createUuid()));
    const auto inFolder = [&](const QString &name) {
        return QUrl::fromLocalFile(Text::joinedPath(folder, name));
    };
    Workspace workspace{
        .folder = QUrl::fromLocalFile(folder), .parts = {}, .list = inFolder(u"concat.txt"_s)};
    for (qsizetype number = 1; number <= count; ++number) {
        workspace.parts += inFolder(u"seg-"_s + twoDigits(number) + u'.' + job.extension);
    }
    return workspace;
}

JobPlan joinedPlan(const TrimJob &job, const QList<TrimSegment> &segments, const QUrl &output)
{
    const Workspace workspace = workspaceFor(job, segments.size());
    JobPlan plan;
    for (qsizetype i = 0; i < segments.size(); ++i) {
        plan.steps += cutStep(job, segments.at(i), workspace.parts.at(i), CutRole::temporary);
    }
    plan.steps += concatStep(job, workspace.list, totalLength(segments), output);
    plan.finalOutputURLs = {output};
    plan.prepFiles = {concatList(workspace.list, workspace.parts)};
    plan.createDirs = {workspace.folder};
    plan.cleanupURLs = workspace.parts + QList<QUrl>{workspace.list, workspace.folder};
    return plan;
}

QString partSuffix(qsizetype number, qsizetype count)
{
    return count == 1 ? u"trim"_s : u"trim-"_s + twoDigits(number);
}

} // namespace

JobPlan trim(const VideoFile &file, const TrimParams &params,
             const std::optional<QUrl> &outputDirectory,
             const std::optional<QString> &namingTemplate)
{
    const QList<TrimSegment> segments = keptSegments(params);
    if (segments.isEmpty()) {
        throw BuilderError(BuilderError::Case::noSegments);
    }
    const TrimJob job{.file = file,
                      .advanced = params.advanced,
                      .extension = cutExtension(file),
                      .encodes =
                          params.exactReencode || advancedNeedsVideoReencode(params.advanced)};
    const auto place = [&](const QString &suffix) {
        return outputURL(file, suffix, job.extension, outputDirectory, namingTemplate);
    };
    if (segments.size() > 1 && !params.separateFiles) {
        return joinedPlan(job, segments, place(u"trim"_s));
    }
    JobPlan plan;
    for (qsizetype i = 0; i < segments.size(); ++i) {
        const QUrl output = place(partSuffix(i + 1, segments.size()));
        plan.steps += cutStep(job, segments.at(i), output, CutRole::delivered);
        plan.finalOutputURLs += output;
    }
    return plan;
}

} // namespace CommandBuilder
