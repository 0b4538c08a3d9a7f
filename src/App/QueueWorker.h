// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QTimer>

class AppModel;

/// One worker of the queue: takes waiting jobs in the order of the list, one after the other, until
/// there is none, and then ends for good. Lives on the main thread; belongs to the application
/// object.
class QueueWorker : public QObject
{
    Q_OBJECT

public:
    explicit QueueWorker(AppModel &model);

    /// Begins at the next turn of the event loop.
    void start();
    /// Ends it at the head of its loop: a job in hand runs on to its end. It then deletes itself.
    void cancel();

private:
    enum class State { waitingToStart, sleeping, running, ended };

    void drainQueue();
    void continueSoon();
    void end();

    AppModel &m_model;
    State m_state = State::waitingToStart;
    bool m_isCancelled = false;
    QTimer m_pause;
};
