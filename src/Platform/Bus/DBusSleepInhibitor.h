// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/SleepInhibitor.h"

#include <QObject>

#include <chrono>
#include <memory>

class BusInhibitor;

/// The buses to ask on, by D-Bus address (empty is none), and how long they may take.
struct InhibitorBuses {
    QString systemAddress;
    QString sessionAddress;
    /// For a bus and for the login manager; after it the next one is asked.
    std::chrono::milliseconds answerLimit{2'000};
    /// Long, as nobody waits behind the portal and its program may have to be started first.
    std::chrono::milliseconds portalLimit{25'000};

    /// Those of the user's desktop, as the environment names them or where they always stand.
    static InhibitorBuses ofDesktop();
};

/// Asks the login manager for the hold, and where that is not to be had the desktop portal.
/// Connects with the first hold only, and never waits on the main thread.
class DBusSleepInhibitor : public QObject, public SleepInhibitor
{
    Q_OBJECT

public:
    explicit DBusSleepInhibitor(InhibitorBuses buses = InhibitorBuses::ofDesktop());
    ~DBusSleepInhibitor() override;

    void hold(const QString &reason) override;
    void release() override;

private:
    void askLogin(const QString &reason);
    void askPortal(const QString &reason);

    InhibitorBuses m_buses;
    /// The hold or the question for it; absent when there is neither.
    std::unique_ptr<BusInhibitor> m_hold;
};
