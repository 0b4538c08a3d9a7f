// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/ExecutorError.h"
#include "Engine/Text.h"
#include "support/FilmContents.h"
#include "support/MediaFixture.h"

#include <QFileInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

class TargetSizeMedia : public MediaFixture
{
protected:
    TargetSizeMedia() { params.targetMB = 0.3; }

    // Three seconds, twice as large as the limit.
    VideoFile film(const QString &name = u"a.mov"_s)
    {
        return MediaFixture::film(name, {.size = u"320x180"_s,
                                         .framesPerSecond = 25,
                                         .seconds = 3,
                                         .noise = 0,
                                         .hasAudio = true,
                                         .videoBitrate = u"2000k"_s});
    }

    // Large for want of an encoder.
    VideoFile silentFilm(const QString &size)
    {
        return MediaFixture::silentFilm(size, 2, u"rawvideo"_s);
    }

    JobPlan planFor(const VideoFile &file) const
    {
        return CommandBuilder::targetSize(file, params, Clips::tools(), std::nullopt, std::nullopt);
    }

    // Fits the film and gives what came out, after the checks that hold for every outcome.
    VideoFile fitted(const VideoFile &file)
    {
        const VideoFile result = resultOf(planFor(file));
        EXPECT_LE(result.fileSizeBytes, static_cast<qint64>(params.targetMB * 1'000'000));
        EXPECT_TRUE(result.url.path().endsWith(u".mp4"_s));
        EXPECT_EQ(result.containerName, u"mov,mp4,m4a,3gp,3g2,mj2"_s);
        return result;
    }

    TargetSizeParams params;
};

} // namespace

TEST_F(TargetSizeMedia, one_pass_fits_a_film_under_the_limit)
{
    const VideoFile source = film();
    ASSERT_GT(source.fileSizeBytes, 400'000);

    const VideoFile result = fitted(source);

    expectStreams(result, u"h264"_s, {u"aac"_s}, 3);
    EXPECT_EQ(result.fps, 25);
    EXPECT_EQ(result.url, folder.url(u"a-0.3MB.mp4"_s));
}

TEST_F(TargetSizeMedia, two_passes_fit_a_film_under_the_limit_and_leave_no_log)
{
    params.exactTwoPass = true;
    const VideoFile source = film();
    const JobPlan plan = planFor(source);
    ASSERT_EQ(plan.steps.size(), 2);

    const ExecutionOutcome outcome = run(plan);

    EXPECT_LE(outcome.outputBytes, 300'000);
    expectStreams(Clips::probe(folder.path(u"a-0.3MB.mp4"_s)), u"h264"_s, {u"aac"_s}, 3);
    for (const QUrl &log : plan.cleanupURLs) {
        EXPECT_FALSE(QFileInfo::exists(log.toLocalFile()));
    }
    // The side file of the encoder isn't cleaned up.
    EXPECT_TRUE(
        scratchNames().contains(u"mx-2pass-"_s + Text::uuid(source.id) + u"-0.log.mbtree"_s));
}

TEST_F(TargetSizeMedia, the_software_choice_fits_a_film)
{
    params.advanced.codec = CodecChoice::softwareX264;
    expectStreams(fitted(film()), u"h264"_s, {u"aac"_s}, 3);
}

TEST_F(TargetSizeMedia, the_hevc_choice_fits_a_film)
{
    params.advanced.codec = CodecChoice::hevcVideoToolbox;
    expectStreams(fitted(film()), u"hevc"_s, {u"aac"_s}, 3);
}

TEST_F(TargetSizeMedia, a_film_that_fits_is_copied_with_its_sound_even_when_muted)
{
    const VideoFile source = film();
    params.targetMB = 5;
    params.muted = true;
    ASSERT_EQ(planFor(source).badgeKey, u"target.alreadyfits"_s);

    const VideoFile result = fitted(source);

    expectStreams(result, u"h264"_s, {u"aac"_s}, 3);
    EXPECT_EQ(result.videoBitrateBps, source.videoBitrateBps);
    EXPECT_EQ(result.audioStreams.first().bitrateBps, source.audioStreams.first().bitrateBps);
}

TEST_F(TargetSizeMedia, a_copy_takes_no_notice_of_skips_and_crop)
{
    const VideoFile source = film();
    params.targetMB = 5;
    params.skipHeadSeconds = 1;
    params.skipTailSeconds = 1;
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};

    expectStreams(fitted(source), u"h264"_s, {u"aac"_s}, 3);
}

TEST_F(TargetSizeMedia, a_copy_beside_a_source_of_that_name_leaves_the_source_alone)
{
    const VideoFile source = film(u"a-5MB.mp4"_s);
    params.targetMB = 5;
    const QByteArray before = contentOf(folder.path(u"a-5MB.mp4"_s));

    const JobPlan plan =
        CommandBuilder::targetSize(source, params, Clips::tools(), std::nullopt, u"{name}"_s);
    run(plan);

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"a-5MB 2.mp4"_s)});
    EXPECT_EQ(contentOf(folder.path(u"a-5MB.mp4"_s)), before);
    EXPECT_TRUE(QFileInfo::exists(folder.path(u"a-5MB 2.mp4"_s)));
}

