// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/ActionKind.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Row {
    ActionKind action;
    QString raw;
    QString symbol;
    QString title;
    QString subtitle;
};

QList<Row> rows()
{
    return {
        {ActionKind::targetSize, u"targetSize"_s, u"scope"_s, u"action.targetSize.title"_s,
         u"action.targetSize.subtitle"_s},
        {ActionKind::convert, u"convert"_s, u"arrow.triangle.2.circlepath"_s,
         u"action.convert.title"_s, u"action.convert.subtitle"_s},
        {ActionKind::compress, u"compress"_s, u"arrow.down.circle"_s, u"action.compress.title"_s,
         u"action.compress.subtitle"_s},
        {ActionKind::extract, u"extract"_s, u"waveform"_s, u"action.extract.title"_s,
         u"action.extract.subtitle"_s},
        {ActionKind::trim, u"trim"_s, u"scissors"_s, u"action.trim.title"_s,
         u"action.trim.subtitle"_s},
        {ActionKind::gif, u"gif"_s, u"film"_s, u"action.gif.title"_s, u"action.gif.subtitle"_s},
        {ActionKind::play, u"play"_s, u"play.rectangle.fill"_s, u"action.play.title"_s,
         u"action.play.subtitle"_s},
        {ActionKind::enhance, u"enhance"_s, u"wand.and.stars"_s, u"action.enhance.title"_s,
         u"action.enhance.subtitle"_s},
        {ActionKind::merge, u"merge"_s, u"rectangle.compress.vertical"_s, u"action.merge.title"_s,
         u"action.merge.subtitle"_s},
        {ActionKind::split, u"split"_s, u"rectangle.split.2x1"_s, u"action.split.title"_s,
         u"action.split.subtitle"_s},
        {ActionKind::adjust, u"adjust"_s, u"slider.horizontal.below.rectangle"_s,
         u"action.adjust.title"_s, u"action.adjust.subtitle"_s},
    };
}

} // namespace

TEST(ActionKind, all_eleven_actions_stand_in_the_order_of_the_tabs)
{
    QList<ActionKind> expected;
    for (const Row &row : rows()) {
        expected.append(row.action);
    }
    const auto cases = allCases<ActionKind>();
    EXPECT_EQ(QList<ActionKind>(cases.begin(), cases.end()), expected);
    EXPECT_EQ(cases.size(), 11U);
}

TEST(ActionKind, every_action_has_its_raw_value_and_is_found_by_it)
{
    for (const Row &row : rows()) {
        EXPECT_EQ(rawValue(row.action), row.raw);
        EXPECT_EQ(fromRawValue<ActionKind>(row.raw), row.action) << row.raw.toStdString();
    }
}

TEST(ActionKind, every_action_has_its_symbol)
{
    for (const Row &row : rows()) {
        EXPECT_EQ(symbolName(row.action), row.symbol) << row.raw.toStdString();
    }
}

TEST(ActionKind, every_action_has_the_keys_of_its_title_and_subtitle)
{
    for (const Row &row : rows()) {
        EXPECT_EQ(titleKey(row.action), row.title);
        EXPECT_EQ(subtitleKey(row.action), row.subtitle);
    }
}

TEST(ActionKind, a_text_that_is_no_raw_value_gives_nothing)
{
    for (const QString &text : {u""_s, u"TargetSize"_s, u"target"_s, u"targetsize"_s, u"trim "_s,
                                u" trim"_s, u"remux"_s, u"0"_s, u"action.trim.title"_s}) {
        EXPECT_FALSE(fromRawValue<ActionKind>(text)) << text.toStdString();
    }
    EXPECT_FALSE(fromRawValue<ActionKind>(QString()));
}
