// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/JsonReport.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 progressIntervalMs = 500;

QJsonObject lineOf(const QString &type, const Subject &subject)
{
    QJsonObject line{{u"type"_s, type}, {u"input"_s, subject.input.toLocalFile()}};
    if (subject.entry) {
        line.insert(u"entry"_s, *subject.entry);
    }
    return line;
}

// One input may stand in a queue several times.
QString nameOf(const Subject &subject)
{
    return QString::number(subject.entry.value_or(-1)) + subject.input.toString();
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

void JsonReport::started(const Subject &subject)
{
    m_sinceProgress.remove(nameOf(subject));
    write(lineOf(u"start"_s, subject));
}

void JsonReport::progressed(const Subject &subject, double fraction)
{
    QElapsedTimer &sinceProgress = m_sinceProgress[nameOf(subject)];
    if (sinceProgress.isValid() && !sinceProgress.hasExpired(progressIntervalMs)) {
        return;
    }
    sinceProgress.start();
    QJsonObject line = lineOf(u"progress"_s, subject);
    line.insert(u"fraction"_s, fraction);
    write(line);
}

void JsonReport::attempted(const Subject &subject, int attempt)
{
    QJsonObject line = lineOf(u"attempt"_s, subject);
    line.insert(u"number"_s, attempt);
    write(line);
}

void JsonReport::finished(const FinishedJob &job)
{
    QJsonObject line = lineOf(u"finished"_s, job.subject);
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

void JsonReport::failed(const Subject &subject, const QString &message)
{
    QJsonObject line = lineOf(u"failed"_s, subject);
    line.insert(u"message"_s, message);
    write(line);
}

void JsonReport::planned(const PlannedJob &job)
{
    QJsonObject line = lineOf(u"plan"_s, job.subject);
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
    QJsonObject line = lineOf(u"estimate"_s, job.subject);
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
