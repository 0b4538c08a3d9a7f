// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QScrollArea>

/// A region that scrolls up and down and is as wide as its place. What gets the focus by Tab is
/// scrolled into sight.
class PanelScroll : public QScrollArea
{
    Q_OBJECT

public:
    explicit PanelScroll(QWidget *parent = nullptr);
};
