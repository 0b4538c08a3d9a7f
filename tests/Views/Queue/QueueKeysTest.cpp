// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Queue/QueueFixture.h"
#include "Views/Controls/RowList.h"

#include <QAbstractButton>
#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;

class QueueKeysTest : public QueueFixture
{
protected:
    static QString focused()
    {
        const QWidget *widget = QApplication::focusWidget();
        return widget ? widget->accessibleName() : QString();
    }

    /// The names of the next places that Tab comes to.
    QStringList tab(qsizetype count, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QStringList names;
        for (qsizetype i = 0; i < count; ++i) {
            press(modifiers ? Qt::Key_Backtab : Qt::Key_Tab, modifiers);
            names += focused();
        }
        return names;
    }

    void focusOn(const QString &name)
    {
        auto *widget = find<QAbstractButton>(name);
        ASSERT_NE(widget, nullptr) << name.toStdString();
        widget->setFocus(Qt::TabFocusReason);
        settle();
    }

    RowList *list() { return m_window->findChild<RowList *>(); }
};

TEST_F(QueueKeysTest, tab_goes_through_the_header_and_then_row_by_row)
{
    add(u"a.mp4"_s);
    add(u"b.mp4"_s, result(2, 1));
    add(u"c.mp4"_s, Job::Cancelled());
    showQueue();
    focusOn(u"Resume"_s);

    EXPECT_THAT(tab(8), ElementsAre(u"Import queue"_s, u"Export queue"_s, u"Clear finished"_s,
                                    u"Close Queue"_s, u"Cancel a.mp4"_s, u"Show in Finder b.mp4"_s,
                                    u"Open… b.mp4"_s, u"Retry c.mp4"_s));
    EXPECT_EQ(tab(1).first(), u"Resume"_s);
    EXPECT_EQ(tab(1, Qt::ShiftModifier).first(), u"Retry c.mp4"_s);
}

TEST_F(QueueKeysTest, tab_keeps_the_order_of_the_rows_after_scrolling)
{
    for (int i = 0; i < 40; ++i) {
        add(u"%1.mp4"_s.arg(i));
    }
    showQueue({920, 320});
    const int height = JobRow::rowHeight;
    for (const int row : {30, 3, 17, 18, 16}) {
        list()->verticalScrollBar()->setValue(row * height);
        settle();
    }
    focusOn(u"Close Queue"_s);

    EXPECT_THAT(tab(3), ElementsAre(u"Cancel 16.mp4"_s, u"Cancel 17.mp4"_s, u"Cancel 18.mp4"_s));
}

TEST_F(QueueKeysTest, tab_brings_in_every_row_and_shift_tab_brings_it_back)
{
    QStringList forwards;
    for (int i = 0; i < 30; ++i) {
        add(u"%1.mp4"_s.arg(i));
        forwards += u"Cancel %1.mp4"_s.arg(i);
    }
    showQueue({920, 320});
    focusOn(u"Close Queue"_s);

    EXPECT_EQ(tab(30), forwards);
    QStringList backwards(forwards.rbegin() + 1, forwards.rend());
    EXPECT_EQ(tab(29, Qt::ShiftModifier), backwards);
    EXPECT_EQ(list()->verticalScrollBar()->value(), 0);
    EXPECT_EQ(tab(1, Qt::ShiftModifier).first(), u"Close Queue"_s);
}

TEST_F(QueueKeysTest, a_row_with_the_focus_is_in_sight_as_a_whole)
{
    for (int i = 0; i < 30; ++i) {
        add(u"%1.mp4"_s.arg(i));
    }
    showQueue({920, 320});
    focusOn(u"Close Queue"_s);

    for (int i = 0; i < 12; ++i) {
        tab(1);
        const QWidget *row = QApplication::focusWidget()->parentWidget();
        EXPECT_GE(row->y(), 0) << focused().toStdString();
        EXPECT_LE(row->y() + row->height(), list()->viewport()->height())
            << focused().toStdString();
    }
}

TEST_F(QueueKeysTest, scrolling_away_leaves_the_focus_where_it_is)
{
    for (int i = 0; i < 30; ++i) {
        add(u"%1.mp4"_s.arg(i));
    }
    showQueue({920, 320});
    focusOn(u"Cancel 1.mp4"_s);
    const int far = 20 * JobRow::rowHeight;

    list()->verticalScrollBar()->setValue(far);
    settle();

    EXPECT_EQ(focused(), u"Cancel 1.mp4"_s);
    EXPECT_EQ(list()->verticalScrollBar()->value(), far);
    EXPECT_EQ(tab(1).first(), u"Cancel 2.mp4"_s);
}

TEST_F(QueueKeysTest, the_focus_stays_in_the_row_whose_job_is_cancelled)
{
    add(u"a.mp4"_s);
    add(u"b.mp4"_s);
    showQueue();
    focusOn(u"Cancel a.mp4"_s);

    press(Qt::Key_Space);

    EXPECT_EQ(m_model->jobs().first()->outcome(), Job::Outcome::cancelled);
    EXPECT_EQ(focused(), u"Retry a.mp4"_s);
}

TEST_F(QueueKeysTest, space_and_return_press_what_has_the_focus)
{
    const std::shared_ptr<Job> job = add(u"a.mp4"_s);
    showQueue();

    focusOn(u"Cancel a.mp4"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(job->outcome(), Job::Outcome::cancelled);
    press(Qt::Key_Enter);
    EXPECT_EQ(job->outcome(), Job::Outcome::queued);

    m_model->setShowQueue(true);
    focusOn(u"Close Queue"_s);
    press(Qt::Key_Return);
    EXPECT_FALSE(m_model->showQueue());
    m_model->setShowQueue(true);
    press(Qt::Key_Space);
    EXPECT_FALSE(m_model->showQueue());
}

TEST_F(QueueKeysTest, the_menu_is_worked_by_keys_alone)
{
    add(u"a.mp4"_s, result(2, 1));
    showQueue();

    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        focusOn(u"Open… a.mp4"_s);
        QTimer::singleShot(0, m_window.get(), [] {
            QWidget *menu = QApplication::activePopupWidget();
            ASSERT_NE(menu, nullptr);
            QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        press(key);
    }

    EXPECT_THAT(m_desktopServices.calls, ElementsAre(u"copy result.mp4"_s, u"copy result.mp4"_s));
}

TEST_F(QueueKeysTest, whatever_takes_the_focus_has_a_name_to_be_spoken)
{
    add(u"a.mp4"_s, result(2, 1));
    add(u"b.mp4"_s);
    add(u"c.mp4"_s, Job::Failed());
    showQueue();

    int stops = 0;
    for (const QWidget *widget : m_window->findChildren<QWidget *>()) {
        if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus)) {
            ++stops;
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->metaObject()->className();
        }
    }
    EXPECT_EQ(stops, 5 + 4);
}
