// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShellFixture.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/RowList.h"
#include "Views/Controls/Spinner.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Controls/SymbolView.h"
#include "Views/Shell/FileRow.h"
#include "Views/Shell/FileSidebar.h"
#include "Views/Shell/StatusDot.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QScrollBar>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

class FileSidebarTest : public ShellFixture
{
protected:
    RowList *list() { return only<FileSidebar>()->findChild<RowList *>(); }
    FileRow *row(qsizetype index) { return static_cast<FileRow *>(list()->rowAt(index)); }
    QStringList linesOf(qsizetype index)
    {
        QStringList lines;
        for (const ElidedLabel *label : row(index)->findChildren<ElidedLabel *>()) {
            lines += label->text();
        }
        return lines;
    }

    /// "turning", "done", "failed" or nothing.
    QString dotOf(qsizetype index)
    {
        auto *dot = row(index)->findChild<StatusDot *>();
        const auto *symbol = dot->findChild<SymbolView *>();
        const QImage shown = symbol->isVisible() ? dot->grab().toImage() : QImage();
        QString word = dot->findChild<Spinner *>()->isVisible() ? u"turning"_s : QString();
        if (!shown.isNull()) {
            const QColor middle = shown.pixelColor(shown.width() / 2, 1);
            word += middle.green() > middle.red() ? u"done"_s : u"failed"_s;
        }
        return word;
    }

    void takeMany(int count)
    {
        QList<QUrl> urls;
        for (int i = 0; i < count; ++i) {
            urls += layReady(u"film%1.mp4"_s.arg(i, 3, 10, QChar(u'0')));
        }
        m_model->addURLs(urls);
        waitUntil([this] { return m_model->probingCount() == 0; });
        settle();
    }

    qsizetype selectedIndex() const
    {
        const auto &files = m_model->files();
        for (qsizetype i = 0; i < files.size(); ++i) {
            if (files.at(i).id == m_model->selectedFileID()) {
                return i;
            }
        }
        return -1;
    }

    QMenu *openMenu(qsizetype index)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {20, 20},
                                row(index)->mapToGlobal(QPoint(20, 20)));
        QCoreApplication::sendEvent(row(index), &event);
        return row(index)->findChild<QMenu *>();
    }
};

TEST_F(FileSidebarTest, it_is_240_wide_and_shows_a_row_for_each_file_in_order)
{
    open();
    take(u"b.mp4"_s);
    take(u"a.mp4"_s, {.bytes = 45'000'000});

    EXPECT_EQ(only<FileSidebar>()->width(), 240);
    EXPECT_EQ(list()->count(), 2);
    EXPECT_EQ(linesOf(0).first(), u"b.mp4"_s);
    EXPECT_EQ(linesOf(1), QStringList({u"a.mp4"_s, u"1:23 · 45 MB · 1920×1080 H264"_s, u""_s}));
}

TEST_F(FileSidebarTest, the_details_of_a_file_without_picture_end_after_its_size)
{
    open();
    take(u"song.m4a"_s, {.bytes = 3'000'000, .width = 0, .videoCodec = {}});

    EXPECT_EQ(linesOf(0).at(1), u"1:23 · 3 MB"_s);
}

TEST_F(FileSidebarTest, an_estimate_above_nothing_has_a_line)
{
    open();
    take(u"selected.mp4"_s);
    const QUuid id = take(u"a.mp4"_s).id;

    m_model->setFileEstimate(id, 24'300'000);
    settle();
    const QString shown = linesOf(1).last();
    m_model->setFileEstimate(id, 0);
    settle();

    EXPECT_EQ(shown, u"→ 24.3 MB"_s);
    EXPECT_EQ(linesOf(1).last(), QString());
}

TEST_F(FileSidebarTest, a_name_that_looks_like_markup_is_told_as_it_stands)
{
    open();
    take(u"<b>a film whose name is far too long for its place<b>.mp4"_s);
    auto *name = row(0)->findChild<ElidedLabel *>();

    QHelpEvent event(QEvent::ToolTip, {5, 5}, name->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(name, &event);

    EXPECT_TRUE(QToolTip::text().contains(u"&lt;b&gt;.mp4"_s)) << QToolTip::text().toStdString();
    QToolTip::hideText();
}

TEST_F(FileSidebarTest, the_menu_key_without_a_selection_leaves_the_list_where_it_is)
{
    open();
    takeMany(30);
    list()->verticalScrollBar()->setValue(500);
    m_model->setSelectedFileID(std::nullopt);
    settle();

    QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5},
                            only<FileSidebar>()->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(only<FileSidebar>(), &event);

    EXPECT_EQ(list()->verticalScrollBar()->value(), 500);
}

