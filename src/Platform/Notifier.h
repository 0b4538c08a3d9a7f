// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Shows a message of the desktop. Main thread only; returns at once, and says nothing where the
/// user or the desktop doesn't want it.
class Notifier
{
public:
    virtual ~Notifier() = default;

    /// `body` is plain text.
    virtual void post(const QString &title, const QString &body) = 0;
};
