// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegLocator.h"

#include <mutex>
#include <optional>

/// One search for the tools, whose long part is put off: the files are found at its making, and
/// ffmpeg is asked for its encoders by whoever first wants the result.
class ToolSearch
{
public:
    /// Finds the files by the environment of this moment. `onSpawn` gets the ffmpeg that is asked:
    /// one that is ended counts as none.
    explicit ToolSearch(const FFmpegLocator &locator, ProcessRunner::OnSpawn onSpawn = {});

    /// What was found, which stays the same. The first call blocks for as long as ffmpeg takes, and
    /// so do those of other threads meanwhile. From any thread.
    const std::optional<FFmpegToolset> &result();

private:
    const std::optional<FFmpegLocator::Binaries> m_binaries;
    const ProcessRunner::OnSpawn m_onSpawn;
    // Orders the writing of m_toolset before all its readers.
    std::once_flag m_asked;
    std::optional<FFmpegToolset> m_toolset;
};
