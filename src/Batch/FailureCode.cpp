// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/FailureCode.h"

#include "Batch/ExitCode.h"
#include "Engine/CommandBuilder/BuilderError.h"
#include "Engine/EngineError.h"
#include "Engine/ExecutorError.h"
#include "Engine/FileError.h"
#include "Engine/Text.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// An ffmpeg that was there at the start may have gone since.
bool couldNotBeLaunched(const EngineError &error)
{
    return error.kind() == EngineError::Case::processFailed && error.exitCode() == -1;
}

// What ffmpeg says when its build lacks what a line names.
bool lacksEncoder(const QString &words)
{
    return words.contains("Unknown encoder"_L1) || words.contains("Encoder not found"_L1);
}

// ffmpeg names the place that it can't open, then the system's reason.
bool failedToWrite(const QString &words, const JobPlan &plan)
{
    return words.contains("No space left on device"_L1) ||
           std::ranges::any_of(plan.finalOutputURLs, [&](const QUrl &output) {
               return words.contains(Text::path(output) + u": "_s) &&
                      !words.contains("Invalid argument"_L1);
           });
}

bool failedToRead(const QString &words, const VideoFile &input)
{
    return words.contains(Text::path(input.url) + u": "_s) ||
           words.contains("Invalid data found when processing input"_L1);
}

int codeOf(const EngineError &error, const VideoFile &input, const std::optional<JobPlan> &plan)
{
    if (error.kind() == EngineError::Case::missingFFmpeg || couldNotBeLaunched(error) ||
        lacksEncoder(error.stderrTail())) {
        return ExitCode::noFFmpeg;
    }
    if (!QFileInfo::exists(Text::path(input.url))) {
        return ExitCode::noInput;
    }
    if (plan && failedToWrite(error.stderrTail(), *plan)) {
        return ExitCode::cannotWrite;
    }
    return failedToRead(error.stderrTail(), input) ? ExitCode::badInput : ExitCode::ffmpegFailed;
}

} // namespace

int FailureCode::of(const std::exception_ptr &failure, const VideoFile &input,
                    const std::optional<JobPlan> &plan)
{
    try {
        std::rethrow_exception(failure);
    } catch (const EngineError &error) {
        return codeOf(error, input, plan);
    } catch (const ExecutorError &) {
        return ExitCode::badInput;
    } catch (const FileError &) {
        return ExitCode::cannotWrite;
    } catch (const BuilderError &error) {
        return error.kind() == BuilderError::Case::vp9Unavailable ? ExitCode::noFFmpeg
                                                                  : ExitCode::badInput;
    } catch (const std::exception &) {
        return ExitCode::ffmpegFailed;
    }
}
