// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/ActionKind.h"
#include "Views/ViewContext.h"

class QWidget;

/// The panel of an action, new, with its parameters at their defaults. It needs a selected file and
/// lives until the person picks another action.
QWidget *makePanel(ActionKind action, const ViewContext &context);
