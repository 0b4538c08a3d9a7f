// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Look/Colors.h"

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace Look {

/// A symbol of the table beside this file in one colour, which follows the scheme: it is drawn when
/// it is painted, crisp at any scale, and in the colour of disabled text while disabled. An empty
/// icon for a name that the table lacks.
QIcon symbol(const QString &name, ColorRole color = ColorRole::text);

/// The same for an entry of a menu: in the colour of what stands on the highlight while it is
/// there.
QIcon menuSymbol(const QString &name);

/// The same as a picture of that many device-independent pixels a side.
QPixmap symbolPixmap(const QString &name, const QColor &color, int side, qreal pixelRatio);

/// The icon of a menu's entry, in the colour of what stands on the highlight while it is there.
QIcon menuSymbol(const QString &name);

/// Whether the table has that name.
bool hasSymbol(const QString &name);

} // namespace Look
