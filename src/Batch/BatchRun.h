// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/AppModel.h"
#include "Batch/BatchOptions.h"
#include "Batch/Report.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QTimer>

#include <memory>

/// Takes the files of one call through the application object and tells a Report about it. Lives on
/// the main thread, which it never blocks but at its end.
class BatchRun : public QObject
{
    Q_OBJECT

public:
    /// `model` and `report` must outlive it.
    BatchRun(BatchOptions options, AppModel &model, Report &report);
    ~BatchRun() override;

    void start();

    /// Ends the running jobs and begins no other.
    void interrupt(int signalNumber);

Q_SIGNALS:
    void done(int exitCode);

private:
    /// What a report needs beside the job itself.
    struct Progress {
        std::optional<JobPlan> plan;
        int attempts = 0;
        QElapsedTimer sinceStart;
        /// Of the run alone: neither probing nor the look at the result.
        double seconds = 0;
    };

    QList<QUrl> usableFiles();
    void takeIn(const QList<QUrl> &urls);
    void enqueueAll();
    QList<VideoFile> probedFiles();
    void enqueueFiles(const QList<VideoFile> &files);
    void planAll();
    void estimateAll(const QList<VideoFile> &files);
    EstimatedJob estimatedJob(const VideoFile &file) const;
    void cancelAll();
    void follow(const std::shared_ptr<Job> &job);
    void tell(const std::shared_ptr<Job> &job);
    void tellProgress(const QUrl &input, double fraction);
    void examine(const std::shared_ptr<Job> &job);
    void end(const std::shared_ptr<Job> &job, const std::optional<QString> &problem);
    FinishedJob finishedJob(const Job &job) const;
    void tellFailed(const QUrl &input, const QString &message);
    void endIfAllTold();
    int exitCode() const;

    const BatchOptions m_options;
    AppModel &m_model;
    Report &m_report;
    // Asks the running jobs again to end: a child that is just being launched hears nothing yet.
    QTimer m_repeatCancel;
    QList<QUrl> m_inputs;
    QHash<QUuid, Progress> m_progress;
    qsizetype m_untold = 0;
    bool m_someFailed = false;
    int m_signalNumber = 0;
    BackgroundPool m_examinations;
};
