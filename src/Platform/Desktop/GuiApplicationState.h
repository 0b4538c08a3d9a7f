// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/ApplicationState.h"

/// As the window system tells it.
class GuiApplicationState : public ApplicationState
{
public:
    bool isActive() const override;
};
