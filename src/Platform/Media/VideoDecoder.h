// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/AvHandles.h"

/// Packets to frames. What doesn't decode is passed over. One thread at a time; it has some of its
/// own.
class VideoDecoder
{
public:
    /// Throws FrameError when nothing here decodes such a stream.
    explicit VideoDecoder(const AVStream &stream);

    /// Call only when receive() has given all that there is.
    void send(const AVPacket &packet);

    /// Says that no packet follows: receive() then gives what is still held back.
    void finish();

    /// The next frame in the order of showing; null when it takes another packet first, or has
    /// given the last.
    AvFrame receive();

    /// Forgets everything, for packets from another place.
    void flush();

    /// The one picture of a packet that needs no other; null when it doesn't decode alone.
    AvFrame decodeAlone(const AVPacket &packet);

private:
    AvCodec m_codec;
};
