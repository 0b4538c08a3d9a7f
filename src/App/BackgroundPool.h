// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QThread>
#include <QThreadPool>

#include <chrono>
#include <utility>

/// Threads of our own for work that blocks. Results come back to the main thread in the order in
/// which the work ends; those of a pool that is gone are dropped.
class BackgroundPool : public QObject
{
    Q_OBJECT

public:
    BackgroundPool(int threads, QThread::Priority priority)
    {
        m_pool.setMaxThreadCount(threads);
        m_pool.setThreadPriority(priority);
    }

    /// Runs `work` on a thread of the pool and hands what it gives to `done` on the main thread.
    template <typename Work, typename Done> void run(Work work, Done done)
    {
        m_pool.start([this, work = std::move(work), done = std::move(done)]() mutable {
            // Moved on, so that what `done` holds is let go on the main thread too.
            post([result = work(), done = std::move(done)] { done(result); });
        });
    }

    /// Has the main thread call `call`, and let go there of what it holds. From any thread; calls
    /// keep their order.
    template <typename Call> void post(Call call)
    {
        // Qt keeps the object that it calls for the poster too, who may let go of it last: what
        // that object holds is moved out of it before the call.
        auto calledOnce = [call = std::move(call)]() mutable {
            const auto now = std::move(call);
            now();
        };
        QMetaObject::invokeMethod( // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
            this, std::move(calledOnce), Qt::QueuedConnection);
    }

    /// Forgets the work that hasn't begun, and waits at most so long for the rest; false when some
    /// is still under way.
    bool finish(std::chrono::milliseconds patience)
    {
        m_pool.clear();
        return m_pool.waitForDone(static_cast<int>(patience.count()));
    }

private:
    QThreadPool m_pool;
};
