// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/NumberedFilm.h"

#include "support/Clips.h"
#include "support/TempFolder.h"

#include <cmath>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

// Two steps of grey a frame outlast any encoder; a hundred frames fit between black and white.
constexpr int darkest = 20;
constexpr double step = 2;

// A 2x2 picture in 4:2:0: four bytes of grey and two of colour.
constexpr qsizetype bytesPerFrame = 6;

} // namespace

QString NumberedFilm::picture()
{
    return u"color=black:size=160x90:rate=%1:duration=%2,format=yuv420p,"
           "geq=lum='%3+2*N':cb=128:cr=128"_s.arg(QString::number(rate), QString::number(length),
                                                  QString::number(darkest));
}

void NumberedFilm::make(const QString &path, Sound sound, const QStringList &encoderOptions)
{
    QStringList args{u"-f"_s, u"lavfi"_s, u"-i"_s, picture()};
    if (sound == Sound::aac) {
        args << u"-f"_s << u"lavfi"_s << u"-i"_s
             << u"sine=duration=%1"_s.arg(QString::number(length)) << u"-c:a"_s << u"aac"_s;
    }
    args << u"-c:v"_s << u"libx264"_s << u"-preset"_s << u"ultrafast"_s << u"-b:v"_s << u"500k"_s
         << u"-g"_s << u"250"_s << u"-sc_threshold"_s << u"0"_s << u"-force_key_frames"_s
         << u"0.6,1.4,2.2,3.0"_s << encoderOptions << path;
    Clips::ffmpeg(args);
}

QList<int> NumberedFilm::frames(const QString &path)
{
    const TempFolder folder;
    const QString raw = folder.path(u"frames"_s);
    Clips::ffmpeg({u"-i"_s, path, u"-map"_s, u"0:v:0"_s, u"-vf"_s, u"crop=2:2"_s, u"-vsync"_s,
                   u"passthrough"_s, u"-pix_fmt"_s, u"yuv420p"_s, u"-f"_s, u"rawvideo"_s, raw});
    const QByteArray bytes = contentOf(raw);
    QList<int> numbers;
    for (qsizetype at = 0; at + bytesPerFrame <= bytes.size(); at += bytesPerFrame) {
        const int grey = static_cast<unsigned char>(bytes.at(at));
        numbers += static_cast<int>(std::lround((grey - darkest) / step));
    }
    return numbers;
}

QList<int> NumberedFilm::run(int first, int last)
{
    QList<int> numbers(last - first + 1);
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}
