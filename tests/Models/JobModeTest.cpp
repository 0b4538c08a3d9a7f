// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/JobMode.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct Row {
    JobMode mode;
    ActionKind action;
    QString title;
    QString symbol;
};

// In the order of the cases.
QList<Row> rows()
{
    return {
        {TargetSizeParams(), ActionKind::targetSize, u"action.targetSize.title"_s, u"scope"_s},
        {ConvertParams(), ActionKind::convert, u"action.convert.title"_s,
         u"arrow.triangle.2.circlepath"_s},
        {CompressParams(), ActionKind::compress, u"action.compress.title"_s,
         u"arrow.down.circle"_s},
        {ExtractParams(), ActionKind::extract, u"action.extract.title"_s, u"waveform"_s},
        {TrimParams(), ActionKind::trim, u"action.trim.title"_s, u"scissors"_s},
        {GifParams(), ActionKind::gif, u"action.gif.title"_s, u"film"_s},
        {EnhanceParams(), ActionKind::enhance, u"action.enhance.title"_s, u"wand.and.stars"_s},
        {MergeParams(), ActionKind::merge, u"action.merge.title"_s,
         u"rectangle.compress.vertical"_s},
        {SplitParams(), ActionKind::split, u"action.split.title"_s, u"rectangle.split.2x1"_s},
        {AdjustParams(), ActionKind::adjust, u"action.adjust.title"_s,
         u"slider.horizontal.below.rectangle"_s},
    };
}

} // namespace

TEST(JobMode, ten_modes_stand_in_their_order)
{
    const QList<Row> modes = rows();
    EXPECT_EQ(std::variant_size_v<JobMode>, static_cast<std::size_t>(modes.size()));
    for (qsizetype i = 0; i < modes.size(); ++i) {
        EXPECT_EQ(modes.at(i).mode.index(), static_cast<std::size_t>(i));
    }
}

TEST(JobMode, every_mode_belongs_to_the_action_of_its_name)
{
    for (const Row &row : rows()) {
        EXPECT_EQ(actionOf(row.mode), row.action) << row.title.toStdString();
    }
}

TEST(JobMode, every_mode_has_the_title_of_its_action)
{
    for (const Row &row : rows()) {
        EXPECT_EQ(l10nKey(row.mode), row.title);
        EXPECT_EQ(l10nKey(row.mode), titleKey(row.action));
    }
}

TEST(JobMode, every_mode_has_the_symbol_of_its_action)
{
    for (const Row &row : rows()) {
        EXPECT_EQ(symbolName(row.mode), row.symbol);
        EXPECT_EQ(symbolName(row.mode), symbolName(row.action));
    }
}

TEST(JobMode, playing_is_the_only_action_that_makes_no_job)
{
    QList<ActionKind> withoutMode;
    for (const ActionKind action : allCases<ActionKind>()) {
        const QList<Row> modes = rows();
        const bool hasMode = std::any_of(modes.begin(), modes.end(), [&](const Row &row) {
            return actionOf(row.mode) == action;
        });
        if (!hasMode) {
            withoutMode.append(action);
        }
    }
    EXPECT_EQ(withoutMode, QList<ActionKind>{ActionKind::play});
}

TEST(JobMode, a_copy_holds_everything_and_lives_on_its_own)
{
    TargetSizeParams params;
    params.targetMB = 8;
    params.advanced.extraArgs = u"-tune film"_s;
    const JobMode first = params;
    JobMode second = first;
    EXPECT_EQ(first, second);
    std::get<TargetSizeParams>(second).advanced.extraArgs.clear();
    EXPECT_EQ(std::get<TargetSizeParams>(first).advanced.extraArgs, u"-tune film"_s);
    EXPECT_NE(first, second);
}
