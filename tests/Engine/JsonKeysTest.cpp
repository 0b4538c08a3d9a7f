// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/JsonKeys.h"

#include "Engine/JsonFile.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// What the parser refuses is no case for the look at the keys.
std::optional<QString> firstRepeated(const QByteArray &json)
{
    EXPECT_FALSE(QJsonDocument::fromJson(json).isNull()) << json.left(100).toStdString();
    return JsonKeys::firstRepeated(json);
}

// An object of a great many keys, each another one, with `last` behind them.
QByteArray objectFullOfKeys(const QByteArray &keyStart, const QByteArray &last)
{
    QByteArray json = "{";
    for (qsizetype number = 0; number < JsonFile::mostValues / 4; ++number) {
        json += '"' + keyStart + QByteArray::number(static_cast<qlonglong>(number)) + "\":0,";
    }
    return json + last + '}';
}

} // namespace

TEST(JsonKeys, one_key_in_several_objects_or_texts_is_no_repetition)
{
    for (const QByteArray &json : {
             "[]"_ba,
             "{}"_ba,
             "[1]"_ba,
             R"({"a":1})"_ba,
             R"({"a":1,"b":2,"":3})"_ba,
             R"([{"a":1},{"a":2}])"_ba,
             R"({"x":{"a":1},"y":{"a":1}})"_ba,
             R"({"a":{"a":{"a":1}}})"_ba,
             R"({"b":{"a":1},"a":2})"_ba,
             R"({"a":[{"a":1},{"a":1}],"b":1})"_ba,
             R"({"a":"a","b":"a","c":"b"})"_ba,
             R"({"a":["a","a"]})"_ba,
             R"({"a":"\"a\":1,","b":"a\":"})"_ba,
             R"({"a":"{\"a\":1,\"a\":2}","b":"}}{{"})"_ba,
             R"({"a":"\\","b":"\\\"","c":":"})"_ba,
             R"({"a":"a" , "b" : "a"	})"_ba,
         }) {
        EXPECT_EQ(firstRepeated(json), std::nullopt) << json.toStdString();
    }
}

TEST(JsonKeys, a_key_that_stands_twice_in_one_object_is_found_wherever_it_is)
{
    struct Case {
        QByteArray json;
        QString key;
    };
    const QList<Case> cases{
        {R"({"a":1,"a":2})", u"a"_s},
        {R"({"a":1,"a":1})", u"a"_s},
        {R"({"":1,"":2})", u""_s},
        {R"({"a":1,"b":2,"c":3,"a":4})", u"a"_s},
        {R"({"a":1,"b":2,"b":3,"a":4})", u"b"_s},
        {R"([{"a":1},{"b":1,"b":2}])", u"b"_s},
        {R"({"x":{"y":[[{"a":1,"a":2}]]}})", u"a"_s},
        {R"({"a":{"b":1},"a":2})", u"a"_s},
        {R"({"a":{"a":1},"b":{},"a":{"c":1}})", u"a"_s},
        {R"({"a":"}","a":"{"})", u"a"_s},
        {R"({"a":"\\","a":"\""})", u"a"_s},
        {"{ \"a\" \t: 1 ,\r\n \"a\"\n:\n2 }", u"a"_s},
        {"\xef\xbb\xbf{\"a\":1,\"a\":2}", u"a"_s},
    };
    for (const Case &each : cases) {
        EXPECT_EQ(firstRepeated(each.json), each.key) << each.json.toStdString();
    }
}

TEST(JsonKeys, every_spelling_of_a_key_is_that_key)
{
    struct Case {
        QString key;
        QByteArrayList spellings;
    };
    const QList<Case> cases{
        {u"a"_s, {"a", "\\u0061", "\\a"}},
        {u"é"_s, {"é", "\\u00e9", "\\u00E9"}},
        {u"/"_s, {"/", "\\/", "\\u002f"}},
        {u"\"\\"_s, {"\\\"\\\\", "\\u0022\\u005c", "\\\"\\u005C"}},
        {u"a\nb"_s, {"a\\nb", "a\\u000ab", "\\u0061\\n\\u0062"}},
        {u"🎬"_s, {"🎬", "\\ud83c\\udfac", "\\uD83C\\uDFAC"}},
        {QString(QChar::Null), {"\\u0000", "\\u0000"}},
        {QString(QChar(0xd83c)), {"\\ud83c", "\\uD83C"}},
    };
    for (const Case &each : cases) {
        for (const QByteArray &first : each.spellings) {
            for (const QByteArray &second : each.spellings) {
                const QByteArray json =
                    "{\"" + first + "\":1,\"other\":2,\"" + second + "\":3,\"last\":4}";
                EXPECT_EQ(firstRepeated(json), each.key) << json.toStdString();
            }
        }
    }
}

