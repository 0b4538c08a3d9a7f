// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/DescribedError.h"
#include "Engine/Text.h"

#include <QtGlobal>

#include <utility>

/// A failure of running ffmpeg.
class EngineError : public DescribedError
{
public:
    enum class Case { processFailed, cancelled, missingFFmpeg };

    /// A child that ended badly, or couldn't be launched (exit code -1). `stderrTail` is all that
    /// it wrote to standard error.
    static EngineError processFailed(qint32 exitCode, QString stderrTail)
    {
        return {Case::processFailed, exitCode, std::move(stderrTail)};
    }
    static EngineError cancelled() { return {Case::cancelled, 0, {}}; }
    static EngineError missingFFmpeg() { return {Case::missingFFmpeg, 0, {}}; }

    Case kind() const { return m_case; }
    /// Of processFailed only.
    qint32 exitCode() const { return m_exitCode; }
    /// Of processFailed only.
    const QString &stderrTail() const { return m_stderrTail; }

    QString errorDescription() const override
    {
        switch (m_case) {
        case Case::processFailed:
            return Text::lastCharacters(m_stderrTail, 400);
        case Case::cancelled:
            return QStringLiteral("cancelled");
        case Case::missingFFmpeg:
            return QStringLiteral("ffmpeg not found");
        }
        Q_UNREACHABLE();
    }

    const char *what() const noexcept override { return "EngineError"; }

private:
    EngineError(Case kind, qint32 exitCode, QString stderrTail)
        : m_case(kind)
        , m_exitCode(exitCode)
        , m_stderrTail(std::move(stderrTail))
    {
    }

    Case m_case;
    qint32 m_exitCode;
    QString m_stderrTail;
};
