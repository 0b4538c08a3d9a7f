// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobPlan.h"

#include <QList>
#include <QUrl>

#include <optional>

/// What the executor reads off a plan and off the disk.
namespace PlanMeasures {

/// Kilobits per second, read off the first "-b:v" of the first step labelled "encode" or "pass2":
/// thus the executor needn't know the builders' sums. Absent when there is none or it doesn't read.
std::optional<qint64> firstVideoBitrate(const JobPlan &plan);

/// The bytes on disk; a missing file counts 0.
qint64 totalBytes(const QList<QUrl> &urls);

/// The bitrate of an attempt upward from a result of `bytes`; absent when it wouldn't be higher.
std::optional<qint64> upwardBitrate(qint64 limit, qint64 bytes, qint64 kbps);

} // namespace PlanMeasures
