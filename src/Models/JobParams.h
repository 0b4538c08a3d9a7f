// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/MediaFormat.h"

#include <QList>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>

/// What the user asked for, independent of any file: one record an action, all plain values. The
/// records check and clamp nothing; ranges live in the controls that fill them in and in the
/// builders that read them.

/// A centred crop.
struct CropSpec {
    enum class Aspect { free, ratio16x9, ratio9x16, ratio4x3, ratio1x1 };

    Aspect aspect = Aspect::free;
    /// Pixels, read for `free` only.
    std::optional<qint64> customWidth;
    std::optional<qint64> customHeight;

    bool operator==(const CropSpec &) const = default;
};

/// The options that most actions share.
struct AdvancedOptions {
    CodecChoice codec = CodecChoice::automatic;
    /// Constant-rate factor, honoured by the software codec only.
    std::optional<qint64> crf;
    /// Upper limit of the output's frames per second.
    std::optional<qint64> fpsCap;
    /// Overrides the automatic choice of audio rate.
    std::optional<qint64> audioBitrateKbps;
    std::optional<double> volumeDb;
    /// A file whose first audio track takes the place of the source's.
    std::optional<QUrl> replacementAudioURL;
    std::optional<CropSpec> crop;
    bool hdrPassthrough = false;
    bool preserveAlpha = false;
    /// Extra ffmpeg arguments as typed.
    QString extraArgs;

    /// Whether anything here differs from leaving the section alone. Extra arguments made of
    /// blanks and tabs alone don't count; line breaks do.
    bool isActive() const;

    bool operator==(const AdvancedOptions &) const = default;
};

/// Fit the output under a size.
struct TargetSizeParams {
    /// Decimal megabytes: one is 1,000,000 bytes.
    double targetMB = 25.0;
    bool muted = false;
    std::optional<double> skipHeadSeconds;
    std::optional<double> skipTailSeconds;
    /// Take the careful two-pass path where the build has x264.
    bool exactTwoPass = false;
    AdvancedOptions advanced;

    bool operator==(const TargetSizeParams &) const = default;
};

/// Change the container, copying streams where the target takes them.
struct ConvertParams {
    enum class AudioFormat { keep, aac, mp3, wav, flac };

    OutputContainer container = OutputContainer::mp4;
    AudioFormat audioFormat = AudioFormat::keep;
    bool forceReencode = false;
    AdvancedOptions advanced;

    bool operator==(const ConvertParams &) const = default;
};

/// Make the file smaller by quality or resolution.
struct CompressParams {
    enum class Mode { smart, quality };
    /// From the largest output to the smallest.
    enum class QualityTier { maximum, high, balanced, small, tiny };
    enum class ResTier { original, p2160, p1440, p1080, p720, p480, custom };

    Mode mode = Mode::smart;
    QualityTier quality = QualityTier::balanced;
    ResTier resolution = ResTier::original;
    /// Pixels, read only when `resolution` is `custom`.
    qint64 customHeight = 1080;
    bool muted = false;
    AdvancedOptions advanced;

    bool operator==(const CompressParams &) const = default;
};

/// Take one audio track out as a file.
struct ExtractParams {
    enum class AudioFormat { m4a, mp3, aac, wav };

    AudioFormat format = AudioFormat::m4a;
    qint64 bitrateKbps = 192;
    /// Position in the file's list of audio streams, counted from 0.
    qint64 audioTrackIndex = 0;

    bool operator==(const ExtractParams &) const = default;
};

/// One kept stretch of a file, in seconds.
struct TrimSegment {
    /// Identity while a panel edits the segment. Written to JSON but never read back: a decoded
    /// segment is a new one.
    QUuid id = QUuid::createUuid();
    double start = 0;
    double end = 0;

    bool operator==(const TrimSegment &) const = default;
};

/// Keep some stretches of a file.
struct TrimParams {
    QList<TrimSegment> segments;
    /// One output a segment instead of one joined file.
    bool separateFiles = false;
    /// Cut at the frame by re-encoding instead of at keyframes by copying.
    bool exactReencode = false;
    AdvancedOptions advanced;

