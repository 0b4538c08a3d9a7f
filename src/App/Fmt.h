// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLocale>
#include <QString>

#include <optional>

/// The texts of numbers as the user reads them.
namespace Fmt {

/// A length or a place in a film in whole seconds, the rest cut off: "0:07", "12:05", "1:02:03".
/// What is negative counts as 0.
QString time(double seconds);

/// A size in decimal units: "Zero KB", "1 byte", "999 bytes", "12 KB", "3.4 MB", "1.25 GB". The
/// unit is chosen after rounding, so 999,950 bytes are "1 MB".
QString bytes(qint64 count, const QLocale &locale = QLocale::system());

/// A whole or fractional number of megabytes: "25 MB", "8.5 MB".
QString mb(double value);

/// How much smaller the second size is, as "−65%"; absent for a saving of 1 % or less.
std::optional<QString> saving(qint64 originalBytes, qint64 newBytes);

} // namespace Fmt
