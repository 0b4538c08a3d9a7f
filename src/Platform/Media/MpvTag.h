// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QtGlobal>

/// What an answer of the player core belongs to. The number it travels as also holds which film was
/// meant, so that answers for an earlier one can be told.
struct MpvTag {
    enum class Kind : quint8 {
        none,
        load,
        width,
        height,
        length,
        seek,
        landing,
        // Observed; these come for each film.
        time,
        duration,
        end
    };

    Kind kind = Kind::none;
    quint64 film = 0;

    static MpvTag of(quint64 number) { return {static_cast<Kind>(number & 0xff), number >> 8}; }
    quint64 number() const { return film << 8 | static_cast<quint64>(kind); }
    bool operator==(const MpvTag &) const = default;
};
