// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/ShellQuoting.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isPlain(QChar c)
{
    return (c.unicode() < 128 && c.isLetterOrNumber()) || u"_-+./:=,%@"_s.contains(c);
}

} // namespace

QString ShellQuoting::quoted(const QString &argument)
{
    if (!argument.isEmpty() && std::ranges::all_of(argument, isPlain)) {
        return argument;
    }
    QString inner = argument;
    inner.replace(u'\'', u"'\\''"_s);
    return u'\'' + inner + u'\'';
}

QString ShellQuoting::commandLine(const QString &program, const QStringList &args)
{
    QString line = quoted(program);
    for (const QString &argument : args) {
        line += u' ' + quoted(argument);
    }
    return line;
}
