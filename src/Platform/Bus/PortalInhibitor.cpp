// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/PortalInhibitor.h"

#include <QCoreApplication>
#include <QDBusObjectPath>
#include <QDBusPendingReply>

using namespace Qt::StringLiterals;

namespace {

constexpr auto portalService = "org.freedesktop.portal.Desktop"_L1;
constexpr uint suspendFlag = 4;
constexpr int closeLimitMs = 2'000;

// Empty when the portal granted nothing.
QString requestPath(const QDBusPendingCall &answer)
{
    const QDBusPendingReply<QDBusObjectPath> reply = answer;
    return reply.isValid() ? reply.value().path() : QString();
}

// What is still to be said to the portal outlives the inhibitor, and the program's end at most.
void keepUntilAnswered(QDBusPendingCallWatcher *call, BusConnection *bus)
{
    call->setParent(QCoreApplication::instance());
    bus->setParent(call);
}

void closeRequest(const QString &path, BusConnection *bus)
{
    const QDBusMessage message = QDBusMessage::createMethodCall(
        portalService, path, u"org.freedesktop.portal.Request"_s, u"Close"_s);
    auto *call = new QDBusPendingCallWatcher(bus->connection().asyncCall(message, closeLimitMs));
    QObject::connect(call, &QDBusPendingCallWatcher::finished, call, &QObject::deleteLater);
    keepUntilAnswered(call, bus);
}

void closeWhenGranted(QDBusPendingCallWatcher *call, BusConnection *bus)
{
    QObject::connect(call, &QDBusPendingCallWatcher::finished, call, [call, bus] {
        if (const QString path = requestPath(*call); !path.isEmpty()) {
            closeRequest(path, bus);
        }
        call->deleteLater();
    });
    keepUntilAnswered(call, bus);
}

} // namespace

PortalInhibitor::PortalInhibitor(const QString &address, std::chrono::milliseconds busLimit,
                                 std::chrono::milliseconds answerLimit)
    : BusInhibitor(address, busLimit, answerLimit)
{
}

// Without an answer in time there is nothing to close; the connection's end has to do then.
PortalInhibitor::~PortalInhibitor()
{
    if (m_call != nullptr) {
        m_call->disconnect(this);
        closeWhenGranted(m_call.release(), m_bus.release());
    } else if (!m_requestPath.isEmpty()) {
        closeRequest(m_requestPath, m_bus.release());
    }
}

QDBusMessage PortalInhibitor::request(const QString &reason) const
{
    // No window: the portal only needs one to place a question, and this one it doesn't ask.
    QDBusMessage message =
        QDBusMessage::createMethodCall(portalService, u"/org/freedesktop/portal/desktop"_s,
                                       u"org.freedesktop.portal.Inhibit"_s, u"Inhibit"_s);
    message << QString() << suspendFlag << QVariantMap{{u"reason"_s, reason}};
    return message;
}

bool PortalInhibitor::take(const QDBusPendingCall &answer)
{
    m_requestPath = requestPath(answer);
    return !m_requestPath.isEmpty();
}
