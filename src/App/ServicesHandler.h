// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/QuickAction.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>

#include <optional>
#include <span>

class AppModel;

/// Answers the services that the program offers to the rest of the desktop: each runs one quick
/// action on the files that it is given. Main thread only.
class ServicesHandler : public QObject
{
    Q_OBJECT

public:
    /// A service by the name under which others call it.
    struct Message {
        QLatin1StringView name;
        QuickAction action;
    };

    /// All of them. The desktop file names the same ones.
    static std::span<const Message> messages();
    /// Absent for a name that is none of them.
    static std::optional<QuickAction> quickAction(const QString &message);

    explicit ServicesHandler(AppModel &appModel, QObject *parent = nullptr);

    /// Runs the action on the files among the URLs, each taken once. Without one it does nothing,
    /// and doesn't open the queue either.
    void handle(const QList<QUrl> &urls, QuickAction quick);

private:
    /// The model may go first.
    const QPointer<AppModel> m_appModel;
};
