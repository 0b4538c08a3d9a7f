// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QImage>
#include <QSize>

#include <cstdint>

/// How a stored picture is turned to be shown: by a quarter clockwise or not, and then mirrored.
struct Orientation {
    bool isTurned = false;
    bool isMirroredHorizontally = false;
    bool isMirroredVertically = false;

    bool operator==(const Orientation &) const = default;

    /// Of a display matrix, nine numbers by rows; null turns nothing. A turn that is no quarter
    /// counts as the nearest one.
    static Orientation ofMatrix(const int32_t *matrix);

    QSize applied(QSize size) const { return isTurned ? size.transposed() : size; }
    QImage applied(const QImage &image) const;
};

namespace PictureGeometry {

/// The size of a picture in square pixels: its lines stay. `sampleAspect` is the width of a stored
/// pixel over its height; what no camera makes counts as 1.
QSize displaySize(QSize stored, double sampleAspect);

/// The size within a maximum, in the same shape; never larger. A side of the maximum that isn't
/// above 0 sets no bound.
QSize fitted(QSize size, QSize maximum);

} // namespace PictureGeometry
