// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/JobParams.h"
#include "Models/Truncation.h"
#include "Models/VideoFile.h"

#include <algorithm>
#include <cmath>

namespace {

double factorOf(EnhanceParams::UpscaleFactor upscale)
{
    switch (upscale) {
    case EnhanceParams::UpscaleFactor::x1:
        return 1.0;
    case EnhanceParams::UpscaleFactor::x15:
        return 1.5;
    case EnhanceParams::UpscaleFactor::x2:
        return 2.0;
    }
    Q_UNREACHABLE();
}

// 4:2:0 pictures need even sides, so even an unscaled side is brought down to an even one.
qint64 scaledEven(qint64 side, double factor)
{
    const double rounded = std::round(static_cast<double>(side) * factor);
    return std::max<qint64>(truncated(std::trunc(rounded / 2) * 2), 2);
}

} // namespace

std::optional<PictureSize> EnhanceParams::outputSize(const VideoFile &file) const
{
    if (!file.width || !file.height) {
        return std::nullopt;
    }
    const double factor = factorOf(upscale);
    return PictureSize{scaledEven(*file.width, factor), scaledEven(*file.height, factor)};
}
