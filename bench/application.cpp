// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"
#include "Engine/FFmpegLocator.h"
#include "Engine/Text.h"
#include "Heartbeat.h"
#include "Platform/SilentServices.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <unistd.h>

// What the application object costs: taking in 500 clips against the bare probes, the turns of the
// event loop meanwhile and while three encodes run, a preview against its bare command lines, and a
// queue of 5,000 jobs.
//
// Aims: intake at most 1.15 of the bare probes, a preview at most 1.1 of its lines, no turn over
// 16 ms, 5,000 jobs added in under 0.5 s
// with under 60 MB, the next job taken in under 1 ms. Needs a machine that does nothing else.

using namespace Qt::StringLiterals;

namespace {

constexpr int clipCount = 500;
// As many as the application object runs side by side.
constexpr int probesAtOnce = 64;
constexpr int pairCount = 5;
constexpr int jobCount = 5'000;

void runTool(const QString &program, const QStringList &args)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program, args);
    process.waitForFinished(-1);
    if (process.exitCode() != 0) {
        qFatal("%s", process.readAllStandardError().constData());
    }
}

void makeFilm(const QString &path, int seconds, const QString &size)
{
    runTool(u"ffmpeg"_s,
            {u"-hide_banner"_s, u"-nostdin"_s, u"-loglevel"_s, u"error"_s, u"-y"_s, u"-f"_s,
             u"lavfi"_s, u"-i"_s,
             u"testsrc2=size=%1:rate=25:duration=%2,noise=alls=6:allf=t"_s.arg(size).arg(seconds),
             u"-c:v"_s, u"libx264"_s, u"-preset"_s, u"ultrafast"_s, path});
}

std::unique_ptr<AppModel> makeModel()
{
    return std::make_unique<AppModel>(Settings(QString(), Settings::Writing::dropped),
                                      makeSilentServices());
}

void waitFor(const std::function<bool()> &holds, AppModel &model, void (AppModel::*changed)())
{
    QEventLoop loop;
    QObject::connect(&model, changed, &loop, [&] {
        if (holds()) {
            loop.quit();
        }
    });
    loop.exec();
}

double seconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

double bareProbes(const QString &folder)
{
    QElapsedTimer timer;
    timer.start();
    runTool(u"sh"_s, {u"-c"_s,
                      u"ls \"$0\"/* | xargs -P %1 -n 1 ffprobe -v error -print_format json "
                      "-show_format -show_streams"_s.arg(probesAtOnce),
                      folder});
    return seconds(timer);
}

double intake(const QString &folder)
{
    const std::unique_ptr<AppModel> model = makeModel();
    QElapsedTimer timer;
    timer.start();
    model->addURLs({QUrl::fromLocalFile(folder + u'/')});
    waitFor([&] { return model->probingCount() == 0; }, *model, &AppModel::probingCountChanged);
    return seconds(timer);
}

void measureIntake(const QString &folder)
{
    QList<double> ratios;
    double longestGap = 0;
    for (int pair = 0; pair < pairCount; ++pair) {
        const double bare = bareProbes(folder);
        Heartbeat heartbeat;
        const double ours = intake(folder);
        ratios.append(ours / bare);
        longestGap = std::max(longestGap, heartbeat.longestGapMs());
        std::printf("intake of %d clips: bare %.2f s, ours %.2f s, ratio %.3f\n", clipCount, bare,
                    ours, ours / bare);
    }
    std::ranges::sort(ratios);
    std::printf(
        "intake: median ratio %.3f (aim 1.15); longest turn of the event loop %.1f ms (aim 16)\n",
        ratios.at(pairCount / 2), longestGap);
}

void measureEncodes(const QString &folder)
{
    const std::unique_ptr<AppModel> model = makeModel();
    model->setOutputDirectoryPath(folder + u"/out"_s);
    for (int i = 0; i < 3; ++i) {
        makeFilm(folder + u"/long%1.mp4"_s.arg(i), 20, u"1280x720"_s);
    }
    model->addURLs({QUrl::fromLocalFile(folder + u'/')});
    waitFor([&] { return model->probingCount() == 0; }, *model, &AppModel::probingCountChanged);
    QCoreApplication::processEvents();
    Heartbeat heartbeat;
    QEventLoop loop;
    int running = 3;
    TargetSizeParams params;
    params.targetMB = 4;
    model->enqueue(params, AppModel::Scope::allFiles);
    // Behind the jobs: workers that find none end for good.
    model->setQueueConcurrency(3);
    for (const std::shared_ptr<Job> &job : model->jobs()) {
        QObject::connect(job.get(), &Job::stateChanged, &loop, [&, job] {
            if (job->outcome() != Job::Outcome::analyzing &&
                job->outcome() != Job::Outcome::running && --running == 0) {
                loop.quit();
            }
        });
    }
    loop.exec();
    std::printf("three encodes: longest turn of the event loop %.1f ms (aim 16)\n",
                heartbeat.longestGapMs());
}

