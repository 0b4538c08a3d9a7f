// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "BatchFixture.h"

#include "support/Processes.h"

#include <QJsonDocument>
#include <QProcess>
#include <QProcessEnvironment>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr int patienceMs = 20'000;

// Reads its input no faster than it plays, so that a job is under way for as long as a test wants.
// A pipe that nobody reads any more doesn't end it: that it ends must have another reason.
constexpr auto readsSlowly = "trap '' PIPE; exec \"$ffmpeg\" -re \"$@\"";
constexpr auto readsSlowlyInTheSecondPass =
    "case \"$*\" in *'-pass 2'*) exec \"$ffmpeg\" -re \"$@\";; esac\nexec \"$ffmpeg\" \"$@\"";

class BatchSignal : public BatchFixture
{
protected:
    BatchSignal()
    {
        makeFilm(u"film.mp4"_s, {.seconds = 20, .noise = 5, .videoBitrate = u"500k"_s});
    }

    // A job in the middle of its work: the first progress at or behind the fraction has come.
    void start(const QStringList &fields, double fraction)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, m_temporary.path());
        m_process.setProcessEnvironment(environment);
        m_process.start(
            m_program, QStringList{u"targetSize"_s, u"--json"_s, u"targetMB=0.5"_s} + fields +
                           QStringList{m_films.path(u"film.mp4"_s), m_films.path(u"second.mp4"_s)});
        ASSERT_TRUE(m_process.waitForStarted(patienceMs));
        while (!hasProgressedTo(fraction)) {
            ASSERT_TRUE(m_process.waitForReadyRead(patienceMs))
                << m_process.readAllStandardError().toStdString();
        }
        ASSERT_FALSE(encoders().isEmpty());
    }

    bool hasProgressedTo(double fraction)
    {
        while (m_process.canReadLine()) {
            const QJsonObject line = QJsonDocument::fromJson(m_process.readLine()).object();
            if (line.value(u"fraction"_s).toDouble(-1) >= fraction) {
                return true;
            }
        }
        return false;
    }

    // The ffmpegs that work on our film.
    QList<qint64> encoders() const
    {
        return Processes::withWords({u"-progress"_s, m_films.path(u"film.mp4"_s)});
    }

    void send(int signalNumber)
    {
        ASSERT_EQ(::kill(static_cast<pid_t>(m_process.processId()), signalNumber), 0);
    }

    // It ends by itself with that code and leaves neither processes nor temporary files behind.
    void expectCleanEnd(int exitCode)
    {
        ASSERT_TRUE(m_process.waitForFinished(patienceMs));
        EXPECT_EQ(m_process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_process.exitCode(), exitCode);
        EXPECT_EQ(encoders(), QList<qint64>());
        EXPECT_EQ(m_temporary.names(), QStringList());
    }

    QProcess m_process;
};

} // namespace

TEST_F(BatchSignal, SIGINT_ends_the_job_and_exits_with_130)
{
    const QByteArray before = checksum(m_films.path(u"film.mp4"_s));
    installFFmpeg(readsSlowly);
    ASSERT_NO_FATAL_FAILURE(start({}, 0));

    send(SIGINT);

    expectCleanEnd(130);
    EXPECT_EQ(checksum(m_films.path(u"film.mp4"_s)), before);
}

TEST_F(BatchSignal, SIGTERM_ends_the_job_and_exits_with_143)
{
    installFFmpeg(readsSlowly);
    ASSERT_NO_FATAL_FAILURE(start({}, 0));

    send(SIGTERM);

    expectCleanEnd(143);
}

TEST_F(BatchSignal, the_interrupted_file_is_told_and_no_other_is_begun)
{
    installFFmpeg(readsSlowly);
    ASSERT_NO_FATAL_FAILURE(start({}, 0));

    send(SIGINT);

    expectCleanEnd(130);
    const QByteArray rest = m_process.readAllStandardOutput();
    EXPECT_EQ(objectsOfType(rest, u"start"_s), QList<QJsonObject>());
    EXPECT_EQ(objects(rest).last(), (QJsonObject{{u"type"_s, u"failed"_s},
                                                 {u"input"_s, m_films.path(u"film.mp4"_s)},
                                                 {u"message"_s, u"Interrupted."_s}}));
}

TEST_F(BatchSignal, the_first_of_two_passes_can_be_interrupted)
{
    installFFmpeg(readsSlowly);
    ASSERT_NO_FATAL_FAILURE(start({u"exactTwoPass=true"_s}, 0));

    send(SIGINT);

    expectCleanEnd(130);
}

TEST_F(BatchSignal, the_second_of_two_passes_can_be_interrupted)
{
    installFFmpeg(readsSlowlyInTheSecondPass);
    ASSERT_NO_FATAL_FAILURE(start({u"exactTwoPass=true"_s}, 0.355));
    ASSERT_FALSE(m_temporary.names().isEmpty()) << "the first pass leaves its notes to the second";

    send(SIGTERM);

    expectCleanEnd(143);
}

TEST_F(BatchSignal, no_ffmpeg_outlives_a_program_that_was_killed)
{
    installFFmpeg(readsSlowly);
    ASSERT_NO_FATAL_FAILURE(start({}, 0));

    send(SIGKILL);

    ASSERT_TRUE(m_process.waitForFinished(patienceMs));
    EXPECT_TRUE(Processes::eventually([&] { return encoders().isEmpty(); }));
}
