// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "PromiseClips.h"

#include "Engine/ProcessRunner.h"
#include "Engine/Text.h"

#include <QFileInfo>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

enum class Sound { none, noise };

struct Recipe {
    QString name;
    int seconds;
    Sound sound;
    /// A lavfi graph; "{s}" stands for the seconds.
    QString picture;
    QList<double> limitsMB;
};

// Late bursts first: they are what an average rate alone gets wrong. Grain is the hardest picture
// there is; a limit is hard where it leaves far less than the grain wants.
QList<Recipe> recipes()
{
    return {
        {u"late burst, easy before"_s,
         30,
         Sound::noise,
         u"testsrc2=size=320x180:rate=25:duration={s},noise=alls=60:allf=t:enable='gte(t,24)'"_s,
         {1, 3}},
        {u"late burst, still before"_s,
         40,
         Sound::none,
         u"smptehdbars=size=480x270:rate=25:duration={s},"
         "noise=alls=80:allf=t:enable='gte(t,32)'"_s,
         {1, 3}},
        {u"late burst, slides before"_s,
         40,
         Sound::noise,
         u"testsrc2=size=480x270:rate=1/4:duration={s},fps=25,"
         "noise=alls=50:allf=t:enable='gte(t,32)'"_s,
         {1.5, 3}},
        {u"late burst, last tenth"_s,
         50,
         Sound::none,
         u"testsrc2=size=320x180:rate=25:duration={s},noise=alls=70:allf=t:enable='gte(t,45)'"_s,
         {1.2, 2.5}},
        {u"late burst, long"_s,
         60,
         Sound::noise,
         u"testsrc2=size=480x270:rate=25:duration={s},noise=alls=60:allf=t:enable='gte(t,48)'"_s,
         {2, 4}},
        {u"noise first, then still"_s,
         30,
         Sound::noise,
         u"smptehdbars=size=320x180:rate=25:duration={s},noise=alls=60:allf=t:enable='lt(t,6)'"_s,
         {1, 2}},
        {u"noise first, then easy"_s,
         50,
         Sound::none,
         u"testsrc2=size=480x270:rate=25:duration={s},noise=alls=60:allf=t:enable='lt(t,12)'"_s,
         {2, 5}},
        {u"bursts all along"_s,
         60,
         Sound::noise,
         u"testsrc2=size=320x180:rate=25:duration={s},"
         "noise=alls=60:allf=t:enable='lt(mod(t,10),2)'"_s,
         {1.5, 3}},
        {u"burst in the middle"_s,
         45,
         Sound::none,
         u"testsrc2=size=480x270:rate=25:duration={s},"
         "noise=alls=60:allf=t:enable='between(t,18,27)'"_s,
         {1.5, 4}},
        {u"growing grain"_s,
         40,
         Sound::noise,
         u"testsrc2=size=320x180:rate=25:duration={s},"
         "noise=alls=15:allf=t:enable='between(t,10,20)',"
         "noise=alls=35:allf=t:enable='between(t,20,30)',"
         "noise=alls=80:allf=t:enable='gte(t,30)'"_s,
         {1, 3}},
        {u"steady grain, small"_s,
         20,
         Sound::noise,
         u"testsrc2=size=320x180:rate=25:duration={s},noise=alls=40:allf=t"_s,
         {0.3, 0.6, 1, 2, 4}},
        {u"steady grain, larger"_s,
         25,
         Sound::none,
         u"testsrc2=size=640x360:rate=25:duration={s},noise=alls=30:allf=t"_s,
         {1, 3}},
        {u"moving pattern"_s,
         25,
         Sound::none,
         u"testsrc2=size=768x432:rate=25:duration={s}"_s,
         {1, 3}},
        {u"zoom into detail"_s,
         30,
         Sound::noise,
         u"mandelbrot=size=480x270:rate=25,trim=duration={s}"_s,
         {1, 2.5}},
        {u"still slides"_s,
         40,
         Sound::noise,
         u"testsrc2=size=640x360:rate=1/5:duration={s},fps=25"_s,
         {1, 2}},
        {u"grainy slides, no sound"_s,
         60,
         Sound::none,
         u"testsrc2=size=480x270:rate=1/3:duration={s},noise=alls=30:allf=t,fps=25"_s,
         {1, 3}},
        {u"portrait, grain"_s,
         25,
         Sound::noise,
         u"testsrc2=size=180x320:rate=30:duration={s},noise=alls=20:allf=t"_s,
         {1, 2}},
        {u"portrait, late burst"_s,
         40,
         Sound::noise,
         u"testsrc2=size=270x480:rate=30:duration={s},noise=alls=60:allf=t:enable='gte(t,32)'"_s,
         {1.5, 4}},
        {u"odd width, scaled down"_s,
         20,
         Sound::none,
         u"testsrc2=size=861x484:rate=25:duration={s},noise=alls=8:allf=t"_s,
         {1, 1.5}},
        {u"10 fps"_s,
         60,
         Sound::none,
         u"testsrc2=size=640x360:rate=10:duration={s},noise=alls=15:allf=t"_s,
         {1, 2.5}},
        {u"10 fps, late burst"_s,
         60,
         Sound::noise,
         u"testsrc2=size=320x180:rate=10:duration={s},noise=alls=60:allf=t:enable='gte(t,48)'"_s,
         {1.2, 2}},
        {u"variable rate"_s,
         30,
         Sound::noise,
         u"testsrc2=size=480x270:rate=25:duration={s},noise=alls=15:allf=t,"
         "select='not(between(mod(n,20),4,13))'"_s,
         {1, 2}},
        {u"variable rate, late burst"_s,
         40,
         Sound::none,
         u"testsrc2=size=320x180:rate=30:duration={s},noise=alls=60:allf=t:enable='gte(t,32)',"
         "select='gte(t,30)+not(mod(n,3))'"_s,
         {1, 2.5}},
        {u"scenes"_s,
         45,
         Sound::noise,
         u"testsrc2=size=480x270:rate=25:duration=12[a];"
         "mandelbrot=size=480x270:rate=25,trim=duration=10,format=yuv420p[b];"
         "smptehdbars=size=480x270:rate=25:duration=8,format=yuv420p[c];"
         "testsrc2=size=480x270:rate=25:duration=15,noise=alls=35:allf=t[d];"
         "[a]setsar=1[e];[b]setsar=1[f];[c]setsar=1[g];[d]setsar=1[h];"
         "[e][f][g][h]concat=n=4[out0]"_s,
         {0.6, 1.2, 4}},
        {u"scenes, hard first"_s,
         60,
         Sound::none,
         u"testsrc2=size=480x270:rate=25:duration=15,noise=alls=35:allf=t,setsar=1[a];"
         "testsrc2=size=480x270:rate=1/5:duration=30,fps=25,setsar=1[b];"
         "mandelbrot=size=480x270:rate=25,trim=duration=15,format=yuv420p,setsar=1[c];"
         "[a][b][c]concat=n=3[out0]"_s,
         {0.3, 2, 5}},
        {u"short, grain"_s,
         3,
         Sound::noise,
         u"testsrc2=size=320x180:rate=25:duration={s},noise=alls=60:allf=t"_s,
         {0.1, 0.2, 0.5}},
        {u"short, grain, larger"_s,
         3,
         Sound::none,
         u"testsrc2=size=640x360:rate=25:duration={s},noise=alls=80:allf=t"_s,
         {0.2, 0.5, 1}},
        {u"short, late burst"_s,
         5,
         Sound::none,
         u"testsrc2=size=320x180:rate=25:duration={s},noise=alls=60:allf=t:enable='gte(t,4)'"_s,
         {0.2, 0.5}},
        {u"ten seconds, late burst"_s,
         10,
         Sound::noise,
         u"testsrc2=size=320x180:rate=25:duration={s},noise=alls=60:allf=t:enable='gte(t,8)'"_s,
         {0.4, 1}},
    };
}

