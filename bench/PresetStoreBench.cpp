// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/JsonFile.h"
#include "Engine/PresetStore.h"
#include "Models/UserPresetJson.h"

#include <benchmark/benchmark.h>

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

QList<UserPreset> presets(qsizetype count)
{
    const QList<PresetSpec> specs{TargetSizeParams(), CompressParams(), ConvertParams(),
                                  GifParams(), AdjustParams()};
    QList<UserPreset> presets;
    for (qsizetype i = 0; i < count; ++i) {
        UserPreset preset;
        preset.name = u"Preset %1"_s.arg(i);
        preset.createdAt = QDateTime::currentDateTimeUtc();
        preset.spec = specs.at(i % specs.size());
        presets.append(preset);
    }
    return presets;
}

QByteArray fileOf(qsizetype count)
{
    return JsonFile::text(Json::encode(presets(count)).toArray(), JsonFile::Layout::indented);
}

// Aim: under 50 ms for 2,000. The window waits for it at start.
void loadPresets(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QUrl directory = QUrl::fromLocalFile(folder.path());
    JsonFile::replace(folder.filePath(u"presets.json"_s), fileOf(state.range(0)));
    for ([[maybe_unused]] auto round : state) {
        const PresetStore store(directory);
        if (store.presets().size() != state.range(0)) {
            state.SkipWithError("the file wasn't read");
        }
    }
}

// Aim: under 100 ms for 2,000, a disk's own time included. The window waits for it at each save.
void savePreset(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QUrl directory = QUrl::fromLocalFile(folder.path());
    JsonFile::replace(folder.filePath(u"presets.json"_s), fileOf(state.range(0)));
    PresetStore store(directory);
    for ([[maybe_unused]] auto round : state) {
        store.upsert(u"Preset 7"_s, GifParams(), std::nullopt);
    }
}

} // namespace

BENCHMARK(loadPresets)->Arg(20)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(savePreset)->Arg(20)->Arg(2000)->Unit(benchmark::kMillisecond);
