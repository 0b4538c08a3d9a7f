// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShellFixture.h"

#include "Views/Controls/BadgeChip.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/PanelScroll.h"
#include "Views/Controls/Spinner.h"
#include "Views/Controls/TextField.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Queue/QueueView.h"
#include "Views/Shell/ActionArea.h"
#include "Views/Shell/ActionTabBar.h"
#include "Views/Shell/FileDetailHeader.h"
#include "Views/Shell/FileRow.h"
#include "Views/Shell/TopBar.h"
#include "Views/Shell/WorkspaceView.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

class WorkspaceViewTest : public ShellFixture
{
protected:
    TabButton *tabOf(ActionKind kind)
    {
        for (TabButton *tab : m_window->findChildren<TabButton *>()) {
            if (tab->kind() == kind) {
                return tab;
            }
        }
        return nullptr;
    }

    PanelScroll *panelRegion()
    {
        return only<ActionArea>()->findChild<PanelScroll *>({}, Qt::FindDirectChildrenOnly);
    }
    /// The chips that the header shows.
    QStringList chips()
    {
        QStringList texts;
        for (const BadgeChip *chip : only<FileDetailHeader>()->findChildren<BadgeChip *>()) {
            if (chip->isVisible()) {
                texts += chip->text();
            }
        }
        return texts;
    }
    bool showsQueue() { return only<QueueView>() != nullptr; }
};

TEST_F(WorkspaceViewTest, while_the_only_file_is_read_there_is_a_line_and_an_empty_list)
{
    holdProbes();
    const Gate gate(film(u"a.mp4"_s));
    open();

    m_model->addURLs({layReady(u"a.mp4"_s)});
    settle();

    ASSERT_TRUE(m_model->files().isEmpty());
    EXPECT_NE(find<TextLabel>(u"Reading file…"_s), nullptr);
    EXPECT_EQ(only<FileRow>(), nullptr);
    EXPECT_EQ(only<FileDetailHeader>(), nullptr);
    EXPECT_EQ(panelRegion()->widget(), nullptr);
    EXPECT_NE(find<Spinner>(u"Reading file…"_s), nullptr);
    gate.open();
    waitUntil([this] { return m_model->probingCount() == 0; });
}

TEST_F(WorkspaceViewTest, the_panel_and_the_header_come_with_the_file)
{
    open();

    take(u"a.mp4"_s);

    EXPECT_NE(panelRegion()->widget(), nullptr);
    EXPECT_NE(only<FileDetailHeader>(), nullptr);
    EXPECT_EQ(find<TextLabel>(u"Reading file…"_s), nullptr);
}

TEST_F(WorkspaceViewTest, all_eleven_tabs_fit_the_least_window_in_both_languages)
{
    for (const AppLanguage language : allCases<AppLanguage>()) {
        open({.language = language});
        take(u"a.mp4"_s);

        const auto tabs = only<ActionTabBar>()->findChildren<TabButton *>();
        ASSERT_EQ(tabs.size(), 11);
        for (const TabButton *tab : tabs) {
            EXPECT_TRUE(tab->isVisible());
            EXPECT_GE(tab->width(), tab->sizeHint().width()) << tab->text().toStdString();
            EXPECT_TRUE(only<ActionTabBar>()->rect().contains(tab->geometry()));
        }
        m_window.reset();
    }
}

TEST_F(WorkspaceViewTest, a_click_on_a_tab_sets_the_action_and_keeps_the_file)
{
    open();
    take(u"a.mp4"_s);
    take(u"b.mp4"_s);
    m_model->setSelectedFileID(m_model->files().last().id);
    settle();

    click(tabOf(ActionKind::split));

    EXPECT_EQ(m_model->action(), ActionKind::split);
    EXPECT_TRUE(tabOf(ActionKind::split)->isChecked());
    EXPECT_FALSE(tabOf(ActionKind::targetSize)->isChecked());
    EXPECT_EQ(m_model->selectedFileID(), m_model->files().last().id);
}

TEST_F(WorkspaceViewTest, the_arrow_keys_move_from_tab_to_tab)
{
    open();
    take(u"a.mp4"_s);
    tabOf(ActionKind::targetSize)->setFocus();

    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Left);

    EXPECT_EQ(m_model->action(), ActionKind::convert);
    EXPECT_TRUE(tabOf(ActionKind::convert)->hasFocus());
}

