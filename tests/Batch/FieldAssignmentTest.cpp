// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/FieldAssignment.h"

#include "Models/JobParamsJson.h"
#include "support/Printing.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

template <typename Params = TargetSizeParams>
Params assigned(const QString &path, const QString &text)
{
    Params params;
    FieldAssignment::assign(params, path, text);
    return params;
}

// The words of the refusal; empty when there is none.
template <typename Params = TargetSizeParams>
QString refusal(const QString &path, const QString &text)
{
    try {
        assigned<Params>(path, text);
    } catch (const Json::DecodeError &error) {
        return error.errorDescription();
    }
    return {};
}

QUrl replacement(const QString &text)
{
    return assigned(u"advanced.replacementAudioURL"_s, text).advanced.replacementAudioURL.value();
}

} // namespace

TEST(FieldAssignment, a_number_is_read_however_JSON_writes_it)
{
    EXPECT_EQ(assigned(u"targetMB"_s, u"8"_s).targetMB, 8);
    EXPECT_EQ(assigned(u"targetMB"_s, u"7.5"_s).targetMB, 7.5);
    EXPECT_EQ(assigned(u"targetMB"_s, u"2.5e1"_s).targetMB, 25);
    EXPECT_EQ(assigned(u"targetMB"_s, u"-1"_s).targetMB, -1);
}

TEST(FieldAssignment, what_is_no_JSON_number_is_no_number)
{
    for (const QString &text :
         {u""_s, u"abc"_s, u"nan"_s, u"inf"_s, u"-inf"_s, u"NaN"_s, u"0x10"_s, u"8,5"_s, u"8MB"_s,
          u"+8"_s, u"1e999"_s, u"8]"_s, u"[8]"_s, u"\"8\""_s, u"true"_s, u"null"_s}) {
        EXPECT_EQ(refusal(u"targetMB"_s, text), u"targetMB: a number is expected"_s)
            << text.toStdString();
    }
}

TEST(FieldAssignment, a_truth_value_is_true_or_false_and_nothing_else)
{
    EXPECT_TRUE(assigned(u"muted"_s, u"true"_s).muted);
    EXPECT_FALSE(assigned(u"muted"_s, u"false"_s).muted);
    for (const QString &text : {u""_s, u"1"_s, u"yes"_s, u"True"_s, u"\"true\""_s}) {
        EXPECT_EQ(refusal(u"muted"_s, text), u"muted: true or false is expected"_s)
            << text.toStdString();
    }
}

TEST(FieldAssignment, a_field_that_may_be_absent_becomes_present)
{
    const TargetSizeParams params = assigned(u"skipHeadSeconds"_s, u"1.5"_s);
    EXPECT_EQ(params.skipHeadSeconds, 1.5);
    EXPECT_EQ(params.skipTailSeconds, std::nullopt);
}

TEST(FieldAssignment, a_whole_number_may_have_no_fraction)
{
    EXPECT_EQ(assigned(u"advanced.fpsCap"_s, u"30"_s).advanced.fpsCap, 30);
    EXPECT_EQ(assigned(u"advanced.fpsCap"_s, u"30.0"_s).advanced.fpsCap, 30);
    EXPECT_EQ(refusal(u"advanced.fpsCap"_s, u"29.97"_s),
              u"advanced.fpsCap: a whole number is expected"_s);
}

TEST(FieldAssignment, a_word_needs_no_quotes)
{
    EXPECT_EQ(assigned(u"advanced.codec"_s, u"hevcVideoToolbox"_s).advanced.codec,
              CodecChoice::hevcVideoToolbox);
    EXPECT_EQ(refusal(u"advanced.codec"_s, u"vp9"_s),
              u"advanced.codec: the word \"vp9\" isn't known"_s);
}

TEST(FieldAssignment, a_text_is_taken_as_it_stands)
{
    for (const QString &text :
         {u""_s, u"-preset slow"_s, u"8"_s, u"true"_s, u"\"quoted\""_s, u"[1,2]"_s, u"a=b"_s}) {
        EXPECT_EQ(assigned(u"advanced.extraArgs"_s, text).advanced.extraArgs, text);
    }
}

TEST(FieldAssignment, a_record_is_an_object)
{
    const CropSpec crop =
        assigned(u"advanced.crop"_s, u"{\"aspect\":\"free\",\"customWidth\":640}"_s)
            .advanced.crop.value();
    EXPECT_EQ(crop.aspect, CropSpec::Aspect::free);
    EXPECT_EQ(crop.customWidth, 640);
    EXPECT_EQ(crop.customHeight, std::nullopt);
    EXPECT_EQ(refusal(u"advanced"_s, u"1"_s), u"advanced: an object is expected"_s);
    EXPECT_EQ(refusal(u"advanced.crop"_s, u"ratio1x1"_s),
              u"advanced.crop: an object is expected"_s);
}

