// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/Estimator.h"

#include "Engine/BitratePlanner.h"
#include "Engine/CommandBuilder/CommandBuilder.h"
#include "support/Printing.h"
#include "support/Samples.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

static void PrintTo(const EstimateInfo &info, std::ostream *out)
{
    *out << info.originalBytes << " -> " << info.estimatedBytes << " badge "
         << info.badgeKey.value_or(u"none"_s).toStdString() << " warnings";
    for (const EstimateWarning &warning : info.warnings) {
        *out << ' ' << warning.key.toStdString();
    }
}

namespace {

using Mode = CompressParams::Mode;
using Quality = CompressParams::QualityTier;
using Resolution = CompressParams::ResTier;
using Bitrate = std::optional<qint64>;

AudioStream track(const QString &codec, Bitrate bitrateBps = 128'000)
{
    AudioStream stream = Samples::track(codec);
    stream.bitrateBps = bitrateBps;
    return stream;
}

VideoFile film()
{
    return Samples::minuteInHd();
}

VideoFile silentFilm()
{
    VideoFile file = film();
    file.audioStreams.clear();
    return file;
}

VideoFile filmWithSound(const AudioStream &audio)
{
    VideoFile file = film();
    file.audioStreams = {audio};
    return file;
}

VideoFile filmOf(qint64 width, qint64 height)
{
    VideoFile file = film();
    file.width = width;
    file.height = height;
    return file;
}

VideoFile filmOfLength(double seconds)
{
    VideoFile file = film();
    file.durationSeconds = seconds;
    return file;
}

// Its own rate isn't known, so that it is what the sound leaves of the whole.
VideoFile filmOfUnknownRate(qint64 bytes, double seconds)
{
    VideoFile file = filmOfLength(seconds);
    file.fileSizeBytes = bytes;
    file.videoBitrateBps = std::nullopt;
    return file;
}

QStringList warningKeys(const EstimateInfo &info)
{
    QStringList keys;
    for (const EstimateWarning &warning : info.warnings) {
        EXPECT_TRUE(warning.args.isEmpty());
        keys += warning.key;
    }
    return keys;
}

EstimateInfo fitted(const VideoFile &file, double targetMB)
{
    TargetSizeParams params;
    params.targetMB = targetMB;
    return Estimator::targetSize(file, params);
}

CompressParams compression(Quality quality, Resolution resolution = Resolution::original,
                           qint64 customHeight = 1080)
{
    CompressParams params;
    params.mode = Mode::quality;
    params.quality = quality;
    params.resolution = resolution;
    params.customHeight = customHeight;
    return params;
}

// The bytes of a minute at a rate.
constexpr qint64 minuteAt(qint64 kbps)
{
    return kbps * 125 * 60;
}

// The picture's kilobits per second that the estimate of a silent minute comes from.
qint64 compressedKbps(VideoFile file, const CompressParams &params)
{
    file.durationSeconds = 60;
    file.audioStreams.clear();
    const qint64 bytes = Estimator::compress(file, params).estimatedBytes;
    EXPECT_EQ(bytes % minuteAt(1), 0);
    return bytes / minuteAt(1);
}

qint64 compressedSoundKbps(const VideoFile &file, const CompressParams &params)
{
    VideoFile silent = file;
    silent.audioStreams.clear();
    CompressParams muted = params;
    muted.muted = true;
    const qint64 sound = Estimator::compress(file, params).estimatedBytes -
                         Estimator::compress(silent, muted).estimatedBytes;
    return sound / minuteAt(1);
}

EstimateInfo converted(const VideoFile &file, OutputContainer container)
{
    ConvertParams params;
    params.container = container;
    return Estimator::convert(file, params);
}

QString badgeOf(const EstimateInfo &info)
{
    EXPECT_TRUE(info.warnings.isEmpty());
    return info.badgeKey.value_or(u"none"_s);
}

EstimateInfo extracted(const VideoFile &file, ExtractParams::AudioFormat format,
                       qint64 bitrateKbps = 192, qint64 trackIndex = 0)
{
    return Estimator::extract(file, format, bitrateKbps, trackIndex);
}

AdjustParams spedUp(double speed)
{
    AdjustParams params;
    params.speed = speed;
    return params;
}

GifParams gifOf(double start, std::optional<double> end)
{
    GifParams params;
    params.start = start;
    params.end = end;
    return params;
}

} // namespace

TEST(EstimatorTargetSize, a_file_of_exactly_the_target_already_fits)
{
    VideoFile file = film();
    file.fileSizeBytes = 25'000'000;

    const EstimateInfo info = fitted(file, 25);

    EXPECT_EQ(info, (EstimateInfo{25'000'000, 25'000'000, u"target.alreadyfits"_s, {}}));
    file.fileSizeBytes += 1;
    EXPECT_FALSE(fitted(file, 25).badgeKey);
}

TEST(EstimatorTargetSize, a_minute_at_one_megabyte_is_above_the_floor_and_warns_of_a_low_rate)
{
    const EstimateInfo info = fitted(film(), 1);

    // (65 + 64) kilobits for 60 seconds.
    EXPECT_EQ(info.estimatedBytes, 967'500);
    EXPECT_EQ(info.originalBytes, 61'000'000);
    EXPECT_EQ(warningKeys(info), QStringList{u"target.warn.lowbitrate"_s});
    EXPECT_FALSE(info.badgeKey);
}

TEST(EstimatorTargetSize, a_clip_without_length_counts_as_a_tenth_of_a_second)
{
    const EstimateInfo info = fitted(filmOfLength(0.05), 1);

    // 77759 + 64 kilobits for 0.1 seconds.
    EXPECT_EQ(info.estimatedBytes, 972'787);
    EXPECT_TRUE(info.warnings.isEmpty());
}

TEST(EstimatorTargetSize, below_the_floor_the_size_is_that_of_the_floor_and_a_warning_comes_first)
{
    VideoFile file = film();
    file.durationSeconds = 300;

    const EstimateInfo close = fitted(file, 4.9);
    const EstimateInfo hopeless = fitted(file, 4);

    EXPECT_EQ(close.estimatedBytes, 4'800'000);
    EXPECT_EQ(warningKeys(close),
              (QStringList{u"target.warn.floor"_s, u"target.warn.lowbitrate"_s}));
    EXPECT_EQ(hopeless.estimatedBytes, 4'800'000);
    EXPECT_EQ(warningKeys(hopeless),
              (QStringList{u"target.warn.hopeless"_s, u"target.warn.lowbitrate"_s}));
}

TEST(EstimatorTargetSize, a_short_clip_below_the_floor_gets_no_warning_of_a_low_rate)
{
    EXPECT_EQ(warningKeys(fitted(filmOfLength(30), 0.1)), QStringList{u"target.warn.hopeless"_s});
}

TEST(EstimatorTargetSize, the_sum_is_the_bitrate_planners)
{
    for (const double targetMB : {0.3, 1.0, 7.7, 25.0, 49.9, 50.0, 60.9}) {
        for (const double seconds : {0.0, 5.5, 61.3, 600.0, 7261.7}) {
            for (const bool muted : {false, true}) {
                const VideoFile file = filmOfLength(seconds);
                const TargetSizeParams params{.targetMB = targetMB,
                                              .muted = muted,
                                              .skipHeadSeconds = 1.5,
                                              .skipTailSeconds = 0.7,
                                              .exactTwoPass = false,
                                              .advanced = {}};
                const BitratePlanner::Plan plan =
                    BitratePlanner::plan({.targetMB = targetMB,
                                          .durationSeconds = file.effectiveDuration(1.5, 0.7),
                                          .hasAudio = true,
                                          .muted = muted,
                                          .width = 1920});

                const EstimateInfo info = Estimator::targetSize(file, params);

                EXPECT_EQ(info.estimatedBytes, plan.estimatedBytes);
                EXPECT_EQ(info.warnings.size(), plan.warnings.size());
            }
        }
    }
}

TEST(EstimatorConvert, a_file_that_fits_the_container_keeps_its_size)
{
    EXPECT_EQ(converted(film(), OutputContainer::mkv),
              (EstimateInfo{61'000'000, 61'000'000, u"convert.badge.remux"_s, {}}));
    EXPECT_EQ(badgeOf(converted(silentFilm(), OutputContainer::mov)), u"convert.badge.remux"_s);
}

TEST(EstimatorConvert, whatever_touches_the_sound_or_the_picture_bars_the_copy_of_both)
{
    struct Row {
        const char *name;
        void (*change)(ConvertParams &);
    };
    const Row table[] = {
        {"format", [](auto &p) { p.audioFormat = ConvertParams::AudioFormat::aac; }},
        {"audio rate", [](auto &p) { p.advanced.audioBitrateKbps = 128; }},
        {"gain", [](auto &p) { p.advanced.volumeDb = 0; }},
        {"replacement", [](auto &p) { p.advanced.replacementAudioURL = QUrl(u"file:///b"_s); }},
        // These encode the picture, but the estimate goes on as if it were copied.
        {"crop", [](auto &p) { p.advanced.crop = CropSpec{}; }},
        {"fps", [](auto &p) { p.advanced.fpsCap = 30; }},
        {"x264", [](auto &p) { p.advanced.codec = CodecChoice::softwareX264; }},
        {"extra", [](auto &p) { p.advanced.extraArgs = u"-tune film"_s; }},
    };
    for (const Row &row : table) {
        ConvertParams params;
        row.change(params);
        EXPECT_EQ(badgeOf(Estimator::convert(film(), params)), u"convert.badge.partial"_s)
            << row.name;
    }
}

TEST(EstimatorConvert, options_that_encode_nothing_leave_the_copy)
{
    ConvertParams params;
    params.advanced.codec = CodecChoice::hevcVideoToolbox;
    params.advanced.crf = 20;
    params.advanced.hdrPassthrough = true;
    EXPECT_EQ(badgeOf(Estimator::convert(film(), params)), u"convert.badge.remux"_s);
}

TEST(EstimatorConvert, new_sound_beside_a_copied_picture_takes_the_place_of_the_old)
{
    struct Row {
        VideoFile file;
        qint64 bytes;
    };
    // 20000 bytes for each whole second come in; the old sound goes out for the exact length.
    VideoFile odd = filmWithSound(track(u"opus"_s, 96'000));
    odd.durationSeconds = 10.9;
    VideoFile brief = filmWithSound(track(u"opus"_s, 96'000));
    brief.durationSeconds = 0.5;
    VideoFile tiny = filmWithSound(track(u"opus"_s, 960'000));
    tiny.fileSizeBytes = 1000;
    const Row table[] = {
        {filmWithSound(track(u"opus"_s, 96'000)), 61'000'000 - 720'000 + 1'200'000},
        {filmWithSound(track(u"opus"_s, std::nullopt)), 61'000'000 - 960'000 + 1'200'000},
        {filmWithSound(track(u"opus"_s, 0)), 61'000'000 - 960'000 + 1'200'000},
        {filmWithSound(track(u"opus"_s, 9)), 61'000'000 - 67 + 1'200'000},
        {odd, 61'000'000 - 130'800 + 200'000},
        {brief, 61'000'000 - 6'000 + 20'000},
        {tiny, 1},
    };
    for (const Row &row : table) {
        const EstimateInfo info = converted(row.file, OutputContainer::mp4);
        EXPECT_EQ(info.estimatedBytes, row.bytes);
        EXPECT_EQ(badgeOf(info), u"convert.badge.partial"_s);
    }
}

TEST(EstimatorConvert, sound_that_is_asked_for_counts_even_without_any_to_replace)
{
    ConvertParams params;
    params.audioFormat = ConvertParams::AudioFormat::mp3;
    EXPECT_EQ(Estimator::convert(silentFilm(), params).estimatedBytes, 61'000'000 + 1'200'000);
}

TEST(EstimatorConvert, an_encode_takes_85_percent_of_the_picture_and_keeps_sound_that_fits)
{
    ConvertParams params;
    params.forceReencode = true;
    const EstimateInfo info = Estimator::convert(film(), params);
    EXPECT_EQ(info,
              (EstimateInfo{61'000'000, minuteAt(6800 + 128), u"convert.badge.reencode"_s, {}}));
}

TEST(EstimatorConvert, the_sound_of_an_encode_is_the_sources_where_it_is_kept_else_160)
{
    const auto soundKbps = [](const VideoFile &file, ConvertParams params) {
        params.forceReencode = true;
        const EstimateInfo info = Estimator::convert(file, params);
        EXPECT_EQ(badgeOf(info), u"convert.badge.reencode"_s);
        return info.estimatedBytes / minuteAt(1) - 6800;
    };
    ConvertParams keep;
    ConvertParams aac;
    aac.audioFormat = ConvertParams::AudioFormat::aac;
    EXPECT_EQ(soundKbps(filmWithSound(track(u"aac"_s, 96'999)), keep), 96);
    EXPECT_EQ(soundKbps(filmWithSound(track(u"aac"_s, 999)), keep), 0);
    EXPECT_EQ(soundKbps(filmWithSound(track(u"aac"_s, 0)), keep), 128);
    EXPECT_EQ(soundKbps(filmWithSound(track(u"aac"_s, std::nullopt)), keep), 128);
    EXPECT_EQ(soundKbps(filmWithSound(track({}, 64'000)), keep), 64);
    EXPECT_EQ(soundKbps(filmWithSound(track(u"opus"_s)), keep), 160);
    EXPECT_EQ(soundKbps(film(), aac), 160);
    EXPECT_EQ(soundKbps(silentFilm(), keep), 0);
    EXPECT_EQ(soundKbps(silentFilm(), aac), 160);
}

TEST(EstimatorConvert, a_picture_that_the_container_does_not_take_is_encoded)
{
    EXPECT_EQ(badgeOf(converted(film(), OutputContainer::webm)), u"convert.badge.reencode"_s);
    VideoFile audioOnly = film();
    audioOnly.videoCodec = std::nullopt;
    EXPECT_EQ(badgeOf(converted(audioOnly, OutputContainer::mkv)), u"convert.badge.reencode"_s);
}

TEST(EstimatorConvert, seconds_are_cut_to_whole_ones_of_which_there_is_at_least_one)
{
    ConvertParams params;
    params.forceReencode = true;
    EXPECT_EQ(Estimator::convert(filmOfLength(10.9), params).estimatedBytes, 6928 * 125 * 10);
    EXPECT_EQ(Estimator::convert(filmOfLength(0), params).estimatedBytes, 6928 * 125);
}

TEST(EstimatorConvert, an_unknown_rate_is_what_the_sound_leaves_of_the_whole)
{
    ConvertParams params;
    params.forceReencode = true;
    // 1128 kilobits in all.
    VideoFile file = filmOfUnknownRate(8'460'000, 60);
    EXPECT_EQ(Estimator::convert(file, params).estimatedBytes, minuteAt(850 + 128));
    file.videoBitrateBps = 0;
    EXPECT_EQ(Estimator::convert(file, params).estimatedBytes, minuteAt(850 + 128));
}

TEST(EstimatorConvert, a_picture_never_falls_below_300_kilobits)
{
    ConvertParams params;
    params.forceReencode = true;
    VideoFile file = silentFilm();
    file.videoBitrateBps = 100'000;
    EXPECT_EQ(Estimator::convert(file, params).estimatedBytes, minuteAt(300));
    // Less than the sound alone would take.
    EXPECT_EQ(Estimator::convert(filmOfUnknownRate(1000, 60), params).estimatedBytes,
              minuteAt(300 + 128));
}

TEST(EstimatorCompress, smart_keeps_58_percent_at_the_height_as_it_is)
{
    EXPECT_EQ(compressedKbps(film(), {}), 4640);
    EXPECT_EQ(compressedKbps(filmOf(2560, 1440), {}), 4640);
    const EstimateInfo info = Estimator::compress(film(), {});
    EXPECT_EQ(info, (EstimateInfo{61'000'000, minuteAt(4640 + 128), std::nullopt, {}}));
}

TEST(EstimatorCompress, smart_brings_tall_pictures_down_to_1440_and_the_rate_with_the_pixels)
{
    // 2560 × 1440 of 3840 × 2160 is 4/9 of 4640.
    EXPECT_EQ(compressedKbps(filmOf(3840, 2160), {}), 2062);
    // 2558 × 1440: the width is cut to an even one.
    EXPECT_EQ(compressedKbps(filmOf(2560, 1441), {}), 4633);
}

TEST(EstimatorCompress, each_quality_keeps_its_share)
{
    EXPECT_EQ(compressedKbps(film(), compression(Quality::maximum)), 6800);
    EXPECT_EQ(compressedKbps(film(), compression(Quality::high)), 5600);
    EXPECT_EQ(compressedKbps(film(), compression(Quality::balanced)), 4400);
    EXPECT_EQ(compressedKbps(film(), compression(Quality::small)), 3360);
    EXPECT_EQ(compressedKbps(film(), compression(Quality::tiny)), 2400);
}

TEST(EstimatorCompress, each_resolution_takes_pixels_off_a_taller_picture)
{
    struct Row {
        Resolution resolution;
        qint64 kbps;
    };
    // 4400 kilobits of 7680 × 4320.
    const Row table[] = {
        {Resolution::original, 4400}, {Resolution::p2160, 1100}, {Resolution::p1440, 488},
        {Resolution::p1080, 300},     {Resolution::p720, 300},   {Resolution::p480, 300},
    };
    for (const Row &row : table) {
        EXPECT_EQ(
            compressedKbps(filmOf(7680, 4320), compression(Quality::balanced, row.resolution)),
            row.kbps);
    }
    // 1280 × 720 and 852 × 480 of 1920 × 1080: an even width.
    EXPECT_EQ(compressedKbps(film(), compression(Quality::balanced, Resolution::p720)), 1955);
    EXPECT_EQ(compressedKbps(film(), compression(Quality::balanced, Resolution::p480)), 867);
}

TEST(EstimatorCompress, a_custom_height_counts_as_it_is)
{
    const auto kbpsAt = [](qint64 height) {
        return compressedKbps(film(), compression(Quality::balanced, Resolution::custom, height));
    };
    EXPECT_EQ(kbpsAt(540), 1100);
    EXPECT_EQ(kbpsAt(1080), 4400);
    EXPECT_EQ(kbpsAt(2000), 4400);
    EXPECT_EQ(kbpsAt(0), 300);
    // Twice negative: the pixels come out positive.
    EXPECT_EQ(kbpsAt(-540), 1100);
}

TEST(EstimatorCompress, a_custom_height_is_for_its_own_resolution_in_quality_mode_only)
{
    CompressParams smart = compression(Quality::tiny, Resolution::custom, 540);
    smart.mode = Mode::smart;
    EXPECT_EQ(compressedKbps(film(), smart), 4640);
    EXPECT_EQ(compressedKbps(film(), compression(Quality::tiny, Resolution::original, 540)), 2400);
}

TEST(EstimatorCompress, the_pixels_are_those_of_the_cropped_width_and_the_whole_height)
{
    CompressParams params = compression(Quality::balanced, Resolution::p720);
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, {}, {}};
    // 720 × 720 of 1080 × 1080.
    EXPECT_EQ(compressedKbps(film(), params), 1955);
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio9x16, {}, {}};
    // 404 × 720 of 607 × 1080.
    EXPECT_EQ(compressedKbps(film(), params), 1952);
}

TEST(EstimatorCompress, a_picture_of_unknown_size_keeps_the_share_alone)
{
    VideoFile file = film();
    file.width = std::nullopt;
    EXPECT_EQ(compressedKbps(file, compression(Quality::balanced, Resolution::p480)), 4400);
    file = film();
    file.height = std::nullopt;
    EXPECT_EQ(compressedKbps(file, compression(Quality::balanced, Resolution::p480)), 4400);
    EXPECT_EQ(compressedKbps(file, {}), 4640);
    EXPECT_EQ(compressedKbps(filmOf(1920, 0), compression(Quality::tiny, Resolution::p480)), 2400);
}

TEST(EstimatorCompress, the_rate_never_falls_below_300_kilobits)
{
    VideoFile file = film();
    file.videoBitrateBps = 100'000;
    EXPECT_EQ(compressedKbps(file, compression(Quality::tiny)), 300);
}

TEST(EstimatorCompress, sound_is_none_when_muted_the_chosen_rate_the_sources_or_160)
{
    CompressParams muted;
    muted.muted = true;
    muted.advanced.audioBitrateKbps = 96;
    CompressParams chosen;
    chosen.advanced.audioBitrateKbps = 96;
    EXPECT_EQ(compressedSoundKbps(film(), muted), 0);
    EXPECT_EQ(compressedSoundKbps(film(), chosen), 96);
    EXPECT_EQ(compressedSoundKbps(silentFilm(), chosen), 96);
    EXPECT_EQ(compressedSoundKbps(silentFilm(), {}), 0);
    EXPECT_EQ(compressedSoundKbps(film(), {}), 128);
    EXPECT_EQ(compressedSoundKbps(filmWithSound(track(u"AC3"_s, 448'000)), {}), 448);
    EXPECT_EQ(compressedSoundKbps(filmWithSound(track(u"opus"_s, 448'000)), {}), 160);
}

TEST(EstimatorExtract, without_a_track_there_is_a_warning_and_no_badge)
{
    EXPECT_EQ(extracted(silentFilm(), ExtractParams::AudioFormat::m4a),
              (EstimateInfo{61'000'000, 61'000'000, std::nullopt, {{u"extract.noaudio"_s, {}}}}));
}

TEST(EstimatorExtract, an_m4a_copies_a_track_that_it_takes)
{
    EXPECT_EQ(extracted(film(), ExtractParams::AudioFormat::m4a),
              (EstimateInfo{61'000'000, 960'000, u"extract.direct"_s, {}}));
    for (const QString &codec : {u""_s, u"AAC"_s, u"mp3"_s, u"ac3"_s, u"eac3"_s}) {
        EXPECT_EQ(badgeOf(extracted(filmWithSound(track(codec)), ExtractParams::AudioFormat::m4a)),
                  u"extract.direct"_s);
    }
    EXPECT_EQ(badgeOf(extracted(filmWithSound(track(u"opus"_s)), ExtractParams::AudioFormat::m4a)),
              u"extract.transcode"_s);
}

TEST(EstimatorExtract, a_copy_has_the_tracks_rate_or_the_films_for_the_exact_length)
{
    const auto bytesOf = [](Bitrate bitrate, double seconds) {
        VideoFile file = filmWithSound(track(u"aac"_s, bitrate));
        file.durationSeconds = seconds;
        return extracted(file, ExtractParams::AudioFormat::m4a).estimatedBytes;
    };
    EXPECT_EQ(bytesOf(96'000, 10.9), 130'800);
    EXPECT_EQ(bytesOf(std::nullopt, 10.5), 168'000);
    // A rate that is given as nothing is nothing.
    EXPECT_EQ(bytesOf(0, 10.9), 1);
    EXPECT_EQ(bytesOf(96'000, 0), 1);
}

TEST(EstimatorExtract, the_rate_of_a_later_track_that_has_none_is_the_first_tracks)
{
    VideoFile file = filmWithSound(track(u"aac"_s, 64'000));
    file.audioStreams.append(track(u"aac"_s, std::nullopt));
    EXPECT_EQ(extracted(file, ExtractParams::AudioFormat::m4a, 192, 1).estimatedBytes, 480'000);
}

TEST(EstimatorExtract, all_other_formats_are_encoded_even_from_their_own_kind)
{
    using Format = ExtractParams::AudioFormat;
    EXPECT_EQ(extracted(film(), Format::aac),
              (EstimateInfo{61'000'000, minuteAt(192), u"extract.transcode"_s, {}}));
    EXPECT_EQ(extracted(filmWithSound(track(u"mp3"_s)), Format::mp3, 320).estimatedBytes,
              minuteAt(320));
    EXPECT_EQ(extracted(filmWithSound(track(u"pcm_s16le"_s)), Format::wav, 128).estimatedBytes,
              minuteAt(128));
    EXPECT_EQ(extracted(filmOfLength(10.9), Format::mp3).estimatedBytes, 240'000);
    EXPECT_EQ(extracted(film(), Format::mp3, 0).estimatedBytes, 1);
}

TEST(EstimatorExtract, a_track_beyond_the_list_is_the_nearest)
{
    VideoFile file = filmWithSound(track(u"opus"_s));
    file.audioStreams.append(track(u"aac"_s, 64'000));
    const auto at = [&](qint64 index) {
        return extracted(file, ExtractParams::AudioFormat::m4a, 192, index);
    };
    EXPECT_EQ(at(5).estimatedBytes, 480'000);
    EXPECT_EQ(at(1), at(5));
    EXPECT_EQ(badgeOf(at(0)), u"extract.transcode"_s);
    EXPECT_EQ(at(-1), at(0));
}

TEST(EstimatorAdjust, a_picture_that_stays_keeps_the_size_even_when_muted)
{
    AdjustParams params;
    params.muted = true;
    EXPECT_EQ(Estimator::adjust(film(), params),
              (EstimateInfo{61'000'000, 61'000'000, std::nullopt, {}}));
}

TEST(EstimatorAdjust, a_changed_picture_takes_95_percent_and_sound_160_kilobits)
{
    AdjustParams params;
    params.flipH = true;
    EXPECT_EQ(Estimator::adjust(film(), params),
              (EstimateInfo{61'000'000, minuteAt(7600 + 160), std::nullopt, {}}));
    // A silent film counts as having sound.
    EXPECT_EQ(Estimator::adjust(silentFilm(), params).estimatedBytes, minuteAt(7600 + 160));
    params.muted = true;
    EXPECT_EQ(Estimator::adjust(film(), params).estimatedBytes, minuteAt(7600));
}

TEST(EstimatorAdjust, speed_shortens_and_lengthens_down_to_half_a_second)
{
    const auto bytesAt = [](double speed) {
        return Estimator::adjust(filmOfLength(10), spedUp(speed)).estimatedBytes;
    };
    EXPECT_EQ(bytesAt(2), 7760 * 125 * 5);
    EXPECT_EQ(bytesAt(0.25), 7760 * 125 * 40);
    EXPECT_EQ(bytesAt(4), 2'425'000);
    EXPECT_EQ(bytesAt(100), 485'000);
    EXPECT_EQ(bytesAt(-1), 485'000);
}

TEST(EstimatorAdjust, a_length_that_no_number_holds_gives_the_largest_size)
{
    EXPECT_EQ(Estimator::adjust(film(), spedUp(0)).estimatedBytes,
              std::numeric_limits<qint64>::max());
}

TEST(EstimatorAdjust, a_picture_never_falls_below_300_kilobits)
{
    VideoFile file = film();
    file.videoBitrateBps = 100'000;
    EXPECT_EQ(Estimator::adjust(file, spedUp(2)).estimatedBytes, 460 * 125 * 30);
}

TEST(EstimatorEnhance, the_size_is_that_of_the_jobs_rate_and_the_sound)
{
    EnhanceParams params;
    EXPECT_EQ(Estimator::enhance(film(), params),
              (EstimateInfo{61'000'000, minuteAt(5598 + 128), std::nullopt, {}}));
    params.upscale = EnhanceParams::UpscaleFactor::x2;
    EXPECT_EQ(Estimator::enhance(film(), params).estimatedBytes, minuteAt(22394 + 128));
    EXPECT_EQ(CommandBuilder::enhanceBitrateKbps(film(), params), 22394);
}

TEST(EstimatorEnhance, sound_is_none_when_muted_the_sources_or_160_whatever_rate_is_chosen)
{
    EnhanceParams params;
    params.advanced.audioBitrateKbps = 96;
    const auto soundKbps = [&](const VideoFile &file) {
        return Estimator::enhance(file, params).estimatedBytes / minuteAt(1) - 5598;
    };
    EXPECT_EQ(soundKbps(film()), 128);
    EXPECT_EQ(soundKbps(silentFilm()), 0);
    EXPECT_EQ(soundKbps(filmWithSound(track(u"opus"_s))), 160);
    params.muted = true;
    EXPECT_EQ(soundKbps(film()), 0);
}

TEST(EstimatorEnhance, parts_of_seconds_count_from_one_second_on)
{
    EXPECT_EQ(Estimator::enhance(filmOfLength(10.9), {}).estimatedBytes, 7'801'675);
    EXPECT_EQ(Estimator::enhance(filmOfLength(0.2), {}).estimatedBytes, 5726 * 125);
}

TEST(EstimatorEnhance, a_picture_of_unknown_size_keeps_the_size_of_the_file)
{
    VideoFile file = film();
    file.width = std::nullopt;
    EXPECT_EQ(Estimator::enhance(file, {}),
              (EstimateInfo{61'000'000, 61'000'000, std::nullopt, {}}));
}

TEST(EstimatorGif, a_pixel_of_a_frame_takes_a_quarter_of_a_byte)
{
    // 480 × 270 at 15 frames for 4 seconds.
    EXPECT_EQ(Estimator::gif(film(), gifOf(1, 5)),
              (EstimateInfo{61'000'000, 1'944'000, std::nullopt, {}}));
}

TEST(EstimatorGif, playing_back_and_forth_doubles_the_size)
{
    GifParams params = gifOf(1, 5);
    params.bounce = true;
    EXPECT_EQ(Estimator::gif(film(), params).estimatedBytes, 3'888'000);
}

TEST(EstimatorGif, the_stretch_lies_within_the_film)
{
    const auto secondsOf = [](double start, std::optional<double> end) {
        const EstimateInfo info = Estimator::gif(film(), gifOf(start, end));
        return static_cast<double>(info.estimatedBytes) / 486'000;
    };
    EXPECT_EQ(secondsOf(50, 1000), 10);
    EXPECT_EQ(secondsOf(50, std::nullopt), 10);
    EXPECT_EQ(secondsOf(-5, 10), 10);
    EXPECT_EQ(secondsOf(20, 10), 0);
    EXPECT_EQ(secondsOf(100, std::nullopt), 0);
    EXPECT_EQ(secondsOf(0.25, 0.75), 0.5);
}

TEST(EstimatorGif, the_height_follows_the_width_and_is_even_from_two_on)
{
    const auto heightOf = [](qint64 width, const VideoFile &file) {
        GifParams params = gifOf(0, 4);
        params.width = width;
        params.fps = 1;
        return Estimator::gif(file, params).estimatedBytes / width;
    };
    EXPECT_EQ(heightOf(640, film()), 360);
    EXPECT_EQ(heightOf(322, film()), 180);
    EXPECT_EQ(heightOf(320, filmOf(1000, 3)), 2);
    EXPECT_EQ(heightOf(500, filmOf(1000, 7)), 2);
    EXPECT_EQ(heightOf(500, filmOf(1000, 8)), 4);
    EXPECT_EQ(heightOf(500, filmOf(1000, 11)), 4);
}

TEST(EstimatorGif, a_picture_of_unknown_size_keeps_the_size_of_the_file)
{
    EXPECT_EQ(Estimator::gif(filmOf(0, 1080), gifOf(0, 5)).estimatedBytes, 61'000'000);
    EXPECT_EQ(Estimator::gif(filmOf(1920, 0), gifOf(0, 5)).estimatedBytes, 61'000'000);
    VideoFile file = film();
    file.height = std::nullopt;
    EXPECT_EQ(Estimator::gif(file, gifOf(0, 5)),
              (EstimateInfo{61'000'000, 61'000'000, std::nullopt, {}}));
}
