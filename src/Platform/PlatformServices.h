// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/ApplicationState.h"
#include "Platform/ColorScheme.h"
#include "Platform/DesktopServices.h"
#include "Platform/DoneSound.h"
#include "Platform/LauncherProgress.h"
#include "Platform/Notifier.h"
#include "Platform/SleepInhibitor.h"

#include <memory>

/// What the desktop gives to the application object and to the window. None is ever null.
struct PlatformServices {
    std::shared_ptr<DoneSound> doneSound;
    std::shared_ptr<Notifier> notifier;
    std::shared_ptr<ApplicationState> applicationState;
    std::shared_ptr<SleepInhibitor> sleepInhibitor;
    std::shared_ptr<DesktopServices> desktopServices;
    std::shared_ptr<LauncherProgress> launcherProgress;
    std::shared_ptr<ColorScheme> colorScheme;
};
