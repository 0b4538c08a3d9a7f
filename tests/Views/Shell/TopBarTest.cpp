// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShellFixture.h"

#include "Engine/PresetStore.h"
#include "Views/Controls/Button.h"
#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/Spinner.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Look/Metrics.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

class TopBarTest : public ShellFixture
{
protected:
    QList<QAction *> presetItems()
    {
        auto *menu = find<Button>(u"Presets"_s)->menu();
        Q_EMIT menu->aboutToShow();
        return menu->actions();
    }

    const TempFolder m_data;
    const std::shared_ptr<PresetStore> m_presets = std::make_shared<PresetStore>(m_data.url({}));
};

TEST_F(TopBarTest, it_names_the_program_and_what_it_does)
{
    open();

    EXPECT_TRUE(shows(u"Morvix"_s));
    EXPECT_TRUE(shows(u"Morvix compression and conversion for Mac."_s));
}

TEST_F(TopBarTest, the_rows_of_an_open_menu_have_room_to_aim_at)
{
    open();
    auto *languages = find<MenuPicker>(u"Language"_s);

    languages->showPopup();

    EXPECT_GE(languages->view()->sizeHintForRow(0), Look::Height::control);
    EXPECT_GE(languages->view()->sizeHintForRow(1), Look::Height::control);
    languages->hidePopup();
}

TEST_F(TopBarTest, the_spinner_turns_only_while_a_file_is_read)
{
    holdProbes();
    const Gate gate(film(u"a.mp4"_s));
    open();
    const bool turnedBefore = only<Spinner>() != nullptr;

    m_model->addURLs({layReady(u"a.mp4"_s)});
    settle();
    const auto *spinner = find<Spinner>(u"Reading file…"_s);
    const QString tip = spinner ? spinner->toolTip() : QString();
    gate.open();
    waitUntil([this] { return m_model->probingCount() == 0; });
    settle();

    EXPECT_FALSE(turnedBefore);
    EXPECT_EQ(tip, u"Reading file…"_s);
    EXPECT_EQ(find<Spinner>(u"Reading file…"_s), nullptr);
}

TEST_F(TopBarTest, a_change_of_language_repaints_all_but_the_names_of_the_languages)
{
    open();
    auto *languages = only<MenuPicker>();
    const QStringList names{languages->itemText(0), languages->itemText(1)};

    languages->setFocus();
    press(Qt::Key_Down);

    EXPECT_EQ(m_model->language(), AppLanguage::simplifiedChinese);
    EXPECT_EQ(names, QStringList({u"English"_s, u"简体中文"_s}));
    EXPECT_EQ(QStringList({languages->itemText(0), languages->itemText(1)}), names);
    EXPECT_EQ(languages->currentIndex(), 1);
    EXPECT_TRUE(shows(u"把视频拖到这里"_s));
    EXPECT_TRUE(shows(u"Morvix，适用于 Mac 的视频压缩与转换工具。"_s));
    EXPECT_NE(find<SymbolButton>(u"设置"_s), nullptr);
    EXPECT_FALSE(shows(u"Drop videos here"_s));
}

TEST_F(TopBarTest, the_language_of_the_settings_is_shown_at_once)
{
    open({.language = AppLanguage::simplifiedChinese});

    EXPECT_EQ(only<MenuPicker>()->currentIndex(), 1);
    EXPECT_EQ(only<MenuPicker>()->width(), 130);
}

TEST_F(TopBarTest, without_presets_the_menu_holds_one_inert_line)
{
    open({.collections = {m_presets, nullptr}});

    const QList<QAction *> items = presetItems();

    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items.first()->text(), u"No presets yet"_s);
    EXPECT_FALSE(items.first()->isEnabled());
}

TEST_F(TopBarTest, the_menu_lists_the_presets_in_order_and_applies_the_chosen_one)
{
    open({.collections = {m_presets, nullptr}});
    m_model->savePreset(u"Small & fast"_s, GifParams(), {});
    m_model->savePreset(u"Tiny"_s, CompressParams(), {});

    const QList<QAction *> items = presetItems();
    ASSERT_EQ(items.size(), 2);
    items.at(1)->trigger();

    EXPECT_EQ(items.at(0)->text(), u"Tiny"_s);
    EXPECT_EQ(items.at(1)->text(), u"Small && fast"_s);
    EXPECT_EQ(m_model->action(), ActionKind::gif);
    ASSERT_TRUE(m_model->appliedPreset());
    EXPECT_EQ(m_model->appliedPreset()->name, u"Small & fast"_s);
}

TEST_F(TopBarTest, the_drop_zone_button_tells_the_model_and_then_the_panel)
{
    open();

    click(find<SymbolButton>(u"Drop Zone"_s));
    const bool afterOne = m_model->showDropZonePanel();
    click(find<SymbolButton>(u"Drop Zone"_s));

    EXPECT_TRUE(afterOne);
    EXPECT_FALSE(m_model->showDropZonePanel());
    EXPECT_EQ(m_dropZoneCalls, QList<bool>({true, false}));
}

TEST_F(TopBarTest, the_queue_button_negates_and_the_settings_button_sets)
{
    open();
    const bool before = m_model->showQueue();

    click(find<SymbolButton>(u"Queue"_s));
    const bool afterOne = m_model->showQueue();
    click(find<SymbolButton>(u"Queue"_s));
    click(find<SymbolButton>(u"Settings"_s));

    EXPECT_EQ(afterOne, !before);
    EXPECT_EQ(m_model->showQueue(), before);
    EXPECT_TRUE(m_model->showSettings());
}

TEST_F(TopBarTest, tab_goes_through_it_in_reading_order)
{
    open();

    QStringList names;
    for (int i = 0; i < 5; ++i) {
        press(Qt::Key_Tab);
        names += QApplication::focusWidget()->accessibleName();
    }

    EXPECT_EQ(names, QStringList(
                         {u"Language"_s, u"Presets"_s, u"Drop Zone"_s, u"Queue"_s, u"Settings"_s}));
}

} // namespace
