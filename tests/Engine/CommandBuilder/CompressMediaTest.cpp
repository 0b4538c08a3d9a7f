// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "Engine/EncoderStandIns.h"
#include "Engine/EngineError.h"
#include "Engine/PlanExecutor.h"
#include "support/Clips.h"
#include "support/TempFolder.h"

#include <QFileInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

const QStringList picture{u"-f"_s, u"lavfi"_s, u"-i"_s,
                          u"testsrc2=size=320x180:rate=25:duration=1"_s};
const QStringList sine{u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=1"_s};

/// Films in a folder of their own, compressed by the real ffmpeg.
class CompressMedia : public ::testing::Test
{
protected:
    // One second of H.264 with one mono AAC track.
    VideoFile film(const QString &videoBitrate = u"2000k"_s)
    {
        Clips::make(folder.path(u"a.mov"_s), {.size = u"320x180"_s,
                                              .framesPerSecond = 25,
                                              .seconds = 1,
                                              .noise = 40,
                                              .hasAudio = true,
                                              .videoBitrate = videoBitrate});
        return Clips::probe(folder.path(u"a.mov"_s));
    }

    VideoFile madeBy(const QString &name, const QStringList &args)
    {
        Clips::ffmpeg(args + QStringList{folder.path(name)});
        return Clips::probe(folder.path(name));
    }

    // A silent film of any size in pixels, odd ones too.
    VideoFile silentFilm(const QString &size)
    {
        const QString source = u"testsrc=size=%1:rate=25:duration=1,format=yuv420p"_s.arg(size);
        return madeBy(u"silent.mkv"_s,
                      {u"-f"_s, u"lavfi"_s, u"-i"_s, source, u"-c:v"_s, u"ffv1"_s});
    }

    VideoFile hdrFilm()
    {
        return madeBy(u"hdr.mkv"_s,
                      picture + QStringList{u"-c:v"_s, u"libx265"_s, u"-x265-params"_s,
                                            u"log-level=error"_s, u"-pix_fmt"_s, u"yuv420p10le"_s,
                                            u"-color_primaries"_s, u"bt2020"_s, u"-color_trc"_s,
                                            u"smpte2084"_s, u"-colorspace"_s, u"bt2020nc"_s});
    }

    VideoFile filmWithTwoTracks(const QString &secondCodec)
    {
        return madeBy(u"two.mkv"_s,
                      picture + sine + sine +
                          QStringList{u"-map"_s, u"0:v"_s, u"-map"_s, u"1:a"_s, u"-map"_s, u"2:a"_s,
                                      u"-c:v"_s, u"libx264"_s, u"-c:a:0"_s, u"aac"_s, u"-c:a:1"_s,
                                      secondCodec});
    }

    QUrl stereoWav(double seconds)
    {
        Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s,
                       u"anoisesrc=duration=%1:amplitude=0.2"_s.arg(QString::number(seconds)),
                       u"-ac"_s, u"2"_s, folder.path(u"b c.wav"_s)});
        return folder.url(u"b c.wav"_s);
    }

    void customHeight(qint64 height)
    {
        params.mode = CompressParams::Mode::quality;
        params.resolution = CompressParams::ResTier::custom;
        params.customHeight = height;
    }

    JobPlan planFor(const VideoFile &file) const
    {
        const FFmpegToolset &tools = Clips::tools();
        return EncoderStandIns::apply(
            CommandBuilder::compress(file, params, tools, std::nullopt, std::nullopt),
            EncoderStandIns::software(tools));
    }

    // Compresses the film and gives what came out, after the checks that hold for every outcome.
    VideoFile compressed(const VideoFile &file)
    {
        const JobPlan plan = planFor(file);
        const ExecutionOutcome outcome =
            PlanExecutor(Clips::tools().ffmpegURL).execute(plan, [](double) {});

        EXPECT_EQ(outcome.outputURLs, plan.finalOutputURLs);
        const QString path = outcome.outputURLs.first().toLocalFile();
        EXPECT_EQ(outcome.outputBytes, QFileInfo(path).size());
        EXPECT_TRUE(path.endsWith(u".mp4"_s));
        const VideoFile result = Clips::probe(path);
        EXPECT_EQ(result.containerName, u"mov,mp4,m4a,3gp,3g2,mj2"_s);
        return result;
    }

    // What ffmpeg says to the compression. The test fails when it says nothing.
    std::string refusalOf(const VideoFile &file)
    {
        try {
            PlanExecutor(Clips::tools().ffmpegURL).execute(planFor(file), [](double) {});
        } catch (const EngineError &error) {
            EXPECT_EQ(error.kind(), EngineError::Case::processFailed);
            EXPECT_GT(error.exitCode(), 0);
            return error.errorDescription().toStdString();
        }
        ADD_FAILURE() << "the run succeeded";
        return {};
    }

    TempFolder folder;
    CompressParams params;
};

