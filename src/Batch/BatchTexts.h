// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/PlanExecutor.h"
#include "Models/JobPlan.h"

#include <QString>

#include <exception>
#include <optional>

/// The sentences of the headless companion.
namespace BatchTexts {

QString missingFFmpeg();
QString unreadable(const QString &reason);
/// What a failed run says to its user.
QString failure(const std::exception &error);
/// The note of a finished job; empty when there is none.
QString note(const ExecutionOutcome &outcome, const JobPlan &plan);
/// A size as people read it, in decimal units.
QString size(qint64 bytes);

} // namespace BatchTexts