TEST_F(FileSidebarTest, a_click_selects_the_file)
{
    open();
    take(u"a.mp4"_s);
    take(u"b.mp4"_s);

    click(row(1), {30, 40});

    EXPECT_EQ(selectedIndex(), 1);
    EXPECT_TRUE(row(1)->isSelected());
    EXPECT_FALSE(row(0)->isSelected());
}

TEST_F(FileSidebarTest, the_small_button_removes_its_file)
{
    open();
    take(u"a.mp4"_s);
    take(u"b.mp4"_s);

    click(row(1)->findChild<SymbolButton *>());

    ASSERT_EQ(m_model->files().size(), 1);
    EXPECT_EQ(linesOf(0).first(), u"a.mp4"_s);
    EXPECT_EQ(row(1), nullptr);
}

TEST_F(FileSidebarTest, the_context_menu_removes_and_reveals)
{
    open();
    take(u"a.mp4"_s);
    take(u"b.mp4"_s);
    QMenu *menu = openMenu(1);
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 2);

    menu->actions().at(1)->trigger();
    const QString remove = menu->actions().at(0)->text();
    const QString reveal = menu->actions().at(1)->text();
    menu->actions().at(0)->trigger();
    menu->close();
    settle();

    EXPECT_EQ(remove, u"Remove"_s);
    EXPECT_EQ(reveal, u"Show in Finder"_s);
    EXPECT_EQ(m_desktopServices.calls, QStringList(u"reveal b.mp4"_s));
    EXPECT_EQ(m_model->files().size(), 1);
}

TEST_F(FileSidebarTest, browse_opens_the_dialog_of_the_drop_zone)
{
    open();
    take(u"a.mp4"_s);
    m_dialogs.answer = {layReady(u"b.mp4"_s)};

    click(only<FileSidebar>()->findChild<Button *>());
    waitUntil([this] { return m_model->probingCount() == 0; });

    EXPECT_EQ(m_dialogs.opened, QStringList(u"any audioVisual"_s));
    EXPECT_EQ(m_model->files().size(), 2);
}

TEST_F(FileSidebarTest, the_dot_follows_the_job_while_it_runs)
{
    open();
    const VideoFile file = take(u"a.mp4"_s, {.seconds = 10});
    const Gate gate(file);
    const auto job = enqueue(file);
    waitForProgress(job, 0.25);
    settle();
    const QString running = dotOf(0);

    gate.open();
    waitFor(job, Job::Outcome::finished);
    settle();

    EXPECT_EQ(running, u"turning"_s);
    EXPECT_EQ(dotOf(0), u"done"_s);
}

TEST_F(FileSidebarTest, each_outcome_has_its_dot)
{
    open();
    const VideoFile file = take(u"a.mp4"_s);
    const auto job = enqueue(file);
    waitFor(job, Job::Outcome::finished);
    const QList<std::pair<Job::State, QString>> dots{
        {Job::Analyzing(), u"turning"_s}, {Job::Running(), u"turning"_s},
        {Job::Finished(), u"done"_s},     {Job::Failed(), u"failed"_s},
        {Job::Queued(), QString()},       {Job::Cancelled(), QString()}};

    for (const auto &[state, dot] : dots) {
        job->setState(state);
        settle();

        EXPECT_EQ(dotOf(0), dot);
    }
}

TEST_F(FileSidebarTest, of_two_jobs_the_later_one_decides_even_when_the_earlier_failed)
{
    open();
    const VideoFile file = take(u"a.mp4"_s);
    const auto earlier = enqueue(file);
    const auto later = enqueue(file);
    waitForAllToEnd();

    earlier->setState(Job::Failed());
    settle();
    const QString afterEarlier = dotOf(0);
    later->setState(Job::Failed());
    earlier->setState(Job::Finished());
    settle();

    EXPECT_EQ(afterEarlier, u"done"_s);
    EXPECT_EQ(dotOf(0), u"failed"_s);
}

TEST_F(FileSidebarTest, the_job_of_another_file_says_nothing)
{
    open();
    take(u"a.mp4"_s);
    const VideoFile other = take(u"b.mp4"_s);

    waitFor(enqueue(other), Job::Outcome::finished);
    settle();

    EXPECT_EQ(dotOf(0), QString());
    EXPECT_EQ(dotOf(1), u"done"_s);
}

