// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/ShellQuoting.h"

#include "support/Command.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(ShellQuoting, plain_words_stay_as_they_are)
{
    EXPECT_EQ(ShellQuoting::commandLine(u"/usr/bin/ffmpeg"_s, {u"-b:v"_s, u"64k"_s}),
              u"/usr/bin/ffmpeg -b:v 64k"_s);
}

TEST(ShellQuoting, a_shell_reads_back_what_was_quoted)
{
    for (const QString &argument :
         {u""_s, u"a b"_s, u"it's"_s, u"\"$HOME\""_s, u"line\nfeed"_s, u"片 *.mp4"_s, u"`id`"_s}) {
        const CommandResult echoed =
            runCommand(u"/bin/sh"_s, {u"-c"_s, u"printf %s "_s + ShellQuoting::quoted(argument)});
        EXPECT_EQ(QString::fromUtf8(echoed.out), argument);
    }
}
