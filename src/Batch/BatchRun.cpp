// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/BatchRun.h"

#include "Batch/BatchTexts.h"
#include "Batch/Estimates.h"
#include "Batch/ExitCode.h"
#include "Batch/FailureCode.h"
#include "Engine/TemporaryFiles.h"
#include "Models/Truncation.h"

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
    return params ? std::optional(truncated(params->targetMB * 1e6)) : std::nullopt;
}

int codeOf(ResultCheck::Problem::Fault fault)
{
    switch (fault) {
    case ResultCheck::Problem::Fault::input:
        return ExitCode::badInput;
    case ResultCheck::Problem::Fault::disk:
        return ExitCode::cannotWrite;
    case ResultCheck::Problem::Fault::ffmpeg:
        break;
    }
    return ExitCode::ffmpegFailed;
}

} // namespace

BatchRun::BatchRun(BatchOptions options, AppModel &model, Report &report)
    : m_options(std::move(options))
    , m_model(model)
    , m_report(report)
    , m_intake(m_options, model)
    // One thread: results are told in the order in which the jobs end.
    , m_examinations(1, QThread::InheritPriority)
{
    m_repeatCancel.setInterval(cancelInterval);
    connect(&m_repeatCancel, &QTimer::timeout, this, &BatchRun::cancelAll);
    connect(&m_intake, &BatchIntake::failed, this, &BatchRun::tellFailed);
    connect(&m_intake, &BatchIntake::ready, this, &BatchRun::enqueueAll);
    listenToModel();
}

BatchRun::~BatchRun()
{
    while (!m_examinations.finish(cancelInterval)) {
    }
}

void BatchRun::listenToModel()
{
    connect(&m_model, &AppModel::jobPlanned, this,
            [this](const std::shared_ptr<Job> &job, const JobPlan &plan) {
                m_progress[job->id].plan = plan;
                m_progress[job->id].sinceStart.start();
            });
    connect(&m_model, &AppModel::jobAttempted, this,
            [this](const std::shared_ptr<Job> &job, int attempt) {
                m_progress[job->id].attempts = attempt;
                if (attempt > 1) {
                    m_report.attempted(m_progress[job->id].subject, attempt);
                }
            });
    connect(&m_model, &AppModel::jobFailed, this,
            [this](const std::shared_ptr<Job> &job, const std::exception_ptr &failure) {
                m_progress[job->id].failure = failure;
            });
}

void BatchRun::start()
{
    if (m_options.outputDirectory) {
        m_model.setOutputDirectoryPath(m_options.outputDirectory->toLocalFile());
    }
    m_intake.start();
    if (m_intake.items().isEmpty()) {
        Q_EMIT done(exitCode());
    } else if (m_model.probingCount() == 0) {
        // All have gone since the look at them: there is no probe to wait for.
        enqueueAll();
    }
}

void BatchRun::enqueueAll()
{
    if (m_signalNumber != 0) {
        return;
    }
    const QList<BatchItem> items = m_intake.takeProbedItems();
    if (m_options.running == BatchOptions::Running::estimate) {
        estimateAll(items);
        return;
    }
    const bool isDry = m_options.running == BatchOptions::Running::dry;
    m_model.setQueuePaused(isDry);
    enqueueJobs(items);
    if (isDry) {
        planAll();
    } else {
        run();
    }
}

void BatchRun::enqueueJobs(const QList<BatchItem> &items)
{
    if (!m_options.queueFile && std::holds_alternative<MergeParams>(m_options.mode)) {
        enqueueMerge(items);
        return;
    }
    for (const BatchItem &item : items) {
        m_model.enqueueProbed(*item.file, item.mode);
        m_progress[m_model.jobs().last()->id].subject = item.subject;
    }
}

void BatchRun::enqueueMerge(const QList<BatchItem> &items)
{
    // A film that lacks one of its clips is not what was asked for; which one has been told.
    if (m_failureCode != 0) {
        return;
    }
    if (items.size() < 2) {
        tellFailed(items.first().subject, m_model.t(u"merge.needmore"_s), ExitCode::badInput);
        return;
    }
    QList<VideoFile> files;
    for (const BatchItem &item : items) {
        files.append(*item.file);
    }
    m_model.enqueueMerge(m_options.mode, files);
    m_progress[m_model.jobs().last()->id].subject = items.first().subject;
}

