// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>

class SessionBus;

/// The file manager that the desktop offers on the bus. Main thread only.
class BusFileManager : public QObject
{
    Q_OBJECT

public:
    /// A file manager may have to be started first; after the limit nobody would think that what
    /// opens then is the answer to a click.
    explicit BusFileManager(std::shared_ptr<SessionBus> bus,
                            std::chrono::milliseconds limit = std::chrono::milliseconds(5'000));
    ~BusFileManager() override;

    /// Shows the files selected in their folders. `refused` is called later when there is no file
    /// manager, or when it won't or doesn't answer in time.
    void show(const QList<QUrl> &files, const std::function<void()> &refused);

private:
    const std::shared_ptr<SessionBus> m_bus;
    const std::chrono::milliseconds m_limit;
};
