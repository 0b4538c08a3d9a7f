// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Queue/QueueFixture.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/MessageSheet.h"
#include "Views/Controls/ProgressBar.h"
#include "Views/Controls/Spinner.h"
#include "Views/Queue/JobFacts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDrag>
#include <QHelpEvent>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include <functional>

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Says that the file stays where it is.
class RefusingTrash : public RecordingDesktopServices
{
public:
    bool moveToTrash(const QUrl &file) override
    {
        RecordingDesktopServices::moveToTrash(file);
        return false;
    }
};

/// Notes which window asked.
class ShareRecorder : public RecordingDesktopServices
{
public:
    void share(const QList<QUrl> &, const QString &parentWindow) override
    {
        parentWindows += parentWindow;
    }

    QStringList parentWindows;
};

} // namespace

class JobRowTest : public QueueFixture
{
protected:
    /// The texts of the only row while its job is in that state.
    QStringList textsIn(const Job::State &state)
    {
        m_job->setState(state);
        settle();
        return textsOf(rows().first());
    }

    void SetUp() override
    {
        m_job = add(u"film.mp4"_s);
        showQueue();
    }

    /// Opens the menu of the film's row and does that while it is open. Whether it closed of
    /// itself.
    bool closesMenu(const std::function<void()> &change)
    {
        bool wasOpen = false;
        bool closed = false;
        QTimer::singleShot(0, m_window.get(), [&] {
            wasOpen = QApplication::activePopupWidget();
            change();
            settle();
            QWidget *menu = QApplication::activePopupWidget();
            closed = !menu;
            if (menu) {
                menu->close();
            }
        });
        click(find<QAbstractButton>(u"Open… film.mp4"_s));
        return wasOpen && closed;
    }

    std::shared_ptr<Job> m_job;
};

TEST_F(JobRowTest, a_row_tells_the_file_the_action_and_the_state)
{
    EXPECT_THAT(textsIn(Job::Queued()),
                ElementsAre(u"film.mp4"_s, u"Compress to Target Size"_s, u"Queued"_s));
    EXPECT_THAT(textsIn(Job::Analyzing()),
                ElementsAre(u"film.mp4"_s, u"Compress to Target Size"_s, u"Analyzing…"_s));
    EXPECT_THAT(textsIn(Job::Cancelled()),
                ElementsAre(u"film.mp4"_s, u"Compress to Target Size"_s, u"Cancelled"_s));
    EXPECT_THAT(textsIn(Job::Failed{u"No room."_s}),
                ElementsAre(u"film.mp4"_s, u"Compress to Target Size"_s, u"Failed: No room."_s));
}

TEST_F(JobRowTest, a_failure_without_words_is_shown_as_one)
{
    EXPECT_EQ(textsIn(Job::Failed{}).last(), u"Failed: "_s);
}

TEST_F(JobRowTest, a_failure_of_several_lines_takes_one_and_has_them_all_in_its_tooltip)
{
    EXPECT_EQ(textsIn(Job::Failed{u"one <two>\nthree"_s}).last(), u"Failed: one <two> three"_s);

    const auto *line = find<QWidget>(u"Failed: one <two> three"_s);
    ASSERT_NE(line, nullptr);
    EXPECT_TRUE(line->toolTip().contains(u"one &lt;two&gt;<br"_s)) << line->toolTip().toStdString();
    textsIn(Job::Queued());
    EXPECT_EQ(line->toolTip(), QString());
}

TEST_F(JobRowTest, only_an_analysis_spins_and_only_running_has_a_bar)
{
    const auto *spinner = m_window->findChild<Spinner *>();
    const auto *bar = m_window->findChild<ProgressBar *>();

    textsIn(Job::Analyzing());
    EXPECT_TRUE(spinner->isVisible());
    EXPECT_FALSE(bar->isVisible());
    textsIn(Job::Running{0.25});
    EXPECT_FALSE(spinner->isVisible());
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->value(), 0.25);
    textsIn(Job::Queued());
    EXPECT_FALSE(spinner->isVisible());
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(JobRowTest, progress_is_cut_to_whole_percent)
{
    EXPECT_EQ(textsIn(Job::Running{0}).last(), u"0%"_s);
    EXPECT_EQ(textsIn(Job::Running{0.295}).last(), u"29%"_s);
    EXPECT_EQ(textsIn(Job::Running{0.995}).last(), u"99%"_s);
    // A hair below 29 in doubles.
    EXPECT_EQ(textsIn(Job::Running{0.29}).last(), u"28%"_s);
    EXPECT_EQ(textsIn(Job::Running{1}).last(), u"100%"_s);
}

