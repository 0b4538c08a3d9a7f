// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/BatchOptions.h"

#include "App/FileURL.h"
#include "Batch/FieldAssignment.h"
#include "Batch/ParamsCheck.h"
#include "Engine/Text.h"
#include "Models/JobParamsJson.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct OptionNames {
    QString out = u"out"_s;
    QString jobs = u"jobs"_s;
    QString entry = u"entry"_s;
    QString dryRun = u"dry-run"_s;
    QString json = u"json"_s;
    QString help = u"help"_s;
    QString version = u"version"_s;
};

const OptionNames &names()
{
    static const OptionNames all;
    return all;
}

void addOptions(QCommandLineParser &parser)
{
    parser.addOption({names().out, u"Write the results to DIR."_s, u"DIR"_s});
    parser.addOption({names().jobs, u"Run up to N jobs side by side."_s, u"N"_s});
    parser.addOption({names().entry, u"Run the one entry N of a queue file."_s, u"N"_s});
    parser.addOption({names().dryRun, u"Show the command lines; run nothing."_s});
    parser.addOption({names().json, u"Report as JSON, one object a line."_s});
    parser.addOption({{u"h"_s, names().help}, u"Show this help."_s});
    parser.addOption({names().version, u"Show the version."_s});
}

/// What stands before "--" may be an option; what stands behind it is a file.
struct SplitArguments {
    QStringList before;
    QStringList behind;
};

SplitArguments splitAtDoubleDash(const QStringList &arguments)
{
    const qsizetype dashes = arguments.indexOf(u"--"_s);
    if (dashes < 0) {
        return {arguments, {}};
    }
    return {arguments.first(dashes), arguments.sliced(dashes + 1)};
}

bool isField(const QString &argument)
{
    static const QRegularExpression field(u"^[A-Za-z][A-Za-z0-9]*(\\.[A-Za-z][A-Za-z0-9]*)*="_s);
    return field.match(argument).hasMatch();
}

// An option in the place of the folder means that the folder was forgotten.
QUrl outputFolder(const QString &path)
{
    if (path.isEmpty() || path.startsWith(u'-')) {
        throw UsageError(
            u"--out expects a folder (one whose name begins with a dash is written ./-name)"_s);
    }
    return FileURL::ofPath(path);
}

qint64 jobCount(const QString &text)
{
    const std::optional<qint64> count = Text::toInteger(text);
    if (!count || *count < 1) {
        throw UsageError(u"--jobs expects a whole number from 1"_s);
    }
    return *count;
}

// Each action by its name, with its parameters as they are when nothing is said of them.
const QList<JobMode> &actions()
{
    static const QList<JobMode> modes{
        TargetSizeParams(), ConvertParams(), CompressParams(), ExtractParams(), TrimParams(),
        GifParams(),        EnhanceParams(), MergeParams(),    SplitParams(),   AdjustParams(),
    };
    return modes;
}

QString nameOf(const JobMode &mode)
{
    return rawValue(actionOf(mode));
}

QStringList actionNames()
{
    QStringList names;
    for (const JobMode &mode : actions()) {
        names += nameOf(mode);
    }
    return names;
}

JobMode actionNamed(const QString &name)
{
    const auto found = std::ranges::find(actions(), name, nameOf);
    if (found == actions().end()) {
        throw UsageError(
            u"there is no action \"%1\"; there are: %2"_s.arg(name, actionNames().join(u' ')));
    }
    return *found;
}

void assignField(JobMode &mode, const QString &argument)
{
    const qsizetype equals = argument.indexOf(u'=');
    const QString name = argument.first(equals);
    const QString value = argument.sliced(equals + 1);
    try {
        std::visit([&](auto &params) { FieldAssignment::assign(params, name, value); }, mode);
    } catch (const Json::DecodeError &error) {
        throw UsageError(error.errorDescription() +
                         u" (a file of such a name is written ./%1)"_s.arg(argument));
    }
}

void requireUsable(const JobMode &mode)
{
    if (const auto problem = ParamsCheck::problem(mode, AppLanguage::english)) {
        throw UsageError(*problem);
    }
}

// Trimming, merging and splitting keep what they copy: there is nothing to estimate.
void requireEstimate(const JobMode &mode)
{
    const ActionKind action = actionOf(mode);
    if (action == ActionKind::trim || action == ActionKind::merge || action == ActionKind::split) {
        throw UsageError(u"there is no estimate for %1"_s.arg(nameOf(mode)));
    }
}

qint64 entryNumber(const QString &text)
{
    const std::optional<qint64> number = Text::toInteger(text);
    if (!number || *number < 0) {
        throw UsageError(u"--entry expects a whole number from 0"_s);
    }
    return *number;
}

bool isQueueFile(const QString &argument)
{
    return argument.endsWith(".json"_L1, Qt::CaseInsensitive);
}

