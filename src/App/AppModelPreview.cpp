// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"

#include "App/JobFailure.h"

using namespace Qt::StringLiterals;

void AppModel::generatePreview(const PreviewEngine::Request &request, double position)
{
    const std::optional<VideoFile> file = selectedFile();
    if (!toolset() || !file || m_previewRunning) {
        return;
    }
    assign(m_previewRunning, true, &AppModel::previewRunningChanged);
    assign(m_previewImages, {}, &AppModel::previewImagesChanged);
    try {
        runPreview(PreviewEngine::plan(*file, position, request, *toolset()));
    } catch (const BuilderError &) {
        endPreview(t(u"error.probe"_s));
    }
}

// Beside the queue: it takes no worker, and nothing but the end of the program stops it.
void AppModel::runPreview(const JobPlan &plan)
{
    const auto work = [executor = makeExecutor(),
                       runnable = runnablePlan(plan)]() -> PreviewEnding {
        try {
            return PreviewEngine::generate(runnable, *executor);
        } catch (const std::exception &) {
            return std::current_exception();
        }
    };
    m_executorPool.run(work, [this](const PreviewEnding &ending) { endPreview(ending); });
}

void AppModel::endPreview(const PreviewEnding &ending)
{
    if (const auto *images = std::get_if<PreviewImages>(&ending)) {
        assign(m_previewImages, std::optional(*images), &AppModel::previewImagesChanged);
        assign(m_previewRunning, false, &AppModel::previewRunningChanged);
    } else {
        endPreview(JobFailure::description(std::get<std::exception_ptr>(ending)));
    }
}

void AppModel::endPreview(const QString &reason)
{
    assign(m_previewRunning, false, &AppModel::previewRunningChanged);
    setLastError(tf(u"preview.failed"_s, {reason}));
}
