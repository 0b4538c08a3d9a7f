// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/JsonCodec.h"

using namespace Qt::StringLiterals;

namespace Json {

DecodeError::DecodeError(QString problem) : m_problem(std::move(problem)) {}

void DecodeError::prepend(const QString &place)
{
    if (m_path.isEmpty()) {
        m_path = place;
    } else {
        m_path = m_path.startsWith(u'[') ? place + m_path : place + u'.' + m_path;
    }
}

QString DecodeError::errorDescription() const
{
    return m_path.isEmpty() ? m_problem : m_path + u": "_s + m_problem;
}

bool Codec<bool>::decode(const QJsonValue &json)
{
    if (!json.isBool()) {
        throw DecodeError(u"true or false is expected"_s);
    }
    return json.toBool();
}

qint64 Codec<qint64>::decode(const QJsonValue &json)
{
    // toInteger() gives its default for a number with a fraction or beyond the range; two different
    // defaults tell that from a number that happens to equal one.
    if (!json.isDouble() || json.toInteger(0) != json.toInteger(1)) {
        throw DecodeError(u"a whole number is expected"_s);
    }
    return json.toInteger();
}

double Codec<double>::decode(const QJsonValue &json)
{
    if (!json.isDouble()) {
        throw DecodeError(u"a number is expected"_s);
    }
    return json.toDouble();
}

QString Codec<QString>::decode(const QJsonValue &json)
{
    if (!json.isString()) {
        throw DecodeError(u"a text is expected"_s);
    }
    QString text = json.toString();
    // JSON can spell half a surrogate pair, which no UTF-8 text holds.
    if (!text.isValidUtf16()) {
        throw DecodeError(u"a text of whole characters is expected"_s);
    }
    return text;
}

QJsonValue Codec<QUrl>::encode(const QUrl &value)
{
    return QString::fromLatin1(value.toEncoded(QUrl::FullyEncoded));
}

QUrl Codec<QUrl>::decode(const QJsonValue &json)
{
    QUrl url(Json::decode<QString>(json), QUrl::StrictMode);
    if (!url.isValid()) {
        throw DecodeError(u"a URL is expected"_s);
    }
    return url;
}

QUuid Codec<QUuid>::decode(const QJsonValue &json)
{
    const QString text = Json::decode<QString>(json);
    const QUuid id = QUuid::fromString(text);
    // QUuid also reads a form with braces, and gives the null UUID for rubbish.
    if (text.size() != 36 || (id.isNull() && text != QUuid().toString(QUuid::WithoutBraces))) {
        throw DecodeError(u"a UUID is expected"_s);
    }
    return id;
}

} // namespace Json
