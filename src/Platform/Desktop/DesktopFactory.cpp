// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Desktop/DesktopFactory.h"

#include "Platform/Bus/BusLauncherProgress.h"
#include "Platform/Bus/BusNotifier.h"
#include "Platform/Bus/DBusSleepInhibitor.h"
#include "Platform/Bus/PortalColorScheme.h"
#include "Platform/Bus/SessionBus.h"
#include "Platform/Desktop/DesktopDoneSound.h"
#include "Platform/Desktop/FreeDesktopServices.h"
#include "Platform/Desktop/GuiApplicationState.h"

PlatformServices makeDesktopServices()
{
    const auto bus = std::make_shared<SessionBus>();
    return {.doneSound = std::make_shared<DesktopDoneSound>(),
            .notifier = std::make_shared<BusNotifier>(bus),
            .applicationState = std::make_shared<GuiApplicationState>(),
            .sleepInhibitor = std::make_shared<DBusSleepInhibitor>(),
            .desktopServices = std::make_shared<FreeDesktopServices>(bus),
            .launcherProgress = std::make_shared<BusLauncherProgress>(bus),
            .colorScheme = std::make_shared<PortalColorScheme>(bus)};
}
