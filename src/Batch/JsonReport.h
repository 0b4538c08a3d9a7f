// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Batch/Report.h"

#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QJsonObject>

/// One JSON object a line; readers pass over keys that they don't know.
class JsonReport : public Report
{
public:
    /// Writes to `out`, which must outlive it and be open.
    explicit JsonReport(QFile &out);

    void started(const Subject &subject) override;
    /// Writes at most twice a second for each input.
    void progressed(const Subject &subject, double fraction) override;
    void attempted(const Subject &subject, int attempt) override;
    void finished(const FinishedJob &job) override;
    void failed(const Subject &subject, const QString &message) override;
    void planned(const PlannedJob &job) override;
    void estimated(const EstimatedJob &job) override;

private:
    void write(const QJsonObject &object);

    QFile &m_out;
    QHash<QString, QElapsedTimer> m_sinceProgress;
};
