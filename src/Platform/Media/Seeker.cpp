// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/Seeker.h"

#include "Platform/Media/MpvHandle.h"
#include "Platform/Media/MpvTag.h"
#include "Platform/Media/TimelineReader.h"

#include <algorithm>
#include <cmath>

#include <mpv/client.h>

namespace {

// The core takes a frame that is up to 5 ms too early for the one wanted. With this the bound lies
// half a millisecond before the frame, wherever its neighbours are.
constexpr double landingOffset = 0.0045;

// Two readings of one time differ by less.
constexpr double sameTime = 0.0005;

// How far before a keyframe a rough jump has to begin, in seconds.
constexpr double roughSeekMargin = 0.5;

} // namespace

Seeker::Seeker(MpvHandle &handle, TimelineReader &timeline) : m_handle(handle), m_timeline(timeline)
{
}

void Seeker::reset()
{
    ++m_film;
    m_hasBegun = false;
    m_isPlaying = false;
    m_phase = Phase::idle;
    m_next.reset();
    m_shown.reset();
}

void Seeker::begin(const FilmTraits &traits, double duration)
{
    m_traits = traits;
    m_duration = duration;
    m_hasBegun = true;
    grantNext();
}

void Seeker::setPlaying(bool playing)
{
    m_isPlaying = playing;
    if (playing) {
        m_shown.reset();
    }
}

void Seeker::seek(double seconds, MediaPlayer::Tolerance tolerance)
{
    want({.seconds = seconds, .tolerance = tolerance, .after = {}});
}

void Seeker::step(double seconds, double position)
{
    double from = position;
    if (m_next) {
        from = m_next->seconds;
    } else if (isBusy()) {
        from = m_current.seconds;
    }
    Wish wish{.seconds = from + seconds, .tolerance = MediaPlayer::Tolerance::zero, .after = {}};
    if (seconds > 0) {
        wish.after = from;
    }
    want(wish);
}

void Seeker::want(const Wish &wish)
{
    m_next = wish;
    m_next->seconds = std::max(wish.seconds, 0.0);
    if (m_hasBegun) {
        m_next->seconds = std::min(m_next->seconds, m_duration);
    }
    grantNext();
}

void Seeker::grantNext()
{
    if (!m_hasBegun || isBusy() || !m_next) {
        return;
    }
    m_current = *m_next;
    m_next.reset();
    m_current.seconds = std::min(m_current.seconds, m_duration);
    m_landing.reset();
    if (m_current.tolerance == MediaPlayer::Tolerance::keyframe) {
        m_shown.reset();
        sendSeek(m_current.seconds);
    } else {
        find();
    }
}

void Seeker::find()
{
    m_phase = Phase::finding;
    m_timeline.find(m_current.seconds, m_current.after,
                    [this](const std::optional<FrameMoment> &moment) {
                        if (m_phase == Phase::finding) {
                            goTo(moment);
                        }
                    });
}

void Seeker::goTo(const std::optional<FrameMoment> &moment)
{
    m_landing = moment;
    if (!moment) {
        sendSeek(m_current.seconds);
    } else if (m_shown && std::abs(*m_shown - moment->shown) < sameTime) {
        arrive();
    } else {
        sendSeek(moment->shown + landingOffset);
    }
}

// Left to itself the container may jump to a keyframe that is decoded before the wanted frame but
// shown after it.
void Seeker::sendSeek(double seconds)
{
    if (m_landing) {
        const double margin = m_traits.hasRoughSeeks ? roughSeekMargin : 0;
        m_handle.set("hr-seek-demuxer-offset", m_landing->shown - m_landing->keyframe + margin);
    }
    const bool isExact = m_current.tolerance == MediaPlayer::Tolerance::zero;
    m_phase = Phase::sent;
    m_handle.command({"seek", QByteArray::number(seconds, 'f', 6),
                      isExact ? "absolute+exact" : "absolute+keyframes"},
                     MpvTag{MpvTag::Kind::seek, m_film}.number());
}

void Seeker::handle(const mpv_event &event)
{
    const MpvTag tag = MpvTag::of(event.reply_userdata);
    if (event.event_id == MPV_EVENT_PLAYBACK_RESTART && m_phase == Phase::running) {
        arrive();
    } else if (m_phase == Phase::sent && tag == MpvTag{MpvTag::Kind::seek, m_film}) {
        m_phase = Phase::running;
        if (event.error < 0) {
            askLanding();
        }
    } else if (m_phase == Phase::asking && tag == MpvTag{MpvTag::Kind::landing, m_film}) {
        const auto *property = static_cast<const mpv_event_property *>(event.data);
        const bool isTold = event.error >= 0 && property->format == MPV_FORMAT_DOUBLE;
        finish(isTold ? *static_cast<const double *>(property->data) : m_current.seconds);
    }
}

void Seeker::askLanding()
{
    m_phase = Phase::asking;
    m_landing.reset();
    m_handle.ask("time-pos", MpvTag{MpvTag::Kind::landing, m_film}.number());
}

void Seeker::arrive()
{
    if (!m_landing) {
        askLanding();
        return;
    }
    if (!m_isPlaying) {
        m_shown = m_landing->shown;
    }
    const bool isAtEnd = m_duration > 0 && m_current.seconds >= m_duration;
    finish(isAtEnd ? m_duration : m_landing->shown);
}

void Seeker::finish(double position)
{
    m_phase = Phase::idle;
    Q_EMIT finished(std::clamp(position, 0.0, std::max(m_duration, 0.0)));
    grantNext();
}
