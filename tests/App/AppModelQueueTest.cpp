// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "App/QueueWorker.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

using Outcome = Job::Outcome;

namespace {

class AppModelQueueTest : public AppFixture
{
protected:
    /// Films named 0.mp4, 1.mp4, … whose encodes wait at their gates.
    QList<VideoFile> gatedFilms(int count)
    {
        QList<VideoFile> films;
        for (int i = 0; i < count; ++i) {
            films += film(QString::number(i) + u".mp4"_s);
            m_gates.push_back(std::make_unique<Gate>(films.last()));
        }
        return films;
    }

    void openGates()
    {
        for (const auto &gate : m_gates) {
            gate->open();
        }
    }

    /// Runs one job, so that the one worker has ended.
    std::shared_ptr<Job> useUpThePool()
    {
        const auto job = enqueue(film(u"first.mp4"_s));
        waitFor(job, Outcome::finished);
        turnTheLoop();
        return job;
    }

    /// Waits until so many jobs have been reported on by their ffmpeg, so that all are at a gate.
    void waitForEncodes(int wanted)
    {
        waitUntil([this, wanted] {
            return std::ranges::count_if(m_model->jobs(), [](const auto &job) {
                       return job->state() == Job::State(Job::Running{0.25});
                   }) == wanted;
        });
    }

    qsizetype livingWorkers() const { return m_model->findChildren<QueueWorker *>().size(); }

    std::vector<std::unique_ptr<Gate>> m_gates;
};

} // namespace

// The pool.

TEST_F(AppModelQueueTest, a_job_is_new_and_queued_until_the_loop_turns)
{
    start();
    const QDateTime before = QDateTime::currentDateTimeUtc();
    const auto first = enqueue(film(u"a.mp4"_s));
    const auto second = enqueue(film(u"a.mp4"_s));

    EXPECT_THAT(outcomesOf(m_model->jobs()), Each(Outcome::queued));
    EXPECT_NE(first->id, second->id);
    EXPECT_TRUE(first->extraInputs.isEmpty());
    EXPECT_GE(first->createdAt, before);
    EXPECT_LE(second->createdAt, QDateTime::currentDateTimeUtc());
    EXPECT_EQ(first->mode, JobMode(oneMegabyte()));
}

TEST_F(AppModelQueueTest, jobs_run_one_by_one_in_the_order_of_the_list)
{
    start();
    const auto jobs = enqueueAll({film(u"b.mp4"_s), film(u"a.mp4"_s), film(u"c.mp4"_s)});
    const RunningCount count(jobs);
    QStringList started;
    QObject::connect(
        m_model.get(), &AppModel::jobPlanned, m_model.get(),
        [&](const std::shared_ptr<Job> &job) { started += job->input.url.fileName(); });

    waitForAllToEnd();

    EXPECT_EQ(started, (QStringList{u"b.mp4"_s, u"a.mp4"_s, u"c.mp4"_s}));
    EXPECT_EQ(count.most(), 1);
    EXPECT_THAT(outcomesOf(jobs), Each(Outcome::finished));
}

TEST_F(AppModelQueueTest, a_job_added_after_the_workers_have_ended_stays_queued)
{
    start();
    useUpThePool();

    const auto late = enqueue(film(u"late.mp4"_s));
    turnTheLoop();

    EXPECT_EQ(late->outcome(), Outcome::queued);
}

TEST_F(AppModelQueueTest, a_job_put_back_after_the_workers_have_ended_stays_queued)
{
    start();
    const auto job = useUpThePool();

    m_model->retryJob(job->id);
    turnTheLoop();

    EXPECT_EQ(job->outcome(), Outcome::queued);
}

TEST_F(AppModelQueueTest, raising_the_concurrency_by_one_adds_one_worker_that_takes_all_that_wait)
{
    start();
    const auto first = useUpThePool();
    m_model->retryJob(first->id);
    const auto second = enqueue(film(u"second.mp4"_s));
    const RunningCount count(m_model->jobs());

    m_model->setQueueConcurrency(2);
    waitForAllToEnd();

    EXPECT_THAT(outcomesOf({first, second}), Each(Outcome::finished));
    EXPECT_EQ(count.most(), 1);
}

