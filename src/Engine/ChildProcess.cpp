// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ChildProcess.h"

#include <cerrno>
#include <csignal>
#include <sys/wait.h>

namespace {

constexpr qint64 patienceMs = 5'000;

} // namespace

ChildProcess::ChildProcess(pid_t pid, FileDescriptor pidFd, FileDescriptor standardOutput,
                           FileDescriptor standardError)
    : m_pid(pid)
    , m_pidFd(std::move(pidFd))
    , m_standardOutput(std::move(standardOutput))
    , m_standardError(std::move(standardError))
{
}

ChildProcess::~ChildProcess()
{
    if (!m_reaped) {
        signalGroup(SIGKILL);
        wait();
    }
}

void ChildProcess::terminate()
{
    const std::scoped_lock guard(m_lock);
    if (!m_sinceRequest.isValid()) {
        m_sinceRequest.start();
    }
    signalGroup(m_sinceRequest.hasExpired(patienceMs) ? SIGKILL : SIGTERM);
}

// Under the lock, so that no signal goes to a number that the system has given away again.
void ChildProcess::signalGroup(int signal) const
{
    if (!m_reaped) {
        ::kill(-m_pid, signal);
    }
}

qint32 ChildProcess::wait()
{
    siginfo_t info{};
    const auto id = static_cast<id_t>(m_pidFd.get());
    // First without reaping, so that the lock isn't held while the child lives.
    while (::waitid(P_PIDFD, id, &info, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
    }
    const std::scoped_lock guard(m_lock);
    int waited = -1;
    do {
        waited = ::waitid(P_PIDFD, id, &info, WEXITED);
    } while (waited != 0 && errno == EINTR);
    m_reaped = true;
    // A status that can't be had is never taken for success.
    return waited == 0 ? info.si_status : -1;
}
