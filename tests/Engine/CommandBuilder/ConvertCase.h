// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "support/GoldenLines.h"

/// What the tests of conversions start from.
namespace ConvertCase {

/// A case before it is planned: ten seconds of H.264 at four megabits with one AAC track, to be an
/// MP4, on a build that has x264 and VP9.
struct Given : GoldenLines::FilmCase<ConvertParams> {
    FFmpegToolset toolset =
        GoldenLines::offering({QStringLiteral("libx264"), QStringLiteral("libvpx-vp9")});

    Given()
    {
        file.url = QUrl::fromLocalFile(QStringLiteral("/films/a.mts"));
        file.fileSizeBytes = 6'000'000;
        file.videoBitrateBps = 4'000'000;
        addAudio(QStringLiteral("aac"));
    }

    void subtitles(const QStringList &codecs)
    {
        for (const QString &codec : codecs) {
            SubtitleStream stream;
            stream.codec = codec;
            file.subtitleStreams.append(stream);
        }
    }

    // What a WebM takes by copy.
    void vp9AndOpus()
    {
        file.videoCodec = QStringLiteral("vp9");
        sound({QStringLiteral("opus")});
    }

    JobPlan plan() const
    {
        return CommandBuilder::convert(file, params, toolset, std::nullopt, std::nullopt);
    }

    QStringList args() const { return plan().steps.first().args; }
};

} // namespace ConvertCase
