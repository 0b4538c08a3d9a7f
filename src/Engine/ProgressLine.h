// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringView>

#include <optional>

/// ffmpeg's progress stream (-progress): blocks of key=value lines, of which only the times matter.
namespace ProgressLine {

/// Seconds of output written so far, out of an "out_time_us=", "out_time_ms=" or "out_time=" line;
/// absent for all other lines and for a time that doesn't read ("N/A" before the first frame).
std::optional<double> seconds(QStringView line);

} // namespace ProgressLine
