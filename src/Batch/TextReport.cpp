// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/TextReport.h"

#include "App/Fmt.h"
#include "Batch/ShellQuoting.h"
#include "Engine/Text.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int barWidth = 30;

// A name with a line feed or an escape sequence must not act on the terminal.
QString printable(const QString &name)
{
    QString text = name;
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control) {
            c = QChar::ReplacementCharacter;
        }
    }
    return text;
}

QString nameOf(const QUrl &url)
{
    return printable(url.fileName());
}

QString shareOfLimit(const FinishedJob &job, qint64 limitBytes)
{
    return Text::fixed(
               100.0 * static_cast<double>(job.outputBytes) / static_cast<double>(limitBytes), 1) +
           u" % of "_s + Fmt::bytes(limitBytes);
}

QString places(const QList<QUrl> &outputs)
{
    const QString first = printable(outputs.first().toLocalFile());
    return outputs.size() == 1 ? first : first + u" and %1 more"_s.arg(outputs.size() - 1);
}

QString attempts(int count)
{
    return count == 1 ? u"1 attempt"_s : u"%1 attempts"_s.arg(count);
}

} // namespace

TextReport::TextReport(QFile &out, QFile &errors, Bar bar)
    : m_out(out)
    , m_errors(errors)
    , m_bar(bar)
{
}

void TextReport::started(const Subject &subject)
{
    m_running.append({subject, 0});
    showBar();
}

void TextReport::progressed(const Subject &subject, double fraction)
{
    const auto running = std::ranges::find(m_running, subject, &Running::subject);
    if (running != m_running.end()) {
        running->fraction = fraction;
    }
    showBar();
}

// The bar begins again; the last line tells how often.
void TextReport::attempted(const Subject &, int) {}

void TextReport::forget(const Subject &subject)
{
    m_running.removeIf([&](const Running &running) { return running.subject == subject; });
}

void TextReport::showBar()
{
    if (m_bar == Bar::hidden || m_running.isEmpty()) {
        return;
    }
    double sum = 0;
    for (const Running &running : std::as_const(m_running)) {
        sum += running.fraction;
    }
    const double fraction = sum / static_cast<double>(m_running.size());
    const QString names = m_running.size() == 1 ? nameOf(m_running.first().subject.input)
                                                : u"%1 files"_s.arg(m_running.size());
    const int filled = static_cast<int>(std::lround(fraction * barWidth));
    const QString bar = QString(filled, u'█') + QString(barWidth - filled, u'░');
    m_out.write(
        u"\r\x1b[K%1 %2 % %3"_s.arg(bar, Text::fixed(fraction * 100, 0).rightJustified(3), names)
            .toUtf8());
    m_out.flush();
}

void TextReport::finished(const FinishedJob &job)
{
    QStringList facts{Fmt::bytes(job.originalBytes) + u" → "_s + Fmt::bytes(job.outputBytes)};
    if (job.limitBytes) {
        facts += shareOfLimit(job, *job.limitBytes);
    }
    facts += attempts(job.attempts);
    facts += Text::fixed(job.seconds, 1) + u" s"_s;
    QString line =
        nameOf(job.subject.input) + u": "_s + facts.join(u", "_s) + u" → "_s + places(job.outputs);
    if (job.note) {
        line += u" ("_s + *job.note + u')';
    }
    forget(job.subject);
    writeLine(m_out, line);
}

void TextReport::failed(const Subject &subject, const QString &message)
{
    // ffmpeg's words may fill several lines and repeat the name.
    forget(subject);
    const QString sentence = message.trimmed().replace(u'\n', u' ');
    writeLine(m_errors, printable(subject.input.toLocalFile() + u": "_s + sentence));
}

void TextReport::planned(const PlannedJob &job)
{
    writeLine(m_out, u"# "_s + printable(job.subject.input.toLocalFile()));
    const QString program = job.ffmpeg.toLocalFile();
    for (qsizetype i = 0; i < job.plan.steps.size(); ++i) {
        const FFmpegStep &step = job.plan.steps.at(i);
        const QStringList &runs = job.runnable.steps.at(i).args;
        if (runs != step.args) {
            writeLine(m_out,
                      u"# planned: "_s +
                          ShellQuoting::commandLine(program, step.args).replace(u'\n', u' '));
        }
        writeLine(m_out, u"# "_s + step.label);
        writeLine(m_out, ShellQuoting::commandLine(program, runs));
    }
}

void TextReport::estimated(const EstimatedJob &job)
{
    QString line =
        u"%1: %2 → ≈ %3"_s.arg(nameOf(job.subject.input), Fmt::bytes(job.info.originalBytes),
                               Fmt::bytes(job.info.estimatedBytes));
    if (const std::optional<QString> saving =
            Fmt::saving(job.info.originalBytes, job.info.estimatedBytes)) {
        line += u' ' + *saving;
    }
    if (job.badge) {
        line += u" ("_s + *job.badge + u')';
    }
    writeLine(m_out, line);
    for (const QString &remark :
         (job.guarantee ? QStringList{*job.guarantee} : QStringList()) + job.warnings) {
        writeLine(m_out, u"  "_s + remark);
    }
}

void TextReport::clearBar()
{
    if (m_bar == Bar::shown) {
        m_out.write("\r\x1b[K");
        m_out.flush();
    }
}

void TextReport::writeLine(QFile &file, const QString &line)
{
    clearBar();
    file.write(line.toUtf8() + '\n');
    file.flush();
    showBar();
}
