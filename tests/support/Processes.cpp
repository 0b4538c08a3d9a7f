// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Processes.h"

#include "support/TempFolder.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QThread>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int deadlineMs = 10'000;
constexpr int pollMs = 5;

// Empty for a process that has ended and is only waited for.
QString commandLine(const QString &pid)
{
    // A file of /proc has no size; it is read to its end all the same.
    return QString::fromUtf8(contentOf(u"/proc/"_s + pid + u"/cmdline"_s));
}

} // namespace

QList<qint64> Processes::withWords(const QStringList &words)
{
    QList<qint64> found;
    for (const QString &name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        bool isPid = false;
        const qint64 pid = name.toLongLong(&isPid);
        const QString line = isPid ? commandLine(name) : QString();
        if (!line.isEmpty() &&
            std::ranges::all_of(words, [&](const QString &word) { return line.contains(word); })) {
            found.append(pid);
        }
    }
    return found;
}

bool Processes::eventually(const std::function<bool()> &holds)
{
    const QDeadlineTimer deadline(deadlineMs);
    while (!holds()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QThread::msleep(pollMs);
    }
    return true;
}
