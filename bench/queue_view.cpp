// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"
#include "NoDialogs.h"
#include "Platform/DesktopServices.h"
#include "Platform/SilentServices.h"
#include "Views/Controls/RowList.h"
#include "Views/Look/Theme.h"
#include "Views/Queue/QueueView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>

#include <algorithm>
#include <cstdio>
#include <vector>

// What the queue costs on the main thread with 5,000 jobs in it, off the screen: opening it,
// scrolling through it, three jobs that move on by half a percent, and adding one job more.
//
// Aims: opened in under 150 ms, no turn of the event loop over 16 ms, rows made only for what is in
// sight. Needs a machine that does nothing else.

using namespace Qt::StringLiterals;

namespace {

constexpr int jobCount = 5'000;
constexpr int scrollSteps = 500;
constexpr int progressSteps = 200;
constexpr int addedJobs = 100;

/// Does the thing and what follows from it, painting included whenever the screen is due; in
/// milliseconds.
template <typename Thing> double turn(const Thing &thing)
{
    QElapsedTimer timer;
    timer.start();
    thing();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void print(const char *what, std::vector<double> turns)
{
    std::ranges::sort(turns);
    std::printf("%s: %zu turns, median %.2f ms, longest %.2f ms (aim 16)\n", what, turns.size(),
                turns.at(turns.size() / 2), turns.back());
}

QUrl filmURL(int number)
{
    return QUrl::fromLocalFile(u"/films/holiday %1.mov"_s.arg(number));
}

void addJob(AppModel &model, int number)
{
    VideoFile film;
    film.url = filmURL(number);
    film.fileSizeBytes = 100'000'000;
    model.enqueueProbed(film, TargetSizeParams());
}

/// As a long day leaves it: of each four jobs one waits, one failed and two ended well.
void fill(AppModel &model)
{
    for (int i = 0; i < jobCount; ++i) {
        addJob(model, i);
        const std::shared_ptr<Job> job = model.jobs().last();
        if (i % 4 == 1) {
            job->setState(Job::Failed{u"FFmpeg error: no space left on device"_s});
        } else if (i % 4 > 1) {
            job->setState(Job::Finished{{filmURL(i)}, 100'000'000, 24'000'000 + i, {}});
        }
    }
}

void measureScrolling(RowList &list)
{
    QScrollBar *bar = list.verticalScrollBar();
    std::vector<double> turns;
    for (int step = 0; step < scrollSteps; ++step) {
        turns.push_back(turn([&] { bar->setValue(bar->value() + 3 * bar->singleStep()); }));
    }
    print("scrolling by the wheel", turns);
    turns.clear();
    for (int step = 0; step < scrollSteps; ++step) {
        turns.push_back(turn([&] { bar->setValue(step * 7919 % bar->maximum()); }));
    }
    print("scrolling by leaps", turns);
    std::printf("rows made for %d jobs: %lld\n", jobCount, static_cast<long long>(list.rowsMade()));
    bar->setValue(0);
}

void measureProgress(AppModel &model)
{
    std::vector<double> turns;
    for (int step = 0; step <= progressSteps; ++step) {
        for (const int job : {0, 1, 2}) {
            turns.push_back(turn([&] {
                model.jobs().at(job)->setState(
                    Job::Running{static_cast<double>(step) / progressSteps});
            }));
        }
    }
    print("three running jobs", turns);
}

void measureAdding(AppModel &model)
{
    std::vector<double> turns;
    for (int i = 0; i < addedJobs; ++i) {
        turns.push_back(turn([&] { addJob(model, jobCount + i); }));
    }
    print("adding one more", turns);
}

} // namespace

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    Look::apply(Look::Scheme::light);
    const PlatformServices services = makeSilentServices();
    AppModel model(Settings(QString(), Settings::Writing::dropped), services);
    model.setQueuePaused(true);
    fill(model);
    NoDialogs dialogs;
    std::unique_ptr<QueueView> view;
    const double opened = turn([&] {
        view = std::make_unique<QueueView>(ViewContext{model, *services.desktopServices, dialogs});
        view->resize(1040, 700);
        view->show();
    });
    std::printf("opening with %d jobs: %.1f ms (aim 150)\n", jobCount, opened);
    measureScrolling(*view->findChild<RowList *>());
    measureProgress(model);
    measureAdding(model);
    std::printf("clearing what has ended: %.2f ms (aim 16)\n",
                turn([&] { model.clearFinished(); }));
    return 0;
}
