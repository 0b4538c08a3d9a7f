// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/MediaBackend.h"

#include <QObject>

/// The loadable module: everything that needs the media libraries, so that a program that shows no
/// film doesn't load them.
class MediaModule : public QObject, public MediaBackend
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "app.morvix.Morvix.MediaBackend/1")
    Q_INTERFACES(MediaBackend)

public:
    std::unique_ptr<MediaPlayer> makePlayer() override;
    std::unique_ptr<FrameGenerator> makeFrameGenerator(const QUrl &url,
                                                       const QSize &maximumSize) override;
};
