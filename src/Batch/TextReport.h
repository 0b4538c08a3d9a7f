// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Batch/Report.h"

#include <QFile>
#include <QMap>

/// A line a job for people, with one bar that moves while jobs run where a terminal shows it.
class TextReport : public Report
{
public:
    enum class Bar { shown, hidden };

    /// Writes to `out`, failures to `errors`; both must outlive it and be open.
    TextReport(QFile &out, QFile &errors, Bar bar);

    void started(const QUrl &input) override;
    void progressed(const QUrl &input, double fraction) override;
    void finished(const FinishedJob &job) override;
    void failed(const QUrl &input, const QString &message) override;
    void planned(const PlannedJob &job) override;
    void estimated(const EstimatedJob &job) override;

private:
    void showBar();
    void clearBar();
    void writeLine(QFile &file, const QString &line);

    QFile &m_out;
    QFile &m_errors;
    Bar m_bar;
    // Of the jobs that run, by input.
    QMap<QUrl, double> m_running;
};