TEST_F(TargetSizeMedia, a_muted_film_has_no_sound)
{
    params.muted = true;
    const VideoFile result = fitted(film());

    EXPECT_EQ(result.videoCodec, u"h264"_s);
    EXPECT_TRUE(result.audioStreams.isEmpty());
}

TEST_F(TargetSizeMedia, head_and_tail_are_left_out_in_one_pass_and_in_two)
{
    const VideoFile source = film();
    params.skipHeadSeconds = 1;
    params.skipTailSeconds = 0.5;
    for (const bool twoPasses : {false, true}) {
        params.exactTwoPass = twoPasses;
        const VideoFile result = fitted(source);
        expectStreams(result, u"h264"_s, {u"aac"_s}, 1.5);
    }
}

TEST_F(TargetSizeMedia, replacement_audio_takes_the_place_of_the_source_s)
{
    const VideoFile source = film();
    ASSERT_EQ(source.audioStreams.first().channels, 1);
    params.advanced.replacementAudioURL = stereoWav(5);
    for (const bool twoPasses : {false, true}) {
        params.exactTwoPass = twoPasses;
        const VideoFile result = fitted(source);
        expectStreams(result, u"h264"_s, {u"aac"_s}, 3);
        EXPECT_EQ(result.audioStreams.first().channels, 2);
    }
}

TEST_F(TargetSizeMedia, a_replacement_that_ends_early_ends_the_film)
{
    params.advanced.replacementAudioURL = stereoWav(1);
    const VideoFile result = fitted(film());

    // ffmpeg notices the end a little late.
    EXPECT_GE(result.durationSeconds, 0.9);
    EXPECT_LT(result.durationSeconds, 2.5);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(result.audioStreams.first().channels, 2);
}

TEST_F(TargetSizeMedia, a_film_without_sound_stays_without)
{
    const VideoFile source = silentFilm(u"320x180"_s);
    for (const bool twoPasses : {false, true}) {
        params.exactTwoPass = twoPasses;
        const VideoFile result = fitted(source);
        EXPECT_EQ(result.videoCodec, u"h264"_s);
        EXPECT_TRUE(result.audioStreams.isEmpty());
    }
}

TEST_F(TargetSizeMedia, a_replacement_gives_a_silent_film_its_sound)
{
    params.advanced.replacementAudioURL = stereoWav(2);
    expectStreams(fitted(silentFilm(u"320x180"_s)), u"h264"_s, {u"aac"_s}, 2);
}

TEST_F(TargetSizeMedia, a_recording_that_fits_is_copied)
{
    const VideoFile source = madeBy(u"a.m4a"_s, noiseInput(4) + QStringList{u"-b:a"_s, u"128k"_s});
    ASSERT_FALSE(source.videoCodec);
    ASSERT_EQ(planFor(source).badgeKey, u"target.alreadyfits"_s);

    const VideoFile result = fitted(source);

    EXPECT_FALSE(result.videoCodec);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(result.audioStreams.first().bitrateBps, source.audioStreams.first().bitrateBps);
    EXPECT_NEAR(result.durationSeconds, 4, 0.1);
}

TEST_F(TargetSizeMedia, a_recording_that_doesn_t_fit_is_encoded)
{
    const VideoFile source = madeBy(u"a.wav"_s, noiseInput(4));
    ASSERT_GT(source.fileSizeBytes, 300'000);

    const VideoFile result = fitted(source);

    EXPECT_FALSE(result.videoCodec);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(result.audioStreams.first().codec, u"aac"_s);
    EXPECT_NEAR(result.durationSeconds, 4, 0.1);
}

TEST_F(TargetSizeMedia, two_passes_over_a_recording_fail_for_want_of_a_stream)
{
    const VideoFile source = madeBy(u"a.wav"_s, noiseInput(4));
    params.exactTwoPass = true;

    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("does not contain any stream"));
}

TEST_F(TargetSizeMedia, streams_that_an_mp4_can_t_hold_fail_to_be_copied)
{
    const VideoFile source = madeBy(u"a.wav"_s, toneInput());
    params.targetMB = 5;

    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("codec pcm_s16le"));
}

