// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/AvHandles.h"

#include <QSize>

/// Pictures of a high dynamic range, brought into what a plain screen shows: undone as they are,
/// they look pale, or white where they are bright.
namespace ToneMapping {

/// Whether the picture is tagged as PQ or HLG.
bool isNeededFor(const AVFrame &frame);

/// The picture in 8 bits of red, green and blue, at that size. Null where this build of libav lacks
/// a filter for it, or can't read the colours.
AvFrame mapped(const AVFrame &frame, QSize size);

} // namespace ToneMapping
