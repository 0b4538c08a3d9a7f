// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/Text.h"

#include <algorithm>
#include <array>
#include <charconv>

using namespace Qt::StringLiterals;

namespace CommandBuilder {
namespace {

// How much of the source's rate the picture gets.
constexpr double rateShare = 0.7;

// What ffmpeg's tempo filter takes at once, and what a chain of them is held to.
constexpr double fastestTempo = 2.0;
constexpr double slowestTempo = 0.5;
constexpr double fastestSpeed = 4.0;
constexpr double slowestSpeed = 0.25;

// What C's "%g" prints: six digits that count, without trailing zeros.
QString shortNumber(double value)
{
    // Room for a sign, six digits, a point and an exponent.
    std::array<char, 32> buffer{};
    const auto [end, problem] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                              std::chars_format::general, 6);
    Q_ASSERT(problem == std::errc());
    return QString::fromLatin1(buffer.data(), end - buffer.data());
}

QStringList rotationFilters(AdjustParams::Rotation rotation)
{
    switch (rotation) {
    case AdjustParams::Rotation::none:
        return {};
    case AdjustParams::Rotation::cw90:
        return {u"transpose=1"_s};
    case AdjustParams::Rotation::r180:
        return {u"transpose=1"_s, u"transpose=1"_s};
    case AdjustParams::Rotation::ccw90:
        return {u"transpose=2"_s};
    }
    Q_UNREACHABLE();
}

QStringList filterArgs(const VideoFile &file, const AdjustParams &params)
{
    const std::optional<QString> chain = adjustFilterChain(file, params);
    return chain ? QStringList{u"-vf"_s, *chain} : QStringList();
}

bool changesTempo(const AdjustParams &params)
{
    return params.speed != 1.0 || params.reverse;
}

// The sound of a reversed film still runs forward, on purpose. Neither the gain nor the chosen rate
// counts here.
QStringList tempoArgs(double speed)
{
    return {u"-af"_s, atempoChain(speed).join(u','), u"-c:a"_s, u"aac"_s, u"-b:a"_s, u"160k"_s};
}

QStringList soundArgs(const VideoFile &file, const AdjustParams &params)
{
    if (params.muted) {
        return {u"-an"_s};
    }
    return changesTempo(params) ? tempoArgs(params.speed) : mp4AudioArgs(file, params.advanced);
}

QStringList audioArgs(const VideoFile &file, const AdjustParams &params)
{
    if (file.audioStreams.isEmpty()) {
        return {};
    }
    return QStringList{u"-map"_s, u"0:a?"_s} + soundArgs(file, params);
}

} // namespace

std::optional<QString> adjustFilterChain(const VideoFile &, const AdjustParams &params)
{
    QStringList filters = rotationFilters(params.rotation);
    if (params.flipV) {
        filters += u"vflip"_s;
    }
    if (params.flipH) {
        filters += u"hflip"_s;
    }
    if (params.reverse) {
        filters += u"reverse"_s;
    }
    if (params.speed != 1.0) {
        filters += u"setpts=PTS/"_s + shortNumber(params.speed);
    }
    return filters.isEmpty() ? std::nullopt : std::optional(filters.join(u','));
}

QStringList atempoChain(double speed)
{
    double rest = std::clamp(speed, slowestSpeed, fastestSpeed);
    QStringList chain;
    while (rest > fastestTempo) {
        chain += u"atempo=2.0"_s;
        rest /= fastestTempo;
    }
    while (rest < slowestTempo) {
        chain += u"atempo=0.5"_s;
        rest /= slowestTempo;
    }
    return chain + QStringList{u"atempo="_s + shortNumber(rest)};
}

JobPlan adjust(const VideoFile &file, const AdjustParams &params, const FFmpegToolset &toolset,
               const std::optional<QUrl> &outputDirectory,
               const std::optional<QString> &namingTemplate)
{
    const QUrl output = outputURL(file, u"adjusted"_s, u"mp4"_s, outputDirectory, namingTemplate);
    FFmpegStep step;
    step.label = u"adjust"_s;
    // The container flags stand behind the user's arguments, and no frame-rate cap is written.
    step.args << baseArgs() << u"-i"_s << Text::path(file.url)
              << mp4VideoArgs(file, params.advanced, toolset, shareOfSourceKbps(file, rateShare))
              << filterArgs(file, params) << audioArgs(file, params)
              << extraArgTokens(params.advanced) << fastStartArgs() << Text::path(output);
    // A reversed film counts whole, whatever its speed.
    step.progressDuration =
        params.reverse ? file.durationSeconds : file.durationSeconds / params.speed;

    JobPlan plan;
    plan.steps = {step};
    plan.finalOutputURLs = {output};
    return plan;
}

} // namespace CommandBuilder
