// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/FakeTool.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

FakeTool::FakeTool(const TempFolder &folder, const QByteArray &body, const QString &name)
    : m_notes(folder.path(u"notes-"_s + name))
{
    QDir().mkpath(m_notes);
    const QByteArray head = "#!/bin/sh\n"
                            "notes='" +
                            m_notes.toUtf8() +
                            "'\n"
                            "run=1\n"
                            "while [ -e \"$notes/$run\" ]; do run=$((run + 1)); done\n"
                            "printf '%s\\0' \"$@\" > \"$notes/$run\"\n"
                            "for out in \"$@\"; do :; done\n";
    m_path = folder.writeExecutable(name, head + body);
}

int FakeTool::runs() const
{
    return static_cast<int>(QDir(m_notes).entryList(QDir::Files).size());
}

QStringList FakeTool::arguments(int run) const
{
    QStringList arguments =
        QString::fromUtf8(contentOf(m_notes + u'/' + QString::number(run))).split(QChar(u'\0'));
    arguments.removeLast();
    return arguments;
}
