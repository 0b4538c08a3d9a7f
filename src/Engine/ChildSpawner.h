// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/ChildProcess.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <mutex>

/// What a child reads from.
enum class StandardInput { null, inherited };

/// What to launch: an executable's path (no search) and the arguments after the program's name.
struct ChildCommand {
    QString executable;
    QStringList args;
    StandardInput standardInput = StandardInput::null;
};

/// A child that couldn't be launched.
class LaunchError : public std::exception
{
public:
    explicit LaunchError(QString reason) : m_reason(std::move(reason)) {}

    /// The system's words, with the path.
    const QString &reason() const { return m_reason; }
    const char *what() const noexcept override { return "LaunchError"; }

private:
    QString m_reason;
};

/// Starts all children, from one thread that lives as long as the program: the signal that ends
/// them when the program dies (PR_SET_PDEATHSIG, prctl(2)) is tied to the thread that starts them.
namespace ChildSpawner {

/// Blocks until the child runs the executable. From any thread. Throws LaunchError.
std::unique_ptr<ChildProcess> spawn(const ChildCommand &command);

/// Held while the environment is read for a child. Whoever changes it in a program that runs holds
/// this until it is as before: the C library's environment may not be read while it changes.
std::mutex &environmentLock();

} // namespace ChildSpawner
