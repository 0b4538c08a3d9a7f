// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/JsonFile.h"

#include "Engine/FileError.h"
#include "Engine/JsonKeys.h"
#include "Engine/JsonText.h"
#include "Engine/Text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// QSaveFile's own temporary files carry six letters behind the final name, which a user's backup
// copy may do as well. Ours are told from those by the program's prefix.
QString temporaryPath(const QFileInfo &target)
{
    return Text::joinedPath(target.path(), u"mx-"_s + target.fileName());
}

// What saves left that were killed before the last step.
void removeLeftovers(const QFileInfo &temporary)
{
    constexpr qsizetype randomLetters = 6;
    const QString start = temporary.fileName() + u'.';
    QDir directory(temporary.path());
    for (const QString &name : directory.entryList({u"mx-*"_s}, QDir::Files | QDir::Hidden)) {
        if (name.startsWith(start) && name.size() == start.size() + randomLetters) {
            directory.remove(name);
        }
    }
}

// On the disk before it takes the place of the old content: a file system may otherwise bring the
// new name but not the new bytes over a power failure.
bool isWrittenThrough(QSaveFile &file, const QByteArray &bytes)
{
    return file.write(bytes) == bytes.size() && file.flush() && ::fsync(file.handle()) == 0;
}

qsizetype separatorsIn(const QByteArray &json)
{
    return std::ranges::count_if(
        json, [](char byte) { return byte == ',' || byte == '[' || byte == '{'; });
}

bool rename(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

} // namespace

QString JsonFile::listsDirectory()
{
    return Text::joinedPath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
                            u"Morvix"_s);
}

QJsonValue JsonFile::parsed(const QByteArray &bytes)
{
    // Qt takes a NUL that stands in a text as it is, which JSON forbids.
    if (bytes.contains('\0')) {
        throw Json::DecodeError(u"NUL is no character of JSON"_s);
    }
    if (separatorsIn(bytes) > mostValues) {
        throw Json::DecodeError(u"the document has too many values"_s);
    }
    const QByteArray json = JsonText::keepingMarks(bytes);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        throw Json::DecodeError(error.errorString());
    }
    JsonKeys::requireDistinct(json);
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

QJsonValue JsonFile::read(const QString &path)
{
    const QUrl url = QUrl::fromLocalFile(path);
    const QFileInfo info(path);
    // A pipe would be waited for, a device never ends.
    if (info.exists() && !info.isFile()) {
        throw FileError(url, u"This is no regular file"_s);
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw FileError(url, file.errorString());
    }
    if (file.size() > mostBytes) {
        throw FileError(url, u"The file is too large"_s);
    }
    return parsed(file.read(file.size()));
}

QByteArray JsonFile::text(const QJsonArray &array, Layout layout)
{
    // Qt spreads an empty list over two lines.
    if (array.isEmpty()) {
        return "[]"_ba;
    }
    return QJsonDocument(array).toJson(layout == Layout::indented ? QJsonDocument::Indented
                                                                  : QJsonDocument::Compact);
}

bool JsonFile::replace(const QString &path, const QByteArray &bytes)
{
    const QFileInfo place(path);
    const bool mayBeReplaced = !place.exists() || (place.isFile() && place.isWritable());
    if (bytes.size() > mostBytes || !mayBeReplaced) {
        return false;
    }
    const QFileInfo target(place.exists() ? place.canonicalFilePath() : path);
    const QString temporary = temporaryPath(target);
    removeLeftovers(QFileInfo(temporary));

    QSaveFile file(temporary);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    if (target.exists()) {
        file.setPermissions(target.permissions());
    }
    if (!isWrittenThrough(file, bytes) || !file.commit()) {
        return false;
    }
    const bool isDone = rename(temporary, target.filePath());
    if (!isDone) {
        QFile::remove(temporary);
    }
    return isDone;
}
