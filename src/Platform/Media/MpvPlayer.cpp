// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/MpvPlayer.h"

#include "Platform/Media/MpvTag.h"

#include <QFile>

#include <algorithm>
#include <chrono>

#include <mpv/client.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds tellingInterval = 200ms;

// The renderer clips the light of an HDR film to white. It is brought down to what screens show, as
// in the stills of films, at a width that the processor can keep up with.
constexpr auto toneMapping =
    "lavfi=[scale=w=min(iw\\,1280):h=-2:flags=bilinear,"
    "zscale=transfer=linear:primaries=bt709:matrix=gbr:range=full:npl=100,format=gbrpf32le,"
    "tonemap=hable:desat=0:peak=10,zscale=transfer=iec61966-2-1:matrix=gbr:range=full,format=gbrp]";

QByteArray pathOf(const QUrl &url)
{
    return QFile::encodeName(url.isLocalFile() ? url.toLocalFile() : url.path());
}

// Absent when the core has no such value.
std::optional<double> numberIn(const mpv_event &event)
{
    const auto *property = static_cast<const mpv_event_property *>(event.data);
    if (event.error < 0 || property->format != MPV_FORMAT_DOUBLE) {
        return std::nullopt;
    }
    return *static_cast<const double *>(property->data);
}

bool flagIn(const mpv_event &event)
{
    const auto *property = static_cast<const mpv_event_property *>(event.data);
    return property->format == MPV_FORMAT_FLAG && *static_cast<const int *>(property->data) != 0;
}

// The number that the core gave to a film that it was told to load.
qint64 entryIn(const mpv_event &event)
{
    const mpv_node &result = static_cast<const mpv_event_command *>(event.data)->result;
    if (result.format != MPV_FORMAT_NODE_MAP) {
        return 0;
    }
    for (int i = 0; i < result.u.list->num; ++i) {
        if (qstrcmp(result.u.list->keys[i], "playlist_entry_id") == 0) {
            return result.u.list->values[i].u.int64;
        }
    }
    return 0;
}

} // namespace

MpvPlayer::MpvPlayer(MpvHandle::Sound sound)
    : m_handle(sound)
    , m_surface(m_handle.get())
    , m_seeker(m_handle, m_timeline)
{
    connect(&m_handle, &MpvHandle::happened, this, &MpvPlayer::handle);
    connect(&m_surface, &RenderSurface::pictureChanged, this, &MediaPlayer::frameReady);
    connect(&m_seeker, &Seeker::finished, this, &MpvPlayer::onSeekFinished);
    m_tick.setInterval(tellingInterval);
    connect(&m_tick, &QTimer::timeout, this, [this] { tellPosition(m_position); });
    m_handle.observeDouble("time-pos", MpvTag{MpvTag::Kind::time}.number());
    m_handle.observeDouble("duration", MpvTag{MpvTag::Kind::duration}.number());
    m_handle.observeFlag("eof-reached", MpvTag{MpvTag::Kind::end}.number());
}

void MpvPlayer::load(const QUrl &url)
{
    forgetFilm();
    m_phase = Phase::opening;
    const QByteArray path = pathOf(url);
    m_timeline.open(path, [this, path](const FilmTraits &traits) { startFilm(path, traits); });
}

void MpvPlayer::unload()
{
    forgetFilm();
    m_timeline.close();
}

void MpvPlayer::forgetFilm()
{
    ++m_film;
    m_phase = Phase::empty;
    m_entry = 0;
    m_isCurrent = false;
    m_isAtEnd = false;
    m_followsTime = false;
    m_seeker.reset();
    m_surface.close();
    m_handle.command({"stop"});
    applyRate(0);
    setDuration(0);
    m_position = 0;
    tellPosition(0);
}

void MpvPlayer::startFilm(const QByteArray &path, const FilmTraits &traits)
{
    m_traits = traits;
    m_phase = Phase::loading;
    m_handle.set("vf", traits.isHdr ? QByteArray(toneMapping) : QByteArray());
    m_handle.command({"loadfile", path}, MpvTag{MpvTag::Kind::load, m_film}.number());
}

void MpvPlayer::becomeReady()
{
    m_phase = Phase::ready;
    m_surface.open(m_frameSize, m_traits.orientation);
    m_seeker.begin(m_traits, m_duration);
    Q_EMIT loaded();
}

void MpvPlayer::fail(const QString &message)
{
    unload();
    Q_EMIT failed(message);
}

void MpvPlayer::setRate(double rate)
{
    if (rate <= 0) {
        pause();
        return;
    }
    if (m_phase == Phase::empty) {
        m_lastRate = rate;
        return;
    }
    const bool startsAgain = m_isAtEnd && m_rate <= 0;
    applyRate(rate);
    m_followsTime = true;
    if (startsAgain) {
        m_seeker.seek(0, Tolerance::zero);
    }
}

void MpvPlayer::play()
{
    setRate(m_lastRate);
}

void MpvPlayer::pause()
{
    applyRate(0);
    tellPosition(m_position);
}

void MpvPlayer::applyRate(double rate)
{
    if (rate > 0) {
        m_lastRate = rate;
        m_handle.set("speed", rate);
        m_tick.start();
    } else {
        m_tick.stop();
    }
    m_handle.set("pause", rate <= 0);
    m_seeker.setPlaying(rate > 0);
    if (rate != m_rate) {
        m_rate = rate;
        Q_EMIT rateChanged();
    }
}

void MpvPlayer::seek(double seconds, Tolerance tolerance)
{
    if (m_phase != Phase::empty) {
        m_followsTime = m_rate > 0;
        m_seeker.seek(seconds, tolerance);
    }
}

