// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/FakeDesktop.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString appearance = u"org.freedesktop.appearance"_s;

struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const Color &color)
{
    argument.beginStructure();
    argument << color.red << color.green << color.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Color &color)
{
    argument.beginStructure();
    argument >> color.red >> color.green >> color.blue;
    argument.endStructure();
    return argument;
}

QString pathBehind(const QDBusUnixFileDescriptor &descriptor)
{
    return QFileInfo(u"/proc/self/fd/"_s + QString::number(descriptor.fileDescriptor()))
        .symLinkTarget();
}

} // namespace

Q_DECLARE_METATYPE(Color)

FakeDesktopService::FakeDesktopService(const QDBusConnection &bus, const QString &service,
                                       const QString &path, Manner manner)
    : m_bus(bus)
    , m_service(service)
    , m_manner(manner)
{
    EXPECT_TRUE(m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots));
    EXPECT_TRUE(m_bus.registerService(m_service));
}

FakeDesktopService::~FakeDesktopService()
{
    m_bus.unregisterService(m_service);
}

void FakeDesktopService::answerKept()
{
    for (const Kept &kept : std::exchange(m_kept, {})) {
        answer(kept);
    }
}

void FakeDesktopService::reply(const std::function<QVariantList()> &answer)
{
    setDelayedReply(true);
    m_kept.append({message(), answer});
    if (m_manner != Manner::hangs) {
        answerKept();
    }
}

void FakeDesktopService::answer(const Kept &kept)
{
    const bool isRefused = m_manner == Manner::refuses;
    m_bus.send(isRefused ? kept.call.createErrorReply(QDBusError::AccessDenied, u"not here"_s)
                         : kept.call.createReply(kept.answer()));
}

FakeNotifications::FakeNotifications(const QDBusConnection &bus, Manner manner)
    : FakeDesktopService(bus, u"org.freedesktop.Notifications"_s,
                         u"/org/freedesktop/Notifications"_s, manner)
{
}

QStringList FakeNotifications::bodies() const
{
    QStringList bodies;
    for (const Call &call : m_calls) {
        bodies += call.body;
    }
    return bodies;
}

uint FakeNotifications::Notify(const QString &application, uint replaces, const QString &icon,
                               const QString &summary, const QString &body,
                               const QStringList &actions, const QVariantMap &hints, int timeout)
{
    m_calls.append({application, replaces, icon, summary, body, actions, hints, timeout});
    reply([this, replaces] { return QVariantList{replaces == 0 ? ++m_latestID : replaces}; });
    return 0;
}

FakeFileManager::FakeFileManager(const QDBusConnection &bus, Manner manner)
    : FakeDesktopService(bus, u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                         manner)
{
}

void FakeFileManager::ShowItems(const QStringList &uris, const QString &startupID)
{
    m_calls.append({uris, startupID});
    reply([] { return QVariantList(); });
}

FakeMailPortal::FakeMailPortal(const QDBusConnection &bus, Manner manner)
    : FakeDesktopService(bus, portalService, portalPath, manner)
{
}

QDBusObjectPath FakeMailPortal::ComposeEmail(const QString &parentWindow,
                                             const QVariantMap &options)
{
    Call call{parentWindow, options, {}};
    const auto argument = call.options.take(u"attachment_fds"_s).value<QDBusArgument>();
    EXPECT_EQ(argument.currentSignature(), u"ah"_s);
    const auto descriptors = qdbus_cast<QList<QDBusUnixFileDescriptor>>(argument);
    for (const QDBusUnixFileDescriptor &descriptor : descriptors) {
        call.attachments += pathBehind(descriptor);
    }
    m_calls.append(call);
    reply([] { return QVariantList{QVariant::fromValue(QDBusObjectPath(portalPath + u"/1"_s))}; });
    return {};
}

FakeSettingsPortal::FakeSettingsPortal(const QDBusConnection &bus, Manner manner)
    : FakeDesktopService(bus, portalService, portalPath, manner)
{
}

void FakeSettingsPortal::change(const QString &key, const QVariant &value)
{
    set(key, value);
    tell(appearance, key, value);
}

void FakeSettingsPortal::tell(const QString &group, const QString &key, const QVariant &value)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        portalPath, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
    signal << group << key << QVariant::fromValue(QDBusVariant(value));
    m_bus.send(signal);
}

QVariant FakeSettingsPortal::color(double red, double green, double blue)
{
    qDBusRegisterMetaType<Color>();
    return QVariant::fromValue(Color{red, green, blue});
}

// The answer is a variant within a variant, as by the portal's older and still usual call.
QDBusVariant FakeSettingsPortal::Read(const QString &group, const QString &key)
{
    m_askedFor += group + u' ' + key;
    if (!m_values.contains(key)) {
        sendErrorReply(u"org.freedesktop.portal.Error.NotFound"_s, u"no such setting"_s);
        return {};
    }
    reply([value = m_values.value(key)] {
        const QDBusVariant inner(value);
        return QVariantList{QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))};
    });
    return {};
}

FakeLauncher::FakeLauncher(QDBusConnection bus)
{
    EXPECT_TRUE(bus.connect(QString(), QString(), u"com.canonical.Unity.LauncherEntry"_s,
                            u"Update"_s, this, SLOT(take(QDBusMessage))));
}

void FakeLauncher::take(const QDBusMessage &signal)
{
    EXPECT_EQ(signal.signature(), u"sa{sv}"_s);
    m_updates.append({signal.path(), signal.arguments().value(0).toString(),
                      qdbus_cast<QVariantMap>(signal.arguments().value(1))});
}
