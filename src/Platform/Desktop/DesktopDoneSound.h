// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Desktop/ThemeSound.h"
#include "Platform/DoneSound.h"

/// The sound theme's sound for what is complete, and the window system's beep.
class DesktopDoneSound : public DoneSound
{
public:
    bool play() override;
    void beep() override;

private:
    ThemeSound m_sound;
};
