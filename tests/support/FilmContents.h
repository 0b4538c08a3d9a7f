// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/VideoFile.h"

#include <QString>
#include <QStringList>

// What a film shows and sounds like.

/// The colour of each quarter of the picture at that second, row by row, among them R, G, B,
/// W(hite) and K (black).
QString quartersAt(const VideoFile &file, double seconds);

/// The colour at a place of the picture, as above.
QChar colourAt(const VideoFile &file, double seconds, qint64 x, qint64 y);

/// How loud a stretch is: the root mean square of its samples, 1 at full scale.
double loudnessOf(const VideoFile &file, double start, double seconds);

/// The codec of each audio track.
QStringList audioCodecs(const VideoFile &file);

/// Expects a picture of 320x180 and sound in these codecs, over the length in seconds.
void expectStreams(const VideoFile &file, const QString &video, const QStringList &audio,
                   double seconds = 1);

/// Expects one AAC track and the length in seconds.
void expectSoundAndLength(const VideoFile &file, double seconds);
