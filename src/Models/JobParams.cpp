// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/JobParams.h"

#include "Models/BlankTrimming.h"

bool AdvancedOptions::isActive() const
{
    return codec != CodecChoice::automatic || crf || fpsCap || audioBitrateKbps || volumeDb ||
           replacementAudioURL || crop || hdrPassthrough || preserveAlpha ||
           !trimmedOfBlanks(extraArgs).isEmpty();
}

bool AdjustParams::changesVideo() const
{
    return rotation != Rotation::none || flipH || flipV || reverse || speed != 1.0;
}
