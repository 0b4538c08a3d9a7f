// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Trash.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QTemporaryFile>

#include <algorithm>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// What the trash adds to a name, a number against doubles included, and what a folder takes.
constexpr qsizetype longestAddition = sizeof("-0000000.trashinfo") - 1;
constexpr qsizetype longestName = 255;

bool takesFiles(const QString &folder)
{
    if (!QDir().mkpath(folder)) {
        return false;
    }
    QTemporaryFile file(folder + u"/.morvix-XXXXXX"_s);
    return file.open();
}

bool isSound(const QString &trash)
{
    return takesFiles(trash + u"/files"_s) && takesFiles(trash + u"/info"_s);
}

// Those that the file's disk has already, which come before the user's own.
QStringList trashesOfDisk(const QString &path)
{
    const QString root = QStorageInfo(path).rootPath();
    const QString user = QString::number(::geteuid());
    QStringList trashes{root + u"/.Trash/"_s + user, root + u"/.Trash-"_s + user};
    trashes.removeIf([](const QString &trash) { return !QFileInfo(trash).isDir(); });
    return trashes;
}

// QFile::moveToTrash() tries a name after the other for ever where a trash takes none, and without
// a folder of the user's data it moves the file to where the program happens to run.
bool canTake(const QFileInfo &file)
{
    const QString dataFolder =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QFile::encodeName(file.fileName()).size() + longestAddition <= longestName &&
           isSound(dataFolder + u"/Trash"_s) &&
           std::ranges::all_of(trashesOfDisk(file.absoluteFilePath()), isSound);
}

} // namespace

bool Trash::move(const QUrl &file)
{
    const QFileInfo info(file.toLocalFile());
    return file.isLocalFile() && info.exists() && QFileInfo(info.absolutePath()).isWritable() &&
           canTake(info) && QFile::moveToTrash(info.absoluteFilePath());
}
