// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Desktop/FreeDesktopServices.h"

#include "Platform/DetachedProgram.h"
#include "Platform/FileMimeData.h"
#include "Platform/Trash.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

// Each once, in the order of the files.
QList<QUrl> foldersOf(const QList<QUrl> &files)
{
    QList<QUrl> folders;
    for (const QUrl &file : files) {
        const QUrl folder = file.adjusted(QUrl::StripTrailingSlash).adjusted(QUrl::RemoveFilename);
        if (!folders.contains(folder)) {
            folders += folder;
        }
    }
    return folders;
}

void openFoldersOf(const QList<QUrl> &files)
{
    for (const QUrl &folder : foldersOf(files)) {
        QDesktopServices::openUrl(folder);
    }
}

void startMailProgram(const QList<QUrl> &files)
{
    QStringList arguments;
    for (const QUrl &file : files) {
        arguments << u"--attach"_s << file.toLocalFile();
    }
    DetachedProgram::start(u"xdg-email"_s, arguments);
}

} // namespace

FreeDesktopServices::FreeDesktopServices(std::shared_ptr<SessionBus> bus)
    : m_fileManager(bus)
    , m_mail(bus)
{
}

void FreeDesktopServices::reveal(const QList<QUrl> &files)
{
    m_fileManager.show(files, [files] { openFoldersOf(files); });
}

void FreeDesktopServices::open(const QUrl &file)
{
    QDesktopServices::openUrl(file);
}

bool FreeDesktopServices::moveToTrash(const QUrl &file)
{
    return Trash::move(file);
}

void FreeDesktopServices::copyFiles(const QList<QUrl> &files)
{
    // The clipboard takes the data over.
    QGuiApplication::clipboard()->setMimeData(makeFileMimeData(files).release());
}

void FreeDesktopServices::share(const QList<QUrl> &files, const QString &parentWindow)
{
    m_mail.compose(files, parentWindow, [files] { startMailProgram(files); });
}
