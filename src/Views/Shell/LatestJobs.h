// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/AppModel.h"

#include <QHash>
#include <QObject>
#include <QUuid>

#include <memory>
#include <optional>

/// What has become of each file: the outcome of the job that was queued last for it. Reads the
/// queue once for each change of it, however many rows ask.
class LatestJobs : public QObject
{
    Q_OBJECT

public:
    explicit LatestJobs(const AppModel &model, QObject *parent = nullptr);

    /// Absent when no job has that file as its input.
    std::optional<Job::Outcome> outcomeFor(const QUuid &fileID);

Q_SIGNALS:
    /// Of any file.
    void changed();

private:
    void readQueue();

    const AppModel &m_model;
    QHash<QUuid, std::shared_ptr<Job>> m_jobs;
    bool m_isStale = true;
};
