// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/FrameFixture.h"

#include "Engine/ProcessRunner.h"
#include "Engine/Text.h"
#include "Platform/Media/LibavFrameGenerator.h"
#include "support/NumberedFilm.h"

#include <QUrl>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr double oneFrame = 1.0 / NumberedFilm::rate;

// What ffprobe lists, line by line and value by value.
QList<QStringList> probed(const QString &path, const QStringList &entries)
{
    const ProcessResult result = ProcessRunner::runSync(
        Clips::tools().ffprobeURL,
        QStringList{u"-v"_s, u"error"_s} + entries + QStringList{u"-of"_s, u"csv=p=0"_s, path});
    QList<QStringList> lines;
    for (const QString &line : result.standardOutput.split(u'\n', Qt::SkipEmptyParts)) {
        lines += line.split(u',');
    }
    return lines;
}

double startOf(const QString &path)
{
    const QList<QStringList> lines = probed(path, {u"-show_entries"_s, u"format=start_time"_s});
    return Text::toDouble(lines.value(0).value(0)).value_or(0);
}

// The last of the times up to that one, or the first; ffprobe cuts them to microseconds.
qsizetype lastUpTo(const QList<double> &times, double seconds)
{
    const auto next = std::ranges::upper_bound(times, seconds + 2e-6);
    return std::max<qsizetype>(std::distance(times.begin(), next) - 1, 0);
}

} // namespace

// Where a frame's time isn't told, it follows the one before at the film's usual pace.
Timetable Timetable::of(const QString &path)
{
    const double start = startOf(path);
    Timetable table;
    for (const QStringList &frame :
         probed(path, {u"-select_streams"_s, u"v:0"_s, u"-show_entries"_s,
                       u"frame=key_frame,best_effort_timestamp_time"_s})) {
        const double next = table.times.isEmpty() ? 0 : table.times.last() + oneFrame;
        const std::optional<double> told = Text::toDouble(frame.value(1));
        table.times += told ? *told - start : next;
        if (frame.first() == u"1") {
            table.keyframeTimes += table.times.last();
        }
    }
    table.numbers = NumberedFilm::frames(path);
    EXPECT_GT(table.times.size(), 0);
    EXPECT_EQ(table.times.size(), table.numbers.size());
    EXPECT_TRUE(std::ranges::is_sorted(table.times));
    return table;
}

int Timetable::numberAt(double seconds) const
{
    return numbers.at(lastUpTo(times, seconds));
}

int Timetable::keyframeNumberAt(double seconds) const
{
    return numberAt(keyframeTimes.at(lastUpTo(keyframeTimes, seconds)));
}

QString FrameFixture::numbered(const QString &name, const QStringList &encoding) const
{
    Clips::ffmpeg(pictureInput(NumberedFilm::picture()) + encoding +
                  QStringList{folder.path(name)});
    return folder.path(name);
}

QString FrameFixture::numberedH264(const QString &name) const
{
    return numbered(name, {u"-c:v"_s, u"libx264"_s, u"-preset"_s, u"veryfast"_s, u"-crf"_s, u"10"_s,
                           u"-g"_s, u"20"_s, u"-bf"_s, u"3"_s});
}

void FrameFixture::expectFramesAsShown(const QString &path, const Timetable &truth)
{
    LibavFrameGenerator generator(QUrl::fromLocalFile(path), {});
    for (const double time : truth.times) {
        for (const double seconds : {time, time + 0.015, time - 0.001}) {
            EXPECT_EQ(numberOf(generator.frame(seconds, Tolerance::zero)), truth.numberAt(seconds))
                << "at " << seconds;
        }
    }
}

QImage FrameFixture::frameOf(const QString &path, double seconds, Tolerance tolerance,
                             QSize maximumSize)
{
    return LibavFrameGenerator(QUrl::fromLocalFile(path), maximumSize).frame(seconds, tolerance);
}

std::optional<FrameError::Case> FrameFixture::failureOf(const QString &path, double seconds,
                                                        Tolerance tolerance)
{
    try {
        frameOf(path, seconds, tolerance);
    } catch (const FrameError &error) {
        return error.kind();
    }
    ADD_FAILURE() << "there is a frame";
    return std::nullopt;
}

int numberOf(const QImage &image)
{
    // From the greys of a screen to those of a film, of which each frame takes two more.
    const double shown = image.pixelColor(image.width() / 2, image.height() / 2).green();
    return static_cast<int>(std::lround((shown * 219 / 255 + 16 - 20) / 2));
}

QString quartersOf(const QImage &image)
{
    static const QString names = u"KRGYBMCW"_s;
    QString colours;
    for (const int y : {image.height() / 4, image.height() * 3 / 4}) {
        for (const int x : {image.width() / 4, image.width() * 3 / 4}) {
            const QColor colour = image.pixelColor(x, y);
            colours += names.at((colour.red() > 127 ? 1 : 0) + (colour.green() > 127 ? 2 : 0) +
                                (colour.blue() > 127 ? 4 : 0));
        }
    }
    return colours;
}

int distance(QColor one, QColor other)
{
    return std::max({std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                     std::abs(one.blue() - other.blue())});
}
