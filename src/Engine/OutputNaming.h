// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// What a finished file is called. Nothing here makes a file or reserves a name.
namespace OutputNaming {

/// The base name of an output, without its extension: the template with {name}, {suffix}, {ext} and
/// {date} replaced in this order, or "name-suffix" where the template is absent or blank. The date
/// is today in the user's short style; nothing in the result is sanitised, so a date with "/" leads
/// into sub-folders.
QString renderBase(const QUrl &source, const QString &suffix, const QString &ext,
                   const std::optional<QString> &nameTemplate);

/// The URL itself when nothing stands there, else the first free of "name 2.ext" to "name 999.ext",
/// else "name-UUID.ext".
QUrl unique(const QUrl &url);

} // namespace OutputNaming