TEST_F(TargetSizeMedia, a_crop_cuts_the_picture)
{
    const VideoFile source = film();
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};

    const VideoFile result = fitted(source);

    EXPECT_EQ(result.width, 180);
    EXPECT_EQ(result.height, 180);
}

// The filter of the first pass stands where ffmpeg doesn't see it; x264 gets along with it.
TEST_F(TargetSizeMedia, a_crop_cuts_the_picture_though_the_first_of_two_passes_sees_it_whole)
{
    const VideoFile source = film();
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};
    params.exactTwoPass = true;

    const VideoFile result = fitted(source);

    EXPECT_EQ(result.width, 180);
    EXPECT_EQ(result.height, 180);
}

TEST_F(TargetSizeMedia, an_odd_width_is_made_even_in_one_pass)
{
    const VideoFile source = silentFilm(u"321x180"_s);
    ASSERT_EQ(source.width, 321);

    const VideoFile result = fitted(source);

    EXPECT_EQ(result.width.value_or(1) % 2, 0);
    EXPECT_NEAR(static_cast<double>(result.width.value_or(0)), 321, 1);
    EXPECT_EQ(result.height, 180);
}

// A rescale at the source's own height mends the width only.
TEST_F(TargetSizeMedia, an_odd_height_stays_odd_and_is_refused_by_the_software_encoder)
{
    const VideoFile source = silentFilm(u"320x181"_s);
    ASSERT_EQ(source.height, 181);

    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("height not divisible by 2"));
}

TEST_F(TargetSizeMedia, an_odd_width_fails_in_the_first_of_two_passes)
{
    const VideoFile source = silentFilm(u"321x180"_s);
    ASSERT_EQ(source.width, 321);
    params.exactTwoPass = true;
    const JobPlan plan = planFor(source);

    EXPECT_THAT(wordsOfFailure(plan), HasSubstr("width not divisible by 2"));
    EXPECT_FALSE(QFileInfo::exists(plan.finalOutputURLs.first().toLocalFile()));
}

TEST_F(TargetSizeMedia, a_hopeless_target_fails_and_the_file_stays)
{
    const VideoFile source = film();
    params.targetMB = 0.01;
    const JobPlan plan = planFor(source);
    const QString output = plan.finalOutputURLs.first().toLocalFile();

    std::optional<ExecutorError> failure;
    try {
        run(plan);
    } catch (const ExecutorError &error) {
        failure = error;
    }

    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->limitBytes(), 10'000);
    EXPECT_GT(failure->measuredBytes(), 10'000);
    EXPECT_EQ(failure->measuredBytes(), QFileInfo(output).size());
    EXPECT_EQ(Clips::probe(output).videoCodec, u"h264"_s);
}

TEST_F(TargetSizeMedia, all_audio_tracks_come_along)
{
    const QStringList inputs =
        pictureInput(u"testsrc2=size=320x180:rate=25:duration=3"_s) + toneInput(3) + noiseInput(3);
    const VideoFile source =
        madeBy(u"two.mkv"_s,
               inputs + QStringList{u"-map"_s, u"0:v"_s, u"-map"_s, u"1:a"_s, u"-map"_s, u"2:a"_s,
                                    u"-c:v"_s, u"mpeg4"_s, u"-q:v"_s, u"2"_s, u"-c:a"_s, u"aac"_s});
    ASSERT_EQ(source.audioStreams.size(), 2);
    ASSERT_GT(source.fileSizeBytes, 300'000);
    // The budget is that of one track.
    params.advanced.audioBitrateKbps = 32;

    EXPECT_EQ(fitted(source).audioStreams.size(), 2);

    params.targetMB = 5;
    EXPECT_EQ(fitted(source).audioStreams.size(), 2);
}

TEST_F(TargetSizeMedia, a_frame_rate_cap_and_extra_arguments_reach_the_output)
{
    params.advanced.fpsCap = 10;
    params.advanced.extraArgs = u"-ac 2"_s;

    const VideoFile result = fitted(film());

    EXPECT_EQ(result.fps, 10);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(result.audioStreams.first().channels, 2);
}

TEST_F(TargetSizeMedia, prores_in_one_pass_is_refused_by_the_mp4)
{
    const VideoFile source = film();
    params.advanced.codec = CodecChoice::proresVideoToolbox;

    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("Could not find tag for codec prores"));
}

TEST_F(TargetSizeMedia, prores_in_two_passes_gives_h264)
{
    params.advanced.codec = CodecChoice::proresVideoToolbox;
    params.exactTwoPass = true;
    expectStreams(fitted(film()), u"h264"_s, {u"aac"_s}, 3);
}
