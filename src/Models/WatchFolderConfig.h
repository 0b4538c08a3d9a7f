// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QUuid>

#include <optional>

/// One watched folder.
struct WatchFolderConfig {
    QUuid id = QUuid::createUuid();
    /// Absolute.
    QString path;
    /// The preset that new files run; absent means that they are passed over.
    std::optional<QUuid> presetID;
    bool enabled = true;

    bool operator==(const WatchFolderConfig &) const = default;
};
