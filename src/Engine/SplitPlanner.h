// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobParams.h"

#include <QList>

/// Where a file is cut into parts. Pure; the builder and the panel get the same parts.
namespace SplitPlanner {

/// The parts in order, each beginning where the one before ends. `duration` is in seconds,
/// `totalKbps` the rate of the whole file. A remainder of 0.05 seconds or less is left off. Empty
/// for a file of 0.2 seconds or less, for parts by size when the rate is below 1, and for more than
/// 1,000,000 parts.
QList<TrimSegment> segments(double duration, qint64 totalKbps, const SplitParams &params);

} // namespace SplitPlanner
