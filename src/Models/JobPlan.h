// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <optional>

struct JobPlan;

/// One run of ffmpeg.
struct FFmpegStep {
    /// The step's role, such as "remux". The words "encode" and "pass2" carry weight: the executor
    /// looks for them to find the bitrate that a retry starts from.
    QString label;
    /// The whole list after the program's name.
    QStringList args;
    /// Seconds of media that the step works through: its weight in the overall progress and the
    /// denominator of its own. 0 is allowed.
    double progressDuration = 0;
    /// A file that the step writes and that is no final output; removed on every way out.
    std::optional<QUrl> tempOutputURL;

    bool operator==(const FFmpegStep &) const = default;
};

/// Makes a whole new plan for a video bitrate in kilobits per second. Called on the worker that
/// runs the job, any number of times.
using PlanFactory = std::function<JobPlan(qint64 videoKbps)>;

/// The means of a second attempt upward, when the first result lands far below the limit.
struct ApproachSpec {
    /// The plans that it makes write to `tmpURL`.
    PlanFactory factory;
    QUrl tmpURL;
    /// Where the attempt is moved if it wins.
    QUrl finalURL;
};

/// A text file that must exist before the first step.
struct PrepFile {
    QUrl url;
    QString content;

    bool operator==(const PrepFile &) const = default;
};

/// All that the executor needs to run one job. Lives for one run and is never saved.
struct JobPlan {
    /// Run strictly in this order.
    QList<FFmpegStep> steps;
    /// What the job leaves behind; summed for the size.
    QList<QUrl> finalOutputURLs;
    /// Key of the note that a finished job shows.
    std::optional<QString> badgeKey;
    /// The hard ceiling, where the plan promises a size.
    std::optional<qint64> targetLimitBytes;
    /// Gives a plan for the same output at another bitrate; empty where there is none.
    PlanFactory retryFactory;
    QList<PrepFile> prepFiles;
    QList<QUrl> createDirs;
    /// Removed, with every `tempOutputURL`, when the plan is done with.
    QList<QUrl> cleanupURLs;
    std::optional<ApproachSpec> approach;
};
