// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

#include <memory>
#include <optional>

class AppModel;
class LauncherProgress;

/// Draws over the program's icon how far the running jobs are: the mean of their fractions, and
/// nothing while none runs. Main thread only.
class QueueProgress : public QObject
{
    Q_OBJECT

public:
    /// The model has to outlive it.
    QueueProgress(const AppModel &model, std::shared_ptr<LauncherProgress> launcher,
                  QObject *parent = nullptr);

private:
    void followJobs();
    void update();
    std::optional<double> fraction() const;

    const AppModel &m_model;
    const std::shared_ptr<LauncherProgress> m_launcher;
};
