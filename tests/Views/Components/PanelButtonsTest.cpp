// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/PanelButtons.h"

#include "ViewFixture.h"

#include "Views/Controls/Button.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

class PanelButtonsTest : public ViewFixture
{
protected:
    void showButtons(PanelButtons::AddAll addAll)
    {
        m_buttons = new PanelButtons(context(), addAll);
        show(m_buttons, {500, 60});
    }

    PanelButtons *m_buttons = nullptr;
};

} // namespace

TEST_F(PanelButtonsTest, with_one_file_there_is_one_button_whatever_the_panel_offers)
{
    start();
    take(u"one.mp4"_s);

    showButtons(PanelButtons::AddAll::offered);

    EXPECT_EQ(visibleTexts(), QStringList({u"Add to Queue"_s}));
}

TEST_F(PanelButtonsTest, the_second_button_counts_the_files_as_they_come_and_go)
{
    start();
    take(u"one.mp4"_s);
    showButtons(PanelButtons::AddAll::offered);

    take(u"two.mp4"_s);
    EXPECT_TRUE(shows(u"Add All Files (2)"_s));
    const VideoFile third = take(u"three.mp4"_s);
    EXPECT_TRUE(shows(u"Add All Files (3)"_s));
    m_model->removeFile(third.id);
    settle();
    EXPECT_TRUE(shows(u"Add All Files (2)"_s));
}

TEST_F(PanelButtonsTest, a_panel_that_is_not_for_all_files_has_one_button)
{
    start();
    take(u"one.mp4"_s);
    take(u"two.mp4"_s);

    showButtons(PanelButtons::AddAll::notOffered);

    EXPECT_EQ(visibleTexts(), QStringList({u"Add to Queue"_s}));
}

TEST_F(PanelButtonsTest, each_button_says_what_was_asked_for)
{
    start();
    take(u"one.mp4"_s);
    take(u"two.mp4"_s);
    showButtons(PanelButtons::AddAll::offered);
    const QSignalSpy add(m_buttons, &PanelButtons::add);
    const QSignalSpy addAll(m_buttons, &PanelButtons::addAll);

    click(find<Button>(u"Add to Queue"_s));
    EXPECT_EQ(add.count(), 1);
    EXPECT_EQ(addAll.count(), 0);
    click(find<Button>(u"Add All Files (2)"_s));
    EXPECT_EQ(add.count(), 1);
    EXPECT_EQ(addAll.count(), 1);
}

TEST_F(PanelButtonsTest, with_nothing_to_add_neither_button_acts)
{
    start();
    take(u"one.mp4"_s);
    take(u"two.mp4"_s);
    showButtons(PanelButtons::AddAll::offered);
    const QSignalSpy add(m_buttons, &PanelButtons::add);
    const QSignalSpy addAll(m_buttons, &PanelButtons::addAll);

    m_buttons->setEnabledToAdd(false);
    settle();
    click(find<Button>(u"Add to Queue"_s));
    click(find<Button>(u"Add All Files (2)"_s));

    EXPECT_EQ(add.count() + addAll.count(), 0);
    m_buttons->setEnabledToAdd(true);
    settle();
    click(find<Button>(u"Add to Queue"_s));
    EXPECT_EQ(add.count(), 1);
}

TEST_F(PanelButtonsTest, the_keyboard_reaches_both_in_their_order)
{
    start();
    take(u"one.mp4"_s);
    take(u"two.mp4"_s);
    showButtons(PanelButtons::AddAll::offered);
    const QSignalSpy add(m_buttons, &PanelButtons::add);
    const QSignalSpy addAll(m_buttons, &PanelButtons::addAll);
    find<Button>(u"Add to Queue"_s)->setFocus();

    press(Qt::Key_Space);
    EXPECT_EQ(add.count(), 1);
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(addAll.count(), 1);
}

TEST_F(PanelButtonsTest, the_words_follow_the_language)
{
    start();
    take(u"one.mp4"_s);
    take(u"two.mp4"_s);
    showButtons(PanelButtons::AddAll::offered);

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    settle();

    EXPECT_EQ(visibleTexts(), QStringList({u"加入队列"_s, u"加入全部文件 (2)"_s}));
}
