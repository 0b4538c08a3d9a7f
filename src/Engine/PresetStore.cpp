// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PresetStore.h"

#include "Engine/JsonFile.h"
#include "Engine/Text.h"
#include "Models/UserPresetJson.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// A failure to make the folder shows when something is to be saved there.
QUrl fileIn(const std::optional<QUrl> &directory)
{
    const QString folder = directory ? Text::path(*directory) : JsonFile::listsDirectory();
    QDir().mkpath(folder);
    return QUrl::fromLocalFile(Text::joinedPath(folder, u"presets.json"_s));
}

QString composed(const QString &text)
{
    return text.normalized(QString::NormalizationForm_C);
}

std::optional<QString> folderPath(const std::optional<QUrl> &directory)
{
    return directory ? std::optional(Text::path(directory->adjusted(QUrl::StripTrailingSlash)))
                     : std::nullopt;
}

} // namespace

PresetStore &PresetStore::shared()
{
    static PresetStore store;
    return store;
}

PresetStore::PresetStore(const std::optional<QUrl> &directory)
    : m_fileURL(fileIn(directory))
    , m_presets(JsonFile::readListOrNothing<UserPreset>(Text::path(m_fileURL)))
{
}

void PresetStore::upsert(const QString &name, PresetSpec spec,
                         const std::optional<QUrl> &outputDirectory)
{
    auto preset = std::ranges::find(m_presets, composed(name), [](const UserPreset &candidate) {
        return composed(candidate.name);
    });
    if (preset == m_presets.end()) {
        preset = m_presets.insert(m_presets.end(), newPreset(name));
    }
    preset->spec = std::move(spec);
    preset->outputDirectoryPath = folderPath(outputDirectory);
    std::ranges::stable_sort(m_presets, std::ranges::greater(), &UserPreset::createdAt);
    save();
}

std::optional<UserPreset> PresetStore::preset(const QUuid &id) const
{
    const auto found = std::ranges::find(m_presets, id, &UserPreset::id);
    return found == m_presets.end() ? std::nullopt : std::optional(*found);
}

void PresetStore::remove(QUuid id)
{
    m_presets.removeIf([&](const UserPreset &preset) { return preset.id == id; });
    save();
}

// Dates count whole milliseconds. Two presets of the same one would tie, and the newer would stand
// below the older.
UserPreset PresetStore::newPreset(const QString &name) const
{
    UserPreset preset;
    preset.name = name;
    preset.createdAt = QDateTime::currentDateTimeUtc();
    while (std::ranges::find(m_presets, preset.createdAt, &UserPreset::createdAt) !=
           m_presets.end()) {
        preset.createdAt = preset.createdAt.addMSecs(1);
    }
    return preset;
}

void PresetStore::save() const
{
    JsonFile::replaceByList(Text::path(m_fileURL), m_presets, JsonFile::Layout::indented);
}
