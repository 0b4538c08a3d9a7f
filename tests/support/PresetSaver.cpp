// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PresetStore.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

constexpr int names = 40;

// The number of the latest save stands in one of the presets.
qint64 latestSave(const PresetStore &store)
{
    qint64 latest = 0;
    for (const UserPreset &preset : store.presets()) {
        latest = std::max(latest, std::get<SplitParams>(preset.spec).parts);
    }
    return latest;
}

} // namespace

// PresetSaver FOLDER [COUNT]: saves presets under 40 names in turn, so many times or for ever, each
// with the number of its save in `parts`. For tests of what becomes of the file when that goes
// wrong. It says so when it begins.
int main(int argc, char *argv[])
{
    PresetStore store(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));
    const qint64 first = latestSave(store) + 1;
    const qint64 count = argc > 2 ? std::atoi(argv[2]) : std::numeric_limits<int>::max();
    std::puts("begins");
    std::fflush(stdout);
    for (qint64 save = first; save < first + count; ++save) {
        SplitParams params;
        params.parts = save;
        store.upsert(QString::number(save % names), params, std::nullopt);
    }
    return 0;
}
