// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Shell/TopBar.h"
#include "Views/View.h"

class TextLabel;

/// The page without a file: a place to drop films, and the actions to choose from.
class LandingView : public View
{
    Q_OBJECT

public:
    LandingView(const ViewContext &context, TopBar::ShowDropZone showDropZone,
                QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    void buildColumn(QWidget *column);
    QWidget *othersGrid();

    TextLabel *m_privacy;
    TextLabel *m_heroCopy;
};
