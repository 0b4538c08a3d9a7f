// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"

#include "Engine/FolderExpander.h"
#include "Engine/ProbeService.h"

#include <QPromise>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The mark of a folder is the URL's own; the disk isn't asked.
bool isMarkedAsFolder(const QUrl &url)
{
    return url.path().endsWith(u'/');
}

using KeyframeAnswer = QPromise<QList<double>>;

QFuture<QList<double>> answered(const QList<double> &times)
{
    KeyframeAnswer answer;
    answer.start();
    answer.addResult(times);
    answer.finish();
    return answer.future();
}

} // namespace

std::optional<VideoFile> AppModel::selectedFile() const
{
    const auto found = std::ranges::find_if(
        m_files, [this](const VideoFile &file) { return file.id == m_selectedFileID; });
    return found == m_files.end() ? std::nullopt : std::optional(*found);
}

void AppModel::addURLs(const QList<QUrl> &urls, const OnProbed &onProbed)
{
    const QList<QUrl> expanded = FolderExpander::expand(urls);
    if (expanded.isEmpty()) {
        return;
    }
    const auto folder = std::ranges::find_if(urls, isMarkedAsFolder);
    if (folder != urls.end()) {
        m_sourceRoot = *folder;
    }
    m_probingCount += static_cast<int>(expanded.size());
    Q_EMIT probingCountChanged();
    for (const QUrl &url : expanded) {
        probe(url, onProbed);
    }
}

void AppModel::probe(const QUrl &url, const OnProbed &onProbed)
{
    const auto ask = [url, tools = toolset(),
                      questions = m_questions]() -> std::optional<VideoFile> {
        if (!tools) {
            return std::nullopt;
        }
        try {
            return ProbeService::probe(url, tools->ffprobeURL,
                                       [&](const auto &child) { questions->adopt(child); });
        } catch (const std::exception &) {
            return std::nullopt;
        }
    };
    m_probePool.run(ask, [this, onProbed](const std::optional<VideoFile> &file) {
        takeProbed(file, onProbed);
    });
}

void AppModel::takeProbed(const std::optional<VideoFile> &file, const OnProbed &onProbed)
{
    --m_probingCount;
    Q_EMIT probingCountChanged();
    if (!file) {
        setLastError(t(u"error.probe"_s));
        return;
    }
    m_files.append(*file);
    Q_EMIT filesChanged();
    if (!m_selectedFileID) {
        setSelectedFileID(file->id);
    }
    if (onProbed) {
        onProbed(*file);
    }
}

void AppModel::runQuickAction(QuickAction action, const QList<QUrl> &urls)
{
    addURLs(urls,
            [this, mode = jobMode(action)](const VideoFile &file) { enqueueProbed(file, mode); });
    setShowQueue(true);
}

void AppModel::removeFile(const QUuid &id)
{
    const qsizetype removed =
        m_files.removeIf([&](const VideoFile &file) { return file.id == id; });
    if (removed > 0) {
        Q_EMIT filesChanged();
    }
    if (m_selectedFileID == id) {
        setSelectedFileID(m_files.isEmpty() ? std::nullopt : std::optional(m_files.first().id));
    }
}

QFuture<QList<double>> AppModel::keyframes(const VideoFile &file)
{
    const auto known = m_keyframeCache.constFind(file.id);
    if (known != m_keyframeCache.cend()) {
        return answered(*known);
    }
    if (!toolset()) {
        return answered({});
    }
    const auto answer = std::make_shared<KeyframeAnswer>();
    answer->start();
    // A film whose keyframes can't be had isn't asked again.
    const auto ask = [file, ffprobe = toolset()->ffprobeURL, questions = m_questions] {
        try {
            return ProbeService::keyframeTimes(file.url, ffprobe,
                                               [&](const auto &child) { questions->adopt(child); });
        } catch (const std::exception &) {
            return QList<double>();
        }
    };
    m_keyframePool.run(ask, [this, id = file.id, answer](const QList<double> &times) {
        m_keyframeCache.insert(id, times);
        answer->addResult(times);
        answer->finish();
    });
    return answer->future();
}
