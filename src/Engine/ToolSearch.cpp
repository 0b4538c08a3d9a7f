// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ToolSearch.h"

#include <utility>

ToolSearch::ToolSearch(const FFmpegLocator &locator, ProcessRunner::OnSpawn onSpawn)
    : m_binaries(locator.findBinaries())
    , m_onSpawn(std::move(onSpawn))
{
}

const std::optional<FFmpegToolset> &ToolSearch::result()
{
    std::call_once(m_asked, [this] { m_toolset = FFmpegLocator::discover(m_binaries, m_onSpawn); });
    return m_toolset;
}
