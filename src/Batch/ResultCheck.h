// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/L10n.h"
#include "Models/ActionKind.h"
#include "Models/JobPlan.h"
#include "Models/VideoFile.h"

#include <QString>
#include <QUrl>

#include <optional>

/// Finds what ffmpeg passes over and still ends well: a result without a film in it, one that found
/// no room on the disk, and one that is short because its input was cut off.
namespace ResultCheck {

/// A job that has ended well, by ffmpeg's account.
struct EndedJob {
    VideoFile input;
    ActionKind action = ActionKind::targetSize;
    JobPlan plan;
};

/// What speaks against a result.
struct Problem {
    /// For the user.
    QString sentence;
    /// Where the fault lies.
    enum class Fault { input, ffmpeg, disk } fault = Fault::ffmpeg;
};

/// Absent when nothing speaks against the result. Blocks for ffprobe,
/// which reads the whole result and, when that is too short, the whole input.
std::optional<Problem> problem(const EndedJob &ended, const QUrl &ffprobe, AppLanguage language);

} // namespace ResultCheck
