// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/FolderExpander.h"

#include "Engine/Text.h"
#include "Engine/WatchFolderEngine.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int deepestLevel = 5;

class Walk
{
public:
    void visit(const QUrl &url, int depth)
    {
        if (m_files.size() >= FolderExpander::mostFiles || depth > deepestLevel) {
            return;
        }
        const QString path = Text::path(url);
        const QFileInfo info(path);
        if (info.isDir()) {
            visitEntries(path, depth);
        } else if (info.isFile()) {
            take(url, path);
        }
    }

    const QList<QUrl> &files() const { return m_files; }

private:
    void visitEntries(const QString &path, int depth)
    {
        // The names of a folder that can't be listed are none.
        QStringList names =
            QDir(path).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
        Text::sortPlainly(names);
        for (const QString &name : std::as_const(names)) {
            visit(QUrl::fromLocalFile(Text::joinedPath(path, name)), depth + 1);
        }
    }

    void take(const QUrl &url, const QString &path)
    {
        const QString extension = Text::splitExtension(path).extension.toLower();
        if (FolderExpander::mediaExtensions().contains(extension) && !m_seen.contains(path)) {
            m_seen.insert(path);
            m_files.append(url);
        }
    }

    QList<QUrl> m_files;
    QSet<QString> m_seen;
};

} // namespace

const QSet<QString> &FolderExpander::mediaExtensions()
{
    static const QSet<QString> extensions =
        WatchFolderEngine::mediaExtensions() +
        QSet<QString>{u"mp3"_s, u"m4a"_s, u"wav"_s, u"aac"_s, u"flac"_s, u"aiff"_s};
    return extensions;
}

QList<QUrl> FolderExpander::expand(const QList<QUrl> &urls)
{
    Walk walk;
    for (const QUrl &url : urls) {
        walk.visit(url, 0);
    }
    return walk.files();
}
