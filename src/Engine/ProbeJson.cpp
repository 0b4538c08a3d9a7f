// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ProbeJson.h"

#include "Engine/JsonText.h"

#include <QJsonDocument>

template <> struct Json::Fields<ProbeJson::Format> {
    static constexpr std::tuple list{
        Json::Field{"duration", &ProbeJson::Format::duration},
        Json::Field{"size", &ProbeJson::Format::size},
        Json::Field{"bit_rate", &ProbeJson::Format::bitRate},
        Json::Field{"format_name", &ProbeJson::Format::formatName},
    };
};

template <> struct Json::Fields<ProbeJson::Tags> {
    static constexpr std::tuple list{Json::Field{"language", &ProbeJson::Tags::language}};
};

template <> struct Json::Fields<ProbeJson::Disposition> {
    static constexpr std::tuple list{Json::Field{"default", &ProbeJson::Disposition::isDefault}};
};

template <> struct Json::Fields<ProbeJson::Stream> {
    static constexpr std::tuple list{
        Json::Field{"index", &ProbeJson::Stream::index},
        Json::Field{"codec_name", &ProbeJson::Stream::codecName},
        Json::Field{"codec_type", &ProbeJson::Stream::codecType},
        Json::Field{"width", &ProbeJson::Stream::width},
        Json::Field{"height", &ProbeJson::Stream::height},
        Json::Field{"bit_rate", &ProbeJson::Stream::bitRate},
        Json::Field{"avg_frame_rate", &ProbeJson::Stream::averageFrameRate},
        Json::Field{"channels", &ProbeJson::Stream::channels},
        Json::Field{"pix_fmt", &ProbeJson::Stream::pixelFormat},
        Json::Field{"color_transfer", &ProbeJson::Stream::colorTransfer},
        Json::Field{"tags", &ProbeJson::Stream::tags},
        Json::Field{"disposition", &ProbeJson::Stream::disposition},
    };
};

template <> struct Json::Fields<ProbeJson> {
    static constexpr std::tuple list{
        Json::Field{"format", &ProbeJson::format},
        Json::Field{"streams", &ProbeJson::streams},
    };
};

ProbeJson ProbeJson::decode(const QString &text)
{
    QJsonParseError error;
    const QJsonDocument document =
        QJsonDocument::fromJson(JsonText::keepingMarks(text.toUtf8()), &error);
    if (error.error != QJsonParseError::NoError) {
        throw Json::DecodeError(error.errorString());
    }
    if (!document.isObject()) {
        throw Json::DecodeError(QStringLiteral("an object is expected"));
    }
    return Json::decode<ProbeJson>(document.object());
}
