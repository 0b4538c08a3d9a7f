// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/LineBuffer.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(LineBuffer, a_chunk_gives_the_lines_that_it_completes)
{
    LineBuffer buffer;
    EXPECT_EQ(buffer.append("a\nb\nc"), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(buffer.append("d\n"), QStringList{u"cd"_s});
}

TEST(LineBuffer, a_tail_without_a_line_feed_is_collected_only)
{
    LineBuffer buffer;
    EXPECT_EQ(buffer.append("a\nb"), QStringList{u"a"_s});
    EXPECT_EQ(buffer.collected(), u"a\nb"_s);
}

TEST(LineBuffer, spaces_and_tabs_at_the_ends_of_a_line_are_trimmed)
{
    LineBuffer buffer;
    EXPECT_EQ(buffer.append(" \t a b\t \n"), QStringList{u"a b"_s});
}

TEST(LineBuffer, a_line_of_spaces_and_an_empty_line_are_given_as_empty_text)
{
    LineBuffer buffer;
    EXPECT_EQ(buffer.append("   \n\n"), (QStringList{u""_s, u""_s}));
}

TEST(LineBuffer, a_carriage_return_stays_at_the_end_of_its_line)
{
    LineBuffer buffer;
    EXPECT_EQ(buffer.append("a \r\n"), QStringList{u"a \r"_s});
}

TEST(LineBuffer, output_with_carriage_returns_only_is_not_split)
{
    LineBuffer buffer;
    EXPECT_TRUE(buffer.append("a\rb\rc").isEmpty());
}

TEST(LineBuffer, a_line_with_invalid_bytes_is_dropped_and_the_next_one_still_arrives)
{
    LineBuffer buffer;
    EXPECT_EQ(buffer.append("ok\nbad\xff\nnext\n"), (QStringList{u"ok"_s, u"next"_s}));
}

TEST(LineBuffer, a_chunk_with_invalid_bytes_adds_nothing_to_what_is_collected)
{
    LineBuffer buffer;
    buffer.append("one\n");
    buffer.append("two\xff\n");
    buffer.append("three\n");
    EXPECT_EQ(buffer.collected(), u"one\nthree\n"_s);
}

TEST(LineBuffer, a_character_that_straddles_two_chunks_is_lost_to_collected_but_not_to_its_line)
{
    LineBuffer buffer;
    EXPECT_TRUE(buffer.append("\xe7\x89").isEmpty());
    EXPECT_EQ(buffer.append("\x87\n"), QStringList{u"片"_s});
    EXPECT_EQ(buffer.collected(), u""_s);
}

TEST(LineBuffer, a_character_that_marks_byte_orders_elsewhere_stays_at_the_head)
{
    LineBuffer buffer;
    EXPECT_EQ(buffer.append("\xEF\xBB\xBFone\n\xEF\xBB\xBFtwo\n"),
              (QStringList{u"\uFEFFone"_s, u"\uFEFFtwo"_s}));
    EXPECT_EQ(buffer.collected(), u"\uFEFFone\n\uFEFFtwo\n"_s);
}

TEST(LineBuffer, an_empty_chunk_changes_nothing)
{
    LineBuffer buffer;
    EXPECT_TRUE(buffer.append({}).isEmpty());
    EXPECT_EQ(buffer.append("a\n"), QStringList{u"a"_s});
}
