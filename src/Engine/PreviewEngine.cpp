// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PreviewEngine.h"

#include "Engine/BitratePlanner.h"
#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/FileError.h"
#include "Engine/PlanExecutor.h"
#include "Engine/Text.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

using PreviewEngine::Request;
using PreviewEngine::Settings;

constexpr double longestUselessSeconds = 0.3;
constexpr double sampleSeconds = 2.0;

// Shares of the progress rather than seconds of film: a sample of two counts as one.
constexpr double stillWeight = 0.1;
constexpr double sampleWeight = 1.0;

struct Places {
    QUrl folder;
    QUrl before;
    QUrl slice;
    QUrl after;
};

/// A preview with all that its steps share.
struct Sample {
    VideoFile file;
    AdvancedOptions advanced;
    Settings settings;
    // Seconds.
    QString start;
    Places places;
};

bool hasX264(const std::optional<FFmpegToolset> &toolset)
{
    return toolset && toolset->encoders.contains(u"libx264"_s);
}

Settings settingsFor(const VideoFile &file, const TargetSizeParams &params,
                     const std::optional<FFmpegToolset> &toolset)
{
    const BitratePlanner::Plan rates = BitratePlanner::plan(
        {.targetMB = params.targetMB,
         .durationSeconds = file.effectiveDuration(params.skipHeadSeconds, params.skipTailSeconds),
         .hasAudio = !file.audioStreams.isEmpty(),
         .muted = params.muted,
         .width = CommandBuilder::effectiveWidth(file, params.advanced.crop)});
    const bool isExact = params.exactTwoPass && hasX264(toolset);
    return {.encoder = isExact ? u"libx264"_s : u"h264_videotoolbox"_s,
            .bitrateKbps = rates.videoBitrateKbps,
            .crf = std::nullopt,
            .maxHeight = rates.maxHeight};
}

Settings settingsFor(const VideoFile &file, const CompressParams &params,
                     const std::optional<FFmpegToolset> &toolset)
{
    Settings settings;
    settings.encoder = CommandBuilder::compressEncoder(file, params.advanced.codec, toolset);
    settings.maxHeight = CommandBuilder::compressMeasure(file, params).maxHeight;
    if (params.advanced.crf && settings.encoder == "libx264"_L1) {
        settings.crf = params.advanced.crf;
    } else {
        settings.bitrateKbps = CommandBuilder::compressVideoKbps(file, params);
    }
    return settings;
}

// Always H.264, whatever codec is chosen; and the chosen audio rate, which the job takes for the
// picture's, doesn't count.
Settings settingsFor(const VideoFile &file, const EnhanceParams &params,
                     const std::optional<FFmpegToolset> &)
{
    const std::optional<PictureSize> size = params.outputSize(file);
    return {.encoder = u"h264_videotoolbox"_s,
            .bitrateKbps = CommandBuilder::enhanceBitrateKbps(file, params),
            .crf = std::nullopt,
            .maxHeight = size ? std::optional(size->height) : std::nullopt};
}

QString startOf(const VideoFile &file, double position)
{
    const double latest = std::max(file.durationSeconds - sampleSeconds, 0.0);
    return Text::fixed(std::min(latest, std::max(position, 0.0)), 3);
}

Places freshPlaces()
{
    const QString folder =
        Text::joinedPath(QDir::tempPath(), u"mx-preview-"_s + Text::uuid(QUuid::createUuid()));
    const auto place = [&](const QString &name) {
        return QUrl::fromLocalFile(Text::joinedPath(folder, name));
    };
    return {.folder = QUrl::fromLocalFile(folder),
            .before = place(u"before.png"_s),
            .slice = place(u"slice.mp4"_s),
            .after = place(u"after.png"_s)};
}

QStringList firstFrameArgs(const QString &start, const QUrl &source, const QUrl &still)
{
    return CommandBuilder::baseArgs() + QStringList{u"-ss"_s,           start,          u"-i"_s,
                                                    Text::path(source), u"-frames:v"_s, u"1"_s,
                                                    Text::path(still)};
}

