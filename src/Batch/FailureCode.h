// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobPlan.h"
#include "Models/VideoFile.h"

#include <exception>
#include <optional>

/// What a scheduler can act on: the exit code for the failure of one job.
namespace FailureCode {

/// `plan` is absent when planning itself failed.
int of(const std::exception_ptr &failure, const VideoFile &input,
       const std::optional<JobPlan> &plan);

} // namespace FailureCode
