// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/Fmt.h"

#include "Engine/Text.h"

#include <QLatin1StringView>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double leastSaving = 0.01;
constexpr double roundingOfDoubles = 1e-12;

struct Unit {
    QLatin1StringView name;
    double bytes;
    int decimals;
};

constexpr std::array units{
    Unit{"KB"_L1, 1e3, 0},  Unit{"MB"_L1, 1e6, 1},  Unit{"GB"_L1, 1e9, 2},
    Unit{"TB"_L1, 1e12, 2}, Unit{"PB"_L1, 1e15, 2}, Unit{"EB"_L1, 1e18, 2},
};

double rounded(double bytes, const Unit &unit)
{
    const double scale = std::pow(10, unit.decimals);
    return std::round(bytes / unit.bytes * scale) / scale;
}

QString number(double value, int decimals, const QLocale &locale)
{
    QLocale plain = locale;
    plain.setNumberOptions(QLocale::OmitGroupSeparator);
    QString text = plain.toString(value, 'f', decimals);
    while (decimals > 0 && text.endsWith(locale.zeroDigit())) {
        text.chop(1);
    }
    if (text.endsWith(locale.decimalPoint())) {
        text.chop(1);
    }
    return text;
}

} // namespace

QString Fmt::bytes(qint64 count, const QLocale &locale)
{
    if (count == 0) {
        return u"Zero KB"_s;
    }
    const double size = std::abs(static_cast<double>(count));
    if (size < 1000) {
        return locale.toString(count) + (count == 1 ? u" byte"_s : u" bytes"_s);
    }
    std::size_t i = 0;
    while (i + 1 < units.size() && rounded(size, units.at(i)) >= 1000) {
        ++i;
    }
    const Unit &unit = units.at(i);
    const double value = std::copysign(rounded(size, unit), static_cast<double>(count));
    return number(value, unit.decimals, locale) + u' ' + unit.name;
}

QString Fmt::mb(double value)
{
    return Text::fixed(value, value == std::round(value) ? 0 : 1) + u" MB"_s;
}

std::optional<QString> Fmt::saving(qint64 originalBytes, qint64 newBytes)
{
    if (originalBytes <= 0) {
        return std::nullopt;
    }
    const double saved = 1 - static_cast<double>(newBytes) / static_cast<double>(originalBytes);
    // A saving of exactly 1 % is a hair off in doubles.
    if (saved <= leastSaving + roundingOfDoubles) {
        return std::nullopt;
    }
    return u'\u2212' + QString::number(static_cast<int>(saved * 100)) + u'%';
}
