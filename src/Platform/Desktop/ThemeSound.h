// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Sounds of the desktop's sound theme. The means are asked for with the first one.
class ThemeSound
{
public:
    /// Begins to play the sound of that name in the naming standard for sounds; false when it can't
    /// be had, without a word. Takes milliseconds.
    bool play(const char *name);
};
