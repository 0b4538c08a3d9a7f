// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

/// What runs on this machine.
namespace Processes {

/// The running processes whose command line holds each of the words somewhere.
QList<qint64> withWords(const QStringList &words);

/// Asks until the answer is yes; false when that doesn't come within ten seconds.
bool eventually(const std::function<bool()> &holds);

} // namespace Processes
