// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/FFmpegToolset.h"
#include "Models/JobPlan.h"

#include <QHash>
#include <QList>
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
    /// Whether frames of ten bits make it fail: lines that ask for them go to the next stand-in.
    bool eightBitOnly = false;

    bool operator==(const StandIn &) const = default;
};

/// Plans name the VideoToolbox encoders whatever the build offers, and others that a build may
/// lack. Between planning and running, the names that this build lacks are exchanged; nothing else
/// of a plan is touched.
namespace EncoderStandIns {

/// From the name in the plan to the encoders that do its work: the first that takes the line at
/// hand is used.
using Table = QHash<QString, QList<StandIn>>;

/// The software encoder of this build for each name that it lacks, of pictures and of sound. A name
/// that it offers, and one that nothing stands in for, has no entry.
Table software(const FFmpegToolset &toolset);

/// The plan with the names exchanged, in its steps and in what its factories will make.
JobPlan apply(const JobPlan &plan, const Table &table);

/// One command line with the names exchanged. `seconds` is the length that it encodes.
QStringList applyToArgs(const QStringList &args, double seconds, const Table &table);

} // namespace EncoderStandIns