// The command lines of the preview, one after the other.
double barePreview(const AppModel &model, const JobPlan &plan)
{
    for (const QUrl &folder : plan.createDirs) {
        QDir().mkpath(folder.toLocalFile());
    }
    QElapsedTimer timer;
    timer.start();
    for (const FFmpegStep &step : model.runnablePlan(plan).steps) {
        runTool(model.toolset()->ffmpegURL.toLocalFile(), step.args);
    }
    const double taken = seconds(timer);
    for (const QUrl &folder : plan.createDirs) {
        QDir(folder.toLocalFile()).removeRecursively();
    }
    return taken;
}

double preview(AppModel &model, const PreviewEngine::Request &request)
{
    QElapsedTimer timer;
    timer.start();
    model.generatePreview(request, 2);
    waitFor([&] { return !model.previewRunning(); }, model, &AppModel::previewRunningChanged);
    if (!model.previewImages()) {
        qFatal("no preview");
    }
    return seconds(timer);
}

void measurePreview(const QString &folder)
{
    makeFilm(folder + u"/film.mp4"_s, 10, u"1920x1080"_s);
    const std::unique_ptr<AppModel> model = makeModel();
    model->addURLs({QUrl::fromLocalFile(folder + u"/film.mp4"_s)});
    waitFor([&] { return model->probingCount() == 0; }, *model, &AppModel::probingCountChanged);
    QCoreApplication::processEvents();
    const PreviewEngine::Request request = CompressParams();
    QList<double> ratios;
    for (int pair = 0; pair < pairCount; ++pair) {
        const double bare = barePreview(
            *model, PreviewEngine::plan(*model->selectedFile(), 2, request, *model->toolset()));
        const double ours = preview(*model, request);
        ratios.append(ours / bare);
        std::printf("preview of 1080p: bare %.2f s, ours %.2f s, ratio %.3f\n", bare, ours,
                    ours / bare);
    }
    std::ranges::sort(ratios);
    std::printf("preview: median ratio %.3f (aim 1.1)\n", ratios.at(pairCount / 2));
}

double residentMB()
{
    QFile file(u"/proc/self/statm"_s);
    std::ignore = file.open(QIODevice::ReadOnly);
    const double pages = file.readAll().split(' ').at(1).toDouble();
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

// Without tools every job fails as soon as it is taken: what remains is the queue itself.
void measureQueue()
{
    qputenv("PATH", "/nowhere");
    const std::unique_ptr<AppModel> model = makeModel();
    VideoFile file;
    file.url = QUrl::fromLocalFile(u"/films/holiday.mov"_s);
    file.audioStreams = {AudioStream()};
    const double before = residentMB();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < jobCount; ++i) {
        file.id = QUuid::createUuid();
        model->enqueueProbed(file, TargetSizeParams());
    }
    const double added = seconds(timer);
    const double megabytes = residentMB() - before;
    QEventLoop loop;
    const std::shared_ptr<Job> last = model->jobs().last();
    QObject::connect(last.get(), &Job::stateChanged, &loop, &QEventLoop::quit);
    Heartbeat heartbeat;
    timer.start();
    loop.exec();
    std::printf("queue of %d jobs: added in %.3f s (aim 0.5) with %.1f MB (aim 60); next job taken "
                "in %.3f ms on average (aim 1)\n",
                jobCount, added, megabytes, seconds(timer) * 1000 / jobCount);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const QTemporaryDir clips;
    const QTemporaryDir films;
    makeFilm(clips.filePath(u"clip0.mp4"_s), 1, u"320x180"_s);
    for (int i = 1; i < clipCount; ++i) {
        QFile::copy(clips.filePath(u"clip0.mp4"_s), clips.filePath(u"clip%1.mp4"_s.arg(i)));
    }
    measureIntake(clips.path());
    measureEncodes(films.path());
    const QTemporaryDir shown;
    measurePreview(shown.path());
    measureQueue();
    return 0;
}
