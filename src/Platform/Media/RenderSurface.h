// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/PictureGeometry.h"

#include <QImage>
#include <QObject>
#include <QSize>

#include <atomic>
#include <memory>

struct mpv_handle;
struct mpv_render_context;

/// Where the frames of a player core become images, painted by the processor. Main thread only.
///
/// Each frame has to be taken soon, shown or not: the core waits for that up to a fifth of a
/// second.
class RenderSurface : public QObject
{
    Q_OBJECT

public:
    /// Throws std::runtime_error. The core has to outlive the surface.
    explicit RenderSurface(mpv_handle *handle);
    ~RenderSurface() override;

    /// The room for the picture in device pixels; empty for none.
    void setRoom(const QSize &room);
    /// Begins to show frames: of that size as displayed, but yet to be made upright.
    void open(const QSize &frameSize, const Orientation &orientation);
    /// Drops the picture; frames that come are passed over until open().
    void close();

    const QImage &picture() const { return m_picture; }

Q_SIGNALS:
    void pictureChanged();
    /// From any thread.
    void woken(QPrivateSignal);

private:
    static void onUpdate(void *self);
    void takeFrame();
    void paint();
    void passOver();
    /// What is to be drawn before it is turned; empty when there is nothing to be seen.
    QSize canvasSize() const;

    struct FreeContext {
        void operator()(mpv_render_context *context) const;
    };
    std::unique_ptr<mpv_render_context, FreeContext> m_context;
    /// Set while a call of takeFrame() is on its way.
    std::atomic<bool> m_isAwake = false;
    QSize m_room;
    /// Empty while closed.
    QSize m_frameSize;
    Orientation m_orientation;
    QImage m_canvas;
    QImage m_picture;
};