    bool operator==(const TrimParams &) const = default;
};

/// Make an animated GIF.
struct GifParams {
    double start = 0;
    /// Absent means the end of the file.
    std::optional<double> end;
    qint64 width = 480;
    qint64 fps = 15;
    bool loopForever = true;
    /// Play forward and then backward.
    bool bounce = false;
    /// A palette tuned for screen recordings.
    bool screenContent = false;

    bool operator==(const GifParams &) const = default;
};

struct VideoFile;

/// A picture's width and height in pixels.
struct PictureSize {
    qint64 width = 0;
    qint64 height = 0;

    bool operator==(const PictureSize &) const = default;
};

/// Denoise, sharpen, upscale.
struct EnhanceParams {
    enum class DenoiseLevel { off, light, medium, strong };
    enum class SharpenLevel { off, light, medium };
    /// The factors 1.0, 1.5 and 2.0.
    enum class UpscaleFactor { x1, x15, x2 };

    DenoiseLevel denoise = DenoiseLevel::light;
    SharpenLevel sharpen = SharpenLevel::light;
    UpscaleFactor upscale = UpscaleFactor::x1;
    bool muted = false;
    AdvancedOptions advanced;

    /// The size after scaling, always even and never below 2; absent when the file's isn't known.
    std::optional<PictureSize> outputSize(const VideoFile &file) const;

    bool operator==(const EnhanceParams &) const = default;
};

/// Join several files in the order given.
struct MergeParams {
    OutputContainer container = OutputContainer::mp4;
    bool forceReencode = false;
    AdvancedOptions advanced;

    bool operator==(const MergeParams &) const = default;
};

/// Cut one file into parts. All three measures are kept; `mode` says which one counts.
struct SplitParams {
    enum class Mode { bySize, byDuration, byParts };

    Mode mode = Mode::bySize;
    double sizePerPartMB = 25.0;
    double durationPerPartSeconds = 60.0;
    qint64 parts = 2;
    AdvancedOptions advanced;

    bool operator==(const SplitParams &) const = default;
};

/// Rotate, flip, change speed, reverse.
struct AdjustParams {
    enum class Rotation { none, cw90, r180, ccw90 };

    Rotation rotation = Rotation::none;
    bool flipH = false;
    bool flipV = false;
    /// Playback rate: 2.0 halves the duration.
    double speed = 1.0;
    bool reverse = false;
    bool muted = false;
    AdvancedOptions advanced;

    /// Whether the picture changes. Muting alone leaves it alone, on purpose.
    bool changesVideo() const;

    bool operator==(const AdjustParams &) const = default;
};

template <> struct RawValues<ConvertParams::AudioFormat> {
    static constexpr std::array table{
        RawValue{ConvertParams::AudioFormat::keep, QLatin1StringView("keep")},
        RawValue{ConvertParams::AudioFormat::aac, QLatin1StringView("aac")},
        RawValue{ConvertParams::AudioFormat::mp3, QLatin1StringView("mp3")},
        RawValue{ConvertParams::AudioFormat::wav, QLatin1StringView("wav")},
        RawValue{ConvertParams::AudioFormat::flac, QLatin1StringView("flac")},
    };
};

template <> struct RawValues<CompressParams::Mode> {
    static constexpr std::array table{
        RawValue{CompressParams::Mode::smart, QLatin1StringView("smart")},
        RawValue{CompressParams::Mode::quality, QLatin1StringView("quality")},
    };
};

template <> struct RawValues<CompressParams::QualityTier> {
    static constexpr std::array table{
        RawValue{CompressParams::QualityTier::maximum, QLatin1StringView("maximum")},
        RawValue{CompressParams::QualityTier::high, QLatin1StringView("high")},
        RawValue{CompressParams::QualityTier::balanced, QLatin1StringView("balanced")},
        RawValue{CompressParams::QualityTier::small, QLatin1StringView("small")},
        RawValue{CompressParams::QualityTier::tiny, QLatin1StringView("tiny")},
    };
};

