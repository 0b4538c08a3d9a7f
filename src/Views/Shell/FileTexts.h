// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/VideoFile.h"

#include <QString>

/// What the shell says of a file in one line. The list and the header differ on purpose: the list
/// joins size and codec by a blank and knows neither frame rate nor sound.
namespace FileTexts {

/// The last component of its path.
QString name(const VideoFile &file);

/// Its line in the list: "1:23 · 45 MB · 1920×1080 H264".
QString rowDetails(const VideoFile &file);

/// The end of that line, with the dot before it; empty when neither size nor codec is known.
QString detailSuffix(const VideoFile &file);

/// Its line in the header: "1920×1080 · 30fps · H264 · AAC · 1:23".
QString detailText(const VideoFile &file);

} // namespace FileTexts
