// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <ostream>

// What GoogleTest shows of Qt's values when an expectation fails.

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << '"' << bytes.toStdString() << '"';
}

inline void PrintTo(const QUrl &url, std::ostream *out)
{
    *out << url.toEncoded().toStdString();
}

inline void PrintTo(const QStringList &texts, std::ostream *out)
{
    *out << '[' << texts.join(QStringLiteral("] [")).toStdString() << ']';
}