TEST_F(WorkspaceViewTest, another_action_has_a_new_panel_and_another_file_keeps_it)
{
    open();
    take(u"a.mp4"_s);
    take(u"b.mp4"_s);
    const QPointer<QWidget> first = panelRegion()->widget();

    m_model->setSelectedFileID(m_model->files().last().id);
    settle();
    const bool isKept = panelRegion()->widget() == first;
    click(tabOf(ActionKind::compress));

    EXPECT_TRUE(isKept);
    EXPECT_TRUE(first.isNull());
    EXPECT_NE(panelRegion()->widget(), nullptr);
}

TEST_F(WorkspaceViewTest, a_panel_goes_with_the_last_file)
{
    open();
    const VideoFile file = take(u"a.mp4"_s);
    const QPointer<QWidget> panel = panelRegion()->widget();

    m_model->removeFile(file.id);
    settle();

    EXPECT_TRUE(panel.isNull());
}

TEST_F(WorkspaceViewTest, the_header_tells_the_file_and_what_is_special_in_it)
{
    open();
    take(u"sea.mov"_s, {.videoCodec = u"hevc"_s, .isHDR = true, .hasAlpha = true});

    EXPECT_EQ(chips(), QStringList({u"HDR"_s, u"Alpha"_s}));
    EXPECT_TRUE(shows(u"1920×1080 · 30fps · HEVC · AAC · 1:23"_s));
}

TEST_F(WorkspaceViewTest, the_header_of_a_plain_file_has_no_chips)
{
    open();
    take(u"sea.mov"_s);

    EXPECT_EQ(chips(), QStringList());
}

TEST_F(WorkspaceViewTest, the_header_follows_the_selection)
{
    open();
    take(u"sea.mov"_s);
    take(u"sky.mov"_s, {.seconds = 5});

    m_model->setSelectedFileID(m_model->files().last().id);
    settle();

    EXPECT_TRUE(only<FileDetailHeader>()->findChild<ElidedLabel *>()->text() == u"sky.mov"_s);
    EXPECT_TRUE(shows(u"1920×1080 · 30fps · H264 · AAC · 0:05"_s));
}

TEST_F(WorkspaceViewTest, without_jobs_the_queue_button_alone_decides)
{
    open();
    take(u"a.mp4"_s);

    m_model->setShowQueue(true);
    settle();
    const bool isShown = showsQueue();
    m_model->setShowQueue(false);
    settle();

    EXPECT_TRUE(isShown);
    EXPECT_FALSE(showsQueue());
}

TEST_F(WorkspaceViewTest, one_job_brings_the_queue_up_whatever_the_button_says)
{
    open();
    const VideoFile file = take(u"a.mp4"_s);
    m_model->setShowQueue(false);

    const auto job = enqueue(file);
    settle();
    const bool isShown = showsQueue();
    waitFor(job, Job::Outcome::finished);
    m_model->clearFinished();
    settle();

    EXPECT_TRUE(isShown);
    EXPECT_FALSE(showsQueue());
}

TEST_F(WorkspaceViewTest, in_the_least_window_panel_and_queue_both_have_room)
{
    open();
    m_model->setShowQueue(true);
    take(u"a.mp4"_s);

    EXPECT_GE(only<QueueView>()->height(), 150);
    EXPECT_GE(panelRegion()->height(), 200);
    EXPECT_EQ(only<QueueView>()->width(), m_window->width());
}

TEST_F(WorkspaceViewTest, it_takes_files_that_are_dropped_anywhere_on_it)
{
    open();
    take(u"a.mp4"_s);

    EXPECT_TRUE(drop(only<WorkspaceView>(), {layReady(u"b.mp4"_s), layReady(u"c.mp4"_s)}));
    waitUntil([this] { return m_model->probingCount() == 0; });

    EXPECT_EQ(m_model->files().size(), 3);
}

TEST_F(WorkspaceViewTest, a_drop_of_nothing_that_it_knows_is_accepted_all_the_same)
{
    open();
    take(u"a.mp4"_s);

    EXPECT_TRUE(drop(only<WorkspaceView>(), {QUrl(u"https://example.org/film.mp4"_s)}));

    EXPECT_EQ(m_model->probingCount(), 0);
    EXPECT_EQ(m_model->files().size(), 1);
}

TEST_F(WorkspaceViewTest, files_dropped_on_a_text_field_go_to_the_workspace)
{
    open();
    take(u"a.mp4"_s);
    TextField field(only<WorkspaceView>());
    field.show();
    QMimeData data;
    data.setUrls({layReady(u"b.mp4"_s)});
    data.setText(u"b.mp4"_s);

    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&field, &enter);
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&field, &drop);
    waitUntil([this] { return m_model->probingCount() == 0; });

    EXPECT_TRUE(field.text().isEmpty());
    EXPECT_EQ(m_model->files().size(), 2);
}

} // namespace
