// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/DetachedProgram.h"

#include "Platform/FakeBus.h"
#include "support/FakeTool.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// No child is left, neither running nor dead.
bool hasNoChildren()
{
    siginfo_t child{};
    return ::waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == -1 && errno == ECHILD;
}

} // namespace

TEST(DetachedProgramTest, a_program_on_the_path_gets_its_arguments_as_they_are)
{
    const TempFolder folder;
    const FakeTool tool(folder, "exit 0\n", u"tool"_s);
    const ScopedEnvironment path("PATH", folder.path().toUtf8() + ":/usr/bin:/bin");

    ASSERT_TRUE(DetachedProgram::start(u"tool"_s, {u"a b"_s, QString(), u"影"_s}));

    ASSERT_TRUE(happens(hasNoChildren));
    EXPECT_EQ(tool.arguments(1), (QStringList{u"a b"_s, QString(), u"影"_s}));
}

TEST(DetachedProgramTest, it_leads_a_session_of_its_own_without_our_terminal_and_our_signals)
{
    const TempFolder folder;
    const QString notes = folder.path(u"notes"_s);
    const FakeTool tool(folder,
                        "seen=$(cut -d' ' -f6 /proc/$$/stat; echo $$\n"
                        "grep SigIgn /proc/$$/status; grep SigBlk /proc/$$/status\n"
                        "for n in 0 1 2; do readlink /proc/$$/fd/$n; done)\n"
                        "echo \"$seen\" > ${0%/*}/notes\n",
                        u"tool"_s);

    ASSERT_TRUE(DetachedProgram::start(tool.path(), {}));

    ASSERT_TRUE(happens(hasNoChildren));
    const QByteArrayList lines = contentOf(notes).trimmed().split('\n');
    ASSERT_EQ(lines.size(), 7);
    EXPECT_EQ(lines.at(0), lines.at(1));
    // The first sixteen signals, of which this program ignores SIGPIPE.
    EXPECT_EQ(lines.at(2).right(4), "0000"_ba);
    EXPECT_EQ(lines.at(3).right(16), "0000000000000000"_ba);
    EXPECT_EQ(lines.mid(4), (QByteArrayList{"/dev/null", "/dev/null", "/dev/null"}));
}

TEST(DetachedProgramTest, what_is_not_there_is_not_started)
{
    EXPECT_FALSE(DetachedProgram::start(u"/nowhere/at/all"_s, {}));
    EXPECT_TRUE(hasNoChildren());
}
