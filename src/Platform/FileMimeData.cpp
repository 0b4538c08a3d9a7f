// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/FileMimeData.h"

#include <QByteArrayList>
#include <QStringList>

using namespace Qt::StringLiterals;

std::unique_ptr<QMimeData> makeFileMimeData(const QList<QUrl> &files)
{
    QByteArrayList copied{"copy"};
    QStringList paths;
    for (const QUrl &file : files) {
        copied += file.toEncoded(QUrl::FullyEncoded);
        paths += file.toLocalFile();
    }
    auto data = std::make_unique<QMimeData>();
    data->setUrls(files);
    data->setText(paths.join(u'\n'));
    data->setData(u"x-special/gnome-copied-files"_s, copied.join('\n'));
    // "1" would be files that are to be moved.
    data->setData(u"application/x-kde-cutselection"_s, "0");
    return data;
}
