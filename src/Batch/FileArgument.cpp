// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/FileArgument.h"

#include "Engine/Text.h"

#include <QDir>
#include <QFileInfo>

// Joined as text: Qt takes a name that begins with ":" for one inside the program.
QUrl FileArgument::url(const QString &path)
{
    const QString absolute =
        path.startsWith(u'/') ? path : Text::joinedPath(QDir::currentPath(), path);
    const QString clean = QDir::cleanPath(absolute);
    const bool needsSlash = QFileInfo(clean).isDir() && !clean.endsWith(u'/');
    return QUrl::fromLocalFile(needsSlash ? clean + u'/' : clean);
}
