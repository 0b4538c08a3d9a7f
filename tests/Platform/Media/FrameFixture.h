// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/FrameGenerator.h"
#include "support/MediaFixture.h"

#include <QColor>
#include <QImage>
#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <ostream>

/// What a film shows, as a full decode by ffmpeg tells.
struct Timetable {
    /// Of each frame in the order of showing, in seconds from the film's start.
    QList<double> times;
    /// What NumberedFilm numbers it.
    QList<int> numbers;
    /// Of those that need no other to be decoded.
    QList<double> keyframeTimes;

    static Timetable of(const QString &path);

    /// The number of the frame that is on the screen at a time.
    int numberAt(double seconds) const;

    /// The number of the last keyframe up to a time.
    int keyframeNumberAt(double seconds) const;
};

/// Films of the test's own, and what the generator gives of them.
class FrameFixture : public MediaFixture
{
protected:
    using Tolerance = FrameGenerator::Tolerance;

    /// A numbered film, encoded as the arguments say. Its path.
    QString numbered(const QString &name, const QStringList &encoding) const;

    /// H.264 with B-frames and a keyframe each 20 frames, in the container of the name.
    QString numberedH264(const QString &name = QStringLiteral("n.mp4")) const;

    /// Expects the frame on the screen at each frame's own time, a while after and just before it.
    static void expectFramesAsShown(const QString &path, const Timetable &truth);

    /// One frame, by a generator of its own.
    static QImage frameOf(const QString &path, double seconds,
                          Tolerance tolerance = Tolerance::zero, QSize maximumSize = {});

    /// Why there is none. The test fails when there is one.
    static std::optional<FrameError::Case> failureOf(const QString &path, double seconds = 0,
                                                     Tolerance tolerance = Tolerance::zero);
};

/// The number of a frame of a numbered film.
int numberOf(const QImage &image);

/// The colour of each quarter of the picture, row by row: R, G, B, W(hite), K (black) and so on.
QString quartersOf(const QImage &image);

/// The greatest difference between two colours in one channel.
int distance(QColor one, QColor other);

inline void PrintTo(QSize size, std::ostream *out)
{
    *out << size.width() << 'x' << size.height();
}
