// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/Printing.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

/// A folder that goes with the test.
class TempFolder
{
public:
    TempFolder();

    QString path() const { return m_directory.path(); }
    /// Where a file of that name stands or would stand. Joined as text: Qt takes a name that begins
    /// with ":" for a place of its own.
    QString path(const QString &name) const { return path() + QChar(u'/') + name; }
    QUrl url(const QString &name) const { return QUrl::fromLocalFile(path(name)); }

    /// Writes a file and gives its path. Folders on the way are made.
    QString write(const QString &name, const QByteArray &content) const;
    /// Writes a file that may be executed.
    QString writeExecutable(const QString &name, const QByteArray &content) const;
    /// The names that stand in it, sorted.
    QStringList names() const;

private:
    QTemporaryDir m_directory;
};

/// The whole of a file; empty when it can't be read.
QByteArray contentOf(const QString &path);

/// Sets an environment variable until the test ends.
class ScopedEnvironment
{
public:
    ScopedEnvironment(const char *name, const QByteArray &value);
    ScopedEnvironment(const ScopedEnvironment &) = delete;
    ScopedEnvironment &operator=(const ScopedEnvironment &) = delete;
    ~ScopedEnvironment();

private:
    const char *m_name;
    QByteArray m_previous;
    bool m_wasSet;
};
