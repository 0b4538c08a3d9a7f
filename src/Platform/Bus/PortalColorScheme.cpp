// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/PortalColorScheme.h"

#include "Platform/Bus/SessionBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr auto portalPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto settingsInterface = "org.freedesktop.portal.Settings"_L1;
constexpr auto appearance = "org.freedesktop.appearance"_L1;
constexpr auto schemeKey = "color-scheme"_L1;
constexpr auto accentKey = "accent-color"_L1;

// Portals wrap an answer in a variant once or twice, by their age.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

ColorScheme::Preference preferenceOf(const QVariant &value)
{
    const uint number = value.typeId() == QMetaType::UInt ? value.toUInt() : 0;
    switch (number) {
    case 1:
        return ColorScheme::Preference::dark;
    case 2:
        return ColorScheme::Preference::light;
    default:
        return ColorScheme::Preference::none;
    }
}

bool isPart(double part)
{
    return part >= 0 && part <= 1;
}

// Parts out of their range are how the portal says that no colour was chosen.
std::optional<ColorScheme::AccentColor> accentOf(const QVariant &value)
{
    if (!value.canConvert<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != "(ddd)"_L1) {
        return std::nullopt;
    }
    ColorScheme::AccentColor color;
    argument.beginStructure();
    argument >> color.red >> color.green >> color.blue;
    argument.endStructure();
    const bool isColor = isPart(color.red) && isPart(color.green) && isPart(color.blue);
    return isColor ? std::optional(color) : std::nullopt;
}

} // namespace

// QtDBus looks the types of a slot up by their names, and knows this one only if somebody has used
// it before. Listening first: a change between an answer and the listening would be lost.
PortalColorScheme::PortalColorScheme(std::shared_ptr<SessionBus> bus,
                                     std::chrono::milliseconds limit)
    : m_bus(std::move(bus))
    , m_limit(limit)
{
    qRegisterMetaType<QDBusVariant>();
    m_bus->listen({portalPath, settingsInterface, u"SettingChanged"_s}, this,
                  SLOT(takeChange(QString, QString, QDBusVariant)));
    read(schemeKey);
    read(accentKey);
}

PortalColorScheme::~PortalColorScheme() = default;

void PortalColorScheme::read(const QString &key)
{
    QDBusMessage message = QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s,
                                                          portalPath, settingsInterface, u"Read"_s);
    message << QString(appearance) << key;
    m_bus->call(message, m_limit, this, [this, key](const QDBusMessage &answer) {
        if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
            take(key, answer.arguments().first());
        }
    });
}

void PortalColorScheme::takeChange(const QString &group, const QString &key,
                                   const QDBusVariant &value)
{
    if (group == appearance) {
        take(key, QVariant::fromValue(value));
    }
}

void PortalColorScheme::take(const QString &key, const QVariant &value)
{
    const auto before = std::pair(m_preference, m_accentColor);
    if (key == schemeKey) {
        m_preference = preferenceOf(unwrapped(value));
    } else if (key == accentKey) {
        m_accentColor = accentOf(unwrapped(value));
    }
    if (before != std::pair(m_preference, m_accentColor)) {
        Q_EMIT changed();
    }
}
