// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/BatchRun.h"

#include "App/Fmt.h"
#include "Batch/BatchTexts.h"
#include "Batch/ExitCode.h"
#include "Batch/InputCheck.h"
#include "Batch/ResultCheck.h"
#include "Engine/Estimator.h"
#include "Engine/FolderExpander.h"
#include "Engine/TemporaryFiles.h"

#include <QThread>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using BatchTexts::Sentence;

namespace {

constexpr std::chrono::milliseconds cancelInterval{250};

// A copy that fits already has its limit too.
std::optional<qint64> limitOf(const JobMode &mode)
{
    const auto *params = std::get_if<TargetSizeParams>(&mode);
    return params ? std::optional(static_cast<qint64>(params->targetMB * 1e6)) : std::nullopt;
}

// Trimming, merging and splitting have none: the options don't let them through.
struct Estimates {
    const VideoFile &file;

    EstimateInfo operator()(const TargetSizeParams &params) const
    {
        return Estimator::targetSize(file, params);
    }
    EstimateInfo operator()(const ConvertParams &params) const
    {
        return Estimator::convert(file, params);
    }
    EstimateInfo operator()(const CompressParams &params) const
    {
        return Estimator::compress(file, params);
    }
    EstimateInfo operator()(const ExtractParams &params) const
    {
        return Estimator::extract(file, params.format, params.bitrateKbps, params.audioTrackIndex);
    }
    EstimateInfo operator()(const GifParams &params) const { return Estimator::gif(file, params); }
    EstimateInfo operator()(const EnhanceParams &params) const
    {
        return Estimator::enhance(file, params);
    }
    EstimateInfo operator()(const AdjustParams &params) const
    {
        return Estimator::adjust(file, params);
    }
    template <typename Params> EstimateInfo operator()(const Params &) const
    {
        EstimateInfo info;
        info.originalBytes = info.estimatedBytes = file.fileSizeBytes;
        return info;
    }
};

} // namespace

BatchRun::BatchRun(BatchOptions options, AppModel &model, Report &report)
    : m_options(std::move(options))
    , m_model(model)
    , m_report(report)
    , m_examinations(QThread::idealThreadCount(), QThread::InheritPriority)
{
    m_repeatCancel.setInterval(cancelInterval);
    connect(&m_repeatCancel, &QTimer::timeout, this, &BatchRun::cancelAll);
    connect(&m_model, &AppModel::jobPlanned, this,
            [this](const std::shared_ptr<Job> &job, const JobPlan &plan) {
                m_progress[job->id].plan = plan;
                m_progress[job->id].sinceStart.start();
            });
    connect(&m_model, &AppModel::jobAttempted, this,
            [this](const std::shared_ptr<Job> &job, int attempt) {
                m_progress[job->id].attempts = attempt;
            });
}

BatchRun::~BatchRun()
{
    while (!m_examinations.finish(cancelInterval)) {
    }
}

void BatchRun::start()
{
    if (m_options.outputDirectory) {
        m_model.setOutputDirectoryPath(m_options.outputDirectory->toLocalFile());
    }
    const QList<QUrl> usable = usableFiles();
    if (usable.isEmpty()) {
        Q_EMIT done(exitCode());
        return;
    }
    takeIn(usable);
}

QList<QUrl> BatchRun::usableFiles()
{
    QList<QUrl> usable;
    for (const QUrl &url : m_options.files) {
        if (const std::optional<QString> problem = InputCheck::problem(url, m_model.language())) {
            tellFailed(url, *problem);
        } else {
            usable.append(url);
        }
    }
    return usable;
}

