// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/MpvHandle.h"
#include "Platform/Media/RenderSurface.h"
#include "Platform/Media/Seeker.h"
#include "Platform/Media/TimelineReader.h"
#include "Platform/MediaPlayer.h"

#include <QImage>
#include <QTimer>

/// The player on libmpv, with its software renderer: it needs no graphics hardware and runs without
/// a display.
class MpvPlayer : public MediaPlayer
{
    Q_OBJECT

public:
    /// Throws std::runtime_error when the library doesn't start.
    explicit MpvPlayer(MpvHandle::Sound sound = MpvHandle::Sound::device);

    void load(const QUrl &url) override;
    void unload() override;
    double rate() const override { return m_rate; }
    void setRate(double rate) override;
    void play() override;
    void pause() override;
    void seek(double seconds, Tolerance tolerance) override;
    void step(double seconds) override;
    double position() const override { return m_position; }
    double duration() const override { return m_duration; }
    double volume() const override { return m_volume; }
    void setVolume(double volume) override;
    bool isMuted() const override { return m_isMuted; }
    void setMuted(bool muted) override;
    void setPictureSize(const QSize &size) override;
    QImage picture() const override;

private:
    enum class Phase { empty, opening, loading, ready };

    void forgetFilm();
    void startFilm(const QByteArray &path, const FilmTraits &traits);
    void becomeReady();
    void fail(const QString &message);

    void handle(const mpv_event &event);
    void handleReply(const mpv_event &event);
    void handleEndFile(const mpv_event &event);
    void handleRestart();
    void handleProperty(const mpv_event &event);
    void askFrameSize();

    void applyRate(double rate);
    void onSeekFinished(double position);
    void followTime(double seconds);
    void tellPosition(double seconds);
    void endIfOver();
    void setDuration(double duration);

    MpvHandle m_handle;
    RenderSurface m_surface;
    TimelineReader m_timeline;
    Seeker m_seeker;

    Phase m_phase = Phase::empty;
    /// Counts films, for the tags.
    quint64 m_film = 0;
    /// The core's number for the film; 0 until it is known.
    qint64 m_entry = 0;
    /// Whether what the core tells is about the film.
    bool m_isCurrent = false;
    FilmTraits m_traits;
    QSize m_frameSize;

    double m_rate = 0;
    double m_lastRate = 1;
    double m_position = 0;
    double m_toldPosition = 0;
    double m_duration = 0;
    double m_volume = 1;
    bool m_isMuted = false;
    bool m_isAtEnd = false;
    /// Whether the core's clock tells the position; after a seek while paused the seek does.
    bool m_followsTime = false;
    QTimer m_tick;
};
