// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/PictureGeometry.h"

#include <QTransform>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

// A damaged header can ask for a picture that is a line, or that fills the memory.
constexpr double widestPixel = 10;

int roundedSide(double side)
{
    return std::max(1, static_cast<int>(std::lround(side)));
}

} // namespace

// A stored point (x, y) is shown at (a x + c y, b x + d y).
Orientation Orientation::ofMatrix(const int32_t *matrix)
{
    if (matrix == nullptr) {
        return {};
    }
    const int64_t a = matrix[0];
    const int64_t b = matrix[1];
    const int64_t c = matrix[3];
    const int64_t d = matrix[4];
    const bool isTurned = std::abs(b) + std::abs(c) > std::abs(a) + std::abs(d);
    // The quarter clockwise is (-y, x).
    return isTurned ? Orientation{true, c > 0, b < 0} : Orientation{false, a < 0, d < 0};
}

QImage Orientation::applied(const QImage &image) const
{
    QImage turned = isTurned ? image.transformed(QTransform().rotate(90)) : image;
    if (!isMirroredHorizontally && !isMirroredVertically) {
        return turned;
    }
    return turned.mirrored(isMirroredHorizontally, isMirroredVertically);
}

QSize PictureGeometry::displaySize(QSize stored, double sampleAspect)
{
    if (!(sampleAspect >= 1 / widestPixel && sampleAspect <= widestPixel)) {
        return stored;
    }
    return {roundedSide(stored.width() * sampleAspect), stored.height()};
}

QSize PictureGeometry::fitted(QSize size, QSize maximum)
{
    double factor = 1;
    if (maximum.width() > 0) {
        factor = std::min(factor, static_cast<double>(maximum.width()) / size.width());
    }
    if (maximum.height() > 0) {
        factor = std::min(factor, static_cast<double>(maximum.height()) / size.height());
    }
    return {roundedSide(size.width() * factor), roundedSide(size.height() * factor)};
}
