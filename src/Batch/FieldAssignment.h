// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/FileURL.h"
#include "Engine/JsonKeys.h"
#include "Engine/JsonText.h"
#include "Models/JsonCodec.h"

#include <QJsonDocument>

/// Sets fields of a parameter record by their JSON names, as a command line gives them:
/// "targetMB" = "8", "advanced.codec" = "hevcVideoToolbox", "advanced.crop" = {"aspect":…}.
namespace FieldAssignment {

namespace Detail {

// A number, a truth value, a list or an object as JSON has it.
inline QJsonValue parsedFragment(const QString &text)
{
    const QByteArray document = JsonText::keepingMarks("[" + text.toUtf8() + "]");
    const QJsonArray array = QJsonDocument::fromJson(document).array();
    if (array.size() != 1) {
        return text;
    }
    JsonKeys::requireDistinct(document);
    return array.first();
}

template <typename Value> struct FromText {
    static QJsonValue json(const QString &text) { return parsedFragment(text); }
};

template <> struct FromText<QString> {
    static QJsonValue json(const QString &text) { return text; }
};

template <RawValued Enum> struct FromText<Enum> {
    static QJsonValue json(const QString &text) { return text; }
};

// A path is as welcome as a file URL.
template <> struct FromText<QUrl> {
    static QJsonValue json(const QString &text)
    {
        const bool isPath = !text.isEmpty() && !text.startsWith(QLatin1StringView("file:/"));
        return isPath ? Json::encode(FileURL::ofPath(text)) : QJsonValue(text);
    }
};

template <typename Value> struct FromText<std::optional<Value>> {
    static QJsonValue json(const QString &text) { return FromText<Value>::json(text); }
};

template <typename Value> void assign(Value &value, const QString &rest, const QString &text)
{
    if (!rest.isEmpty()) {
        throw Json::DecodeError(QStringLiteral("there is no such field"));
    }
    value = Json::decode<Value>(FromText<Value>::json(text));
}

// Ahead of its use for a record that may be absent.
template <Json::Record Record>
void assign(Record &record, const QString &path, const QString &text);

template <typename Value>
void assign(std::optional<Value> &value, const QString &rest, const QString &text)
{
    Value present = value.value_or(Value{});
    assign(present, rest, text);
    value = present;
}

template <Json::Record Record> void assign(Record &record, const QString &path, const QString &text)
{
    if (path.isEmpty()) {
        record = Json::decode<Record>(parsedFragment(text));
        return;
    }
    const QString name = path.section(u'.', 0, 0);
    const auto assignIfNamed = [&](const auto &field) {
        if (name != field.name || field.reading == Json::Reading::neverRead) {
            return false;
        }
        assign(record.*field.member, path.section(u'.', 1), text);
        return true;
    };
    try {
        const bool found =
            std::apply([&](const auto &...field) { return (assignIfNamed(field) || ...); },
                       Json::Fields<Record>::list);
        if (!found) {
            throw Json::DecodeError(QStringLiteral("there is no such field"));
        }
    } catch (Json::DecodeError &error) {
        error.prepend(name);
        throw;
    }
}

} // namespace Detail

/// Sets one field. Throws Json::DecodeError, which names the field.
template <Json::Record Record> void assign(Record &record, const QString &path, const QString &text)
{
    Detail::assign(record, path, text);
}

} // namespace FieldAssignment
