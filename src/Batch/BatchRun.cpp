// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/BatchRun.h"

#include "App/Fmt.h"
#include "Batch/BatchTexts.h"
#include "Batch/ExitCode.h"
#include "Batch/FailureCode.h"
#include "Batch/InputCheck.h"
#include "Engine/Estimator.h"
#include "Engine/FolderExpander.h"
#include "Engine/TemporaryFiles.h"

#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using BatchTexts::Sentence;

namespace {

constexpr std::chrono::milliseconds cancelInterval{250};

// Within the range of 64 bits.
constexpr double mostBytes = 9e18;

// A copy that fits already has its limit too.
std::optional<qint64> limitOf(const JobMode &mode)
{
    const auto *params = std::get_if<TargetSizeParams>(&mode);
    return params ? std::optional(static_cast<qint64>(std::min(params->targetMB * 1e6, mostBytes)))
                  : std::nullopt;
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
    // One thread: results are told in the order in which the jobs end.
    , m_examinations(1, QThread::InheritPriority)
{
    m_repeatCancel.setInterval(cancelInterval);
    connect(&m_repeatCancel, &QTimer::timeout, this, &BatchRun::cancelAll);
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
    // Waiting for all: a pool of workers that has run dry between two files takes no further one.
    connect(&m_model, &AppModel::probingCountChanged, this, [this] {
        if (m_model.probingCount() == 0) {
            QMetaObject::invokeMethod( // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
                this, &BatchRun::enqueueAll, Qt::QueuedConnection);
        }
    });
}

void BatchRun::start()
{
    if (m_options.outputDirectory) {
        m_model.setOutputDirectoryPath(m_options.outputDirectory->toLocalFile());
    }
    if (m_options.queueFile) {
        takeQueue();
    } else {
        takeFiles();
    }
    if (m_items.isEmpty()) {
        Q_EMIT done(exitCode());
    } else if (m_model.probingCount() == 0) {
        // All have gone since the look at them: there is no probe to wait for.
        enqueueAll();
    }
}

bool BatchRun::isUsable(const Subject &subject)
{
    const auto problem = InputCheck::problem(subject.input, m_model.language());
    if (problem) {
        tellFailed(subject, problem->sentence,
                   problem->isMissing ? ExitCode::noInput : ExitCode::badInput);
    }
    return !problem;
}

void BatchRun::takeFiles()
{
    QList<QUrl> usable;
    for (const QUrl &url : m_options.files) {
        if (isUsable({url, {}})) {
            usable.append(url);
        }
    }
    for (const QUrl &url : FolderExpander::expand(usable)) {
        m_items.append({{url, {}}, m_options.mode, {}});
    }
    tellLeftOut(usable);
    m_model.addURLs(usable, [this](const VideoFile &file) { takeProbed(0, file); });
}

void BatchRun::takeProbed(qsizetype firstPlace, const VideoFile &file)
{
    const auto item =
        std::find_if(m_items.begin() + firstPlace, m_items.end(),
                     [&](const Item &known) { return known.subject.input == file.url; });
    // One that has just been put into its folder wasn't there a moment ago.
    if (item != m_items.end()) {
        item->file = file;
    }
}

// More than are taken at a time: what is left out is told.
void BatchRun::tellLeftOut(const QList<QUrl> &urls)
{
    if (m_items.size() < FolderExpander::mostFiles) {
        return;
    }
    QSet<QUrl> taken;
    for (const Item &item : std::as_const(m_items)) {
        taken.insert(item.subject.input);
    }
    const QString sentence = BatchTexts::text(Sentence::tooMany, m_model.language(),
                                              {QString::number(FolderExpander::mostFiles)});
    for (const QUrl &url : urls) {
        if (!taken.contains(FolderExpander::expand({url}).first())) {
            tellFailed({url, {}}, sentence, ExitCode::badInput);
        }
    }
}

void BatchRun::takeQueue()
{
    QList<ExportedJob> entries;
    try {
        entries = QueueFile::read(*m_options.queueFile);
    } catch (const std::exception &) {
        const bool isMissing = !QFileInfo::exists(m_options.queueFile->toLocalFile());
        tellFailed({*m_options.queueFile, {}}, m_model.t(u"error.probe"_s),
                   isMissing ? ExitCode::noInput : ExitCode::badInput);
        return;
    }
    if (m_options.entry && *m_options.entry >= entries.size()) {
        tellFailed(
            {*m_options.queueFile, {}},
            BatchTexts::text(Sentence::noSuchEntry, m_model.language(),
                             {QString::number(*m_options.entry), QString::number(entries.size())}),
            ExitCode::usage);
        return;
    }
    for (qint64 number = 0; number < entries.size(); ++number) {
        if (number == m_options.entry.value_or(number)) {
            takeEntry(number, entries.at(number));
        }
    }
}

void BatchRun::takeEntry(qint64 number, const ExportedJob &entry)
{
    const Subject subject{QUrl::fromLocalFile(entry.path), number};
    if (!isUsable(subject)) {
        return;
    }
    // A folder stands for all films in it.
    const qsizetype firstPlace = m_items.size();
    for (const QUrl &url : FolderExpander::expand({subject.input})) {
        m_items.append({{url, number}, AppModel::modeFrom(entry.spec), {}});
    }
    m_model.addURLs({subject.input},
                    [this, firstPlace](const VideoFile &file) { takeProbed(firstPlace, file); });
}

void BatchRun::enqueueAll()
{
    if (m_signalNumber != 0) {
        return;
    }
    const QList<Item> items = probedItems();
    m_items.clear();
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

// In the order of the command line or of the queue file; what couldn't be probed is told.
QList<BatchRun::Item> BatchRun::probedItems()
{
    QList<Item> items;
    for (const Item &item : std::as_const(m_items)) {
        if (item.file) {
            items.append(item);
        } else {
            tellFailed(item.subject, m_model.t(u"error.probe"_s), ExitCode::badInput);
        }
    }
    return items;
}

void BatchRun::enqueueJobs(const QList<Item> &items)
{
    if (!m_options.queueFile && std::holds_alternative<MergeParams>(m_options.mode)) {
        enqueueMerge(items);
        return;
    }
    for (const Item &item : items) {
        m_model.enqueueProbed(*item.file, item.mode);
        m_progress[m_model.jobs().last()->id].subject = item.subject;
    }
}

void BatchRun::enqueueMerge(const QList<Item> &items)
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
    for (const Item &item : items) {
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

void BatchRun::estimateAll(const QList<Item> &items)
{
    for (const Item &item : items) {
        m_report.estimated(estimatedJob(item));
    }
    Q_EMIT done(exitCode());
}

EstimatedJob BatchRun::estimatedJob(const Item &item) const
{
    EstimatedJob job;
    job.subject = item.subject;
    job.info = std::visit(Estimates{*item.file}, item.mode);
    if (const auto *params = std::get_if<TargetSizeParams>(&item.mode)) {
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
    for (const Item &item : std::as_const(m_items)) {
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
