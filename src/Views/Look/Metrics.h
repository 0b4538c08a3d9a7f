// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// The measures of the interface, in device-independent pixels.
namespace Look {

/// Space between things. One scale for the whole window.
namespace Space {
inline constexpr int tiny = 4;
inline constexpr int small = 8;
inline constexpr int medium = 12;
inline constexpr int large = 16;
inline constexpr int huge = 24;
} // namespace Space

/// Radii of rounded corners; a capsule's is half its height.
namespace Radius {
inline constexpr int control = 6;
inline constexpr int card = 10;
} // namespace Radius

/// Heights that all controls of a kind share, so that rows of them line up.
namespace Height {
inline constexpr int control = 30;
inline constexpr int smallControl = 24;
inline constexpr int chip = 20;
inline constexpr int menuBar = 28;
} // namespace Height

/// Sizes of symbols.
namespace SymbolSize {
inline constexpr int small = 12;
inline constexpr int normal = 16;
inline constexpr int large = 20;
} // namespace SymbolSize

/// Width of a hairline and of the ring around what has the focus.
inline constexpr int hairlineWidth = 1;
inline constexpr int focusRingWidth = 2;

} // namespace Look
