// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/Job.h"

#include <array>

namespace {

// In the order of the variant's alternatives.
constexpr std::array outcomes{
    Job::Outcome::running, Job::Outcome::finished,  Job::Outcome::failed,
    Job::Outcome::queued,  Job::Outcome::analyzing, Job::Outcome::cancelled,
};
static_assert(outcomes.size() == std::variant_size_v<Job::State>);

} // namespace

Job::Job(VideoFile first, QList<VideoFile> others, JobMode jobMode, std::optional<QUrl> directory)
    : input(std::move(first))
    , extraInputs(std::move(others))
    , mode(std::move(jobMode))
    , outputDirectory(std::move(directory))
{
}

void Job::setState(const State &state)
{
    if (m_state == state) {
        return;
    }
    m_state = state;
    Q_EMIT stateChanged();
}

Job::Outcome Job::outcome(const State &state)
{
    return outcomes.at(state.index());
}
