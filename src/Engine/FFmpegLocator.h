// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegToolset.h"
#include "Engine/ProcessRunner.h"

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

    struct Binaries {
        QUrl ffmpeg;
        QUrl ffprobe;
    };

    /// Looks in `bundledDirectory()`, then in `candidateDirs`, then in the folders of PATH; the
    /// first place that has both tools wins. Absent when there is no such place.
    std::optional<Binaries> findBinaries() const;

    /// Finds the tools and asks ffmpeg for its encoders, no other one than the first found. Absent
    /// when there is none or when it can't list any. Blocks for as long as ffmpeg takes; there is
    /// no time limit.
    std::optional<FFmpegToolset> discover() const;
    /// The second half of it, from any thread. `onSpawn` gets the ffmpeg that is asked.
    static std::optional<FFmpegToolset> discover(const std::optional<Binaries> &binaries,
                                                 const ProcessRunner::OnSpawn &onSpawn = {});

    /// The names of the video and audio encoders that a build lists; empty when it fails. The
    /// format is that of `ffmpeg -encoders`. From any thread.
    static QSet<QString> queryEncoders(const QUrl &ffmpegURL,
                                       const ProcessRunner::OnSpawn &onSpawn = {});

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
    static QList<QUrl> defaultCandidateDirs();

    const QString m_bundled;
};
