// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/QueueWorker.h"

#include "App/AppModel.h"

#include <chrono>

namespace {

constexpr std::chrono::milliseconds pauseInterval{300};

} // namespace

QueueWorker::QueueWorker(AppModel &model) : QObject(&model), m_model(model)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseInterval);
    connect(&m_pause, &QTimer::timeout, this, &QueueWorker::drainQueue);
}

void QueueWorker::start()
{
    continueSoon();
}

void QueueWorker::cancel()
{
    m_isCancelled = true;
    if (m_state == State::sleeping || m_state == State::ended) {
        m_pause.stop();
        end();
    }
}

// The loop's body. No other worker can come between the look for a job and its first change of
// state, so two never take the same one.
void QueueWorker::drainQueue()
{
    if (m_isCancelled) {
        end();
        return;
    }
    if (m_model.queuePaused()) {
        m_state = State::sleeping;
        m_pause.start();
        return;
    }
    const std::shared_ptr<Job> job = m_model.nextQueuedJob();
    if (!job) {
        end();
        return;
    }
    m_state = State::running;
    m_model.run(job, [this] { continueSoon(); });
}

// By way of the event loop: a long row of jobs that fail at once would grow the stack otherwise.
void QueueWorker::continueSoon()
{
    QMetaObject::invokeMethod( // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
        this, &QueueWorker::drainQueue, Qt::QueuedConnection);
}

void QueueWorker::end()
{
    m_state = State::ended;
    if (m_isCancelled) {
        deleteLater();
    }
}
