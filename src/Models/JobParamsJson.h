// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobParams.h"
#include "Models/JsonCodec.h"

/// The JSON form of the parameter records: the key of every field is its name. Json::encode and
/// Json::decode work on all of them. No key may be added without an optional type: older files
/// would no longer load.

template <> struct Json::Fields<CropSpec> {
    static constexpr std::tuple list{
        Json::Field{"aspect", &CropSpec::aspect},
        Json::Field{"customWidth", &CropSpec::customWidth},
        Json::Field{"customHeight", &CropSpec::customHeight},
    };
};

template <> struct Json::Fields<AdvancedOptions> {
    static constexpr std::tuple list{
        Json::Field{"codec", &AdvancedOptions::codec},
        Json::Field{"crf", &AdvancedOptions::crf},
        Json::Field{"fpsCap", &AdvancedOptions::fpsCap},
        Json::Field{"audioBitrateKbps", &AdvancedOptions::audioBitrateKbps},
        Json::Field{"volumeDb", &AdvancedOptions::volumeDb},
        Json::Field{"replacementAudioURL", &AdvancedOptions::replacementAudioURL},
        Json::Field{"crop", &AdvancedOptions::crop},
        Json::Field{"hdrPassthrough", &AdvancedOptions::hdrPassthrough},
        Json::Field{"preserveAlpha", &AdvancedOptions::preserveAlpha},
        Json::Field{"extraArgs", &AdvancedOptions::extraArgs},
    };
};

template <> struct Json::Fields<TargetSizeParams> {
    static constexpr std::tuple list{
        Json::Field{"targetMB", &TargetSizeParams::targetMB},
        Json::Field{"muted", &TargetSizeParams::muted},
        Json::Field{"skipHeadSeconds", &TargetSizeParams::skipHeadSeconds},
        Json::Field{"skipTailSeconds", &TargetSizeParams::skipTailSeconds},
        Json::Field{"exactTwoPass", &TargetSizeParams::exactTwoPass},
        Json::Field{"advanced", &TargetSizeParams::advanced},
    };
};

template <> struct Json::Fields<ConvertParams> {
    static constexpr std::tuple list{
        Json::Field{"container", &ConvertParams::container},
        Json::Field{"audioFormat", &ConvertParams::audioFormat},
        Json::Field{"forceReencode", &ConvertParams::forceReencode},
        Json::Field{"advanced", &ConvertParams::advanced},
    };
};

template <> struct Json::Fields<CompressParams> {
    static constexpr std::tuple list{
        Json::Field{"mode", &CompressParams::mode},
        Json::Field{"quality", &CompressParams::quality},
        Json::Field{"resolution", &CompressParams::resolution},
        Json::Field{"customHeight", &CompressParams::customHeight},
        Json::Field{"muted", &CompressParams::muted},
        Json::Field{"advanced", &CompressParams::advanced},
    };
};

template <> struct Json::Fields<ExtractParams> {
    static constexpr std::tuple list{
        Json::Field{"format", &ExtractParams::format},
        Json::Field{"bitrateKbps", &ExtractParams::bitrateKbps},
        Json::Field{"audioTrackIndex", &ExtractParams::audioTrackIndex},
    };
};

template <> struct Json::Fields<TrimSegment> {
    static constexpr std::tuple list{
        Json::Field{"id", &TrimSegment::id, Json::Reading::neverRead},
        Json::Field{"start", &TrimSegment::start},
        Json::Field{"end", &TrimSegment::end},
    };
};

template <> struct Json::Fields<TrimParams> {
    static constexpr std::tuple list{
        Json::Field{"segments", &TrimParams::segments},
        Json::Field{"separateFiles", &TrimParams::separateFiles},
        Json::Field{"exactReencode", &TrimParams::exactReencode},
        Json::Field{"advanced", &TrimParams::advanced},
    };
};

template <> struct Json::Fields<GifParams> {
    static constexpr std::tuple list{
        Json::Field{"start", &GifParams::start},
        Json::Field{"end", &GifParams::end},
        Json::Field{"width", &GifParams::width},
        Json::Field{"fps", &GifParams::fps},
        Json::Field{"loopForever", &GifParams::loopForever},
        Json::Field{"bounce", &GifParams::bounce},
        Json::Field{"screenContent", &GifParams::screenContent},
    };
};

template <> struct Json::Fields<EnhanceParams> {
    static constexpr std::tuple list{
        Json::Field{"denoise", &EnhanceParams::denoise},
        Json::Field{"sharpen", &EnhanceParams::sharpen},
        Json::Field{"upscale", &EnhanceParams::upscale},
        Json::Field{"muted", &EnhanceParams::muted},
        Json::Field{"advanced", &EnhanceParams::advanced},
    };
};

template <> struct Json::Fields<MergeParams> {
    static constexpr std::tuple list{
        Json::Field{"container", &MergeParams::container},
        Json::Field{"forceReencode", &MergeParams::forceReencode},
        Json::Field{"advanced", &MergeParams::advanced},
    };
};

template <> struct Json::Fields<SplitParams> {
    static constexpr std::tuple list{
        Json::Field{"mode", &SplitParams::mode},
        Json::Field{"sizePerPartMB", &SplitParams::sizePerPartMB},
        Json::Field{"durationPerPartSeconds", &SplitParams::durationPerPartSeconds},
        Json::Field{"parts", &SplitParams::parts},
        Json::Field{"advanced", &SplitParams::advanced},
    };
};

template <> struct Json::Fields<AdjustParams> {
    static constexpr std::tuple list{
        Json::Field{"rotation", &AdjustParams::rotation},
        Json::Field{"flipH", &AdjustParams::flipH},
        Json::Field{"flipV", &AdjustParams::flipV},
        Json::Field{"speed", &AdjustParams::speed},
        Json::Field{"reverse", &AdjustParams::reverse},
        Json::Field{"muted", &AdjustParams::muted},
        Json::Field{"advanced", &AdjustParams::advanced},
    };
};
