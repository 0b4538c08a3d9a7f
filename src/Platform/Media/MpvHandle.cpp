// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/MpvHandle.h"

#include <array>
#include <clocale>
#include <stdexcept>
#include <string>
#include <vector>

#include <mpv/client.h>

namespace {

struct Option {
    const char *name;
    const char *value;
};

constexpr std::array options{
    // The picture comes to us; there are no windows, keys, scripts or files of the library's own.
    Option{"vo", "libmpv"},
    Option{"config", "no"},
    Option{"terminal", "no"},
    Option{"load-scripts", "no"},
    Option{"ytdl", "no"},
    Option{"osc", "no"},
    Option{"osd-level", "0"},
    Option{"input-default-bindings", "no"},
    Option{"input-media-keys", "no"},
    // One core for many films, each of which stays at its last frame.
    Option{"idle", "yes"},
    Option{"keep-open", "yes"},
    Option{"pause", "yes"},
    Option{"hr-seek", "yes"},
    Option{"hwdec", "no"},
    // The library's own reader of Matroska is off by up to a frame.
    Option{"demuxer", "lavf"},
    // The film as it is in its file, without what lies beside it or is referred to.
    Option{"access-references", "no"},
    Option{"sub-auto", "no"},
    Option{"audio-file-auto", "no"},
    Option{"cover-art-auto", "no"},
    Option{"audio-display", "no"},
    Option{"sid", "no"},
    // Others stand on these, or on a game library that leaks where there is no device.
    Option{"ao", "pipewire,pulse,alsa"},
    Option{"audio-fallback-to-null", "yes"},
    Option{"audio-client-name", "Morvix"},
    // Turned by the library, a picture ends the program in its software renderer.
    Option{"video-rotate", "no"},
    // We fit the picture ourselves; bars of a pixel would come of rounding.
    Option{"keepaspect", "no"},
};

} // namespace

void MpvHandle::Destroy::operator()(mpv_handle *handle) const
{
    mpv_terminate_destroy(handle);
}

MpvHandle::MpvHandle(Sound sound)
{
    // The library refuses to start where numbers are written with a comma.
    std::setlocale(LC_NUMERIC, "C");
    m_handle.reset(mpv_create());
    if (!m_handle) {
        throw std::runtime_error("The player library doesn't start.");
    }
    for (const Option &option : options) {
        mpv_set_option_string(get(), option.name, option.value);
    }
    if (sound == Sound::none) {
        mpv_set_option_string(get(), "ao", "null");
    }
    if (const int error = mpv_initialize(get()); error < 0) {
        throw std::runtime_error(std::string("The player library doesn't start: ") +
                                 mpv_error_string(error));
    }
    connect(this, &MpvHandle::woken, this, &MpvHandle::readEvents, Qt::QueuedConnection);
    mpv_set_wakeup_callback(get(), &MpvHandle::onWakeup, this);
}

// The order matters: a callback into an object that is gone would end the program.
MpvHandle::~MpvHandle()
{
    mpv_set_wakeup_callback(get(), nullptr, nullptr);
}

void MpvHandle::command(const QByteArrayList &words, quint64 tag)
{
    std::vector<const char *> arguments;
    arguments.reserve(static_cast<size_t>(words.size()) + 1);
    for (const QByteArray &word : words) {
        arguments.push_back(word.constData());
    }
    arguments.push_back(nullptr);
    mpv_command_async(get(), tag, arguments.data());
}

void MpvHandle::set(const char *property, const QByteArray &value)
{
    const char *text = value.constData();
    mpv_set_property_async(get(), 0, property, MPV_FORMAT_STRING, &text);
}

void MpvHandle::set(const char *property, double value)
{
    mpv_set_property_async(get(), 0, property, MPV_FORMAT_DOUBLE, &value);
}

void MpvHandle::set(const char *property, bool value)
{
    int flag = value ? 1 : 0;
    mpv_set_property_async(get(), 0, property, MPV_FORMAT_FLAG, &flag);
}

void MpvHandle::ask(const char *property, quint64 tag)
{
    mpv_get_property_async(get(), tag, property, MPV_FORMAT_DOUBLE);
}

void MpvHandle::observeDouble(const char *property, quint64 tag)
{
    mpv_observe_property(get(), tag, property, MPV_FORMAT_DOUBLE);
}

void MpvHandle::observeFlag(const char *property, quint64 tag)
{
    mpv_observe_property(get(), tag, property, MPV_FORMAT_FLAG);
}

// On threads of the library, which may not be called from here.
void MpvHandle::onWakeup(void *self)
{
    auto *handle = static_cast<MpvHandle *>(self);
    if (!handle->m_isAwake.exchange(true)) {
        Q_EMIT handle->woken({});
    }
}

void MpvHandle::readEvents()
{
    m_isAwake = false;
    for (;;) {
        const mpv_event *event = mpv_wait_event(get(), 0);
        if (event->event_id == MPV_EVENT_NONE) {
            return;
        }
        Q_EMIT happened(*event);
    }
}
