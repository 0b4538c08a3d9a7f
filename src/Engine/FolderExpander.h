// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QUrl>

/// Turns what the user drops, files and folders alike, into media files. Looks at names only.
namespace FolderExpander {

/// What one list holds at most.
constexpr qsizetype mostFiles = 500;

/// The lower-case file extensions that count as media: those of videos and six of sound.
const QSet<QString> &mediaExtensions();

/// The media files among the URLs and in the folders under them, in walking order with each folder
/// sorted by name, each path once. Hidden entries are passed over, six levels are read, and the
/// list ends at 500, without a word. Reads the file system: from any thread.
QList<QUrl> expand(const QList<QUrl> &urls);

} // namespace FolderExpander
