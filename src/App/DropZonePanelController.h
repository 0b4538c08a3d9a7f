// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/DropZonePanel.h"

#include <functional>
#include <memory>

class AppModel;

/// Shows and hides the floating drop zone. The panel is made when it is first shown, and reused
/// from then on. Main thread only.
class DropZonePanelController
{
public:
    using PanelFactory = std::function<std::unique_ptr<DropZonePanel>(AppModel &)>;

    /// The program's own one.
    static DropZonePanelController &shared();

    explicit DropZonePanelController(PanelFactory makePanel = {});

    /// What makes the panel from now on; without one there is never a panel. The present panel
    /// goes: whoever owns the windows sets none before the last of them goes.
    void setPanelFactory(PanelFactory makePanel);

    void setVisible(bool visible, AppModel &appModel);

private:
    PanelFactory m_makePanel;
    std::unique_ptr<DropZonePanel> m_panel;
};
