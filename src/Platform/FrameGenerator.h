// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/FrameError.h"

#include <QImage>

/// Still pictures out of one film, as a player shows them: upright, of square pixels, in the
/// screen's colours. Made for one file and one maximum size; one thread at a time asks it. The file
/// is opened with the first frame and stays open until the generator goes.
class FrameGenerator
{
public:
    enum class Tolerance {
        /// The frame that stands on the screen at that time.
        zero,
        /// The last keyframe up to that time: decodes a single picture where it can.
        nearestKeyframe
    };

    virtual ~FrameGenerator() = default;

    /// The frame at `seconds` of the film, counted as a player counts; blocks while it decodes.
    /// Times outside the film give its first and its last frame, and so do infinite ones; one that
    /// is no number counts as 0. A damaged film gives the nearest frame that decodes. The picture
    /// is never null; with an alpha channel it has Format_ARGB32 and otherwise Format_RGB32. Throws
    /// FrameError.
    virtual QImage frame(double seconds, Tolerance tolerance) = 0;

    /// Ends the frame in hand and refuses all later ones, which then throw FrameError::cancelled.
    /// Any thread; returns at once.
    virtual void cancel() = 0;
};
