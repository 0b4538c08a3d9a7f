// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/QueueProgress.h"

#include "App/AppModel.h"
#include "Platform/LauncherProgress.h"

#include <utility>

QueueProgress::QueueProgress(const AppModel &model, std::shared_ptr<LauncherProgress> launcher,
                             QObject *parent)
    : QObject(parent)
    , m_model(model)
    , m_launcher(std::move(launcher))
{
    connect(&m_model, &AppModel::jobsChanged, this, &QueueProgress::followJobs);
    followJobs();
}

void QueueProgress::followJobs()
{
    for (const std::shared_ptr<Job> &job : m_model.jobs()) {
        connect(job.get(), &Job::stateChanged, this, &QueueProgress::update, Qt::UniqueConnection);
    }
    update();
}

void QueueProgress::update()
{
    m_launcher->setFraction(fraction());
}

std::optional<double> QueueProgress::fraction() const
{
    double sum = 0;
    int count = 0;
    for (const std::shared_ptr<Job> &job : m_model.jobs()) {
        if (const auto *running = std::get_if<Job::Running>(&job->state())) {
            sum += running->progress;
            ++count;
        }
    }
    return count == 0 ? std::nullopt : std::optional(sum / count);
}
