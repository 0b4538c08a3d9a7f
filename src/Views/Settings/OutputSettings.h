// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Settings/SettingsSection.h"

class Button;
class ElidedLabel;
class TextField;
class TextLabel;

/// How results are named and where they go.
class OutputSettings : public SettingsSection
{
    Q_OBJECT

public:
    explicit OutputSettings(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    SettingsRow *buildTemplate();
    SettingsRow *buildFolder();
    void chooseFolder();

    TextField *m_template;
    TextLabel *m_templateHelp;
    ElidedLabel *m_folder;
    Button *m_besideOriginal;
    Button *m_choose;
    SettingsRow *m_templateRow;
    SettingsRow *m_folderRow;
};
