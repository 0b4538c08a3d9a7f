// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/WatchFolderConfig.h"
#include "Views/View.h"

#include <QHBoxLayout>
#include <QList>

class ElidedLabel;
class MenuPicker;
class Switch;
class SymbolButton;
class TextLabel;

/// One watched folder: whether it is watched, where it is, what is done with new films in it.
class WatchFolderRow : public View
{
    Q_OBJECT

public:
    explicit WatchFolderRow(const ViewContext &context, QWidget *parent = nullptr);

    QUuid id() const { return m_config.id; }
    void setItem(const WatchFolderConfig &config);

Q_SIGNALS:
    /// The person has changed something in the list of the engine.
    void edited();

protected:
    void refresh() override;

private:
    void buildRow();
    void connectControls();
    void pickPreset(int index);
    void showPresets();

    WatchFolderConfig m_config;
    /// As they stand in the menu, behind none.
    QList<QUuid> m_choices;
    Switch *m_enabled;
    ElidedLabel *m_path;
    TextLabel *m_presetWords;
    MenuPicker *m_preset;
    SymbolButton *m_remove;
};
