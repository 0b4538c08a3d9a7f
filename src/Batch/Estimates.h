// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/AppModel.h"
#include "Batch/BatchIntake.h"
#include "Batch/Report.h"

/// What the window would show of a job before it is queued.
namespace Estimates {

/// Of a probed item, in the language of the model.
EstimatedJob estimatedJob(const BatchItem &item, const AppModel &model);

} // namespace Estimates