TEST_F(JobRowTest, the_bar_stays_as_long_as_the_number_gets_longer)
{
    textsIn(Job::Running{0.05});
    const auto *bar = m_window->findChild<ProgressBar *>();
    const QRect before = bar->geometry();

    textsIn(Job::Running{1});

    EXPECT_EQ(bar->geometry(), before);
}

TEST_F(JobRowTest, a_result_tells_both_sizes_the_saving_and_the_note)
{
    const QStringList texts = textsIn(result(100'000'000, 24'300'000, u"As told"_s));

    EXPECT_EQ(texts.sliced(2),
              QStringList({u"100 MB → 24.3 MB"_s, u"−75.7 MB (75% smaller)"_s, u"As told"_s}));
}

TEST_F(JobRowTest, a_result_that_is_larger_has_only_the_two_sizes)
{
    EXPECT_EQ(textsIn(result(1'000'000, 1'200'000)).sliced(2), QStringList({u"1 MB → 1.2 MB"_s}));
    EXPECT_EQ(textsIn(result(1'000'000, 1'000'000)).sliced(2), QStringList({u"1 MB → 1 MB"_s}));
}

TEST_F(JobRowTest, a_saving_below_one_percent_is_shown_as_none_of_a_hundred)
{
    EXPECT_EQ(textsIn(result(1'000'000, 991'000)).last(), u"−9 KB (0% smaller)"_s);
    EXPECT_EQ(textsIn(result(1'000'000, 999'999)).last(), u"−1 byte (0% smaller)"_s);
}

TEST_F(JobRowTest, an_original_of_unknown_size_saves_nothing)
{
    EXPECT_EQ(textsIn(result(0, 5'000)).last(), u"Zero KB → 5 KB"_s);
    EXPECT_EQ(textsIn(result(0, -1)).last(), u"Zero KB → -1 bytes"_s);
}

TEST_F(JobRowTest, a_saving_is_divided_before_it_is_made_percent)
{
    // 0.29 times 100 is a hair below 29; 29 times 100 divided by 100 would not be.
    EXPECT_EQ(textsIn(result(100, 71)).last(), u"−29 bytes (28% smaller)"_s);
    EXPECT_EQ(textsIn(result(1, 0)).last(), u"−1 byte (100% smaller)"_s);
}

TEST_F(JobRowTest, the_actions_follow_the_state)
{
    EXPECT_THAT(actionsOf(rows().first()), ElementsAre(u"Cancel film.mp4"_s));
    for (const Job::State &state : {Job::State(Job::Analyzing()), Job::State(Job::Running{0.5})}) {
        textsIn(state);
        EXPECT_THAT(actionsOf(rows().first()), ElementsAre(u"Cancel film.mp4"_s));
    }
    for (const Job::State &state : {Job::State(Job::Failed()), Job::State(Job::Cancelled())}) {
        textsIn(state);
        EXPECT_THAT(actionsOf(rows().first()), ElementsAre(u"Retry film.mp4"_s));
    }
    textsIn(result(2, 1));
    EXPECT_THAT(actionsOf(rows().first()),
                ElementsAre(u"Show in Finder film.mp4"_s, u"Open… film.mp4"_s));
}

TEST_F(JobRowTest, cancel_and_retry_go_to_the_job_of_the_row)
{
    const std::shared_ptr<Job> other = add(u"other.mp4"_s);

    click(find<QAbstractButton>(u"Cancel other.mp4"_s));
    EXPECT_EQ(other->outcome(), Job::Outcome::cancelled);
    EXPECT_EQ(m_job->outcome(), Job::Outcome::queued);

    click(find<QAbstractButton>(u"Retry other.mp4"_s));
    EXPECT_EQ(other->outcome(), Job::Outcome::queued);
}

TEST_F(JobRowTest, reveal_shows_all_that_came_out)
{
    m_job->setState(Job::Finished{{m_films.url(u"a.mp4"_s), m_films.url(u"b.mp4"_s)}, 2, 1, {}});
    settle();

    click(find<QAbstractButton>(u"Show in Finder film.mp4"_s));

    EXPECT_THAT(m_desktopServices.calls, ElementsAre(u"reveal a.mp4 b.mp4"_s));
}

TEST_F(JobRowTest, the_menu_opens_each_copies_and_shares_all)
{
    m_job->setState(Job::Finished{{m_films.url(u"a.mp4"_s), m_films.url(u"b.mp4"_s)}, 2, 1, {}});
    settle();

    choose(u"Open… film.mp4"_s, u"Open"_s);
    choose(u"Open… film.mp4"_s, u"Copy path"_s);
    choose(u"Open… film.mp4"_s, u"Share…"_s);

    EXPECT_THAT(m_desktopServices.calls,
                ElementsAre(u"open a.mp4"_s, u"open b.mp4"_s, u"copy a.mp4 b.mp4"_s,
                            u"share a.mp4 b.mp4"_s));
}

TEST_F(JobRowTest, sharing_names_the_window_where_others_can_know_it)
{
    ShareRecorder desktop;
    auto *row = new JobRow({*m_model, desktop, m_dialogs});
    row->setJob(m_job);
    show(row, {920, 320});
    m_job->setState(result(2, 1));
    settle();

    choose(u"Open… film.mp4"_s, u"Share…"_s);

    const QString handle = u"x11:"_s + QString::number(m_window->winId(), 16);
    EXPECT_THAT(desktop.parentWindows,
                ElementsAre(QGuiApplication::platformName() == u"xcb"_s ? handle : QString()));
}

TEST_F(JobRowTest, the_menu_has_its_entries_in_order_and_symbols_where_they_belong)
{
    textsIn(result(2, 1));

    const QList<QAction *> actions = m_window->findChild<QMenu *>()->actions();

    QStringList entries;
    for (const QAction *action : actions) {
        entries += action->text() + (action->icon().isNull() ? u""_s : u" *"_s);
    }
    EXPECT_THAT(entries, ElementsAre(u"Open"_s, u"Copy path"_s, u"Share… *"_s,
                                     u"Move original to Trash *"_s));
}

TEST_F(JobRowTest, an_open_menu_closes_when_its_job_goes_from_the_list)
{
    textsIn(result(2, 1));

    EXPECT_TRUE(closesMenu([this] { m_model->clearFinished(); }));
}

TEST_F(JobRowTest, an_open_menu_closes_when_its_row_goes_to_another_job)
{
    textsIn(result(2, 1));
    const std::shared_ptr<Job> other = add(u"other.mp4"_s, result(4, 1));

    EXPECT_TRUE(closesMenu([&] { rows().first()->setJob(other); }));
}

TEST_F(JobRowTest, an_open_menu_closes_when_the_result_is_no_more)
{
    textsIn(result(2, 1));

    EXPECT_TRUE(closesMenu([this] { m_model->retryJob(m_job->id); }));
}

TEST_F(JobRowTest, an_open_menu_stays_while_other_jobs_come)
{
    textsIn(result(2, 1));

    EXPECT_FALSE(closesMenu([this] { add(u"other.mp4"_s); }));
}

TEST_F(JobRowTest, the_question_follows_the_language_while_it_stands)
{
    textsIn(result(2, 1));
    choose(u"Open… film.mp4"_s, u"Move original to Trash"_s);

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    settle();

    EXPECT_TRUE(shows(u"要将原文件移到回收站吗？"_s));
    EXPECT_NE(find<QAbstractButton>(u"取消"_s), nullptr);
    click(find<QAbstractButton>(u"将原文件移到回收站"_s));
    EXPECT_THAT(m_desktopServices.calls, ElementsAre(u"trash film.mp4"_s));
}

TEST_F(JobRowTest, the_question_is_about_the_file_it_was_asked_for_though_the_job_has_gone)
{
    textsIn(result(2, 1));
    add(u"other.mp4"_s);
    choose(u"Open… film.mp4"_s, u"Move original to Trash"_s);

    m_model->clearFinished();
    settle();
    click(find<QAbstractButton>(u"Move original to Trash"_s));

    EXPECT_THAT(m_desktopServices.calls, ElementsAre(u"trash film.mp4"_s));
}

TEST_F(JobRowTest, the_original_goes_to_the_trash_only_after_a_yes)
{
    textsIn(result(2, 1));

    choose(u"Open… film.mp4"_s, u"Move original to Trash"_s);
    EXPECT_TRUE(shows(u"Move the original file to Trash?"_s));
    EXPECT_THAT(m_desktopServices.calls, IsEmpty());
    click(find<QAbstractButton>(u"Cancel"_s));
    EXPECT_THAT(m_desktopServices.calls, IsEmpty());
    EXPECT_FALSE(shows(u"Move the original file to Trash?"_s));

    choose(u"Open… film.mp4"_s, u"Move original to Trash"_s);
    click(find<QAbstractButton>(u"Move original to Trash"_s));
    EXPECT_THAT(m_desktopServices.calls, ElementsAre(u"trash film.mp4"_s));
    EXPECT_EQ(m_model->jobs().size(), 1);
}

TEST_F(JobRowTest, escape_and_return_keep_the_original)
{
    textsIn(result(2, 1));

    choose(u"Open… film.mp4"_s, u"Move original to Trash"_s);
    press(Qt::Key_Return);
    EXPECT_FALSE(shows(u"Move the original file to Trash?"_s));

    choose(u"Open… film.mp4"_s, u"Move original to Trash"_s);
    press(Qt::Key_Escape);

    EXPECT_FALSE(shows(u"Move the original file to Trash?"_s));
    EXPECT_THAT(m_desktopServices.calls, IsEmpty());
}

TEST_F(JobRowTest, an_original_that_has_gone_is_no_matter_for_a_message)
{
    RefusingTrash desktop;
    auto *row = new JobRow({*m_model, desktop, m_dialogs});
    row->setJob(m_job);
    show(row, {920, 320});
    m_job->setState(result(2, 1));
    settle();
    choose(u"Open… film.mp4"_s, u"Move original to Trash"_s);

    click(find<QAbstractButton>(u"Move original to Trash"_s));

    EXPECT_THAT(desktop.calls, ElementsAre(u"trash film.mp4"_s));
    EXPECT_EQ(m_window->findChild<MessageSheet *>(), nullptr);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
}

TEST_F(JobRowTest, a_finished_row_carries_its_files_to_other_programs)
{
    JobRow *row = rows().first();
    EXPECT_EQ(row->outputData(), nullptr);
    const QList<QUrl> urls{m_films.url(u"a.mp4"_s), m_films.url(u"b.mp4"_s)};

    textsIn(Job::Finished{urls, 2, 1, {}});

    ASSERT_NE(row->outputData(), nullptr);
    EXPECT_EQ(row->outputData()->urls(), urls);
}

TEST_F(JobRowTest, a_drag_begins_only_after_some_way_and_only_with_files)
{
    JobRow *row = rows().first();
    const auto drag = [&](int way) {
        const QPoint from(200, 20);
        QTest::mousePress(row, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, QPointF(from) + QPointF(way, 0),
                         row->mapToGlobal(QPointF(from) + QPointF(way, 0)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(row, &move);
        QTest::mouseRelease(row, Qt::LeftButton, {}, from + QPoint(way, 0));
        // It lives until the event loop turns.
        return row->findChildren<QDrag *>().size();
    };

    EXPECT_EQ(drag(100), 0);
    textsIn(result(2, 1));
    EXPECT_EQ(drag(QApplication::startDragDistance() - 1), 0);
    EXPECT_EQ(drag(100), 1);
}

TEST_F(JobRowTest, a_row_that_is_handed_on_follows_its_new_job_alone)
{
    const std::shared_ptr<Job> other = add(u"other.mp4"_s);
    JobRow *row = rows().first();

    row->setJob(other);
    m_job->setState(Job::Running{0.5});
    settle();
    EXPECT_THAT(textsOf(row),
                ElementsAre(u"other.mp4"_s, u"Compress to Target Size"_s, u"Queued"_s));

    other->setState(Job::Running{0.25});
    settle();
    EXPECT_EQ(textsOf(row).last(), u"25%"_s);
}

TEST_F(JobRowTest, the_words_follow_the_language_and_a_stored_message_does_not)
{
    textsIn(Job::Failed{u"No room."_s});

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    settle();

    EXPECT_EQ(textsOf(rows().first()).last(), u"失败: No room."_s);
    EXPECT_THAT(actionsOf(rows().first()), ElementsAre(u"重试 film.mp4"_s));
}

TEST_F(JobRowTest, a_name_that_is_cut_is_read_whole_and_as_it_stands)
{
    const QString name = u"<b>"_s + QString(400, u'x') + u".mp4"_s;
    add(name);
    auto *label = rows().last()->findChild<ElidedLabel *>();
    ASSERT_EQ(label->text(), name);

    QHelpEvent hover(QEvent::ToolTip, {5, 5}, label->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(label, &hover);

    EXPECT_TRUE(QToolTip::text().contains(name.toHtmlEscaped()));
    QToolTip::hideText();
}

TEST(JobFacts, the_colour_tells_the_outcome)
{
    using Look::ColorRole;

    EXPECT_EQ(JobFacts::color(Job::Outcome::finished), ColorRole::green);
    EXPECT_EQ(JobFacts::color(Job::Outcome::failed), ColorRole::red);
    EXPECT_EQ(JobFacts::color(Job::Outcome::analyzing), ColorRole::accent);
    EXPECT_EQ(JobFacts::color(Job::Outcome::running), ColorRole::accent);
    EXPECT_EQ(JobFacts::color(Job::Outcome::queued), ColorRole::secondaryText);
    EXPECT_EQ(JobFacts::color(Job::Outcome::cancelled), ColorRole::secondaryText);
}
