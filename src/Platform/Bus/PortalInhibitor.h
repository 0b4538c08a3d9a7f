// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Bus/BusInhibitor.h"

/// A hold from the desktop portal: an object of the portal's, given back by closing it. It also
/// goes with the connection.
class PortalInhibitor : public BusInhibitor
{
    Q_OBJECT

public:
    PortalInhibitor(const QString &address, std::chrono::milliseconds busLimit,
                    std::chrono::milliseconds answerLimit);
    ~PortalInhibitor() override;

protected:
    QDBusMessage request(const QString &reason) const override;
    bool take(const QDBusPendingCall &answer) override;

private:
    /// Empty while there is none.
    QString m_requestPath;
};
