// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/Job.h"

#include "support/Printing.h"

#include <QMetaEnum>
#include <QMetaProperty>

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

VideoFile film(const QString &path)
{
    VideoFile file;
    file.url = QUrl::fromLocalFile(path);
    return file;
}

class JobTest : public ::testing::Test
{
protected:
    JobTest()
    {
        QObject::connect(&m_job, &Job::stateChanged, &m_job,
                         [this] { m_seen.push_back(m_job.state()); });
    }

    Job m_job{film(u"/films/a.mp4"_s), {}, TargetSizeParams(), std::nullopt};
    std::vector<Job::State> m_seen;
};

Job::Finished finished(const std::optional<QString> &note = std::nullopt)
{
    return {{QUrl::fromLocalFile(u"/films/a-compressed.mp4"_s)}, 100, 50, note};
}

} // namespace

TEST_F(JobTest, it_keeps_what_it_is_made_of)
{
    const VideoFile first = film(u"/films/a.mp4"_s);
    const QList<VideoFile> others{film(u"/films/b.mp4"_s), film(u"/films/c.mp4"_s)};
    const JobMode mode = MergeParams();
    const QUrl directory = QUrl::fromLocalFile(u"/out"_s);

    const Job job(first, others, mode, directory);

    EXPECT_EQ(job.input, first);
    EXPECT_EQ(job.extraInputs, others);
    EXPECT_EQ(job.mode, mode);
    EXPECT_EQ(job.outputDirectory, directory);
    EXPECT_EQ(m_job.outputDirectory, std::nullopt);
    EXPECT_TRUE(m_job.extraInputs.isEmpty());
}

TEST_F(JobTest, everything_but_the_state_is_constant)
{
    EXPECT_TRUE(std::is_const_v<decltype(Job::id)>);
    EXPECT_TRUE(std::is_const_v<decltype(Job::input)>);
    EXPECT_TRUE(std::is_const_v<decltype(Job::extraInputs)>);
    EXPECT_TRUE(std::is_const_v<decltype(Job::mode)>);
    EXPECT_TRUE(std::is_const_v<decltype(Job::outputDirectory)>);
    EXPECT_TRUE(std::is_const_v<decltype(Job::createdAt)>);
    EXPECT_FALSE(std::is_copy_constructible_v<Job>);
}

TEST_F(JobTest, each_job_has_an_identity_of_its_own)
{
    const Job twin(m_job.input, {}, m_job.mode, std::nullopt);

    EXPECT_FALSE(m_job.id.isNull());
    EXPECT_NE(m_job.id, twin.id);
}

TEST_F(JobTest, it_knows_when_it_was_made)
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    const Job job(m_job.input, {}, m_job.mode, std::nullopt);
    const QDateTime after = QDateTime::currentDateTimeUtc();

    EXPECT_LE(before, job.createdAt);
    EXPECT_LE(job.createdAt, after);
}

TEST_F(JobTest, it_starts_as_waiting)
{
    EXPECT_EQ(m_job.state(), Job::State(Job::Queued()));
    EXPECT_EQ(m_job.outcome(), Job::Outcome::queued);
}

TEST_F(JobTest, the_outcome_is_the_state_without_its_data)
{
    EXPECT_EQ(Job::outcome(Job::Queued()), Job::Outcome::queued);
    EXPECT_EQ(Job::outcome(Job::Analyzing()), Job::Outcome::analyzing);
    EXPECT_EQ(Job::outcome(Job::Running{0.5}), Job::Outcome::running);
    EXPECT_EQ(Job::outcome(finished()), Job::Outcome::finished);
    EXPECT_EQ(Job::outcome(Job::Failed{u"no"_s}), Job::Outcome::failed);
    EXPECT_EQ(Job::outcome(Job::Cancelled()), Job::Outcome::cancelled);

    m_job.setState(Job::Failed{u"no"_s});
    EXPECT_EQ(m_job.outcome(), Job::Outcome::failed);
}

TEST_F(JobTest, the_outcomes_stand_in_the_order_that_views_compare_by)
{
    const auto outcomes = QMetaEnum::fromType<Job::Outcome>();
    QStringList words;
    for (int i = 0; i < outcomes.keyCount(); ++i) {
        EXPECT_EQ(outcomes.value(i), i);
        words += QString::fromLatin1(outcomes.key(i));
    }
    EXPECT_EQ(words, (QStringList{u"queued"_s, u"analyzing"_s, u"running"_s, u"finished"_s,
                                  u"failed"_s, u"cancelled"_s}));
}

TEST_F(JobTest, the_states_stand_in_their_order)
{
    const std::vector<Job::State> states{Job::Running(), Job::Finished(),  Job::Failed(),
                                         Job::Queued(),  Job::Analyzing(), Job::Cancelled()};
    for (std::size_t i = 0; i < states.size(); ++i) {
        EXPECT_EQ(states.at(i).index(), i);
    }
}

TEST_F(JobTest, running_begins_with_no_progress)
{
    EXPECT_EQ(Job::Running().progress, 0);
}

TEST_F(JobTest, observers_see_each_change_with_the_state_already_set)
{
    const std::vector<Job::State> life{Job::Analyzing(),   Job::Running{0}, Job::Running{0.005},
                                       Job::Running{0.01}, finished(),      Job::Queued(),
                                       Job::Cancelled(),   Job::Queued(),   Job::Failed{u"a"_s},
                                       Job::Failed{u"b"_s}};
    for (const Job::State &state : life) {
        m_job.setState(state);
    }
    EXPECT_EQ(m_seen, life);
}

TEST_F(JobTest, observers_hear_nothing_when_nothing_changes)
{
    m_job.setState(Job::Queued());
    EXPECT_TRUE(m_seen.empty());

    for (const Job::State &state :
         std::vector<Job::State>{Job::Analyzing(), Job::Running{0.5}, finished(u"note"_s),
                                 Job::Failed{u"a"_s}, Job::Cancelled(), Job::Queued()}) {
        m_seen.clear();
        m_job.setState(state);
        m_job.setState(state);
        EXPECT_EQ(m_seen, std::vector<Job::State>{state});
    }
}

TEST_F(JobTest, every_part_of_a_result_counts_as_a_change)
{
    Job::Finished other = finished();
    m_job.setState(other);
    other.note = u"note"_s;
    m_job.setState(other);
    other.note = QString();
    m_job.setState(other);
    other.outputBytes = 49;
    m_job.setState(other);
    other.originalBytes = 99;
    m_job.setState(other);
    other.outputURLs.clear();
    m_job.setState(other);

    EXPECT_EQ(m_seen.size(), 6U);
    EXPECT_EQ(m_job.state(), Job::State(other));
}

TEST_F(JobTest, the_state_is_an_observable_property)
{
    const QMetaObject &meta = Job::staticMetaObject;
    const QMetaProperty property = meta.property(meta.indexOfProperty("state"));

    EXPECT_EQ(property.notifySignal(), QMetaMethod::fromSignal(&Job::stateChanged));
    EXPECT_EQ(property.metaType(), QMetaType::fromType<Job::State>());
}

// Qt reads a property into a value that it makes itself, which a type without a default constructor
// doesn't allow.
TEST_F(JobTest, the_state_is_read_as_a_property)
{
    const QMetaObject &meta = Job::staticMetaObject;
    const QMetaProperty property = meta.property(meta.indexOfProperty("state"));

    const QVariant state = property.read(&m_job);

    ASSERT_EQ(state.metaType(), QMetaType::fromType<Job::State>());
    EXPECT_EQ(*static_cast<const Job::State *>(state.constData()), Job::State(Job::Queued()));
}
