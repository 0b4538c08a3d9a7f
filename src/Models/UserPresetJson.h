// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobParamsJson.h"
#include "Models/UserPreset.h"

/// The JSON form of saved presets, on which Json::encode and Json::decode work. No key may be added
/// without an optional type: older files would no longer load.

/// One key, the raw value of the spec's action, over an object of one key, "_0", over the
/// parameters. Further keys are ignored on reading, but two that both name an action are refused.
template <> struct Json::Codec<PresetSpec> {
    static QJsonValue encode(const PresetSpec &spec);
    static PresetSpec decode(const QJsonValue &json);
};

/// ISO 8601 in UTC; what is finer than a second is dropped. Other offsets are read too.
template <> struct Json::Codec<QDateTime> {
    static QJsonValue encode(const QDateTime &moment);
    static QDateTime decode(const QJsonValue &json);
};

template <> struct Json::Fields<UserPreset> {
    static constexpr std::tuple list{
        Json::Field{"id", &UserPreset::id},
        Json::Field{"name", &UserPreset::name},
        Json::Field{"createdAt", &UserPreset::createdAt},
        Json::Field{"spec", &UserPreset::spec},
        Json::Field{"outputDirectoryPath", &UserPreset::outputDirectoryPath},
    };
};
