// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/ActionKind.h"
#include "Models/JobParams.h"

#include <variant>

/// What one job does: one case an action that makes output, each with its parameters. It has no
/// persisted form of its own.
using JobMode =
    std::variant<TargetSizeParams, ConvertParams, CompressParams, ExtractParams, TrimParams,
                 GifParams, EnhanceParams, MergeParams, SplitParams, AdjustParams>;

/// The action of the same name.
ActionKind actionOf(const JobMode &mode);

/// Key of the mode's title: the one of the action of the same name.
QString l10nKey(const JobMode &mode);

/// The symbol of the action of the same name.
QString symbolName(const JobMode &mode);
