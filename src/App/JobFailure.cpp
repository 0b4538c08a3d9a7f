// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/JobFailure.h"

#include "Engine/EngineError.h"
#include "Engine/ExecutorError.h"
#include "Engine/Text.h"

using namespace Qt::StringLiterals;

namespace {

// The end of what ffmpeg wrote says why.
constexpr qsizetype shownCharacters = 160;

Job::State stateOf(const EngineError &error, AppLanguage language)
{
    switch (error.kind()) {
    case EngineError::Case::cancelled:
        return Job::Cancelled();
    case EngineError::Case::missingFFmpeg:
        return Job::Failed{L10n::t(u"settings.ffmpeg.missing"_s, language)};
    case EngineError::Case::processFailed:
        break;
    }
    const QString words = Text::lastCharacters(error.stderrTail(), shownCharacters);
    return Job::Failed{L10n::format(L10n::t(u"error.ffmpeg"_s, language), {words})};
}

} // namespace

Job::State JobFailure::state(const std::exception_ptr &failure, AppLanguage language)
{
    try {
        std::rethrow_exception(failure);
    } catch (const EngineError &error) {
        return stateOf(error, language);
    } catch (const ExecutorError &) {
        return Job::Failed{L10n::t(u"error.targetNotMet"_s, language)};
    } catch (const std::exception &) {
        return Job::Failed{description(failure)};
    }
}

QString JobFailure::description(const std::exception_ptr &failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const DescribedError &error) {
        return error.errorDescription();
    } catch (const std::exception &error) {
        return QString::fromUtf8(error.what());
    }
}
