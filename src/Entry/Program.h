// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/SignalWatcher.h"
#include "Entry/ApplicationService.h"

#include <QObject>

#include <memory>

class AppDelegate;
class ColorScheme;
class QueueProgress;

/// One start of the program, from the question whether it runs already to its end. Main thread
/// only; lives inside the application object's event loop.
class Program : public QObject
{
    Q_OBJECT

public:
    explicit Program(const LaunchRequest &request);
    ~Program() override;

    /// Shows the window, or ends the event loop with an exit code.
    void start();

private:
    void launch();
    void followColorScheme(const std::shared_ptr<ColorScheme> &scheme);
    void connectDesktop();

    const QList<QUrl> m_files;
    SignalWatcher m_signals;
    std::unique_ptr<AppDelegate> m_delegate;
    std::unique_ptr<QueueProgress> m_progress;
    std::unique_ptr<ApplicationService> m_service;
};
