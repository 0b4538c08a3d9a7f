// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobMode.h"

#include <array>

/// A fixed job that is run at once on the files given, without a panel.
enum class QuickAction {
    compressSmart,
    compress25MB,
    convertMP4,
    extractAudio,
    makeGIF,
};

inline constexpr std::array allQuickActions{
    QuickAction::compressSmart, QuickAction::compress25MB, QuickAction::convertMP4,
    QuickAction::extractAudio,  QuickAction::makeGIF,
};

/// What the job does: the action's own defaults, whatever the user's settings are.
JobMode jobMode(QuickAction action);
