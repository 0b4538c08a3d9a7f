// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SettingsFixture.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/Switch.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Settings/PresetRow.h"
#include "Views/Settings/WatchFolderRow.h"

#include <QApplication>
#include <QJsonObject>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

template <typename Row> class RowFixture : public SettingsFixture
{
protected:
    // From top to bottom.
    QList<Row *> rows()
    {
        QList<Row *> all;
        for (Row *row : m_sheet->findChildren<Row *>()) {
            if (row->isVisible()) {
                all += row;
            }
        }
        std::ranges::sort(all, {}, [](const Row *row) { return row->y(); });
        return all;
    }
    // What a row shows: its path or its name.
    QStringList texts()
    {
        QStringList all;
        for (const Row *row : rows()) {
            all += row->template findChild<ElidedLabel *>()->text();
        }
        return all;
    }
    template <typename Part> Part *part(qsizetype row)
    {
        return rows().value(row)->template findChild<Part *>();
    }
};

class WatchFolderSettingsTest : public RowFixture<WatchFolderRow>
{
protected:
    void watch(const QString &path, std::optional<QUuid> preset = std::nullopt)
    {
        m_engine->add(QUrl::fromLocalFile(path + u'/'), preset);
    }
    QStringList choices(qsizetype row)
    {
        const auto *picker = part<MenuPicker>(row);
        QStringList all;
        for (int i = 0; i < picker->count(); ++i) {
            all += picker->itemText(i);
        }
        return all;
    }
};

class PresetSettingsTest : public RowFixture<PresetRow>
{
};

} // namespace

TEST_F(WatchFolderSettingsTest, an_empty_list_says_so_and_what_it_is_for)
{
    showSheet();

    EXPECT_TRUE(shows(u"No watched folders"_s));
    EXPECT_TRUE(shows(u"New videos dropped into a watched folder run its preset automatically."_s));
    EXPECT_TRUE(rows().isEmpty());
}

TEST_F(WatchFolderSettingsTest, a_folder_that_is_added_is_watched_without_a_preset)
{
    showSheet();
    m_dialogs.answer = {QUrl(u"file:///films/in box/"_s)};

    reach(find<Button>(u"Add folder…"_s));

    EXPECT_EQ(m_dialogs.opened, QStringList{u"folder"_s});
    EXPECT_EQ(texts(), QStringList{u"/films/in box"_s});
    EXPECT_FALSE(shows(u"No watched folders"_s));
    EXPECT_TRUE(part<Switch>(0)->isChecked());
    EXPECT_EQ(part<MenuPicker>(0)->currentIndex(), 0);
    ASSERT_EQ(storedFolders().size(), 1);
    EXPECT_EQ(storedFolders().at(0)[u"path"_s], u"/films/in box"_s);
    EXPECT_EQ(storedFolders().at(0)[u"enabled"_s], true);
    EXPECT_FALSE(storedFolders().at(0).toObject().contains(u"presetID"_s));
}

TEST_F(WatchFolderSettingsTest, a_cancelled_dialog_adds_nothing)
{
    showSheet();

    reach(find<Button>(u"Add folder…"_s));

    EXPECT_EQ(m_dialogs.opened, QStringList{u"folder"_s});
    EXPECT_TRUE(rows().isEmpty());
}

TEST_F(WatchFolderSettingsTest, folders_stand_in_the_order_of_adding)
{
    watch(u"/films/b"_s);
    watch(u"/films/a"_s);
    showSheet();
    m_dialogs.answer = {QUrl(u"file:///films/0/"_s)};

    reach(find<Button>(u"Add folder…"_s));

    EXPECT_EQ(texts(), (QStringList{u"/films/b"_s, u"/films/a"_s, u"/films/0"_s}));
}

