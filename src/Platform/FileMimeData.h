// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QMimeData>
#include <QUrl>

#include <memory>

/// Files for the clipboard or for dragging out of a window: to copy, in the forms that the file
/// managers of the desktops understand, and as paths for what takes text.
std::unique_ptr<QMimeData> makeFileMimeData(const QList<QUrl> &files);