template <> struct RawValues<CompressParams::ResTier> {
    static constexpr std::array table{
        RawValue{CompressParams::ResTier::original, QLatin1StringView("original")},
        RawValue{CompressParams::ResTier::p2160, QLatin1StringView("p2160")},
        RawValue{CompressParams::ResTier::p1440, QLatin1StringView("p1440")},
        RawValue{CompressParams::ResTier::p1080, QLatin1StringView("p1080")},
        RawValue{CompressParams::ResTier::p720, QLatin1StringView("p720")},
        RawValue{CompressParams::ResTier::p480, QLatin1StringView("p480")},
        RawValue{CompressParams::ResTier::custom, QLatin1StringView("custom")},
    };
};

template <> struct RawValues<ExtractParams::AudioFormat> {
    static constexpr std::array table{
        RawValue{ExtractParams::AudioFormat::m4a, QLatin1StringView("m4a")},
        RawValue{ExtractParams::AudioFormat::mp3, QLatin1StringView("mp3")},
        RawValue{ExtractParams::AudioFormat::aac, QLatin1StringView("aac")},
        RawValue{ExtractParams::AudioFormat::wav, QLatin1StringView("wav")},
    };
};

template <> struct RawValues<EnhanceParams::DenoiseLevel> {
    static constexpr std::array table{
        RawValue{EnhanceParams::DenoiseLevel::off, QLatin1StringView("off")},
        RawValue{EnhanceParams::DenoiseLevel::light, QLatin1StringView("light")},
        RawValue{EnhanceParams::DenoiseLevel::medium, QLatin1StringView("medium")},
        RawValue{EnhanceParams::DenoiseLevel::strong, QLatin1StringView("strong")},
    };
};

template <> struct RawValues<EnhanceParams::SharpenLevel> {
    static constexpr std::array table{
        RawValue{EnhanceParams::SharpenLevel::off, QLatin1StringView("off")},
        RawValue{EnhanceParams::SharpenLevel::light, QLatin1StringView("light")},
        RawValue{EnhanceParams::SharpenLevel::medium, QLatin1StringView("medium")},
    };
};

template <> struct RawValues<EnhanceParams::UpscaleFactor> {
    static constexpr std::array table{
        RawValue{EnhanceParams::UpscaleFactor::x1, QLatin1StringView("x1")},
        RawValue{EnhanceParams::UpscaleFactor::x15, QLatin1StringView("x15")},
        RawValue{EnhanceParams::UpscaleFactor::x2, QLatin1StringView("x2")},
    };
};

template <> struct RawValues<SplitParams::Mode> {
    static constexpr std::array table{
        RawValue{SplitParams::Mode::bySize, QLatin1StringView("bySize")},
        RawValue{SplitParams::Mode::byDuration, QLatin1StringView("byDuration")},
        RawValue{SplitParams::Mode::byParts, QLatin1StringView("byParts")},
    };
};

template <> struct RawValues<AdjustParams::Rotation> {
    static constexpr std::array table{
        RawValue{AdjustParams::Rotation::none, QLatin1StringView("none")},
        RawValue{AdjustParams::Rotation::cw90, QLatin1StringView("cw90")},
        RawValue{AdjustParams::Rotation::r180, QLatin1StringView("r180")},
        RawValue{AdjustParams::Rotation::ccw90, QLatin1StringView("ccw90")},
    };
};

template <> struct RawValues<CropSpec::Aspect> {
    static constexpr std::array table{
        RawValue{CropSpec::Aspect::free, QLatin1StringView("free")},
        RawValue{CropSpec::Aspect::ratio16x9, QLatin1StringView("ratio16x9")},
        RawValue{CropSpec::Aspect::ratio9x16, QLatin1StringView("ratio9x16")},
        RawValue{CropSpec::Aspect::ratio4x3, QLatin1StringView("ratio4x3")},
        RawValue{CropSpec::Aspect::ratio1x1, QLatin1StringView("ratio1x1")},
    };
};
