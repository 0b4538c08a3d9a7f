// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

extern "C" {
#include <libavutil/error.h>
}

#include <QString>

#include <array>
#include <cstddef>

/// libav's words for its error code, in English.
inline QString avErrorText(int code)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(code, text.data(), text.size());
    return QString::fromUtf8(text.data());
}
