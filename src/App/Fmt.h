// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLocale>
#include <QString>

/// The texts of numbers as the user reads them.
namespace Fmt {

/// A size in decimal units: "Zero KB", "1 byte", "999 bytes", "12 KB", "3.4 MB", "1.25 GB". The
/// unit is chosen after rounding, so 999,950 bytes are "1 MB".
QString bytes(qint64 count, const QLocale &locale = QLocale::system());

} // namespace Fmt