QStringList audioCodecs(const VideoFile &file)
{
    QStringList codecs;
    for (const AudioStream &stream : file.audioStreams) {
        codecs += stream.codec;
    }
    return codecs;
}

void expectStreams(const VideoFile &file, const QString &video, const QStringList &audio)
{
    EXPECT_EQ(file.videoCodec, video);
    EXPECT_EQ(file.width, 320);
    EXPECT_EQ(file.height, 180);
    EXPECT_EQ(audioCodecs(file), audio);
    EXPECT_NEAR(file.durationSeconds, 1, 0.15);
}

} // namespace

TEST_F(CompressMedia, smart_makes_a_film_smaller_and_copies_its_sound)
{
    const VideoFile source = film();
    ASSERT_GT(source.videoBitrateBps.value_or(0), 1'500'000);

    const VideoFile result = compressed(source);

    expectStreams(result, u"h264"_s, {u"aac"_s});
    EXPECT_EQ(result.url, folder.url(u"a-smart.mp4"_s));
    EXPECT_LT(result.fileSizeBytes, source.fileSizeBytes * 3 / 4);
    EXPECT_EQ(result.audioStreams.first().bitrateBps, source.audioStreams.first().bitrateBps);
}

TEST_F(CompressMedia, each_quality_makes_a_film_smaller_than_the_one_before)
{
    const VideoFile source = film(u"4000k"_s);
    params.mode = CompressParams::Mode::quality;
    qint64 previousBytes = source.fileSizeBytes;
    for (const CompressParams::QualityTier tier : allCases<CompressParams::QualityTier>()) {
        params.quality = tier;
        const qint64 bytes = compressed(source).fileSizeBytes;
        EXPECT_LT(bytes, previousBytes);
        previousBytes = bytes;
    }
}

TEST_F(CompressMedia, a_custom_height_is_the_output_s)
{
    customHeight(90);
    const VideoFile result = compressed(film());

    EXPECT_EQ(result.width, 160);
    EXPECT_EQ(result.height, 90);
    EXPECT_EQ(result.url, folder.url(u"a-smaller-90p.mp4"_s));
}

TEST_F(CompressMedia, a_custom_height_above_the_source_s_changes_nothing)
{
    customHeight(720);
    expectStreams(compressed(film()), u"h264"_s, {u"aac"_s});
}

TEST_F(CompressMedia, an_odd_custom_height_is_refused)
{
    const VideoFile source = film();
    for (const qint64 height : {qint64{91}, qint64{1}}) {
        customHeight(height);
        EXPECT_THAT(refusalOf(source), HasSubstr("height not divisible by 2"));
    }
}

// To the scale filter these mean the input's own size.
TEST_F(CompressMedia, a_custom_height_of_0_or_below_leaves_the_size)
{
    const VideoFile source = film();
    for (const qint64 height : {qint64{0}, qint64{-1}, qint64{-480}}) {
        customHeight(height);
        expectStreams(compressed(source), u"h264"_s, {u"aac"_s});
    }
}

