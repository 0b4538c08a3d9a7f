// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JsonCodec.h"

#include <QList>
#include <QString>

#include <optional>

/// The part of ffprobe's JSON document (-print_format json -show_format -show_streams) that is
/// read. ffprobe writes some numbers as texts; they stay texts here. Only a stream's index must be
/// there.
struct ProbeJson {
    struct Format {
        std::optional<QString> duration;
        std::optional<QString> size;
        std::optional<QString> bitRate;
        std::optional<QString> formatName;
    };

    struct Tags {
        std::optional<QString> language;
    };

    struct Disposition {
        std::optional<qint64> isDefault;
    };

    struct Stream {
        qint64 index = 0;
        std::optional<QString> codecName;
        std::optional<QString> codecType;
        std::optional<qint64> width;
        std::optional<qint64> height;
        std::optional<QString> bitRate;
        std::optional<QString> averageFrameRate;
        std::optional<qint64> channels;
        std::optional<QString> pixelFormat;
        std::optional<QString> colorTransfer;
        std::optional<Tags> tags;
        std::optional<Disposition> disposition;
    };

    std::optional<Format> format;
    std::optional<QList<Stream>> streams;

    /// Throws Json::DecodeError, for text that isn't JSON too.
    static ProbeJson decode(const QString &text);
};
