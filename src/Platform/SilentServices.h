// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/PlatformServices.h"

/// Services for a program without a desktop: no sound, no message, no hold on the computer's
/// sleep, and always active.
PlatformServices makeSilentServices();

/// The same, but the computer doesn't suspend by itself while it is asked not to.
PlatformServices makeHeadlessServices();