TEST_F(CompressMedia, a_custom_height_beyond_the_filter_s_integers_is_refused)
{
    customHeight(-3'000'000'000);
    EXPECT_FALSE(refusalOf(film()).empty());
}

TEST_F(CompressMedia, hevc_stays_hevc)
{
    const VideoFile source = madeBy(
        u"a.mkv"_s, picture + QStringList{u"-c:v"_s, u"libx265"_s, u"-x265-params"_s,
                                          u"log-level=error"_s, u"-pix_fmt"_s, u"yuv420p"_s});
    expectStreams(compressed(source), u"hevc"_s, {});
}

TEST_F(CompressMedia, hdr_is_passed_through_by_hevc)
{
    const VideoFile source = hdrFilm();
    ASSERT_TRUE(source.isHDR);
    params.advanced.hdrPassthrough = true;

    const VideoFile result = compressed(source);

    expectStreams(result, u"hevc"_s, {});
    EXPECT_TRUE(result.isHDR);
}

TEST_F(CompressMedia, x264_takes_a_quality)
{
    const VideoFile source = film();
    params.advanced.codec = CodecChoice::softwareX264;
    params.advanced.crf = 18;
    const VideoFile fine = compressed(source);
    params.advanced.crf = 45;
    const VideoFile coarse = compressed(source);

    expectStreams(fine, u"h264"_s, {u"aac"_s});
    EXPECT_LT(coarse.fileSizeBytes, fine.fileSizeBytes / 2);
}

TEST_F(CompressMedia, prores_is_refused_by_the_mp4_whether_chosen_or_for_alpha)
{
    params.advanced.codec = CodecChoice::proresVideoToolbox;
    EXPECT_THAT(refusalOf(film()), HasSubstr("Could not find tag for codec prores"));

    params.advanced.codec = CodecChoice::automatic;
    params.advanced.preserveAlpha = true;
    const VideoFile alpha =
        madeBy(u"alpha.mov"_s, picture + QStringList{u"-vf"_s, u"format=yuva444p10le"_s, u"-c:v"_s,
                                                     u"prores_ks"_s, u"-profile:v"_s, u"4"_s});
    ASSERT_TRUE(alpha.hasAlphaChannel);
    EXPECT_THAT(refusalOf(alpha), HasSubstr("Could not find tag for codec prores"));
}

TEST_F(CompressMedia, a_muted_film_has_no_sound)
{
    params.muted = true;
    expectStreams(compressed(film()), u"h264"_s, {});
}

TEST_F(CompressMedia, a_replacement_is_opened_but_the_source_s_sound_goes_in_at_its_own_length)
{
    const VideoFile source = film();
    params.advanced.replacementAudioURL = stereoWav(0.3);

    const VideoFile result = compressed(source);

    expectStreams(result, u"h264"_s, {u"aac"_s});
    EXPECT_EQ(result.audioStreams.first().channels, 1);
}

TEST_F(CompressMedia, a_replacement_gives_a_silent_film_no_sound)
{
    params.advanced.replacementAudioURL = stereoWav(1);
    expectStreams(compressed(silentFilm(u"320x180"_s)), u"h264"_s, {});
}

TEST_F(CompressMedia, a_replacement_that_can_t_be_read_is_refused_unless_muted)
{
    const VideoFile source = film();
    params.advanced.replacementAudioURL =
        QUrl::fromLocalFile(folder.write(u"b.txt"_s, "no music at all"));
    EXPECT_THAT(refusalOf(source), HasSubstr("Invalid data found when processing input"));

    params.advanced.replacementAudioURL = folder.url(u"none.m4a"_s);
    EXPECT_THAT(refusalOf(source), HasSubstr("No such file or directory"));

    params.muted = true;
    expectStreams(compressed(source), u"h264"_s, {});
}

// Its sound isn't mapped, so that it has none doesn't matter.
TEST_F(CompressMedia, a_replacement_that_is_no_audio_is_good_enough)
{
    params.advanced.replacementAudioURL = silentFilm(u"320x180"_s).url;
    expectStreams(compressed(film()), u"h264"_s, {u"aac"_s});
}

TEST_F(CompressMedia, all_audio_tracks_come_along)
{
    expectStreams(compressed(filmWithTwoTracks(u"aac"_s)), u"h264"_s, {u"aac"_s, u"aac"_s});
}

TEST_F(CompressMedia, a_second_track_that_an_mp4_can_t_hold_is_refused_unless_encoded)
{
    const VideoFile source = filmWithTwoTracks(u"pcm_s16le"_s);
    EXPECT_THAT(refusalOf(source), HasSubstr("Could not find tag for codec pcm_s16le"));

    params.advanced.audioBitrateKbps = 64;
    expectStreams(compressed(source), u"h264"_s, {u"aac"_s, u"aac"_s});
}

TEST_F(CompressMedia, subtitles_stay_behind)
{
    const QString text = folder.write(u"a.srt"_s, "1\n00:00:00,100 --> 00:00:00,900\nHello\n");
    const VideoFile source =
        madeBy(u"subtitled.mkv"_s, picture + QStringList{u"-i"_s, text, u"-c:v"_s, u"libx264"_s});
    ASSERT_EQ(source.subtitleStreams.size(), 1);

    EXPECT_TRUE(compressed(source).subtitleStreams.isEmpty());
}

TEST_F(CompressMedia, a_gain_over_copied_sound_is_refused_and_taken_by_an_encode)
{
    const VideoFile source = film();
    params.advanced.volumeDb = 3;
    EXPECT_THAT(refusalOf(source), HasSubstr("Filtering and streamcopy cannot be used together"));

    params.advanced.audioBitrateKbps = 64;
    expectStreams(compressed(source), u"h264"_s, {u"aac"_s});
}

TEST_F(CompressMedia, a_recording_keeps_its_sound_alone)
{
    const VideoFile aac = madeBy(u"a.m4a"_s, sine);
    const VideoFile pcm = madeBy(u"b.wav"_s, sine);
    for (const VideoFile &source : {aac, pcm}) {
        const VideoFile result = compressed(source);
        EXPECT_FALSE(result.videoCodec);
        EXPECT_EQ(audioCodecs(result), QStringList{u"aac"_s});
        EXPECT_NEAR(result.durationSeconds, 1, 0.1);
    }
}

TEST_F(CompressMedia, a_muted_recording_has_no_stream_left)
{
    params.muted = true;
    EXPECT_THAT(refusalOf(madeBy(u"a.m4a"_s, sine)), HasSubstr("does not contain any stream"));
}

TEST_F(CompressMedia, a_crop_and_a_cap_cut_and_scale_the_picture)
{
    customHeight(90);
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};

    const VideoFile result = compressed(film());

    EXPECT_EQ(result.width, 90);
    EXPECT_EQ(result.height, 90);
}

