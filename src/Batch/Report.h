// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/Estimator.h"
#include "Models/JobPlan.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

/// What a line of a report is about.
struct Subject {
    QUrl input;
    /// Its place in a queue file, counted from 0; absent for a file of the command line.
    std::optional<qint64> entry;

    bool operator==(const Subject &) const = default;
};

/// A job that ended well.
struct FinishedJob {
    Subject subject;
    QList<QUrl> outputs;
    qint64 originalBytes = 0;
    qint64 outputBytes = 0;
    /// Absent where no size was promised.
    std::optional<qint64> limitBytes;
    /// All runs of the plan and of what its factories made.
    int attempts = 0;
    /// Of the encoding alone: neither probing nor the look at the result.
    double seconds = 0;
    std::optional<QString> note;
};

/// What a dry run shows.
struct PlannedJob {
    Subject subject;
    /// As planned.
    JobPlan plan;
    /// As it would run on this machine.
    JobPlan runnable;
    QUrl ffmpeg;
};

/// What a job would come to, in the words of the window.
struct EstimatedJob {
    Subject subject;
    EstimateInfo info;
    /// What the window promises under the estimate; absent where no size is promised.
    std::optional<QString> guarantee;
    std::optional<QString> badge;
    QStringList warnings;
};

/// Where morvix-batch tells what happens. Called on the main thread.
class Report
{
public:
    virtual ~Report() = default;

    virtual void started(const Subject &subject) = 0;
    virtual void progressed(const Subject &subject, double fraction) = 0;
    /// A further run of the encoder begins; counted from 2.
    virtual void attempted(const Subject &subject, int attempt) = 0;
    virtual void finished(const FinishedJob &job) = 0;
    virtual void failed(const Subject &subject, const QString &message) = 0;
    virtual void planned(const PlannedJob &job) = 0;
    virtual void estimated(const EstimatedJob &job) = 0;
};
