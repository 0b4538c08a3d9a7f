// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"
#include "NoDialogs.h"
#include "Platform/DesktopServices.h"
#include "Platform/SilentServices.h"
#include "Views/Controls/RowList.h"
#include "Views/Look/Theme.h"
#include "Views/Shell/FileSidebar.h"
#include "Views/Shell/RootView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <unistd.h>

// What the window costs with 500 files in its list, off the screen: the longest turn of the event
// loop while they come in and while the list is scrolled from end to end, the memory that they add,
// and the time from a change of language until all of it is painted anew.
//
// Aims: no turn over 16 ms, under 40 MB, under 100 ms. A probe of made-up answers stands in for
// ffprobe, so that only the program itself is measured. Needs a machine that does nothing else.

using namespace Qt::StringLiterals;

namespace {

constexpr int fileCount = 500;
constexpr int languageChanges = 20;
constexpr int scrollStep = 40;

void writeScript(const QString &path, const QByteArray &text)
{
    QFile file(path);
    std::ignore = file.open(QIODevice::WriteOnly);
    file.write(text);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void layTools(const QString &folder)
{
    writeScript(folder + u"/ffmpeg"_s, "#!/bin/sh\necho ' V....D libx264 x'\n");
    writeScript(folder + u"/ffprobe"_s,
                "#!/bin/sh\n"
                "echo '{\"format\": {\"duration\": \"83\", \"size\": \"45000000\"}, \"streams\": "
                "[{\"index\": 0, \"codec_type\": \"video\", \"codec_name\": \"h264\", "
                "\"width\": 1920, \"height\": 1080}]}'\n");
    qputenv("PATH", folder.toUtf8() + ":/usr/bin:/bin");
}

QList<QUrl> layFilms(const QString &folder)
{
    QList<QUrl> urls;
    for (int i = 0; i < fileCount; ++i) {
        const QString path = folder + u"/holiday by the sea, part %1.mp4"_s.arg(i);
        writeScript(path, "film");
        urls += QUrl::fromLocalFile(path);
    }
    return urls;
}

double residentMB()
{
    QFile file(u"/proc/self/statm"_s);
    std::ignore = file.open(QIODevice::ReadOnly);
    const double pages = file.readAll().split(' ').at(1).toDouble();
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

/// What the main thread has worked, in milliseconds. Waiting for a processor doesn't count: while
/// files are probed, the probes have them all.
double workedMs()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// One turn of the event loop with all that it paints.
double turn()
{
    const double before = workedMs();
    QCoreApplication::processEvents();
    return workedMs() - before;
}

void measureIntake(AppModel &model, const QList<QUrl> &films)
{
    // The first file brings in the workspace itself.
    model.addURLs({films.first()});
    while (model.probingCount() > 0) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    turn();
    const double before = residentMB();
    model.addURLs(films.mid(1));
    double longest = 0;
    while (model.probingCount() > 0) {
        longest = std::max(longest, turn());
    }
    longest = std::max(longest, turn());
    std::printf(
        "intake of %d files: longest turn %.1f ms (aim 16), memory added %.1f MB (aim 40)\n",
        fileCount, longest, residentMB() - before);
}

void measureScrolling(const RootView &window)
{
    const auto *list = window.findChild<FileSidebar *>()->findChild<RowList *>();
    QScrollBar *bar = list->verticalScrollBar();
    const double before = residentMB();
    double longest = 0;
    double all = 0;
    int turns = 0;
    for (int value = 0; value <= bar->maximum(); value += scrollStep) {
        bar->setValue(value);
        const double taken = turn();
        longest = std::max(longest, taken);
        all += taken;
        ++turns;
    }
    std::printf("scrolling through them: longest turn %.1f ms (aim 16), mean %.2f ms, "
                "%lld rows made, memory added %.1f MB\n",
                longest, all / turns, static_cast<long long>(list->rowsMade()),
                residentMB() - before);
}

void measureLanguage(AppModel &model, RootView &window)
{
    QList<double> times;
    for (int i = 0; i < languageChanges; ++i) {
        const bool isEnglish = model.language() == AppLanguage::english;
        QElapsedTimer timer;
        timer.start();
        model.setLanguage(isEnglish ? AppLanguage::simplifiedChinese : AppLanguage::english);
        QCoreApplication::processEvents();
        window.repaint();
        times += static_cast<double>(timer.nsecsElapsed()) / 1e6;
    }
    std::ranges::sort(times);
    std::printf("change of language: median %.1f ms, longest %.1f ms (aim 100)\n",
                times.at(times.size() / 2), times.last());
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    Look::apply(Look::Scheme::light);
    const QTemporaryDir folder;
    layTools(folder.path());
    const QList<QUrl> films = layFilms(folder.path());
    const PlatformServices services = makeSilentServices();
    AppModel model(Settings(QString(), Settings::Writing::dropped), services);
    NoDialogs dialogs;
    RootView window({model, *services.desktopServices, dialogs}, {});
    window.show();
    turn();
    measureIntake(model, films);
    measureScrolling(window);
    measureLanguage(model, window);
    return 0;
}
