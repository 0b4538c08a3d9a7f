// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/TempFolder.h"

#include <QDBusConnection>
#include <QProcess>
#include <QString>

#include <functional>

/// A message bus of the test's own, by a real dbus-daemon that goes with the test.
class FakeBus
{
public:
    FakeBus();
    FakeBus(const FakeBus &) = delete;
    FakeBus &operator=(const FakeBus &) = delete;
    ~FakeBus();

    /// Where it stands or would stand, with an escaped space in it.
    QString address() const;
    /// The same bus by a socket without a file.
    QString abstractAddress() const;
    /// Has the bus run `program` when somebody wants the service. Before start().
    void offer(const QString &service, const QString &program) const;
    void start();
    /// Stops the bus in its tracks: its socket goes on listening, and nobody answers.
    void freeze() const;
    /// Ends the bus: everybody on it is cut off.
    void stop();
    /// The connection of the services that the test plays.
    QDBusConnection connection() const { return QDBusConnection(m_connectionName); }

private:
    QString configuration() const;

    TempFolder m_folder;
    QString m_connectionName;
    QProcess m_daemon;
};

/// Lets events happen until the answer is yes; false when that doesn't come within ten seconds.
bool happens(const std::function<bool()> &condition);
