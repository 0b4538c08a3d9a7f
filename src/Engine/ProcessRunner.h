// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/ChildProcess.h"

#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <memory>

/// How a child ended and what it wrote.
struct ProcessResult {
    qint32 exitCode = 0;
    QString standardOutput;
    QString standardError;

    bool operator==(const ProcessResult &) const = default;
};

/// The one place that starts child processes.
namespace ProcessRunner {

/// Takes the handle of a child that has just been launched: from then on it can be terminated.
using OnSpawn = std::function<void(std::shared_ptr<ChildProcess>)>;
/// Takes one line of standard output. Called on the caller's thread; it must not block for long.
using OnStdoutLine = std::function<void(const QString &line)>;

/// Runs a child with the null device as its input and blocks until it has ended: call it off the
/// main thread. `onStdoutLine` gets each line as it comes. Gives a result with exit code 0; throws
/// EngineError::processFailed for any other status, for a death by signal, and, with -1, for a
/// failed launch, in which case neither callback is called.
ProcessResult runAsync(const QUrl &url, const QStringList &args, const OnSpawn &onSpawn,
                       const OnStdoutLine &onStdoutLine);

/// Runs a child for a short question and blocks until it has ended. Never throws: a failed launch
/// is an exit code of -1 with the system's words as standard error. Standard output is read to its
/// end before standard error, so a child that fills the one before closing the other blocks.
ProcessResult runSync(const QUrl &url, const QStringList &args, const OnSpawn &onSpawn = {});

} // namespace ProcessRunner