void BatchRun::takeIn(const QList<QUrl> &urls)
{
    m_inputs = FolderExpander::expand(urls);
    const QSet<QUrl> taken(m_inputs.begin(), m_inputs.end());
    for (const QUrl &url : urls) {
        // More than are taken at a time: what is left out is told.
        const QUrl first = FolderExpander::expand({url}).first();
        if (!taken.contains(first) && taken.size() >= FolderExpander::mostFiles) {
            tellFailed(url, BatchTexts::text(Sentence::tooMany, m_model.language(),
                                             {QString::number(FolderExpander::mostFiles)}));
        }
    }
    // Waiting for all: a pool of workers that has run dry between two files takes no further one.
    connect(&m_model, &AppModel::probingCountChanged, this, [this] {
        if (m_model.probingCount() == 0) {
            QMetaObject::invokeMethod( // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
                this, &BatchRun::enqueueAll, Qt::QueuedConnection);
        }
    });
    m_model.addURLs(urls);
}

void BatchRun::enqueueAll()
{
    if (m_signalNumber != 0) {
        return;
    }
    const QList<VideoFile> files = probedFiles();
    if (m_options.running == BatchOptions::Running::estimate) {
        estimateAll(files);
        return;
    }
    const bool isDry = m_options.running == BatchOptions::Running::dry;
    m_model.setQueuePaused(isDry);
    enqueueFiles(files);
    if (isDry) {
        planAll();
        return;
    }
    // Behind the jobs: workers that this starts before there is one would end at once, for good.
    if (m_options.jobsAtOnce) {
        m_model.setQueueConcurrency(*m_options.jobsAtOnce);
    }
    m_untold = m_model.jobs().size();
    for (const std::shared_ptr<Job> &job : m_model.jobs()) {
        follow(job);
    }
    // The first job doesn't wait for the answer: with no other behind it, the question is idle.
    if (m_untold > 1) {
        m_model.checkHardwareEncoders();
    }
    endIfAllTold();
}

// In the order of the command line; what couldn't be probed is told.
QList<VideoFile> BatchRun::probedFiles()
{
    QHash<QUrl, VideoFile> known;
    for (const VideoFile &file : m_model.files()) {
        known.insert(file.url, file);
    }
    QList<VideoFile> files;
    for (const QUrl &url : std::as_const(m_inputs)) {
        if (known.contains(url)) {
            files.append(known.value(url));
        } else {
            tellFailed(url, m_model.t(u"error.probe"_s));
        }
    }
    return files;
}

void BatchRun::enqueueFiles(const QList<VideoFile> &files)
{
    if (!std::holds_alternative<MergeParams>(m_options.mode)) {
        for (const VideoFile &file : files) {
            m_model.enqueueProbed(file, m_options.mode);
        }
        return;
    }
    // A film that lacks one of its clips is not what was asked for; which one has been told.
    if (m_someFailed) {
        return;
    }
    if (files.size() < 2) {
        tellFailed(files.first().url, m_model.t(u"merge.needmore"_s));
        return;
    }
    m_model.enqueueMerge(m_options.mode, files);
}

void BatchRun::estimateAll(const QList<VideoFile> &files)
{
    for (const VideoFile &file : files) {
        m_report.estimated(estimatedJob(file));
    }
    Q_EMIT done(exitCode());
}

EstimatedJob BatchRun::estimatedJob(const VideoFile &file) const
{
    EstimatedJob job;
    job.input = file.url;
    job.info = std::visit(Estimates{file}, m_options.mode);
    if (const auto *params = std::get_if<TargetSizeParams>(&m_options.mode)) {
        job.guarantee = m_model.tf(
            u"target.estimate"_s, {Fmt::bytes(job.info.estimatedBytes), Fmt::mb(params->targetMB)});
    }
    if (job.info.badgeKey) {
        job.badge = m_model.t(*job.info.badgeKey);
    }
    for (const EstimateWarning &warning : job.info.warnings) {
        job.warnings +=
            warning.args.isEmpty() ? m_model.t(warning.key) : m_model.tf(warning.key, warning.args);
    }
    return job;
}

