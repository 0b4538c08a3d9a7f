// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Look/Colors.h"

#include <QColor>

namespace Look {

/// Dresses the whole program: base style, palette, font and stylesheet. May be called again at any
/// time, and every window follows. Main thread only, like all of this namespace.
void apply(Scheme scheme, const QColor &accent = {});

/// The scheme that the desktop's own palette suggests, for a desktop that doesn't tell.
Scheme schemeOfPalette();

/// The colours in force. Whoever paints asks anew each time.
const Colors &colors();
inline const QColor &color(ColorRole role)
{
    return colors()[role];
}

Scheme scheme();

} // namespace Look