TEST_F(WatchFolderSettingsTest, the_switch_of_a_folder_is_stored_for_that_folder)
{
    watch(u"/films/a"_s);
    watch(u"/films/b"_s);
    showSheet();

    reach(part<Switch>(1));

    EXPECT_EQ(storedFolders().at(0)[u"enabled"_s], true);
    EXPECT_EQ(storedFolders().at(1)[u"enabled"_s], false);
    EXPECT_FALSE(part<Switch>(1)->isChecked());
    reach(part<Switch>(1));
    EXPECT_EQ(storedFolders().at(1)[u"enabled"_s], true);
}

TEST_F(WatchFolderSettingsTest, a_preset_is_picked_and_put_back_to_none)
{
    const QUuid small = savePreset(u"Small"_s);
    savePreset(u"Large"_s);
    watch(u"/films/a"_s);
    showSheet();
    EXPECT_EQ(choices(0), (QStringList{u"—"_s, u"Large"_s, u"Small"_s}));

    pick(part<MenuPicker>(0), u"Small"_s);
    EXPECT_EQ(QUuid(storedFolders().at(0)[u"presetID"_s].toString()), small);
    EXPECT_EQ(part<MenuPicker>(0)->currentText(), u"Small"_s);

    pick(part<MenuPicker>(0), u"—"_s);
    EXPECT_FALSE(storedFolders().at(0).toObject().contains(u"presetID"_s));
}

TEST_F(WatchFolderSettingsTest, a_preset_is_picked_by_its_words_though_another_has_just_gone)
{
    const QUuid small = savePreset(u"Small"_s);
    const QUuid large = savePreset(u"Large"_s);
    watch(u"/films/a"_s);
    showSheet();
    auto *picker = part<MenuPicker>(0);
    picker->setFocus();

    m_model->deletePreset(large);
    // Before the menu has heard of it.
    ASSERT_EQ(picker->itemText(2), u"Small"_s);
    QTest::keyClick(picker, Qt::Key_End);
    settle();

    EXPECT_EQ(QUuid(storedFolders().at(0)[u"presetID"_s].toString()), small);
    EXPECT_EQ(picker->currentText(), u"Small"_s);
}

TEST_F(WatchFolderSettingsTest, a_folder_that_is_chosen_after_the_sheet_has_gone_is_watched)
{
    showSheet();
    m_dialogs.answer = {QUrl(u"file:///films/late/"_s)};
    m_dialogs.isHolding = true;
    reach(find<Button>(u"Add folder…"_s));

    m_sheet->dismiss();
    settle();
    ASSERT_FALSE(m_sheet);
    m_dialogs.answerHeld();

    ASSERT_EQ(storedFolders().size(), 1);
    EXPECT_EQ(storedFolders().at(0)[u"path"_s], u"/films/late"_s);
}

TEST_F(WatchFolderSettingsTest, the_preset_of_a_folder_is_shown_when_the_sheet_comes_up)
{
    watch(u"/films/a"_s, savePreset(u"Small"_s));
    savePreset(u"Large"_s);

    showSheet();

    EXPECT_EQ(part<MenuPicker>(0)->currentText(), u"Small"_s);
}

TEST_F(WatchFolderSettingsTest, a_folder_whose_preset_is_deleted_shows_none_and_keeps_its_id)
{
    const QUuid small = savePreset(u"Small"_s);
    watch(u"/films/a"_s, small);
    showSheet();

    reach(m_sheet->findChild<PresetRow *>()->findChild<SymbolButton *>());

    EXPECT_EQ(choices(0), QStringList{u"—"_s});
    EXPECT_EQ(part<MenuPicker>(0)->currentText(), u"—"_s);
    EXPECT_EQ(QUuid(storedFolders().at(0)[u"presetID"_s].toString()), small);
}

