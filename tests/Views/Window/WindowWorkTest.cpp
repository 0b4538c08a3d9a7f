// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Window/WindowFixture.h"

#include "Scenes/LayoutCheck.h"
#include "Views/Components/CompareArea.h"
#include "Views/Controls/Button.h"
#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/MessageSheet.h"
#include "Views/Controls/ProgressBar.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/Controls/Spinner.h"
#include "Views/Controls/TextField.h"
#include "Views/Panels/TargetSizePanel.h"
#include "Views/Queue/QueueView.h"
#include "Views/Settings/SettingsSheet.h"
#include "Views/Shell/DropZone.h"
#include "Views/Shell/FileRow.h"
#include "Views/Shell/LandingView.h"
#include "Views/Shell/WorkspaceView.h"
#include "support/EventLoop.h"

#include <QAbstractItemView>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>
#include <QWindow>

#include <gmock/gmock.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using testing::Each;
using testing::ElementsAre;

using Outcome = Job::Outcome;

namespace {

constexpr qint64 limitBytes = 200'000;
// Long enough to be changed, measured and cancelled while it is at work.
constexpr double longSeconds = 60;

class WindowWorkTest : public WindowFixture
{
protected:
    void expectUnderTheLimit(const std::shared_ptr<Job> &job)
    {
        const Job::Finished result = resultOf(job);
        ASSERT_EQ(result.outputURLs.size(), 1);
        const QFileInfo output(result.outputURLs.first().toLocalFile());
        EXPECT_GT(output.size(), 0);
        EXPECT_LE(output.size(), limitBytes);
        EXPECT_EQ(output.size(), result.outputBytes);
    }

    /// Nothing that a person would stumble over, at that size.
    void expectGoodLayout(QSize size)
    {
        m_window->resize(size);
        settle();
        EXPECT_EQ(LayoutCheck::clippedTexts(m_window.get()), QStringList());
        EXPECT_EQ(LayoutCheck::overlaps(m_window.get()), QStringList());
    }

    void pickLanguage(int index)
    {
        auto *picker = only<MenuPicker>();
        ASSERT_NE(picker, nullptr);
        click(picker);
        QWidget *rows = picker->view()->viewport();
        QWindow *list = rows->window()->windowHandle();
        const QPoint item = rows->mapTo(
            rows->window(), picker->view()->visualRect(picker->model()->index(index, 0)).center());
        // The list takes no click before the pointer has moved, or opening it would be one.
        QTest::mouseMove(list, item);
        QTest::mouseClick(list, Qt::LeftButton, {}, item);
        settle();
    }

    void removeByTheCross(const QString &fileName)
    {
        for (FileRow *row : m_window->findChildren<FileRow *>()) {
            if (row->isVisible() && row->file().url.fileName() == fileName) {
                click(row->findChild<QAbstractButton *>());
                return;
            }
        }
        FAIL() << "no row of " << fileName.toStdString();
    }

