// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/RawValues.h"

#include <QString>

/// The eleven things that a person can pick. All but `play` make jobs.
enum class ActionKind {
    targetSize,
    convert,
    compress,
    extract,
    trim,
    gif,
    play,
    enhance,
    merge,
    split,
    adjust,
};

template <> struct RawValues<ActionKind> {
    static constexpr std::array table{
        RawValue{ActionKind::targetSize, QLatin1StringView("targetSize")},
        RawValue{ActionKind::convert, QLatin1StringView("convert")},
        RawValue{ActionKind::compress, QLatin1StringView("compress")},
        RawValue{ActionKind::extract, QLatin1StringView("extract")},
        RawValue{ActionKind::trim, QLatin1StringView("trim")},
        RawValue{ActionKind::gif, QLatin1StringView("gif")},
        RawValue{ActionKind::play, QLatin1StringView("play")},
        RawValue{ActionKind::enhance, QLatin1StringView("enhance")},
        RawValue{ActionKind::merge, QLatin1StringView("merge")},
        RawValue{ActionKind::split, QLatin1StringView("split")},
        RawValue{ActionKind::adjust, QLatin1StringView("adjust")},
    };
};

/// The name of the action's symbol, as the icon table knows it.
QString symbolName(ActionKind action);

/// The string table's key of the action's title.
QString titleKey(ActionKind action);

/// The string table's key of the line under the title.
QString subtitleKey(ActionKind action);
