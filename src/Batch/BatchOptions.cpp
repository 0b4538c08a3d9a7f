// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/BatchOptions.h"

#include "Batch/FieldAssignment.h"
#include "Batch/FileArgument.h"
#include "Engine/Text.h"
#include "Models/JobParamsJson.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// Beyond this the sums leave the range of 64 bits.
constexpr double largestTargetMB = 1e9;

struct OptionNames {
    QString out = u"out"_s;
    QString jobs = u"jobs"_s;
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
    return FileArgument::url(path);
}

qint64 jobCount(const QString &text)
{
    const std::optional<qint64> count = Text::toInteger(text);
    if (!count || *count < 1) {
        throw UsageError(u"--jobs expects a whole number from 1"_s);
    }
    return *count;
}

void assignField(TargetSizeParams &params, const QString &argument)
{
    const qsizetype equals = argument.indexOf(u'=');
    try {
        FieldAssignment::assign(params, argument.first(equals), argument.sliced(equals + 1));
    } catch (const Json::DecodeError &error) {
        throw UsageError(error.errorDescription() +
                         u" (a file of such a name is written ./%1)"_s.arg(argument));
    }
}

void requireUsable(const TargetSizeParams &params)
{
    if (!std::isfinite(params.targetMB) || params.targetMB <= 0 ||
        params.targetMB > largestTargetMB) {
        throw UsageError(u"targetMB: a number of megabytes above 0 and up to %1 is expected"_s.arg(
            largestTargetMB, 0, 'f', 0));
    }
}

// ACTION [field=value …] FILE…
void takePositionals(BatchOptions &options, const QStringList &positionals,
                     const QStringList &furtherFiles)
{
    if (positionals.isEmpty()) {
        throw UsageError(u"an action is expected, such as targetSize"_s);
    }
    if (positionals.first() != "targetSize"_L1) {
        throw UsageError(
            u"there is no action \"%1\"; there is: targetSize"_s.arg(positionals.first()));
    }
    qsizetype next = 1;
    for (; next < positionals.size() && isField(positionals.at(next)); ++next) {
        assignField(options.params, positionals.at(next));
    }
    for (const QString &path : positionals.sliced(next) + furtherFiles) {
        if (path.isEmpty()) {
            throw UsageError(u"a file with an empty name can't be meant"_s);
        }
        options.files.append(FileArgument::url(path));
    }
    if (options.files.isEmpty()) {
        throw UsageError(u"at least one file is expected"_s);
    }
    requireUsable(options.params);
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
    takePositionals(options, parser.positionalArguments(), split.behind);
    return options;
}

QString BatchOptions::helpText()
{
    return uR"(Usage: morvix-batch ACTION [field=value …] [options] [--] FILE…

A FILE may be a folder: all media files in it are taken.

Works through the files without a window. The inputs are never changed.

Actions
  targetSize   fit each film under an exact size

Fields of targetSize
  targetMB=25              the limit in megabytes of 1,000,000 bytes
  muted=false              drop the sound
  skipHeadSeconds=N        seconds to cut off the start
  skipTailSeconds=N        seconds to cut off the end
  exactTwoPass=false       two careful passes of x264 in place of one fast one
  advanced.NAME=VALUE      codec, fpsCap, audioBitrateKbps, volumeDb, replacementAudioURL,
                           crop, extraArgs; lists and objects as JSON

Options
  --out DIR    write the results to DIR instead of beside each file
  --jobs N     run up to N jobs side by side, 3 at most, for this call
  --dry-run    show the command lines and run nothing
  --json       report as JSON, one object a line
  --help       show this help
  --version    show the version

Exit codes
  0 all done   1 some failed   64 usage   69 no ffmpeg   130 interrupted
)"_s;
}
