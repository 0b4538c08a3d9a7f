// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/PlatformServices.h"

/// The services of the user's desktop; the bus that most of them share is connected in the
/// background. Needs a QApplication, and is to be gone before it.
PlatformServices makeDesktopServices();
