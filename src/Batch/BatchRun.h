// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/AppModel.h"
#include "Batch/BatchIntake.h"
#include "Batch/Report.h"
#include "Batch/ResultCheck.h"

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
        Subject subject;
        std::optional<JobPlan> plan;
        int attempts = 0;
        /// Of a failed job, for its exit code.
        std::exception_ptr failure;
        QElapsedTimer sinceStart;
        /// Of the run alone: neither probing nor the look at the result.
        double seconds = 0;
    };

    void listenToModel();
    void enqueueAll();
    void enqueueJobs(const QList<BatchItem> &items);
    void enqueueMerge(const QList<BatchItem> &items);
    void run();
    void planAll();
    void estimateAll(const QList<BatchItem> &items);
    void cancelAll();
    void follow(const std::shared_ptr<Job> &job);
    void tell(const std::shared_ptr<Job> &job);
    void tellProgress(const Job &job, double fraction);
    void examine(const std::shared_ptr<Job> &job);
    void endWell(const std::shared_ptr<Job> &job,
                 const std::optional<ResultCheck::Problem> &problem);
    void endBadly(const std::shared_ptr<Job> &job, const QString &message);
    void forget(const Job &job);
    FinishedJob finishedJob(const Job &job) const;
    void tellFailed(const Subject &subject, const QString &message, int code);
    void tellInterrupted(const Subject &subject);
    void endIfAllTold();
    int exitCode() const;

    const BatchOptions m_options;
    AppModel &m_model;
    Report &m_report;
    BatchIntake m_intake;
    // Asks the running jobs again to end: a child that is just being launched hears nothing yet.
    QTimer m_repeatCancel;
    QHash<QUuid, Progress> m_progress;
    qsizetype m_untold = 0;
    // Of the first failure; 0 as long as there is none.
    int m_failureCode = 0;
    int m_signalNumber = 0;
    BackgroundPool m_examinations;
};
