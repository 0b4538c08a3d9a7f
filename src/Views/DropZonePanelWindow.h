// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/DropZonePanel.h"

#include <QWidget>

class AppModel;

/// The floating drop zone as a window of its own: above the others, of no taskbar, and dragged by
/// any place that isn't a control. Closing it by its own button turns the drop zone off.
class DropZonePanelWindow : public QWidget, public DropZonePanel
{
    Q_OBJECT

public:
    explicit DropZonePanelWindow(AppModel &appModel);

    void orderFront() override;
    void orderOut() override;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    AppModel &m_appModel;
};
