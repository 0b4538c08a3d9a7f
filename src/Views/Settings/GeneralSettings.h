// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Settings/SettingsSection.h"

class MenuPicker;
class SegmentedPicker;

/// The language, how many jobs run at once, and what happens around a job.
class GeneralSettings : public SettingsSection
{
    Q_OBJECT

public:
    explicit GeneralSettings(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    SettingsRow *buildLanguage();
    SettingsRow *buildConcurrency();

    MenuPicker *m_language;
    SegmentedPicker *m_concurrency;
    SettingsRow *m_languageRow;
    SettingsRow *m_concurrencyRow;
};
