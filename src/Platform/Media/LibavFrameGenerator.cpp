// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/LibavFrameGenerator.h"

#include "Platform/Media/FrameSearch.h"
#include "Platform/Media/PictureConverter.h"
#include "Platform/Media/PictureGeometry.h"
#include "Platform/Media/VideoDecoder.h"
#include "Platform/Media/VideoSource.h"

using namespace Qt::StringLiterals;

namespace {

QString pathOf(const QUrl &url)
{
    return url.isLocalFile() ? url.toLocalFile() : url.path();
}

Orientation orientationOf(const AVStream &stream)
{
    size_t bytes = 0;
    const uint8_t *data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &bytes);
    const bool isWhole = bytes >= 9 * sizeof(int32_t);
    return Orientation::ofMatrix(isWhole ? reinterpret_cast<const int32_t *>(data) : nullptr);
}

// As it is shown, except that it isn't turned yet: a small picture is turned sooner.
QSize sizeBeforeTurning(const VideoSource &source, const AVFrame &frame, Orientation orientation,
                        QSize maximum)
{
    const QSize shown = PictureGeometry::displaySize({frame.width, frame.height},
                                                     av_q2d(source.sampleAspectRatio(frame)));
    return orientation.applied(PictureGeometry::fitted(orientation.applied(shown), maximum));
}

} // namespace

struct LibavFrameGenerator::Film {
    Film(const QString &path, const std::atomic<bool> &cancelled) : source(path, cancelled) {}

    AvFrame decoded(double seconds, Tolerance tolerance)
    {
        if (const AVPacket *cover = source.attachedPicture()) {
            AvFrame frame = decoder.decodeAlone(*cover);
            return frame ? std::move(frame) : throw FrameError::decodeFailed(u"no frame"_s);
        }
        const int64_t wanted = source.timestampAt(seconds);
        return tolerance == Tolerance::zero ? search.exactFrame(wanted) : search.keyframe(wanted);
    }

    QImage image(const AVFrame &frame, QSize maximum) const
    {
        const Orientation orientation = orientationOf(source.stream());
        const QSize size = sizeBeforeTurning(source, frame, orientation, maximum);
        return orientation.applied(PictureConverter::image(frame, size));
    }

    VideoSource source;
    VideoDecoder decoder{source.stream()};
    FrameSearch search{source, decoder};
};

LibavFrameGenerator::LibavFrameGenerator(const QUrl &url, QSize maximumSize)
    : m_path(pathOf(url))
    , m_maximumSize(maximumSize)
{
}

LibavFrameGenerator::~LibavFrameGenerator() = default;

QImage LibavFrameGenerator::frame(double seconds, Tolerance tolerance)
{
    if (m_cancelled.load()) {
        throw FrameError::cancelled();
    }
    Film &opened = film();
    const AvFrame decoded = opened.decoded(seconds, tolerance);
    return opened.image(*decoded, m_maximumSize);
}

void LibavFrameGenerator::cancel()
{
    m_cancelled.store(true);
}

LibavFrameGenerator::Film &LibavFrameGenerator::film()
{
    if (!m_film) {
        m_film = std::make_unique<Film>(m_path, m_cancelled);
    }
    return *m_film;
}
