// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ChildGroup.h"

void ChildGroup::adopt(const std::shared_ptr<ChildProcess> &child)
{
    const std::scoped_lock guard(m_lock);
    if (m_isEnded) {
        child->terminate();
        return;
    }
    std::erase_if(m_children, [](const auto &known) { return known.expired(); });
    m_children.push_back(child);
}

void ChildGroup::terminateAll()
{
    const std::scoped_lock guard(m_lock);
    m_isEnded = true;
    for (const std::weak_ptr<ChildProcess> &known : m_children) {
        if (const std::shared_ptr<ChildProcess> child = known.lock()) {
            child->terminate();
        }
    }
}
