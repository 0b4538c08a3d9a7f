// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ProgramFixture.h"
#include "support/Processes.h"

using namespace Qt::StringLiterals;

namespace {

class ProgramInstance : public ProgramFixture
{
protected:
    bool isProbed(const QString &path) const
    {
        return Processes::eventually([&] { return probesOf(path) > 0; });
    }
};

} // namespace

TEST_F(ProgramInstance, two_starts_are_one_program)
{
    Start first;
    ASSERT_NO_FATAL_FAILURE(startFirst(first));

    EXPECT_EQ(exitCodeOf({}), 0);
    EXPECT_EQ(exitCodeOf({}), 0);

    EXPECT_EQ(first.state(), QProcess::Running);
    EXPECT_TRUE(isNameTaken());
}

TEST_F(ProgramInstance, a_second_start_hands_over_what_it_is_given_however_it_is_named)
{
    const QString a = makeFilm(u"a film #1.mp4"_s);
    const QString b = makeFilm(u"-style.mp4"_s);
    const QString c = makeFilm(u"c.mp4"_s);
    m_films.write(u"two/notes.txt"_s, "x");
    Start first;
    ASSERT_NO_FATAL_FAILURE(startFirst(first));

    EXPECT_EQ(exitCodeOf({u"a film #1.mp4"_s, u"-style.mp4"_s, u"file://"_s + c, u"two"_s}), 0);

    EXPECT_TRUE(isProbed(a));
    EXPECT_TRUE(isProbed(b));
    EXPECT_TRUE(isProbed(c));
}

TEST_F(ProgramInstance, a_first_start_takes_its_files_in_itself_once)
{
    const QString film = makeFilm(u"a.mp4"_s);
    Start first;

    ASSERT_NO_FATAL_FAILURE(startFirst(first, {u"a.mp4"_s, u"no such film.mp4"_s}));

    EXPECT_TRUE(isProbed(film));
    EXPECT_EQ(exitCodeOf({}), 0);
    EXPECT_EQ(probesOf(film), 1);
}

TEST_F(ProgramInstance, many_starts_at_once_leave_one)
{
    ASSERT_NO_FATAL_FAILURE(m_bus.start());
    std::array<Start, 6> programs;
    for (Start &program : programs) {
        ASSERT_NO_FATAL_FAILURE(start(program));
    }

    int running = 0;
    int handedOver = 0;
    ASSERT_TRUE(Processes::eventually([&] {
        handedOver = 0;
        for (Start &program : programs) {
            handedOver += program.waitForFinished(1) || program.state() == QProcess::NotRunning;
        }
        return handedOver == static_cast<int>(programs.size()) - 1;
    }));
    for (const Start &program : programs) {
        running += program.state() == QProcess::Running;
    }
    EXPECT_EQ(running, 1);
}

TEST_F(ProgramInstance, a_start_that_follows_an_end_runs_itself)
{
    Start first;
    ASSERT_NO_FATAL_FAILURE(startFirst(first));
    first.terminate();
    ASSERT_TRUE(Processes::eventually([this] { return !isNameTaken(); }));
    Start second;

    ASSERT_NO_FATAL_FAILURE(start(second));

    ASSERT_TRUE(first.waitForFinished(patienceMs));
    ASSERT_TRUE(Processes::eventually([this] { return isNameTaken(); }));
    const QString film = makeFilm(u"a.mp4"_s);
    EXPECT_EQ(exitCodeOf({u"a.mp4"_s}), 0);
    EXPECT_TRUE(isProbed(film));
    EXPECT_EQ(second.state(), QProcess::Running);
}

TEST_F(ProgramInstance, without_a_bus_it_runs_alone)
{
    const QString film = makeFilm(u"a.mp4"_s);
    for (const QString &address : {u"unix:path=/nonexistent"_s, QString(), u"nonsense"_s}) {
        SCOPED_TRACE(address.toStdString());
        const int before = probesOf(film);
        m_busAddress = address;
        Start program;
        ASSERT_NO_FATAL_FAILURE(start(program, {u"a.mp4"_s}));

        EXPECT_TRUE(Processes::eventually([&] { return probesOf(film) > before; }));
        program.terminate();
        ASSERT_TRUE(program.waitForFinished(patienceMs));
        EXPECT_EQ(program.exitCode(), 0);
    }
}

TEST_F(ProgramInstance, a_bus_that_hangs_only_delays_it)
{
    const QString film = makeFilm(u"a.mp4"_s);
    ASSERT_NO_FATAL_FAILURE(m_bus.start());
    m_bus.freeze();
    Start program;

    ASSERT_NO_FATAL_FAILURE(start(program, {u"a.mp4"_s}));

    EXPECT_TRUE(isProbed(film));
}

TEST_F(ProgramInstance, a_bus_that_goes_leaves_it_running)
{
    const QString film = makeFilm(u"a.mp4"_s, {.seconds = 20});
    slowEncodesDown();
    Start program;
    ASSERT_NO_FATAL_FAILURE(startFirst(program));
    ASSERT_EQ(call(u"ActivateAction"_s,
                   {u"compressWithMorvix"_s, u"[<['file://%1']>]"_s.arg(film), u"{}"_s})
                  .exitCode,
              0);
    ASSERT_TRUE(Processes::eventually([&] { return !encodersOf(film).isEmpty(); }));

    m_bus.stop();

    EXPECT_FALSE(program.waitForFinished(500));
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(patienceMs));
    EXPECT_EQ(program.exitCode(), 0);
}
