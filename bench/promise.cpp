// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/DescribedError.h"
#include "Engine/FFmpegLocator.h"
#include "PromiseClips.h"
#include "PromiseJob.h"
#include "PromiseReport.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <span>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

struct Options {
    /// Where the made films stay for the next run; a temporary folder where it is absent.
    std::optional<QString> clipFolder;
    QStringList films;
    /// Leaves the two-pass path out, which the stand-in has no part in.
    bool onlyStandIn = false;
};

Options parse(const QStringList &arguments)
{
    Options options;
    for (const QString &argument : arguments) {
        if (argument == "--only-stand-in"_L1) {
            options.onlyStandIn = true;
        } else if (QFileInfo(argument).isDir()) {
            options.clipFolder = argument;
        } else {
            options.films.append(argument);
        }
    }
    return options;
}

QList<PromiseReport::Row> makeRows(const Options &options, const FFmpegToolset &tools,
                                   const QString &folder)
{
    QList<PromiseClips::Clip> clips = PromiseClips::make(tools.ffmpegURL, folder);
    for (const QString &film : options.films) {
        clips.append(PromiseClips::fromFile(film));
    }
    QList<PromiseReport::Row> rows;
    for (const PromiseClips::Clip &clip : clips) {
        for (const double limitMB : clip.limitsMB) {
            rows.append({PromiseJob::makePair(clip, limitMB, tools), {}, {}});
        }
    }
    return rows;
}

void runRow(PromiseReport::Row &row, const Options &options, const FFmpegToolset &tools,
            const QString &folder)
{
    if (!options.onlyStandIn) {
        row.twoPasses = PromiseJob::run(row.pair, PromiseJob::Path::twoPasses, tools, folder);
    }
    row.standIn = PromiseJob::run(row.pair, PromiseJob::Path::standIn, tools, folder);
}

// Two at a time: the middle of a job keeps more than one core busy, its ends don't.
void runAll(std::span<PromiseReport::Row> rows, const Options &options, const FFmpegToolset &tools,
            const QString &folder)
{
    std::atomic<size_t> next = 0;
    const auto work = [&] {
        for (size_t i = next++; i < rows.size(); i = next++) {
            runRow(rows[i], options, tools, folder + u"/job-%1"_s.arg(i));
            std::fprintf(stderr, "\r%zu of %zu", i + 1, rows.size());
        }
    };
    const std::jthread second(work);
    work();
}

bool isBroken(const PromiseReport::Row &row)
{
    const auto broken = [](const std::optional<PromiseJob::Result> &result) {
        return result && result->ending == PromiseJob::Ending::broken;
    };
    return broken(row.twoPasses) || broken(row.standIn);
}

void print(const QString &text)
{
    std::fputs(text.toUtf8().constData(), stdout);
}

int measure(const Options &options, const FFmpegToolset &tools, const QString &scratch)
{
    QElapsedTimer timer;
    timer.start();
    QList<PromiseReport::Row> rows = makeRows(options, tools, options.clipFolder.value_or(scratch));
    runAll(rows, options, tools, scratch);
    print(PromiseReport::table(rows) + u'\n' + PromiseReport::summary(rows));
    print(u"\n%1 pairs in %2 s.\n"_s.arg(rows.size()).arg(timer.elapsed() / 1000));
    return std::ranges::any_of(rows, isBroken) ? 1 : 0;
}

} // namespace

// promise [--only-stand-in] [FOLDER] [FILM…]: how well the size promise is kept, on films made in
// FOLDER and on those given. Fails when a finished job is over its limit.
int main(int argc, char *argv[])
{
    qputenv("LC_ALL", "C.UTF-8");
    const QCoreApplication application(argc, argv);
    const QTemporaryDir scratch;
    // What a losing attempt leaves behind goes with the folder.
    qputenv("TMPDIR", scratch.path().toUtf8());
    const auto tools = FFmpegLocator::shared().discover();
    if (!tools) {
        std::fputs("promise: ffmpeg and ffprobe are needed\n", stderr);
        return 2;
    }
    try {
        return measure(parse(QCoreApplication::arguments().sliced(1)), *tools, scratch.path());
    } catch (const DescribedError &error) {
        print(error.errorDescription() + u'\n');
        return 2;
    }
}
