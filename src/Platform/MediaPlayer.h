// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QSize>
#include <QString>
#include <QUrl>

class QImage;

/// Plays one film at a time and gives its picture to whoever paints it. Main thread only; nothing
/// here waits for the film. Times are in seconds from the film's start.
class MediaPlayer : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// How near to the wanted time a seek has to land.
    enum class Tolerance {
        /// On the frame that is on the screen at that time.
        zero,
        /// On a keyframe near it, which is many times faster.
        keyframe
    };

    /// Takes the place of the film at hand, whose picture is gone at once. The new one stands
    /// paused at its first frame. Answers with loaded() or failed().
    virtual void load(const QUrl &url) = 0;
    virtual void unload() = 0;

    /// 0 while paused.
    virtual double rate() const = 0;
    /// 0 pauses; everything above plays at that speed. At the end of the film it begins again.
    virtual void setRate(double rate) = 0;
    /// At the last speed that wasn't 0.
    virtual void play() = 0;
    virtual void pause() = 0;

    /// Times beyond the film count as its start or its end. Of the wishes that come in while a
    /// seek is under way only the last is granted. Each finished seek tells positionChanged() and
    /// seekFinished(). A wish before loaded() is granted after it.
    virtual void seek(double seconds, Tolerance tolerance) = 0;
    /// Pauses and shows the frame that is so much before or after the position wanted last, but
    /// forwards at least the next frame: in films of changing rate one may stay for long.
    virtual void step(double seconds) = 0;

    /// That of the shown frame after an exact seek; the duration at the end.
    virtual double position() const = 0;
    /// 0 until it is known.
    virtual double duration() const = 0;

    /// From 0 to 1.
    virtual double volume() const = 0;
    virtual void setVolume(double volume) = 0;
    virtual bool isMuted() const = 0;
    virtual void setMuted(bool muted) = 0;

    /// The room that the picture is fitted into, in device pixels. An empty one, as at first, keeps
    /// the player from painting at all.
    virtual void setPictureSize(const QSize &size) = 0;
    /// The shown frame: upright, in its own aspect ratio, as large as the room allows. Null without
    /// a film, without a picture in it and without room. Never the picture of an earlier film.
    virtual QImage picture() const = 0;

Q_SIGNALS:
    void loaded();
    /// Every 0.2 seconds while playing, and after each seek.
    void positionChanged(double seconds);
    void seekFinished(double seconds);
    void durationChanged();
    void rateChanged();
    void volumeChanged();
    /// picture() is another one.
    void frameReady();
    /// Playing has come to the end; the rate is 0 now.
    void ended();
    /// The film can't be played; there is none now. In English, for diagnostics.
    void failed(const QString &message);
};
