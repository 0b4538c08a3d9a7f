// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

class BusConnection;

/// The bus of the user's session, as the services of the desktop share it: connected at the first
/// use, again when it has gone, and never waited for. Main thread only.
class SessionBus : public QObject
{
    Q_OBJECT

public:
    /// Takes a reply or an error.
    using Answer = std::function<void(const QDBusMessage &)>;

    /// `address` is one of D-Bus, empty for none. `limit` is how long the bus may take to give a
    /// sign of life.
    explicit SessionBus(const QString &address = addressOfDesktop(),
                        std::chrono::milliseconds limit = std::chrono::milliseconds(2'000));
    ~SessionBus() override;

    /// As the environment names it or where it always stands; empty when there is none.
    static QString addressOfDesktop();

    /// Calls a method. `answer` is called once and never from within: with an error too when there
    /// is no bus or the time is up, and no more once `context` is gone.
    void call(const QDBusMessage &message, std::chrono::milliseconds limit, QObject *context,
              const Answer &answer);
    /// Sends a signal, which is lost when there is no bus.
    void send(const QDBusMessage &signal);

    /// Signals by their place, from whomever they come.
    struct Source {
        QString path;
        QString interface;
        QString name;
    };
    /// Has a slot, written as by SLOT(), called for each signal from then on, as long as the bus
    /// lives. Calls made later are answered later than it is heard.
    void listen(const Source &source, QObject *receiver, const char *slot);

private:
    /// Is given the bus, or null when there is none.
    using Visitor = std::function<void(QDBusConnection *)>;

    void visit(const Visitor &visitor);
    void open();
    void admit(QDBusConnection *connection);

    const QString m_address;
    const std::chrono::milliseconds m_limit;
    /// Absent while there is no bus and none is being tried.
    std::unique_ptr<BusConnection> m_bus;
    bool m_isOpen = false;
    QList<Visitor> m_waiting;
};
