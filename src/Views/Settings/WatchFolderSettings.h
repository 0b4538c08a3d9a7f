// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Settings/SettingsSection.h"

class Button;
class TextLabel;
class WatchFolderRow;

/// The watched folders.
class WatchFolderSettings : public SettingsSection
{
    Q_OBJECT

public:
    explicit WatchFolderSettings(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    QWidget *buildAdding();
    WatchFolderRow *makeRow();
    void addFolder();

    TextLabel *m_description;
    TextLabel *m_empty;
    Button *m_add;
    QList<WatchFolderRow *> m_rows;
};
