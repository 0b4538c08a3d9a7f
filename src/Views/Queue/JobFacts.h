// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/Job.h"
#include "Views/Look/Colors.h"

#include <QString>
#include <QStringList>

#include <optional>

/// What a row of the queue says of its job, as far as no words are needed for it.
namespace JobFacts {

/// Of the symbol of the job's action.
Look::ColorRole color(Job::Outcome outcome);

/// Progress from 0 to 1 as "42%", cut and not rounded.
QString percent(double progress);

/// "100 MB → 24.3 MB".
QString sizes(const Job::Finished &result);

/// The amount saved and its whole percentage, cut and not rounded, as the text of "queue.saved"
/// takes them. Absent when nothing was saved or the original size isn't known.
std::optional<QStringList> saved(const Job::Finished &result);

} // namespace JobFacts
