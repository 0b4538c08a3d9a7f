// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/LauncherProgress.h"

#include <memory>
#include <optional>

class SessionBus;

/// Tells the launchers on the bus, by the signal that the docks of the common desktops hear. A
/// launcher draws whole percents, and hears no more than these.
class BusLauncherProgress : public LauncherProgress
{
public:
    explicit BusLauncherProgress(std::shared_ptr<SessionBus> bus);

    void setFraction(std::optional<double> fraction) override;

private:
    const std::shared_ptr<SessionBus> m_bus;
    /// What the launchers were last told; absent for no bar.
    std::optional<int> m_percent;
};
