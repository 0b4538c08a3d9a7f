// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegToolset.h"
#include "Models/VideoFile.h"

#include <QString>
#include <QStringList>

/// Real films, made by the real ffmpeg.
namespace Clips {

/// The tools of this machine, with what they offer. Located once.
const FFmpegToolset &tools();

/// Runs ffmpeg on the arguments; the test fails when ffmpeg does.
void ffmpeg(const QStringList &args);

/// What a made film holds.
struct Recipe {
    QString size = QStringLiteral("320x180");
    int framesPerSecond = 25;
    double seconds = 2;
    /// Grain over the picture, 0 to 100: the more, the harder to compress.
    int noise = 0;
    bool hasAudio = true;
    /// Of the film itself.
    QString videoBitrate = QStringLiteral("2000k");
};

/// Makes a film at the path, in the container that its extension says.
void make(const QString &path, const Recipe &recipe);

/// A film as the program sees it.
VideoFile probe(const QString &path);

} // namespace Clips
