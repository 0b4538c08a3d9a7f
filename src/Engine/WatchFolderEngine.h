// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/WatchFolderConfig.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QThread>
#include <QUrl>
#include <QUuid>

#include <chrono>
#include <functional>
#include <optional>

class FolderWatch;

/// How patient the watching is; tests have less time.
struct WatchTiming {
    /// A folder is scanned when it has been quiet for so long.
    std::chrono::milliseconds debounce{2000};
    /// A file is ready when it was last written longer ago than this.
    std::chrono::milliseconds readiness{3000};
};

/// The watched folders, their file `watchfolders.json`, and the detection of new media files. Each
/// file is looked at once, by the scan that first sees it: one that is still being written then is
/// passed over for good, unless it disappears and comes back.
///
/// The list belongs to the main thread, from which all operations are called. Scans run on a thread
/// of their own, "morvix.watchfolders", which works on copies and is told of changes in order.
class WatchFolderEngine : public QObject
{
    Q_OBJECT

public:
    /// Takes the folder as it was when its watching began, and the files that are new and ready, in
    /// the order of their paths. Called on the main thread.
    using Handler = std::function<void(const WatchFolderConfig &, const QList<QUrl> &)>;

    /// The lower-case extensions of what counts as a video.
    static const QSet<QString> &mediaExtensions();

    /// What lies in a folder and below it under a video's name, sorted by path; hidden entries are
    /// passed over and links to folders aren't entered. A folder with such a name counts too, its
    /// URL ends in a slash. Blocks on the file system; from any thread.
    static QList<QUrl> scanMediaFiles(const QUrl &folder);

    /// Makes the folder of the file and loads the list; a file that can't be read is an empty one.
    /// No directory means the user's folder of data. Nothing is watched yet.
    explicit WatchFolderEngine(const std::optional<QUrl> &directory = std::nullopt,
                               WatchTiming timing = {}, QObject *parent = nullptr);
    /// Ends the watching; a scan under way is given up. The handler isn't called any more.
    ~WatchFolderEngine() override;

    /// In the order of adding.
    const QList<WatchFolderConfig> &configs() const { return m_configs; }

    /// Watches all enabled folders anew for the handler, which replaces an earlier one. What lies
    /// in them counts as known, and changes that still waited for their scan are forgotten. A
    /// folder that can't be watched is passed over until the next start.
    void start(const Handler &handler);

    /// Adds an enabled folder. Starts anew when there is a handler.
    void add(const QUrl &folder, std::optional<QUuid> presetID);

    /// Stops watching; a scan that waits already is still made.
    void remove(QUuid id);

    /// Starts anew when there is a handler. Nothing happens without such a folder.
    void setEnabled(bool enabled, QUuid id);

    /// Nothing happens without such a folder. The running watch goes on with the old preset until
    /// the next start.
    void setPreset(std::optional<QUuid> presetID, QUuid id);

Q_SIGNALS:
    /// The latest start() has come into force: what comes from now on is new.
    void watching();

private:
    WatchFolderConfig *configWithID(QUuid id);
    void restart();
    void post(const std::function<void(FolderWatch &)> &call);
    void handOver(const WatchFolderConfig &config, const QList<QUrl> &files) const;
    void save() const;

    const QString m_path;
    QList<WatchFolderConfig> m_configs;
    Handler m_handler;
    QThread m_thread;
    // Lives on m_thread, and goes with it.
    FolderWatch *m_watch;
};