    /// A job that fits as it is: the workers run dry as soon as it is copied.
    std::shared_ptr<Job> copyBirthday()
    {
        dropAndRead({makeClip(u"Birthday.mp4"_s)});
        reachButton(u"25 MB, Gmail"_s);
        reachButton(u"Add to Queue"_s);
        const std::shared_ptr<Job> job = lastJob();
        waitFor(job, Outcome::finished);
        settle();
        return job;
    }
};

TEST_F(WindowWorkTest, a_film_dropped_on_the_landing_page_is_read_and_then_shown_in_its_panel)
{
    const QUrl clip = makeClip(u"Birthday.mp4"_s);
    holdRealProbes();
    const Gate gate(film(u"Birthday.mp4"_s));
    open();

    ASSERT_TRUE(dropOn(only<DropZone>(), {clip}));
    const bool isRead = shows(u"Reading file…"_s) && find<Spinner>(u"Reading file…"_s);
    EXPECT_NE(only<WorkspaceView>(), nullptr);
    EXPECT_EQ(only<TargetSizePanel>(), nullptr);
    gate.open();
    waitUntilRead();

    EXPECT_TRUE(isRead);
    EXPECT_FALSE(shows(u"Reading file…"_s));
    EXPECT_NE(only<TargetSizePanel>(), nullptr);
    EXPECT_TRUE(shows(u"320×180 · 25fps · H264 · AAC · 0:02"_s));
}

TEST_F(WindowWorkTest, a_small_target_is_warned_of_or_promised_as_it_is_typed)
{
    open();
    dropAndRead({makeClip(u"Birthday.mp4"_s)});

    typeTarget(u"0.005"_s);
    const QString warning = textWith(u"Target is unreachable"_s);
    const bool isBarred = !find<Button>(u"Add to Queue"_s)->isEnabled();
    typeTarget(u"0.2"_s);

    EXPECT_FALSE(warning.isEmpty());
    EXPECT_TRUE(isBarred);
    EXPECT_TRUE(textWith(u"Target is unreachable"_s).isEmpty());
    EXPECT_TRUE(textWith(u"guaranteed under"_s).endsWith(u"guaranteed under 0.2 MB"_s));
    EXPECT_TRUE(find<Button>(u"Add to Queue"_s)->isEnabled());
    EXPECT_TRUE(textWith(u"→ "_s).startsWith(u"→ "_s)) << "the list of files tells it too";
}

TEST_F(WindowWorkTest, a_film_is_brought_under_a_typed_limit_before_the_persons_eyes)
{
    open();
    dropAndRead({makeClip(u"Birthday.mp4"_s, 20)});
    typeTarget(u"1"_s);
    reachButton(u"Add to Queue"_s);
    const std::shared_ptr<Job> job = lastJob();

    waitUntilUnderWay(job);
    const QRegularExpression percent(u"^[0-9]{1,2}%$"_s);
    EXPECT_NE(only<QueueView>(), nullptr);
    EXPECT_NE(only<ProgressBar>(), nullptr);
    EXPECT_EQ(visibleTexts().filter(percent).size(), 1);
    waitFor(job, Outcome::finished);
    settle();

    const Job::Finished result = resultOf(job);
    EXPECT_EQ(result.outputURLs, QList<QUrl>{m_films.url(u"Birthday-1MB.mp4"_s)});
    EXPECT_LE(QFileInfo(m_films.path(u"Birthday-1MB.mp4"_s)).size(), 1'000'000);
    EXPECT_FALSE(textWith(u"% smaller)"_s).isEmpty());
    EXPECT_EQ(only<ProgressBar>(), nullptr);
    EXPECT_EQ(m_desktop->sounds, 1);
}

TEST_F(WindowWorkTest, a_film_that_fits_is_copied_and_its_row_hands_the_result_to_the_desktop)
{
    open();
    copyBirthday();
    EXPECT_TRUE(shows(u"Already under target · copied without re-encoding"_s));

    reachButton(u"Show in Finder Birthday.mp4"_s);
    choose(u"Open… Birthday.mp4"_s, u"Open"_s);
    choose(u"Open… Birthday.mp4"_s, u"Copy path"_s);
    choose(u"Open… Birthday.mp4"_s, u"Share…"_s);

    EXPECT_THAT(m_desktopServices.calls,
                ElementsAre(u"reveal Birthday-25MB.mp4"_s, u"open Birthday-25MB.mp4"_s,
                            u"copy Birthday-25MB.mp4"_s, u"share Birthday-25MB.mp4"_s));
}

TEST_F(WindowWorkTest, an_original_goes_to_the_trash_only_when_the_question_is_answered)
{
    open();
    const std::shared_ptr<Job> job = copyBirthday();

    choose(u"Open… Birthday.mp4"_s, u"Move original to Trash"_s);
    ASSERT_TRUE(shows(u"Move the original file to Trash?"_s));
    click(find<Button>(u"Cancel"_s));
    const QStringList callsOfRefusal = m_desktopServices.calls;
    choose(u"Open… Birthday.mp4"_s, u"Move original to Trash"_s);
    click(find<Button>(u"Move original to Trash"_s));

    EXPECT_EQ(callsOfRefusal, QStringList());
    EXPECT_EQ(m_desktopServices.calls, QStringList{u"trash Birthday.mp4"_s});
    EXPECT_EQ(m_model->jobs(), AppModel::JobList{job});
    EXPECT_EQ(only<MessageSheet>(), nullptr);
}

TEST_F(WindowWorkTest, a_quality_preview_is_made_and_its_divider_follows_the_pointer)
{
    open();
    dropAndRead({makeClip(u"Birthday.mp4"_s, 3)});
    auto *position = find<TextField>(u"Sample position (sec)"_s);
    reach(position);
    type(position, u"1"_s);
    reach(find<Button>(u"Quality Preview"_s));
    EXPECT_TRUE(shows(u"Generating preview…"_s));
    EXPECT_FALSE(find<Button>(u"Quality Preview"_s)->isEnabled());
    ASSERT_TRUE(EventLoop::waitFor([this] { return !m_model->previewRunning(); }, m_model.get(),
                                   &AppModel::previewRunningChanged));
    settle();
    auto *area = only<CompareArea>();
    ASSERT_NE(area, nullptr);
    EXPECT_EQ(m_model->previewSeconds(), 1);
    EXPECT_FALSE(area->isEmpty());

    reach(area);
    const auto at = [&](double share) {
        return area->mapTo(m_window.get(), QPoint(static_cast<int>(share * area->width()), 90));
    };
    QWindow *window = m_window->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, at(0.5));
    QTest::mouseMove(window, at(0.25));
    const double dragged = area->divider();
    QTest::mouseMove(window, at(0) - QPoint(30, 0));
    const double beyond = area->divider();
    QTest::mouseRelease(window, Qt::LeftButton, {}, at(0.75));

