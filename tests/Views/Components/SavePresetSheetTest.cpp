// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/SavePresetSheet.h"

#include "ViewFixture.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/TextField.h"

#include <QApplication>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

class SavePresetSheetTest : public ViewFixture
{
protected:
    SavePresetSheetTest()
    {
        start({.collections = {m_presets, nullptr}});
        auto *window = new QWidget;
        m_behind = new Button;
        m_behind->setParent(window);
        m_behind->setWords(u"Behind"_s);
        show(window, {600, 400});
        m_behind->setFocus();
    }

    void openSheet(const PresetSpec &spec = CompressParams())
    {
        m_sheet = new SavePresetSheet(context(), m_window.get(), spec);
        settle();
    }

    TextField *name() { return find<TextField>(u"Preset name"_s); }
    Button *save() { return find<Button>(u"Save"_s); }
    const QList<UserPreset> &saved() const { return m_presets->presets(); }

    const TempFolder m_folder;
    const std::shared_ptr<PresetStore> m_presets =
        std::make_shared<PresetStore>(QUrl::fromLocalFile(m_folder.path()));
    Button *m_behind;
    QPointer<SavePresetSheet> m_sheet;
};

} // namespace

TEST_F(SavePresetSheetTest, the_name_can_be_typed_at_once)
{
    openSheet();

    EXPECT_TRUE(shows(u"Save as Preset…"_s));
    EXPECT_EQ(QApplication::focusWidget(), name());
    EXPECT_EQ(name()->placeholderText(), u"Preset name"_s);
}

TEST_F(SavePresetSheetTest, an_empty_name_or_one_of_blanks_cannot_be_saved)
{
    openSheet();
    EXPECT_FALSE(save()->isEnabled());

    for (const QString &text : {u"   "_s, u" \t "_s}) {
        name()->setText(text);
        settle();
        EXPECT_FALSE(save()->isEnabled());
        press(Qt::Key_Return);
    }

    EXPECT_TRUE(m_sheet);
    EXPECT_TRUE(saved().isEmpty());
}

TEST_F(SavePresetSheetTest, saving_keeps_the_parameters_under_the_trimmed_name)
{
    CompressParams params;
    params.muted = true;
    openSheet(params);

    type(name(), u"  For the web "_s);
    click(save());

    ASSERT_EQ(saved().size(), 1);
    EXPECT_EQ(saved().first().name, u"For the web"_s);
    EXPECT_EQ(saved().first().spec, PresetSpec(params));
    EXPECT_EQ(saved().first().outputDirectoryPath, std::nullopt);
    EXPECT_FALSE(m_sheet);
}

TEST_F(SavePresetSheetTest, return_saves)
{
    openSheet();

    type(name(), u"Quick"_s);
    press(Qt::Key_Return);

    ASSERT_EQ(saved().size(), 1);
    EXPECT_FALSE(m_sheet);
    EXPECT_EQ(QApplication::focusWidget(), m_behind);
}

TEST_F(SavePresetSheetTest, the_output_folder_in_force_when_saving_goes_along)
{
    openSheet();
    m_model->setOutputDirectoryPath(u"/films/out"_s);

    type(name(), u"Elsewhere"_s);
    click(save());

    ASSERT_EQ(saved().size(), 1);
    EXPECT_EQ(saved().first().outputDirectoryPath, u"/films/out"_s);
}

TEST_F(SavePresetSheetTest, cancel_and_escape_save_nothing)
{
    openSheet();
    type(name(), u"Never"_s);
    click(find<Button>(u"Cancel"_s));
    EXPECT_FALSE(m_sheet);

    openSheet();
    type(name(), u"Never"_s);
    press(Qt::Key_Escape);
    EXPECT_FALSE(m_sheet);

    EXPECT_TRUE(saved().isEmpty());
}

TEST_F(SavePresetSheetTest, tab_stays_within_the_sheet)
{
    openSheet();
    type(name(), u"Round"_s);

    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), find<Button>(u"Cancel"_s));
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), save());
    press(Qt::Key_Tab);

    EXPECT_EQ(QApplication::focusWidget(), name());
}

TEST_F(SavePresetSheetTest, the_words_follow_the_language_and_the_typed_name_stays)
{
    openSheet();
    type(name(), u"Half"_s);

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    settle();

    EXPECT_EQ(m_sheet->accessibleName(), u"存为预设…"_s);
    EXPECT_TRUE(shows(u"存为预设…"_s));
    const auto *field = find<TextField>(u"预设名称"_s);
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->placeholderText(), u"预设名称"_s);
    EXPECT_EQ(field->text(), u"Half"_s);
    EXPECT_NE(find<Button>(u"取消"_s), nullptr);
    EXPECT_NE(find<Button>(u"保存"_s), nullptr);
}

TEST_F(SavePresetSheetTest, taken_away_twice_it_goes_once)
{
    openSheet();
    int dismissals = 0;
    QObject::connect(m_sheet, &Sheet::dismissed, m_window.get(), [&dismissals] { ++dismissals; });

    m_sheet->dismiss();
    m_sheet->dismiss();
    settle();

    EXPECT_EQ(dismissals, 1);
    EXPECT_FALSE(m_sheet);
    EXPECT_EQ(QApplication::focusWidget(), m_behind);
}
