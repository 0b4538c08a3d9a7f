// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/TemporaryFiles.h"

#include "Engine/Text.h"

#include <QDir>

using namespace Qt::StringLiterals;

void TemporaryFiles::removeLeftovers(const QUuid &fileID)
{
    QDir directory = QDir::temp();
    const QStringList names =
        directory.entryList({u"mx-*"_s + Text::uuid(fileID) + u'*'}, QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        directory.remove(name);
    }
}
