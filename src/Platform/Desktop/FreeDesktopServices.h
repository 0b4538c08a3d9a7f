// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Bus/BusFileManager.h"
#include "Platform/Bus/PortalMail.h"
#include "Platform/DesktopServices.h"

#include <memory>

/// The services of a desktop that keeps to the common standards: what it offers on the bus comes
/// first, its programs second.
class FreeDesktopServices : public DesktopServices
{
public:
    explicit FreeDesktopServices(std::shared_ptr<SessionBus> bus);

    void reveal(const QList<QUrl> &files) override;
    void open(const QUrl &file) override;
    bool moveToTrash(const QUrl &file) override;
    void copyFiles(const QList<QUrl> &files) override;
    void share(const QList<QUrl> &files, const QString &parentWindow) override;

private:
    BusFileManager m_fileManager;
    PortalMail m_mail;
};
