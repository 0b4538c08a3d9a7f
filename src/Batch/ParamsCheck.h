// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/L10n.h"
#include "Models/JobMode.h"

#include <QString>

#include <optional>

/// Finds what no plan can follow, whatever the film. The controls of the window keep their values
/// in range; a command line and a queue file hold what was written.
namespace ParamsCheck {

/// For the user, with the field in front of it; absent when the parameters can be used.
std::optional<QString> problem(const JobMode &mode, AppLanguage language);

} // namespace ParamsCheck
