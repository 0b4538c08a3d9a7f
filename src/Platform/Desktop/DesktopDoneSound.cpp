// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Desktop/DesktopDoneSound.h"

#include <QApplication>

bool DesktopDoneSound::play()
{
    return m_sound.play("complete");
}

void DesktopDoneSound::beep()
{
    QApplication::beep();
}
