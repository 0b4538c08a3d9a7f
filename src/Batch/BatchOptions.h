// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobMode.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <exception>
#include <optional>

/// A command line that can't be followed, in words for its writer.
class UsageError : public std::exception
{
public:
    explicit UsageError(QString message) : m_message(std::move(message)) {}

    const QString &message() const { return m_message; }
    const char *what() const noexcept override { return "UsageError"; }

private:
    QString m_message;
};

/// What one call of morvix-batch asks for.
struct BatchOptions {
    enum class Request { run, help, version };
    enum class Output { text, json };
    enum class Running { real, dry, estimate };

    Request request = Request::run;
    Output output = Output::text;
    Running running = Running::real;
    JobMode mode;
    /// A queue file in the place of an action and files.
    std::optional<QUrl> queueFile;
    /// The one entry of it that is meant, counted from 0; absent for all.
    std::optional<qint64> entry;
    /// Files and folders.
    QList<QUrl> files;
    std::optional<QUrl> outputDirectory;
    /// Jobs that run side by side; absent for the user's setting.
    std::optional<qint64> jobsAtOnce;

    /// Reads the arguments after the program's name. Throws UsageError.
    static BatchOptions parse(const QStringList &arguments);
    static QString helpText();
};
