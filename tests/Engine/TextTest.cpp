// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/Text.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;

TEST(Text, fixed_rounds_ties_to_even_as_c_does)
{
    EXPECT_EQ(Text::fixed(0.25, 1), u"0.2"_s);
    EXPECT_EQ(Text::fixed(0.75, 1), u"0.8"_s);
    EXPECT_EQ(Text::fixed(10.0625, 3), u"10.062"_s);
    EXPECT_EQ(Text::fixed(2.5, 0), u"2"_s);
}

TEST(Text, fixed_prints_the_sign_and_all_decimals)
{
    EXPECT_EQ(Text::fixed(-3, 1), u"-3.0"_s);
    EXPECT_EQ(Text::fixed(25.55, 1), u"25.6"_s);
    EXPECT_EQ(Text::fixed(10, 3), u"10.000"_s);
}

TEST(Text, fixed_prints_the_largest_double)
{
    EXPECT_EQ(Text::fixed(1.7976931348623157e308, 3).size(), 313);
}

TEST(Text, a_number_is_read_whole_or_not_at_all)
{
    EXPECT_EQ(Text::toDouble(u"2.5"), 2.5);
    EXPECT_EQ(Text::toDouble(u"-1e3"), -1000);
    EXPECT_EQ(Text::toDouble(u".5"), 0.5);
    for (const QStringView rubbish :
         {u"", u" 1", u"1 ", u"+1", u"1x", u"inf", u"nan", u"0x10", u"1,5", u"1e999", u"٣"}) {
        EXPECT_FALSE(Text::toDouble(rubbish)) << rubbish.toString().toStdString();
    }
}

TEST(Text, an_integer_is_read_whole_or_not_at_all)
{
    EXPECT_EQ(Text::toInteger(u"-42"), -42);
    EXPECT_EQ(Text::toInteger(u"9223372036854775807"), 9223372036854775807);
    for (const QStringView rubbish : {u"", u"+1", u"1.0", u"1e3", u" 1", u"9223372036854775808"}) {
        EXPECT_FALSE(Text::toInteger(rubbish)) << rubbish.toString().toStdString();
    }
}

TEST(Text, the_last_characters_never_cut_a_surrogate_pair)
{
    EXPECT_EQ(Text::lastCharacters(u"abc"_s, 2), u"bc"_s);
    EXPECT_EQ(Text::lastCharacters(u"abc"_s, 9), u"abc"_s);
    EXPECT_EQ(Text::lastCharacters(u"a😀😀"_s, 1), u"😀"_s);
    EXPECT_EQ(Text::lastCharacters(u"a😀b"_s, 2), u"😀b"_s);
}

TEST(Text, a_path_keeps_every_character)
{
    const QString name = u"/films/a %20 ?#\n\"'-片.mp4"_s;
    EXPECT_EQ(Text::path(QUrl::fromLocalFile(name)), name);
}

TEST(Text, the_extension_is_what_follows_the_last_dot_of_the_name)
{
    struct Case {
        QString path;
        QString stem;
        QString extension;
    };
    const std::vector<Case> cases{
        {u"/films/a.mp4"_s, u"/films/a"_s, u"mp4"_s},
        {u"/films/a.tar.gz"_s, u"/films/a.tar"_s, u"gz"_s},
        {u"/films/A.MP4"_s, u"/films/A"_s, u"MP4"_s},
        {u"a.b"_s, u"a"_s, u"b"_s},
        {u"/films/.a.mp4"_s, u"/films/.a"_s, u"mp4"_s},
        {u"/films/片.mp4"_s, u"/films/片"_s, u"mp4"_s},
        {u"/2024.10/a.mp4"_s, u"/2024.10/a"_s, u"mp4"_s},
    };
    for (const Case &expected : cases) {
        const Text::SplitPath split = Text::splitExtension(expected.path);
        EXPECT_EQ(split.stem, expected.stem) << expected.path.toStdString();
        EXPECT_EQ(split.extension, expected.extension) << expected.path.toStdString();
    }
}

TEST(Text, a_path_without_an_extension_is_all_stem)
{
    for (const QString &path :
         {u""_s, u"/films/a"_s, u"/films/.mp4"_s, u".mp4"_s, u"/films/a."_s, u"a."_s,
          u"/2024.10/a"_s, u"/2024.10/"_s, u"/films.mp4/"_s, u"."_s}) {
        const Text::SplitPath split = Text::splitExtension(path);
        EXPECT_EQ(split.stem, path);
        EXPECT_EQ(split.extension, QString()) << path.toStdString();
    }
}

TEST(Text, plain_sorting_goes_by_code_points)
{
    QStringList texts{u"😀"_s,   u"\uFB01"_s, u"é"_s, u"z"_s,   u"a9"_s,
                      u"a10"_s, u"a"_s,      u"B"_s, u"a b"_s, u""_s};

    Text::sortPlainly(texts);

    EXPECT_EQ(texts, (QStringList{u""_s, u"B"_s, u"a"_s, u"a b"_s, u"a10"_s, u"a9"_s, u"z"_s,
                                  u"é"_s, u"\uFB01"_s, u"😀"_s}));
}

TEST(Text, plain_sorting_takes_equivalent_texts_for_equal_and_keeps_their_spelling)
{
    const QString composed = u"\u00e9"_s;
    const QString decomposed = u"e\u0301"_s;

    QStringList texts{u"f"_s, composed + u"2"_s, decomposed + u"1"_s, u"e"_s, decomposed + u"3"_s};
    Text::sortPlainly(texts);
    EXPECT_EQ(texts, (QStringList{u"e"_s, u"f"_s, decomposed + u"1"_s, composed + u"2"_s,
                                  decomposed + u"3"_s}));

    QStringList equals{decomposed, composed, decomposed};
    Text::sortPlainly(equals);
    EXPECT_EQ(equals, (QStringList{decomposed, composed, decomposed}));
}

TEST(Text, an_identity_has_no_braces)
{
    EXPECT_EQ(Text::uuid(QUuid(u"{0E984725-C51C-4BF4-9960-E1C80E27ABA0}"_s)),
              u"0e984725-c51c-4bf4-9960-e1c80e27aba0"_s);
}
