// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/FolderWatch.h"

#include "Engine/Text.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

namespace {

QString pathOf(const QUrl &file)
{
    return Text::path(file.adjusted(QUrl::StripTrailingSlash));
}

QList<QUrl> scan(const WatchFolderConfig &config)
{
    return WatchFolderEngine::scanMediaFiles(QUrl::fromLocalFile(config.path));
}

QSet<QString> pathsOf(const QList<QUrl> &files)
{
    QSet<QString> paths;
    for (const QUrl &file : files) {
        paths.insert(pathOf(file));
    }
    return paths;
}

} // namespace

void FolderWatch::start(const QList<WatchFolderConfig> &configs)
{
    for (const WatchFolderConfig &config : configs) {
        stopSource(config.id);
        m_pendingScans.erase(config.id);
        if (config.enabled) {
            m_snapshots.insert(config.id, pathsOf(scan(config)));
            startSource(config);
        }
    }
    Q_EMIT watching();
}

void FolderWatch::stopSource(const QUuid &id)
{
    m_sources.erase(id);
}

// Only changes of the folder's own entries give a signal. A file that appears in a folder below is
// found by the next scan that something else causes.
void FolderWatch::startSource(const WatchFolderConfig &config)
{
    auto source = std::make_unique<QFileSystemWatcher>();
    if (config.path.isEmpty() || !source->addPath(config.path)) {
        return;
    }
    connect(source.get(), &QFileSystemWatcher::directoryChanged, this,
            [this, config] { debounce(config); });
    m_sources.insert_or_assign(config.id, std::move(source));
}

// Each signal pushes the scan back.
void FolderWatch::debounce(const WatchFolderConfig &config)
{
    auto scanLater = std::make_unique<QTimer>();
    scanLater->setTimerType(Qt::PreciseTimer);
    scanLater->setSingleShot(true);
    connect(scanLater.get(), &QTimer::timeout, this, [this, config] { processChanges(config); });
    scanLater->start(m_timing.debounce);
    m_pendingScans.insert_or_assign(config.id, std::move(scanLater));
}

void FolderWatch::processChanges(const WatchFolderConfig &config)
{
    const QList<QUrl> files = scan(config);
    const QSet<QString> current = pathsOf(files);
    const QSet<QString> known = m_snapshots.value(config.id, current);
    // Recorded before any file is looked at: a path is new once, ready or not, until it disappears
    // from a later scan. That keeps a file from running twice.
    m_snapshots.insert(config.id, current);

    QList<QUrl> ready;
    for (const QUrl &file : files) {
        const QString path = pathOf(file);
        if (!known.contains(path) && isReady(path)) {
            ready.append(file);
        }
    }
    if (!ready.isEmpty()) {
        Q_EMIT found(config, ready);
    }
}

// One look, not a wait: what is still being written is passed over for good. A copy that keeps its
// source's old date passes at once.
bool FolderWatch::isReady(const QString &path) const
{
    const QFileInfo info(path);
    if (!info.exists() || !info.isReadable()) {
        return false;
    }
    // Not QFileInfo's date, which goes through local time and its changes of the clock.
    std::error_code hasNoDate;
    const auto written =
        std::filesystem::last_write_time(QFile::encodeName(path).constData(), hasNoDate);
    return hasNoDate ||
           std::filesystem::file_time_type::clock::now() - written > m_timing.readiness;
}
