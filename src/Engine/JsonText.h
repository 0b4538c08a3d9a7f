// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

/// JSON as text, before it is parsed.
namespace JsonText {

/// The same document with U+FEFF at the head of a text escaped: Qt's parser takes it there for a
/// mark of the byte order and drops it. Behind a quotation mark that is escaped itself, the escape
/// says the same as the character.
inline QByteArray keepingMarks(QByteArray json)
{
    return json.replace("\"\xEF\xBB\xBF", "\"\\ufeff");
}

} // namespace JsonText
