// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/ProcessRunner.h"

#include <memory>
#include <mutex>
#include <vector>

/// The children of one owner, so that they can be ended together. From any thread.
class ChildGroup
{
public:
    /// Takes a child in; one that comes after terminateAll() is ended at once.
    void adopt(const std::shared_ptr<ChildProcess> &child);

    /// Asks all to end.
    void terminateAll();

private:
    // Guards the two fields below.
    std::mutex m_lock;
    bool m_isEnded = false;
    std::vector<std::weak_ptr<ChildProcess>> m_children;
};