void BatchRun::run()
{
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

void BatchRun::estimateAll(const QList<BatchItem> &items)
{
    for (const BatchItem &item : items) {
        m_report.estimated(Estimates::estimatedJob(item, m_model));
    }
    Q_EMIT done(exitCode());
}

void BatchRun::planAll()
{
    for (const std::shared_ptr<Job> &job : m_model.jobs()) {
        const Subject subject = m_progress.value(job->id).subject;
        try {
            const JobPlan plan = m_model.buildPlan(*job);
            m_report.planned(
                {subject, plan, m_model.runnablePlan(plan), m_model.toolset()->ffmpegURL});
        } catch (const BuilderError &error) {
            tellFailed(subject, m_model.builderMessage(error),
                       FailureCode::of(std::current_exception(), job->input, {}));
        }
    }
    Q_EMIT done(exitCode());
}

void BatchRun::interrupt(int signalNumber)
{
    if (m_signalNumber != 0) {
        return;
    }
    m_signalNumber = signalNumber;
    if (m_untold > 0) {
        cancelAll();
        m_repeatCancel.start();
        return;
    }
    for (const BatchItem &item : m_intake.items()) {
        tellInterrupted(item.subject);
    }
    Q_EMIT done(exitCode());
}

void BatchRun::tellInterrupted(const Subject &subject)
{
    tellFailed(subject, BatchTexts::text(Sentence::interrupted, m_model.language()),
               ExitCode::someFailed);
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
        m_report.started(m_progress.value(job->id).subject);
        break;
    case Job::Outcome::running:
        tellProgress(*job, std::get<Job::Running>(job->state()).progress);
        break;
    case Job::Outcome::finished:
        examine(job);
        break;
    case Job::Outcome::failed:
        endBadly(job, std::get<Job::Failed>(job->state()).message);
        break;
    case Job::Outcome::cancelled:
        endBadly(job, BatchTexts::text(Sentence::interrupted, m_model.language()));
        break;
    }
}

// A job that has just been started has nothing to tell yet.
void BatchRun::tellProgress(const Job &job, double fraction)
{
    if (fraction > 0) {
        m_report.progressed(m_progress.value(job.id).subject, fraction);
    }
}

// The look at a result reads the whole of it.
void BatchRun::examine(const std::shared_ptr<Job> &job)
{
    Progress &progress = m_progress[job->id];
    progress.seconds = static_cast<double>(progress.sinceStart.elapsed()) / 1000;
    const auto look =
        [ended = ResultCheck::EndedJob{job->input, actionOf(job->mode), progress.plan.value()},
         ffprobe = m_model.toolset()->ffprobeURL,
         language = m_model.language()] { return ResultCheck::problem(ended, ffprobe, language); };
    m_examinations.run(look, [this, job](const std::optional<ResultCheck::Problem> &problem) {
        endWell(job, problem);
    });
}

void BatchRun::endWell(const std::shared_ptr<Job> &job,
                       const std::optional<ResultCheck::Problem> &problem)
{
    if (problem) {
        tellFailed(m_progress.value(job->id).subject, problem->sentence, codeOf(problem->fault));
    } else {
        m_report.finished(finishedJob(*job));
    }
    forget(*job);
}

void BatchRun::endBadly(const std::shared_ptr<Job> &job, const QString &message)
{
    const Progress progress = m_progress.value(job->id);
    if (m_signalNumber != 0) {
        tellInterrupted(progress.subject);
    } else {
        tellFailed(progress.subject, message,
                   FailureCode::of(progress.failure, job->input, progress.plan));
    }
    forget(*job);
}

void BatchRun::forget(const Job &job)
{
    TemporaryFiles::removeLeftovers({job.input.id});
    m_progress.remove(job.id);
    --m_untold;
    endIfAllTold();
}

FinishedJob BatchRun::finishedJob(const Job &job) const
{
    const auto &state = std::get<Job::Finished>(job.state());
    const Progress &progress = *m_progress.constFind(job.id);
    return {.subject = progress.subject,
            .outputs = state.outputURLs,
            .originalBytes = state.originalBytes,
            .outputBytes = state.outputBytes,
            .limitBytes = limitOf(job.mode),
            .attempts = progress.attempts,
            .seconds = progress.seconds,
            .note = state.note};
}

void BatchRun::tellFailed(const Subject &subject, const QString &message, int code)
{
    if (m_failureCode == 0) {
        m_failureCode = code;
    }
    m_report.failed({subject.input.adjusted(QUrl::StripTrailingSlash), subject.entry}, message);
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
    if (m_failureCode == 0) {
        return ExitCode::allDone;
    }
    return m_options.entry ? m_failureCode : ExitCode::someFailed;
}
