// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/QueueProgress.h"

#include "AppFixture.h"
#include "Platform/LauncherProgress.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace {

class RecordingLauncher : public LauncherProgress
{
public:
    void setFraction(std::optional<double> fraction) override { fractions += fraction; }

    QList<std::optional<double>> fractions;
};

// The queue is paused, and the test plays the workers.
class QueueProgressTest : public AppFixture
{
protected:
    QueueProgressTest()
    {
        start();
        m_model->setQueuePaused(true);
    }

    std::shared_ptr<Job> jobFor(const QString &name) { return enqueue(film(name)); }

    std::optional<double> shown() const { return m_launcher->fractions.last(); }

    const std::shared_ptr<RecordingLauncher> m_launcher = std::make_shared<RecordingLauncher>();
};

} // namespace

TEST_F(QueueProgressTest, nothing_is_drawn_while_no_job_runs)
{
    const auto waiting = jobFor(u"waiting.mp4"_s);
    const QueueProgress progress(*m_model, m_launcher);
    EXPECT_EQ(shown(), std::nullopt);

    waiting->setState(Job::Analyzing());

    EXPECT_EQ(shown(), std::nullopt);
}

TEST_F(QueueProgressTest, the_fraction_is_the_mean_over_the_running_jobs_alone)
{
    const QueueProgress progress(*m_model, m_launcher);
    const auto first = jobFor(u"first.mp4"_s);
    const auto second = jobFor(u"second.mp4"_s);
    jobFor(u"waiting.mp4"_s);

    first->setState(Job::Running{0.5});
    EXPECT_EQ(shown(), 0.5);
    second->setState(Job::Running{0.25});

    EXPECT_EQ(shown(), 0.375);
}

TEST_F(QueueProgressTest, what_has_ended_counts_no_more)
{
    const auto first = jobFor(u"first.mp4"_s);
    const auto second = jobFor(u"second.mp4"_s);
    first->setState(Job::Running{1});
    second->setState(Job::Running{0.25});
    const QueueProgress progress(*m_model, m_launcher);

    first->setState(Job::Finished());
    EXPECT_EQ(shown(), 0.25);
    second->setState(Job::Failed());

    EXPECT_EQ(shown(), std::nullopt);
}

TEST_F(QueueProgressTest, a_job_is_heard_once_however_often_the_list_changes)
{
    const QueueProgress progress(*m_model, m_launcher);
    const auto job = jobFor(u"first.mp4"_s);
    jobFor(u"second.mp4"_s);
    const qsizetype before = m_launcher->fractions.size();

    job->setState(Job::Running{0.5});

    EXPECT_EQ(m_launcher->fractions.size(), before + 1);
}

TEST_F(QueueProgressTest, a_real_run_ends_without_a_bar)
{
    const QueueProgress progress(*m_model, m_launcher);
    const auto job = jobFor(u"film.mp4"_s);

    m_model->setQueuePaused(false);
    waitFor(job, Job::Outcome::finished);

    EXPECT_TRUE(m_launcher->fractions.contains(0.5));
    EXPECT_EQ(shown(), std::nullopt);
}
