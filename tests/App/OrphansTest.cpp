// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Clips.h"
#include "support/FakeTool.h"
#include "support/Processes.h"
#include "support/TempFolder.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <csignal>
#include <functional>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patienceMs = 30'000;
constexpr int rounds = 20;

/// The application object in a program of its own, with an encode under way.
class Orphans : public ::testing::Test
{
protected:
    Orphans()
    {
        Clips::make(m_film, {.seconds = 20, .noise = 5, .videoBitrate = u"500k"_s});
        // Reads its input no faster than it plays, so that the job is under way for as long as a
        // test wants. A pipe that nobody reads any more doesn't end it.
        const QByteArray ffmpeg = Clips::tools().ffmpegURL.toLocalFile().toUtf8();
        m_tools.writeExecutable(u"ffmpeg"_s, "#!/bin/sh\ncase \"$*\" in *-encoders*) exec '" +
                                                 ffmpeg + "' \"$@\";; esac\ntrap '' PIPE\nexec '" +
                                                 ffmpeg + "' -re \"$@\"\n");
        m_tools.writeExecutable(u"ffprobe"_s, "#!/bin/sh\nexec '" +
                                                  Clips::tools().ffprobeURL.toLocalFile().toUtf8() +
                                                  "' \"$@\"\n");
    }

    /// Ends the program in that way, many times; no ffmpeg of its own may live on.
    void expectNoOrphan(const std::function<void(QProcess &)> &end)
    {
        for (int round = 1; round <= rounds; ++round) {
            SCOPED_TRACE(round);
            QProcess program;
            ASSERT_NO_FATAL_FAILURE(startEncode(program));
            ASSERT_FALSE(encoders().isEmpty());

            end(program);

            ASSERT_TRUE(program.waitForFinished(patienceMs));
            ASSERT_TRUE(Processes::eventually([this] { return encoders().isEmpty(); }));
        }
    }

    const TempFolder m_temporary;

private:
    void startEncode(QProcess &program)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, m_tools.path() + u":/usr/bin:/bin"_s);
        environment.insert(u"TMPDIR"_s, m_temporary.path());
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(MORVIX_MODEL_HOLDER), {m_film});
        ASSERT_TRUE(program.waitForReadyRead(patienceMs));
        ASSERT_EQ(program.readLine(), "running\n");
    }

    QList<qint64> encoders() const { return Processes::withWords({u"-progress"_s, m_film}); }

    const TempFolder m_films;
    const TempFolder m_tools;
    const QString m_film = m_films.path(u"film.mp4"_s);
};

} // namespace

TEST_F(Orphans, quitting_leaves_no_ffmpeg_and_no_temporary_file)
{
    expectNoOrphan([](QProcess &program) { program.write("q"); });
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(Orphans, SIGTERM_leaves_no_ffmpeg_and_no_temporary_file)
{
    expectNoOrphan([](QProcess &program) { program.terminate(); });
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(Orphans, SIGINT_leaves_no_ffmpeg_and_no_temporary_file)
{
    expectNoOrphan(
        [](QProcess &program) { ::kill(static_cast<pid_t>(program.processId()), SIGINT); });
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(Orphans, SIGKILL_leaves_no_ffmpeg)
{
    expectNoOrphan([](QProcess &program) { program.kill(); });
}
