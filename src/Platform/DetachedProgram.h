// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

/// Programs of the desktop that live on by themselves.
namespace DetachedProgram {

/// Starts a program found on PATH, in a session of its own, without a terminal to read or write; it
/// may outlive this one. False when it can't be started. Main thread only.
bool start(const QString &program, const QStringList &arguments);

} // namespace DetachedProgram
