// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Keeps the computer from suspending; the screen may still go dark. Main thread only. Destroying
/// it gives the hold back.
class SleepInhibitor
{
public:
    virtual ~SleepInhibitor() = default;

    /// Asks for the hold; a call while it is held or being asked for does nothing. Returns at once.
    /// Where nobody can grant it, it stays without effect and without a word, and the next call
    /// asks again. `reason` is for the user.
    virtual void hold(const QString &reason) = 0;

    /// Gives the hold back, and one that is granted only later as soon as it comes; does nothing
    /// when there is none.
    virtual void release() = 0;
};
