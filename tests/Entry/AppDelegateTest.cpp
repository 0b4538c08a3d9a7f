// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/AppDelegate.h"

#include "App/AppFixture.h"
#include "App/DropZonePanelController.h"
#include "Entry/MainWindow.h"
#include "Platform/SilentServices.h"
#include "Views/DropZonePanelWindow.h"
#include "Views/Shell/LandingView.h"
#include "Views/Shell/WorkspaceView.h"
#include "support/EventLoop.h"
#include "support/Processes.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int hasHung = 99;

class Delegate : public AppFixture
{
protected:
    void launch()
    {
        start();
        m_delegate =
            std::make_unique<AppDelegate>(std::move(m_model), makeSilentServices().desktopServices);
        m_delegate->applicationDidFinishLaunching();
        ASSERT_TRUE(isFurnished());
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_delegate->window()));
    }

    bool isFurnished()
    {
        bool isFurnished = false;
        QObject context;
        QObject::connect(&window(), &MainWindow::furnished, &context, [&] { isFurnished = true; });
        return EventLoop::waitFor([&] { return isFurnished; }, &window(), &MainWindow::furnished);
    }

    AppModel &model() { return m_delegate->appModel(); }
    MainWindow &window() { return *m_delegate->window(); }

    QMenu *menu(const QString &title)
    {
        for (QAction *action : window().menuBar()->actions()) {
            if (action->text() == title) {
                return action->menu();
            }
        }
        return nullptr;
    }
    QAction *item(const QString &menuTitle, const QString &title)
    {
        for (QAction *action : menu(menuTitle)->actions()) {
            if (action->text() == title) {
                return action;
            }
        }
        ADD_FAILURE() << "no item " << title.toStdString();
        return nullptr;
    }

    /// Puts an editor into the window and gives it the focus.
    template <typename Editor> Editor *focused()
    {
        auto *editor = new Editor(window().centralWidget());
        editor->show();
        editor->setFocus();
        EXPECT_TRUE(QTest::qWaitFor([=] { return editor->hasFocus(); }));
        return editor;
    }

    bool waitForFiles(qsizetype count)
    {
        return EventLoop::waitFor([&] { return model().files().size() == count; }, &model(),
                                  &AppModel::filesChanged);
    }

    /// The exit code of the event loop, in which the act is done first.
    static int runThrough(const std::function<void()> &act)
    {
        QObject context;
        QTimer::singleShot(0, &context, act);
        QTimer::singleShot(EventLoop::limit, &context, [] { QCoreApplication::exit(hasHung); });
        return QApplication::exec();
    }

    std::unique_ptr<AppDelegate> m_delegate;
};

} // namespace

TEST_F(Delegate, opens_a_window_of_1040_by_700_that_shrinks_to_920_by_640)
{
    launch();

    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().windowTitle(), u"Morvix"_s);
    EXPECT_EQ(window().centralWidget()->size(), QSize(1040, 700));
    window().resize(100, 100);
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return window().centralWidget()->size() == QSize(920, 640); }));
}

TEST_F(Delegate, the_window_appears_before_its_content_and_keeps_its_size_when_that_comes)
{
    start();
    m_delegate =
        std::make_unique<AppDelegate>(std::move(m_model), makeSilentServices().desktopServices);

    m_delegate->applicationDidFinishLaunching();

    EXPECT_TRUE(window().isVisible());
    EXPECT_FALSE(window().centralWidget());
    const QSize bare = window().size();
    ASSERT_TRUE(isFurnished());
    EXPECT_TRUE(window().centralWidget()->isVisible());
    EXPECT_EQ(window().size(), bare);
}

TEST_F(Delegate, a_file_that_is_opened_before_the_content_is_there_is_in_it)
{
    start();
    m_delegate =
        std::make_unique<AppDelegate>(std::move(m_model), makeSilentServices().desktopServices);
    m_delegate->applicationDidFinishLaunching();

    m_delegate->applicationOpen({QUrl::fromLocalFile(m_films.write(u"a.mp4"_s, "x"))}, {});

    ASSERT_TRUE(isFurnished());
    ASSERT_TRUE(waitForFiles(1));
    EXPECT_TRUE(window().findChild<WorkspaceView *>()->isVisible());
}

TEST_F(Delegate, shows_the_landing_page_while_ffmpeg_hangs_and_the_workspace_once_it_answers)
{
    const VideoFile held = film(u"held.mp4"_s);
    const Gate gate(held);
    holdEncoders(held);
    start();
    m_delegate =
        std::make_unique<AppDelegate>(std::move(m_model), makeSilentServices().desktopServices);

    m_delegate->applicationDidFinishLaunching();

    ASSERT_TRUE(isFurnished());
    ASSERT_TRUE(window().findChild<LandingView *>());
    EXPECT_TRUE(window().findChild<LandingView *>()->isVisible());
    EXPECT_FALSE(window().findChild<WorkspaceView *>());
    EXPECT_TRUE(Processes::eventually([this] { return askedForEncoders().size() == 1; }));
    gate.open();
    m_delegate->applicationOpen({QUrl::fromLocalFile(m_films.write(u"a.mp4"_s, "x"))}, {});
    ASSERT_TRUE(waitForFiles(1));
    EXPECT_TRUE(window().findChild<WorkspaceView *>()->isVisible());
    EXPECT_TRUE(model().offersExactMode());
}

