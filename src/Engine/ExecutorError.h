// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/DescribedError.h"

#include <QtGlobal>

/// The size promise couldn't be kept.
class ExecutorError : public DescribedError
{
public:
    static ExecutorError targetNotMet(qint64 measuredBytes, qint64 limitBytes)
    {
        return {measuredBytes, limitBytes};
    }

    qint64 measuredBytes() const { return m_measuredBytes; }
    qint64 limitBytes() const { return m_limitBytes; }

    QString errorDescription() const override { return QStringLiteral("target size not met"); }
    const char *what() const noexcept override { return "ExecutorError"; }

private:
    ExecutorError(qint64 measuredBytes, qint64 limitBytes)
        : m_measuredBytes(measuredBytes)
        , m_limitBytes(limitBytes)
    {
    }

    qint64 m_measuredBytes;
    qint64 m_limitBytes;
};
