// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/BatchRun.h"

#include "Batch/ExitCode.h"

#include <QDir>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds cancelInterval{250};

} // namespace

BatchRun::BatchRun(BatchOptions options, const FFmpegToolset &toolset, Report &report)
    : m_options(std::move(options))
    , m_settings{m_options.params, toolset, m_options.outputDirectory,
                 std::make_shared<HardwareEncoders>(toolset)}
    , m_report(report)
{
    // A job and the check of the hardware.
    m_pool.setMaxThreadCount(2);
    m_repeatCancel.setInterval(cancelInterval);
    connect(&m_repeatCancel, &QTimer::timeout, this, [this] {
        if (m_job) {
            m_job->cancel();
        }
    });
}

BatchRun::~BatchRun()
{
    m_settings.encoders->cancel();
    if (m_job) {
        m_job->cancel();
    }
    while (!m_pool.waitForDone(static_cast<int>(cancelInterval.count()))) {
        m_settings.encoders->cancel();
    }
}

void BatchRun::start()
{
    if (m_options.running == BatchOptions::Running::dry) {
        planAll();
        return;
    }
    if (m_options.outputDirectory) {
        // A failure shows in ffmpeg's own words when it can't write there.
        QDir().mkpath(m_options.outputDirectory->toLocalFile());
    }
    // The first job doesn't wait for the answer: with no other behind it, the question is idle.
    if (m_options.files.size() > 1) {
        m_pool.start([encoders = m_settings.encoders] { encoders->check(); });
    }
    startNext();
}

void BatchRun::interrupt(int signalNumber)
{
    m_signalNumber = signalNumber;
    if (m_job) {
        m_job->cancel();
        m_repeatCancel.start();
    } else {
        Q_EMIT done(exitCode());
    }
}

void BatchRun::startNext()
{
    if (m_signalNumber != 0 || m_next == m_options.files.size()) {
        Q_EMIT done(exitCode());
        return;
    }
    m_job = std::make_shared<TargetSizeJob>(m_options.files.at(m_next++), m_settings);
    m_report.started(m_job->input());
    m_pool.start([this, job = m_job] {
        const auto onProgress = [this, job](double fraction) {
            QMetaObject::invokeMethod( // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
                this, [this, job, fraction] { m_report.progressed(job->input(), fraction); },
                Qt::QueuedConnection);
        };
        QMetaObject::invokeMethod( // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
            this, [this, job, result = job->run(onProgress)] { end(job->input(), result); },
            Qt::QueuedConnection);
    });
}

void BatchRun::end(const QUrl &input, const TargetSizeJob::Result &result)
{
    m_job.reset();
    if (const auto *finished = std::get_if<FinishedJob>(&result)) {
        m_report.finished(*finished);
    } else {
        m_someFailed = true;
        m_report.failed(input, m_signalNumber == 0 ? std::get<QString>(result) : u"Interrupted."_s);
    }
    startNext();
}

void BatchRun::planAll()
{
    for (const QUrl &input : m_options.files) {
        const auto result = TargetSizeJob(input, m_settings).plan();
        if (const auto *planned = std::get_if<PlannedJob>(&result)) {
            m_report.planned(*planned);
        } else {
            m_someFailed = true;
            m_report.failed(input, std::get<QString>(result));
        }
    }
    Q_EMIT done(exitCode());
}

int BatchRun::exitCode() const
{
    if (m_signalNumber != 0) {
        return ExitCode::signalBase + m_signalNumber;
    }
    return m_someFailed ? ExitCode::someFailed : ExitCode::allDone;
}
