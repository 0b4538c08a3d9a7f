// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLatin1StringView>
#include <QString>

#include <array>
#include <concepts>
#include <cstddef>
#include <optional>

/// One case of an enumeration with its persisted text.
template <typename Enum> struct RawValue {
    Enum value;
    QLatin1StringView text;
};
template <typename Enum> RawValue(Enum, QLatin1StringView) -> RawValue<Enum>;

/// The persisted texts of an enumeration, in the order of its cases. Specialised beside each
/// enumeration that is written to JSON or to the settings, as `static constexpr std::array table`.
template <typename Enum> struct RawValues;

/// An enumeration that has a table of raw values.
template <typename Enum>
concept RawValued = requires
{
    RawValues<Enum>::table;
};

/// All cases, in declaration order.
template <RawValued Enum> constexpr auto allCases()
{
    constexpr auto &table = RawValues<Enum>::table;
    std::array<Enum, table.size()> cases{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        cases[i] = table[i].value;
    }
    return cases;
}

/// The persisted text of a case.
template <RawValued Enum> QString rawValue(Enum value)
{
    for (const auto &row : RawValues<Enum>::table) {
        if (row.value == value) {
            return row.text;
        }
    }
    Q_UNREACHABLE();
}

/// The case with that text, compared to the letter; absent when there is none.
template <RawValued Enum> std::optional<Enum> fromRawValue(const QString &text)
{
    for (const auto &row : RawValues<Enum>::table) {
        if (row.text == text) {
            return row.value;
        }
    }
    return std::nullopt;
}
