// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobMode.h"
#include "Models/VideoFile.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>
#include <variant>

/// The states of a job, each with its data.
namespace JobState {

/// ffmpeg is at work.
struct Running {
    /// 0 to 1.
    double progress = 0;
    bool operator==(const Running &) const = default;
};
/// All steps ended well.
struct Finished {
    QList<QUrl> outputURLs;
    qint64 originalBytes = 0;
    /// Measured on disk.
    qint64 outputBytes = 0;
    std::optional<QString> note;
    bool operator==(const Finished &) const = default;
};
struct Failed {
    /// What the user reads, in the language of the moment it failed.
    QString message;
    bool operator==(const Failed &) const = default;
};
/// Waits for a worker.
struct Queued {
    bool operator==(const Queued &) const = default;
};
/// A worker has it and makes its plan.
struct Analyzing {
    bool operator==(const Analyzing &) const = default;
};
struct Cancelled {
    bool operator==(const Cancelled &) const = default;
};

} // namespace JobState

/// One unit of queued work and its life: the one record with identity, shared by the queue and the
/// views. Read and written on the main thread only.
class Job : public QObject
{
    Q_OBJECT

public:
    using Running = JobState::Running;
    using Finished = JobState::Finished;
    using Failed = JobState::Failed;
    using Queued = JobState::Queued;
    using Analyzing = JobState::Analyzing;
    using Cancelled = JobState::Cancelled;
    using State = std::variant<Running, Finished, Failed, Queued, Analyzing, Cancelled>;

    /// A state without its data.
    enum class Outcome { queued, analyzing, running, finished, failed, cancelled };
    Q_ENUM(Outcome)

    Q_PROPERTY(Job::State state READ state WRITE setState NOTIFY stateChanged)

    /// `extraInputs` are the further files of a merge. An absent `outputDirectory` means beside
    /// the input.
    Job(VideoFile input, QList<VideoFile> extraInputs, JobMode mode,
        std::optional<QUrl> outputDirectory);

    const QUuid id = QUuid::createUuid();
    const VideoFile input;
    const QList<VideoFile> extraInputs;
    const JobMode mode;
    const std::optional<QUrl> outputDirectory;
    const QDateTime createdAt = QDateTime::currentDateTimeUtc();

    const State &state() const { return m_state; }
    void setState(const State &state);

    static Outcome outcome(const State &state);
    Outcome outcome() const { return outcome(m_state); }

Q_SIGNALS:
    void stateChanged();

private:
    State m_state = Queued();
};
