// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/PortalMail.h"

#include "Platform/Bus/SessionBus.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QVariantMap>

#include <fcntl.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Attachments = QList<QDBusUnixFileDescriptor>;

// What a bus passes on in one message unless it is told otherwise; it throws out who sends more.
constexpr qsizetype mostAttachments = 16;

// A path may mean another file to the portal, or none: it is given the files open.
Attachments opened(const QList<QUrl> &files)
{
    Attachments attachments;
    for (const QUrl &file : files) {
        const QByteArray path = QFile::encodeName(file.toLocalFile());
        const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (descriptor >= 0) {
            attachments.emplaceBack().giveFileDescriptor(descriptor);
        }
    }
    return attachments;
}

QDBusMessage request(const Attachments &attachments, const QString &parentWindow)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
        u"org.freedesktop.portal.Email"_s, u"ComposeEmail"_s);
    message << parentWindow << QVariantMap{{u"attachment_fds"_s, QVariant::fromValue(attachments)}};
    return message;
}

} // namespace

PortalMail::PortalMail(std::shared_ptr<SessionBus> bus, std::chrono::milliseconds limit)
    : m_bus(std::move(bus))
    , m_limit(limit)
{
    qDBusRegisterMetaType<Attachments>();
}

PortalMail::~PortalMail() = default;

void PortalMail::compose(const QList<QUrl> &files, const QString &parentWindow,
                         const std::function<void()> &refused)
{
    const Attachments attachments = opened(files);
    if (attachments.isEmpty() || attachments.size() > mostAttachments) {
        QMetaObject::invokeMethod(this, refused, Qt::QueuedConnection);
        return;
    }
    m_bus->call(request(attachments, parentWindow), m_limit, this,
                [refused](const QDBusMessage &answer) {
                    if (answer.type() == QDBusMessage::ErrorMessage) {
                        refused();
                    }
                });
}
