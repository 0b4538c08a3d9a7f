// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/SessionBus.h"

#include "Platform/Bus/BusConnection.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QMetaObject>
#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QDBusMessage noBus()
{
    return QDBusMessage::createError(QDBusError(QDBusError::Disconnected, u"no session bus"_s));
}

} // namespace

SessionBus::SessionBus(const QString &address, std::chrono::milliseconds limit)
    : m_address(address)
    , m_limit(limit)
{
}

SessionBus::~SessionBus() = default;

// Where the variable is missing, the well-known socket is looked at and nothing else: QtDBus's
// own search would go on to start a session bus.
QString SessionBus::addressOfDesktop()
{
    const QString runtimeDirectory = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString userBus =
        runtimeDirectory.isEmpty() ? QString() : u"unix:path="_s + runtimeDirectory + u"/bus"_s;
    return qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS", userBus);
}

void SessionBus::call(const QDBusMessage &message, std::chrono::milliseconds limit,
                      QObject *context, const Answer &answer)
{
    const QPointer<QObject> asker(context);
    visit([message, limit, asker, answer](QDBusConnection *bus) {
        if (asker == nullptr) {
            return;
        }
        if (bus == nullptr) {
            QMetaObject::invokeMethod(
                asker, [answer] { answer(noBus()); }, Qt::QueuedConnection);
            return;
        }
        auto *watcher = new QDBusPendingCallWatcher(
            bus->asyncCall(message, static_cast<int>(limit.count())), asker);
        connect(watcher, &QDBusPendingCallWatcher::finished, asker, [watcher, answer] {
            watcher->deleteLater();
            answer(watcher->reply());
        });
    });
}

void SessionBus::send(const QDBusMessage &signal)
{
    visit([signal](QDBusConnection *bus) {
        if (bus != nullptr) {
            bus->send(signal);
        }
    });
}

// A well-known name as the sender would have QtDBus ask the bus who that is, and wait for it.
void SessionBus::listen(const Source &source, QObject *receiver, const char *slot)
{
    visit([source, receiver = QPointer<QObject>(receiver), slot](QDBusConnection *bus) {
        if (bus == nullptr || receiver == nullptr) {
            return;
        }
        if (!bus->connect(QString(), source.path, source.interface, source.name, receiver, slot)) {
            qWarning("%s can't listen to the bus by %s", receiver->metaObject()->className(), slot);
        }
    });
}

void SessionBus::visit(const Visitor &visitor)
{
    if (m_isOpen && !m_bus->connection().isConnected()) {
        m_isOpen = false;
        m_bus.reset();
    }
    m_waiting.append(visitor);
    if (m_isOpen) {
        QDBusConnection connection = m_bus->connection();
        admit(&connection);
    } else if (m_bus == nullptr) {
        open();
    }
}

// The failure may come from within, so the one who failed goes later.
void SessionBus::open()
{
    m_bus = std::make_unique<BusConnection>(m_address, m_limit);
    connect(m_bus.get(), &BusConnection::opened, this, [this] {
        m_isOpen = true;
        QDBusConnection connection = m_bus->connection();
        admit(&connection);
    });
    connect(m_bus.get(), &BusConnection::failed, this, [this] {
        m_bus.release()->deleteLater();
        admit(nullptr);
    });
    m_bus->open();
}

void SessionBus::admit(QDBusConnection *connection)
{
    for (const Visitor &visitor : std::exchange(m_waiting, {})) {
        visitor(connection);
    }
}