void MpvPlayer::step(double seconds)
{
    if (m_phase != Phase::empty) {
        pause();
        m_followsTime = false;
        m_seeker.step(seconds, m_position);
    }
}

void MpvPlayer::onSeekFinished(double position)
{
    m_position = position;
    m_toldPosition = position;
    Q_EMIT positionChanged(position);
    Q_EMIT seekFinished(position);
    endIfOver();
}

void MpvPlayer::followTime(double seconds)
{
    if (m_phase != Phase::ready || !m_followsTime || m_seeker.isBusy()) {
        return;
    }
    m_position = std::clamp(seconds, 0.0, std::max(m_duration, 0.0));
    if (m_rate <= 0) {
        tellPosition(m_position);
    }
}

void MpvPlayer::tellPosition(double seconds)
{
    if (seconds != m_toldPosition) {
        m_toldPosition = seconds;
        Q_EMIT positionChanged(seconds);
    }
}

// The core has paused by then.
void MpvPlayer::endIfOver()
{
    if (m_phase != Phase::ready || !m_isAtEnd || m_rate <= 0 || m_seeker.isBusy()) {
        return;
    }
    m_followsTime = false;
    m_position = m_duration;
    applyRate(0);
    tellPosition(m_position);
    Q_EMIT ended();
}

void MpvPlayer::setDuration(double duration)
{
    if (duration != m_duration) {
        m_duration = duration;
        m_seeker.setDuration(duration);
        Q_EMIT durationChanged();
    }
}

void MpvPlayer::setVolume(double volume)
{
    const double held = std::clamp(volume, 0.0, 1.0);
    if (held != m_volume) {
        m_volume = held;
        m_handle.set("volume", held * 100);
        Q_EMIT volumeChanged();
    }
}

void MpvPlayer::setMuted(bool muted)
{
    if (muted != m_isMuted) {
        m_isMuted = muted;
        m_handle.set("mute", muted);
        Q_EMIT volumeChanged();
    }
}

void MpvPlayer::setPictureSize(const QSize &size)
{
    m_surface.setRoom(size);
}

QImage MpvPlayer::picture() const
{
    return m_surface.picture();
}

void MpvPlayer::handle(const mpv_event &event)
{
    switch (event.event_id) {
    case MPV_EVENT_COMMAND_REPLY:
    case MPV_EVENT_GET_PROPERTY_REPLY:
        handleReply(event);
        break;
    case MPV_EVENT_START_FILE:
        m_isCurrent =
            m_entry != 0 &&
            m_entry == static_cast<const mpv_event_start_file *>(event.data)->playlist_entry_id;
        break;
    case MPV_EVENT_END_FILE:
        handleEndFile(event);
        break;
    case MPV_EVENT_PLAYBACK_RESTART:
        handleRestart();
        break;
    case MPV_EVENT_VIDEO_RECONFIG:
        if (m_phase == Phase::ready) {
            askFrameSize();
        }
        break;
    case MPV_EVENT_PROPERTY_CHANGE:
        handleProperty(event);
        break;
    default:
        break;
    }
    m_seeker.handle(event);
}

void MpvPlayer::handleReply(const mpv_event &event)
{
    const MpvTag tag = MpvTag::of(event.reply_userdata);
    if (tag.film != m_film) {
        return;
    }
    if (tag.kind == MpvTag::Kind::load) {
        m_entry = entryIn(event);
    } else if (tag.kind == MpvTag::Kind::width) {
        m_frameSize.setWidth(static_cast<int>(numberIn(event).value_or(0)));
    } else if (tag.kind == MpvTag::Kind::height) {
        m_frameSize.setHeight(static_cast<int>(numberIn(event).value_or(0)));
        if (m_phase == Phase::ready) {
            m_surface.open(m_frameSize, m_traits.orientation);
        }
    } else if (tag.kind == MpvTag::Kind::length) {
        setDuration(numberIn(event).value_or(0));
        becomeReady();
    }
}

void MpvPlayer::handleEndFile(const mpv_event &event)
{
    const auto *end = static_cast<const mpv_event_end_file *>(event.data);
    if (m_entry == 0 || end->playlist_entry_id != m_entry) {
        return;
    }
    if (end->reason == MPV_END_FILE_REASON_ERROR) {
        fail(QString::fromUtf8(mpv_error_string(end->error)));
    } else if (m_phase != Phase::ready) {
        fail(u"nothing in the file can be played"_s);
    }
}

// The first frame is on the surface by then.
void MpvPlayer::handleRestart()
{
    if (m_isCurrent && m_phase == Phase::loading) {
        askFrameSize();
        m_handle.ask("duration", MpvTag{MpvTag::Kind::length, m_film}.number());
    }
}

void MpvPlayer::askFrameSize()
{
    m_handle.ask("dwidth", MpvTag{MpvTag::Kind::width, m_film}.number());
    m_handle.ask("dheight", MpvTag{MpvTag::Kind::height, m_film}.number());
}

void MpvPlayer::handleProperty(const mpv_event &event)
{
    const MpvTag::Kind kind = MpvTag::of(event.reply_userdata).kind;
    if (!m_isCurrent) {
        return;
    }
    if (kind == MpvTag::Kind::end) {
        m_isAtEnd = flagIn(event);
        endIfOver();
        return;
    }
    const std::optional<double> number = numberIn(event);
    if (number && kind == MpvTag::Kind::time) {
        followTime(*number);
    } else if (number && kind == MpvTag::Kind::duration && m_phase == Phase::ready) {
        setDuration(*number);
    }
}
