// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/JsonKeys.h"

#include "Models/JsonCodec.h"
#include "Models/Utf8.h"

#include <QJsonDocument>
#include <QSet>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

// Its quotes included.
QByteArrayView quotedTextAt(const QByteArray &json, qsizetype start)
{
    qsizetype end = start + 1;
    while (json.at(end) != '"') {
        end += json.at(end) == '\\' ? 2 : 1;
    }
    return QByteArrayView(json).sliced(start, end + 1 - start);
}

qsizetype skipBlanks(const QByteArray &json, qsizetype from)
{
    const auto isBlank = [](char byte) {
        return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
    };
    return std::find_if_not(json.begin() + from, json.end(), isBlank) - json.begin();
}

// The parser's own reading of escapes, which takes more of them than the standard has.
QString unquoted(QByteArrayView text)
{
    if (!text.contains('\\')) {
        return decodedUtf8(text.sliced(1, text.size() - 2));
    }
    return QJsonDocument::fromJson('[' + text.toByteArray() + ']').array().at(0).toString();
}

} // namespace

std::optional<QString> JsonKeys::firstRepeated(const QByteArray &json)
{
    // The keys of the objects that are open at this place. The parser bounds their depth.
    std::vector<QSet<QString>> open;
    qsizetype at = 0;
    while (at < json.size()) {
        const char byte = json.at(at);
        if (byte != '"') {
            if (byte == '{') {
                open.emplace_back();
            } else if (byte == '}') {
                open.pop_back();
            }
            ++at;
            continue;
        }
        const QByteArrayView text = quotedTextAt(json, at);
        at = skipBlanks(json, at + text.size());
        if (at < json.size() && json.at(at) == ':') {
            QString key = unquoted(text);
            if (open.back().contains(key)) {
                return key;
            }
            open.back().insert(std::move(key));
        }
    }
    return std::nullopt;
}

void JsonKeys::requireDistinct(const QByteArray &json)
{
    if (const std::optional<QString> key = firstRepeated(json)) {
        throw Json::DecodeError(u"the key \"%1\" stands twice in one object"_s.arg(*key));
    }
}
