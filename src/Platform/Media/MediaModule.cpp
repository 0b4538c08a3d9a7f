// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/MediaModule.h"

#include "Platform/Media/LibavFrameGenerator.h"
#include "Platform/Media/MpvPlayer.h"

std::unique_ptr<MediaPlayer> MediaModule::makePlayer()
{
    return std::make_unique<MpvPlayer>();
}

std::unique_ptr<FrameGenerator> MediaModule::makeFrameGenerator(const QUrl &url,
                                                                const QSize &maximumSize)
{
    return std::make_unique<LibavFrameGenerator>(url, maximumSize);
}
