// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Batch/Report.h"
#include "Engine/FFmpegToolset.h"
#include "Engine/HardwareEncoders.h"
#include "Engine/PlanExecutor.h"
#include "Models/JobParams.h"

#include <QUrl>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <variant>

/// One file on its way under a size: probe, plan, run.
class TargetSizeJob
{
public:
    /// What all jobs of a call share.
    struct Settings {
        TargetSizeParams params;
        FFmpegToolset toolset;
        std::optional<QUrl> outputDirectory;
        std::shared_ptr<HardwareEncoders> encoders;
    };

    /// How it ended: well, or with a sentence for the user.
    using Result = std::variant<FinishedJob, QString>;

    TargetSizeJob(QUrl input, Settings settings);

    const QUrl &input() const { return m_input; }

    /// Blocks until the job has ended: call it off the main thread. `onProgress` is called on that
    /// same thread.
    Result run(const PlanExecutor::OnProgress &onProgress);

    /// Plans without running; blocks for the probe. The text is a sentence for the user.
    std::variant<PlannedJob, QString> plan();

    /// From any thread.
    void cancel();

private:
    struct Planned;

    Planned makePlan() const;
    FinishedJob execute(const Planned &planned, const PlanExecutor::OnProgress &onProgress);

    const QUrl m_input;
    const Settings m_settings;
    PlanExecutor m_executor;
};