// Each frame a picture of its own: even a still film is then far larger than its limits.
QStringList makingArgs(const Recipe &recipe, const QString &output)
{
    const QString seconds = QString::number(recipe.seconds);
    QString picture = recipe.picture;
    picture.replace(u"{s}"_s, seconds);
    QStringList args{u"-hide_banner"_s, u"-nostdin"_s, u"-loglevel"_s, u"error"_s, u"-y"_s,
                     u"-f"_s,           u"lavfi"_s,    u"-i"_s,        picture};
    if (recipe.sound == Sound::noise) {
        args << u"-f"_s << u"lavfi"_s << u"-i"_s
             << u"anoisesrc=color=pink:amplitude=0.3:duration="_s + seconds << u"-c:a"_s << u"aac"_s
             << u"-b:a"_s << u"160k"_s;
    }
    // Passed on as they come, frames that were left out stay left out.
    args << u"-vsync"_s << u"vfr"_s << u"-c:v"_s << u"mjpeg"_s << u"-q:v"_s << u"2"_s
         << u"-pix_fmt"_s << u"yuvj420p"_s << output;
    return args;
}

QString fileName(const QString &clipName)
{
    QString name = clipName;
    name.remove(u',');
    return name.replace(u' ', u'-') + u".mkv"_s;
}

} // namespace

QList<PromiseClips::Clip> PromiseClips::make(const QUrl &ffmpeg, const QString &folder)
{
    QList<Clip> clips;
    for (const Recipe &recipe : recipes()) {
        const QString path = Text::joinedPath(folder, fileName(recipe.name));
        if (!QFileInfo::exists(path)) {
            ProcessRunner::runAsync(
                ffmpeg, makingArgs(recipe, path), [](const auto &) {}, [](const QString &) {});
        }
        clips.append({recipe.name, QUrl::fromLocalFile(path), recipe.limitsMB});
    }
    return clips;
}

PromiseClips::Clip PromiseClips::fromFile(const QString &path)
{
    constexpr std::array shares{0.35, 0.7};
    const QFileInfo file(path);
    Clip clip{file.fileName(), QUrl::fromLocalFile(file.absoluteFilePath()), {}};
    for (const double share : shares) {
        // Whole kilobytes, so that the table shows the very limit.
        clip.limitsMB.append(std::round(share * static_cast<double>(file.size()) / 1e3) / 1e3);
    }
    return clip;
}
