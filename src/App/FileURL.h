// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>
#include <QUrl>

/// Files as they come in from outside: from a command line, a drop, a dialog or the session bus.
/// A folder's URL ends in a slash, which is the mark by which the rest of the program knows it; the
/// world outside rarely sets it, so it is set here. Asks the disk: from any thread.
namespace FileURL {

/// The file URL of a path; a relative one is of the current folder. Any name is taken as it is.
QUrl ofPath(const QString &path);

/// The file URL of a word that may be a path or a file URL. A URL of another kind reads as a path.
QUrl ofArgument(const QString &argument);

/// The files of this machine among URLs of any kind, in their order and as often as they come.
QList<QUrl> filesAmong(const QList<QUrl> &urls);

} // namespace FileURL
