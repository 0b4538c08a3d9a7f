// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"

#include "Engine/QueueFile.h"
#include "Engine/Text.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

struct SpecOfMode {
    template <typename Params> std::optional<PresetSpec> operator()(const Params &params) const
    {
        return params;
    }
    std::optional<PresetSpec> operator()(const TrimParams &) const { return std::nullopt; }
};

} // namespace

void AppModel::savePreset(const QString &name, const PresetSpec &spec,
                          const std::optional<QUrl> &outputDirectory)
{
    if (m_collections.presets) {
        m_collections.presets->upsert(name, spec, outputDirectory);
        Q_EMIT presetsChanged();
    }
}

void AppModel::deletePreset(const QUuid &id)
{
    if (m_collections.presets) {
        m_collections.presets->remove(id);
        Q_EMIT presetsChanged();
    }
}

void AppModel::applyPreset(const UserPreset &preset)
{
    setAction(actionOf(preset.spec));
    setAppliedPreset(preset);
    setPresetBanner(preset.name);
}

JobMode AppModel::modeFrom(const PresetSpec &spec)
{
    return std::visit([](const auto &params) -> JobMode { return params; }, spec);
}

std::optional<PresetSpec> AppModel::specOf(const JobMode &mode)
{
    return std::visit(SpecOfMode(), mode);
}

void AppModel::exportQueue(const QUrl &url) const
{
    QList<ExportedJob> exported;
    for (const std::shared_ptr<Job> &job : m_jobs) {
        const std::optional<PresetSpec> spec = specOf(job->mode);
        if (job->outcome() == Job::Outcome::queued && spec) {
            exported.append({Text::path(job->input.url), *spec});
        }
    }
    QueueFile::write(url, exported);
}

void AppModel::importQueue(const QUrl &url)
{
    QList<ExportedJob> entries;
    try {
        entries = QueueFile::read(url);
    } catch (const std::exception &) {
        setLastError(t(u"error.probe"_s));
        return;
    }
    for (const ExportedJob &entry : std::as_const(entries)) {
        addURLs({QUrl::fromLocalFile(entry.path)},
                [this, mode = modeFrom(entry.spec)](const VideoFile &file) {
                    enqueueProbed(file, mode);
                });
    }
    // Counts the entries, not what becomes of them.
    setPresetBanner(tf(u"queue.imported"_s, {QString::number(entries.size())}));
}

void AppModel::startWatchFolders()
{
    if (m_collections.watchEngine) {
        m_collections.watchEngine->start(
            [self = QPointer(this)](const WatchFolderConfig &config, const QList<QUrl> &urls) {
                if (self) {
                    self->takeWatched(config, urls);
                }
            });
    }
}

// A folder without a preset, or with one that is gone, stays watched and ignores what comes.
void AppModel::takeWatched(const WatchFolderConfig &config, const QList<QUrl> &urls)
{
    if (!config.presetID || !m_collections.presets) {
        return;
    }
    const std::optional<UserPreset> preset = m_collections.presets->preset(*config.presetID);
    if (preset) {
        addURLs(urls, [this, mode = modeFrom(preset->spec)](const VideoFile &file) {
            enqueueProbed(file, mode);
        });
    }
}