TEST(FieldAssignment, a_part_of_a_record_that_may_be_absent_is_reached_by_its_path)
{
    TargetSizeParams params = assigned(u"advanced.crop.aspect"_s, u"ratio1x1"_s);
    EXPECT_EQ(params.advanced.crop.value().aspect, CropSpec::Aspect::ratio1x1);

    FieldAssignment::assign(params, u"advanced.crop.customWidth"_s, u"100"_s);
    EXPECT_EQ(params.advanced.crop.value().aspect, CropSpec::Aspect::ratio1x1);
    EXPECT_EQ(params.advanced.crop.value().customWidth, 100);
}

TEST(FieldAssignment, a_list_is_JSON_and_an_error_in_it_names_the_place)
{
    const auto params =
        assigned<TrimParams>(u"segments"_s, u"[{\"start\":1,\"end\":3},{\"start\":5,\"end\":6}]"_s);
    ASSERT_EQ(params.segments.size(), 2);
    EXPECT_EQ(params.segments.at(0).end, 3);
    EXPECT_EQ(params.segments.at(1).start, 5);
    EXPECT_EQ(refusal<TrimParams>(u"segments"_s, u"[{\"start\":1,\"end\":\"3\"}]"_s),
              u"segments[0].end: a number is expected"_s);
    EXPECT_EQ(refusal<TrimParams>(u"segments"_s, u"1-3"_s), u"segments: a list is expected"_s);
}

TEST(FieldAssignment, a_key_that_stands_twice_in_an_object_is_refused_and_named)
{
    EXPECT_EQ(refusal<TrimParams>(u"segments"_s,
                                  u"[{\"start\":1,\"end\":3},{\"start\":5,\"end\":6,\"end\":7}]"_s),
              u"segments: the key \"end\" stands twice in one object"_s);
    EXPECT_EQ(refusal(u"advanced.crop"_s, u"{\"aspect\":\"free\",\"\\u0061spect\":\"free\"}"_s),
              u"advanced.crop: the key \"aspect\" stands twice in one object"_s);
}

TEST(FieldAssignment, an_unknown_field_is_named_with_its_path)
{
    EXPECT_EQ(refusal(u"foo"_s, u"1"_s), u"foo: there is no such field"_s);
    EXPECT_EQ(refusal(u"TargetMB"_s, u"1"_s), u"TargetMB: there is no such field"_s);
    EXPECT_EQ(refusal(u"advanced.foo"_s, u"1"_s), u"advanced.foo: there is no such field"_s);
    EXPECT_EQ(refusal(u"targetMB.foo"_s, u"1"_s), u"targetMB: there is no such field"_s);
    EXPECT_EQ(refusal(u"advanced.crop.foo"_s, u"1"_s),
              u"advanced.crop.foo: there is no such field"_s);
}

TEST(FieldAssignment, a_refused_value_leaves_the_record_as_it_was)
{
    TargetSizeParams params;
    EXPECT_THROW(FieldAssignment::assign(params, u"advanced.crop.customWidth"_s, u"wide"_s),
                 Json::DecodeError);
    EXPECT_EQ(params, TargetSizeParams());
}

TEST(FieldAssignment, the_other_fields_stay_as_they_are)
{
    TargetSizeParams params = assigned(u"targetMB"_s, u"8"_s);
    FieldAssignment::assign(params, u"muted"_s, u"true"_s);
    EXPECT_EQ(params.targetMB, 8);
    EXPECT_TRUE(params.muted);
    EXPECT_EQ(params.advanced, AdvancedOptions());
}

TEST(FieldAssignment, a_place_is_a_path_or_a_file_URL)
{
    EXPECT_EQ(replacement(u"/music/a.mp3"_s), QUrl::fromLocalFile(u"/music/a.mp3"_s));
    EXPECT_EQ(replacement(u"file:///music/a%20b.mp3"_s), QUrl::fromLocalFile(u"/music/a b.mp3"_s));
    EXPECT_EQ(replacement(u"a.mp3"_s), QUrl::fromLocalFile(QDir::currentPath() + u"/a.mp3"_s));
    EXPECT_EQ(refusal(u"advanced.replacementAudioURL"_s, u""_s),
              u"advanced.replacementAudioURL: a URL is expected"_s);
}

TEST(FieldAssignment, a_path_may_hold_what_means_something_in_a_URL)
{
    for (const QString &name : {u"50%25.mp3"_s, u"#1.mp3"_s, u"why?.mp3"_s, u"a: b.mp3"_s,
                                u":front.mp3"_s, u"www.song.mp3"_s, u"我的歌.mp3"_s, u"-x.mp3"_s}) {
        const QString path = u"/music/"_s + name;
        EXPECT_EQ(replacement(path).toLocalFile(), path);
        EXPECT_EQ(replacement(name).toLocalFile(), QDir::currentPath() + u'/' + name);
    }
}
