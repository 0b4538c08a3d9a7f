// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/UserPreset.h"

#include <QList>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>

/// The user's presets and their file, `presets.json`. A file that is missing, broken or too large
/// counts as an empty list, and the next save replaces it; a save that fails is dropped, and the
/// list in memory stays. Main thread only.
class PresetStore
{
public:
    /// The store of the application, in the user's folder of data; made at the first call.
    static PresetStore &shared();

    /// Makes the folder and loads what is there. No folder means that of `shared()`.
    explicit PresetStore(const std::optional<QUrl> &directory = std::nullopt);

    /// As loaded, or newest first from the first `upsert` on.
    const QList<UserPreset> &presets() const { return m_presets; }
    const QUrl &fileURL() const { return m_fileURL; }

    /// Gives the preset of that name new parameters and a new folder, or adds one. Names that are
    /// canonically equivalent are the same; case counts. Identity and age of a preset stay.
    void upsert(const QString &name, PresetSpec spec, const std::optional<QUrl> &outputDirectory);

    /// The first one with that identity.
    std::optional<UserPreset> preset(const QUuid &id) const;

    /// Deletes all presets with that identity.
    void remove(QUuid id);

private:
    UserPreset newPreset(const QString &name) const;
    void save() const;

    const QUrl m_fileURL;
    QList<UserPreset> m_presets;
};
