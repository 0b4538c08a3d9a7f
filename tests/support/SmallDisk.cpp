// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/SmallDisk.h"

#include "support/Command.h"

#include <QDir>

using namespace Qt::StringLiterals;

QStringList onSmallDisk(const QString &folder, int kilobytes)
{
    const QString script =
        u"mount -t tmpfs -o size=%1k none \"$0\" && exec \"$@\""_s.arg(kilobytes);
    QDir().mkpath(folder);
    for (const QStringList &options : {QStringList{u"-m"_s}, QStringList{u"-rm"_s}}) {
        const QStringList words =
            QStringList{u"unshare"_s} + options + QStringList{u"sh"_s, u"-c"_s, script, folder};
        if (runCommand(words.first(), words.sliced(1) + QStringList{u"true"_s}).exitCode == 0) {
            return words;
        }
    }
    return {};
}
