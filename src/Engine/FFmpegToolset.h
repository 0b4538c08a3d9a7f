// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSet>
#include <QString>
#include <QUrl>

/// The located tools and the names of the video and audio encoders of that build. Nothing is
/// inferred from the names here: whoever has a choice asks for membership.
struct FFmpegToolset {
    QUrl ffmpegURL;
    QUrl ffprobeURL;
    QSet<QString> encoders;

    bool operator==(const FFmpegToolset &) const = default;
};
