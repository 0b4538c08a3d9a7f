// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/PlanExecutor.h"
#include "Models/JobPlan.h"
#include "Models/VideoFile.h"
#include "support/Clips.h"
#include "support/TempFolder.h"

#include <QString>
#include <QStringList>
#include <QUrl>

#include <gtest/gtest.h>

#include <optional>
#include <string>

/// Films in a folder of their own, and plans run on them by the real ffmpeg, with stand-ins for
/// the encoders that the build lacks. The temporary folder is a folder of the test, too. Films
/// are of 320x180, of 25 frames a second, and a second long, where nothing else is said.
class MediaFixture : public ::testing::Test
{
protected:
    MediaFixture();

    /// H.264 with mono AAC, two seconds long unless the recipe says otherwise.
    VideoFile film(const QString &name = QStringLiteral("a.mp4"),
                   const Clips::Recipe &recipe = {}) const;
    /// What ffmpeg makes of the arguments. The test fails when ffmpeg does.
    VideoFile madeBy(const QString &name, const QStringList &args) const;
    /// A film out of one generator, encoded as the arguments say.
    VideoFile drawn(const QString &name, const QString &source, const QStringList &encoding) const;
    /// Of any size in pixels, odd ones too; encoded without loss.
    VideoFile silentFilm(const QString &size, double seconds = 1,
                         const QString &codec = QStringLiteral("ffv1")) const;
    /// A silent MP4 in HEVC.
    VideoFile hdrFilm(double seconds = 1) const;
    /// A silent MOV in ProRes.
    VideoFile alphaFilm() const;
    /// Two tones beside H.264 in a Matroska file, the first in AAC.
    VideoFile filmWithTwoTracks(const QString &secondCodec = QStringLiteral("aac")) const;
    /// The film, to be shown turned by the degrees, in an MP4.
    VideoFile turned(const VideoFile &file, int degrees = 90) const;

    /// The path of a recording with noise in the channels given.
    QString recording(const QString &name, double seconds, int channels) const;
    /// Noise in two channels, in a file with a blank in its name.
    QUrl stereoWav(double seconds) const;
    /// The path of a file with a second of subtitles.
    QString subtitles() const;

    /// Runs the plan with the encoders of this machine. Throws what the executor throws.
    ExecutionOutcome run(const JobPlan &plan) const;
    /// Runs a plan with one output and gives what came out.
    VideoFile resultOf(const JobPlan &plan) const;
    /// What the user reads of ffmpeg's refusal. The test fails when there is none.
    std::string wordsOfFailure(const JobPlan &plan) const;

    /// What stands in the temporary folder.
    QStringList scratchNames() const;

    TempFolder folder;

private:
    std::optional<ScopedEnvironment> m_temporary;
};

/// The picture of a generator, as an input of ffmpeg.
QStringList
pictureInput(const QString &source = QStringLiteral("testsrc2=size=320x180:rate=25:duration=1"));

/// A tone of one channel, as an input of ffmpeg.
QStringList toneInput(double seconds = 1);

/// Loud noise of one channel, as an input of ffmpeg.
QStringList noiseInput(double seconds);
