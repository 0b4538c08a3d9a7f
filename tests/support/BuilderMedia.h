// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/EngineError.h"
#include "Engine/PlanExecutor.h"
#include "Models/JobPlan.h"
#include "support/Clips.h"
#include "support/TempFolder.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <optional>

/// Plans run by the real ffmpeg on films in a folder of their own, with stand-ins for the encoders
/// that the build lacks. The temporary folder is a folder of the test, too.
class BuilderMedia : public ::testing::Test
{
protected:
    BuilderMedia();

    /// Two seconds of picture and mono AAC, a keyframe each second.
    VideoFile film(const QString &name = QStringLiteral("a.mp4"));
    /// What ffmpeg makes of the arguments.
    VideoFile madeBy(const QString &name, const QStringList &args);
    /// A silent film out of a source of pictures, encoded as the arguments say.
    VideoFile drawn(const QString &name, const QString &picture, const QStringList &encoding);

    ExecutionOutcome run(const JobPlan &plan);
    /// Runs a plan with one output and gives what came out.
    VideoFile resultOf(const JobPlan &plan);
    /// What ffmpeg said when the plan failed. The test fails when it didn't.
    std::string failureOf(const JobPlan &plan);

    /// The names in the temporary folder.
    QStringList scratchNames() const;

    TempFolder folder;

private:
    std::optional<ScopedEnvironment> m_temporary;
};

/// The colour of each quarter of the picture at that second, row by row, among them R, G, B,
/// W(hite) and K (black).
QString quartersAt(const VideoFile &file, double seconds);

/// The colour at a place of the picture, as above.
QChar colourAt(const VideoFile &file, double seconds, qint64 x, qint64 y);

/// How loud a stretch is: the root mean square of its samples, 1 at full scale.
double loudnessOf(const VideoFile &file, double start, double seconds);

/// Expects one AAC track and the length in seconds.
void expectSoundAndLength(const VideoFile &file, double seconds);
