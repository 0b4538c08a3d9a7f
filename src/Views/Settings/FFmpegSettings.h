// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Settings/SettingsSection.h"

class ElidedLabel;
class TextLabel;

/// Which tools do the work, and what they can do.
class FFmpegSettings : public SettingsSection
{
    Q_OBJECT

public:
    explicit FFmpegSettings(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    QWidget *buildMissing();
    QWidget *buildTools();
    void refreshTools();
    QString encodersInUse() const;

    TextLabel *m_missingWords;
    ElidedLabel *m_path;
    TextLabel *m_build;
    TextLabel *m_encoders;
    QWidget *m_missing;
    QWidget *m_tools;
    SettingsRow *m_encodersRow;
    SettingsRow *m_exactRow = nullptr;
};
