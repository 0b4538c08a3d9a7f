// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/ApplicationService.h"

#include "Platform/ApplicationID.h"

#include <QDBusPendingCallWatcher>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr auto objectPath = QLatin1StringView("/app/morvix/Morvix");
constexpr auto interfaceName = QLatin1StringView("org.freedesktop.Application");

// The bus's own numbers.
constexpr uint doNotQueue = 4;
constexpr uint existsAlready = 3;

// The one that runs may be on its way out, and its name free a moment later.
constexpr int mostAttempts = 2;

QDBusMessage nameRequest()
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"RequestName"_s);
    message << QString(applicationID) << doNotQueue;
    return message;
}

QDBusMessage methodCall(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(applicationID, objectPath, interfaceName, method);
    message.setArguments(arguments);
    // Should it have gone meanwhile, it is this start that takes its place.
    message.setAutoStartService(false);
    return message;
}

QList<QDBusMessage> messagesFor(const LaunchRequest &request)
{
    QList<QDBusMessage> messages;
    if (!request.files.isEmpty()) {
        messages += methodCall(
            u"Open"_s, {QUrl::toStringList(request.files, QUrl::FullyEncoded), QVariantMap()});
    }
    // Last, as a token is good for one time.
    messages += methodCall(u"Activate"_s, {request.platformData});
    return messages;
}

} // namespace

ApplicationService::ApplicationService(const QString &busAddress, LaunchRequest request,
                                       Limits limits)
    : m_request(std::move(request))
    , m_limits(limits)
    , m_bus(busAddress, limits.bus)
{
    connect(&m_bus, &BusConnection::failed, this, &ApplicationService::launchDue);
    connect(&m_bus, &BusConnection::opened, this, [this] {
        exportObject();
        claimName();
    });
}

void ApplicationService::start()
{
    m_bus.open();
}

// Before the name is ours: whoever waits for it calls at once.
void ApplicationService::exportObject()
{
    m_bus.connection().registerObject(objectPath, &m_object, QDBusConnection::ExportAllSlots);
}

void ApplicationService::claimName()
{
    call(nameRequest(), m_limits.bus, [this](const QDBusMessage &reply) {
        const uint answer = reply.arguments().value(0).toUInt();
        if (reply.type() == QDBusMessage::ReplyMessage && answer == existsAlready) {
            handOver();
        } else {
            Q_EMIT launchDue();
        }
    });
}

void ApplicationService::handOver()
{
    ++m_attempts;
    sendNext(messagesFor(m_request));
}

void ApplicationService::sendNext(QList<QDBusMessage> messages)
{
    if (messages.isEmpty()) {
        Q_EMIT handedOver();
        return;
    }
    const QDBusMessage message = messages.takeFirst();
    call(message, m_limits.answer, [this, messages](const QDBusMessage &reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            takeFailure();
        } else {
            sendNext(messages);
        }
    });
}

void ApplicationService::takeFailure()
{
    if (m_attempts < mostAttempts) {
        claimName();
    } else {
        Q_EMIT unanswered();
    }
}

void ApplicationService::call(const QDBusMessage &message, std::chrono::milliseconds limit,
                              const OnReply &onReply)
{
    auto *watcher = new QDBusPendingCallWatcher(
        m_bus.connection().asyncCall(message, static_cast<int>(limit.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, onReply] {
        watcher->deleteLater();
        onReply(watcher->reply());
    });
}