QStringList rateArgs(const Settings &settings)
{
    if (settings.crf) {
        return {u"-crf"_s, QString::number(*settings.crf)};
    }
    if (settings.bitrateKbps) {
        return {u"-b:v"_s, QString::number(*settings.bitrateKbps) + u'k'};
    }
    return {};
}

QStringList encoderArgs(const Settings &settings)
{
    return settings.encoder == "libx264"_L1 ? QStringList{u"-preset"_s, u"veryfast"_s}
                                            : QStringList();
}

// HDR frames keep their ten bits where the encoder takes them.
QStringList pixelFormatArgs(const VideoFile &file)
{
    return file.isHDR ? QStringList() : QStringList{u"-pix_fmt"_s, u"yuv420p"_s};
}

QStringList sampleArgs(const Sample &sample)
{
    QStringList args;
    args << CommandBuilder::baseArgs() << u"-ss"_s << sample.start << u"-t"_s << u"2.00"_s
         << u"-i"_s << Text::path(sample.file.url) << u"-c:v"_s << sample.settings.encoder
         << u"-an"_s << rateArgs(sample.settings) << encoderArgs(sample.settings)
         << pixelFormatArgs(sample.file)
         << CommandBuilder::videoFilterArgs(sample.file, sample.settings.maxHeight, sample.advanced)
         << Text::path(sample.places.slice);
    return args;
}

// The second still is taken one second into the sample, where the encoder has found its rate, and
// the first at its start: they are one second apart in the film, on purpose.
QList<FFmpegStep> stepsOf(const Sample &sample)
{
    const Places &places = sample.places;
    return {
        {u"before"_s, firstFrameArgs(sample.start, sample.file.url, places.before), stillWeight,
         places.before},
        {u"sample"_s, sampleArgs(sample), sampleWeight, places.slice},
        {u"after"_s, firstFrameArgs(u"1.0"_s, places.slice, places.after), stillWeight,
         places.after},
    };
}

// An executor would clear the stills away before they are read, and leave nothing of a failure to
// look at.
JobPlan withoutCleanup(JobPlan plan)
{
    plan.cleanupURLs.clear();
    for (FFmpegStep &step : plan.steps) {
        step.tempOutputURL.reset();
    }
    return plan;
}

QByteArray contentOf(const QUrl &url)
{
    QFile file(Text::path(url));
    if (!file.open(QIODevice::ReadOnly)) {
        throw FileError(url, file.errorString());
    }
    return file.readAll();
}

void removeItems(const QList<QUrl> &urls)
{
    for (const QUrl &url : urls) {
        std::error_code ignored;
        std::filesystem::remove_all(QFile::encodeName(Text::path(url)).toStdString(), ignored);
    }
}

} // namespace

Settings PreviewEngine::settings(const VideoFile &file, const Request &request,
                                 const std::optional<FFmpegToolset> &toolset)
{
    return std::visit([&](const auto &params) { return settingsFor(file, params, toolset); },
                      request);
}

JobPlan PreviewEngine::plan(const VideoFile &file, double position, const Request &request,
                            const FFmpegToolset &toolset)
{
    if (!CommandBuilder::hasVideo(file) || file.durationSeconds <= longestUselessSeconds) {
        throw BuilderError(BuilderError::Case::noSegments);
    }
    const Sample sample{.file = file,
                        .advanced = advancedOf(request),
                        .settings = settings(file, request, toolset),
                        .start = startOf(file, position),
                        .places = freshPlaces()};
    const Places &places = sample.places;

    JobPlan plan;
    plan.steps = stepsOf(sample);
    plan.finalOutputURLs = {places.before, places.after};
    plan.createDirs = {places.folder};
    plan.cleanupURLs = {places.before, places.after, places.slice, places.folder};
    return plan;
}

const AdvancedOptions &PreviewEngine::advancedOf(const Request &request)
{
    return std::visit([](const auto &params) -> const AdvancedOptions & { return params.advanced; },
                      request);
}

PreviewEngine::Images PreviewEngine::generate(const JobPlan &plan, PlanExecutor &executor)
{
    executor.execute(withoutCleanup(plan), [](double) {});
    Images images{.before = contentOf(plan.finalOutputURLs.first()),
                  .after = contentOf(plan.finalOutputURLs.last())};
    removeItems(plan.cleanupURLs);
    return images;
}
