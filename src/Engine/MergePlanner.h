// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobParams.h"
#include "Models/VideoFile.h"

#include <QList>
#include <QString>

#include <optional>

/// Whether clips join by copying, and the picture that holds them all when they don't. Pure; the
/// builder and the panel ask the same questions.
namespace MergePlanner {

/// The answer on a list of clips.
struct Compatibility {
    /// Whether the streams may be joined as they are.
    bool streamsMatch = true;
    /// Key of the first reason why not; absent when they match.
    std::optional<QString> reasonKey;

    bool operator==(const Compatibility &) const = default;
};

/// Compares every clip with the first one. Fewer than two clips match.
Compatibility compatibility(const QList<VideoFile> &files);

/// The largest known width and the largest known height, be they of different clips; even and at
/// least 2. 1280 and 720 stand in for sides that no clip knows.
PictureSize canvas(const QList<VideoFile> &files);

} // namespace MergePlanner
