// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JsonCodec.h"

#include <QByteArray>
#include <QString>

/// The JSON files that the program keeps and exchanges: lists of records. What a file holds is
/// never trusted: it is refused within a second, however large, deep or wrong it is.
namespace JsonFile {

/// No file above this is read or written.
constexpr qint64 mostBytes = 67'108'864;
/// Nor is one parsed that has more commas and opening brackets, which is room for some twenty
/// thousand entries: what a parser spends goes by the values rather than by the bytes. Eight
/// million lists in lists took it one second and half a gigabyte.
constexpr qsizetype mostValues = 1'000'000;

/// `Morvix` in the user's folder of data: where the lists of presets and watched folders are kept.
QString listsDirectory();

/// What a JSON text says: an array or an object. Throws Json::DecodeError, also where a key stands
/// twice in one object.
QJsonValue parsed(const QByteArray &json);

/// What a file says. Throws FileError when it can't be read, isn't a regular file or is too large,
/// and Json::DecodeError when it isn't JSON.
QJsonValue read(const QString &path);

/// The list that a file holds; empty when it can't be read or when anything in it is refused.
template <typename Record> QList<Record> readListOrNothing(const QString &path)
{
    try {
        return Json::decode<QList<Record>>(read(path));
    } catch (const std::exception &) {
        return {};
    }
}

enum class Layout { indented, compact };

/// The JSON text of a list, its keys sorted.
QByteArray text(const QJsonArray &array, Layout layout);

/// Puts the bytes in the place of the file's, in one step: whoever reads it, or finds it after a
/// crash, sees the old content or the new one. Permissions and links stay. On false, the file is as
/// it was.
bool replace(const QString &path, const QByteArray &bytes);

/// Replaces the file by the list. False, with the file as it was, also when a record holds what no
/// reader would take, such as a number that isn't finite: one such entry would cost the whole list.
template <typename Record>
bool replaceByList(const QString &path, const QList<Record> &records, Layout layout)
{
    const QByteArray json = text(Json::encode(records).toArray(), layout);
    try {
        Json::decode<QList<Record>>(parsed(json));
    } catch (const Json::DecodeError &) {
        return false;
    }
    return replace(path, json);
}

} // namespace JsonFile
