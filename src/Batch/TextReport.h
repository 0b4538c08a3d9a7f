// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Batch/Report.h"

#include <QFile>
#include <QList>

/// A line a job for people, with one bar that moves while jobs run where a terminal shows it.
class TextReport : public Report
{
public:
    enum class Bar { shown, hidden };

    /// Writes to `out`, failures to `errors`; both must outlive it and be open.
    TextReport(QFile &out, QFile &errors, Bar bar);

    void started(const Subject &subject) override;
    void progressed(const Subject &subject, double fraction) override;
    void attempted(const Subject &subject, int attempt) override;
    void finished(const FinishedJob &job) override;
    void failed(const Subject &subject, const QString &message) override;
    void planned(const PlannedJob &job) override;
    void estimated(const EstimatedJob &job) override;

private:
    void forget(const Subject &subject);
    void showBar();
    void clearBar();
    void writeLine(QFile &file, const QString &line);

    QFile &m_out;
    QFile &m_errors;
    Bar m_bar;
    /// A job that runs, as the bar knows it.
    struct Running {
        Subject subject;
        double fraction = 0;
    };
    QList<Running> m_running;
};
