// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/L10n.h"

#include <QString>
#include <QUrl>

#include <optional>

/// Finds what ffprobe would say in its own words only, or what would be passed over in silence: a
/// file that isn't there, can't be read, holds nothing or is no media file, and a folder without
/// any.
namespace InputCheck {

struct Problem {
    /// For the user.
    QString sentence;
    bool isMissing = false;
};

/// Absent when the file or folder is worth taking in.
std::optional<Problem> problem(const QUrl &url, AppLanguage language);

} // namespace InputCheck
