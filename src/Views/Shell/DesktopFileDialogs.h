// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/FileDialogs.h"

class AppModel;
class QFileDialog;

/// The desktop's own dialogs, or Qt's where the desktop has none.
class DesktopFileDialogs : public FileDialogs
{
public:
    /// The model gives the texts and outlives this.
    explicit DesktopFileDialogs(const AppModel &model) : m_model(model) {}

    void openFiles(QWidget *parent, Kind kind, Count count, const Chosen &chosen) override;
    void openFolder(QWidget *parent, const Chosen &chosen) override;

private:
    QFileDialog *makeDialog(QWidget *parent, const Chosen &chosen) const;

    const AppModel &m_model;
};
