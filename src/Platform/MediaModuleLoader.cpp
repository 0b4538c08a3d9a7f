// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/MediaModuleLoader.h"

#include "Platform/MediaBackend.h"

#include <QCoreApplication>
#include <QPluginLoader>

using namespace Qt::StringLiterals;

MediaModuleLoader::MediaModuleLoader(const QString &folder) : m_folder(folder) {}

QString MediaModuleLoader::installedFolder()
{
    return QCoreApplication::applicationDirPath() + u"/../lib/morvix"_s;
}

MediaBackend *MediaModuleLoader::backend()
{
    if (!m_isTried) {
        m_isTried = true;
        load();
    }
    return m_backend;
}

// The loader going out of scope leaves the module in place.
void MediaModuleLoader::load()
{
    QPluginLoader loader(m_folder + u"/morvix-media.so"_s);
    QObject *instance = loader.instance();
    if (instance == nullptr) {
        m_error = loader.errorString();
        return;
    }
    m_backend = qobject_cast<MediaBackend *>(instance);
    if (m_backend == nullptr) {
        m_error = u"%1 is no media module"_s.arg(loader.fileName());
        loader.unload();
    }
}
