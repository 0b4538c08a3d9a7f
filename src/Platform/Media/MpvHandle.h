// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArrayList>
#include <QObject>

#include <atomic>
#include <memory>

struct mpv_event;
struct mpv_handle;

/// One core of the player library, with the options that an embedded player wants. Main thread
/// only.
///
/// Everything that is asked of it is asynchronous: the core may be waiting for its picture to be
/// taken, which happens on the main thread too.
class MpvHandle : public QObject
{
    Q_OBJECT

public:
    enum class Sound {
        /// The desktop's; without one the film runs silently.
        device,
        none
    };

    /// Throws std::runtime_error when the core doesn't come up.
    explicit MpvHandle(Sound sound);
    ~MpvHandle() override;

    mpv_handle *get() const { return m_handle.get(); }

    /// Answered by an event with that tag, if it isn't 0. Commands are done in order.
    void command(const QByteArrayList &words, quint64 tag = 0);
    void set(const char *property, const QByteArray &value);
    void set(const char *property, double value);
    void set(const char *property, bool value);
    /// Has the value of a property as a double come as an event with that tag; its failure too.
    void ask(const char *property, quint64 tag);
    /// Has each change come as an event with that tag.
    void observeDouble(const char *property, quint64 tag);
    void observeFlag(const char *property, quint64 tag);

Q_SIGNALS:
    /// Valid during the call.
    void happened(const mpv_event &event);
    /// From any thread.
    void woken(QPrivateSignal);

private:
    static void onWakeup(void *self);
    void readEvents();

    struct Destroy {
        void operator()(mpv_handle *handle) const;
    };
    std::unique_ptr<mpv_handle, Destroy> m_handle;
    /// Set while a call of readEvents() is on its way.
    std::atomic<bool> m_isAwake = false;
};
