// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// The sound that a finished job makes. Main thread only.
class DoneSound
{
public:
    virtual ~DoneSound() = default;

    /// Plays the finish sound of the desktop's theme; false when it can't be had.
    virtual bool play() = 0;

    /// The plain beep of the system.
    virtual void beep() = 0;
};