void BatchRun::planAll()
{
    for (const std::shared_ptr<Job> &job : m_model.jobs()) {
        try {
            const JobPlan plan = m_model.buildPlan(*job);
            m_report.planned(
                {job->input.url, plan, m_model.runnablePlan(plan), m_model.toolset()->ffmpegURL});
        } catch (const BuilderError &error) {
            tellFailed(job->input.url, m_model.builderMessage(error));
        }
    }
    Q_EMIT done(exitCode());
}

void BatchRun::interrupt(int signalNumber)
{
    m_signalNumber = signalNumber;
    if (m_untold == 0) {
        Q_EMIT done(exitCode());
        return;
    }
    cancelAll();
    m_repeatCancel.start();
}

void BatchRun::cancelAll()
{
    for (const std::shared_ptr<Job> &job : m_model.jobs()) {
        m_model.cancelJob(job->id);
    }
}

void BatchRun::follow(const std::shared_ptr<Job> &job)
{
    connect(job.get(), &Job::stateChanged, this,
            [this, weak = std::weak_ptr(job)] { tell(weak.lock()); });
}

void BatchRun::tell(const std::shared_ptr<Job> &job)
{
    switch (job->outcome()) {
    case Job::Outcome::queued:
        break;
    case Job::Outcome::analyzing:
        m_report.started(job->input.url);
        break;
    case Job::Outcome::running:
        tellProgress(job->input.url, std::get<Job::Running>(job->state()).progress);
        break;
    case Job::Outcome::finished:
        examine(job);
        break;
    case Job::Outcome::failed:
        end(job, std::get<Job::Failed>(job->state()).message);
        break;
    case Job::Outcome::cancelled:
        end(job, QString());
        break;
    }
}

// A job that has just been started has nothing to tell yet.
void BatchRun::tellProgress(const QUrl &input, double fraction)
{
    if (fraction > 0) {
        m_report.progressed(input, fraction);
    }
}

// The look at a result reads the whole of it.
void BatchRun::examine(const std::shared_ptr<Job> &job)
{
    Progress &progress = m_progress[job->id];
    progress.seconds = static_cast<double>(progress.sinceStart.elapsed()) / 1000;
    const auto look =
        [subject = ResultCheck::Subject{job->input, actionOf(job->mode), progress.plan.value()},
         ffprobe = m_model.toolset()->ffprobeURL, language = m_model.language()] {
            return ResultCheck::problem(subject, ffprobe, language);
        };
    m_examinations.run(look,
                       [this, job](const std::optional<QString> &problem) { end(job, problem); });
}

void BatchRun::end(const std::shared_ptr<Job> &job, const std::optional<QString> &problem)
{
    TemporaryFiles::removeLeftovers({job->input.id});
    if (!problem) {
        m_report.finished(finishedJob(*job));
    } else if (m_signalNumber != 0) {
        tellFailed(job->input.url, BatchTexts::text(Sentence::interrupted, m_model.language()));
    } else {
        tellFailed(job->input.url, *problem);
    }
    m_progress.remove(job->id);
    --m_untold;
    endIfAllTold();
}

FinishedJob BatchRun::finishedJob(const Job &job) const
{
    const auto &state = std::get<Job::Finished>(job.state());
    const Progress &progress = *m_progress.constFind(job.id);
    return {.input = job.input.url,
            .outputs = state.outputURLs,
            .originalBytes = state.originalBytes,
            .outputBytes = state.outputBytes,
            .limitBytes = limitOf(job.mode),
            .attempts = progress.attempts,
            .seconds = progress.seconds,
            .note = state.note};
}

void BatchRun::tellFailed(const QUrl &input, const QString &message)
{
    m_someFailed = true;
    m_report.failed(input.adjusted(QUrl::StripTrailingSlash), message);
}

void BatchRun::endIfAllTold()
{
    if (m_untold == 0) {
        Q_EMIT done(exitCode());
    }
}

int BatchRun::exitCode() const
{
    if (m_signalNumber != 0) {
        return ExitCode::signalBase + m_signalNumber;
    }
    return m_someFailed ? ExitCode::someFailed : ExitCode::allDone;
}
