// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/ActionKind.h"
#include "Views/View.h"

#include <optional>

class FileDetailHeader;
class PanelScroll;
class TextLabel;

/// The tabs of the actions, the header of the selected file, and the panel of the action in force.
/// A panel is made anew whenever the action changes, and goes with the last file.
class ActionArea : public View
{
    Q_OBJECT

public:
    explicit ActionArea(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    QWidget *panel(ActionKind action);
    void exchange(QWidget *content);

    FileDetailHeader *m_header;
    PanelScroll *m_region;
    TextLabel *m_reading;
    /// The action whose panel is there; absent while no file is selected.
    std::optional<ActionKind> m_shownAction;
};
