// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Window/WindowFixture.h"

#include "Views/Components/CompareArea.h"
#include "Views/Controls/MessageSheet.h"
#include "Views/Settings/SettingsSheet.h"
#include "Views/Shell/LandingView.h"
#include "support/EventLoop.h"

#include <QApplication>
#include <QFileInfo>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

using Outcome = Job::Outcome;

namespace {

/// No pointer here: Tab, Space, Return, Escape, the arrows and what is typed.
class WindowKeysTest : public WindowFixture
{
protected:
    /// From the landing page's drop zone, by way of the dialog.
    void browse(const QList<QUrl> &urls)
    {
        m_dialogs.answer = urls;
        ASSERT_TRUE(tabTo(u"Drop videos here"_s));
        press(Qt::Key_Return);
        waitUntilRead();
    }

    void typeHere(const QString &text)
    {
        for (const QChar character : text) {
            QTest::keyClick(m_window->windowHandle(), character.toLatin1());
        }
        settle();
    }
};

TEST_F(WindowKeysTest, a_film_goes_from_the_dialog_to_the_trash_question_without_the_pointer)
{
    open();
    browse({makeClip(u"Birthday.mp4"_s)});
    EXPECT_EQ(m_dialogs.opened, QStringList{u"any audioVisual"_s});

    ASSERT_TRUE(tabTo(u"Custom (MB)"_s));
    typeHere(u"0.2"_s);
    ASSERT_TRUE(tabTo(u"Add to Queue"_s));
    press(Qt::Key_Space);
    waitFor(lastJob(), Outcome::finished);
    settle();
    EXPECT_LE(QFileInfo(m_films.path(u"Birthday-0.2MB.mp4"_s)).size(), 200'000);

    ASSERT_TRUE(tabTo(u"Show in Finder Birthday.mp4"_s));
    press(Qt::Key_Return);
    for (const int entry : {1, 2, 3, 4}) {
        ASSERT_TRUE(tabTo(u"Open… Birthday.mp4"_s));
        chooseByKeys(entry);
    }
    EXPECT_EQ(focusedName(), u"Cancel"_s);
    ASSERT_TRUE(tabTo(u"Move original to Trash"_s));
    press(Qt::Key_Space);

    EXPECT_THAT(m_desktopServices.calls,
                ElementsAre(u"reveal Birthday-0.2MB.mp4"_s, u"open Birthday-0.2MB.mp4"_s,
                            u"copy Birthday-0.2MB.mp4"_s, u"share Birthday-0.2MB.mp4"_s,
                            u"trash Birthday.mp4"_s));
}

TEST_F(WindowKeysTest, a_preview_is_made_and_its_divider_moves_by_the_arrows)
{
    open();
    browse({makeClip(u"Birthday.mp4"_s)});
    ASSERT_TRUE(tabTo(u"Quality Preview"_s));
    press(Qt::Key_Space);
    ASSERT_TRUE(EventLoop::waitFor([this] { return !m_model->previewRunning(); }, m_model.get(),
                                   &AppModel::previewRunningChanged));
    settle();
    auto *area = only<CompareArea>();
    ASSERT_NE(area, nullptr);

    for (int i = 0; i < 200 && QApplication::focusWidget() != area; ++i) {
        press(Qt::Key_Tab);
    }
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    const double moved = area->divider();
    press(Qt::Key_End);

    EXPECT_TRUE(area->hasFocus());
    EXPECT_NEAR(moved, 0.5 - 2 * CompareArea::dividerStep, 1e-9);
    EXPECT_EQ(area->divider(), CompareArea::mostDivider);
}

TEST_F(WindowKeysTest, a_card_of_the_ladder_and_a_tab_of_the_actions_are_taken_by_keys)
{
    open();
    browse({makeClip(u"Birthday.mp4"_s)});

    ASSERT_TRUE(tabTo(u"8 MB, Legacy Discord"_s));
    press(Qt::Key_Space);
    EXPECT_TRUE(textWith(u"guaranteed under"_s).endsWith(u"guaranteed under 8 MB"_s));
    ASSERT_TRUE(tabTo(u"Target"_s));
    press(Qt::Key_Right);
    press(Qt::Key_Right);

    EXPECT_EQ(m_model->action(), ActionKind::compress);
}

TEST_F(WindowKeysTest, the_waiting_job_is_started_from_the_settings_and_the_files_are_removed)
{
    open();
    browse({makeClip(u"one.mp4"_s), makeClip(u"two.mp4"_s)});
    ASSERT_TRUE(tabTo(u"Add All Files (2)"_s));
    press(Qt::Key_Return);
    waitForAllToEnd();
    settle();
    ASSERT_TRUE(tabTo(u"Add to Queue"_s));
    press(Qt::Key_Return);
    turnTheLoop();
    ASSERT_EQ(lastJob()->outcome(), Outcome::queued);

    ASSERT_TRUE(tabTo(u"Settings"_s));
    press(Qt::Key_Space);
    ASSERT_TRUE(tabTo(u"Simultaneous encodes"_s));
    press(Qt::Key_Right);
    press(Qt::Key_Escape);
    EXPECT_EQ(only<SettingsSheet>(), nullptr);
    waitFor(lastJob(), Outcome::finished);
    settle();
    ASSERT_TRUE(tabTo(m_model->selectedFile()->url.fileName()));
    press(Qt::Key_Delete);
    press(Qt::Key_Delete);

    EXPECT_NE(only<LandingView>(), nullptr);
    EXPECT_EQ(m_model->jobs().size(), 3);
}

} // namespace
