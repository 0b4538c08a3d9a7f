// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "PromiseJob.h"

#include <QList>
#include <QString>

#include <optional>

/// What the bench tells, in Markdown.
namespace PromiseReport {

/// A pair with what came of it; a path that wasn't run is absent.
struct Row {
    PromiseJob::Pair pair;
    std::optional<PromiseJob::Result> twoPasses;
    std::optional<PromiseJob::Result> standIn;
};

/// One line a pair.
QString table(const QList<Row> &rows);

/// Met, median and tenth percentile, for reachable pairs and for those that are told apart.
QString summary(const QList<Row> &rows);

} // namespace PromiseReport