    EXPECT_NEAR(dragged, 0.25, 0.01);
    EXPECT_EQ(beyond, CompareArea::leastDivider);
}

TEST_F(WindowWorkTest, language_and_size_of_the_window_change_while_a_job_runs_on)
{
    open();
    dropAndRead({makeClip(u"long.mp4"_s, longSeconds)});
    typeTarget(u"3"_s);
    reachButton(u"Exact 2-pass mode (slower, needs x264 ffmpeg)"_s);
    reachButton(u"Add to Queue"_s);
    const std::shared_ptr<Job> job = lastJob();
    waitUntilUnderWay(job);

    expectGoodLayout({1500, 950});
    pickLanguage(1);
    EXPECT_NE(find<Button>(u"加入队列"_s), nullptr);
    EXPECT_EQ(find<Button>(u"Add to Queue"_s), nullptr);
    expectGoodLayout({920, 640});
    ASSERT_EQ(job->outcome(), Outcome::running);
    EXPECT_NE(only<ProgressBar>(), nullptr);
    reachButton(u"取消 long.mp4"_s);
    waitUntil([&] { return job->outcome() != Outcome::running; });
    settle();

    EXPECT_FALSE(textWith(u"失败: "_s).isEmpty() && textWith(u"已取消"_s).isEmpty());
    EXPECT_NE(find<Button>(u"重试 long.mp4"_s), nullptr);
}

TEST_F(WindowWorkTest, three_films_are_added_at_once_and_leave_their_jobs_behind_when_removed)
{
    open({.concurrency = 2});
    dropAndRead({makeClip(u"one.mp4"_s), makeClip(u"two.mp4"_s), makeClip(u"three.mp4"_s)});
    typeTarget(u"0.2"_s);
    reachButton(u"Add All Files (3)"_s);
    waitForAllToEnd();
    settle();
    EXPECT_THAT(outcomesOf(m_model->jobs()), Each(Outcome::finished));
    for (const std::shared_ptr<Job> &job : m_model->jobs()) {
        expectUnderTheLimit(job);
    }

    for (const QString &name : {u"two.mp4"_s, u"one.mp4"_s, u"three.mp4"_s}) {
        removeByTheCross(name);
    }
    EXPECT_NE(only<LandingView>(), nullptr);
    EXPECT_EQ(m_model->jobs().size(), 3);
    dropAndRead({m_films.url(u"one.mp4"_s)});
    ASSERT_NE(only<QueueView>(), nullptr);
    EXPECT_NE(find<Button>(u"Show in Finder three.mp4"_s), nullptr);
    reachButton(u"Clear finished"_s);
    EXPECT_TRUE(shows(u"Nothing queued yet"_s));
    reachButton(u"Close Queue"_s);

    EXPECT_EQ(only<QueueView>(), nullptr);
}

