// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/ActionKind.h"
#include "Views/View.h"

class TextLabel;

/// Says what an action does, in the place of a panel that isn't there yet.
class ComingPanel : public View
{
    Q_OBJECT

public:
    ComingPanel(ActionKind action, const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    const ActionKind m_action;
    TextLabel *m_title;
    TextLabel *m_subtitle;
};
