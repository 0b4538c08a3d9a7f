// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobPlan.h"

/// ffmpeg's concat filter tells no frame rate when its inputs differ in theirs. ffmpeg then takes
/// the time base for one, and fills a film up to a million frames a second. Between planning and
/// running, such a line is told to pass frames on at their own times.
namespace FrameTiming {

/// The plan with "-fps_mode vfr" (ffmpeg's documentation, "Advanced Video options") before the
/// output of each step that joins by filter and says nothing of its rate itself.
JobPlan apply(JobPlan plan);

} // namespace FrameTiming