TEST_F(AppModelQueueTest, a_worker_that_has_ended_doesnt_come_back_beside_new_ones)
{
    start();
    useUpThePool();
    m_model->setQueuePaused(true);
    const auto jobs = enqueueAll(gatedFilms(3));
    m_model->setQueueConcurrency(3);
    turnTheLoop();

    // The two new ones wake from a whole interval of the pause: whatever the old one might still
    // wait for would have come before.
    m_model->setQueuePaused(false);
    waitForEncodes(2);
    turnTheLoop();

    EXPECT_THAT(outcomesOf(jobs), ElementsAre(Outcome::running, Outcome::running, Outcome::queued));
}

TEST_F(AppModelQueueTest, setting_the_concurrency_to_what_it_was_starts_no_worker)
{
    start();
    useUpThePool();
    const auto late = enqueue(film(u"late.mp4"_s));

    m_model->setQueueConcurrency(1);
    turnTheLoop();

    EXPECT_EQ(late->outcome(), Outcome::queued);
}

TEST_F(AppModelQueueTest, a_pool_that_filled_over_an_empty_queue_is_used_up)
{
    start();
    m_model->setQueueConcurrency(2);
    turnTheLoop();

    const auto late = enqueue(film(u"late.mp4"_s));
    turnTheLoop();
    EXPECT_EQ(late->outcome(), Outcome::queued);

    m_model->setQueueConcurrency(3);
    waitFor(late, Outcome::finished);
}

TEST_F(AppModelQueueTest, the_pool_fills_with_the_first_job_so_that_a_later_one_waits_for_it)
{
    start({.concurrency = 2});
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto first = enqueue(slow);
    waitForProgress(first, 0.25);
    turnTheLoop();

    const auto second = enqueue(film(u"second.mp4"_s));
    turnTheLoop();
    EXPECT_EQ(second->outcome(), Outcome::queued);

    gate.open();
    waitForAllToEnd();
    EXPECT_THAT(outcomesOf({first, second}), Each(Outcome::finished));
}

namespace {

struct Concurrency {
    qint64 stored;
    int atOnce;
};

class AppModelConcurrencyTest : public AppModelQueueTest,
                                public testing::WithParamInterface<Concurrency>
{
};

} // namespace

TEST_P(AppModelConcurrencyTest, as_many_jobs_run_at_once_as_the_stored_number_acts_as)
{
    start({.concurrency = GetParam().stored});
    const auto jobs = enqueueAll(gatedFilms(5));
    const RunningCount count(jobs);

    waitForEncodes(GetParam().atOnce);
    turnTheLoop();
    EXPECT_EQ(count.now(), GetParam().atOnce);
    EXPECT_EQ(m_model->queueConcurrency(), GetParam().stored);

    openGates();
    waitForAllToEnd();
    EXPECT_EQ(count.most(), GetParam().atOnce);
    EXPECT_THAT(outcomesOf(jobs), Each(Outcome::finished));
}

