// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "support/Clips.h"
#include "support/Processes.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <string>

using namespace Qt::StringLiterals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

using Outcome = Job::Outcome;

namespace {

struct Setup {
    int workers;
    AppLanguage language;
};

/// What a user reads at the end of a job.
struct Words {
    QString alreadyFits;
    QString failure;
    QString encodedAgain;
};

Words wordsIn(AppLanguage language)
{
    if (language == AppLanguage::simplifiedChinese) {
        return {u"已小于目标 · 未重新编码直接复制"_s, u"FFmpeg 出错："_s, u"已自动重压以达标"_s};
    }
    return {u"Already under target · copied without re-encoding"_s, u"FFmpeg error: "_s,
            u"Auto-refitted to land under the target"_s};
}

TargetSizeParams under(double megabytes)
{
    TargetSizeParams params;
    params.targetMB = megabytes;
    return params;
}

constexpr double limitMB = 0.2;
constexpr qint64 limitBytes = 200'000;

class AppModelEndToEndTest : public AppFixture
{
protected:
    AppModelEndToEndTest() { useRealTools(); }

    /// A film of two seconds and some 500 kB.
    QString makeLargeFilm(const QString &name) const
    {
        const QString path = m_films.write(name, QByteArray());
        Clips::make(path, {.noise = 20});
        return path;
    }

    /// A folder with three films over the limit, one under it, and what is no film.
    void makeFolder() const
    {
        const QString large = makeLargeFilm(u"in/one.mp4"_s);
        m_films.write(u"in/sub/two.mp4"_s, contentOf(large));
        m_films.write(u"in/sub/deeper/three.mp4"_s, contentOf(large));
        Clips::make(m_films.write(u"in/four.mp4"_s, QByteArray()),
                    {.seconds = 1, .hasAudio = false, .videoBitrate = u"100k"_s});
        m_films.write(u"in/notes.txt"_s, "no film");
    }

    std::shared_ptr<Job> jobOf(const QString &name) const
    {
        const auto found = std::ranges::find_if(
            m_model->jobs(), [&](const auto &job) { return job->input.url == m_films.url(name); });
        return found == m_model->jobs().end() ? nullptr : *found;
    }
};

class AppModelWorkersTest : public AppModelEndToEndTest, public testing::WithParamInterface<Setup>
{
};

/// How a file stands on disk.
struct Standing {
    QByteArray content;
    QDateTime modified;

    bool operator==(const Standing &) const = default;
};

Standing standingOf(const QUrl &url)
{
    return {contentOf(url.toLocalFile()), QFileInfo(url.toLocalFile()).lastModified()};
}

QList<Standing> standingOfInputs(const AppModel::JobList &jobs)
{
    QList<Standing> all;
    for (const std::shared_ptr<Job> &job : jobs) {
        all += standingOf(job->input.url);
    }
    return all;
}

/// The result is there, as large as the job says, and as long as its source.
void expectGoodResult(const Job::Finished &result, const Job &job)
{
    ASSERT_EQ(result.outputURLs.size(), 1);
    const VideoFile output = Clips::probe(result.outputURLs.first().toLocalFile());
    EXPECT_EQ(result.outputBytes, QFileInfo(result.outputURLs.first().toLocalFile()).size());
    EXPECT_EQ(result.outputBytes, output.fileSizeBytes);
    EXPECT_LE(result.outputBytes, limitBytes);
    EXPECT_EQ(result.originalBytes, QFileInfo(job.input.url.toLocalFile()).size());
    EXPECT_EQ(output.videoCodec, u"h264"_s);
    EXPECT_EQ(output.width, job.input.width);
    EXPECT_EQ(output.audioStreams.size(), job.input.audioStreams.size());
    EXPECT_NEAR(output.durationSeconds, job.input.durationSeconds, 0.2);
}

void expectWholeWay(const QStringList &words)
{
    ASSERT_GE(words.size(), 4);
    EXPECT_EQ(words.first(2), (QStringList{u"analyzing"_s, u"running 0"_s}));
    for (const QString &word : words.sliced(1, words.size() - 2)) {
        ASSERT_TRUE(word.startsWith("running "_L1)) << word.toStdString();
        const double steps = word.sliced(8).toDouble() * 200;
        EXPECT_NEAR(steps, std::round(steps), 1e-6);
        EXPECT_GE(steps, 0);
        EXPECT_LE(steps, 200);
    }
    EXPECT_EQ(words.last(), u"finished"_s);
}

} // namespace

