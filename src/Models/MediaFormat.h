// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/RawValues.h"

#include <QSet>
#include <QString>

#include <optional>

/// An output container. The raw value is also the output file's extension.
enum class OutputContainer { mp4, mov, mkv, webm, avi };

template <> struct RawValues<OutputContainer> {
    static constexpr std::array table{
        RawValue{OutputContainer::mp4, QLatin1StringView("mp4")},
        RawValue{OutputContainer::mov, QLatin1StringView("mov")},
        RawValue{OutputContainer::mkv, QLatin1StringView("mkv")},
        RawValue{OutputContainer::webm, QLatin1StringView("webm")},
        RawValue{OutputContainer::avi, QLatin1StringView("avi")},
    };
};

/// The user's choice of video encoder; what each one means to ffmpeg is told by the builders.
enum class CodecChoice {
    automatic,
    h264VideoToolbox,
    hevcVideoToolbox,
    softwareX264,
    proresVideoToolbox,
    svtAV1,
};

template <> struct RawValues<CodecChoice> {
    static constexpr std::array table{
        RawValue{CodecChoice::automatic, QLatin1StringView("auto")},
        RawValue{CodecChoice::h264VideoToolbox, QLatin1StringView("h264VideoToolbox")},
        RawValue{CodecChoice::hevcVideoToolbox, QLatin1StringView("hevcVideoToolbox")},
        RawValue{CodecChoice::softwareX264, QLatin1StringView("softwareX264")},
        RawValue{CodecChoice::proresVideoToolbox, QLatin1StringView("proresVideoToolbox")},
        RawValue{CodecChoice::svtAV1, QLatin1StringView("svtAV1")},
    };
};

/// The key of the choice's label in the string tables.
QString labelKey(CodecChoice choice);

/// Which streams may be copied into which container. The tables are the program's own judgement:
/// their gaps (mp4 without alac, mov without av1, avi without aac) are meant.
namespace CodecCompat {

/// The video codecs, as ffprobe names them, that a container takes by copy.
const QSet<QString> &videoByContainer(OutputContainer container);

/// The audio codecs, as ffprobe names them, that a container takes by copy.
const QSet<QString> &audioByContainer(OutputContainer container);

/// Whether the video stream may be copied. An absent or empty codec may not: what is unknown is
/// never copied.
bool videoOK(const std::optional<QString> &codec, OutputContainer container);

/// Whether the audio stream may be copied. An absent or empty codec may: no audio stands in
/// nobody's way.
bool audioOK(const std::optional<QString> &codec, OutputContainer container);

} // namespace CodecCompat
