// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Panels/EstimateKey.h"

#include "Engine/Text.h"

#include <QLocale>

using namespace Qt::StringLiterals;

QString EstimateKey::number(double value)
{
    const QString text = QString::number(value, 'f', QLocale::FloatingPointShortest);
    const bool isWhole = !text.contains(u'.') && !text.contains(u'n');
    return isWhole ? text + u".0"_s : text;
}

QString EstimateKey::number(std::optional<double> value)
{
    return number(value.value_or(-1));
}

QString EstimateKey::truth(bool value)
{
    return value ? u"true"_s : u"false"_s;
}

QString EstimateKey::id(const QUuid &id)
{
    return Text::uuid(id);
}

QString EstimateKey::joined(const QStringList &pieces)
{
    return pieces.join(u'-');
}
