// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Controls/TextLabel.h"

/// The small heading in capitals above a group of controls.
class SectionLabel : public TextLabel
{
    Q_OBJECT

public:
    explicit SectionLabel(QWidget *parent = nullptr);
};
