// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// Finds what ffprobe would say in its own words only: a file that isn't there, can't be read, is
/// a folder or holds nothing.
namespace InputCheck {

/// The sentence for the user; absent when the file is worth a probe.
std::optional<QString> problem(const QUrl &file);

} // namespace InputCheck
