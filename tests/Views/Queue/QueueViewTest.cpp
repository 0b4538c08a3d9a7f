// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Queue/QueueView.h"
#include "Queue/QueueFixture.h"
#include "Views/Controls/Button.h"
#include "Views/Controls/RowList.h"
#include "Views/Controls/TextLabel.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

QJsonArray contentsOf(const QUrl &url)
{
    QFile file(url.toLocalFile());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).array();
}

} // namespace

class QueueViewTest : public QueueFixture
{
protected:
    Button *button(const QString &name) { return find<Button>(name); }

    QUrl layFile(const QString &name, const QByteArray &contents)
    {
        const QUrl url = m_films.url(name);
        QFile file(url.toLocalFile());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
        return url;
    }
};

TEST_F(QueueViewTest, an_empty_queue_says_so_and_has_no_pause_even_while_paused)
{
    showQueue();

    EXPECT_TRUE(shows(u"Queue"_s));
    EXPECT_TRUE(shows(u"Nothing queued yet"_s));
    ASSERT_TRUE(m_model->queuePaused());
    EXPECT_EQ(button(u"Resume"_s), nullptr);
    EXPECT_EQ(button(u"Pause"_s), nullptr);
    EXPECT_FALSE(m_window->findChild<RowList *>()->isVisible());
}

TEST_F(QueueViewTest, the_rows_stand_in_the_order_of_the_jobs)
{
    showQueue();
    for (const QString &name : {u"c.mp4"_s, u"a.mp4"_s, u"b.mp4"_s}) {
        add(name);
    }

    QStringList names;
    for (const JobRow *row : rows()) {
        names += textsOf(row).first();
    }
    EXPECT_THAT(names, ElementsAre(u"c.mp4"_s, u"a.mp4"_s, u"b.mp4"_s));
    EXPECT_FALSE(shows(u"Nothing queued yet"_s));
}

TEST_F(QueueViewTest, pausing_with_only_waiting_jobs_keeps_the_button_which_then_resumes)
{
    add(u"a.mp4"_s);
    showQueue();

    click(button(u"Resume"_s));
    EXPECT_FALSE(m_model->queuePaused());
    click(button(u"Pause"_s));
    EXPECT_TRUE(m_model->queuePaused());
    EXPECT_NE(button(u"Resume"_s), nullptr);
}

TEST_F(QueueViewTest, the_pause_button_is_there_while_something_waits_or_runs)
{
    const std::shared_ptr<Job> job = add(u"a.mp4"_s);
    showQueue();

    for (const Job::State &state :
         {Job::State(Job::Queued()), Job::State(Job::Analyzing()), Job::State(Job::Running())}) {
        job->setState(state);
        settle();
        EXPECT_NE(button(u"Resume"_s), nullptr);
    }
    for (const Job::State &state :
         {Job::State(Job::Finished()), Job::State(Job::Failed()), Job::State(Job::Cancelled())}) {
        job->setState(state);
        settle();
        EXPECT_EQ(button(u"Resume"_s), nullptr);
    }
}

TEST_F(QueueViewTest, only_a_waiting_job_can_be_exported)
{
    showQueue();
    EXPECT_FALSE(button(u"Export queue"_s)->isEnabled());

    const std::shared_ptr<Job> job = add(u"a.mp4"_s);
    EXPECT_TRUE(button(u"Export queue"_s)->isEnabled());

    job->setState(Job::Running());
    settle();
    EXPECT_FALSE(button(u"Export queue"_s)->isEnabled());
}

TEST_F(QueueViewTest, an_export_replaces_a_chosen_file_and_cannot_name_a_new_one)
{
    add(u"a.mp4"_s);
    showQueue();
    m_dialogs.answer = {layFile(u"first.json"_s, "old"), layFile(u"second.json"_s, "old")};

    click(button(u"Export queue"_s));

    EXPECT_THAT(m_dialogs.opened, ElementsAre(u"one json"_s));
    const QJsonArray exported = contentsOf(m_dialogs.answer.first());
    ASSERT_EQ(exported.size(), 1);
    EXPECT_EQ(exported.first()[u"path"_s].toString(), film(u"a.mp4"_s).url.toLocalFile());
}

TEST_F(QueueViewTest, an_import_takes_the_first_chosen_file)
{
    add(u"a.mp4"_s);
    layReady(u"a.mp4"_s);
    showQueue();
    m_dialogs.answer = {layFile(u"queue.json"_s, ""), layFile(u"other.json"_s, "")};
    m_model->exportQueue(m_dialogs.answer.first());

    click(button(u"Import queue"_s));
    waitUntil([this] { return m_model->jobs().size() == 2; });
    settle();

    EXPECT_THAT(m_dialogs.opened, ElementsAre(u"one json"_s));
    EXPECT_EQ(rows().size(), 2);
    EXPECT_EQ(textsOf(rows().last()).first(), u"a.mp4"_s);
}

TEST_F(QueueViewTest, a_cancelled_dialog_changes_nothing)
{
    add(u"a.mp4"_s);
    showQueue();

    click(button(u"Import queue"_s));
    click(button(u"Export queue"_s));

    EXPECT_THAT(m_dialogs.opened, ElementsAre(u"one json"_s, u"one json"_s));
    EXPECT_EQ(m_model->jobs().size(), 1);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
}

TEST_F(QueueViewTest, clearing_takes_away_what_has_ended)
{
    add(u"a.mp4"_s, Job::Cancelled());
    add(u"b.mp4"_s);
    add(u"c.mp4"_s, Job::Failed());
    add(u"d.mp4"_s, Job::Finished());
    showQueue();

    click(button(u"Clear finished"_s));

    ASSERT_EQ(rows().size(), 1);
    EXPECT_EQ(textsOf(rows().first()).first(), u"b.mp4"_s);
}

