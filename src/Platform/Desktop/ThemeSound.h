// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

/// Sounds of the desktop's sound theme. The means are asked for with the first one.
class ThemeSound
{
public:
    ThemeSound();
    ~ThemeSound();

    /// Begins to play the sound of that name in the naming standard for sounds; false when it can't
    /// be had, without a word. Takes milliseconds.
    bool play(const char *name);

private:
    struct Player;

    /// Null where there is none.
    std::unique_ptr<Player> m_player;
};
