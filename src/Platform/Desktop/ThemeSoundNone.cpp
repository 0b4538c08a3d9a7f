// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Desktop/ThemeSound.h"

// For builds without a library for sounds.
bool ThemeSound::play(const char *)
{
    return false;
}
