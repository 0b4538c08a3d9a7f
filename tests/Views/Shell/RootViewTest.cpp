// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShellFixture.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/MessageSheet.h"
#include "Views/Controls/PanelScroll.h"
#include "Views/Settings/SettingsSheet.h"
#include "Views/Shell/LandingView.h"
#include "Views/Shell/WorkspaceView.h"

#include <QApplication>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

class RootViewTest : public ShellFixture
{
};

TEST_F(RootViewTest, the_window_is_at_least_920_by_640)
{
    open({}, {100, 100});

    EXPECT_EQ(m_window->minimumSize(), QSize(920, 640));
}

TEST_F(RootViewTest, it_opens_on_the_landing_page_with_the_focus_on_nothing)
{
    open();

    EXPECT_NE(only<LandingView>(), nullptr);
    EXPECT_EQ(only<WorkspaceView>(), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), m_window.get());
}

TEST_F(RootViewTest, the_workspace_comes_while_the_first_file_is_still_read)
{
    holdProbes();
    const Gate gate(film(u"a.mp4"_s));
    open();

    m_model->addURLs({layReady(u"a.mp4"_s)});
    settle();

    ASSERT_EQ(m_model->probingCount(), 1);
    EXPECT_TRUE(m_model->files().isEmpty());
    EXPECT_NE(only<WorkspaceView>(), nullptr);
    EXPECT_EQ(only<LandingView>(), nullptr);
    gate.open();
    waitUntil([this] { return m_model->probingCount() == 0; });
}

TEST_F(RootViewTest, removing_the_last_file_returns_to_the_landing_page_even_with_finished_jobs)
{
    open();
    const VideoFile file = take(u"a.mp4"_s);
    waitFor(enqueue(file), Job::Outcome::finished);

    m_model->removeFile(file.id);
    settle();

    EXPECT_EQ(m_model->jobs().size(), 1);
    EXPECT_NE(only<LandingView>(), nullptr);
    EXPECT_EQ(only<WorkspaceView>(), nullptr);
}

TEST_F(RootViewTest, a_file_that_cannot_be_read_brings_the_landing_page_back_and_an_alert)
{
    open();
    const QUrl url = m_films.url(u"a.mp4"_s);
    m_films.write(u"a.mp4"_s, "film");
    m_films.write(u"a.mp4.json"_s, "no answer");

    takeIn(url);
    settle();

    EXPECT_NE(only<LandingView>(), nullptr);
    ASSERT_NE(only<MessageSheet>(), nullptr);
    EXPECT_EQ(only<MessageSheet>()->accessibleName(), u"Morvix"_s);
    EXPECT_TRUE(shows(u"Could not read this file. Is it a valid video?"_s));
}

TEST_F(RootViewTest, dismissing_the_alert_forgets_the_error)
{
    open();
    m_model->setLastError(u"Gone wrong."_s);
    settle();

    click(find<Button>(u"Close"_s));

    EXPECT_FALSE(m_model->lastError());
    EXPECT_EQ(only<MessageSheet>(), nullptr);
}

TEST_F(RootViewTest, escape_dismisses_the_alert_and_the_next_error_shows_again)
{
    open();
    m_model->setLastError(u"Gone wrong."_s);
    settle();
    press(Qt::Key_Escape);
    const bool isForgotten = !m_model->lastError();

    m_model->setLastError(u"Gone wrong."_s);
    settle();

    EXPECT_TRUE(isForgotten);
    EXPECT_TRUE(shows(u"Gone wrong."_s));
}

TEST_F(RootViewTest, an_error_that_takes_anothers_place_is_shown_in_one_alert)
{
    open();
    m_model->setLastError(u"First."_s);
    settle();

    m_model->setLastError(u"Second."_s);
    settle();

    EXPECT_NE(only<MessageSheet>(), nullptr);
    EXPECT_TRUE(shows(u"Second."_s));
    EXPECT_FALSE(shows(u"First."_s));
    EXPECT_EQ(m_model->lastError(), u"Second."_s);
}

TEST_F(RootViewTest, an_error_of_many_lines_leaves_the_button_in_the_window)
{
    open();
    const QString line =
        u"Error while decoding stream #0:0: Invalid data found when processing\n"_s;

    m_model->setLastError(line.repeated(60));
    settle();

    auto *button = find<Button>(u"Close"_s);
    ASSERT_NE(button, nullptr);
    const QRect place(button->mapTo(m_window.get(), QPoint()), button->size());
    EXPECT_TRUE(m_window->rect().contains(place)) << place.bottom();
}

TEST_F(RootViewTest, an_error_longer_than_the_window_is_scrolled_to_its_end_by_the_keys)
{
    open();
    const QString line =
        u"Error while decoding stream #0:0: Invalid data found when processing\n"_s;
    m_model->setLastError(line.repeated(60) + u"Conversion failed!"_s);
    settle();
    auto *bar = only<MessageSheet>()->findChild<PanelScroll *>()->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);

    for (int page = 0; page < 20; ++page) {
        press(Qt::Key_PageDown);
    }

    EXPECT_EQ(bar->value(), bar->maximum());
    press(Qt::Key_PageUp);
    EXPECT_LT(bar->value(), bar->maximum());
}

TEST_F(RootViewTest, an_error_that_fits_is_not_scrolled)
{
    open();
    m_model->setLastError(u"Gone wrong. "_s.repeated(20));
    settle();

    auto *scroll = only<MessageSheet>()->findChild<PanelScroll *>();

    EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0);
    EXPECT_GT(scroll->height(), 60);
}

TEST_F(RootViewTest, an_error_that_was_taken_back_takes_its_alert_away)
{
    open();
    m_model->setLastError(u"First."_s);
    settle();

    m_model->setLastError(std::nullopt);
    settle();

    EXPECT_EQ(only<MessageSheet>(), nullptr);
}

TEST_F(RootViewTest, the_settings_lie_over_either_page_until_they_are_dismissed)
{
    open();
    m_model->setShowSettings(true);
    settle();
    EXPECT_NE(only<SettingsSheet>(), nullptr);

    only<SettingsSheet>()->dismiss();
    settle();
    EXPECT_FALSE(m_model->showSettings());
    EXPECT_EQ(only<SettingsSheet>(), nullptr);

    take(u"a.mp4"_s);
    m_model->setShowSettings(true);
    settle();
    EXPECT_NE(only<SettingsSheet>(), nullptr);
}

TEST_F(RootViewTest, the_settings_go_when_the_model_hides_them)
{
    open();
    m_model->setShowSettings(true);
    settle();

    m_model->setShowSettings(false);
    settle();

    EXPECT_EQ(only<SettingsSheet>(), nullptr);
}

TEST_F(RootViewTest, settings_wait_until_the_alert_is_gone)
{
    open();
    m_model->setLastError(u"First."_s);
    m_model->setShowSettings(true);
    settle();
    const bool waited = !only<SettingsSheet>() && only<MessageSheet>();

    press(Qt::Key_Escape);

    EXPECT_TRUE(waited);
    EXPECT_NE(only<SettingsSheet>(), nullptr);
    EXPECT_TRUE(m_model->showSettings());
}

} // namespace
