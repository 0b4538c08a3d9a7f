// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/EngineError.h"
#include "Engine/PlanExecutor.h"
#include "Models/JobPlan.h"
#include "Models/VideoFile.h"
#include "support/TempFolder.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <optional>

/// Films in a folder of their own, and plans run on them by the real ffmpeg. The temporary folder
/// is a folder of the test, too.
class MediaFixture : public ::testing::Test
{
protected:
    MediaFixture();

    /// A film made by ffmpeg, as the program sees it. The test fails when ffmpeg does.
    VideoFile madeBy(const QString &name, const QStringList &args) const;
    /// A recording with one track of noise in the channels given.
    QString recording(const QString &name, double seconds, int channels) const;

    /// Runs the plan with the encoders of this machine. Throws what the executor throws.
    ExecutionOutcome run(const JobPlan &plan) const;
    /// Runs the plan and gives its one output.
    VideoFile resultOf(const JobPlan &plan) const;
    /// How the run failed. The test fails when it didn't.
    std::optional<EngineError> failureOf(const JobPlan &plan) const;
    /// What ffmpeg said when it failed; empty, and a failed test, when it didn't.
    std::string wordsOfFailure(const JobPlan &plan) const;

    /// What stands in the temporary folder.
    QStringList scratchNames() const;

    TempFolder folder;

private:
    std::optional<ScopedEnvironment> m_temporary;
};

/// A silent picture out of ffmpeg's generator, as an input.
QStringList pictureInput(const QString &source);

/// A tone of one channel, as an input.
QStringList toneInput(double seconds);
