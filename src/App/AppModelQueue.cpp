// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"

#include "App/Fmt.h"
#include "App/JobFailure.h"
#include "App/JobPlanner.h"
#include "App/QueueWorker.h"
#include "Engine/EncoderStandIns.h"
#include "Engine/EngineError.h"
#include "Engine/FrameTiming.h"
#include "Engine/Text.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mostWorkers = 3;

bool hasEnded(const std::shared_ptr<Job> &job)
{
    const Job::Outcome outcome = job->outcome();
    return outcome == Job::Outcome::finished || outcome == Job::Outcome::failed ||
           outcome == Job::Outcome::cancelled;
}

// A path as a folder's URL carries it, without its last slash.
QString folderPath(const QUrl &folder)
{
    return Text::path(folder.adjusted(QUrl::StripTrailingSlash));
}

} // namespace

void AppModel::enqueue(const JobMode &mode, Scope scope)
{
    const std::optional<VideoFile> selected = selectedFile();
    const QList<VideoFile> targets =
        scope == Scope::allFiles || !selected ? m_files : QList<VideoFile>{*selected};
    if (targets.isEmpty() || !toolset()) {
        return;
    }
    for (const VideoFile &file : targets) {
        enqueueProbed(file, mode);
    }
    setShowQueue(true);
}

void AppModel::enqueueProbed(const VideoFile &file, const JobMode &mode)
{
    append(std::make_shared<Job>(file, QList<VideoFile>(), mode, outputDirectoryFor(file)));
    startWorkers();
}

void AppModel::enqueueMerge(const JobMode &mode, const QList<VideoFile> &files)
{
    if (files.size() < 2 || !toolset()) {
        return;
    }
    const auto job = std::make_shared<Job>(files.first(), files.sliced(1), mode, std::nullopt);
    append(job);
    setShowQueue(true);
    startWorkers();
}

void AppModel::append(const std::shared_ptr<Job> &job)
{
    m_jobs.append(job);
    m_filesOfJobs.insert(job->input.id);
    Q_EMIT jobsChanged();
}

std::optional<QUrl> AppModel::outputDirectory() const
{
    return m_outputDirectoryPath ? std::optional(QUrl::fromLocalFile(*m_outputDirectoryPath))
                                 : std::nullopt;
}

std::optional<QUrl> AppModel::outputDirectoryFor(const VideoFile &file) const
{
    std::optional<QUrl> directory = outputDirectory();
    if (!directory || !m_keepFolderStructure || !m_sourceRoot) {
        return directory;
    }
    const QString root = folderPath(*m_sourceRoot);
    const QString path = Text::path(file.url);
    // Plain text on purpose: a sibling folder whose name begins with the root's name passes too.
    if (!path.startsWith(root)) {
        return directory;
    }
    const QString behind = path.sliced(root.size());
    const QString parent = behind.first(std::max<qsizetype>(behind.lastIndexOf(u'/'), 0));
    return parent.isEmpty() ? directory
                            : QUrl::fromLocalFile(Text::joinedPath(Text::path(*directory), parent));
}

qsizetype AppModel::wantedWorkers() const
{
    return std::clamp<qint64>(m_queueConcurrency, 1, mostWorkers);
}

// Counts all that were ever started: ended workers aren't replaced.
void AppModel::startWorkers()
{
    while (m_workers.size() < wantedWorkers()) {
        auto *worker = new QueueWorker(*this);
        m_workers.append(worker);
        worker->start();
    }
}

void AppModel::restartWorkers()
{
    while (m_workers.size() > wantedWorkers()) {
        m_workers.takeLast()->cancel();
    }
    startWorkers();
}

std::shared_ptr<Job> AppModel::nextQueuedJob() const
{
    const auto found = std::ranges::find_if(m_jobs, [](const std::shared_ptr<Job> &job) {
        return job->outcome() == Job::Outcome::queued;
    });
    return found == m_jobs.end() ? nullptr : *found;
}

std::shared_ptr<Job> AppModel::jobWithID(const QUuid &id) const
{
    const auto found = std::ranges::find_if(
        m_jobs, [&](const std::shared_ptr<Job> &job) { return job->id == id; });
    return found == m_jobs.end() ? nullptr : *found;
}

void AppModel::cancelJob(const QUuid &id)
{
    const std::shared_ptr<Job> job = jobWithID(id);
    if (job && job->outcome() == Job::Outcome::queued) {
        job->setState(Job::Cancelled());
    }
    if (const std::shared_ptr<PlanExecutor> executor = m_executors.value(id)) {
        executor->cancel();
    }
}

void AppModel::retryJob(const QUuid &id)
{
    if (const std::shared_ptr<Job> job = jobWithID(id)) {
        job->setState(Job::Queued());
        startWorkers();
    }
}

void AppModel::clearFinished()
{
    if (m_jobs.removeIf(hasEnded) > 0) {
        Q_EMIT jobsChanged();
    }
}

void AppModel::run(const std::shared_ptr<Job> &job, const std::function<void()> &done)
{
    if (!toolset()) {
        Q_EMIT jobFailed(job, std::make_exception_ptr(EngineError::missingFFmpeg()));
        job->setState(Job::Failed{t(u"settings.ffmpeg.missing"_s)});
        done();
        return;
    }
    job->setState(Job::Analyzing());
    const std::optional<JobPlan> plan = planOrFail(job);
    if (!plan) {
        done();
        return;
    }
    job->setState(Job::Running());
    Q_EMIT jobPlanned(job, *plan);
    execute(job, *plan, [this, job, plan, done](const Ending &ending) {
        end(job, *plan, ending);
        done();
    });
}

