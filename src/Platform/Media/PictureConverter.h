// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/AvHandles.h"

#include <QImage>
#include <QSize>

/// Decoded frames to pictures for the screen. No state; any thread.
namespace PictureConverter {

/// The picture in 8 bits of red, green and blue, stretched to the size; with its alpha where it has
/// one. Throws FrameError.
QImage image(const AVFrame &frame, QSize size);

} // namespace PictureConverter
