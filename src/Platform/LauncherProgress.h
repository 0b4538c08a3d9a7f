// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <optional>

/// The bar that the dock or the task bar draws over the program's icon. Main thread only; returns
/// at once, and does nothing where there is no such bar.
class LauncherProgress
{
public:
    virtual ~LauncherProgress() = default;

    /// 0 to 1; absent takes the bar away.
    virtual void setFraction(std::optional<double> fraction) = 0;
};
