// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/TempFolder.h"

#include <QFile>

#include <unistd.h>

/// Makes this program one of nobody's until the end of the scope, where it is root's, who may read
/// everything. The folder is opened to all, so that what a test closes in it is what stands in the
/// way.
class Unprivileged
{
public:
    explicit Unprivileged(const TempFolder &folder)
    {
        QFile::setPermissions(folder.path(), QFile::Permissions(0x7777));
        if (m_wasRoot) {
            [[maybe_unused]] const int left = ::setresuid(nobody, nobody, 0);
        }
    }
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;
    ~Unprivileged()
    {
        if (m_wasRoot) {
            [[maybe_unused]] const int back = ::setresuid(0, 0, 0);
        }
    }

private:
    static constexpr uid_t nobody = 65534;
    const bool m_wasRoot = ::geteuid() == 0;
};
