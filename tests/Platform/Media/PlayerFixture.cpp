// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/PlayerFixture.h"

#include "Engine/ProcessRunner.h"
#include "support/Clips.h"
#include "support/EventLoop.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// What ffprobe prints for one entry, a line a value, as numbers.
QList<double> probedNumbers(const QString &path, const QStringList &what)
{
    const QStringList args =
        QStringList{u"-v"_s, u"error"_s} + what + QStringList{u"-of"_s, u"csv=p=0"_s, path};
    const ProcessResult result = ProcessRunner::runSync(Clips::tools().ffprobeURL, args);
    QList<double> numbers;
    for (const QString &line : result.standardOutput.split(QChar(u'\n'))) {
        const QString first = line.section(QChar(u','), 0, 0).trimmed();
        bool isNumber = false;
        const double number = first.toDouble(&isNumber);
        if (isNumber) {
            numbers += number;
        }
    }
    return numbers;
}

} // namespace

int numberOf(const QImage &picture)
{
    if (picture.isNull()) {
        return -1;
    }
    const int grey = qGray(picture.pixel(picture.width() / 2, picture.height() / 2));
    // From full to limited range, and then as the film was drawn: 20 for the first, 2 a frame.
    return static_cast<int>(std::lround((grey * 219.0 / 255 + 16 - 20) / 2));
}

bool load(MediaPlayer &player, const QString &path)
{
    bool isLoaded = false;
    bool hasFailed = false;
    QObject context;
    QObject::connect(&player, &MediaPlayer::loaded, &context, [&] { isLoaded = true; });
    QObject::connect(&player, &MediaPlayer::failed, &context, [&] { hasFailed = true; });
    player.load(QUrl::fromLocalFile(path));
    EventLoop::waitFor([&] { return isLoaded || hasFailed; }, &player, &MediaPlayer::loaded,
                       &MediaPlayer::failed);
    return isLoaded;
}

double seek(MediaPlayer &player, double seconds, MediaPlayer::Tolerance tolerance)
{
    double landed = -1;
    QObject context;
    QObject::connect(&player, &MediaPlayer::seekFinished, &context,
                     [&](double position) { landed = position; });
    player.seek(seconds, tolerance);
    EventLoop::waitFor([&] { return landed >= 0; }, &player, &MediaPlayer::seekFinished);
    return landed;
}

int step(MediaPlayer &player, double seconds)
{
    bool isDone = false;
    QObject context;
    QObject::connect(&player, &MediaPlayer::seekFinished, &context, [&] { isDone = true; });
    player.step(seconds);
    EventLoop::waitFor([&] { return isDone; }, &player, &MediaPlayer::seekFinished);
    return numberOf(player.picture());
}

QString failureOf(MediaPlayer &player, const QString &path)
{
    QString failure;
    QObject context;
    QObject::connect(&player, &MediaPlayer::failed, &context,
                     [&](const QString &message) { failure = message; });
    player.load(QUrl::fromLocalFile(path));
    EventLoop::waitFor([&] { return !failure.isEmpty(); }, &player, &MediaPlayer::failed,
                       &MediaPlayer::loaded);
    return failure;
}

QList<double> frameTimes(const QString &path)
{
    const double start = probedNumbers(path, {u"-show_entries"_s, u"format=start_time"_s}).value(0);
    QList<double> times = probedNumbers(
        path, {u"-select_streams"_s, u"v:0"_s, u"-show_entries"_s, u"packet=pts_time"_s});
    std::ranges::sort(times);
    for (double &time : times) {
        time -= start;
    }
    return times;
}

int frameAt(const QList<double> &times, double seconds)
{
    // ffprobe prints millionths.
    const auto after = std::ranges::upper_bound(times, seconds + 2e-6);
    return std::max(static_cast<int>(after - times.begin()) - 1, 0);
}

PlayerFixture::PlayerFixture() : player(std::make_unique<MpvPlayer>(MpvHandle::Sound::none))
{
    player->setPictureSize({160, 90});
}

QString PlayerFixture::film(const QString &name, const QStringList &encoderOptions,
                            NumberedFilm::Sound sound) const
{
    // Finely enough for the number to outlast the way to RGB and back.
    NumberedFilm::make(folder.path(name), sound, QStringList{u"-qp"_s, u"5"_s} + encoderOptions);
    return folder.path(name);
}
