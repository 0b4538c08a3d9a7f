// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/WatchFolderEngine.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QTimer>

#include <map>
#include <memory>

/// The watching itself: signals of folders, the scans that follow them, and what was seen before.
/// All of it happens on the thread that this object lives on.
class FolderWatch : public QObject
{
    Q_OBJECT

public:
    explicit FolderWatch(WatchTiming timing) : m_timing(timing) {}

    /// Begins anew with these folders: a fresh snapshot and a fresh source for each enabled one.
    void start(const QList<WatchFolderConfig> &configs);

    /// No further signal leads to a scan; one that waits is still made.
    void stopSource(const QUuid &id);

Q_SIGNALS:
    /// The folders of the latest start() are watched.
    void watching();
    /// The files of a folder that are new and ready.
    void found(const WatchFolderConfig &config, const QList<QUrl> &files);

private:
    void startSource(const WatchFolderConfig &config);
    void debounce(const WatchFolderConfig &config);
    void processChanges(const WatchFolderConfig &config);
    bool isReady(const QString &path) const;

    const WatchTiming m_timing;
    // A watcher each, so that a restart finds a folder that was made again under the same path.
    std::map<QUuid, std::unique_ptr<QFileSystemWatcher>> m_sources;
    QHash<QUuid, QSet<QString>> m_snapshots;
    std::map<QUuid, std::unique_ptr<QTimer>> m_pendingScans;
};
