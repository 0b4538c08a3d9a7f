// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Panels/PanelFactory.h"

#include <QWidget>

QWidget *makePanel(ActionKind action, const ViewContext &context)
{
    Q_UNUSED(action);
    Q_UNUSED(context);
    return new QWidget;
}
