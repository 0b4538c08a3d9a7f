// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/DBusSleepInhibitor.h"

#include "Platform/Bus/LoginInhibitor.h"
#include "Platform/Bus/PortalInhibitor.h"
#include "Platform/Bus/SessionBus.h"

#include <utility>

using namespace Qt::StringLiterals;

// Where the variable is missing, the well-known socket is looked at and nothing else: QtDBus's
// own search would go on to start a session bus.
InhibitorBuses InhibitorBuses::ofDesktop()
{
    InhibitorBuses buses;
    buses.systemAddress =
        qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS", u"unix:path=/run/dbus/system_bus_socket"_s);
    buses.sessionAddress = SessionBus::addressOfDesktop();
    return buses;
}

DBusSleepInhibitor::DBusSleepInhibitor(InhibitorBuses buses) : m_buses(std::move(buses)) {}

DBusSleepInhibitor::~DBusSleepInhibitor() = default;

void DBusSleepInhibitor::hold(const QString &reason)
{
    if (m_hold == nullptr) {
        askLogin(reason);
    }
}

void DBusSleepInhibitor::release()
{
    m_hold.reset();
}

// A refusal may come from within ask(), so the one who refuses goes later.
void DBusSleepInhibitor::askLogin(const QString &reason)
{
    m_hold = std::make_unique<LoginInhibitor>(m_buses.systemAddress, m_buses.answerLimit);
    connect(m_hold.get(), &BusInhibitor::refused, this, [this, reason] {
        m_hold.release()->deleteLater();
        askPortal(reason);
    });
    m_hold->ask(reason);
}

void DBusSleepInhibitor::askPortal(const QString &reason)
{
    m_hold = std::make_unique<PortalInhibitor>(m_buses.sessionAddress, m_buses.answerLimit,
                                               m_buses.portalLimit);
    connect(m_hold.get(), &BusInhibitor::refused, this,
            [this] { m_hold.release()->deleteLater(); });
    m_hold->ask(reason);
}
