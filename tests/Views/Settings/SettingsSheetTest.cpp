// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SettingsFixture.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/Switch.h"
#include "Views/Controls/TextLabel.h"

#include <QApplication>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

class SettingsSheetAtLarge : public SettingsFixture
{
protected:
    bool isInSight(const QWidget *widget) const
    {
        return widget->visibleRegion().boundingRect() == widget->rect();
    }

    // Full of things to walk over.
    void showFullSheet(AppLanguage language = AppLanguage::english)
    {
        const QUuid preset = savePreset(u"Small"_s);
        m_engine->add(QUrl(u"file:///films/camera/"_s), preset);
        showSheet(language);
        m_model->setOutputDirectoryPath(u"/films/out"_s);
        settle();
    }
};

// A wrapped text needs its lines, a line its width; a path may be cut.
bool isClipped(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const TextLabel *>(widget)) {
        return label->wordWrap() ? label->height() < label->heightForWidth(label->width())
                                 : label->width() < label->sizeHint().width();
    }
    const bool isButton = qobject_cast<const QAbstractButton *>(widget);
    return isButton && widget->width() < widget->sizeHint().width();
}

} // namespace

TEST_F(SettingsSheetAtLarge, done_asks_the_model_to_take_the_settings_away)
{
    showSheet();

    click(find<Button>(u"Done"_s));

    EXPECT_FALSE(m_model->showSettings());
}

TEST_F(SettingsSheetAtLarge, escape_takes_the_sheet_away)
{
    showSheet();

    press(Qt::Key_Escape);

    EXPECT_EQ(m_sheet, nullptr);
}

TEST_F(SettingsSheetAtLarge, sections_stand_in_their_order)
{
    showSheet();

    QList<int> heights;
    for (const QString &heading :
         {u"Language"_s, u"Output"_s, u"FFmpeg"_s, u"Watch folders"_s, u"Manage presets"_s}) {
        auto *label = find<TextLabel>(heading);
        ASSERT_NE(label, nullptr) << heading.toStdString();
        heights += label->mapTo(m_sheet.get(), QPoint()).y();
    }

    EXPECT_EQ(std::ranges::adjacent_find(heights, std::ranges::greater_equal()), heights.end());
}

TEST_F(SettingsSheetAtLarge, title_and_done_stay_in_sight_while_the_settings_scroll)
{
    showFullSheet();
    auto *title = find<TextLabel>(u"Settings"_s);
    auto *done = find<Button>(u"Done"_s);
    ASSERT_TRUE(title && done);
    EXPECT_TRUE(isInSight(title) && isInSight(done));
    auto *last = find<TextLabel>(u"Manage presets"_s);
    ASSERT_FALSE(isInSight(last)) << "there is nothing to scroll";

    scrollTo(last);

    EXPECT_TRUE(isInSight(last));
    EXPECT_TRUE(isInSight(title) && isInSight(done));
}

TEST_F(SettingsSheetAtLarge, tab_comes_by_every_control_in_reading_order_and_brings_it_into_sight)
{
    showFullSheet();
    QStringList names;

    for (QWidget *const first = QApplication::focusWidget();;) {
        QWidget *stop = QApplication::focusWidget();
        names += stop->accessibleName();
        EXPECT_TRUE(isInSight(stop)) << stop->accessibleName().toStdString();
        press(Qt::Key_Tab);
        if (QApplication::focusWidget() == first || names.size() > 50) {
            break;
        }
    }

    EXPECT_EQ(names,
              (QStringList{u"Language"_s, u"Play a sound when a job finishes"_s,
                           u"Simultaneous encodes"_s, u"Keep folder structure in output"_s,
                           u"Notify when a job finishes"_s, u"Output name template"_s,
                           u"Next to original"_s, u"Choose…"_s,
                           u"Prefer 2-pass exact mode when available"_s, u"/films/camera"_s,
                           u"Preset"_s, u"Remove"_s, u"Add folder…"_s, u"Remove"_s, u"Done"_s}));
    EXPECT_TRUE(isInSight(QApplication::focusWidget())) << "entered again from the end";
}

TEST_F(SettingsSheetAtLarge, a_row_that_came_later_has_its_place_in_the_walk)
{
    showSheet();
    m_dialogs.answer = {QUrl(u"file:///films/new/"_s)};
    reach(find<Button>(u"Add folder…"_s));
    find<Switch>(u"Prefer 2-pass exact mode when available"_s)->setFocus(Qt::TabFocusReason);

    press(Qt::Key_Tab);

    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"/films/new"_s);
}

TEST_F(SettingsSheetAtLarge, the_language_changes_every_text_at_once_and_is_kept)
{
    showFullSheet();
    const QStringList keys{u"settings.title"_s,
                           u"settings.language"_s,
                           u"settings.sound"_s,
                           u"batch.structure"_s,
                           u"settings.concurrency"_s,
                           u"notify.finish"_s,
                           u"batch.template"_s,
                           u"batch.template.help"_s,
                           u"settings.output"_s,
                           u"settings.outdir"_s,
                           u"settings.outdir.choose"_s,
                           u"settings.outdir.same"_s,
                           u"settings.ffmpeg"_s,
                           u"settings.ffmpeg.gpl"_s,
                           u"settings.exact.default"_s,
                           u"watch.title"_s,
                           u"watch.desc"_s,
                           u"watch.add"_s,
                           u"watch.preset"_s,
                           u"preset.manage"_s,
                           u"common.done"_s};

    pick(find<MenuPicker>(u"Language"_s), u"简体中文"_s);

    EXPECT_EQ(m_model->language(), AppLanguage::simplifiedChinese);
    EXPECT_EQ(store().text(u"mx.language"_s), u"zh-Hans"_s);
    for (const QString &key : keys) {
        EXPECT_TRUE(shows(L10n::t(key, AppLanguage::simplifiedChinese))) << key.toStdString();
        const QString english = L10n::t(key, AppLanguage::english);
        EXPECT_EQ(shows(english), key == u"settings.ffmpeg"_s) << key.toStdString();
    }
    pick(find<MenuPicker>(u"语言"_s), u"English"_s);
    EXPECT_EQ(store().text(u"mx.language"_s), u"en"_s);
    EXPECT_TRUE(shows(u"Manage presets"_s));
}

TEST_F(SettingsSheetAtLarge, nothing_is_clipped_in_the_least_window_in_either_language)
{
    installEncoders({u"libx264"_s, u"libx265"_s, u"prores_ks"_s});
    for (const AppLanguage language : allCases<AppLanguage>()) {
        showFullSheet(language);
        const QRect card = m_sheet->card()->geometry();
        EXPECT_TRUE(m_window->rect().contains(card));
        for (const QWidget *widget : m_sheet->findChildren<QWidget *>()) {
            if (!widget->isVisible()) {
                continue;
            }
            const QRect place(widget->mapTo(m_window.get(), QPoint()), widget->size());
            EXPECT_FALSE(isClipped(widget)) << widget->accessibleName().toStdString();
            EXPECT_GE(place.left(), card.left());
            EXPECT_LE(place.right(), card.right());
        }
    }
}
