// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"
#include "App/ProcessLocale.h"
#include "App/SignalWatcher.h"
#include "Batch/BatchOptions.h"
#include "Batch/BatchRun.h"
#include "Batch/ExitCode.h"
#include "Batch/JsonReport.h"
#include "Batch/TextReport.h"
#include "Platform/SilentServices.h"

#include <QCoreApplication>
#include <QFile>

#include <csignal>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

struct Streams {
    QFile out;
    QFile errors;

    Streams()
    {
        // A caller may have closed them; writing then just fails.
        std::ignore = out.open(stdout, QIODevice::WriteOnly);
        std::ignore = errors.open(stderr, QIODevice::WriteOnly);
    }

    void say(const QString &text) { write(out, text); }
    void complain(const QString &text) { write(errors, text); }

private:
    static void write(QFile &file, const QString &text)
    {
        file.write(text.toUtf8() + '\n');
        file.flush();
    }
};

std::unique_ptr<Report> makeReport(const BatchOptions &options, Streams &streams)
{
    if (options.output == BatchOptions::Output::json) {
        return std::make_unique<JsonReport>(streams.out);
    }
    const auto bar =
        ::isatty(STDOUT_FILENO) == 1 ? TextReport::Bar::shown : TextReport::Bar::hidden;
    return std::make_unique<TextReport>(streams.out, streams.errors, bar);
}

int work(const BatchOptions &options, Streams &streams)
{
    SignalWatcher signalWatcher;
    // The user's settings are read as the window reads them, and never written.
    AppModel model(Settings(Settings::defaultPath(), Settings::Writing::dropped),
                   makeHeadlessServices());
    if (!model.toolset()) {
        streams.complain(model.t(u"settings.ffmpeg.missing"_s));
        return ExitCode::noFFmpeg;
    }
    const std::unique_ptr<Report> report = makeReport(options, streams);
    BatchRun run(options, model, *report);
    QObject::connect(&signalWatcher, &SignalWatcher::caught, &run, &BatchRun::interrupt);
    QObject::connect(&run, &BatchRun::done, qApp, &QCoreApplication::exit, Qt::QueuedConnection);
    QMetaObject::invokeMethod(&run, &BatchRun::start, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    ProcessLocale::useUtf8();
    std::signal(SIGPIPE, SIG_IGN);
    const QCoreApplication application(argc, argv);
    Streams streams;
    try {
        const BatchOptions options = BatchOptions::parse(QCoreApplication::arguments().sliced(1));
        switch (options.request) {
        case BatchOptions::Request::help:
            streams.say(BatchOptions::helpText());
            return ExitCode::allDone;
        case BatchOptions::Request::version:
            streams.say(u"morvix-batch " MORVIX_VERSION ""_s);
            return ExitCode::allDone;
        case BatchOptions::Request::run:
            return work(options, streams);
        }
    } catch (const UsageError &error) {
        streams.complain(u"morvix-batch: "_s + error.message());
        streams.complain(u"Try: morvix-batch --help"_s);
    }
    return ExitCode::usage;
}
