// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/EncoderStandIns.h"

#include "Engine/Text.h"
#include "Models/Truncation.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

// Measured over films of all kinds (docs/measurements.md). With the rate itself as the ceiling, a
// film can spend at most its rate and what the buffer holds at its start. A buffer of a fifth of
// the length, half full, makes that a tenth more than planned, which the one retry at 0.93 takes
// off again; the empty half saves up an easy stretch for a hard one behind it.
constexpr double bufferShare = 0.20;
constexpr double initialFill = 0.5;
constexpr double shortestBufferSeconds = 0.25;

// x264 writes the level that the buffer needs into the file, and many devices stop at 4.1.
constexpr double mostBufferKilobits = 62'500;

// ffmpeg keeps both bounds in 32 bits.
constexpr qint64 mostBoundedKbps = 2'000'000;

struct Row {
    QString planned;
    StandIn standIn;
};

// The role is that of a fast encoder; the careful one is the two-pass path.
StandIn x264()
{
    return {.encoder = u"libx264"_s,
            .encoderOptions = {u"-preset"_s, u"veryfast"_s},
            .globalOptions = {},
            .boundsRate = true};
}

StandIn openh264()
{
    return {
        .encoder = u"libopenh264"_s, .encoderOptions = {}, .globalOptions = {}, .boundsRate = true};
}

// Its log is its own and goes past ffmpeg's level.
StandIn x265()
{
    return {.encoder = u"libx265"_s,
            .encoderOptions = {u"-x265-params"_s, u"log-level=error"_s},
            .globalOptions = {},
            .boundsRate = true};
}

StandIn plain(const QString &encoder, const QStringList &encoderOptions = {})
{
    return {.encoder = encoder, .encoderOptions = encoderOptions, .globalOptions = {}};
}

// For each name the first that the build offers.
QList<Row> softwareRows()
{
    return {
        {u"h264_videotoolbox"_s, x264()},
        {u"h264_videotoolbox"_s, openh264()},
        {u"hevc_videotoolbox"_s, x265()},
        {u"prores_videotoolbox"_s, plain(u"prores_ks"_s)},
        {u"prores_videotoolbox"_s, plain(u"prores_aw"_s)},
        {u"prores_ks"_s, plain(u"prores_aw"_s)},
        {u"libmp3lame"_s, plain(u"libshine"_s)},
        {u"libopus"_s, plain(u"opus"_s, {u"-strict"_s, u"experimental"_s})},
    };
}

double bufferKilobits(qint64 kbps, double seconds)
{
    const auto rate = static_cast<double>(kbps);
    return std::max(std::min(rate * seconds * bufferShare, mostBufferKilobits),
                    rate * shortestBufferSeconds);
}

QString kilobits(double value)
{
    return QString::number(truncated(value)) + u'k';
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

// The last of an option's values: ffmpeg obeys that one, and the user's extra arguments stand last.
std::optional<qsizetype> lastValueOf(const QStringList &args, const QString &option)
{
    const qsizetype position = args.lastIndexOf(option);
    const bool hasValue = position >= 0 && position + 1 < args.size();
    return hasValue ? std::optional(position + 1) : std::nullopt;
}

// The bounds stand behind the plan's own rate, so that a user's bounds, further on, win.
void boundRate(QStringList &args, double seconds)
{
    if (const auto rate = lastValueOf(args, u"-b:v"_s)) {
        insertAt(args, args.indexOf(u"-b:v"_s) + 2, boundArgs(args.at(*rate), seconds));
    }
}

// The plans ask by "p010le" and "yuva444p10le".
bool asksForTenBits(const QStringList &args)
{
    const auto layout = lastValueOf(args, u"-pix_fmt"_s);
    return layout && (args.at(*layout).contains("p10"_L1) || args.at(*layout).contains("p010"_L1));
}

// Gives the layout of the frames and takes it off the line: on the device it is another.
QString takePixelLayout(QStringList &args)
{
    const QString layout = asksForTenBits(args) ? u"p010"_s : u"nv12"_s;
    while (const auto format = lastValueOf(args, u"-pix_fmt"_s)) {
        args.remove(*format - 1, 2);
    }
    return layout;
}

// The first label that a filter graph hands to the output is the picture's.
void uploadFromGraph(QStringList &args, qsizetype graph, const QString &upload)
{
    for (qsizetype i = graph + 1; i + 1 < args.size(); ++i) {
        if (args.at(i) == "-map"_L1 && args.at(i + 1).startsWith(u'[')) {
            args[graph] += u';' + args.at(i + 1) + upload + u"[uploaded]"_s;
            args[i + 1] = u"[uploaded]"_s;
            return;
        }
    }
}

// Frames go up in the layout that the device takes; the upload is the last filter.
void uploadFrames(QStringList &args, qsizetype behindEncoder)
{
    const QString upload = u"format="_s + takePixelLayout(args) + u",hwupload"_s;
    if (const auto graph = lastValueOf(args, u"-filter_complex"_s)) {
        uploadFromGraph(args, *graph, upload);
    } else if (const auto filter = lastValueOf(args, u"-vf"_s)) {
        args[*filter] += u',' + upload;
    } else {
        insertAt(args, behindEncoder, {u"-vf"_s, upload});
    }
}

// Left to ffmpeg, the frames of a film of ten bits would reach the encoder as they are.
void nameEightBits(QStringList &args, qsizetype behindEncoder)
{
    if (!lastValueOf(args, u"-pix_fmt"_s)) {
        insertAt(args, behindEncoder, {u"-pix_fmt"_s, u"yuv420p"_s});
    }
}

void exchange(QStringList &args, qsizetype encoderPosition, double seconds, const StandIn &standIn)
{
    const qsizetype behindEncoder = encoderPosition + 1 + standIn.encoderOptions.size();
    args[encoderPosition] = standIn.encoder;
    insertAt(args, encoderPosition + 1, standIn.encoderOptions);
    if (standIn.boundsRate) {
        boundRate(args, seconds);
    }
    if (standIn.uploadsFrames) {
        uploadFrames(args, behindEncoder);
    } else if (standIn.eightBitOnly) {
        nameEightBits(args, behindEncoder);
    }
    insertAt(args, 0, standIn.globalOptions);
}

std::optional<StandIn> standInFor(const QString &name, const QStringList &args,
                                  const EncoderStandIns::Table &table)
{
    const bool tenBits = asksForTenBits(args);
    const QList<StandIn> standIns = table.value(name);
    for (const StandIn &standIn : standIns) {
        if (!(tenBits && standIn.eightBitOnly)) {
            return standIn;
        }
    }
    return std::nullopt;
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
    Table table;
    for (const Row &row : softwareRows()) {
        const bool isLacking = !toolset.encoders.contains(row.planned);
        if (isLacking && !table.contains(row.planned) &&
            toolset.encoders.contains(row.standIn.encoder)) {
            table.insert(row.planned, {row.standIn});
        }
    }
    return table;
}

QStringList EncoderStandIns::applyToArgs(const QStringList &args, double seconds,
                                         const Table &table)
{
    QStringList exchanged = args;
    for (const QString &option : {u"-c:v"_s, u"-c:a"_s}) {
        const std::optional<qsizetype> encoder = lastValueOf(exchanged, option);
        if (!encoder) {
            continue;
        }
        if (const auto standIn = standInFor(exchanged.at(*encoder), exchanged, table)) {
            exchange(exchanged, *encoder, seconds, *standIn);
        }
    }
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
