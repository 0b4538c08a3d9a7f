// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringConverter>

/// UTF-8 with every character kept: Qt's shorter ways take U+FEFF at the head for a mark of the
/// byte order and drop it, but lines and chunks of a stream have no head of their own. Bytes that
/// aren't UTF-8 become U+FFFD.
inline QString decodedUtf8(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::ConvertInitialBom |
                                                       QStringConverter::Flag::Stateless);
    return decoder(bytes);
}
