// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/FakeBusServices.h"

#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString loginService = u"org.freedesktop.login1"_s;
const QString loginPath = u"/org/freedesktop/login1"_s;
const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;

// Messages keep their order: who answers a ping has had what was sent before it.
void countWhenReceived(const QDBusConnection &bus, const QString &caller, QObject *owner,
                       int &count)
{
    const QDBusMessage ping =
        QDBusMessage::createMethodCall(caller, u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(ping), owner);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, owner, [watcher, &count] {
        count += watcher->isError() ? 0 : 1;
        watcher->deleteLater();
    });
}

} // namespace

FakeBusLogin::FakeBusLogin(const QDBusConnection &bus, FakeAnswer answer)
    : m_bus(bus)
    , m_answer(answer)
{
    EXPECT_TRUE(m_bus.registerObject(loginPath, this, QDBusConnection::ExportAllSlots));
    EXPECT_TRUE(m_bus.registerService(loginService));
}

FakeBusLogin::~FakeBusLogin()
{
    m_bus.unregisterService(loginService);
    for (const auto &lock : m_locks) {
        ::close(static_cast<int>(lock->socket()));
    }
}

QDBusUnixFileDescriptor FakeBusLogin::Inhibit(const QString &what, const QString &who,
                                              const QString &why, const QString &mode)
{
    m_calls.append(QStringList{what, who, why, mode});
    if (m_answer == FakeAnswer::refuse) {
        sendErrorReply(QDBusError::AccessDenied, u"not here"_s);
        return {};
    }
    setDelayedReply(true);
    m_unanswered.append(message());
    if (m_answer == FakeAnswer::grant) {
        grantNow();
    }
    return {};
}

void FakeBusLogin::grantNow()
{
    for (const QDBusMessage &call : std::exchange(m_unanswered, {})) {
        m_bus.send(call.createReply(QVariant::fromValue(newLock())));
        countWhenReceived(m_bus, call.service(), this, m_received);
    }
}

QDBusUnixFileDescriptor FakeBusLogin::newLock()
{
    std::array<int, 2> ends{-1, -1};
    EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    auto watched = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
    QSocketNotifier *lock = watched.get();
    // Nobody writes: what there is to read is the end.
    connect(lock, &QSocketNotifier::activated, this, [this, lock] {
        lock->setEnabled(false);
        ::close(static_cast<int>(lock->socket()));
        std::erase_if(m_locks, [lock](auto &held) {
            return held.get() == lock && (held.release()->deleteLater(), true);
        });
    });
    m_locks.push_back(std::move(watched));
    QDBusUnixFileDescriptor given;
    given.giveFileDescriptor(ends[1]);
    return given;
}

FakeBusPortal::FakeBusPortal(const QDBusConnection &bus, FakeAnswer answer)
    : m_bus(bus)
    , m_answer(answer)
{
    EXPECT_TRUE(m_bus.registerObject(portalPath, this, QDBusConnection::ExportAllSlots));
    EXPECT_TRUE(m_bus.registerService(portalService));
}

FakeBusPortal::~FakeBusPortal()
{
    m_bus.unregisterService(portalService);
}

QDBusObjectPath FakeBusPortal::Inhibit(const QString &window, uint flags,
                                       const QVariantMap &options)
{
    m_calls.append({window, flags, options});
    watchCaller(message().service());
    if (m_answer == FakeAnswer::refuse) {
        sendErrorReply(QDBusError::AccessDenied, u"not here"_s);
        return {};
    }
    setDelayedReply(true);
    m_unanswered.append(message());
    if (m_answer == FakeAnswer::grant) {
        grantNow();
    }
    return {};
}

void FakeBusPortal::grantNow()
{
    for (const QDBusMessage &call : std::exchange(m_unanswered, {})) {
        m_bus.send(call.createReply(QVariant::fromValue(newRequest())));
        countWhenReceived(m_bus, call.service(), this, m_received);
    }
}

QDBusObjectPath FakeBusPortal::newRequest()
{
    const QString path = portalPath + u"/request/"_s + QString::number(++m_granted);
    auto *request = new FakeBusRequest(this);
    connect(request, &FakeBusRequest::closed, this, [this, path] { m_open.removeOne(path); });
    EXPECT_TRUE(m_bus.registerObject(path, request, QDBusConnection::ExportAllSlots));
    m_open.append(path);
    return QDBusObjectPath(path);
}

void FakeBusPortal::watchCaller(const QString &name)
{
    auto *watcher =
        new QDBusServiceWatcher(name, m_bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { m_hasLostCaller = true; });
}
