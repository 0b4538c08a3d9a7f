// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Panels/PanelFactory.h"

#include "Views/Panels/ComingPanel.h"
#include "Views/Panels/TargetSizePanel.h"

QWidget *makePanel(ActionKind action, const ViewContext &context)
{
    switch (action) {
    case ActionKind::targetSize:
        return new TargetSizePanel(context);
    default:
        return new ComingPanel(action, context);
    }
}
