// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QColor>

#include <array>

namespace Look {

/// Whether the interface is drawn dark on light or light on dark.
enum class Scheme { light, dark };

/// What a colour is for. A colour with a meaning (green: done, orange: beware, red: failed or
/// destructive, purple and teal and blue: kinds of media) is never used as decoration.
enum class ColorRole {
    window,
    sidebar,
    card,
    /// A control's face that can be clicked, and under the pointer.
    control,
    controlHover,
    field,
    /// Around cards and between regions.
    hairline,
    /// Around controls and fields: visible enough to tell where they are.
    outline,
    text,
    secondaryText,
    disabledText,
    /// Text and symbols in the accent colour.
    accent,
    /// The face of the prominent button, and what stands on it.
    accentFill,
    accentFillHover,
    onAccent,
    /// Behind what is selected.
    accentTint,
    green,
    orange,
    red,
    purple,
    teal,
    blue,
    /// The empty part of a bar or a slider, and a switch that is off.
    track,
    /// Laid over the window behind a sheet.
    scrim,
};
inline constexpr std::size_t colorRoleCount = static_cast<std::size_t>(ColorRole::scrim) + 1;

/// One whole set of colours.
class Colors
{
public:
    /// `accent` is the desktop's, or invalid for the program's own blue. It is moved towards black
    /// or white until text in it can be read.
    static Colors of(Scheme scheme, const QColor &accent = {});

    const QColor &operator[](ColorRole role) const
    {
        return m_colors[static_cast<std::size_t>(role)];
    }

private:
    std::array<QColor, colorRoleCount> m_colors;
};

/// The contrast of two opaque colours, from 1 to 21, by WCAG 2.1's "contrast ratio".
double contrast(const QColor &one, const QColor &other);

/// `over` at `opacity` (0 to 1) laid on an opaque `ground`: again an opaque colour.
QColor blended(const QColor &over, double opacity, const QColor &ground);

/// Opacity of the capsule behind a chip's text.
inline constexpr double chipOpacity = 0.14;

} // namespace Look
