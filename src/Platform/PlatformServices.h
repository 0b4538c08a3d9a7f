// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/ApplicationState.h"
#include "Platform/DoneSound.h"
#include "Platform/Notifier.h"
#include "Platform/SleepInhibitor.h"

#include <memory>

/// What the desktop gives to the application object. None is ever null.
struct PlatformServices {
    std::shared_ptr<DoneSound> doneSound;
    std::shared_ptr<Notifier> notifier;
    std::shared_ptr<ApplicationState> applicationState;
    std::shared_ptr<SleepInhibitor> sleepInhibitor;
};
