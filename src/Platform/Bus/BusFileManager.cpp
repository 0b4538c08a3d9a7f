// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/BusFileManager.h"

#include "Platform/Bus/SessionBus.h"

#include <QDBusMessage>
#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// File managers take nothing that isn't encoded to the last character.
QStringList encoded(const QList<QUrl> &urls)
{
    QStringList texts;
    for (const QUrl &url : urls) {
        texts += QString::fromLatin1(url.toEncoded(QUrl::FullyEncoded));
    }
    return texts;
}

} // namespace

BusFileManager::BusFileManager(std::shared_ptr<SessionBus> bus, std::chrono::milliseconds limit)
    : m_bus(std::move(bus))
    , m_limit(limit)
{
}

BusFileManager::~BusFileManager() = default;

void BusFileManager::show(const QList<QUrl> &files, const std::function<void()> &refused)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
        u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    const QString noStartupID;
    message << encoded(files) << noStartupID;
    m_bus->call(message, m_limit, this, [refused](const QDBusMessage &answer) {
        if (answer.type() == QDBusMessage::ErrorMessage) {
            refused();
        }
    });
}
