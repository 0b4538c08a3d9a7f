// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QObject>
#include <QTimer>

#include <chrono>

/// The event loop in tests, which run without one of the application's own.
namespace EventLoop {

constexpr std::chrono::seconds limit{10};

/// Runs events until the condition holds. It is asked at once, and then after each event that
/// brought one of the sender's signals. False when that takes longer than the limit.
template <typename Condition, typename Sender, typename... Signals>
bool waitFor(Condition condition, const Sender *sender, Signals... signals)
{
    if (condition()) {
        return true;
    }
    QEventLoop loop;
    const auto look = [&] {
        if (condition()) {
            loop.quit();
        }
    };
    (QObject::connect(sender, signals, &loop, look, Qt::QueuedConnection), ...);
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    loop.exec();
    return condition();
}

/// Delivers what has been posted so far and what that posts in turn; waits for nothing.
inline void deliverPosted()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

} // namespace EventLoop
