// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSet>
#include <QUuid>

/// Removes what the runs of probed files may leave in the temporary directory: a losing attempt
/// upward and x264's macroblock trees. The next job of the same file overwrites them; nobody else
/// has a use for them.
namespace TemporaryFiles {

void removeLeftovers(const QSet<QUuid> &fileIDs);

} // namespace TemporaryFiles
