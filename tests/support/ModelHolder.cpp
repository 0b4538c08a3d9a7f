// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"
#include "App/SignalWatcher.h"
#include "Platform/SilentServices.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cstdio>
#include <unistd.h>

// A program around the application object that fits one film under half a megabyte and tells when
// its ffmpeg has come on: for tests of what becomes of the child however the program ends. It quits
// on a signal and on a byte on its standard input.
int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    SignalWatcher signalWatcher;
    AppModel model(Settings(QString(), Settings::Writing::dropped), makeSilentServices());
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    const auto quit = [] { QCoreApplication::quit(); };
    QObject::connect(&signalWatcher, &SignalWatcher::caught, &application, quit);
    QObject::connect(&input, &QSocketNotifier::activated, &application, quit);
    const auto tellProgress = [](const std::shared_ptr<Job> &job) {
        const auto *running = std::get_if<Job::Running>(&job->state());
        if (running && running->progress > 0) {
            std::puts("running");
            std::fflush(stdout);
        }
    };
    model.addURLs({QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1]))},
                  [&](const VideoFile &file) {
                      TargetSizeParams params;
                      params.targetMB = 0.5;
                      model.enqueueProbed(file, params);
                      const std::shared_ptr<Job> job = model.jobs().last();
                      QObject::connect(job.get(), &Job::stateChanged, &application,
                                       [=] { tellProgress(job); });
                  });
    return QCoreApplication::exec();
}
