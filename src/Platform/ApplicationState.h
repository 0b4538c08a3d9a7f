// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// Tells whether the user looks at the program. Main thread only.
class ApplicationState
{
public:
    virtual ~ApplicationState() = default;

    /// Whether one of the program's windows has the focus.
    virtual bool isActive() const = 0;
};
