// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ViewFixture.h"

#include "App/Settings.h"
#include "Engine/PresetStore.h"
#include "Engine/WatchFolderEngine.h"
#include "Views/Settings/SettingsSheet.h"

#include <QJsonArray>
#include <QPointer>

#include <memory>

/// The settings sheet over an empty window, with presets and watched folders in files of their own.
class SettingsFixture : public ViewFixture
{
protected:
    SettingsFixture();

    /// Brings the sheet up over a window of the least size.
    void showSheet(AppLanguage language = AppLanguage::english);
    /// As by the wheel.
    void scrollTo(QWidget *widget);
    /// A click on what may have to be scrolled to first.
    void reach(QWidget *widget);
    /// Opens a picker's menu and picks by the keyboard.
    void pick(QWidget *picker, const QString &choice);

    QUuid savePreset(const QString &name);
    /// What the file of the watched folders holds.
    QJsonArray storedFolders() const;
    /// What the store of settings holds at this moment.
    Settings store() const { return Settings(m_store.path(QStringLiteral("settings.conf"))); }

    const TempFolder m_data;
    const std::shared_ptr<PresetStore> m_presets;
    const std::shared_ptr<WatchFolderEngine> m_engine;
    QPointer<SettingsSheet> m_sheet;
};
