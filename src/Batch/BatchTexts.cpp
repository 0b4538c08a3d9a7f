// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/BatchTexts.h"

#include "Engine/EngineError.h"
#include "Engine/ExecutorError.h"
#include "Engine/Text.h"

using namespace Qt::StringLiterals;

QString BatchTexts::missingFFmpeg()
{
    return u"FFmpeg not found. Install ffmpeg and ffprobe, and see that they can be run."_s;
}

QString BatchTexts::unreadable(const QString &reason)
{
    const QString sentence = u"Could not read this file. Is it a valid video?"_s;
    return reason.isEmpty() ? sentence : sentence + u" (%1)"_s.arg(reason.trimmed());
}

QString BatchTexts::failure(const std::exception &error)
{
    if (dynamic_cast<const ExecutorError *>(&error)) {
        return u"Still over the target after retries — trim the clip or raise the target a little."_s;
    }
    if (const auto *engine = dynamic_cast<const EngineError *>(&error);
        engine && engine->kind() == EngineError::Case::processFailed) {
        const QString words = Text::lastCharacters(engine->stderrTail().trimmed(), 160);
        return u"FFmpeg error: "_s +
               (words.isEmpty()
                    ? u"it ended with code %1 and without a word"_s.arg(engine->exitCode())
                    : words);
    }
    if (const auto *described = dynamic_cast<const DescribedError *>(&error)) {
        return described->errorDescription();
    }
    return QString::fromUtf8(error.what());
}

QString BatchTexts::note(const ExecutionOutcome &outcome, const JobPlan &plan)
{
    if (outcome.retries >= 1) {
        return u"Auto-refitted to land under the target"_s;
    }
    if (plan.badgeKey == "target.alreadyfits"_L1) {
        return u"Already under target · copied without re-encoding"_s;
    }
    return {};
}

QString BatchTexts::size(qint64 bytes)
{
    if (bytes < 1000) {
        return u"%1 bytes"_s.arg(bytes);
    }
    if (bytes < 1'000'000) {
        return Text::fixed(static_cast<double>(bytes) / 1e3, 0) + u" kB"_s;
    }
    return Text::fixed(static_cast<double>(bytes) / 1e6, 2) + u" MB"_s;
}
