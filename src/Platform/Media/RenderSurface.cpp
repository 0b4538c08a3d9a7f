// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/RenderSurface.h"

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>

#include <mpv/client.h>
#include <mpv/render.h>

namespace {

// What the library's fast ways of drawing ask of memory, in bytes.
constexpr int alignment = 64;

// Rows are padded: without that the library draws elsewhere and copies.
QImage alignedImage(const QSize &size)
{
    const int bytesPerLine = (size.width() * 4 + alignment - 1) / alignment * alignment;
    const size_t bytes = static_cast<size_t>(bytesPerLine) * static_cast<size_t>(size.height());
    constexpr std::align_val_t boundary{alignment};
    auto *data = static_cast<uchar *>(::operator new(bytes, boundary));
    return {data,
            size.width(),
            size.height(),
            bytesPerLine,
            QImage::Format_RGB32,
            [](void *memory) { ::operator delete(memory, boundary); },
            data};
}

} // namespace

void RenderSurface::FreeContext::operator()(mpv_render_context *context) const
{
    mpv_render_context_free(context);
}

RenderSurface::RenderSurface(mpv_handle *handle)
{
    std::array<char, 3> api{'s', 'w', '\0'};
    std::array parameters{mpv_render_param{MPV_RENDER_PARAM_API_TYPE, api.data()},
                          mpv_render_param{MPV_RENDER_PARAM_INVALID, nullptr}};
    mpv_render_context *context = nullptr;
    if (mpv_render_context_create(&context, handle, parameters.data()) < 0) {
        throw std::runtime_error("The player library has no renderer.");
    }
    m_context.reset(context);
    connect(this, &RenderSurface::woken, this, &RenderSurface::takeFrame, Qt::QueuedConnection);
    mpv_render_context_set_update_callback(context, &RenderSurface::onUpdate, this);
}

// The order matters: a callback into an object that is gone would end the program.
RenderSurface::~RenderSurface()
{
    mpv_render_context_set_update_callback(m_context.get(), nullptr, nullptr);
}

void RenderSurface::setRoom(const QSize &room)
{
    if (room != m_room) {
        m_room = room;
        paint();
    }
}

void RenderSurface::open(const QSize &frameSize, const Orientation &orientation)
{
    m_frameSize = frameSize;
    m_orientation = orientation;
    paint();
}

void RenderSurface::close()
{
    open({}, {});
}

QSize RenderSurface::canvasSize() const
{
    if (m_room.isEmpty() || m_frameSize.isEmpty()) {
        return {};
    }
    const QSize room = m_orientation.applied(m_room);
    return m_frameSize.scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1});
}

// On threads of the library, which may not be called from here.
void RenderSurface::onUpdate(void *self)
{
    auto *surface = static_cast<RenderSurface *>(self);
    if (!surface->m_isAwake.exchange(true)) {
        Q_EMIT surface->woken({});
    }
}

void RenderSurface::takeFrame()
{
    m_isAwake = false;
    if ((mpv_render_context_update(m_context.get()) & MPV_RENDER_UPDATE_FRAME) == 0) {
        return;
    }
    if (canvasSize().isEmpty()) {
        passOver();
    } else {
        paint();
    }
}

void RenderSurface::passOver()
{
    int yes = 1;
    std::array parameters{mpv_render_param{MPV_RENDER_PARAM_SKIP_RENDERING, &yes},
                          mpv_render_param{MPV_RENDER_PARAM_INVALID, nullptr}};
    mpv_render_context_render(m_context.get(), parameters.data());
}

void RenderSurface::paint()
{
    const QSize size = canvasSize();
    if (size.isEmpty()) {
        if (!m_picture.isNull()) {
            m_picture = {};
            Q_EMIT pictureChanged();
        }
        return;
    }
    m_picture = {};
    // Whoever still holds the last picture keeps it as it was.
    if (m_canvas.size() != size || !m_canvas.isDetached()) {
        m_canvas = alignedImage(size);
    }
    std::array dimensions{size.width(), size.height()};
    std::array<char, 5> format{'b', 'g', 'r', '0', '\0'};
    auto stride = static_cast<size_t>(m_canvas.bytesPerLine());
    // The frame is due; waiting for its moment would hold up the window.
    int no = 0;
    std::array parameters{mpv_render_param{MPV_RENDER_PARAM_SW_SIZE, dimensions.data()},
                          mpv_render_param{MPV_RENDER_PARAM_SW_FORMAT, format.data()},
                          mpv_render_param{MPV_RENDER_PARAM_SW_STRIDE, &stride},
                          mpv_render_param{MPV_RENDER_PARAM_SW_POINTER, m_canvas.bits()},
                          mpv_render_param{MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &no},
                          mpv_render_param{MPV_RENDER_PARAM_INVALID, nullptr}};
    mpv_render_context_render(m_context.get(), parameters.data());
    m_picture = m_orientation.applied(m_canvas);
    Q_EMIT pictureChanged();
}
