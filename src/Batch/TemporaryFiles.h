// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QUuid>

/// Removes what the runs of one probed file may leave in the temporary directory: a losing attempt
/// upward and x264's macroblock trees. The window overwrites them at its next job of that file;
/// here no job of the same probe follows.
namespace TemporaryFiles {

void removeLeftovers(const QUuid &fileID);

} // namespace TemporaryFiles
