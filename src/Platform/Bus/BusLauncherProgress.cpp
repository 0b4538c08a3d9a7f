// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/BusLauncherProgress.h"

#include "Platform/ApplicationID.h"
#include "Platform/Bus/SessionBus.h"

#include <QDBusMessage>
#include <QVariantMap>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString entryURI()
{
    return u"application://"_s + applicationID + u".desktop"_s;
}

// The convention names the object after the entry, by the hash that GLib has for texts.
QString objectPath()
{
    uint hash = 5381;
    for (const char c : entryURI().toLatin1()) {
        hash = hash * 33 + static_cast<uint>(c);
    }
    return u"/com/canonical/unity/launcherentry/"_s + QString::number(hash);
}

std::optional<int> cutPercent(std::optional<double> fraction)
{
    if (!fraction) {
        return std::nullopt;
    }
    return static_cast<int>(std::clamp(*fraction, 0.0, 1.0) * 100);
}

} // namespace

BusLauncherProgress::BusLauncherProgress(std::shared_ptr<SessionBus> bus) : m_bus(std::move(bus)) {}

void BusLauncherProgress::setFraction(std::optional<double> fraction)
{
    const std::optional<int> percent = cutPercent(fraction);
    if (percent == m_percent) {
        return;
    }
    m_percent = percent;
    QDBusMessage update = QDBusMessage::createSignal(
        objectPath(), u"com.canonical.Unity.LauncherEntry"_s, u"Update"_s);
    update << entryURI()
           << QVariantMap{{u"progress"_s, percent.value_or(0) / 100.0},
                          {u"progress-visible"_s, percent.has_value()}};
    m_bus->send(update);
}
