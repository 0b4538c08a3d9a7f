// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <memory>
#include <optional>

class QSettings;

/// The per-user store of settings: one INI file. A value that is missing or doesn't read as the
/// type that is asked for counts as absent, and a file that can't be read is an empty one. Main
/// thread only.
class Settings
{
public:
    /// Whether what is set is kept for the next start, or holds for this run alone.
    enum class Writing { kept, dropped };

    /// `Morvix/Morvix.conf` in the user's folder of configurations.
    static QString defaultPath();

    explicit Settings(const QString &path = defaultPath(), Writing writing = Writing::kept);
    Settings(Settings &&) noexcept;
    Settings &operator=(Settings &&) noexcept;
    ~Settings();

    std::optional<QString> text(const QString &key) const;
    std::optional<bool> boolean(const QString &key) const;
    std::optional<qint64> integer(const QString &key) const;

    void setText(const QString &key, const QString &value);
    void setBoolean(const QString &key, bool value);
    void setInteger(const QString &key, qint64 value);
    void remove(const QString &key);

private:
    std::unique_ptr<QSettings> m_store;
    Writing m_writing;
};
