// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Command.h"

#include <QProcess>
#include <QProcessEnvironment>

CommandResult runCommand(const QString &program, const QStringList &args,
                         const QMap<QString, QString> &environment)
{
    QProcess process;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (auto [name, value] : environment.asKeyValueRange()) {
        variables.insert(name, value);
    }
    process.setProcessEnvironment(variables);
    process.start(program, args);
    process.waitForFinished(-1);
    const int exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return {exitCode, process.readAllStandardOutput(), process.readAllStandardError()};
}
