// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/DescribedError.h"

#include <QUrl>

#include <utility>

/// A file that couldn't be written or read, in the system's words.
class FileError : public DescribedError
{
public:
    FileError(QUrl url, QString reason) : m_url(std::move(url)), m_reason(std::move(reason)) {}

    const QUrl &url() const { return m_url; }
    QString errorDescription() const override
    {
        return m_url.toLocalFile() + QStringLiteral(": ") + m_reason;
    }
    const char *what() const noexcept override { return "FileError"; }

private:
    QUrl m_url;
    QString m_reason;
};
