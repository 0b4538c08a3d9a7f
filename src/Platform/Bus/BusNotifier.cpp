// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/BusNotifier.h"

#include "Platform/ApplicationID.h"
#include "Platform/Bus/SessionBus.h"

#include <QDBusMessage>
#include <QVariantMap>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int lifetimeOfServer = -1;

// Servers that know markup read it in the body, and these three begin it. To those that don't, the
// standard leaves the filtering. Quotes mean something within tags only.
QString escaped(QString text)
{
    return text.replace(u'&', u"&amp;"_s).replace(u'<', u"&lt;"_s).replace(u'>', u"&gt;"_s);
}

// The finish sound, or its absence, is this program's own affair.
QVariantMap hints()
{
    return {{u"desktop-entry"_s, QString(applicationID)}, {u"suppress-sound"_s, true}};
}

} // namespace

BusNotifier::BusNotifier(std::shared_ptr<SessionBus> bus, std::chrono::milliseconds limit)
    : m_bus(std::move(bus))
    , m_limit(limit)
{
}

BusNotifier::~BusNotifier() = default;

void BusNotifier::post(const QString &title, const QString &body)
{
    m_waiting.append({title, body});
    if (m_waiting.size() == 1) {
        sendFirst();
    }
}

void BusNotifier::sendFirst()
{
    const Text &text = m_waiting.first();
    QDBusMessage message = QDBusMessage::createMethodCall(
        u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
        u"org.freedesktop.Notifications"_s, u"Notify"_s);
    const QStringList noActions;
    message << u"Morvix"_s << m_lastID << QString(applicationID) << text.title << escaped(text.body)
            << noActions << hints() << lifetimeOfServer;
    m_bus->call(message, m_limit, this, [this](const QDBusMessage &answer) { take(answer); });
}

void BusNotifier::take(const QDBusMessage &answer)
{
    if (answer.type() == QDBusMessage::ReplyMessage && answer.signature() == "u"_L1) {
        m_lastID = answer.arguments().first().toUInt();
    }
    m_waiting.removeFirst();
    if (!m_waiting.isEmpty()) {
        sendFirst();
    }
}
