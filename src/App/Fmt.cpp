// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/Fmt.h"

#include "Engine/Text.h"

#include <QLatin1StringView>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double leastSaving = 0.01;
constexpr double roundingOfDoubles = 1e-12;
// Some three hundred million years; what is longer wouldn't fit an integer.
constexpr double mostSeconds = 1e16;

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

QString Fmt::time(double seconds)
{
    // Asked this way round, what isn't a number counts as 0 as well.
    const double held = seconds > 0 ? std::min(seconds, mostSeconds) : 0;
    const auto whole = static_cast<qint64>(held);
    const auto twoDigits = [](qint64 value) { return u"%1"_s.arg(value, 2, 10, QChar(u'0')); };
    const qint64 minutes = whole / 60;
    const QString end = u':' + twoDigits(whole % 60);
    return minutes < 60 ? QString::number(minutes) + end
                        : QString::number(minutes / 60) + u':' + twoDigits(minutes % 60) + end;
}

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
    return u'\u2212' + Text::fixed(std::trunc(saved * 100), 0) + u'%';
}
