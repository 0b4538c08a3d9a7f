// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/Text.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

// Seconds; also the least that is left before the end of the film.
constexpr double shortestLength = 0.1;
// Seconds at either end that make no difference worth a seek.
constexpr double seekTolerance = 0.01;

// Weights of the steps in the progress bar. With a bounce they are more than the length.
constexpr double paletteShare = 0.35;
constexpr double gifShare = 0.65;
constexpr double bounceShare = 0.2;

/// The stretch of the film, in seconds.
struct Stretch {
    double start = 0;
    double end = 0;
    double length = 0;
};

/// What the steps are made from.
struct GifJob {
    VideoFile file;
    GifParams params;
    Stretch stretch;
    QUrl folder;
    QUrl output;
};

// An end before the start leaves the shortest length.
Stretch stretchOf(const VideoFile &file, const GifParams &params)
{
    const double duration = file.durationSeconds;
    const double start = std::max(0.0, std::min(params.start, duration - shortestLength));
    const double end = std::min(params.end.value_or(duration), duration);
    return {.start = start, .end = end, .length = std::max(shortestLength, end - start)};
}

QUrl inFolder(const GifJob &job, const QString &name)
{
    return QUrl::fromLocalFile(Text::joinedPath(Text::path(job.folder), name));
}

QUrl palette(const GifJob &job)
{
    return inFolder(job, u"palette.png"_s);
}

// What is played forward and backward.
QUrl forwardOutput(const GifJob &job)
{
    return inFolder(job, u"base.gif"_s);
}

// The whole film is read from its start, without a seek.
QStringList seekArgs(const GifJob &job)
{
    const Stretch &stretch = job.stretch;
    const bool isWhole =
        stretch.start <= seekTolerance && stretch.end >= job.file.durationSeconds - seekTolerance;
    if (isWhole) {
        return {};
    }
    return {u"-ss"_s, Text::fixed(stretch.start, 3), u"-t"_s, Text::fixed(stretch.length, 3)};
}

QStringList inputArgs(const GifJob &job)
{
    return seekArgs(job) + QStringList{u"-i"_s, Text::path(job.file.url)};
}

// The height follows from the width, and neither is checked.
QString scaleChain(const GifJob &job)
{
    return u"fps=%1,scale=%2:-1:flags=lanczos"_s.arg(
        QString::number(std::clamp<qint64>(job.params.fps, 1, 30)),
        QString::number(job.params.width));
}

FFmpegStep paletteStep(const GifJob &job)
{
    // On a screen most of the picture rests: the colours are chosen by what moves.
    const QString mode = job.params.screenContent ? u"diff"_s : u"full"_s;
    FFmpegStep step;
    step.label = u"palette"_s;
    step.args << baseArgs() << inputArgs(job) << u"-vf"_s
              << scaleChain(job) + u",palettegen=stats_mode="_s + mode << Text::path(palette(job));
    step.progressDuration = job.stretch.length * paletteShare;
    return step;
}

FFmpegStep gifStep(const GifJob &job)
{
    const QUrl target = job.params.bounce ? forwardOutput(job) : job.output;
    FFmpegStep step;
    step.label = u"gif"_s;
    step.args << baseArgs() << inputArgs(job) << u"-i"_s << Text::path(palette(job)) << u"-lavfi"_s
              << u"[0:v]"_s + scaleChain(job) +
                     u"[x];[x][1:v]paletteuse=dither=bayer:bayer_scale=5:diff_mode=rectangle"_s
              << u"-loop"_s << (job.params.loopForever ? u"0"_s : u"1"_s) << Text::path(target);
    step.progressDuration = job.stretch.length * gifShare;
    return step;
}

// Without "-loop": a bounced GIF repeats as the muxer does by default, whatever the parameters say.
FFmpegStep bounceStep(const GifJob &job)
{
    FFmpegStep step;
    step.label = u"bounce"_s;
    step.args << baseArgs() << u"-i"_s << Text::path(forwardOutput(job)) << u"-filter_complex"_s
              << u"[0]split[a][b];[a]reverse[r];[b][r]concat=n=2:v=1:a=0"_s
              << Text::path(job.output);
    step.progressDuration = job.stretch.length * bounceShare;
    return step;
}

QUrl newFolder()
{
    return QUrl::fromLocalFile(
        Text::joinedPath(QDir::tempPath(), u"mx-gif-"_s + Text::uuid(QUuid::createUuid())));
}

} // namespace

JobPlan gif(const VideoFile &file, const GifParams &params,
            const std::optional<QUrl> &outputDirectory,
            const std::optional<QString> &namingTemplate)
{
    const GifJob job{.file = file,
                     .params = params,
                     .stretch = stretchOf(file, params),
                     .folder = newFolder(),
                     .output =
                         outputURL(file, u"gif"_s, u"gif"_s, outputDirectory, namingTemplate)};
    JobPlan plan;
    plan.steps = {paletteStep(job), gifStep(job)};
    if (params.bounce) {
        plan.steps += bounceStep(job);
    }
    plan.finalOutputURLs = {job.output};
    plan.createDirs = {job.folder};
    // The forward half goes with the folder.
    plan.cleanupURLs = {palette(job), job.folder};
    return plan;
}

} // namespace CommandBuilder
