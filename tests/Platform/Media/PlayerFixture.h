// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/MpvPlayer.h"
#include "support/NumberedFilm.h"
#include "support/TempFolder.h"

#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <memory>

/// The number of a frame of a NumberedFilm, off its picture.
int numberOf(const QImage &picture);

/// Loads a film and waits until it stands at its first frame. False when it can't be played.
bool load(MediaPlayer &player, const QString &path);
/// Seeks exactly unless told otherwise, waits, and gives where the player says that it is.
double seek(MediaPlayer &player, double seconds,
            MediaPlayer::Tolerance tolerance = MediaPlayer::Tolerance::zero);
/// Steps by a time, waits, and gives the number of the frame.
int step(MediaPlayer &player, double seconds);
/// What the player says of a file that it can't play; empty when that doesn't come.
QString failureOf(MediaPlayer &player, const QString &path);

/// When each frame of a film is shown, in seconds from the film's start, by the packets as ffprobe
/// lists them.
QList<double> frameTimes(const QString &path);
/// The frame on the screen at a time: the last one that begins at or before it, or the first.
int frameAt(const QList<double> &times, double seconds);

/// A player without sound, and films in a folder.
class PlayerFixture : public ::testing::Test
{
protected:
    PlayerFixture();

    /// A NumberedFilm of that name; gives its path.
    QString film(const QString &name, const QStringList &encoderOptions = {},
                 NumberedFilm::Sound sound = NumberedFilm::Sound::aac) const;
    int shownNumber() const { return numberOf(player->picture()); }

    TempFolder folder;
    std::unique_ptr<MpvPlayer> player;
};