TEST_P(AppModelConcurrencyTest, the_same_holds_for_a_number_that_is_set)
{
    start({.concurrency = 1});
    const auto jobs = enqueueAll(gatedFilms(5));
    m_model->setQueueConcurrency(GetParam().stored);

    waitForEncodes(GetParam().atOnce);
    turnTheLoop();

    EXPECT_EQ(std::ranges::count(outcomesOf(jobs), Outcome::running), GetParam().atOnce);
    EXPECT_EQ(m_model->queueConcurrency(), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(, AppModelConcurrencyTest,
                         testing::Values(Concurrency{-5, 1}, Concurrency{0, 1}, Concurrency{1, 1},
                                         Concurrency{2, 2}, Concurrency{3, 3}, Concurrency{4, 3},
                                         Concurrency{10'000'000'000, 3}));

TEST_F(AppModelQueueTest, lowering_the_concurrency_never_interrupts_a_job)
{
    start({.concurrency = 3});
    const auto jobs = enqueueAll(gatedFilms(3));
    const auto later = enqueueAll({film(u"x.mp4"_s), film(u"y.mp4"_s), film(u"z.mp4"_s)});
    const RunningCount count(later);
    waitForEncodes(3);

    m_model->setQueueConcurrency(1);
    turnTheLoop();
    EXPECT_THAT(outcomesOf(jobs), Each(Outcome::running));

    openGates();
    waitForAllToEnd();
    EXPECT_THAT(outcomesOf(jobs + later), Each(Outcome::finished));
    EXPECT_EQ(count.most(), 1);
}

TEST_F(AppModelQueueTest, lowering_the_concurrency_while_paused_ends_the_surplus_workers_at_once)
{
    start({.concurrency = 3});
    m_model->setQueuePaused(true);
    enqueueAll(gatedFilms(4));
    turnTheLoop();
    ASSERT_EQ(livingWorkers(), 3);

    m_model->setQueueConcurrency(1);
    turnTheLoop();
    EXPECT_EQ(livingWorkers(), 1);

    m_model->setQueuePaused(false);
    waitForEncodes(1);
    turnTheLoop();
    EXPECT_EQ(std::ranges::count(outcomesOf(m_model->jobs()), Outcome::running), 1);
}

TEST_F(AppModelQueueTest, lowered_and_raised_again_while_paused_the_pool_is_as_large_as_before)
{
    start({.concurrency = 3});
    m_model->setQueuePaused(true);
    enqueueAll(gatedFilms(5));
    turnTheLoop();

    m_model->setQueueConcurrency(1);
    m_model->setQueueConcurrency(3);
    m_model->setQueuePaused(false);
    waitForEncodes(3);
    turnTheLoop();

    EXPECT_EQ(std::ranges::count(outcomesOf(m_model->jobs()), Outcome::running), 3);
}

TEST_F(AppModelQueueTest, workers_that_ended_make_room_when_the_concurrency_is_lowered)
{
    start({.concurrency = 2});
    useUpThePool();
    const auto late = enqueue(film(u"late.mp4"_s));

    m_model->setQueueConcurrency(1);
    turnTheLoop();
    EXPECT_EQ(late->outcome(), Outcome::queued);

    m_model->setQueueConcurrency(2);
    waitFor(late, Outcome::finished);
}

// Pausing.

TEST_F(AppModelQueueTest, a_pause_lets_the_running_job_end_and_no_other_begin)
{
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto running = enqueue(slow);
    const auto waiting = enqueue(film(u"next.mp4"_s));
    waitForProgress(running, 0.25);

    m_model->setQueuePaused(true);
    gate.open();
    waitFor(running, Outcome::finished);
    turnTheLoop();
    EXPECT_EQ(waiting->outcome(), Outcome::queued);

    m_model->setQueuePaused(false);
    waitFor(waiting, Outcome::finished);
}

TEST_F(AppModelQueueTest, jobs_added_while_paused_wait_and_run_in_order_afterwards)
{
    start();
    m_model->setQueuePaused(true);
    const auto jobs = enqueueAll({film(u"a.mp4"_s), film(u"b.mp4"_s)});
    turnTheLoop();
    EXPECT_THAT(outcomesOf(jobs), Each(Outcome::queued));

    AppModel::JobList started;
    QObject::connect(m_model.get(), &AppModel::jobPlanned, m_model.get(),
                     [&](const std::shared_ptr<Job> &job) { started += job; });
    m_model->setQueuePaused(false);
    waitForAllToEnd();
    EXPECT_EQ(started, jobs);
}

TEST_F(AppModelQueueTest, a_pause_doesnt_wake_workers_that_have_ended)
{
    start();
    useUpThePool();
    m_model->setQueuePaused(true);
    const auto late = enqueue(film(u"late.mp4"_s));

    m_model->setQueuePaused(false);
    turnTheLoop();

    EXPECT_EQ(late->outcome(), Outcome::queued);
}

TEST_F(AppModelQueueTest, a_pause_is_not_kept)
{
    start();
    m_model->setQueuePaused(true);
    start();
    EXPECT_FALSE(m_model->queuePaused());
}

// Cancelling.

TEST_F(AppModelQueueTest, a_cancelled_queued_job_is_never_taken)
{
    start();
    const auto jobs = enqueueAll({film(u"a.mp4"_s), film(u"b.mp4"_s), film(u"c.mp4"_s)});
    const StateLog log(jobs.at(1));

    m_model->cancelJob(jobs.at(1)->id);
    EXPECT_EQ(jobs.at(1)->outcome(), Outcome::cancelled);
    waitForAllToEnd();
    turnTheLoop();

    EXPECT_THAT(outcomesOf(jobs),
                ElementsAre(Outcome::finished, Outcome::cancelled, Outcome::finished));
    EXPECT_THAT(log.words(), ElementsAre(u"cancelled"_s));
}

TEST_F(AppModelQueueTest, a_cancelled_running_job_fails_with_ffmpegs_last_160_characters)
{
    installFFmpeg("trap 'printf \"%0200d\" 7 >&2; exit 255' TERM\n"
                  "progress 2500000\n"
                  "await_gate\n");
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto job = enqueue(slow);
    waitForProgress(job, 0.25);

    m_model->cancelJob(job->id);
    EXPECT_EQ(job->outcome(), Outcome::running);
    waitFor(job, Outcome::failed);

    EXPECT_EQ(messageOf(job), u"FFmpeg error: "_s + QString(159, u'0') + u'7');
}

TEST_F(AppModelQueueTest, a_job_that_is_cancelled_between_two_steps_ends_as_cancelled)
{
    // The first step ends well in spite of the word.
    installFFmpeg("trap 'exit 0' TERM\n"
                  "progress 2500000\n"
                  "await_gate\n");
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto job = enqueue(slow, oneMegabyteExactly());
    waitForProgress(job, 0.25);

    m_model->cancelJob(job->id);
    waitUntil([&] { return job->outcome() != Outcome::running; });

    EXPECT_EQ(job->outcome(), Outcome::cancelled);
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(AppModelQueueTest, a_cancelled_job_reports_no_more_progress)
{
    installFFmpeg("trap 'progress 7500000; exit 1' TERM\n"
                  "progress 2500000\n"
                  "await_gate\n");
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto job = enqueue(slow);
    const StateLog log(job);
    waitForProgress(job, 0.25);

    m_model->cancelJob(job->id);
    waitFor(job, Outcome::failed);
    turnTheLoop();

    EXPECT_THAT(log.words(),
                ElementsAre(u"analyzing"_s, u"running 0"_s, u"running 0.25"_s, u"failed"_s));
}

TEST_F(AppModelQueueTest, cancelling_an_unknown_job_changes_nothing)
{
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto running = enqueue(slow);
    const auto waiting = enqueue(film(u"next.mp4"_s));
    waitForProgress(running, 0.25);

    m_model->cancelJob(QUuid::createUuid());
    gate.open();
    waitForAllToEnd();

    EXPECT_THAT(outcomesOf({running, waiting}), Each(Outcome::finished));
}

TEST_F(AppModelQueueTest, cancelling_an_ended_job_changes_nothing)
{
    start();
    const auto job = useUpThePool();
    const Job::State before = job->state();
    m_model->cancelJob(job->id);
    turnTheLoop();
    EXPECT_EQ(job->state(), before);
}

TEST_F(AppModelQueueTest, cancelling_one_of_two_running_jobs_leaves_the_other_alone)
{
    start({.concurrency = 2});
    const auto jobs = enqueueAll(gatedFilms(2));
    waitForEncodes(2);

    m_model->cancelJob(jobs.at(1)->id);
    waitFor(jobs.at(1), Outcome::failed);
    EXPECT_EQ(jobs.at(0)->outcome(), Outcome::running);

    openGates();
    waitFor(jobs.at(0), Outcome::finished);
}

TEST_F(AppModelQueueTest, after_a_cancelled_job_the_worker_takes_the_next)
{
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto cancelled = enqueue(slow);
    const auto next = enqueue(film(u"next.mp4"_s));
    waitForProgress(cancelled, 0.25);

    m_model->cancelJob(cancelled->id);
    waitForAllToEnd();

    EXPECT_THAT(outcomesOf({cancelled, next}), ElementsAre(Outcome::failed, Outcome::finished));
}

// Putting back.

TEST_F(AppModelQueueTest, a_job_that_is_put_back_keeps_itself_and_its_place)
{
    installFFmpeg("if [ $run = 1 ]; then exit 1; fi\n"
                  "await_gate\n"
                  "result 950000\n");
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto first = enqueue(film(u"first.mp4"_s));
    const auto second = enqueue(slow);
    const auto third = enqueue(film(u"third.mp4"_s));
    const QUuid id = first->id;
    const QDateTime createdAt = first->createdAt;
    waitFor(second, Outcome::running);
    ASSERT_EQ(first->outcome(), Outcome::failed);

    QStringList started;
    QObject::connect(
        m_model.get(), &AppModel::jobPlanned, m_model.get(),
        [&](const std::shared_ptr<Job> &job) { started += job->input.url.fileName(); });
    m_model->retryJob(id);
    EXPECT_EQ(first->outcome(), Outcome::queued);
    gate.open();
    waitForAllToEnd();

    EXPECT_EQ(m_model->jobs(), (AppModel::JobList{first, second, third}));
    EXPECT_EQ(first->id, id);
    EXPECT_EQ(first->createdAt, createdAt);
    EXPECT_EQ(started, (QStringList{u"first.mp4"_s, u"third.mp4"_s}));
    EXPECT_EQ(first->outcome(), Outcome::finished);
}

TEST_F(AppModelQueueTest, a_cancelled_job_can_be_put_back)
{
    start();
    const auto job = enqueue(film(u"a.mp4"_s));
    m_model->cancelJob(job->id);
    m_model->retryJob(job->id);
    waitFor(job, Outcome::finished);
}

TEST_F(AppModelQueueTest, a_job_that_is_put_back_goes_from_queued_through_the_same_states)
{
    start({.concurrency = 2});
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto other = enqueue(slow);
    m_model->setQueuePaused(true);
    const auto job = enqueue(film(u"a.mp4"_s));
    m_model->cancelJob(job->id);
    const StateLog log(job);

    m_model->retryJob(job->id);
    m_model->setQueuePaused(false);
    waitFor(job, Outcome::finished);

    EXPECT_THAT(log.words(), ElementsAre(u"queued"_s, u"analyzing"_s, u"running 0"_s,
                                         u"running 0.25"_s, u"running 0.5"_s, u"finished"_s));
}

TEST_F(AppModelQueueTest, a_finished_job_that_is_put_back_runs_again_and_shows_the_new_result)
{
    installFFmpeg("if [ $run = 1 ]; then result 950000; else result 940000; fi\n");
    start();
    const auto job = useUpThePool();
    EXPECT_EQ(resultOf(job).outputBytes, 950'000);

    m_model->retryJob(job->id);
    m_model->setQueueConcurrency(2);
    waitFor(job, Outcome::finished);

    EXPECT_EQ(resultOf(job).outputBytes, 940'000);
    ASSERT_EQ(resultOf(job).outputURLs.size(), 1);
    EXPECT_EQ(QFile(resultOf(job).outputURLs.first().toLocalFile()).size(), 940'000);
}

TEST_F(AppModelQueueTest, a_job_that_is_put_back_is_planned_with_the_settings_of_that_moment)
{
    start();
    const auto job = useUpThePool();
    const TempFolder elsewhere;
    m_model->setOutputDirectoryPath(elsewhere.path());
    m_model->setOutputTemplate(u"new-{name}"_s);

    m_model->retryJob(job->id);
    m_model->setQueueConcurrency(2);
    waitFor(job, Outcome::finished);

    EXPECT_EQ(resultOf(job).outputURLs, QList<QUrl>{elsewhere.url(u"new-first.mp4"_s)});
    EXPECT_EQ(elsewhere.names(), QStringList{u"new-first.mp4"_s});
}

TEST_F(AppModelQueueTest, putting_an_unknown_job_back_changes_nothing)
{
    start();
    const auto job = useUpThePool();
    m_model->retryJob(QUuid::createUuid());
    turnTheLoop();
    EXPECT_EQ(job->outcome(), Outcome::finished);
}

// Clearing.

TEST_F(AppModelQueueTest, clearing_removes_the_ended_jobs_and_leaves_the_others)
{
    installFFmpeg("case $in in *bad*) exit 1;; esac\n"
                  "progress 2500000\n"
                  "await_gate\n"
                  "result 950000\n");
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    enqueueAll({film(u"good.mp4"_s), film(u"bad.mp4"_s), film(u"unwanted.mp4"_s)});
    m_model->cancelJob(m_model->jobs().last()->id);
    const auto running = enqueue(slow);
    const auto waiting = enqueue(film(u"waiting.mp4"_s));
    waitForProgress(running, 0.25);
    ASSERT_THAT(outcomesOf(m_model->jobs()),
                ElementsAre(Outcome::finished, Outcome::failed, Outcome::cancelled,
                            Outcome::running, Outcome::queued));

    m_model->clearFinished();

    EXPECT_EQ(m_model->jobs(), (AppModel::JobList{running, waiting}));
    gate.open();
    waitForAllToEnd();
    EXPECT_THAT(outcomesOf(m_model->jobs()), Each(Outcome::finished));
}

TEST_F(AppModelQueueTest, clearing_leaves_a_job_whose_plan_is_being_made)
{
    start();
    const auto job = enqueue(film(u"a.mp4"_s));
    QObject::connect(job.get(), &Job::stateChanged, m_model.get(), [&] {
        if (job->outcome() == Outcome::analyzing) {
            m_model->clearFinished();
        }
    });
    waitFor(job, Outcome::finished);
    EXPECT_EQ(m_model->jobs(), AppModel::JobList{job});
}

TEST_F(AppModelQueueTest, a_change_of_the_list_is_told_once_and_only_when_there_is_one)
{
    start();
    m_model->setQueuePaused(true);
    int changes = 0;
    QObject::connect(m_model.get(), &AppModel::jobsChanged, m_model.get(), [&] { ++changes; });

    const auto job = enqueue(film(u"a.mp4"_s));
    EXPECT_EQ(changes, 1);
    m_model->clearFinished();
    EXPECT_EQ(changes, 1);
    m_model->cancelJob(job->id);
    m_model->clearFinished();
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(m_model->jobs().isEmpty());
}

// Adding.

namespace {

class AppModelEnqueueTest : public AppModelQueueTest
{
protected:
    /// A folder with a.mp4 and b.mp4; one of them becomes the selected file.
    void takeInTwoFilms()
    {
        m_films.write(u"root/a.mp4"_s, "x");
        m_films.write(u"root/b.mp4"_s, "x");
        takeIn(m_films.url(u"root/"_s));
        ASSERT_EQ(m_model->files().size(), 2);
    }

    void startPaused()
    {
        start();
        m_model->setQueuePaused(true);
    }

    QList<VideoFile> inputs() const
    {
        QList<VideoFile> inputs;
        for (const std::shared_ptr<Job> &job : m_model->jobs()) {
            inputs += job->input;
        }
        return inputs;
    }
};

} // namespace

TEST_F(AppModelEnqueueTest, the_selected_file_gets_a_job_and_the_queue_is_shown)
{
    startPaused();
    takeInTwoFilms();
    m_model->setSelectedFileID(m_model->files().last().id);

    m_model->enqueue(oneMegabyte(), AppModel::Scope::selectedFile);

    EXPECT_EQ(inputs(), QList<VideoFile>{m_model->files().last()});
    EXPECT_EQ(m_model->jobs().first()->mode, JobMode(oneMegabyte()));
    EXPECT_TRUE(m_model->showQueue());
}

TEST_F(AppModelEnqueueTest, all_files_get_a_job_each_in_their_order)
{
    startPaused();
    takeInTwoFilms();

    m_model->enqueue(oneMegabyte(), AppModel::Scope::allFiles);

    EXPECT_EQ(inputs(), m_model->files());
    EXPECT_TRUE(m_model->showQueue());
}

TEST_F(AppModelEnqueueTest, without_a_selected_file_all_get_a_job)
{
    startPaused();
    takeInTwoFilms();
    m_model->setSelectedFileID(std::nullopt);

    m_model->enqueue(oneMegabyte(), AppModel::Scope::selectedFile);

    EXPECT_EQ(inputs(), m_model->files());
}

TEST_F(AppModelEnqueueTest, a_selection_that_is_no_file_counts_as_none)
{
    startPaused();
    takeInTwoFilms();
    m_model->setSelectedFileID(QUuid::createUuid());

    m_model->enqueue(oneMegabyte(), AppModel::Scope::selectedFile);

    EXPECT_EQ(inputs(), m_model->files());
}

TEST_F(AppModelEnqueueTest, without_files_nothing_happens)
{
    start();
    m_model->enqueue(oneMegabyte(), AppModel::Scope::allFiles);
    m_model->enqueue(oneMegabyte(), AppModel::Scope::selectedFile);
    EXPECT_TRUE(m_model->jobs().isEmpty());
    EXPECT_FALSE(m_model->showQueue());
}

TEST_F(AppModelEnqueueTest, without_tools_two_films_are_not_merged)
{
    removeTools();
    start();
    m_model->enqueueMerge(MergeParams(), {film(u"a.mp4"_s), film(u"b.mp4"_s)});
    EXPECT_TRUE(m_model->jobs().isEmpty());
    EXPECT_FALSE(m_model->showQueue());
}

TEST_F(AppModelEnqueueTest, a_probed_file_gets_a_job_without_the_queue_being_shown)
{
    startPaused();
    const VideoFile file = film(u"a.mp4"_s);
    m_model->enqueueProbed(file, oneMegabyte());
    EXPECT_EQ(inputs(), QList<VideoFile>{file});
    EXPECT_FALSE(m_model->showQueue());
}

TEST_F(AppModelEnqueueTest, a_job_keeps_its_file_when_that_is_removed)
{
    startPaused();
    takeInTwoFilms();
    const VideoFile file = m_model->files().first();
    m_model->enqueue(oneMegabyte(), AppModel::Scope::selectedFile);

    m_model->removeFile(file.id);

    EXPECT_EQ(inputs(), QList<VideoFile>{file});
}

TEST_F(AppModelEnqueueTest, a_merge_of_several_files_is_one_job_beside_the_first)
{
    startPaused();
    m_model->setOutputDirectoryPath(u"/elsewhere"_s);
    const QList<VideoFile> films{film(u"b.mp4"_s), film(u"a.mp4"_s), film(u"c.mp4"_s)};

    m_model->enqueueMerge(MergeParams(), films);

    ASSERT_EQ(m_model->jobs().size(), 1);
    const auto job = m_model->jobs().first();
    EXPECT_EQ(job->input, films.first());
    EXPECT_EQ(job->extraInputs, films.sliced(1));
    EXPECT_EQ(job->outputDirectory, std::nullopt);
    EXPECT_EQ(job->outcome(), Outcome::queued);
    EXPECT_TRUE(m_model->showQueue());
}

TEST_F(AppModelEnqueueTest, fewer_than_two_files_are_not_merged)
{
    start();
    m_model->enqueueMerge(MergeParams(), {});
    m_model->enqueueMerge(MergeParams(), {film(u"a.mp4"_s)});
    EXPECT_TRUE(m_model->jobs().isEmpty());
    EXPECT_FALSE(m_model->showQueue());
}

TEST_F(AppModelEnqueueTest, a_merge_starts_a_worker)
{
    start();
    m_model->enqueueMerge(MergeParams(), {film(u"a.mp4"_s), film(u"b.mp4"_s)});
    const auto job = m_model->jobs().first();
    waitUntil([&] { return job->outcome() != Outcome::queued; });
}

// Where results go.

namespace {

struct Placed {
    QString film;
    QString directory;
};

class AppModelPlaceTest : public AppModelEnqueueTest, public testing::WithParamInterface<Placed>
{
};

} // namespace

TEST_P(AppModelPlaceTest, the_tree_below_the_source_root_is_kept_below_the_output_directory)
{
    startPaused();
    takeInTwoFilms();
    m_model->setOutputDirectoryPath(u"/out"_s);
    m_model->setKeepFolderStructure(true);

    const auto job = enqueue(film(GetParam().film));

    ASSERT_TRUE(job->outputDirectory);
    EXPECT_EQ(QDir::cleanPath(job->outputDirectory->toLocalFile()), GetParam().directory);
}

// The test is one of plain text: a sibling folder whose name begins with the root's name passes.
INSTANTIATE_TEST_SUITE_P(, AppModelPlaceTest,
                         testing::Values(Placed{u"root/a/b/c.mp4"_s, u"/out/a/b"_s},
                                         Placed{u"root/a/c.mp4"_s, u"/out/a"_s},
                                         Placed{u"root/c.mp4"_s, u"/out"_s},
                                         Placed{u"root/ä #1%20/c.mp4"_s, u"/out/ä #1%20"_s},
                                         Placed{u"elsewhere/a/c.mp4"_s, u"/out"_s},
                                         Placed{u"roo/c.mp4"_s, u"/out"_s},
                                         Placed{u"rooted/b/c.mp4"_s, u"/out/ed/b"_s}));

TEST_F(AppModelEnqueueTest, without_the_wish_for_the_tree_results_go_to_the_directory_itself)
{
    startPaused();
    takeInTwoFilms();
    m_model->setOutputDirectoryPath(u"/out"_s);
    EXPECT_EQ(enqueue(film(u"root/a/c.mp4"_s))->outputDirectory, QUrl(u"file:///out"_s));
}

TEST_F(AppModelEnqueueTest, without_a_source_root_results_go_to_the_directory_itself)
{
    startPaused();
    m_model->setOutputDirectoryPath(u"/out"_s);
    m_model->setKeepFolderStructure(true);
    EXPECT_EQ(enqueue(film(u"root/a/c.mp4"_s))->outputDirectory, QUrl(u"file:///out"_s));
}

TEST_F(AppModelEnqueueTest, without_a_directory_a_job_has_none_whatever_the_tree)
{
    startPaused();
    takeInTwoFilms();
    m_model->setKeepFolderStructure(true);
    EXPECT_EQ(enqueue(film(u"root/a/c.mp4"_s))->outputDirectory, std::nullopt);
}

TEST_F(AppModelEnqueueTest, a_job_keeps_the_directory_that_was_set_when_it_was_added)
{
    startPaused();
    m_model->setOutputDirectoryPath(u"/first"_s);
    const auto job = enqueue(film(u"a.mp4"_s));

    m_model->setOutputDirectoryPath(u"/second"_s);
    EXPECT_EQ(m_model->buildPlan(*job).finalOutputURLs,
              QList<QUrl>{QUrl(u"file:///first/a-1MB.mp4"_s)});
    m_model->setOutputDirectoryPath(std::nullopt);
    EXPECT_EQ(m_model->buildPlan(*job).finalOutputURLs,
              QList<QUrl>{QUrl(u"file:///first/a-1MB.mp4"_s)});
}

TEST_F(AppModelEnqueueTest, a_job_without_a_directory_takes_the_one_that_is_set_when_it_is_planned)
{
    startPaused();
    const auto job = enqueue(film(u"a.mp4"_s));
    EXPECT_EQ(m_model->buildPlan(*job).finalOutputURLs, QList<QUrl>{m_films.url(u"a-1MB.mp4"_s)});

    m_model->setOutputDirectoryPath(u"/later"_s);
    EXPECT_EQ(m_model->buildPlan(*job).finalOutputURLs,
              QList<QUrl>{QUrl(u"file:///later/a-1MB.mp4"_s)});
}

TEST_F(AppModelEnqueueTest, the_template_of_the_moment_of_planning_names_the_result)
{
    startPaused();
    const auto job = enqueue(film(u"a.mp4"_s));
    m_model->setOutputTemplate(u"{suffix} of {name}"_s);
    EXPECT_EQ(m_model->buildPlan(*job).finalOutputURLs,
              QList<QUrl>{m_films.url(u"1MB of a.mp4"_s)});
    m_model->setOutputTemplate(QString());
    EXPECT_EQ(m_model->buildPlan(*job).finalOutputURLs, QList<QUrl>{m_films.url(u"a-1MB.mp4"_s)});
}

TEST_F(AppModelEnqueueTest, two_passes_are_planned_only_where_the_build_has_x264)
{
    startPaused();
    const auto withX264 = enqueue(film(u"a.mp4"_s), oneMegabyteExactly());
    EXPECT_EQ(m_model->buildPlan(*withX264).steps.size(), 2);

    installFFmpeg(QByteArray());
    m_tools.writeExecutable(u"ffmpeg"_s, "#!/bin/sh\necho ' V....D h264_videotoolbox x'\n");
    startPaused();
    const auto without = enqueue(film(u"a.mp4"_s), oneMegabyteExactly());
    const JobPlan plan = m_model->buildPlan(*without);
    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().label, u"encode"_s);
    EXPECT_EQ(without->mode, JobMode(oneMegabyteExactly()));
}

TEST_F(AppModelEnqueueTest, results_of_a_tree_land_in_folders_of_their_own)
{
    start();
    const TempFolder out;
    takeInTwoFilms();
    m_model->setOutputDirectoryPath(out.path());
    m_model->setKeepFolderStructure(true);

    const auto job = enqueue(film(u"root/deep/er/c.mp4"_s));
    waitFor(job, Outcome::finished);

    EXPECT_EQ(resultOf(job).outputURLs, QList<QUrl>{out.url(u"deep/er/c-1MB.mp4"_s)});
    EXPECT_EQ(contentOf(out.path(u"deep/er/c-1MB.mp4"_s)).size(), 950'000);
}
