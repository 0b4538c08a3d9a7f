// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Bus/BusInhibitor.h"

#include <QDBusUnixFileDescriptor>

/// A hold from the login manager: an open descriptor, given back by closing it. An answer that
/// comes too late is closed unread.
class LoginInhibitor : public BusInhibitor
{
    Q_OBJECT

public:
    /// `limit` holds for the bus and again for the login manager.
    LoginInhibitor(const QString &address, std::chrono::milliseconds limit);

protected:
    QDBusMessage request(const QString &reason) const override;
    bool take(const QDBusPendingCall &answer) override;

private:
    QDBusUnixFileDescriptor m_lock;
};
