// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/L10n.h"
#include "Models/Job.h"

#include <exception>

/// What a job becomes when running its plan fails.
namespace JobFailure {

/// Cancelled when the word came between two steps, else failed with a text for the user. A child
/// that was ended in the middle of a step is a failure like any other.
Job::State state(const std::exception_ptr &failure, AppLanguage language);

/// The failure's own description, for diagnostics.
QString description(const std::exception_ptr &failure);

} // namespace JobFailure
