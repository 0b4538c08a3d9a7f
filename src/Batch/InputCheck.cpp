// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/InputCheck.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

std::optional<QString> InputCheck::problem(const QUrl &file)
{
    const QFileInfo info(file.toLocalFile());
    if (!info.exists()) {
        return u"There is no such file."_s;
    }
    if (info.isDir()) {
        return u"This is a folder, not a film."_s;
    }
    // Opening a pipe would wait for its writer.
    if (!info.isFile()) {
        return u"This is no regular file."_s;
    }
    QFile input(info.filePath());
    if (!input.open(QIODevice::ReadOnly)) {
        return u"This file can't be read: %1."_s.arg(input.errorString());
    }
    if (info.size() == 0) {
        return u"This file is empty."_s;
    }
    return std::nullopt;
}
