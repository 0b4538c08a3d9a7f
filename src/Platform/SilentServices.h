// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/PlatformServices.h"

/// Services for a program without a desktop: they do nothing, the program is always active, no
/// colours are preferred, and no file goes to a trash.
PlatformServices makeSilentServices();

/// The same, but the computer doesn't suspend by itself while it is asked not to.
PlatformServices makeHeadlessServices();