TEST_F(WatchFolderSettingsTest, removing_a_folder_takes_away_its_row_and_no_other)
{
    watch(u"/films/a"_s);
    watch(u"/films/b"_s);
    watch(u"/films/c"_s);
    showSheet();

    reach(part<SymbolButton>(1));

    EXPECT_EQ(texts(), (QStringList{u"/films/a"_s, u"/films/c"_s}));
    ASSERT_EQ(storedFolders().size(), 2);
    EXPECT_EQ(storedFolders().at(1)[u"path"_s], u"/films/c"_s);
    reach(part<SymbolButton>(0));
    reach(part<SymbolButton>(0));
    EXPECT_TRUE(shows(u"No watched folders"_s));
}

TEST_F(WatchFolderSettingsTest, after_a_removal_by_key_the_focus_is_on_what_comes_next)
{
    watch(u"/films/a"_s);
    watch(u"/films/b"_s);
    showSheet();
    part<SymbolButton>(0)->setFocus(Qt::TabFocusReason);

    press(Qt::Key_Space);
    EXPECT_EQ(QApplication::focusWidget(), part<Switch>(0));
    part<SymbolButton>(0)->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);

    EXPECT_EQ(QApplication::focusWidget(), find<Button>(u"Add folder…"_s));
}

TEST_F(WatchFolderSettingsTest, a_long_path_is_cut_in_its_middle_within_the_row)
{
    const QString path = u"/films"_s + u"/and a folder deep below"_s.repeated(8);
    watch(path);
    showSheet();
    auto *label = part<ElidedLabel>(0);

    EXPECT_EQ(label->text(), path);
    EXPECT_LT(label->width(), label->sizeHint().width());
    EXPECT_LE(part<SymbolButton>(0)->geometry().right(), rows().first()->width());
    EXPECT_LT(label->geometry().right(), part<MenuPicker>(0)->geometry().left());
}

TEST_F(WatchFolderSettingsTest, without_an_engine_there_is_nothing_to_add_to)
{
    start();
    show(new QWidget);
    m_sheet = new SettingsSheet(context(), m_window.get());
    settle();

    EXPECT_FALSE(find<Button>(u"Add folder…"_s)->isEnabled());
    EXPECT_TRUE(shows(u"No watched folders"_s));
    EXPECT_TRUE(shows(u"No presets yet"_s));
}

TEST_F(PresetSettingsTest, an_empty_list_says_so)
{
    showSheet();

    EXPECT_TRUE(shows(u"No presets yet"_s));
}

TEST_F(PresetSettingsTest, presets_stand_in_the_order_of_the_store)
{
    savePreset(u"Old"_s);
    savePreset(u"New"_s);

    showSheet();

    EXPECT_EQ(texts(), (QStringList{u"New"_s, u"Old"_s}));
    EXPECT_FALSE(shows(u"No presets yet"_s));
}

TEST_F(PresetSettingsTest, a_preset_that_is_thrown_away_is_gone_from_the_store_and_its_file)
{
    savePreset(u"Keep"_s);
    savePreset(u"Drop"_s);
    showSheet();

    reach(part<SymbolButton>(0));

    EXPECT_EQ(texts(), QStringList{u"Keep"_s});
    ASSERT_EQ(m_presets->presets().size(), 1);
    const PresetStore stored(m_data.url({}));
    ASSERT_EQ(stored.presets().size(), 1);
    EXPECT_EQ(stored.presets().first().name, u"Keep"_s);
    reach(part<SymbolButton>(0));
    EXPECT_TRUE(shows(u"No presets yet"_s));
}

TEST_F(PresetSettingsTest, a_preset_that_is_saved_elsewhere_joins_the_list)
{
    showSheet();

    m_model->savePreset(u"Late"_s, oneMegabyte(), std::nullopt);
    settle();

    EXPECT_EQ(texts(), QStringList{u"Late"_s});
}

TEST_F(PresetSettingsTest, after_the_last_one_is_thrown_away_by_key_the_focus_is_on_done)
{
    savePreset(u"Only"_s);
    showSheet();
    part<SymbolButton>(0)->setFocus(Qt::TabFocusReason);

    press(Qt::Key_Space);

    EXPECT_EQ(QApplication::focusWidget(), find<Button>(u"Done"_s));
}
