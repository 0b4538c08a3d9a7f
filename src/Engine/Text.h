// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <QUrl>
#include <QUuid>

#include <optional>

/// Numbers, places and identities as they stand on command lines and in tool output: always in the
/// C locale.
namespace Text {

/// What C's "%.<decimals>f" prints. QString's own formatting rounds ties away from zero ("0.3" for
/// 0.25), C rounds them to even ("0.2").
QString fixed(double value, int decimals);

/// The whole text as a decimal number: no blanks, no leading "+", nothing left over, no "inf",
/// "nan" or hexadecimal. Absent when it doesn't read.
std::optional<double> toDouble(QStringView text);

/// The whole text as a decimal integer, by the same rules.
std::optional<qint64> toInteger(QStringView text);

/// The last characters of a text; all of it when it is shorter. Never cuts a surrogate pair.
QString lastCharacters(const QString &text, qsizetype count);

/// The path of a URL as ffmpeg takes it. A URL that isn't a file's gives its path part.
QString path(const QUrl &url);

/// The place of a name in a folder. Joined as text: QDir would take a name that begins with "/" or
/// ":" for a place of its own.
QString joinedPath(const QString &directory, const QString &name);

/// A path before and behind the dot of its extension.
struct SplitPath {
    QString stem;
    /// Without the dot; empty when there is none.
    QString extension;
};

/// The extension is what follows the last dot of the last component; a leading dot hides a file and
/// starts no extension, and nothing behind a last dot is none either.
SplitPath splitExtension(const QString &path);

/// Sorts by code points, canonically equivalent texts counting as equal: the same order in every
/// locale.
void sortPlainly(QStringList &texts);

/// The identity as it stands in temporary names.
QString uuid(const QUuid &id);

} // namespace Text
