// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>

#include <chrono>
#include <memory>

/// A connection of its own to one message bus, closed with it. Main thread only.
///
/// QtDBus connects in one go, and at a bus whose socket listens while its process hangs it waits
/// for ever, with all other connections of the program. So the bus first has to give a sign of
/// life on a socket of ours; what QtDBus then waits for is a millisecond.
class BusConnection : public QObject
{
    Q_OBJECT

public:
    BusConnection(const QString &address, std::chrono::milliseconds limit);
    ~BusConnection() override;

    /// Answers once, by opened() or failed(), at the earliest from within.
    void open();
    /// Only after opened().
    QDBusConnection connection() const { return QDBusConnection(m_name); }

Q_SIGNALS:
    void opened();
    void failed();

private:
    bool knock();
    void readAnswer();
    void stopKnocking();
    void connectToBus();

    QString m_address;
    QString m_name;
    QTimer m_limit;
    /// Declared before what watches it.
    QDBusUnixFileDescriptor m_socket;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