TEST_F(WindowWorkTest, a_job_added_after_the_workers_ended_waits_for_one_more_in_the_settings)
{
    open();
    copyBirthday();

    reachButton(u"Add to Queue"_s);
    turnTheLoop();
    const std::shared_ptr<Job> second = lastJob();
    ASSERT_EQ(second->outcome(), Outcome::queued);
    EXPECT_TRUE(shows(u"Queued"_s));
    reachButton(u"Settings"_s);
    auto *count = find<SegmentedPicker>(u"Simultaneous encodes"_s);
    ASSERT_NE(count, nullptr);
    click(count, count->segmentRect(1).center());
    reachButton(u"Done"_s);
    waitFor(second, Outcome::finished);
    settle();

    EXPECT_EQ(only<SettingsSheet>(), nullptr);
    EXPECT_FALSE(shows(u"Queued"_s));
    EXPECT_EQ(m_films.names().filter(u"25MB"_s),
              (QStringList{u"Birthday-25MB 2.mp4"_s, u"Birthday-25MB.mp4"_s}));
}

TEST_F(WindowWorkTest, a_broken_file_brings_an_alert_that_escape_dismisses)
{
    open();
    m_films.write(u"broken.mp4"_s, "no film");

    dropAndRead({m_films.url(u"broken.mp4"_s)});
    EXPECT_TRUE(shows(u"Could not read this file. Is it a valid video?"_s));
    EXPECT_NE(only<LandingView>(), nullptr);
    press(Qt::Key_Escape);

    EXPECT_EQ(only<MessageSheet>(), nullptr);
    dropAndRead({makeClip(u"whole.mp4"_s)});
    EXPECT_NE(only<TargetSizePanel>(), nullptr);
}

TEST_F(WindowWorkTest, a_second_drop_is_taken_while_the_first_is_still_read)
{
    const QUrl slow = makeClip(u"slow.mp4"_s);
    const QUrl quick = makeClip(u"quick.mp4"_s);
    holdRealProbes();
    const Gate gate(film(u"slow.mp4"_s));
    open();
    ASSERT_TRUE(dropOn(only<DropZone>(), {slow}));

    ASSERT_TRUE(dropOn(only<WorkspaceView>(), {quick}));
    waitUntil([this] { return m_model->probingCount() == 1; });
    settle();
    EXPECT_EQ(only<FileRow>()->file().url, quick);
    EXPECT_NE(only<TargetSizePanel>(), nullptr);
    EXPECT_NE(find<Spinner>(u"Reading file…"_s), nullptr);
    gate.open();
    waitUntilRead();

    EXPECT_EQ(m_model->files().size(), 2);
    EXPECT_EQ(find<Spinner>(u"Reading file…"_s), nullptr);
}

TEST_F(WindowWorkTest, a_dropped_folder_gives_its_films_and_nothing_else)
{
    open();
    makeClip(u"in/one.mp4"_s, 1);
    makeClip(u"in/deeper/two.mp4"_s, 1);
    m_films.write(u"in/notes.txt"_s, "no film");

    dropAndRead({m_films.url(u"in"_s)});

    EXPECT_EQ(m_window->findChildren<FileRow *>().size(), 2);
    EXPECT_TRUE(shows(u"one.mp4"_s));
    EXPECT_TRUE(shows(u"two.mp4"_s));
    EXPECT_NE(find<Button>(u"Add All Files (2)"_s), nullptr);
}

} // namespace
