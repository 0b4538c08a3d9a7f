// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegToolset.h"
#include "Models/Job.h"
#include "Models/JobPlan.h"

#include <QString>
#include <QUrl>

#include <optional>

/// The one place that knows all the builders: a mode joins the system by its case here.
namespace JobPlanner {

/// Throws BuilderError.
JobPlan plan(const Job &job, const std::optional<FFmpegToolset> &toolset,
             const std::optional<QUrl> &outputDirectory,
             const std::optional<QString> &namingTemplate);

} // namespace JobPlanner
