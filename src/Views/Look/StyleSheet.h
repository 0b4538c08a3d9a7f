// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace Look {

class Colors;

/// The rules for Qt's own widgets in these colours. Ours paint themselves.
QString styleSheet(const Colors &colors);

} // namespace Look
