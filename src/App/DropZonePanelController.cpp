// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/DropZonePanelController.h"

#include <utility>

DropZonePanelController &DropZonePanelController::shared()
{
    static DropZonePanelController controller;
    return controller;
}

DropZonePanelController::DropZonePanelController(PanelFactory makePanel)
    : m_makePanel(std::move(makePanel))
{
}

void DropZonePanelController::setPanelFactory(PanelFactory makePanel)
{
    m_panel.reset();
    m_makePanel = std::move(makePanel);
}

void DropZonePanelController::setVisible(bool visible, AppModel &appModel)
{
    if (visible && !m_panel && m_makePanel) {
        m_panel = m_makePanel(appModel);
    }
    if (!m_panel) {
        return;
    }
    if (visible) {
        m_panel->orderFront();
    } else {
        m_panel->orderOut();
    }
}
