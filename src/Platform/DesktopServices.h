// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>
#include <QUrl>

/// What the desktop does with files. Main thread only; each returns at once but for the trash, and
/// says nothing of a failure.
class DesktopServices
{
public:
    virtual ~DesktopServices() = default;

    /// Shows the files selected in the file manager, or else their folders.
    virtual void reveal(const QList<QUrl> &files) = 0;
    /// In the program that the user chose for its type.
    virtual void open(const QUrl &file) = 0;
    /// False when the file is where it was. It is never deleted instead.
    virtual bool moveToTrash(const QUrl &file) = 0;
    /// To the clipboard, in the place of what it held.
    virtual void copyFiles(const QList<QUrl> &files) = 0;
    /// Begins an e-mail with the files. `parentWindow` is the window that asks, as the desktop
    /// portal names windows ("x11:" or "wayland:" and a handle); it may be empty.
    virtual void share(const QList<QUrl> &files, const QString &parentWindow) = 0;
};
