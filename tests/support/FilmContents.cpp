// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/FilmContents.h"

#include "support/Clips.h"
#include "support/TempFolder.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// What ffmpeg decodes to raw values.
QByteArray decoded(const QStringList &args)
{
    const TempFolder folder;
    const QString raw = folder.path(u"raw"_s);
    Clips::ffmpeg(args + QStringList{raw});
    return contentOf(raw);
}

// One picture as the filter leaves it: the red, green and blue of each pixel.
QByteArray pictureAt(const VideoFile &file, double seconds, const QString &filter)
{
    return decoded({u"-ss"_s, QString::number(seconds), u"-i"_s, file.url.toLocalFile(), u"-vf"_s,
                    filter, u"-frames:v"_s, u"1"_s, u"-f"_s, u"rawvideo"_s, u"-pix_fmt"_s,
                    u"rgb24"_s});
}

bool isBright(char value)
{
    return static_cast<unsigned char>(value) > 127;
}

QChar colourName(const QByteArray &rgb)
{
    static const QString names = u"KRGYBMCW"_s;
    const int index = (isBright(rgb.at(0)) ? 1 : 0) + (isBright(rgb.at(1)) ? 2 : 0) +
                      (isBright(rgb.at(2)) ? 4 : 0);
    return names.at(index);
}

} // namespace

QString quartersAt(const VideoFile &file, double seconds)
{
    const QByteArray rgb = pictureAt(file, seconds, u"format=rgb24,scale=2:2:flags=area"_s);
    QString colours;
    for (qsizetype i = 0; i + 2 < rgb.size(); i += 3) {
        colours += colourName(rgb.sliced(i, 3));
    }
    return colours;
}

QChar colourAt(const VideoFile &file, double seconds, qint64 x, qint64 y)
{
    const QString place = u"crop=2:2:%1:%2"_s.arg(QString::number(x), QString::number(y));
    const QByteArray rgb = pictureAt(file, seconds, place);
    return rgb.isEmpty() ? QChar(u'?') : colourName(rgb.first(3));
}

double loudnessOf(const VideoFile &file, double start, double seconds)
{
    const QByteArray samples =
        decoded({u"-ss"_s, QString::number(start), u"-t"_s, QString::number(seconds), u"-i"_s,
                 file.url.toLocalFile(), u"-vn"_s, u"-ac"_s, u"1"_s, u"-f"_s, u"s16le"_s});
    double sum = 0;
    for (qsizetype i = 0; i + 1 < samples.size(); i += 2) {
        const double value = qFromLittleEndian<qint16>(samples.constData() + i) / 32768.0;
        sum += value * value;
    }
    EXPECT_GT(samples.size(), 1);
    return std::sqrt(sum / std::max(static_cast<double>(samples.size() / 2), 1.0));
}

QStringList audioCodecs(const VideoFile &file)
{
    QStringList codecs;
    for (const AudioStream &stream : file.audioStreams) {
        codecs += stream.codec;
    }
    return codecs;
}

void expectStreams(const VideoFile &file, const QString &video, const QStringList &audio,
                   double seconds)
{
    EXPECT_EQ(file.videoCodec, video);
    EXPECT_EQ(file.width, 320);
    EXPECT_EQ(file.height, 180);
    EXPECT_EQ(audioCodecs(file), audio);
    EXPECT_NEAR(file.durationSeconds, seconds, 0.15);
}

void expectSoundAndLength(const VideoFile &file, double seconds)
{
    ASSERT_EQ(file.audioStreams.size(), 1);
    EXPECT_EQ(file.audioStreams.first().codec, u"aac"_s);
    EXPECT_NEAR(file.durationSeconds, seconds, 0.1);
}
