// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/QuickAction.h"

JobMode jobMode(QuickAction action)
{
    switch (action) {
    case QuickAction::compressSmart:
        return CompressParams();
    case QuickAction::compress25MB:
        return TargetSizeParams();
    case QuickAction::convertMP4:
        return ConvertParams();
    case QuickAction::extractAudio:
        return ExtractParams();
    case QuickAction::makeGIF:
        return GifParams();
    }
    Q_UNREACHABLE();
}
