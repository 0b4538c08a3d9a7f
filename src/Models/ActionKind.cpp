// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/ActionKind.h"

using namespace Qt::StringLiterals;

QString symbolName(ActionKind action)
{
    switch (action) {
    case ActionKind::targetSize:
        return u"scope"_s;
    case ActionKind::convert:
        return u"arrow.triangle.2.circlepath"_s;
    case ActionKind::compress:
        return u"arrow.down.circle"_s;
    case ActionKind::extract:
        return u"waveform"_s;
    case ActionKind::trim:
        return u"scissors"_s;
    case ActionKind::gif:
        return u"film"_s;
    case ActionKind::play:
        return u"play.rectangle.fill"_s;
    case ActionKind::enhance:
        return u"wand.and.stars"_s;
    case ActionKind::merge:
        return u"rectangle.compress.vertical"_s;
    case ActionKind::split:
        return u"rectangle.split.2x1"_s;
    case ActionKind::adjust:
        return u"slider.horizontal.below.rectangle"_s;
    }
    Q_UNREACHABLE();
}

QString titleKey(ActionKind action)
{
    return u"action."_s + rawValue(action) + u".title"_s;
}

QString subtitleKey(ActionKind action)
{
    return u"action."_s + rawValue(action) + u".subtitle"_s;
}
