// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/SignalWatcher.h"

#include <QSocketNotifier>

#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

std::array<int, 2> signalPipe{-1, -1};
std::atomic<bool> hasCaught = false;

void handleSignal(int signalNumber)
{
    if (hasCaught.exchange(true)) {
        ::_exit(128 + signalNumber);
    }
    const auto number = static_cast<char>(signalNumber);
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[1], &number, 1);
}

} // namespace

SignalWatcher::SignalWatcher(QObject *parent) : QObject(parent)
{
    if (::pipe2(signalPipe.data(), O_CLOEXEC) != 0) {
        return;
    }
    auto *notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char number = 0;
        if (::read(signalPipe[0], &number, 1) == 1) {
            Q_EMIT caught(number);
        }
    });
    struct sigaction action {
    };
    action.sa_handler = handleSignal;
    action.sa_flags = SA_RESTART;
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP}) {
        ::sigaction(signalNumber, &action, nullptr);
    }
}
