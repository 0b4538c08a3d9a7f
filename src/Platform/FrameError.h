// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <exception>
#include <utility>

/// Why a film gave no frame. The description is fixed English, for diagnostics.
class FrameError : public std::exception
{
public:
    enum class Case { cannotOpen, noVideo, decodeFailed, cancelled };

    /// There is no regular file, it may not be read, or it holds nothing that reads as a film.
    static FrameError cannotOpen(QString reason) { return {Case::cannotOpen, std::move(reason)}; }
    /// The file reads, but has no picture at all.
    static FrameError noVideo() { return {Case::noVideo, {}}; }
    /// There is a picture track, but no frame of it could be shown.
    static FrameError decodeFailed(QString reason)
    {
        return {Case::decodeFailed, std::move(reason)};
    }
    static FrameError cancelled() { return {Case::cancelled, {}}; }

    Case kind() const { return m_case; }
    /// Of cannotOpen and decodeFailed only.
    const QString &reason() const { return m_reason; }

    QString errorDescription() const
    {
        switch (m_case) {
        case Case::cannotOpen:
            return QStringLiteral("cannot open: ") + m_reason;
        case Case::noVideo:
            return QStringLiteral("no video");
        case Case::decodeFailed:
            return QStringLiteral("cannot decode: ") + m_reason;
        case Case::cancelled:
            return QStringLiteral("cancelled");
        }
        Q_UNREACHABLE();
    }

    const char *what() const noexcept override { return "FrameError"; }

private:
    FrameError(Case kind, QString reason) : m_case(kind), m_reason(std::move(reason)) {}

    Case m_case;
    QString m_reason;
};