TEST_F(Delegate, centres_the_window_on_the_screen)
{
    launch();

    const QPoint apart =
        window().geometry().center() - window().screen()->availableGeometry().center();

    // A frame around it is known only when it is shown.
    EXPECT_LE(apart.manhattanLength(), 8);
}

TEST_F(Delegate, builds_the_menu_in_english)
{
    launch();
    model().setLanguage(AppLanguage::simplifiedChinese);

    QStringList rows;
    for (const QAction *top : window().menuBar()->actions()) {
        for (const QAction *action : top->menu()->actions()) {
            rows += top->text() + u": "_s +
                    (action->isSeparator() ? u"-"_s
                                           : action->text() + u' ' + action->shortcut().toString());
        }
    }

    EXPECT_EQ(rows, (QStringList{
                        u"Morvix: About Morvix "_s,
                        u"Morvix: -"_s,
                        u"Morvix: Settings… Ctrl+,"_s,
                        u"Morvix: -"_s,
                        u"Morvix: Hide Morvix Ctrl+H"_s,
                        u"Morvix: -"_s,
                        u"Morvix: Quit Morvix Ctrl+Q"_s,
                        u"Edit: Cut Ctrl+X"_s,
                        u"Edit: Copy Ctrl+C"_s,
                        u"Edit: Paste Ctrl+V"_s,
                        u"Edit: Select All Ctrl+A"_s,
                        u"Window: Minimize Ctrl+M"_s,
                        u"Window: Zoom "_s,
                    }));
}

TEST_F(Delegate, the_comma_opens_the_settings)
{
    launch();

    QTest::keyClick(&window(), Qt::Key_Comma, Qt::ControlModifier);

    EXPECT_TRUE(model().showSettings());
}

TEST_F(Delegate, the_edit_menu_works_the_field_with_the_focus)
{
    launch();
    auto *field = focused<QLineEdit>();
    field->setText(u"holiday"_s);

    item(u"Edit"_s, u"Select All"_s)->trigger();
    item(u"Edit"_s, u"Copy"_s)->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), u"holiday"_s);

    item(u"Edit"_s, u"Cut"_s)->trigger();
    EXPECT_EQ(field->text(), QString());

    item(u"Edit"_s, u"Paste"_s)->trigger();
    item(u"Edit"_s, u"Paste"_s)->trigger();
    EXPECT_EQ(field->text(), u"holidayholiday"_s);
}

TEST_F(Delegate, the_edit_menu_works_numbers_and_longer_texts_too)
{
    launch();
    auto *number = focused<QSpinBox>();
    number->setValue(25);
    item(u"Edit"_s, u"Select All"_s)->trigger();
    item(u"Edit"_s, u"Copy"_s)->trigger();

    auto *text = focused<QPlainTextEdit>();
    item(u"Edit"_s, u"Paste"_s)->trigger();

    EXPECT_EQ(text->toPlainText(), u"25"_s);
}

TEST_F(Delegate, the_edit_menu_leaves_all_alone_when_nothing_is_edited)
{
    launch();
    QApplication::clipboard()->setText(u"kept"_s);

    for (const QString &title : {u"Cut"_s, u"Copy"_s, u"Paste"_s, u"Select All"_s}) {
        item(u"Edit"_s, title)->trigger();
    }

    EXPECT_EQ(QApplication::clipboard()->text(), u"kept"_s);
}

TEST_F(Delegate, zoom_fills_the_screen_and_goes_back)
{
    launch();
    QAction *zoom = item(u"Window"_s, u"Zoom"_s);

    zoom->trigger();
    EXPECT_TRUE(window().isMaximized());
    zoom->trigger();
    EXPECT_FALSE(window().isMaximized());
}

TEST_F(Delegate, a_window_out_of_sight_comes_back_when_the_program_is_called)
{
    launch();
    for (QAction *action :
         {item(u"Window"_s, u"Minimize"_s), item(u"Morvix"_s, u"Hide Morvix"_s)}) {
        action->trigger();
        EXPECT_TRUE(window().isMinimized());

        m_delegate->applicationActivate(u"a token"_s);

        EXPECT_FALSE(window().isMinimized());
        EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"))
            << "children would think it theirs";
    }
}

