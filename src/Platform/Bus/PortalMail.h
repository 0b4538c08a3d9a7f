// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>

class SessionBus;

/// E-mails by the desktop portal. Main thread only.
class PortalMail : public QObject
{
    Q_OBJECT

public:
    /// The limit is long, as the portal's program may have to be started first.
    explicit PortalMail(std::shared_ptr<SessionBus> bus,
                        std::chrono::milliseconds limit = std::chrono::milliseconds(25'000));
    ~PortalMail() override;

    /// Begins an e-mail with the files that can be opened attached. `refused` is called later when
    /// there is no portal, when it won't or doesn't answer in time, when no file can be opened or
    /// when they are more than a message on the bus can carry.
    void compose(const QList<QUrl> &files, const QString &parentWindow,
                 const std::function<void()> &refused);

private:
    const std::shared_ptr<SessionBus> m_bus;
    const std::chrono::milliseconds m_limit;
};
