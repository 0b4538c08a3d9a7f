// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegToolset.h"
#include "Models/JobPlan.h"

#include <QHash>
#include <QString>
#include <QStringList>

/// The encoder that does the work of one that the build doesn't offer.
struct StandIn {
    QString encoder;
    /// Go right behind the encoder's name.
    QStringList encoderOptions;
    /// Go to the head of the command line, such as a device.
    QStringList globalOptions;
    /// Whether an average rate is held in bounds (-maxrate, -bufsize), so that a film that bursts
    /// late doesn't run away from it.
    bool boundsRate = false;
    /// Whether frames go up to a device before they are encoded.
    bool uploadsFrames = false;

    bool operator==(const StandIn &) const = default;
};

/// Plans name the VideoToolbox encoders whatever the build offers. Between planning and running,
/// the names that this build lacks are exchanged; nothing else of a plan is touched.
namespace EncoderStandIns {

/// From the name in the plan to the encoder that does its work.
using Table = QHash<QString, StandIn>;

/// The software encoders of this build, for each name that it lacks. A name that it offers, and one
/// that nothing stands in for, has no entry.
Table software(const FFmpegToolset &toolset);

/// The plan with the names exchanged, in its steps and in what its factories will make.
JobPlan apply(const JobPlan &plan, const Table &table);

/// One command line with the names exchanged. `seconds` is the length that it encodes.
QStringList applyToArgs(const QStringList &args, double seconds, const Table &table);

} // namespace EncoderStandIns
