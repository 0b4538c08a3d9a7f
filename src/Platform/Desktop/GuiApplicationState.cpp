// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Desktop/GuiApplicationState.h"

#include <QGuiApplication>

bool GuiApplicationState::isActive() const
{
    return QGuiApplication::applicationState() == Qt::ApplicationActive;
}
