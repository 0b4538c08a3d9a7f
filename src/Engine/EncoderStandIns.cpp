// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/EncoderStandIns.h"

#include "Engine/Text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Measured over films of all kinds (docs/measurements.md). With the rate itself as the ceiling, a
// film can spend at most its rate and what the buffer holds at its start. A buffer of a fifth of
// the length, half full, makes that a tenth more than planned, which the one retry at 0.93 makes
// good even in the worst case; the empty half saves up an easy stretch for a hard one behind it.
constexpr double bufferShare = 0.20;
constexpr double initialFill = 0.5;
constexpr double shortestBufferSeconds = 0.25;

// x264 writes the level that the buffer needs into the file, and many devices stop at 4.1.
constexpr double mostBufferKilobits = 62'500;

// ffmpeg keeps both bounds in 32 bits.
constexpr qint64 mostBoundedKbps = 2'000'000;

StandIn softwareH264(const FFmpegToolset &toolset)
{
    if (toolset.encoders.contains(u"libx264"_s)) {
        // The role is that of a fast encoder; the careful one is the two-pass path.
        return {.encoder = u"libx264"_s,
                .encoderOptions = {u"-preset"_s, u"veryfast"_s},
                .globalOptions = {},
                .boundsRate = true,
                .uploadsFrames = false};
    }
    return {.encoder = u"libopenh264"_s,
            .encoderOptions = {},
            .globalOptions = {},
            .boundsRate = true,
            .uploadsFrames = false};
}

StandIn softwareHevc()
{
    return {.encoder = u"libx265"_s,
            .encoderOptions = {u"-x265-params"_s, u"log-level=error"_s},
            .globalOptions = {},
            .boundsRate = true,
            .uploadsFrames = false};
}

StandIn softwareProres()
{
    return {.encoder = u"prores_ks"_s,
            .encoderOptions = {},
            .globalOptions = {},
            .boundsRate = false,
            .uploadsFrames = false};
}

double bufferKilobits(qint64 kbps, double seconds)
{
    const auto rate = static_cast<double>(kbps);
    return std::max(std::min(rate * seconds * bufferShare, mostBufferKilobits),
                    rate * shortestBufferSeconds);
}

QString kilobits(double value)
{
    return QString::number(static_cast<qint64>(value)) + u'k';
}

QStringList boundArgs(const QString &rate, double seconds)
{
    const auto kbps = rate.endsWith(u'k') ? Text::toInteger(rate.chopped(1)) : std::nullopt;
    if (!kbps || *kbps < 1 || *kbps > mostBoundedKbps) {
        return {};
    }
    const double buffer = bufferKilobits(*kbps, seconds);
    return {u"-maxrate"_s,           rate,
            u"-bufsize"_s,           kilobits(buffer),
            u"-rc_init_occupancy"_s, kilobits(buffer * initialFill)};
}

void insertAt(QStringList &args, qsizetype position, const QStringList &inserted)
{
    args = args.first(position) + inserted + args.sliced(position);
}

void boundRate(QStringList &args, double seconds)
{
    const qsizetype option = args.indexOf(u"-b:v"_s);
    if (option >= 0 && option + 1 < args.size()) {
        insertAt(args, option + 2, boundArgs(args.at(option + 1), seconds));
    }
}

// Frames go up in the layout that the device takes; the upload is the last filter.
void uploadFrames(QStringList &args, qsizetype behindEncoder)
{
    QString layout = u"nv12"_s;
    const qsizetype format = args.indexOf(u"-pix_fmt"_s);
    if (format >= 0 && format + 1 < args.size()) {
        layout = args.at(format + 1) == "p010le"_L1 ? u"p010"_s : layout;
        args.remove(format, 2);
    }
    const QString upload = u"format="_s + layout + u",hwupload"_s;
    const qsizetype filter = args.indexOf(u"-vf"_s);
    if (filter >= 0 && filter + 1 < args.size()) {
        args[filter + 1] += u',' + upload;
    } else {
        insertAt(args, behindEncoder, {u"-vf"_s, upload});
    }
}

void exchange(QStringList &args, qsizetype encoderPosition, double seconds, const StandIn &standIn)
{
    args[encoderPosition] = standIn.encoder;
    insertAt(args, encoderPosition + 1, standIn.encoderOptions);
    if (standIn.boundsRate) {
        boundRate(args, seconds);
    }
    if (standIn.uploadsFrames) {
        uploadFrames(args, encoderPosition + 1 + standIn.encoderOptions.size());
    }
    insertAt(args, 0, standIn.globalOptions);
}

PlanFactory wrapped(const PlanFactory &factory, const EncoderStandIns::Table &table)
{
    if (!factory) {
        return {};
    }
    return [factory, table](qint64 videoKbps) {
        return EncoderStandIns::apply(factory(videoKbps), table);
    };
}

} // namespace

EncoderStandIns::Table EncoderStandIns::software(const FFmpegToolset &toolset)
{
    const Table all{{u"h264_videotoolbox"_s, softwareH264(toolset)},
                    {u"hevc_videotoolbox"_s, softwareHevc()},
                    {u"prores_videotoolbox"_s, softwareProres()}};
    Table table;
    for (auto [name, standIn] : all.asKeyValueRange()) {
        if (!toolset.encoders.contains(name) && toolset.encoders.contains(standIn.encoder)) {
            table.insert(name, standIn);
        }
    }
    return table;
}

QStringList EncoderStandIns::applyToArgs(const QStringList &args, double seconds,
                                         const Table &table)
{
    const qsizetype option = args.indexOf(u"-c:v"_s);
    if (option < 0 || option + 1 >= args.size()) {
        return args;
    }
    const auto standIn = table.constFind(args.at(option + 1));
    if (standIn == table.constEnd()) {
        return args;
    }
    QStringList exchanged = args;
    exchange(exchanged, option + 1, seconds, *standIn);
    return exchanged;
}

JobPlan EncoderStandIns::apply(const JobPlan &plan, const Table &table)
{
    JobPlan exchanged = plan;
    for (FFmpegStep &step : exchanged.steps) {
        step.args = applyToArgs(step.args, step.progressDuration, table);
    }
    exchanged.retryFactory = wrapped(plan.retryFactory, table);
    if (exchanged.approach) {
        exchanged.approach->factory = wrapped(plan.approach->factory, table);
    }
    return exchanged;
}
