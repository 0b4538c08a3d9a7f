// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/AppModel.h"

class DesktopServices;
class FileDialogs;

/// What every view is given. All of it outlives every view.
struct ViewContext {
    AppModel &model;
    DesktopServices &desktop;
    FileDialogs &dialogs;
};
