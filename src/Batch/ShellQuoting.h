// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

/// A command line as a POSIX shell takes it.
namespace ShellQuoting {

QString quoted(const QString &argument);
QString commandLine(const QString &program, const QStringList &args);

} // namespace ShellQuoting
