// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

/// The pieces of the text by which a panel knows that an estimate has become another.
namespace EstimateKey {

/// "25.0", "8.005": as few digits as tell the number apart, a whole one with a zero behind it.
QString number(double value);
/// An absent number is -1.0.
QString number(std::optional<double> value);
QString truth(bool value);
QString id(const QUuid &id);

/// With a hyphen between the pieces.
QString joined(const QStringList &pieces);

} // namespace EstimateKey
