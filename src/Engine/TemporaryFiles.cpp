// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/TemporaryFiles.h"

#include "Engine/Text.h"

#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

void TemporaryFiles::removeLeftovers(const QSet<QUuid> &fileIDs)
{
    if (fileIDs.isEmpty()) {
        return;
    }
    static const QRegularExpression identity(
        u"[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}"_s);
    QDir directory = QDir::temp();
    for (const QString &name : directory.entryList({u"mx-*"_s}, QDir::Files | QDir::Hidden)) {
        const QUuid id(identity.match(name).captured());
        if (!id.isNull() && fileIDs.contains(id)) {
            directory.remove(name);
        }
    }
}
