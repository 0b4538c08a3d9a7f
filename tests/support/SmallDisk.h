// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

/// The words that run a command where the folder, made for it, is a disk of so many kilobytes of
/// its own; empty where nobody may mount.
QStringList onSmallDisk(const QString &folder, int kilobytes);
