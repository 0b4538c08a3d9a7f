// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/LibavFrameGenerator.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

#include <algorithm>
#include <cstdio>

// What a strip of 14 thumbnails of a film of ten minutes in 1080p costs, by keyframe and exact,
// against as many runs of ffmpeg that seek and scale the same way. Pairs of alternating order.
//
// Aim: a strip by keyframe in at most 0.2 of the time. Needs a machine that does nothing else.

using namespace Qt::StringLiterals;

namespace {

constexpr int pairCount = 5;
constexpr int thumbnailCount = 14;
constexpr double filmSeconds = 600;
constexpr QSize thumbnailSize(220, 124);

double seconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

void ffmpeg(const QStringList &args)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(
        u"ffmpeg"_s,
        QStringList{u"-hide_banner"_s, u"-nostdin"_s, u"-loglevel"_s, u"error"_s, u"-y"_s} + args);
    process.waitForFinished(-1);
    if (process.exitCode() != 0) {
        qFatal("%s", process.readAllStandardError().constData());
    }
}

// Half a minute of grain at a camera's rate, twenty times.
QString makeFilm(const QString &folder)
{
    const QString scene = folder + u"/scene.mp4"_s;
    const QString film = folder + u"/film.mp4"_s;
    ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s,
            u"testsrc2=size=1920x1080:rate=25:duration=30,noise=alls=8:allf=t"_s, u"-c:v"_s,
            u"libx264"_s, u"-preset"_s, u"veryfast"_s, u"-b:v"_s, u"6M"_s, u"-pix_fmt"_s,
            u"yuv420p"_s, scene});
    ffmpeg({u"-stream_loop"_s, u"19"_s, u"-i"_s, scene, u"-c"_s, u"copy"_s, film});
    return film;
}

double timeOf(int thumbnail)
{
    return (thumbnail + 0.5) * filmSeconds / thumbnailCount;
}

double stripByFFmpeg(const QString &film, const QString &folder)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < thumbnailCount; ++i) {
        ffmpeg({u"-ss"_s, QString::number(timeOf(i)), u"-i"_s, film, u"-frames:v"_s, u"1"_s,
                u"-vf"_s, u"scale=220:124"_s, folder + u"/thumbnail.bmp"_s});
    }
    return seconds(timer);
}

double strip(const QString &film, FrameGenerator::Tolerance tolerance)
{
    QElapsedTimer timer;
    timer.start();
    LibavFrameGenerator generator(QUrl::fromLocalFile(film), thumbnailSize);
    for (int i = 0; i < thumbnailCount; ++i) {
        if (generator.frame(timeOf(i), tolerance).size() != thumbnailSize) {
            qFatal("no thumbnail");
        }
    }
    return seconds(timer);
}

void comparePairs(const char *title, const QString &film, const QString &folder,
                  FrameGenerator::Tolerance tolerance)
{
    QList<double> ratios;
    for (int pair = 0; pair < pairCount; ++pair) {
        const bool isOursFirst = pair % 2 == 0;
        const double first = isOursFirst ? strip(film, tolerance) : stripByFFmpeg(film, folder);
        const double second = isOursFirst ? stripByFFmpeg(film, folder) : strip(film, tolerance);
        const double ours = isOursFirst ? first : second;
        const double theirs = isOursFirst ? second : first;
        ratios += ours / theirs;
        std::printf("%s: ours %.3f s, ffmpeg %.3f s, ratio %.3f\n", title, ours, theirs,
                    ratios.last());
    }
    std::ranges::sort(ratios);
    std::printf("%s: median ratio %.3f\n", title, ratios.at(pairCount / 2));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const QTemporaryDir folder;
    const QString film = makeFilm(folder.path());
    comparePairs("by keyframe (aim 0.2)", film, folder.path(),
                 FrameGenerator::Tolerance::nearestKeyframe);
    comparePairs("exact", film, folder.path(), FrameGenerator::Tolerance::zero);
    return 0;
}
