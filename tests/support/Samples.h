// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegToolset.h"
#include "Models/VideoFile.h"

#include <QSet>
#include <QString>

/// Values to plan with. Nothing stands at their paths.
namespace Samples {

/// An audio track of which only the codec is known.
inline AudioStream track(const QString &codec)
{
    AudioStream stream;
    stream.codec = codec;
    return stream;
}

/// Ten seconds of H.264, without sound, of unknown rate and size in bytes.
inline VideoFile tenSeconds()
{
    VideoFile file;
    file.url = QUrl::fromLocalFile(QStringLiteral("/films/a.mov"));
    file.durationSeconds = 10;
    file.videoCodec = QStringLiteral("h264");
    file.width = 1280;
    file.height = 720;
    return file;
}

/// A minute in HD: 8000 kilobits of picture, 128 of sound, 61 MB.
inline VideoFile minuteInHd()
{
    VideoFile file;
    file.url = QUrl::fromLocalFile(QStringLiteral("/films/a.mp4"));
    file.durationSeconds = 60;
    file.fileSizeBytes = 61'000'000;
    file.width = 1920;
    file.height = 1080;
    file.videoCodec = QStringLiteral("h264");
    file.videoBitrateBps = 8'000'000;
    file.fps = 30;
    file.audioStreams = {track(QStringLiteral("aac"))};
    file.audioStreams.first().bitrateBps = 128'000;
    return file;
}

/// A build that has the encoders.
inline FFmpegToolset offering(const QSet<QString> &encoders)
{
    FFmpegToolset toolset;
    toolset.encoders = encoders;
    return toolset;
}

} // namespace Samples
