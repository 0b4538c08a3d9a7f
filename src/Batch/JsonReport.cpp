// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/JsonReport.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 progressIntervalMs = 500;

QJsonObject lineOf(const QString &type, const QUrl &input)
{
    return {{u"type"_s, type}, {u"input"_s, input.toLocalFile()}};
}

QJsonArray paths(const QList<QUrl> &urls)
{
    QJsonArray array;
    for (const QUrl &url : urls) {
        array.append(url.toLocalFile());
    }
    return array;
}

QJsonArray steps(const JobPlan &plan)
{
    QJsonArray array;
    for (const FFmpegStep &step : plan.steps) {
        array.append(QJsonObject{{u"label"_s, step.label},
                                 {u"args"_s, QJsonArray::fromStringList(step.args)},
                                 {u"progressDuration"_s, step.progressDuration}});
    }
    return array;
}

} // namespace

JsonReport::JsonReport(QFile &out) : m_out(out) {}

void JsonReport::started(const QUrl &input)
{
    m_sinceProgress.remove(input);
    write(lineOf(u"start"_s, input));
}

void JsonReport::progressed(const QUrl &input, double fraction)
{
    QElapsedTimer &sinceProgress = m_sinceProgress[input];
    if (sinceProgress.isValid() && !sinceProgress.hasExpired(progressIntervalMs)) {
        return;
    }
    sinceProgress.start();
    QJsonObject line = lineOf(u"progress"_s, input);
    line.insert(u"fraction"_s, fraction);
    write(line);
}

void JsonReport::finished(const FinishedJob &job)
{
    QJsonObject line = lineOf(u"finished"_s, job.input);
    line.insert(u"outputs"_s, paths(job.outputs));
    line.insert(u"originalBytes"_s, job.originalBytes);
    line.insert(u"outputBytes"_s, job.outputBytes);
    if (job.limitBytes) {
        line.insert(u"limitBytes"_s, *job.limitBytes);
    }
    line.insert(u"attempts"_s, job.attempts);
    line.insert(u"seconds"_s, job.seconds);
    line.insert(u"note"_s, job.note ? QJsonValue(*job.note) : QJsonValue());
    write(line);
}

void JsonReport::failed(const QUrl &input, const QString &message)
{
    QJsonObject line = lineOf(u"failed"_s, input);
    line.insert(u"message"_s, message);
    write(line);
}

void JsonReport::planned(const PlannedJob &job)
{
    QJsonObject line = lineOf(u"plan"_s, job.input);
    line.insert(u"steps"_s, steps(job.plan));
    line.insert(u"runs"_s, steps(job.runnable));
    line.insert(u"outputs"_s, paths(job.plan.finalOutputURLs));
    line.insert(u"cleanup"_s, paths(job.plan.cleanupURLs));
    if (job.plan.targetLimitBytes) {
        line.insert(u"limitBytes"_s, *job.plan.targetLimitBytes);
    }
    if (job.plan.badgeKey) {
        line.insert(u"badgeKey"_s, *job.plan.badgeKey);
    }
    write(line);
}

void JsonReport::estimated(const EstimatedJob &job)
{
    QJsonObject line = lineOf(u"estimate"_s, job.input);
    line.insert(u"originalBytes"_s, job.info.originalBytes);
    line.insert(u"estimatedBytes"_s, job.info.estimatedBytes);
    if (job.info.badgeKey) {
        line.insert(u"badgeKey"_s, *job.info.badgeKey);
    }
    QJsonArray keys;
    for (const EstimateWarning &warning : job.info.warnings) {
        keys.append(warning.key);
    }
    line.insert(u"warningKeys"_s, keys);
    line.insert(u"warnings"_s, QJsonArray::fromStringList(job.warnings));
    write(line);
}

void JsonReport::write(const QJsonObject &object)
{
    m_out.write(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
    m_out.flush();
}
