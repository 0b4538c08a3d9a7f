// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QFont>

namespace Look {

/// The one scale of type.
enum class TextSize {
    caption,
    body,
    headline,
    title,
    large,
};

/// The interface's face in that size. The families are named with a Chinese one, or an English
/// locale would show Japanese shapes for Chinese text.
QFont font(TextSize size, QFont::Weight weight = QFont::Normal);

/// In device-independent pixels.
int pixelSize(TextSize size);

} // namespace Look
