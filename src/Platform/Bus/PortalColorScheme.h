// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/ColorScheme.h"

#include <QString>
#include <QVariant>

#include <chrono>
#include <memory>
#include <optional>

class QDBusVariant;
class SessionBus;

/// The preferences as the desktop portal tells them, at the start and whenever the user changes
/// them. Without a portal there are none.
class PortalColorScheme : public ColorScheme
{
    Q_OBJECT

public:
    /// The limit is long, as nobody waits and the portal may have to be started first.
    explicit PortalColorScheme(std::shared_ptr<SessionBus> bus,
                               std::chrono::milliseconds limit = std::chrono::milliseconds(25'000));
    ~PortalColorScheme() override;

    Preference preference() const override { return m_preference; }
    std::optional<AccentColor> accentColor() const override { return m_accentColor; }

private Q_SLOTS:
    void takeChange(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void read(const QString &key);
    void take(const QString &key, const QVariant &value);

    const std::shared_ptr<SessionBus> m_bus;
    const std::chrono::milliseconds m_limit;
    Preference m_preference = Preference::none;
    std::optional<AccentColor> m_accentColor;
};
