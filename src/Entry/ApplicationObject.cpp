// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/ApplicationObject.h"

#include "App/ServicesHandler.h"

#include <QDBusError>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

// Older launchers know the second name alone, and give the same thing under it.
QString tokenIn(const QVariantMap &platformData)
{
    const QString token = platformData.value(u"activation-token"_s).toString();
    return token.isEmpty() ? platformData.value(u"desktop-startup-id"_s).toString() : token;
}

// What doesn't read as a URL becomes an empty one, which is no file.
QList<QUrl> urlsOf(const QStringList &uris)
{
    return QUrl::fromStringList(uris);
}

/// Absent for anything but nothing or one list of texts.
std::optional<QStringList> urisIn(const QVariantList &parameters)
{
    if (parameters.isEmpty()) {
        return QStringList();
    }
    const QVariant &first = parameters.first();
    const bool isList = parameters.size() == 1 && first.typeId() == QMetaType::QStringList;
    return isList ? std::optional(first.toStringList()) : std::nullopt;
}

} // namespace

void ApplicationObject::Activate(const QVariantMap &platformData)
{
    Q_EMIT activated(tokenIn(platformData));
}

void ApplicationObject::Open(const QStringList &uris, const QVariantMap &platformData)
{
    Q_EMIT opened(urlsOf(uris), tokenIn(platformData));
}

void ApplicationObject::ActivateAction(const QString &name, const QVariantList &parameters,
                                       const QVariantMap &platformData)
{
    const std::optional<QuickAction> action = ServicesHandler::quickAction(name);
    if (!action) {
        sendErrorReply(QDBusError::InvalidArgs, u"There is no action of that name."_s);
        return;
    }
    const std::optional<QStringList> uris = urisIn(parameters);
    if (!uris) {
        sendErrorReply(QDBusError::InvalidArgs, u"An action takes one array of URIs."_s);
        return;
    }
    Q_EMIT serviceCalled(*action, urlsOf(*uris), tokenIn(platformData));
}
