// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/ActionKind.h"
#include "Models/JobParams.h"

#include <QDateTime>
#include <QString>
#include <QUuid>

#include <optional>
#include <variant>

/// The saved parameters of one action. Trim has none, since its segments belong to one file.
using PresetSpec = std::variant<TargetSizeParams, ConvertParams, CompressParams, ExtractParams,
                                GifParams, EnhanceParams, MergeParams, SplitParams, AdjustParams>;

/// A named set of parameters that the user saved.
struct UserPreset {
    /// Fixed at creation; watched folders refer to it.
    QUuid id = QUuid::createUuid();
    QString name;
    QDateTime createdAt;
    PresetSpec spec;
    /// The output folder that was in force when it was saved; carried along, acted on by nobody.
    std::optional<QString> outputDirectoryPath;

    bool operator==(const UserPreset &) const = default;
};

/// The action of the same name.
ActionKind actionOf(const PresetSpec &spec);
