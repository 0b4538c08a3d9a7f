// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/WatchFolderEngine.h"

#include "Engine/FolderWatch.h"
#include "Engine/JsonFile.h"
#include "Engine/Text.h"

#include <QDir>
#include <QDirIterator>

#include <algorithm>

using namespace Qt::StringLiterals;

template <> struct Json::Fields<WatchFolderConfig> {
    static constexpr std::tuple list{
        Json::Field{"id", &WatchFolderConfig::id},
        Json::Field{"path", &WatchFolderConfig::path},
        Json::Field{"presetID", &WatchFolderConfig::presetID},
        Json::Field{"enabled", &WatchFolderConfig::enabled},
    };
};

namespace {

// A failure to make the folder shows when something is to be saved there.
QString fileIn(const std::optional<QUrl> &directory)
{
    const QString folder = directory ? Text::path(*directory) : JsonFile::listsDirectory();
    QDir().mkpath(folder);
    return Text::joinedPath(folder, u"watchfolders.json"_s);
}

QString folderPath(const QUrl &folder)
{
    return Text::path(folder.adjusted(QUrl::StripTrailingSlash));
}

bool hasMediaName(const QString &path)
{
    const QString extension = Text::splitExtension(path).extension.toLower();
    return WatchFolderEngine::mediaExtensions().contains(extension);
}

} // namespace

const QSet<QString> &WatchFolderEngine::mediaExtensions()
{
    static const QSet<QString> extensions{u"mp4"_s, u"mov"_s, u"mkv"_s, u"webm"_s, u"avi"_s,
                                          u"m4v"_s, u"ts"_s,  u"mts"_s, u"m2ts"_s, u"flv"_s};
    return extensions;
}

QList<QUrl> WatchFolderEngine::scanMediaFiles(const QUrl &folder)
{
    const QString root = folderPath(folder);
    if (root.isEmpty()) {
        // Qt would take it for the current folder.
        return {};
    }
    QStringList paths;
    QSet<QString> folders;
    QDirIterator entries(root, QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext() && !QThread::currentThread()->isInterruptionRequested()) {
        const QString path = entries.next();
        if (!hasMediaName(path)) {
            continue;
        }
        paths.append(path);
        if (entries.fileInfo().isDir()) {
            folders.insert(path);
        }
    }
    Text::sortPlainly(paths);
    QList<QUrl> urls;
    for (const QString &path : std::as_const(paths)) {
        urls.append(QUrl::fromLocalFile(folders.contains(path) ? path + u'/' : path));
    }
    return urls;
}

WatchFolderEngine::WatchFolderEngine(const std::optional<QUrl> &directory, WatchTiming timing,
                                     QObject *parent)
    : QObject(parent)
    , m_path(fileIn(directory))
    , m_configs(JsonFile::readListOrNothing<WatchFolderConfig>(m_path))
    , m_watch(new FolderWatch(timing))
{
    m_watch->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_watch, &QObject::deleteLater);
    connect(m_watch, &FolderWatch::watching, this, &WatchFolderEngine::watching);
    connect(m_watch, &FolderWatch::found, this, &WatchFolderEngine::handOver);
    m_thread.setObjectName(u"morvix.watchfolders"_s);
    m_thread.start();
}

WatchFolderEngine::~WatchFolderEngine()
{
    m_thread.requestInterruption();
    m_thread.quit();
    m_thread.wait();
}

void WatchFolderEngine::start(const Handler &handler)
{
    m_handler = handler;
    post([configs = m_configs](FolderWatch &watch) { watch.start(configs); });
}

void WatchFolderEngine::add(const QUrl &folder, std::optional<QUuid> presetID)
{
    m_configs.append({.path = folderPath(folder), .presetID = presetID});
    save();
    restart();
}

void WatchFolderEngine::remove(QUuid id)
{
    m_configs.removeIf([&](const WatchFolderConfig &config) { return config.id == id; });
    save();
    post([id](FolderWatch &watch) { watch.stopSource(id); });
}

void WatchFolderEngine::setEnabled(bool enabled, QUuid id)
{
    if (WatchFolderConfig *config = configWithID(id)) {
        config->enabled = enabled;
        save();
        restart();
    }
}

void WatchFolderEngine::setPreset(std::optional<QUuid> presetID, QUuid id)
{
    if (WatchFolderConfig *config = configWithID(id)) {
        config->presetID = presetID;
        save();
    }
}

WatchFolderConfig *WatchFolderEngine::configWithID(QUuid id)
{
    const auto found = std::ranges::find(m_configs, id, &WatchFolderConfig::id);
    return found == m_configs.end() ? nullptr : &*found;
}

void WatchFolderEngine::restart()
{
    if (m_handler) {
        start(m_handler);
    }
}

// Calls keep their order.
void WatchFolderEngine::post(const std::function<void(FolderWatch &)> &call)
{
    QMetaObject::invokeMethod( // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
        m_watch, [watch = m_watch, call] { call(*watch); }, Qt::QueuedConnection);
}

void WatchFolderEngine::handOver(const WatchFolderConfig &config, const QList<QUrl> &files) const
{
    // A copy: the handler may start anew with another one.
    if (const Handler handler = m_handler) {
        handler(config, files);
    }
}

void WatchFolderEngine::save() const
{
    JsonFile::replaceByList(m_path, m_configs, JsonFile::Layout::compact);
}
