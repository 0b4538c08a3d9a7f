// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Bus/BusConnection.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QObject>

#include <chrono>
#include <memory>

/// One hold, asked for once from one service on one bus. Destroying it gives the hold back, one
/// that is still to be granted too. Main thread only.
class BusInhibitor : public QObject
{
    Q_OBJECT

public:
    ~BusInhibitor() override;

    /// Called once. Says refused() when there is no bus or no service, or when it won't or doesn't
    /// answer in time; at the earliest from within.
    void ask(const QString &reason);

Q_SIGNALS:
    void refused();

protected:
    BusInhibitor(const QString &address, std::chrono::milliseconds busLimit,
                 std::chrono::milliseconds answerLimit);

    virtual QDBusMessage request(const QString &reason) const = 0;
    /// Keeps what the service answered; false when that is no hold.
    virtual bool take(const QDBusPendingCall &answer) = 0;

    std::unique_ptr<BusConnection> m_bus;
    /// Present while the answer is awaited.
    std::unique_ptr<QDBusPendingCallWatcher> m_call;

private:
    void send(const QString &reason);

    std::chrono::milliseconds m_answerLimit;
};
