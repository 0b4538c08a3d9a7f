// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/BusInhibitor.h"

BusInhibitor::BusInhibitor(const QString &address, std::chrono::milliseconds busLimit,
                           std::chrono::milliseconds answerLimit)
    : m_bus(std::make_unique<BusConnection>(address, busLimit))
    , m_answerLimit(answerLimit)
{
}

BusInhibitor::~BusInhibitor() = default;

void BusInhibitor::ask(const QString &reason)
{
    connect(m_bus.get(), &BusConnection::opened, this, [this, reason] { send(reason); });
    connect(m_bus.get(), &BusConnection::failed, this, &BusInhibitor::refused);
    m_bus->open();
}

void BusInhibitor::send(const QString &reason)
{
    m_call = std::make_unique<QDBusPendingCallWatcher>(
        m_bus->connection().asyncCall(request(reason), static_cast<int>(m_answerLimit.count())));
    connect(m_call.get(), &QDBusPendingCallWatcher::finished, this, [this] {
        const bool isGranted = take(*m_call);
        m_call.release()->deleteLater();
        if (!isGranted) {
            Q_EMIT refused();
        }
    });
}
