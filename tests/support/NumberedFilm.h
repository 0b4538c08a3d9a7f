// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// Films whose frames tell their number by their grey, so that a test can see which frames of the
/// source an output holds.
namespace NumberedFilm {

/// Frames a second.
constexpr int rate = 25;

/// Seconds: as many frames as there are greys to tell apart.
constexpr double length = 4;

/// What goes with the frames.
enum class Sound { none, aac };

/// Makes a film of 160x90 by x264 in the container that the extension says. Keyframes stand at 0,
/// 0.6, 1.4, 2.2 and 3.0 seconds.
void make(const QString &path, Sound sound, const QStringList &encoderOptions = {});

/// The generator's description of the picture, for films that are made in another way.
QString picture();

/// The numbers of the frames, counted from 0, in the order in which the film shows them.
QList<int> frames(const QString &path);

/// The numbers of a stretch of the source's frames, from `first` to `last`.
QList<int> run(int first, int last);

} // namespace NumberedFilm
