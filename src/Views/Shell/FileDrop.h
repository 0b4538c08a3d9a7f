// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QUrl>

class QDragEnterEvent;
class QDropEvent;

/// Files that are dropped on a view.
namespace FileDrop {

/// Accepts a drag that brings URLs; whether it did.
bool accept(QDragEnterEvent *event);

/// Accepts the drop, whatever it brings, and gives the files of this machine among it.
QList<QUrl> take(QDropEvent *event);

} // namespace FileDrop