std::optional<JobPlan> AppModel::planOrFail(const std::shared_ptr<Job> &job)
{
    try {
        return buildPlan(*job);
    } catch (const BuilderError &error) {
        Q_EMIT jobFailed(job, std::current_exception());
        job->setState(Job::Failed{builderMessage(error)});
    } catch (const std::exception &) {
        Q_EMIT jobFailed(job, std::current_exception());
        job->setState(Job::Failed{JobFailure::description(std::current_exception())});
    }
    return std::nullopt;
}

std::optional<QUrl> AppModel::outputDirectoryOf(const Job &job) const
{
    return job.outputDirectory ? job.outputDirectory : outputDirectory();
}

JobPlan AppModel::buildPlan(const Job &job) const
{
    return JobPlanner::plan(job, toolset(), outputDirectoryOf(job),
                            m_outputTemplate.isEmpty() ? std::nullopt
                                                       : std::optional(m_outputTemplate));
}

JobPlan AppModel::runnablePlan(const JobPlan &plan) const
{
    const JobPlan timed = FrameTiming::apply(plan);
    const auto &hardware = located().hardwareEncoders;
    return hardware ? EncoderStandIns::apply(timed, hardware->standIns()) : timed;
}

QString AppModel::builderMessage(const BuilderError &error) const
{
    switch (error.kind()) {
    case BuilderError::Case::noSegments:
        return t(u"trim.empty"_s);
    case BuilderError::Case::noAudioTrack:
        return t(u"extract.noaudio"_s);
    case BuilderError::Case::vp9Unavailable:
        return t(u"error.vp9"_s);
    }
    Q_UNREACHABLE();
}

void AppModel::execute(const std::shared_ptr<Job> &job, const JobPlan &plan,
                       const std::function<void(const Ending &)> &done)
{
    const std::shared_ptr<PlanExecutor> executor = makeExecutor();
    m_executors.insert(job->id, executor);
    holdSleep();
    // The state is set whatever it is at that moment: a job that was put back to waiting while it
    // ran is seen to run again.
    const auto onProgress = [this, weak = std::weak_ptr(job)](double fraction) {
        m_executorPool.post([weak, fraction] {
            if (const std::shared_ptr<Job> running = weak.lock()) {
                running->setState(Job::Running{fraction});
            }
        });
    };
    const auto work = [executor, onProgress, directory = outputDirectoryOf(*job),
                       runnable = announcingAttempts(job, runnablePlan(plan))]() -> Ending {
        // A tree of folders that a source was found in may not stand there yet. A failure shows in
        // ffmpeg's own words.
        if (directory) {
            QDir().mkpath(Text::path(*directory));
        }
        try {
            return executor->execute(runnable, onProgress);
        } catch (const std::exception &) {
            return std::current_exception();
        }
    };
    m_executorPool.run(work, [this, id = job->id, done](const Ending &ending) {
        m_executors.remove(id);
        releaseSleep();
        done(ending);
    });
}

JobPlan AppModel::announcingAttempts(const std::shared_ptr<Job> &job, JobPlan plan)
{
    const auto attempts = std::make_shared<int>(1);
    Q_EMIT jobAttempted(job, *attempts);
    const auto announcing = [this, weak = std::weak_ptr(job),
                             attempts](const PlanFactory &factory) -> PlanFactory {
        return [this, weak, attempts, factory](qint64 videoKbps) {
            m_executorPool.post([this, weak, attempt = ++*attempts] {
                if (const std::shared_ptr<Job> running = weak.lock()) {
                    Q_EMIT jobAttempted(running, attempt);
                }
            });
            return factory(videoKbps);
        };
    };
    if (plan.retryFactory) {
        plan.retryFactory = announcing(plan.retryFactory);
    }
    if (plan.approach) {
        plan.approach->factory = announcing(plan.approach->factory);
    }
    return plan;
}

void AppModel::end(const std::shared_ptr<Job> &job, const JobPlan &plan, const Ending &ending)
{
    if (const auto *outcome = std::get_if<ExecutionOutcome>(&ending)) {
        finish(*job, plan, *outcome);
        return;
    }
    const auto &failure = std::get<std::exception_ptr>(ending);
    Q_EMIT jobFailed(job, failure);
    job->setState(JobFailure::state(failure, m_language));
}

void AppModel::finish(Job &job, const JobPlan &plan, const ExecutionOutcome &outcome)
{
    std::optional<QString> note;
    if (outcome.retries >= 1) {
        note = t(u"queue.refit"_s);
    } else if (plan.badgeKey) {
        note = t(*plan.badgeKey);
    }
    const qint64 originalBytes = job.input.fileSizeBytes;
    job.setState(
        Job::Finished{outcome.outputURLs, originalBytes, outcome.outputBytes, std::move(note)});
    if (m_playDoneSound && !m_services.doneSound->play()) {
        m_services.doneSound->beep();
    }
    if (outcome.outputBytes < originalBytes && m_notifyOnFinish &&
        !m_services.applicationState->isActive()) {
        notifyFinished(job.input.url.fileName(), Fmt::bytes(originalBytes - outcome.outputBytes));
    }
}

void AppModel::notifyFinished(const QString &fileName, const QString &saved)
{
    m_services.notifier->post(u"Morvix"_s, fileName + u": "_s + saved);
}

void AppModel::holdSleep()
{
    if (m_runningJobs++ == 0) {
        m_services.sleepInhibitor->hold(t(u"queue.status.running"_s));
    }
}

void AppModel::releaseSleep()
{
    if (--m_runningJobs == 0) {
        m_services.sleepInhibitor->release();
    }
}
