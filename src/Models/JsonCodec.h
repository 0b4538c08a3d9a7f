// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/RawValues.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <exception>
#include <optional>
#include <tuple>
#include <utility>

/// The strict JSON form of plain records: an object keyed by the field names, enumerations by their
/// raw values, absent optionals left out. A missing key of a field that isn't optional, a value of
/// a wrong type and an unknown enumeration word each refuse the whole document; unknown keys are
/// ignored. Numbers follow RFC 8259: a whole number is one however it is written (25, 25.0, 2.5e1).
namespace Json {

/// Why a document was refused, with the path of the value that is to blame.
class DecodeError : public std::exception
{
public:
    explicit DecodeError(QString problem);

    /// Puts the name of the enclosing value in front of the path.
    void prepend(const QString &place);

    /// Fixed English, such as "advanced.crf: a whole number is expected".
    QString errorDescription() const;
    const char *what() const noexcept override { return "JSON document refused"; }

private:
    QString m_path;
    QString m_problem;
};

/// What the decoder does with a key.
enum class Reading { read, neverRead };

/// One field of a record: its key and where it is kept.
template <typename Record, typename Member> struct Field {
    constexpr Field(const char *key, Member Record::*place, Reading mode = Reading::read)
        : name(key)
        , member(place)
        , reading(mode)
    {
    }

    QLatin1StringView name;
    Member Record::*member;
    Reading reading;
};

/// The fields of a record. Specialised beside each record that has a JSON form, as
/// `static constexpr std::tuple list`.
template <typename Record> struct Fields;

template <typename Type>
concept Record = requires
{
    Fields<Type>::list;
};

template <typename Value> struct Codec;

template <typename Value> QJsonValue encode(const Value &value)
{
    return Codec<Value>::encode(value);
}

/// Throws DecodeError.
template <typename Value> Value decode(const QJsonValue &json)
{
    return Codec<Value>::decode(json);
}

template <> struct Codec<bool> {
    static QJsonValue encode(bool value) { return value; }
    static bool decode(const QJsonValue &json);
};

template <> struct Codec<qint64> {
    static QJsonValue encode(qint64 value) { return value; }
    static qint64 decode(const QJsonValue &json);
};

template <> struct Codec<double> {
    static QJsonValue encode(double value) { return value; }
    static double decode(const QJsonValue &json);
};

template <> struct Codec<QString> {
    static QJsonValue encode(const QString &value) { return value; }
    static QString decode(const QJsonValue &json);
};

/// The absolute, percent-encoded form.
template <> struct Codec<QUrl> {
    static QJsonValue encode(const QUrl &value);
    static QUrl decode(const QJsonValue &json);
};

/// The standard text form of RFC 9562, without braces.
template <> struct Codec<QUuid> {
    static QJsonValue encode(const QUuid &value) { return value.toString(QUuid::WithoutBraces); }
    static QUuid decode(const QJsonValue &json);
};

template <RawValued Enum> struct Codec<Enum> {
    static QJsonValue encode(Enum value) { return rawValue(value); }
    static Enum decode(const QJsonValue &json)
    {
        const QString word = Json::decode<QString>(json);
        if (const std::optional<Enum> value = fromRawValue<Enum>(word)) {
            return *value;
        }
        throw DecodeError(QStringLiteral("the word \"%1\" isn't known").arg(word));
    }
};

template <typename Value> struct Codec<QList<Value>> {
    static QJsonValue encode(const QList<Value> &values)
    {
        QJsonArray array;
        for (const Value &value : values) {
            array.append(Json::encode(value));
        }
        return array;
    }

    static QList<Value> decode(const QJsonValue &json)
    {
        if (!json.isArray()) {
            throw DecodeError(QStringLiteral("a list is expected"));
        }
        QList<Value> values;
        for (const QJsonValue element : json.toArray()) {
            try {
                values.append(Json::decode<Value>(element));
            } catch (DecodeError &error) {
                error.prepend(QStringLiteral("[%1]").arg(values.size()));
                throw;
            }
        }
        return values;
    }
};

namespace Detail {

template <typename Value>
void encodeField(QJsonObject &object, QLatin1StringView name, const Value &value)
{
    object.insert(name, Json::encode(value));
}

template <typename Value>
void encodeField(QJsonObject &object, QLatin1StringView name, const std::optional<Value> &value)
{
    if (value) {
        object.insert(name, Json::encode(*value));
    }
}

template <typename Value> void decodeField(const QJsonValue &json, Value &value)
{
    if (json.isUndefined()) {
        throw DecodeError(QStringLiteral("the key is missing"));
    }
    value = Json::decode<Value>(json);
}

template <typename Value> void decodeField(const QJsonValue &json, std::optional<Value> &value)
{
    if (json.isUndefined() || json.isNull()) {
        value.reset();
    } else {
        value = Json::decode<Value>(json);
    }
}

template <typename Type, typename Member>
void decodeField(const QJsonObject &object, const Field<Type, Member> &field, Type &record)
{
    if (field.reading == Reading::neverRead) {
        return;
    }
    try {
        decodeField(object.value(field.name), record.*field.member);
    } catch (DecodeError &error) {
        error.prepend(field.name);
        throw;
    }
}

} // namespace Detail

template <Record Type> struct Codec<Type> {
    static QJsonValue encode(const Type &record)
    {
        QJsonObject object;
        std::apply(
            [&](const auto &...field) {
                (Detail::encodeField(object, field.name, record.*field.member), ...);
            },
            Fields<Type>::list);
        return object;
    }

    static Type decode(const QJsonValue &json)
    {
        if (!json.isObject()) {
            throw DecodeError(QStringLiteral("an object is expected"));
        }
        const QJsonObject object = json.toObject();
        Type record;
        std::apply([&](const auto &...field) { (Detail::decodeField(object, field, record), ...); },
                   Fields<Type>::list);
        return record;
    }
};

} // namespace Json
