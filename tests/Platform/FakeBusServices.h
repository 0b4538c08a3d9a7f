// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QList>
#include <QObject>
#include <QSocketNotifier>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <vector>

/// How a service takes a request. Kept back, it is answered by grantNow() or never.
enum class FakeAnswer { grant, refuse, keepBack };

/// The login manager, as far as it gives locks.
class FakeBusLogin : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    FakeBusLogin(const QDBusConnection &bus, FakeAnswer answer);
    ~FakeBusLogin() override;

    /// The arguments of each call: what, who, why, mode.
    QList<QStringList> calls() const { return m_calls; }
    /// How many of the locks given out are still open somewhere.
    int heldLocks() const { return static_cast<int>(m_locks.size()); }
    /// How many of the locks given out have reached those who asked.
    int received() const { return m_received; }
    void grantNow();

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &who, const QString &why,
                                    const QString &mode);

private:
    QDBusUnixFileDescriptor newLock();

    QDBusConnection m_bus;
    FakeAnswer m_answer;
    QList<QStringList> m_calls;
    QList<QDBusMessage> m_unanswered;
    /// Each watches the reading end of a pipe whose other end is the lock.
    std::vector<std::unique_ptr<QSocketNotifier>> m_locks;
    int m_received = 0;
};

/// What one call of the portal was given.
struct FakePortalCall {
    QString window;
    uint flags = 0;
    QVariantMap options;
};

/// The desktop portal, as far as it inhibits.
class FakeBusPortal : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Inhibit")

public:
    FakeBusPortal(const QDBusConnection &bus, FakeAnswer answer);
    ~FakeBusPortal() override;

    QList<FakePortalCall> calls() const { return m_calls; }
    /// The requests granted and not closed since.
    QStringList openRequests() const { return m_open; }
    /// How many of the requests granted have reached those who asked.
    int received() const { return m_received; }
    /// Whether one who called is no longer on the bus.
    bool hasLostCaller() const { return m_hasLostCaller; }
    void grantNow();

public Q_SLOTS:
    QDBusObjectPath Inhibit(const QString &window, uint flags, const QVariantMap &options);

private:
    QDBusObjectPath newRequest();
    void watchCaller(const QString &name);

    QDBusConnection m_bus;
    FakeAnswer m_answer;
    QList<FakePortalCall> m_calls;
    QList<QDBusMessage> m_unanswered;
    QStringList m_open;
    int m_granted = 0;
    int m_received = 0;
    bool m_hasLostCaller = false;
};

/// What the portal gives for a grant.
class FakeBusRequest : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Request")

public:
    using QObject::QObject;

public Q_SLOTS:
    void Close() { Q_EMIT closed(); }

Q_SIGNALS:
    void closed();
};
