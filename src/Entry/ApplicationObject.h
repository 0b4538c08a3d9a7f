// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/QuickAction.h"

#include <QDBusContext>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

/// What other programs call on the session bus. Its slots carry the names that the bus knows them
/// by. Main thread only.
///
/// Each signal's token is what allows a window to come to the front: one that the desktop has given
/// to the caller, or empty.
class ApplicationObject : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    using QObject::QObject;

Q_SIGNALS:
    void activated(const QString &token);
    void opened(const QList<QUrl> &urls, const QString &token);
    void serviceCalled(QuickAction action, const QList<QUrl> &urls, const QString &token);

public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    /// `name` is a service's; `parameters` holds one list of URIs. A launcher that has no files to
    /// give leaves it empty.
    void ActivateAction(const QString &name, const QVariantList &parameters,
                        const QVariantMap &platformData);
};
