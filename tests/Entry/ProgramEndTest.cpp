// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ProgramFixture.h"
#include "support/Processes.h"

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// The program with an encode under way.
class ProgramEnd : public ProgramFixture
{
protected:
    void SetUp() override
    {
        m_film = makeFilm(u"a.mp4"_s, {.seconds = 20, .noise = 5, .videoBitrate = u"500k"_s});
        slowEncodesDown();
        ASSERT_NO_FATAL_FAILURE(startFirst(m_program));
        ASSERT_EQ(call(u"ActivateAction"_s,
                       {u"compressWithMorvix"_s, u"[<['file://%1']>]"_s.arg(m_film), u"{}"_s})
                      .exitCode,
                  0);
        ASSERT_TRUE(Processes::eventually([this] { return !encodersOf(m_film).isEmpty(); }));
    }

    void expectCleanEndBy(int signalNumber)
    {
        ::kill(static_cast<pid_t>(m_program.processId()), signalNumber);

        ASSERT_TRUE(m_program.waitForFinished(patienceMs));
        EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_program.exitCode(), 0);
        EXPECT_EQ(encodersOf(m_film), QList<qint64>());
        EXPECT_EQ(m_temporary.names(), QStringList());
    }

    QString m_film;
    Start m_program;
};

} // namespace

TEST_F(ProgramEnd, SIGTERM_ends_it_with_its_children)
{
    expectCleanEndBy(SIGTERM);
}

TEST_F(ProgramEnd, SIGINT_ends_it_with_its_children)
{
    expectCleanEndBy(SIGINT);
}

TEST_F(ProgramEnd, SIGHUP_ends_it_with_its_children)
{
    expectCleanEndBy(SIGHUP);
}

TEST_F(ProgramEnd, no_child_outlives_a_program_that_was_killed)
{
    m_program.kill();

    ASSERT_TRUE(m_program.waitForFinished(patienceMs));
    EXPECT_TRUE(Processes::eventually([this] { return encodersOf(m_film).isEmpty(); }));
}
