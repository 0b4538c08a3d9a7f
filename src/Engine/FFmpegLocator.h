// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegToolset.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QUrl>

#include <optional>

/// Finds ffmpeg and ffprobe on the machine. Touched by the main thread only; no lock.
class FFmpegLocator
{
public:
    static FFmpegLocator &shared();

    /// Looks in `bundledDirectory()`, then in `candidateDirs`, then
    /// in the folders of PATH; the first place that has both tools wins, and only its ffmpeg is
    /// asked for its encoders. Absent when there is no such place or when that ffmpeg can't list
    /// any. Blocks for as long as ffmpeg takes; there is no time limit.
    std::optional<FFmpegToolset> discover() const;

    /// The names of the video and audio encoders that a build lists; empty when it fails. The
    /// format is that of `ffmpeg -encoders`.
    static QSet<QString> queryEncoders(const QUrl &ffmpegURL);

    /// The latest result.
    std::optional<FFmpegToolset> toolset;
    /// True once a search has been run.
    bool searched = false;
    /// The well-known places, in this order.
    const QList<QUrl> candidateDirs;

    /// The tools that a package of ours brings along: `../libexec/morvix` beside the executable's
    /// folder. It may be absent.
    static QString bundledDirectory();

    /// For the program itself there is `shared()`; other places are for tests.
    explicit FFmpegLocator(QList<QUrl> candidateDirs = defaultCandidateDirs(),
                           QString bundled = bundledDirectory());

private:
    struct Binaries {
        QUrl ffmpeg;
        QUrl ffprobe;
    };

    static QList<QUrl> defaultCandidateDirs();
    std::optional<Binaries> findBinaries() const;

    const QString m_bundled;
};
