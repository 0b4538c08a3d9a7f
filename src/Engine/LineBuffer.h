// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

/// Cuts one stream of one child into lines. The only separator is the line feed: a carriage return
/// stays at the end of its line. One writer at a time; no lock of its own.
class LineBuffer
{
public:
    /// Takes a chunk of bytes and gives the lines that it completes, in order, without the spaces
    /// and tabs at their ends. A line that isn't UTF-8 is dropped; an empty one is kept. A tail
    /// without a line feed is never given.
    QStringList append(QByteArrayView chunk);

    /// All that came in, decoded chunk by chunk. A chunk that isn't UTF-8 by itself is missing,
    /// even when only a character straddles two chunks: the text is for diagnostics, and what
    /// matters arrives by lines.
    const QString &collected() const { return m_collected; }

private:
    QByteArray m_buffer;
    QString m_collected;
};
