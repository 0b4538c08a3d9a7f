// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/QuickAction.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>

#include <memory>

class AppModel;
class DesktopServices;
class FileDialogs;
class MainWindow;
class QMenuBar;
class ServicesHandler;

/// Builds the program's objects and answers its menu and the desktop. There is one, which lives as
/// long as the program has a window. Main thread only.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    AppDelegate(std::unique_ptr<AppModel> appModel, std::shared_ptr<DesktopServices> desktop);
    /// Takes the windows away, and then ends all work.
    ~AppDelegate() override;

    /// Makes menu, services and window, and shows the window; its content follows as it appears.
    void applicationDidFinishLaunching();

    AppModel &appModel() { return *m_appModel; }
    /// Null before the launch has finished.
    MainWindow *window() { return m_window.get(); }

    // What the desktop asks for. `activationToken` is what allows the window to come to the front.

    /// Takes in files that were opened with the program. Starts no job.
    void applicationOpen(const QList<QUrl> &urls, const QString &activationToken);
    void applicationActivate(const QString &activationToken);
    void performService(QuickAction action, const QList<QUrl> &urls,
                        const QString &activationToken);

    // What the menu asks for.

    void orderFrontStandardAboutPanel();
    void openSettings();
    void hide();
    void terminate();
    /// These four do to the editor that has the focus what they say, and nothing without one.
    void cut();
    void copy();
    void paste();
    void selectAll();
    void performMiniaturize();
    void performZoom();

private:
    void buildMenu();
    void registerServices();
    void makeMainWindow();
    void furnishMainWindow();
    /// What can wait until the content is seen, and would hold it up otherwise.
    void finishBehindWindow();

    std::unique_ptr<AppModel> m_appModel;
    const std::shared_ptr<DesktopServices> m_desktop;
    const std::unique_ptr<FileDialogs> m_dialogs;
    std::unique_ptr<QMenuBar> m_menu;
    std::unique_ptr<ServicesHandler> m_servicesHandler;
    std::unique_ptr<MainWindow> m_window;
};
