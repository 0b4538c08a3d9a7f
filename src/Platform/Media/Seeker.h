// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/FilmTimeline.h"
#include "Platform/MediaPlayer.h"

#include <QObject>

#include <optional>

class MpvHandle;
class TimelineReader;
struct mpv_event;

/// Brings a player core to the frames that are wanted: one seek at a time, and the last wish next.
///
/// The core itself goes to the first frame from a time on, but on the screen a frame stays until
/// the next one. So an exact seek asks the film's timeline first which frame that is.
class Seeker : public QObject
{
    Q_OBJECT

public:
    /// Both have to outlive the seeker.
    Seeker(MpvHandle &handle, TimelineReader &timeline);

    /// Forgets everything about the last film. Wishes wait until begin().
    void reset();
    /// The film stands at its first frame.
    void begin(const FilmTraits &traits, double duration);
    void setDuration(double duration) { m_duration = duration; }
    void setPlaying(bool playing);

    void seek(double seconds, MediaPlayer::Tolerance tolerance);
    /// From the time wanted last, or else from the position.
    void step(double seconds, double position);

    /// Whether a seek is under way.
    bool isBusy() const { return m_phase != Phase::idle; }

    void handle(const mpv_event &event);

Q_SIGNALS:
    void finished(double position);

private:
    enum class Phase { idle, finding, sent, running, asking };

    struct Wish {
        double seconds = 0;
        MediaPlayer::Tolerance tolerance = MediaPlayer::Tolerance::zero;
        /// A step forward, which has to get past this time.
        std::optional<double> after;
    };

    void want(const Wish &wish);
    void grantNext();
    void find();
    void goTo(const std::optional<FrameMoment> &moment);
    void sendSeek(double seconds);
    void askLanding();
    void arrive();
    void finish(double position);

    MpvHandle &m_handle;
    TimelineReader &m_timeline;
    /// Counts films, for the tags.
    quint64 m_film = 0;
    FilmTraits m_traits;
    double m_duration = 0;
    bool m_hasBegun = false;
    bool m_isPlaying = false;
    Phase m_phase = Phase::idle;
    Wish m_current;
    std::optional<Wish> m_next;
    /// Where the seek under way is to land; absent when only the core knows.
    std::optional<FrameMoment> m_landing;
    /// When the frame on the screen begins, while that is known.
    std::optional<double> m_shown;
};
