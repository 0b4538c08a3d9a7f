// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/FrameGenerator.h"

#include <QSize>
#include <QUrl>

#include <atomic>
#include <memory>

/// Frames by libav, within this process: no program is started and nothing is printed.
class LibavFrameGenerator : public FrameGenerator
{
public:
    /// Pictures are made to fit into the maximum size and never enlarged; a side that isn't above 0
    /// sets no bound. Opens nothing yet.
    LibavFrameGenerator(const QUrl &url, QSize maximumSize);
    ~LibavFrameGenerator() override;

    QImage frame(double seconds, Tolerance tolerance) override;
    void cancel() override;

private:
    struct Film;

    Film &film();

    QString m_path;
    QSize m_maximumSize;
    std::atomic<bool> m_cancelled = false;
    /// Absent until the first frame, and while the file doesn't open.
    std::unique_ptr<Film> m_film;
};