TEST_P(AppModelWorkersTest, a_folder_of_films_becomes_a_tree_of_results_under_the_limit)
{
    makeFolder();
    const TempFolder out;
    start({.concurrency = GetParam().workers, .language = GetParam().language});
    m_model->setOutputDirectoryPath(out.path());
    m_model->setKeepFolderStructure(true);
    takeIn(m_films.url(u"in/"_s));
    ASSERT_EQ(m_model->files().size(), 4);
    m_model->enqueue(under(limitMB), AppModel::Scope::allFiles);
    const auto jobs = m_model->jobs();
    const QList<Standing> before = standingOfInputs(jobs);
    const RunningCount count(jobs);
    QList<StateLog> logs;
    for (const std::shared_ptr<Job> &job : jobs) {
        ASSERT_EQ(job->outcome(), Outcome::queued);
        logs.emplaceBack(job);
    }

    waitForAllToEnd();

    EXPECT_THAT(outcomesOf(jobs), Each(Outcome::finished));
    EXPECT_EQ(count.most(), GetParam().workers);
    for (qsizetype i = 0; i < jobs.size(); ++i) {
        expectWholeWay(logs.at(i).words());
        expectGoodResult(resultOf(jobs.at(i)), *jobs.at(i));
    }
    EXPECT_EQ(standingOfInputs(jobs), before);
    EXPECT_EQ(resultOf(jobOf(u"in/one.mp4"_s)).outputURLs,
              QList<QUrl>{out.url(u"one-0.2MB.mp4"_s)});
    EXPECT_EQ(resultOf(jobOf(u"in/sub/deeper/three.mp4"_s)).outputURLs,
              QList<QUrl>{out.url(u"sub/deeper/three-0.2MB.mp4"_s)});
    EXPECT_EQ(out.names(), (QStringList{u"four-0.2MB.mp4"_s, u"one-0.2MB.mp4"_s, u"sub"_s}));
    const Words words = wordsIn(GetParam().language);
    EXPECT_EQ(resultOf(jobOf(u"in/four.mp4"_s)).note, words.alreadyFits);
    const std::optional<QString> note = resultOf(jobOf(u"in/one.mp4"_s)).note;
    EXPECT_TRUE(!note || note == words.encodedAgain) << note->toStdString();
    EXPECT_EQ(m_desktop->sounds, 4);
    EXPECT_EQ(m_desktop->sleepCalls.last(), u"release"_s);
}

TEST_P(AppModelWorkersTest, a_film_that_vanished_fails_in_ffmpegs_words_and_the_others_go_on)
{
    start({.concurrency = GetParam().workers, .language = GetParam().language});
    const QString gone = makeLargeFilm(u"gone.mp4"_s);
    const VideoFile vanished = Clips::probe(gone);
    const VideoFile stays = Clips::probe(makeLargeFilm(u"stays.mp4"_s));
    QFile::remove(gone);

    const auto failing = enqueue(vanished, under(limitMB));
    const auto other = enqueue(stays, under(limitMB));
    waitForAllToEnd();

    EXPECT_EQ(other->outcome(), Outcome::finished);
    const QString message = messageOf(failing);
    const QString head = wordsIn(GetParam().language).failure;
    EXPECT_TRUE(message.startsWith(head)) << message.toStdString();
    EXPECT_TRUE(message.contains("No such file or directory"_L1)) << message.toStdString();
    EXPECT_LE(message.size(), head.size() + 160);
}

INSTANTIATE_TEST_SUITE_P(
    , AppModelWorkersTest,
    testing::Values(Setup{1, AppLanguage::english}, Setup{2, AppLanguage::english},
                    Setup{3, AppLanguage::english}, Setup{1, AppLanguage::simplifiedChinese},
                    Setup{2, AppLanguage::simplifiedChinese},
                    Setup{3, AppLanguage::simplifiedChinese}),
    [](const auto &row) {
        return std::to_string(row.param.workers) +
               (row.param.language == AppLanguage::english ? "_english" : "_chinese");
    });

TEST_F(AppModelEndToEndTest, two_passes_keep_the_limit_and_leave_no_log)
{
    start();
    TargetSizeParams params = under(limitMB);
    params.exactTwoPass = true;
    const auto job = enqueue(Clips::probe(makeLargeFilm(u"film.mp4"_s)), params);
    const StateLog log(job);

    waitForAllToEnd();

    expectWholeWay(log.words());
    expectGoodResult(resultOf(job), *job);
    EXPECT_THAT(m_temporary.names().filter(QRegularExpression(u"\\.log$"_s)), IsEmpty());
}

TEST_F(AppModelEndToEndTest, a_film_that_is_added_twice_gets_two_results)
{
    makeLargeFilm(u"film.mp4"_s);
    start();
    takeIn(m_films.url(u"film.mp4"_s));
    takeIn(m_films.url(u"film.mp4"_s));
    ASSERT_EQ(m_model->files().size(), 2);
    m_model->enqueue(under(limitMB), AppModel::Scope::allFiles);
    waitForAllToEnd();

    EXPECT_EQ(resultOf(m_model->jobs().at(0)).outputURLs,
              QList<QUrl>{m_films.url(u"film-0.2MB.mp4"_s)});
    EXPECT_EQ(resultOf(m_model->jobs().at(1)).outputURLs,
              QList<QUrl>{m_films.url(u"film-0.2MB 2.mp4"_s)});
}

TEST_F(AppModelEndToEndTest, ending_with_three_encodes_leaves_no_child_and_no_temporary_file)
{
    start({.concurrency = 3});
    const QString path = m_films.path(u"long.mp4"_s);
    Clips::make(path, {.size = u"640x360"_s, .seconds = 60, .hasAudio = false});
    TargetSizeParams params = under(1);
    params.exactTwoPass = true;
    for (int i = 0; i < 3; ++i) {
        enqueue(Clips::probe(path), params);
    }
    const auto isAtWork = [](const std::shared_ptr<Job> &job) {
        const auto *running = std::get_if<Job::Running>(&job->state());
        return running && running->progress > 0;
    };
    waitUntil([&] { return std::ranges::all_of(m_model->jobs(), isAtWork); });
    ASSERT_EQ(Processes::withWords({path}).size(), 3);
    ASSERT_FALSE(m_temporary.names().isEmpty());

    m_model.reset();

    EXPECT_THAT(Processes::withWords({path}), IsEmpty());
    EXPECT_EQ(m_temporary.names(), QStringList());
}
