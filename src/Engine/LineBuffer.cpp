// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/LineBuffer.h"

#include "Models/BlankTrimming.h"
#include "Models/Utf8.h"

QStringList LineBuffer::append(QByteArrayView chunk)
{
    m_buffer.append(chunk);
    if (chunk.isValidUtf8()) {
        m_collected += decodedUtf8(chunk);
    }

    QStringList lines;
    qsizetype start = 0;
    for (qsizetype end = m_buffer.indexOf('\n'); end >= 0; end = m_buffer.indexOf('\n', start)) {
        const QByteArrayView line = QByteArrayView(m_buffer).sliced(start, end - start);
        if (line.isValidUtf8()) {
            lines.append(trimmedOfBlanks(decodedUtf8(line)).toString());
        }
        start = end + 1;
    }
    m_buffer.remove(0, start);
    return lines;
}
