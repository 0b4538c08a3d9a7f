// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/MediaPlayer.h"

#include <QSize>
#include <QUrl>
#include <QtPlugin>

#include <memory>

class FrameGenerator;

/// What the media module offers. It stands for as long as the program, as does the module.
class MediaBackend
{
public:
    virtual ~MediaBackend() = default;

    /// Sets the locale of numbers to C for the whole program, which the player insists on. Main
    /// thread only. Throws std::runtime_error when the player can't be had.
    virtual std::unique_ptr<MediaPlayer> makePlayer() = 0;

    /// Stills of one film, no larger than the maximum; a side that isn't above 0 sets no bound.
    /// Opens nothing yet. Any thread.
    virtual std::unique_ptr<FrameGenerator> makeFrameGenerator(const QUrl &url,
                                                               const QSize &maximumSize) = 0;
};

Q_DECLARE_INTERFACE(MediaBackend, "app.morvix.Morvix.MediaBackend/1")
