// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QUrl>

/// The desktop's trash.
namespace Trash {

/// False when the file is where it was: when it is missing or can't be moved, or when there is no
/// trash for it. It is never deleted instead. Blocks as long as the move takes.
bool move(const QUrl &file);

} // namespace Trash
