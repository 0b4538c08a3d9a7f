// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Settings/SettingsSection.h"

class PresetRow;
class TextLabel;

/// The user's presets.
class PresetSettings : public SettingsSection
{
    Q_OBJECT

public:
    explicit PresetSettings(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    QWidget *buildEmpty();
    PresetRow *makeRow();

    TextLabel *m_emptyWords;
    QWidget *m_empty;
    QList<PresetRow *> m_rows;
};
