// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Entry/ApplicationObject.h"
#include "Platform/Bus/BusConnection.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantMap>

#include <chrono>
#include <functional>

/// What a start of the program was given.
struct LaunchRequest {
    QList<QUrl> files;
    /// The desktop's leave to bring a window to the front, by the names that the bus uses.
    QVariantMap platformData;
};

/// Sees to it that the program runs once a session: the first start holds the program's name on the
/// session bus, and a later one finds it taken and hands over what it was given. Main thread only;
/// nothing here waits.
class ApplicationService : public QObject
{
    Q_OBJECT

public:
    struct Limits {
        /// For the bus to give a sign of life, and again for the name.
        std::chrono::milliseconds bus{2'000};
        /// For the first one's answer. It may still be at its own start.
        std::chrono::milliseconds answer{10'000};
    };

    ApplicationService(const QString &busAddress, LaunchRequest request, Limits limits);
    ApplicationService(const QString &busAddress, LaunchRequest request)
        : ApplicationService(busAddress, std::move(request), Limits())
    {
    }

    /// Answers once by one of the signals below, at the earliest from within.
    void start();

    /// What others call from launchDue() on.
    const ApplicationObject &object() const { return m_object; }

Q_SIGNALS:
    /// No other one runs, or there is no bus to tell.
    void launchDue();
    /// The one that runs has taken everything.
    void handedOver();
    /// Another one runs, and doesn't answer.
    void unanswered();

private:
    using OnReply = std::function<void(const QDBusMessage &)>;

    void exportObject();
    void claimName();
    void handOver();
    void sendNext(QList<QDBusMessage> messages);
    void takeFailure();
    void call(const QDBusMessage &message, std::chrono::milliseconds limit, const OnReply &onReply);

    const LaunchRequest m_request;
    const Limits m_limits;
    ApplicationObject m_object;
    BusConnection m_bus;
    int m_attempts = 0;
};
