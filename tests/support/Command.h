// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

/// How a program of ours ended and what it printed.
struct CommandResult {
    int exitCode = -1;
    QByteArray out;
    QByteArray errors;
};

/// Runs a program to its end, with changes to the environment.
CommandResult runCommand(const QString &program, const QStringList &args,
                         const QMap<QString, QString> &environment = {});