TEST_F(FileSidebarTest, arrow_keys_home_end_and_pages_move_the_selection_and_keep_it_in_sight)
{
    open();
    takeMany(40);
    only<FileSidebar>()->setFocus(Qt::TabFocusReason);

    press(Qt::Key_Down);
    const qsizetype afterDown = selectedIndex();
    press(Qt::Key_PageDown);
    const qsizetype afterPage = selectedIndex();
    press(Qt::Key_End);
    const qsizetype afterEnd = selectedIndex();
    const bool endIsInSight = row(39) != nullptr;
    press(Qt::Key_Up);
    const qsizetype afterUp = selectedIndex();
    press(Qt::Key_Home);
    press(Qt::Key_Up);

    EXPECT_EQ(afterDown, 1);
    EXPECT_GT(afterPage, 3);
    EXPECT_EQ(afterEnd, 39);
    EXPECT_TRUE(endIsInSight);
    EXPECT_EQ(afterUp, 38);
    EXPECT_EQ(selectedIndex(), 0);
    EXPECT_NE(row(0), nullptr);
}

TEST_F(FileSidebarTest, the_selected_row_shows_the_focus_only_for_those_who_use_the_keyboard)
{
    open();
    takeMany(3);

    click(row(1), {30, 40});
    const bool ringedByClick = row(1)->isRinged();
    press(Qt::Key_Down);
    const bool ringedByKey = row(2)->isRinged();
    press(Qt::Key_Tab);

    EXPECT_FALSE(ringedByClick);
    EXPECT_TRUE(ringedByKey);
    EXPECT_FALSE(row(2)->isRinged());
}

TEST_F(FileSidebarTest, the_menu_key_opens_the_menu_of_the_selected_file)
{
    open();
    takeMany(3);
    const QList<VideoFile> files = m_model->files();
    m_model->setSelectedFileID(files.at(1).id);
    settle();
    only<FileSidebar>()->setFocus(Qt::TabFocusReason);

    QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5},
                            only<FileSidebar>()->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(only<FileSidebar>(), &event);
    auto *menu = row(1)->findChild<QMenu *>();

    ASSERT_NE(menu, nullptr);
    menu->actions().first()->trigger();
    menu->close();
    EXPECT_EQ(m_model->files(), QList<VideoFile>({files.first(), files.last()}));
}

TEST_F(FileSidebarTest, delete_removes_the_selected_file_and_selects_its_neighbour)
{
    open();
    takeMany(3);
    const QList<VideoFile> files = m_model->files();
    m_model->setSelectedFileID(files.at(1).id);
    only<FileSidebar>()->setFocus(Qt::TabFocusReason);

    press(Qt::Key_Delete);
    const auto afterOne = m_model->selectedFile();
    press(Qt::Key_Delete);
    const auto afterTwo = m_model->selectedFile();
    press(Qt::Key_Delete);

    EXPECT_EQ(afterOne, files.at(2));
    EXPECT_EQ(afterTwo, files.at(0));
    EXPECT_TRUE(m_model->files().isEmpty());
}

TEST_F(FileSidebarTest, it_has_the_name_of_the_selected_file_for_those_who_hear_it)
{
    open();
    take(u"a.mp4"_s);
    take(u"b.mp4"_s);
    only<FileSidebar>()->setFocus(Qt::TabFocusReason);

    press(Qt::Key_Down);

    EXPECT_EQ(only<FileSidebar>()->accessibleName(), u"b.mp4"_s);
}

TEST_F(FileSidebarTest, files_that_come_in_leave_the_scroll_position_alone)
{
    open();
    takeMany(30);
    list()->verticalScrollBar()->setValue(500);

    take(u"late.mp4"_s);
    m_model->setFileEstimate(m_model->files().at(8).id, 1'000'000);
    settle();

    EXPECT_EQ(list()->verticalScrollBar()->value(), 500);
    EXPECT_EQ(list()->count(), 31);
}

TEST_F(FileSidebarTest, rows_exist_for_what_is_in_sight_only)
{
    open();
    takeMany(60);

    for (int value = 0; value < list()->verticalScrollBar()->maximum(); value += 97) {
        list()->verticalScrollBar()->setValue(value);
        settle();
    }

    EXPECT_LT(list()->rowsMade(), 16);
    EXPECT_EQ(row(59)->file(), m_model->files().last());
}

TEST_F(FileSidebarTest, scrolling_right_after_files_went_shows_none_of_them)
{
    open();
    takeMany(30);

    while (m_model->files().size() > 2) {
        m_model->removeFile(m_model->files().last().id);
    }
    list()->verticalScrollBar()->setValue(list()->verticalScrollBar()->maximum());
    settle();

    EXPECT_EQ(list()->count(), 2);
    EXPECT_EQ(list()->verticalScrollBar()->value(), 0);
}

} // namespace
