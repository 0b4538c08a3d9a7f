// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/ResultCheck.h"

#include "Batch/BatchTexts.h"
#include "Engine/ProbeService.h"
#include "Engine/ProcessRunner.h"
#include "Engine/Text.h"

#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using BatchTexts::Sentence;
using ResultCheck::Problem;

namespace {

// Frame rates, the padding of sound and a long last frame shift the end of a good film.
constexpr double toleratedSeconds = 1;

constexpr qint64 fullBelowBytes = 1'000'000;

// What the readers of MP4 and of Matroska say when the index or the header promises more than the
// file holds. Any other complaint is no proof: many a good film draws one.
constexpr std::array cutOffWords{"partial file"_L1, "File ended prematurely"_L1};

double expectedSeconds(const JobPlan &plan)
{
    double seconds = 0;
    for (const FFmpegStep &step : plan.steps) {
        seconds += step.progressDuration;
    }
    return seconds;
}

struct Result {
    /// A result that ffprobe can't make out isn't held against ffmpeg, which told no error; one
    /// that is empty or has neither picture nor sound is.
    bool isFilm = true;
    bool isReadable = true;
    double seconds = 0;
};

Result resultAt(const QUrl &url, const QUrl &ffprobe)
{
    if (QFileInfo(Text::path(url)).size() == 0) {
        return {.isFilm = false, .isReadable = false};
    }
    try {
        const VideoFile file = ProbeService::probe(url, ffprobe);
        return {.isFilm = file.videoCodec || !file.audioStreams.isEmpty(),
                .seconds = file.durationSeconds};
    } catch (const ProbeService::ProbeError &) {
        return {.isReadable = false};
    }
}

bool endsTooEarly(const QUrl &url, const QUrl &ffprobe)
{
    const ProcessResult result = ProcessRunner::runSync(
        ffprobe, {u"-v"_s, u"error"_s, u"-count_packets"_s, u"-show_entries"_s,
                  u"stream=nb_read_packets"_s, u"-of"_s, u"csv=p=0"_s, Text::path(url)});
    return std::ranges::any_of(
        cutOffWords, [&](QLatin1StringView words) { return result.standardError.contains(words); });
}

// ffmpeg may end well although its last bytes found no room.
bool isDiskFull(const QUrl &output)
{
    const QStorageInfo disk(QFileInfo(Text::path(output)).path());
    return disk.isValid() && disk.bytesAvailable() < fullBelowBytes;
}

// The actions whose result lasts as long as their steps work through; the others make parts, or
// pass over their input more than once.
bool keepsItsLength(ActionKind action)
{
    return action != ActionKind::trim && action != ActionKind::split && action != ActionKind::gif;
}

/// One look at one job, with what all its questions share.
struct Look {
    const ResultCheck::EndedJob &ended;
    const QUrl &ffprobe;
    AppLanguage language;

    QString words(Sentence sentence, const QStringList &arguments = {}) const
    {
        return BatchTexts::text(sentence, language, arguments);
    }

    Problem withCause(Sentence sentence, const QUrl &output) const
    {
        if (isDiskFull(output)) {
            return {words(sentence) + u' ' + words(Sentence::diskFull), Problem::Fault::disk};
        }
        return {words(sentence), Problem::Fault::ffmpeg};
    }

    // Being short alone is no fault: replacement audio ends a film early, and a subtitle may
    // outlast the picture. A joined film, though, has lost a clip that couldn't be opened.
    std::optional<Problem> shortage(const Result &result) const
    {
        const double expected = expectedSeconds(ended.plan);
        if (!keepsItsLength(ended.action) || result.seconds >= expected - toleratedSeconds) {
            return std::nullopt;
        }
        const QStringList seconds{Text::fixed(result.seconds, 1), Text::fixed(expected, 1)};
        if (ended.action == ActionKind::merge && result.isReadable) {
            return Problem{words(Sentence::clipsLost, seconds), Problem::Fault::input};
        }
        if (endsTooEarly(ended.input.url, ffprobe)) {
            return Problem{words(Sentence::cutOff, seconds), Problem::Fault::input};
        }
        return std::nullopt;
    }

    std::optional<Problem> problemOf(const QUrl &output) const
    {
        const Result result = resultAt(output, ffprobe);
        if (const std::optional<Problem> found = shortage(result)) {
            return found;
        }
        if (!result.isFilm || (!result.isReadable && isDiskFull(output))) {
            return withCause(Sentence::noFilmInResult, output);
        }
        if (result.isReadable && endsTooEarly(output, ffprobe)) {
            return withCause(Sentence::incompleteResult, output);
        }
        return std::nullopt;
    }
};

} // namespace

std::optional<Problem> ResultCheck::problem(const EndedJob &ended, const QUrl &ffprobe,
                                            AppLanguage language)
{
    const Look look{ended, ffprobe, language};
    for (const QUrl &output : ended.plan.finalOutputURLs) {
        if (const std::optional<Problem> found = look.problemOf(output)) {
            return found;
        }
    }
    return std::nullopt;
}