TEST_F(CompressMedia, a_turned_film_is_capped_as_it_is_shown)
{
    film();
    const VideoFile source =
        madeBy(u"turned.mov"_s, {u"-i"_s, folder.path(u"a.mov"_s), u"-c"_s, u"copy"_s,
                                 u"-metadata:s:v:0"_s, u"rotate=90"_s});
    customHeight(160);

    const VideoFile result = compressed(source);

    EXPECT_EQ(result.width, 90);
    EXPECT_EQ(result.height, 160);
}

TEST_F(CompressMedia, an_odd_width_is_made_even_and_an_odd_height_is_refused)
{
    const VideoFile result = compressed(silentFilm(u"321x180"_s));
    EXPECT_EQ(result.width.value_or(1) % 2, 0);
    EXPECT_EQ(result.height, 180);

    EXPECT_THAT(refusalOf(silentFilm(u"320x181"_s)), HasSubstr("height not divisible by 2"));
}

TEST_F(CompressMedia, a_frame_rate_cap_and_extra_arguments_reach_the_output)
{
    params.advanced.fpsCap = 10;
    params.advanced.audioBitrateKbps = 64;
    params.advanced.extraArgs = u"-ac 2"_s;

    const VideoFile result = compressed(film());

    EXPECT_EQ(result.fps, 10);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(result.audioStreams.first().channels, 2);
}

TEST_F(CompressMedia, extra_arguments_that_are_rubbish_are_refused)
{
    params.advanced.extraArgs = u"-nonsense 1"_s;
    EXPECT_THAT(refusalOf(film()), HasSubstr("Unrecognized option 'nonsense'"));
}
