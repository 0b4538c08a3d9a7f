// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/FileURL.h"

#include "Engine/Text.h"

#include <QDir>
#include <QFileInfo>
#include <QSysInfo>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

// Some programs put the name of the machine into their URLs.
bool isOfThisMachine(const QUrl &url)
{
    const QString host = url.host();
    return host.isEmpty() || host == "localhost"_L1 ||
           host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
}

/// Absent for what isn't a file of this machine.
std::optional<QUrl> fileOf(const QUrl &url)
{
    if (!url.isLocalFile() || !isOfThisMachine(url)) {
        return std::nullopt;
    }
    QUrl local = url;
    local.setHost(QString());
    const QString path = local.toLocalFile();
    return path.startsWith(u'/') ? std::optional(FileURL::ofPath(path)) : std::nullopt;
}

} // namespace

// Joined as text: Qt takes a name that begins with ":" for one inside the program.
QUrl FileURL::ofPath(const QString &path)
{
    const QString absolute =
        path.startsWith(u'/') ? path : Text::joinedPath(QDir::currentPath(), path);
    const QString clean = QDir::cleanPath(absolute);
    const bool needsSlash = QFileInfo(clean).isDir() && !clean.endsWith(u'/');
    return QUrl::fromLocalFile(needsSlash ? clean + u'/' : clean);
}

QUrl FileURL::ofArgument(const QString &argument)
{
    // Only with its slash: "file:a.mp4" may well be the name of a file.
    const bool isURL = argument.startsWith("file:/"_L1, Qt::CaseInsensitive);
    return (isURL ? fileOf(QUrl(argument)) : std::nullopt).value_or(ofPath(argument));
}

QList<QUrl> FileURL::filesAmong(const QList<QUrl> &urls)
{
    QList<QUrl> files;
    for (const QUrl &url : urls) {
        if (const std::optional<QUrl> file = fileOf(url)) {
            files.append(*file);
        }
    }
    return files;
}
