// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Window/WindowFixture.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/RowList.h"
#include "Views/Queue/JobRow.h"
#include "Views/Queue/QueueView.h"
#include "Views/Shell/FileRow.h"
#include "Views/Shell/FileSidebar.h"

#include <QScrollBar>

#include <gmock/gmock.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using testing::Each;

namespace {

constexpr int crowd = 500;
// What fits the window, and some in reserve.
constexpr int mostRows = 20;

/// Films that only the fake tools know.
class WindowCrowdTest : public WindowFixture
{
protected:
    WindowCrowdTest() { installObedientFFmpeg(); }

    static QString nameOf(qsizetype number)
    {
        return u"film %1.mp4"_s.arg(number, 3, 10, QChar(u'0'));
    }

    void dropCrowd()
    {
        for (int i = 1; i <= crowd; ++i) {
            m_films.write(u"many/"_s + nameOf(i), "film");
        }
        dropAndRead({m_films.url(u"many"_s)});
        ASSERT_EQ(m_model->files().size(), crowd);
    }

    template <typename Row> QList<Row *> rowsInSight()
    {
        QList<Row *> rows = m_window->findChildren<Row *>();
        rows.removeIf([](const Row *row) { return !row->isVisible(); });
        std::ranges::sort(rows, {}, [](const Row *row) { return row->y(); });
        return rows;
    }
};

TEST_F(WindowCrowdTest, five_hundred_films_are_shown_by_a_few_rows_and_the_last_is_a_key_away)
{
    open();
    ASSERT_NO_FATAL_FAILURE(dropCrowd());
    click(rowsInSight<FileRow>().first());
    ASSERT_TRUE(tabTo(m_model->selectedFile()->url.fileName()));

    press(Qt::Key_End);

    const VideoFile last = m_model->files().last();
    EXPECT_EQ(m_model->selectedFile(), last);
    const QList<FileRow *> rows = rowsInSight<FileRow>();
    EXPECT_LE(rows.size(), mostRows);
    EXPECT_EQ(rows.last()->file(), last);
    EXPECT_TRUE(rows.last()->isSelected());
    EXPECT_LE(rows.last()->geometry().bottom(), rows.last()->parentWidget()->height());
}

TEST_F(WindowCrowdTest, five_hundred_jobs_are_scrolled_and_cancelled_while_the_first_one_runs)
{
    open();
    ASSERT_NO_FATAL_FAILURE(dropCrowd());
    const Gate gate(m_model->files().first());
    reachButton(u"Add All Files (500)"_s);
    waitForProgress(m_model->jobs().first(), 0.25);
    settle();
    ASSERT_EQ(m_model->jobs().size(), crowd);
    EXPECT_LE(m_window->findChildren<JobRow *>().size(), mostRows);

    QScrollBar *bar = only<QueueView>()->findChild<RowList *>()->verticalScrollBar();
    bar->setValue(bar->maximum());
    settle();
    const std::shared_ptr<Job> last = m_model->jobs().last();
    reachButton(u"Cancel "_s + last->input.url.fileName());
    reachButton(u"Pause"_s);
    gate.open();
    waitFor(m_model->jobs().first(), Job::Outcome::finished);
    settle();

    EXPECT_EQ(last->outcome(), Job::Outcome::cancelled);
    EXPECT_THAT(outcomesOf(m_model->jobs().sliced(1, crowd - 2)), Each(Job::Outcome::queued));
    EXPECT_NE(find<Button>(u"Resume"_s), nullptr);
    EXPECT_EQ(bar->value(), bar->maximum()) << "changes of state leave the list where it is";
}

} // namespace
