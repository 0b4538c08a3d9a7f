// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Notifier.h"

#include <QList>
#include <QObject>

#include <chrono>
#include <memory>

class QDBusMessage;
class SessionBus;

/// Messages by the desktop's notification service. Each takes the place of the one before it, so
/// that a long queue leaves one behind; they are handed over one at a time, in order.
class BusNotifier : public QObject, public Notifier
{
    Q_OBJECT

public:
    /// `limit` holds for each message; what comes after it waits no longer.
    explicit BusNotifier(std::shared_ptr<SessionBus> bus,
                         std::chrono::milliseconds limit = std::chrono::milliseconds(10'000));
    ~BusNotifier() override;

    void post(const QString &title, const QString &body) override;

private:
    struct Text {
        QString title;
        QString body;
    };

    void sendFirst();
    void take(const QDBusMessage &answer);

    const std::shared_ptr<SessionBus> m_bus;
    const std::chrono::milliseconds m_limit;
    /// The first one is with the service.
    QList<Text> m_waiting;
    /// Of the latest message that the service took; 0 is none.
    uint m_lastID = 0;
};
