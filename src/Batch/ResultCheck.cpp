// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/ResultCheck.h"

#include "Engine/ProbeService.h"
#include "Engine/ProcessRunner.h"
#include "Engine/Text.h"

#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

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

// Absent when there is neither picture nor sound.
std::optional<double> filmSeconds(const QUrl &url, const QUrl &ffprobe)
{
    try {
        const VideoFile file = ProbeService::probe(url, ffprobe);
        if (file.videoCodec || !file.audioStreams.isEmpty()) {
            return file.durationSeconds;
        }
    } catch (const ProbeService::ProbeError &) {
    }
    return std::nullopt;
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
QString withCause(const QString &sentence, const QUrl &output)
{
    const QStorageInfo disk(QFileInfo(Text::path(output)).path());
    const bool isFull = disk.isValid() && disk.bytesAvailable() < fullBelowBytes;
    return isFull ? sentence + u" There is no space left on the disk."_s : sentence;
}

} // namespace

std::optional<QString> ResultCheck::problem(const VideoFile &input, const JobPlan &plan,
                                            const QUrl &ffprobe)
{
    const double expected = expectedSeconds(plan);
    const QUrl &output = plan.finalOutputURLs.first();
    const std::optional<double> seconds = filmSeconds(output, ffprobe);
    const bool isShort = seconds.value_or(0) < expected - toleratedSeconds;
    // Being short alone is no fault: replacement audio ends a film early, and a subtitle may
    // outlast the picture.
    if (isShort && endsTooEarly(input.url, ffprobe)) {
        return u"This film has been cut off: the result holds %1 of %2 seconds."_s.arg(
            Text::fixed(seconds.value_or(0), 1), Text::fixed(expected, 1));
    }
    if (!seconds) {
        return withCause(u"FFmpeg told no error, but the result holds no film."_s, output);
    }
    if (endsTooEarly(output, ffprobe)) {
        return withCause(u"FFmpeg told no error, but the result is incomplete."_s, output);
    }
    return std::nullopt;
}
