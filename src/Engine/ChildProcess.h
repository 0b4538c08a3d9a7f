// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FileDescriptor.h"

#include <QElapsedTimer>

#include <mutex>
#include <sys/types.h>

/// A child that has been launched, leader of a process group of its own.
class ChildProcess
{
public:
    /// Takes over a launched child. The pipes' read ends are blocking.
    ChildProcess(pid_t pid, FileDescriptor pidFd, FileDescriptor standardOutput,
                 FileDescriptor standardError);
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;
    /// Kills and reaps a child that nobody waited for.
    ~ChildProcess();

    pid_t pid() const { return m_pid; }
    /// Becomes readable when the child ends (pidfd_open(2)).
    int pidFd() const { return m_pidFd.get(); }
    int standardOutput() const { return m_standardOutput.get(); }
    int standardError() const { return m_standardError.get(); }

    /// Asks the child's whole group to end (SIGTERM). From any thread, any number of times: one
    /// that still runs five seconds after the first request is killed by the next. Nothing happens
    /// once the child has been waited for.
    void terminate();

    /// Blocks until the child has ended and reaps it. Gives the exit status, or the number of the
    /// signal that ended it: non-zero in both cases of failure.
    qint32 wait();

private:
    void signalGroup(int signal) const;

    const pid_t m_pid;
    const FileDescriptor m_pidFd;
    const FileDescriptor m_standardOutput;
    const FileDescriptor m_standardError;
    // Guards m_reaped, so that no signal goes to a number that the system has given away again.
    std::mutex m_lock;
    bool m_reaped = false;
    // Since the first request to end; guarded by the same lock.
    QElapsedTimer m_sinceRequest;
};
