// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/AvLog.h"

extern "C" {
#include <libavutil/log.h>
}

#include <cstdarg>
#include <mutex>

namespace {

void dropLine(void *, int, const char *, va_list) {}

} // namespace

void silenceAvLog()
{
    static std::once_flag once;
    std::call_once(once, [] {
        av_log_set_callback(dropLine);
        // For whoever puts libav's own callback back, as a player does when it ends.
        av_log_set_level(AV_LOG_QUIET);
    });
}
