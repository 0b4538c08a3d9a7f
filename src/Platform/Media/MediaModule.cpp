// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/LibavFrameGenerator.h"
#include "Platform/Media/MpvPlayer.h"
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
    std::unique_ptr<MediaPlayer> makePlayer() override { return std::make_unique<MpvPlayer>(); }
    std::unique_ptr<FrameGenerator> makeFrameGenerator(const QUrl &url,
                                                       const QSize &maximumSize) override
    {
        return std::make_unique<LibavFrameGenerator>(url, maximumSize);
    }
};

#include "MediaModule.moc"
