// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/CommandBuilder/CommandBuilder.h"
#include "support/GoldenLines.h"

/// What the tests of target sizes start from.
namespace TargetSizeCase {

/// A case before it is planned: a film of ten seconds that is far over eight megabytes, with one
/// audio track, on a build that has x264.
struct Given : GoldenLines::FilmCase<TargetSizeParams> {
    FFmpegToolset toolset =
        GoldenLines::offering({QStringLiteral("libx264"), QStringLiteral("aac")});

    Given()
    {
        file.id = QUuid(QStringLiteral("{0E984725-C51C-4BF4-9960-E1C80E27ABA0}"));
        file.fileSizeBytes = 200'000'000;
        file.videoCodec = QStringLiteral("prores");
        addAudio({});
        params.targetMB = 8;
    }

    JobPlan plan() const
    {
        return CommandBuilder::targetSize(file, params, toolset, std::nullopt, std::nullopt);
    }
};

} // namespace TargetSizeCase
