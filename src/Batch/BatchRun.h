// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Batch/BatchOptions.h"
#include "Batch/Report.h"
#include "Batch/TargetSizeJob.h"

#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <memory>

/// Works through the files of one call, one after the other, and tells a Report about it. Lives on
/// the main thread, which it never blocks but at its end.
class BatchRun : public QObject
{
    Q_OBJECT

public:
    /// `report` must outlive it.
    BatchRun(BatchOptions options, const FFmpegToolset &toolset, Report &report);
    ~BatchRun() override;

    void start();

    /// Ends the running job and begins no other.
    void interrupt(int signalNumber);

Q_SIGNALS:
    void done(int exitCode);

private:
    void startNext();
    void planAll();
    void end(const QUrl &input, const TargetSizeJob::Result &result);
    int exitCode() const;

    const BatchOptions m_options;
    TargetSizeJob::Settings m_settings;
    Report &m_report;
    // Asks the running job again to end: a child that is just being launched hears nothing yet.
    QTimer m_repeatCancel;
    std::shared_ptr<TargetSizeJob> m_job;
    qsizetype m_next = 0;
    bool m_someFailed = false;
    int m_signalNumber = 0;
    QThreadPool m_pool;
};
