// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/FileArgument.h"

#include "Engine/Text.h"

#include <QDir>

// Joined as text: Qt takes a name that begins with ":" for one inside the program.
QUrl FileArgument::url(const QString &path)
{
    const QString absolute =
        path.startsWith(u'/') ? path : Text::joinedPath(QDir::currentPath(), path);
    return QUrl::fromLocalFile(QDir::cleanPath(absolute));
}
