// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SettingsFixture.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/Controls/Switch.h"
#include "Views/Controls/TextField.h"
#include "Views/Controls/TextLabel.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

class GeneralSettingsTest : public SettingsFixture
{
};

class OutputSettingsTest : public SettingsFixture
{
protected:
    void choose(const QUrl &folder)
    {
        m_dialogs.answer = {folder};
        reach(find<Button>(u"Choose…"_s));
    }
};

struct Toggle {
    QString words;
    QString key;
    bool (AppModel::*isOn)() const;
    void (AppModel::*turn)(bool on);
};

const QList<Toggle> &toggles()
{
    static const QList<Toggle> all{{u"Play a sound when a job finishes"_s, u"mx.sound"_s,
                                    &AppModel::playDoneSound, &AppModel::setPlayDoneSound},
                                   {u"Keep folder structure in output"_s, u"mx.structure"_s,
                                    &AppModel::keepFolderStructure,
                                    &AppModel::setKeepFolderStructure},
                                   {u"Notify when a job finishes"_s, u"mx.notify"_s,
                                    &AppModel::notifyOnFinish, &AppModel::setNotifyOnFinish},
                                   {u"Prefer 2-pass exact mode when available"_s, u"mx.exact"_s,
                                    &AppModel::preferExactMode, &AppModel::setPreferExactMode}};
    return all;
}

} // namespace

TEST_F(GeneralSettingsTest, each_switch_shows_its_setting_and_stores_what_it_is_turned_to)
{
    showSheet();
    for (const Toggle &toggle : toggles()) {
        auto *control = find<Switch>(toggle.words);
        ASSERT_NE(control, nullptr) << toggle.words.toStdString();
        const bool before = (*m_model.*toggle.isOn)();
        EXPECT_EQ(control->isChecked(), before);

        reach(control);
        EXPECT_EQ(control->isChecked(), !before);
        EXPECT_EQ((*m_model.*toggle.isOn)(), !before);
        EXPECT_EQ(store().boolean(toggle.key), !before);

        press(Qt::Key_Tab);
        control->setFocus(Qt::TabFocusReason);
        press(Qt::Key_Space);
        EXPECT_EQ(store().boolean(toggle.key), before);
        press(Qt::Key_Return);
        EXPECT_EQ(store().boolean(toggle.key), !before);
    }
}

TEST_F(GeneralSettingsTest, a_setting_that_changes_elsewhere_is_shown)
{
    showSheet();
    for (const Toggle &toggle : toggles()) {
        const bool before = (*m_model.*toggle.isOn)();

        (*m_model.*toggle.turn)(!before);
        settle();

        EXPECT_EQ(find<Switch>(toggle.words)->isChecked(), !before);
    }
}

TEST_F(GeneralSettingsTest, a_click_on_the_words_turns_the_switch_too)
{
    showSheet();
    ASSERT_TRUE(m_model->playDoneSound());

    reach(find<TextLabel>(u"Play a sound when a job finishes"_s));

    EXPECT_FALSE(m_model->playDoneSound());
}

TEST_F(GeneralSettingsTest, the_number_of_encodes_is_one_two_or_three)
{
    showSheet();
    auto *picker = find<SegmentedPicker>(u"Simultaneous encodes"_s);
    ASSERT_NE(picker, nullptr);
    EXPECT_EQ(picker->items(), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
    EXPECT_EQ(picker->currentIndex(), 0);

    click(picker, picker->segmentRect(2).center());
    EXPECT_EQ(m_model->queueConcurrency(), 3);
    EXPECT_EQ(store().integer(u"mx.concurrency"_s), 3);

    picker->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Left);
    EXPECT_EQ(store().integer(u"mx.concurrency"_s), 2);
}

TEST_F(GeneralSettingsTest, a_stored_number_out_of_range_is_shown_as_it_acts_and_left_alone)
{
    showSheet();
    auto *picker = find<SegmentedPicker>(u"Simultaneous encodes"_s);

    m_model->setQueueConcurrency(7);
    settle();
    EXPECT_EQ(picker->currentIndex(), 2);
    EXPECT_EQ(store().integer(u"mx.concurrency"_s), 7);

    m_model->setQueueConcurrency(-4);
    settle();
    EXPECT_EQ(picker->currentIndex(), 0);
    EXPECT_EQ(store().integer(u"mx.concurrency"_s), -4);
}

