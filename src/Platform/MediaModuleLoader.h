// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

class MediaBackend;

/// Brings in the media module at its first use. Main thread only.
class MediaModuleLoader
{
public:
    /// `folder` is where the module stands; it is looked for only by backend().
    explicit MediaModuleLoader(const QString &folder = installedFolder());

    /// Null when there is none to be had, which errorDescription() tells of. It is tried once; the
    /// module then stays for as long as the program.
    MediaBackend *backend();
    /// In English, for diagnostics; empty unless backend() gave null.
    const QString &errorDescription() const { return m_error; }

    /// "../lib/morvix" from the program's own folder, in an installation as in a build.
    static QString installedFolder();

private:
    void load();

    QString m_folder;
    bool m_isTried = false;
    MediaBackend *m_backend = nullptr;
    QString m_error;
};
