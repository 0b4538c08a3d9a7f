// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QUrl>

/// A place as it stands on a command line.
namespace FileArgument {

/// The file URL of a path; a relative one is of the current folder. Any name is taken as it is. A
/// folder's ends in a slash: that is the mark by which a folder is known.
QUrl url(const QString &path);

} // namespace FileArgument
