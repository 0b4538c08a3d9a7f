// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/TargetSizeJob.h"

#include "Batch/BatchTexts.h"
#include "Batch/InputCheck.h"
#include "Batch/ResultCheck.h"
#include "Batch/TemporaryFiles.h"
#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/ProbeService.h"

#include <QElapsedTimer>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

PlanFactory counted(const PlanFactory &factory, const std::shared_ptr<int> &attempts)
{
    if (!factory) {
        return {};
    }
    return [factory, attempts](qint64 videoKbps) {
        ++*attempts;
        return factory(videoKbps);
    };
}

// The plan with factories that count how often they are asked.
JobPlan countingAttempts(JobPlan plan, const std::shared_ptr<int> &attempts)
{
    plan.retryFactory = counted(plan.retryFactory, attempts);
    if (plan.approach) {
        plan.approach->factory = counted(plan.approach->factory, attempts);
    }
    return plan;
}

// A problem of the input or of the result, told in a sentence.
struct FilmProblem {
    QString sentence;
};

VideoFile probed(const QUrl &input, const QUrl &ffprobe)
{
    if (const std::optional<QString> problem = InputCheck::problem(input)) {
        throw FilmProblem{*problem};
    }
    try {
        return ProbeService::probe(input, ffprobe);
    } catch (const ProbeService::ProbeError &error) {
        throw FilmProblem{BatchTexts::unreadable(error.message())};
    }
}

} // namespace

struct TargetSizeJob::Planned {
    VideoFile file;
    JobPlan plan;
    JobPlan runnable;
};

TargetSizeJob::TargetSizeJob(QUrl input, Settings settings)
    : m_input(std::move(input))
    , m_settings(std::move(settings))
    , m_executor(m_settings.toolset.ffmpegURL)
{
}

TargetSizeJob::Planned TargetSizeJob::makePlan() const
{
    const VideoFile file = probed(m_input, m_settings.toolset.ffprobeURL);
    JobPlan plan = CommandBuilder::targetSize(file, m_settings.params, m_settings.toolset,
                                              m_settings.outputDirectory, std::nullopt);
    JobPlan runnable = EncoderStandIns::apply(plan, m_settings.encoders->standIns());
    return {file, std::move(plan), std::move(runnable)};
}

FinishedJob TargetSizeJob::execute(const Planned &planned,
                                   const PlanExecutor::OnProgress &onProgress)
{
    QElapsedTimer timer;
    timer.start();
    const auto attempts = std::make_shared<int>(1);
    const ExecutionOutcome outcome =
        m_executor.execute(countingAttempts(planned.runnable, attempts), onProgress);
    const double seconds = static_cast<double>(timer.elapsed()) / 1000;
    if (const std::optional<QString> problem =
            ResultCheck::problem(planned.file, planned.plan, m_settings.toolset.ffprobeURL)) {
        throw FilmProblem{*problem};
    }
    return {.input = m_input,
            .outputs = outcome.outputURLs,
            .originalBytes = planned.file.fileSizeBytes,
            .outputBytes = outcome.outputBytes,
            .limitBytes = static_cast<qint64>(m_settings.params.targetMB * 1e6),
            .attempts = *attempts,
            .seconds = seconds,
            .note = BatchTexts::note(outcome, planned.plan)};
}

TargetSizeJob::Result TargetSizeJob::run(const PlanExecutor::OnProgress &onProgress)
{
    try {
        const Planned planned = makePlan();
        const auto sweep = qScopeGuard([&] { TemporaryFiles::removeLeftovers(planned.file.id); });
        return execute(planned, onProgress);
    } catch (const FilmProblem &problem) {
        return problem.sentence;
    } catch (const std::exception &error) {
        return BatchTexts::failure(error);
    }
}

std::variant<PlannedJob, QString> TargetSizeJob::plan()
{
    try {
        Planned planned = makePlan();
        return PlannedJob{m_input, std::move(planned.plan), std::move(planned.runnable),
                          m_settings.toolset.ffmpegURL};
    } catch (const FilmProblem &problem) {
        return problem.sentence;
    }
}

void TargetSizeJob::cancel()
{
    m_executor.cancel();
}
