// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/DescribedError.h"
#include "Engine/ProcessRunner.h"
#include "Models/VideoFile.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

/// Asks ffprobe what a file is. No state; probe() and keyframeTimes() block for as long as ffprobe
/// runs, so they are called off the main thread.
class ProbeService
{
public:
    /// Why a file couldn't be read; the message is for diagnostics.
    class ProbeError : public DescribedError
    {
    public:
        explicit ProbeError(QString message) : m_message(std::move(message)) {}

        const QString &message() const { return m_message; }
        QString errorDescription() const override { return m_message; }
        const char *what() const noexcept override { return "ProbeError"; }

    private:
        QString m_message;
    };

    /// Throws ProbeError. `onSpawn` gets the child, to end it early.
    static VideoFile probe(const QUrl &url, const QUrl &ffprobeURL,
                           const ProcessRunner::OnSpawn &onSpawn = {});

    /// Reads ffprobe's JSON document. The only maker of VideoFiles; it asks the disk for nothing
    /// but the file's size, and for that only when the document doesn't tell it. A file without a
    /// video stream is no error. Throws ProbeError.
    static VideoFile parse(const QString &json, const QUrl &url);

    /// The times of the first video stream's keyframes in seconds, in ffprobe's order. Throws
    /// ProbeError. `onSpawn` gets the child, to end it early.
    static QList<double> keyframeTimes(const QUrl &url, const QUrl &ffprobeURL,
                                       const ProcessRunner::OnSpawn &onSpawn = {});

    /// Frames per second out of ffprobe's "30000/1001" or "25"; absent for "0/0" and rubbish.
    static std::optional<double> parseFrameRate(const std::optional<QString> &text);
};