// [estimate] ACTION [field=value …] FILE…
void takePositionals(BatchOptions &options, QStringList positionals,
                     const QStringList &furtherFiles)
{
    if (positionals.value(0) == "estimate"_L1) {
        options.running = BatchOptions::Running::estimate;
        positionals.removeFirst();
    }
    if (positionals.isEmpty()) {
        throw UsageError(u"an action is expected, such as targetSize"_s);
    }
    options.mode = actionNamed(positionals.takeFirst());
    while (!positionals.isEmpty() && isField(positionals.first())) {
        assignField(options.mode, positionals.takeFirst());
    }
    for (const QString &path : positionals + furtherFiles) {
        if (path.isEmpty()) {
            throw UsageError(u"a file with an empty name can't be meant"_s);
        }
        options.files.append(FileURL::ofPath(path));
    }
    if (options.files.isEmpty()) {
        throw UsageError(u"at least one file is expected"_s);
    }
    requireUsable(options.mode);
    if (options.running == BatchOptions::Running::estimate) {
        requireEstimate(options.mode);
    }
}

} // namespace

BatchOptions BatchOptions::parse(const QStringList &arguments)
{
    const SplitArguments split = splitAtDoubleDash(arguments);
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(QStringList{u"morvix-batch"_s} + split.before)) {
        throw UsageError(parser.errorText());
    }
    BatchOptions options;
    options.output = parser.isSet(names().json) ? Output::json : Output::text;
    options.running = parser.isSet(names().dryRun) ? Running::dry : Running::real;
    if (parser.isSet(names().help) || parser.isSet(names().version)) {
        options.request = parser.isSet(names().help) ? Request::help : Request::version;
        return options;
    }
    if (parser.isSet(names().out)) {
        options.outputDirectory = outputFolder(parser.value(names().out));
    }
    if (parser.isSet(names().jobs)) {
        options.jobsAtOnce = jobCount(parser.value(names().jobs));
    }
    const QStringList positionals = parser.positionalArguments() + split.behind;
    if (positionals.size() == 1 && isQueueFile(positionals.first())) {
        options.queueFile = FileURL::ofPath(positionals.first());
    } else {
        takePositionals(options, parser.positionalArguments(), split.behind);
    }
    if (parser.isSet(names().entry)) {
        if (!options.queueFile) {
            throw UsageError(u"--entry goes with a queue file"_s);
        }
        options.entry = entryNumber(parser.value(names().entry));
    }
    return options;
}

QString BatchOptions::helpText()
{
    return uR"(Usage: morvix-batch [estimate] ACTION [field=value …] [options] [--] FILE…
       morvix-batch QUEUE.json [--entry N] [options]

Works through the files without a window. The inputs are never changed. A FILE may be a folder: all
media files in it are taken. With the word "estimate", tells what would come out and runs nothing.

Actions and their fields, with what they are when nothing is said
  targetSize   fit each film under an exact size
               targetMB=25 muted=false skipHeadSeconds=N skipTailSeconds=N exactTwoPass=false
  convert      change the container, encode only what it can't hold
               container=mp4|mov|mkv|webm|avi forceReencode=false
               audioFormat=keep|aac|mp3|wav|flac
  compress     make each film smaller
               mode=smart|quality quality=maximum|high|balanced|small|tiny
               resolution=original|p2160|p1440|p1080|p720|p480|custom customHeight=N muted=false
  extract      take the sound out
               format=m4a|mp3|aac|wav bitrateKbps=192 audioTrackIndex=0
  trim         keep some stretches
               segments='[{"start":1,"end":3.5}]' separateFiles=false exactReencode=false
  gif          make an animated GIF
               start=0 end=N width=480 fps=15 loopForever=true bounce=false screenContent=false
  enhance      clean up, sharpen, enlarge
               denoise=off|light|medium|strong sharpen=off|light|medium upscale=x1|x15|x2
               muted=false
  merge        join all files in the order given
               container=mp4|mov|mkv|webm|avi forceReencode=false
  split        cut each film into parts
               mode=bySize|byDuration|byParts sizePerPartMB=25 durationPerPartSeconds=60 parts=2
  adjust       rotate, flip, change the speed, reverse
               rotation=none|cw90|r180|ccw90 flipH=false flipV=false speed=1 reverse=false
               muted=false

Fields of most actions
  advanced.NAME=VALUE      codec, crf, fpsCap, audioBitrateKbps, volumeDb, replacementAudioURL,
                           crop, extraArgs, hdrPassthrough, preserveAlpha; lists and objects as JSON

Options
  --out DIR    write the results to DIR instead of beside each file
  --jobs N     run up to N jobs side by side, 3 at most, for this call
  --entry N    run the one entry N of a queue file, counted from 0
  --dry-run    show the command lines and run nothing
  --json       report as JSON, one object a line
  --help       show this help
  --version    show the version

Exit codes
  0 all done   1 some failed   64 usage   69 no ffmpeg   130 interrupted   143 terminated
  and for the one entry of --entry:
  64 no such entry   65 the input or a value can't be used, or the limit can't be met
  66 no input   69 no such encoder   70 ffmpeg failed   73 the output can't be written
)"_s;
}
