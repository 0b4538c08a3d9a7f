// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/LatestJobs.h"

LatestJobs::LatestJobs(const AppModel &model, QObject *parent) : QObject(parent), m_model(model)
{
    connect(&m_model, &AppModel::jobsChanged, this, [this] {
        m_isStale = true;
        Q_EMIT changed();
    });
}

std::optional<Job::Outcome> LatestJobs::outcomeFor(const QUuid &fileID)
{
    if (m_isStale) {
        readQueue();
    }
    const std::shared_ptr<Job> job = m_jobs.value(fileID);
    return job ? std::optional(job->outcome()) : std::nullopt;
}

void LatestJobs::readQueue()
{
    m_isStale = false;
    m_jobs.clear();
    for (const std::shared_ptr<Job> &job : m_model.jobs()) {
        m_jobs.insert(job->input.id, job);
        connect(job.get(), &Job::stateChanged, this, &LatestJobs::changed, Qt::UniqueConnection);
    }
}
