// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/ParamsCheck.h"

#include "Batch/BatchTexts.h"

using BatchTexts::Sentence;

namespace {

// Beyond this the sums leave the range of 64 bits.
constexpr double largestTargetMB = 1e9;

} // namespace

std::optional<QString> ParamsCheck::problem(const JobMode &mode, AppLanguage language)
{
    if (const auto *params = std::get_if<TargetSizeParams>(&mode);
        params && !(params->targetMB > 0 && params->targetMB <= largestTargetMB)) {
        return BatchTexts::text(Sentence::targetOutOfRange, language,
                                {QString::number(largestTargetMB, 'f', 0)});
    }
    if (const auto *params = std::get_if<AdjustParams>(&mode); params && !(params->speed > 0)) {
        return BatchTexts::text(Sentence::speedOutOfRange, language);
    }
    return std::nullopt;
}
