// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/DescribedError.h"

/// Why a builder refuses to make a plan.
class BuilderError : public DescribedError
{
public:
    enum class Case { noSegments, noAudioTrack, vp9Unavailable };

    explicit BuilderError(Case kind) : m_case(kind) {}

    Case kind() const { return m_case; }

    QString errorDescription() const override
    {
        switch (m_case) {
        case Case::noSegments:
            return QStringLiteral("no trim segments");
        case Case::noAudioTrack:
            return QStringLiteral("no audio track");
        case Case::vp9Unavailable:
            return QStringLiteral("libvpx-vp9 encoder not available");
        }
        Q_UNREACHABLE();
    }

    const char *what() const noexcept override { return "BuilderError"; }

private:
    Case m_case;
};
