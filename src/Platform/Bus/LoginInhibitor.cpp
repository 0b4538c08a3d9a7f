// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/LoginInhibitor.h"

#include <QDBusPendingReply>

using namespace Qt::StringLiterals;

LoginInhibitor::LoginInhibitor(const QString &address, std::chrono::milliseconds limit)
    : BusInhibitor(address, limit, limit)
{
}

QDBusMessage LoginInhibitor::request(const QString &reason) const
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
                                       u"org.freedesktop.login1.Manager"_s, u"Inhibit"_s);
    // Where there is a login manager it runs anyway; starting one is not our business.
    message.setAutoStartService(false);
    message << u"sleep"_s << u"Morvix"_s << reason << u"block"_s;
    return message;
}

bool LoginInhibitor::take(const QDBusPendingCall &answer)
{
    const QDBusPendingReply<QDBusUnixFileDescriptor> reply = answer;
    if (reply.isValid()) {
        m_lock = reply.value();
    }
    return m_lock.isValid();
}