TEST(JsonKeys, keys_that_only_look_alike_are_different)
{
    for (const QByteArray &json : {
             R"({"a":1,"A":2,"a ":3," a":4,"ａ":5})"_ba,
             R"({"a":1,"\\u0061":2,"\\a":3})"_ba,
             R"({"\u00e9":1,"e\u0301":2})"_ba,
             R"({"a":1,"a\u0000":2,"a\u0000b":3})"_ba,
             // Halves of characters, alone and in the wrong order, and what stands for them.
             R"({"\ud83c":1,"\udfac":2,"\ud83c\udfac":3,"\udfac\ud83c":4,"\ufffd":5,"?":6})"_ba,
             R"({"\ud83c\ud83c":1,"\ud83c":2})"_ba,
         }) {
        EXPECT_EQ(firstRepeated(json), std::nullopt) << json.toStdString();
    }
}

TEST(JsonKeys, objects_within_objects_are_told_apart_at_every_depth)
{
    constexpr qsizetype depth = 1000;
    const QByteArray opening = QByteArray(R"({"a":1,"b":)").repeated(depth);
    const QByteArray closing(depth, '}');
    EXPECT_EQ(firstRepeated(opening + "{}" + closing), std::nullopt);
    EXPECT_EQ(firstRepeated(opening + R"({"c":1,"c":2})" + closing), u"c"_s);
    EXPECT_EQ(firstRepeated(opening + "{}" + closing.chopped(1) + R"(,"a":2})"), u"a"_s);
    EXPECT_EQ(firstRepeated(opening + "{}" + QByteArray(R"(,"c":2})").repeated(depth)),
              std::nullopt);
}

TEST(JsonKeys, a_file_full_of_keys_is_looked_through_to_its_end)
{
    for (const QByteArray &keyStart : {""_ba, "\\n"_ba}) {
        EXPECT_EQ(firstRepeated(objectFullOfKeys(keyStart, "\"last\":0")), std::nullopt);
        EXPECT_EQ(firstRepeated(objectFullOfKeys(keyStart, "\"last\":0,\"l\\u0061st\":0")),
                  u"last"_s);
    }
}

TEST(JsonKeys, texts_as_long_as_a_file_are_passed_over_or_compared)
{
    const QByteArray half(JsonFile::mostBytes / 2 - 20, 'x');
    EXPECT_EQ(firstRepeated("{\"a\":\"" + half + half + "\",\"b\":0}"), std::nullopt);
    EXPECT_EQ(firstRepeated("{\"" + half + "\":0,\"" + half + "y\":0}"), std::nullopt);
    EXPECT_EQ(firstRepeated("{\"" + half + "\":0,\"" + half + "\":0}"), QString::fromLatin1(half));

    const QByteArray quotes = QByteArray("\\\"").repeated(half.size());
    EXPECT_EQ(firstRepeated("{\"" + quotes + "\":0}"), std::nullopt);
}

TEST(JsonKeys, many_small_objects_are_looked_at_one_by_one)
{
    const QByteArray objects = QByteArray(R"({"a":0},)").repeated(1'000'000);
    EXPECT_EQ(firstRepeated('[' + objects + R"({"a":0}])"), std::nullopt);
    EXPECT_EQ(firstRepeated('[' + objects + R"({"a":0,"a":0}])"), u"a"_s);
}

TEST(JsonKeys, a_repetition_refuses_the_text_and_is_named)
{
    EXPECT_NO_THROW(JsonKeys::requireDistinct(R"([{"a":1},{"a":2}])"));
    try {
        JsonKeys::requireDistinct(R"([{"start":1,"st\u0061rt":2}])");
        FAIL() << "not refused";
    } catch (const Json::DecodeError &error) {
        EXPECT_EQ(error.errorDescription(), u"the key \"start\" stands twice in one object"_s);
    }
}