TEST_F(GeneralSettingsTest, languages_are_named_in_themselves)
{
    showSheet(AppLanguage::simplifiedChinese);

    auto *picker = find<MenuPicker>(u"语言"_s);

    ASSERT_NE(picker, nullptr);
    ASSERT_EQ(picker->count(), 2);
    EXPECT_EQ(picker->itemText(0), u"English"_s);
    EXPECT_EQ(picker->itemText(1), u"简体中文"_s);
    EXPECT_EQ(picker->currentIndex(), 1);
}

TEST_F(OutputSettingsTest, the_template_is_stored_with_every_letter)
{
    showSheet();
    auto *field = find<TextField>(u"Output name template"_s);

    type(field, u"{name}_x"_s);
    EXPECT_EQ(m_model->outputTemplate(), u"{name}_x"_s);
    QTest::keyClick(field, Qt::Key_Backspace);

    EXPECT_EQ(store().text(u"mx.template"_s), u"{name}_"_s);
    type(field, {});
    EXPECT_EQ(store().text(u"mx.template"_s), QString());
}

TEST_F(OutputSettingsTest, typing_in_the_middle_of_the_template_keeps_the_cursor)
{
    showSheet();
    auto *field = find<TextField>(u"Output name template"_s);
    type(field, u"ad"_s);

    QTest::keyClick(field, Qt::Key_Left);
    QTest::keyClick(field, Qt::Key_B);
    settle();
    QTest::keyClick(field, Qt::Key_C);
    settle();

    EXPECT_EQ(m_model->outputTemplate(), u"abcd"_s);
}

TEST_F(OutputSettingsTest, results_lie_beside_their_originals_until_a_folder_is_chosen)
{
    showSheet();
    EXPECT_NE(find<ElidedLabel>(u"Next to original"_s), nullptr);
    EXPECT_EQ(find<Button>(u"Next to original"_s), nullptr);

    choose(QUrl(u"file:///films/my out/"_s));

    EXPECT_EQ(m_dialogs.opened, QStringList{u"folder"_s});
    EXPECT_EQ(m_model->outputDirectoryPath(), u"/films/my out"_s);
    EXPECT_EQ(store().text(u"mx.outdir"_s), u"/films/my out"_s);
    EXPECT_NE(find<ElidedLabel>(u"/films/my out"_s), nullptr);
}

TEST_F(OutputSettingsTest, going_back_beside_the_originals_removes_the_folder_from_the_store)
{
    showSheet();
    choose(QUrl(u"file:///films/out/"_s));

    reach(find<Button>(u"Next to original"_s));

    EXPECT_EQ(m_model->outputDirectoryPath(), std::nullopt);
    EXPECT_EQ(store().text(u"mx.outdir"_s), std::nullopt);
    EXPECT_EQ(find<Button>(u"Next to original"_s), nullptr);
}

TEST_F(OutputSettingsTest, a_cancelled_dialog_leaves_the_folder_as_it_was)
{
    showSheet();
    choose(QUrl(u"file:///films/out/"_s));

    m_dialogs.answer.clear();
    reach(find<Button>(u"Choose…"_s));

    EXPECT_EQ(m_dialogs.opened.size(), 2);
    EXPECT_EQ(m_model->outputDirectoryPath(), u"/films/out"_s);
}

TEST_F(OutputSettingsTest, a_folder_that_is_chosen_after_the_sheet_has_gone_is_taken)
{
    showSheet();
    m_dialogs.isHolding = true;
    choose(QUrl(u"file:///films/late/"_s));

    m_sheet->dismiss();
    settle();
    ASSERT_FALSE(m_sheet);
    m_dialogs.answerHeld();

    EXPECT_EQ(m_model->outputDirectoryPath(), u"/films/late"_s);
}

TEST_F(OutputSettingsTest, the_button_to_choose_stays_where_it_is)
{
    showSheet();
    auto *button = find<Button>(u"Choose…"_s);
    scrollTo(button);
    const QPoint before = button->mapTo(m_window.get(), QPoint());

    choose(QUrl(u"file:///films/out/"_s));

    EXPECT_EQ(button->mapTo(m_window.get(), QPoint()), before);
}

TEST_F(OutputSettingsTest, the_focus_goes_on_from_the_button_that_vanishes)
{
    showSheet();
    choose(QUrl(u"file:///films/out/"_s));
    find<Button>(u"Next to original"_s)->setFocus(Qt::TabFocusReason);

    press(Qt::Key_Space);

    EXPECT_EQ(m_model->outputDirectoryPath(), std::nullopt);
    EXPECT_EQ(QApplication::focusWidget(), find<Button>(u"Choose…"_s));
}