TEST_F(Delegate, a_window_that_filled_the_screen_still_does_when_it_comes_back)
{
    launch();
    window().performZoom();
    window().showMinimized();

    m_delegate->applicationActivate({});

    EXPECT_TRUE(window().isMaximized());
}

TEST_F(Delegate, the_about_box_tells_the_version_and_goes_when_it_is_closed)
{
    launch();

    item(u"Morvix"_s, u"About Morvix"_s)->trigger();

    const QPointer<QMessageBox> box = window().findChild<QMessageBox *>();
    ASSERT_TRUE(box);
    EXPECT_TRUE(box->isVisible());
    EXPECT_TRUE(box->text().contains(u"Version 0."_s)) << box->text().toStdString();
    EXPECT_FALSE(box->iconPixmap().isNull());
    box->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return box.isNull(); }));
}

TEST_F(Delegate, files_opened_with_the_program_come_in_without_a_job)
{
    m_films.write(u"one/a.mp4"_s, "x");
    launch();

    m_delegate->applicationOpen(
        {QUrl::fromLocalFile(m_films.path(u"one"_s)), QUrl(u"https://example.org/b.mp4"_s)}, {});

    ASSERT_TRUE(waitForFiles(1));
    EXPECT_EQ(model().sourceRoot(), m_films.url(u"one/"_s));
    EXPECT_TRUE(model().jobs().isEmpty());
    EXPECT_FALSE(model().showQueue());
}

TEST_F(Delegate, a_service_starts_its_job)
{
    const QUrl film = QUrl::fromLocalFile(m_films.write(u"a.mp4"_s, "x"));
    launch();
    model().setQueuePaused(true);

    m_delegate->performService(QuickAction::makeGIF, {film}, {});

    ASSERT_TRUE(EventLoop::waitFor([this] { return !model().jobs().isEmpty(); }, &model(),
                                   &AppModel::jobsChanged));
    EXPECT_EQ(model().jobs().first()->mode, JobMode(GifParams()));
}

TEST_F(Delegate, closing_the_window_quits)
{
    launch();

    EXPECT_EQ(runThrough([this] { window().close(); }), 0);
}

TEST_F(Delegate, quit_quits_from_the_menu_and_by_its_key)
{
    launch();

    EXPECT_EQ(runThrough([this] { item(u"Morvix"_s, u"Quit Morvix"_s)->trigger(); }), 0);
    EXPECT_EQ(runThrough([this] { QTest::keyClick(&window(), Qt::Key_Q, Qt::ControlModifier); }),
              0);
}

TEST_F(Delegate, closing_the_window_quits_though_the_drop_zone_floats)
{
    launch();
    DropZonePanelController::shared().setVisible(true, model());
    QPointer<DropZonePanelWindow> panel;
    for (QWidget *top : QApplication::topLevelWidgets()) {
        if (auto *found = qobject_cast<DropZonePanelWindow *>(top)) {
            panel = found;
        }
    }
    ASSERT_TRUE(panel);
    ASSERT_TRUE(panel->isVisible());

    EXPECT_EQ(runThrough([this] { window().close(); }), 0);
    m_delegate.reset();

    EXPECT_TRUE(panel.isNull());
}

TEST_F(Delegate, closing_the_drop_zone_quits_nothing)
{
    launch();
    QApplication::setQuitOnLastWindowClosed(true);
    DropZonePanelController::shared().setVisible(true, model());

    const int code = runThrough([this] {
        DropZonePanelController::shared().setVisible(false, model());
        // Behind what a last window that has gone would have posted.
        QTimer::singleShot(0, &window(), [] { QCoreApplication::exit(7); });
    });

    QApplication::setQuitOnLastWindowClosed(false);
    EXPECT_EQ(code, 7);
}

TEST_F(Delegate, closing_the_window_ends_running_jobs_and_cleans_up_behind_them)
{
    installFFmpeg("echo > \"$TMPDIR/mx-$$\"\n"
                  "trap 'rm -f \"$TMPDIR/mx-$$\"; exit 255' TERM\n"
                  "progress 2500000\n"
                  "await_gate\n");
    const VideoFile film = this->film(u"a.mp4"_s);
    const Gate closed(film);
    launch();
    model().enqueueProbed(film, oneMegabyte());
    const std::shared_ptr<Job> job = model().jobs().first();
    ASSERT_TRUE(EventLoop::waitFor([&] { return job->state() == Job::State(Job::Running{0.25}); },
                                   job.get(), &Job::stateChanged));
    const QStringList ofJob{m_tools.path(), u"-progress"_s};
    ASSERT_FALSE(Processes::withWords(ofJob).isEmpty());

    EXPECT_EQ(runThrough([this] { window().close(); }), 0);
    m_delegate.reset();

    EXPECT_TRUE(Processes::withWords(ofJob).isEmpty());
    EXPECT_EQ(m_temporary.names(), QStringList());
}
