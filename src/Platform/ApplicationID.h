// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// The program's name on the bus, of its desktop file, of its icon.
inline constexpr QLatin1StringView applicationID("app.morvix.Morvix");