TEST_F(QueueViewTest, the_arrow_puts_the_queue_away)
{
    m_model->setShowQueue(true);
    showQueue();

    click(find<QAbstractButton>(u"Close Queue"_s));

    EXPECT_FALSE(m_model->showQueue());
}

TEST_F(QueueViewTest, jobs_at_work_show_how_far_they_are)
{
    m_model->setQueuePaused(false);
    const VideoFile first = film(u"first.mp4"_s);
    const Gate gate(first);
    const std::shared_ptr<Job> running = enqueue(first);
    const std::shared_ptr<Job> waiting = enqueue(film(u"second.mp4"_s));
    showQueue();

    waitForProgress(running, 0.25);
    settle();
    EXPECT_EQ(textsOf(rows().first()).last(), u"25%"_s);
    EXPECT_EQ(textsOf(rows().last()).last(), u"Queued"_s);

    gate.open();
    waitForAllToEnd();
    settle();
    EXPECT_THAT(textsOf(rows().first()), Contains(u"2.2 MB → 950 KB"_s));
    EXPECT_THAT(textsOf(rows().first()), Contains(u"−1.2 MB (55% smaller)"_s));
    EXPECT_EQ(button(u"Pause"_s), nullptr);
}

TEST_F(QueueViewTest, a_job_put_back_after_all_workers_ended_keeps_waiting)
{
    m_model->setQueuePaused(false);
    const std::shared_ptr<Job> job = enqueue(film(u"a.mp4"_s));
    waitForAllToEnd();
    turnTheLoop();
    job->setState(Job::Failed());
    showQueue();

    click(find<QAbstractButton>(u"Retry a.mp4"_s));
    turnTheLoop();
    settle();

    EXPECT_EQ(textsOf(rows().first()).last(), u"Queued"_s);
    EXPECT_NE(button(u"Pause"_s), nullptr);
}

TEST_F(QueueViewTest, everything_stands_in_the_language)
{
    add(u"a.mp4"_s);
    showQueue();

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    settle();

    for (const QString &text : {u"队列"_s, u"继续"_s, u"导入队列"_s, u"导出队列"_s, u"清除已完成"_s,
                                u"排队中"_s, u"取消 a.mp4"_s}) {
        EXPECT_TRUE(shows(text)) << text.toStdString();
    }
}

TEST_F(QueueViewTest, the_header_fits_into_a_narrow_window_in_both_languages)
{
    add(u"a.mp4"_s);
    showQueue({680, 200});

    for (const AppLanguage language : {AppLanguage::english, AppLanguage::simplifiedChinese}) {
        m_model->setLanguage(language);
        settle();
        EXPECT_EQ(m_window->width(), 680);
        int right = 0;
        for (const Button *part : m_window->findChildren<Button *>(Qt::FindDirectChildrenOnly)) {
            EXPECT_GE(part->width(), part->sizeHint().width()) << part->text().toStdString();
            EXPECT_GE(part->x(), right) << part->text().toStdString();
            right = part->geometry().right();
        }
        EXPECT_LT(right, 680);
    }
}

TEST_F(QueueViewTest, rows_are_as_high_as_they_need_to_be)
{
    add(u"a.mp4"_s, result(100'000'000, 24'300'000, u"Noted"_s));
    showQueue();

    const JobRow *row = rows().first();

    EXPECT_GE(row->height(), row->minimumSizeHint().height());
    EXPECT_GE(m_window->findChild<RowList *>()->minimumHeight(), 80);
}

TEST_F(QueueViewTest, a_long_note_is_cut_and_the_actions_stay_whole)
{
    const QString note = m_model->t(u"target.alreadyfits"_s);
    add(u"a-name-that-is-long-enough-to-be-cut-in-its-middle-when-the-window-is-narrow-as-now.mp4"_s,
        result(100'000'000, 24'300'000, note));
    showQueue({560, 200});

    const JobRow *row = rows().first();

    for (const QAbstractButton *action : row->findChildren<QAbstractButton *>()) {
        if (action->isVisible()) {
            EXPECT_GE(action->width(), action->sizeHint().width());
            EXPECT_LE(action->mapTo(row, QPoint(action->width(), 0)).x(), row->width());
        }
    }
    EXPECT_EQ(row->width(), 560);
}

TEST_F(QueueViewTest, five_thousand_jobs_need_rows_only_for_what_is_in_sight)
{
    for (int i = 0; i < 5'000; ++i) {
        enqueue(film(u"film%1.mp4"_s.arg(i)));
    }
    showQueue({920, 320});
    auto *list = m_window->findChild<RowList *>();

    list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum());
    settle();

    EXPECT_EQ(textsOf(rows().last()).first(), u"film4999.mp4"_s);
    EXPECT_LE(list->rowsMade(), 12);
    EXPECT_EQ(m_window->findChildren<JobRow *>().size(), list->rowsMade());
}

TEST_F(QueueViewTest, a_list_that_shrinks_while_it_is_scrolled_shows_what_is_left)
{
    for (int i = 0; i < 50; ++i) {
        add(u"film%1.mp4"_s.arg(i), i < 48 ? Job::State(Job::Cancelled()) : Job::Queued());
    }
    showQueue({920, 320});
    QScrollBar *bar = m_window->findChild<RowList *>()->verticalScrollBar();
    bar->setValue(bar->maximum());

    m_model->clearFinished();
    // Before the view has heard of it.
    bar->setValue(0);
    settle();

    ASSERT_EQ(rows().size(), 2);
    EXPECT_EQ(textsOf(rows().first()).first(), u"film48.mp4"_s);
    EXPECT_EQ(textsOf(rows().last()).first(), u"film49.mp4"_s);
}
