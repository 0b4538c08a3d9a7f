// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QUrl>

/// A place as it stands on a command line.
namespace FileArgument {

/// The file URL of a path; a relative one is of the current folder. Any name is taken as it is.
QUrl url(const QString &path);

} // namespace FileArgument
