// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "Engine/ProbeService.h"
#include "support/MediaFixture.h"
#include "support/NumberedFilm.h"

#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using NumberedFilm::Sound;
using ::testing::HasSubstr;

namespace {

constexpr double oneFrame = 1.0 / NumberedFilm::rate;

class TrimMedia : public MediaFixture
{
protected:
    VideoFile film(const QString &name, Sound sound = Sound::aac,
                   const QStringList &encoderOptions = {})
    {
        NumberedFilm::make(folder.path(name), sound, encoderOptions);
        return Clips::probe(folder.path(name));
    }

    void keep(double start, double end)
    {
        TrimSegment segment;
        segment.start = start;
        segment.end = end;
        params.segments += segment;
    }

    JobPlan planFor(const VideoFile &file) const
    {
        return CommandBuilder::trim(file, params, std::nullopt, std::nullopt);
    }

    VideoFile trimmed(const VideoFile &file) { return resultOf(planFor(file)); }

    QList<int> framesOf(const VideoFile &file) const
    {
        return NumberedFilm::frames(file.url.toLocalFile());
    }

    // The numbers of the frames that one segment leaves.
    QList<int> framesKept(const VideoFile &file, double start, double end)
    {
        params.segments.clear();
        keep(start, end);
        return framesOf(trimmed(file));
    }

    // ffprobe leaves a comma behind the first keyframe of an x264 film, so it isn't listed.
    QList<double> listedKeyframes(const VideoFile &file) const
    {
        return ProbeService::keyframeTimes(file.url, Clips::tools().ffprobeURL);
    }

    TrimParams params;
};

// Matroska's clock runs late by what the sound needs to start, which is less than a frame.
int frameAt(double seconds)
{
    return static_cast<int>(seconds * NumberedFilm::rate + 0.01);
}

int keyframeBefore(const QList<double> &keyframes, double seconds)
{
    const auto next = std::upper_bound(keyframes.begin(), keyframes.end(), seconds);
    return next == keyframes.begin() ? 0 : frameAt(*std::prev(next));
}

// ffmpeg may show the first frame twice, to begin on the beat.
void expectWithinFrames(const QList<int> &frames, double start, double end, int tolerance)
{
    ASSERT_FALSE(frames.isEmpty());
    EXPECT_NEAR(frames.first() * oneFrame, start, oneFrame + 1e-9);
    EXPECT_NEAR((frames.last() + 1) * oneFrame, end, tolerance * oneFrame + 1e-9);
    EXPECT_NEAR(static_cast<double>(frames.size()), (end - start) / oneFrame, 1 + 1e-9);
    EXPECT_TRUE(std::is_sorted(frames.begin(), frames.end()));
}

} // namespace

TEST_F(TrimMedia, a_copied_cut_starts_at_the_listed_keyframe_before_its_start)
{
    for (const QString &name : {u"a.mp4"_s, u"a.mov"_s, u"a.mkv"_s}) {
        const VideoFile source = film(name);
        const QList<double> keyframes = listedKeyframes(source);
        ASSERT_GE(keyframes.size(), 4) << name.toStdString();
        for (const double start : {0.3, 1.5, 2.9}) {
            const QList<int> frames = framesKept(source, start, start + 0.4);
            SCOPED_TRACE(u"%1 from %2"_s.arg(name).arg(start).toStdString());
            ASSERT_FALSE(frames.isEmpty());
            EXPECT_EQ(frames.first(), keyframeBefore(keyframes, start));
            EXPECT_NEAR(frames.last() * oneFrame, start + 0.4, 2 * oneFrame);
        }
    }
}

TEST_F(TrimMedia, a_copied_cut_at_a_listed_keyframe_starts_right_there)
{
    for (const QString &name : {u"a.m4v"_s, u"a.mkv"_s}) {
        const VideoFile source = film(name);
        for (const double keyframe : listedKeyframes(source).last(2)) {
            const QList<int> frames = framesKept(source, keyframe, keyframe + 0.4);
            EXPECT_EQ(frames.value(0, -1), frameAt(keyframe))
                << name.toStdString() << " at " << keyframe;
        }
    }
}

// For such films ffmpeg seeks a little early, lest the frames that are shown out of order are lost;
// only a container whose index counts by shown times is spared that.
TEST_F(TrimMedia, a_cut_at_a_keyframe_of_a_matroska_film_with_b_frames_starts_one_keyframe_early)
{
    const QStringList withBFrames{u"-preset"_s, u"veryfast"_s, u"-bf"_s, u"2"_s};
    EXPECT_EQ(framesKept(film(u"a.mp4"_s, Sound::none, withBFrames), 1.4, 2).value(0), 35);
    EXPECT_EQ(framesKept(film(u"a.mkv"_s, Sound::none, withBFrames), 1.4, 2).value(0), 15);
}

TEST_F(TrimMedia, a_copied_cut_keeps_the_packets_and_the_rate)
{
    const VideoFile source = film(u"a.mp4"_s);
    keep(1.4, 3);

    const VideoFile result = trimmed(source);

    EXPECT_EQ(result.url, folder.url(u"a-trim.mp4"_s));
    EXPECT_EQ(framesOf(result), NumberedFilm::run(35, 74));
    EXPECT_EQ(result.videoCodec, u"h264"_s);
    EXPECT_EQ(result.fps, 25);
    EXPECT_NEAR(result.durationSeconds, 1.6, 0.05);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(result.audioStreams.first().codec, u"aac"_s);
}

// A transport stream has no index: the reader lands somewhere before the start, and the copy waits
// for the next keyframe.
TEST_F(TrimMedia, a_transport_stream_s_cut_starts_at_a_later_keyframe)
{
    const VideoFile source = film(u"a.ts"_s);
    for (const bool exactReencode : {false, true}) {
        params.exactReencode = exactReencode;
        const QList<int> frames = framesKept(source, 1.5, 2.5);
        EXPECT_EQ(frames.value(0), 55);
        EXPECT_EQ(frames, NumberedFilm::run(55, frames.last()));
    }
}

TEST_F(TrimMedia, an_avi_is_cut_at_a_keyframe_though_none_is_listed)
{
    const VideoFile source = film(u"a.avi"_s);
    EXPECT_EQ(listedKeyframes(source), QList<double>());

    const QList<int> frames = framesKept(source, 1.5, 2.5);

    EXPECT_EQ(frames.value(0), 35);
    EXPECT_EQ(frames, NumberedFilm::run(35, frames.last()));
}

TEST_F(TrimMedia, a_webm_is_copied_into_a_webm_and_refuses_h264)
{
    const VideoFile source =
        madeBy(u"a.webm"_s,
               pictureInput(u"testsrc2=size=160x90:rate=25:duration=1"_s) + toneInput(1) +
                   QStringList{u"-c:v"_s, u"libvpx-vp9"_s, u"-deadline"_s, u"realtime"_s,
                               u"-cpu-used"_s, u"8"_s, u"-g"_s, u"5"_s, u"-c:a"_s, u"libopus"_s});
    keep(0.2, 0.8);
    const VideoFile result = trimmed(source);
    EXPECT_EQ(result.url, folder.url(u"a-trim.webm"_s));
    EXPECT_EQ(result.videoCodec, u"vp9"_s);
    EXPECT_EQ(result.audioStreams.size(), 1);
    EXPECT_NEAR(result.durationSeconds, 0.6, 0.3);

    params.exactReencode = true;
    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("Only VP8 or VP9 or AV1 video"));
}

TEST_F(TrimMedia, an_exact_cut_is_within_one_frame)
{
    params.exactReencode = true;
    for (const QString &name : {u"a.mp4"_s, u"a.mov"_s, u"a.mkv"_s}) {
        const VideoFile source = film(name);
        for (const auto &[start, end] :
             QList<std::pair<double, double>>{{0.3, 1.1}, {1.519, 2.777}, {2.2, 2.28}}) {
            SCOPED_TRACE(u"%1 from %2"_s.arg(name).arg(start).toStdString());
            expectWithinFrames(framesKept(source, start, end), start, end, 1);
        }
    }
}

// An AVI has no times of its own but the order of its frames.
TEST_F(TrimMedia, an_exact_cut_of_an_avi_ends_within_two_frames)
{
    params.exactReencode = true;
    expectWithinFrames(framesKept(film(u"a.avi"_s), 1.519, 2.777), 1.519, 2.777, 2);
}

TEST_F(TrimMedia, joined_copies_hold_their_segments_and_have_the_summed_length)
{
    for (const QString &name : {u"a.mp4"_s, u"a.mov"_s}) {
        const VideoFile source = film(name);
        params.segments.clear();
        keep(2.2, 3);
        keep(0.6, 1);

        const VideoFile result = trimmed(source);

        EXPECT_NEAR(result.durationSeconds, 1.2, 0.1) << name.toStdString();
        EXPECT_EQ(framesOf(result), NumberedFilm::run(15, 24) + NumberedFilm::run(55, 74))
            << name.toStdString();
        EXPECT_EQ(result.audioStreams.size(), 1);
    }
}

TEST_F(TrimMedia, joined_exact_cuts_have_the_summed_length)
{
    params.exactReencode = true;
    params.advanced.audioBitrateKbps = 96;
    keep(0.2, 0.72);
    keep(2.52, 3.4);
    keep(1.6, 1.8);
    for (const Sound sound : {Sound::none, Sound::aac}) {
        const VideoFile result = trimmed(film(u"a.mp4"_s, sound));

        EXPECT_NEAR(result.durationSeconds, 0.52 + 0.88 + 0.2, 0.1);
        const QList<int> expected =
            NumberedFilm::run(5, 17) + NumberedFilm::run(40, 44) + NumberedFilm::run(63, 84);
        EXPECT_EQ(framesOf(result), expected);
        EXPECT_EQ(result.audioStreams.size(), sound == Sound::none ? 0 : 1);
    }
}

// Matroska has no edit lists: each part begins with the delay of the encoder's reordering.
TEST_F(TrimMedia, joined_exact_cuts_of_a_matroska_film_gain_up_to_a_tenth_each)
{
    params.exactReencode = true;
    keep(0.2, 0.72);
    keep(2.52, 3.4);
    keep(1.6, 1.8);

    const VideoFile result = trimmed(film(u"a.mkv"_s, Sound::none));

    EXPECT_GE(result.durationSeconds, 1.6 - 0.1);
    EXPECT_LE(result.durationSeconds, 1.6 + 0.3);
    EXPECT_EQ(framesOf(result).size(), 40);
}

// Sound that is copied can't be cut to the frame: it comes along from the keyframe on, and a
// container without edit lists shows it.
TEST_F(TrimMedia, copied_sound_of_an_exact_cut_begins_at_the_keyframe)
{
    params.exactReencode = true;
    keep(2, 2.4);

    EXPECT_NEAR(trimmed(film(u"a.mp4"_s)).durationSeconds, 0.4, 0.1);
    EXPECT_NEAR(trimmed(film(u"a.mkv"_s)).durationSeconds, 0.6 + 0.4, 0.1);

    keep(0.4, 0.5);
    EXPECT_GT(trimmed(film(u"a.mp4"_s)).durationSeconds, 0.5 + 0.2);
}

TEST_F(TrimMedia, segments_become_files_of_their_own)
{
    const VideoFile source = film(u"a.mp4"_s);
    params.separateFiles = true;
    keep(2.2, 2.6);
    keep(0.6, 1.4);

    const ExecutionOutcome outcome = run(planFor(source));

    EXPECT_EQ(outcome.outputURLs,
              (QList<QUrl>{folder.url(u"a-trim-01.mp4"_s), folder.url(u"a-trim-02.mp4"_s)}));
    EXPECT_EQ(NumberedFilm::frames(folder.path(u"a-trim-01.mp4"_s)), NumberedFilm::run(15, 34));
    EXPECT_EQ(NumberedFilm::frames(folder.path(u"a-trim-02.mp4"_s)), NumberedFilm::run(55, 64));
    EXPECT_EQ(folder.names(),
              (QStringList{u"a-trim-01.mp4"_s, u"a-trim-02.mp4"_s, u"a.mp4"_s, u"scratch"_s}));
}

TEST_F(TrimMedia, nothing_temporary_is_left_after_joining_or_failing)
{
    const VideoFile source = film(u"a.mp4"_s);
    keep(0.6, 1);
    keep(2.2, 3);
    run(planFor(source));
    EXPECT_EQ(scratchNames(), QStringList());

    params.advanced.extraArgs = u"-nonsense 7"_s;
    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("Unrecognized option 'nonsense'"));
    EXPECT_EQ(scratchNames(), QStringList());
}

TEST_F(TrimMedia, a_name_with_quotes_is_cut_and_joined)
{
    const VideoFile source = film(u"it's \"a\" %d 片 ?#.mp4"_s);
    keep(0.6, 1);
    keep(2.2, 3);

    const VideoFile result = trimmed(source);

    EXPECT_EQ(result.url, folder.url(u"it's \"a\" %d 片 ?#-trim.mp4"_s));
    EXPECT_EQ(framesOf(result).size(), 30);
}

TEST_F(TrimMedia, a_temporary_folder_with_odd_characters_holds_a_list_that_reads)
{
    const VideoFile source = film(u"a.mp4"_s);
    QDir(folder.path()).mkdir(u"b \\ \"c\" # 片"_s);
    const ScopedEnvironment temporary("TMPDIR", folder.path(u"b \\ \"c\" # 片"_s).toUtf8());
    keep(0.6, 1);
    keep(2.2, 3);

    EXPECT_EQ(framesOf(trimmed(source)).size(), 30);
}

// The list isn't escaped: only a temporary folder can bring a quote into it.
TEST_F(TrimMedia, a_temporary_folder_with_a_single_quote_fails_to_be_joined)
{
    const VideoFile source = film(u"a.mp4"_s);
    QDir(folder.path()).mkdir(u"it's"_s);
    const ScopedEnvironment temporary("TMPDIR", folder.path(u"it's"_s).toUtf8());
    keep(0.6, 1);
    keep(2.2, 3);

    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("/its/mx-trim-"));
}

TEST_F(TrimMedia, a_recording_is_cut_by_copy_and_by_encoding)
{
    const VideoFile source = madeBy(u"a.m4a"_s, toneInput(2));
    keep(0.5, 1.5);
    for (const bool exactReencode : {false, true}) {
        params.exactReencode = exactReencode;
        const VideoFile result = trimmed(source);
        EXPECT_TRUE(result.url.path().endsWith(u".mp4"_s));
        EXPECT_FALSE(result.videoCodec);
        ASSERT_EQ(result.audioStreams.size(), 1);
        EXPECT_NEAR(result.durationSeconds, 1, 0.1);
    }
}

TEST_F(TrimMedia, sound_that_an_mp4_can_t_hold_fails_to_be_copied_and_can_be_encoded)
{
    const VideoFile source = madeBy(u"a.wav"_s, toneInput(2));
    keep(0.5, 1.5);
    EXPECT_THAT(wordsOfFailure(planFor(source)),
                HasSubstr("Could not find tag for codec pcm_s16le"));

    params.exactReencode = true;
    EXPECT_EQ(trimmed(source).audioStreams.first().codec, u"aac"_s);
}

TEST_F(TrimMedia, a_cut_takes_all_audio_tracks_along_and_joining_takes_one)
{
    const VideoFile source =
        madeBy(u"a.mkv"_s, pictureInput(NumberedFilm::picture()) + toneInput(4) + toneInput(4) +
                               QStringList{u"-i"_s, subtitles(), u"-map"_s, u"0:v"_s, u"-map"_s,
                                           u"1:a"_s, u"-map"_s, u"2:a"_s, u"-map"_s, u"3:s"_s,
                                           u"-c:v"_s, u"mpeg4"_s, u"-c:a"_s, u"libopus"_s});
    ASSERT_EQ(source.subtitleStreams.size(), 1);
    keep(0.5, 1.5);
    for (const bool exactReencode : {false, true}) {
        params.exactReencode = exactReencode;
        const VideoFile result = trimmed(source);
        EXPECT_EQ(result.audioStreams.size(), 2);
        EXPECT_TRUE(result.subtitleStreams.isEmpty());
        EXPECT_EQ(result.audioStreams.last().codec, exactReencode ? u"aac"_s : u"opus"_s);
    }

    // Joining maps nothing, and ffmpeg takes one track of each kind by itself.
    keep(2, 2.5);
    EXPECT_EQ(trimmed(source).audioStreams.size(), 1);
}

TEST_F(TrimMedia, a_crop_a_frame_rate_cap_and_extra_arguments_reach_the_output)
{
    const VideoFile source = film(u"a.mp4"_s);
    keep(0.6, 2.6);
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};
    params.advanced.fpsCap = 10;
    params.advanced.audioBitrateKbps = 96;
    params.advanced.volumeDb = -3;
    params.advanced.extraArgs = u"-ac 2"_s;

    const VideoFile result = trimmed(source);

    EXPECT_EQ(result.width, 90);
    EXPECT_EQ(result.height, 90);
    EXPECT_EQ(result.fps, 10);
    ASSERT_EQ(result.audioStreams.size(), 1);
    EXPECT_EQ(result.audioStreams.first().channels, 2);
}

TEST_F(TrimMedia, the_hevc_choice_keeps_hdr)
{
    const VideoFile source = hdrFilm();
    ASSERT_TRUE(source.isHDR);
    keep(0.2, 0.8);
    params.exactReencode = true;
    params.advanced.codec = CodecChoice::hevcVideoToolbox;
    params.advanced.hdrPassthrough = true;

    const VideoFile result = trimmed(source);

    EXPECT_EQ(result.videoCodec, u"hevc"_s);
    EXPECT_TRUE(result.isHDR);
    EXPECT_NEAR(result.durationSeconds, 0.6, 0.05);
}

TEST_F(TrimMedia, prores_keeps_alpha_in_a_mov_and_h264_loses_it)
{
    const VideoFile source = alphaFilm();
    ASSERT_TRUE(source.hasAlphaChannel);
    keep(0.2, 0.8);
    params.exactReencode = true;
    params.advanced.preserveAlpha = true;

    EXPECT_FALSE(trimmed(source).hasAlphaChannel);

    params.advanced.codec = CodecChoice::proresVideoToolbox;
    const VideoFile result = trimmed(source);
    EXPECT_EQ(result.videoCodec, u"prores"_s);
    EXPECT_TRUE(result.hasAlphaChannel);
}

TEST_F(TrimMedia, prores_is_refused_by_the_mp4)
{
    const VideoFile source = film(u"a.mp4"_s);
    keep(0.2, 0.8);
    params.exactReencode = true;
    params.advanced.codec = CodecChoice::proresVideoToolbox;
    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("Could not find tag for codec prores"));
}

TEST_F(TrimMedia, an_odd_width_is_made_even_and_an_odd_height_is_refused)
{
    keep(0.2, 0.8);
    params.exactReencode = true;
    EXPECT_EQ(trimmed(silentFilm(u"161x90"_s)).width.value_or(1) % 2, 0);
    EXPECT_THAT(wordsOfFailure(planFor(silentFilm(u"160x91"_s))),
                HasSubstr("height not divisible by 2"));
}

TEST_F(TrimMedia, a_rotated_film_is_turned_upright_by_an_exact_cut)
{
    const VideoFile source = turned(film(u"a.mp4"_s));
    ASSERT_EQ(source.width, 160);
    keep(0.2, 0.8);
    EXPECT_EQ(trimmed(source).width, 160);

    params.exactReencode = true;
    const VideoFile result = trimmed(source);
    EXPECT_EQ(result.width, 90);
    EXPECT_EQ(result.height, 160);

    // The crop goes by the size before the turn.
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio16x9, std::nullopt, std::nullopt};
    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("Error reinitializing filters"));
}

TEST_F(TrimMedia, a_replacement_goes_unheard)
{
    keep(0.2, 0.8);
    params.exactReencode = true;
    params.advanced.replacementAudioURL = stereoWav(2);

    const VideoFile loud = trimmed(film(u"a.mp4"_s));
    ASSERT_EQ(loud.audioStreams.size(), 1);
    EXPECT_EQ(loud.audioStreams.first().channels, 1);

    EXPECT_TRUE(trimmed(film(u"silent.mp4"_s, Sound::none)).audioStreams.isEmpty());
}

TEST_F(TrimMedia, a_replacement_that_is_no_recording_fails_in_ffmpeg_s_words)
{
    const VideoFile source = film(u"a.mp4"_s);
    keep(0.2, 0.8);
    params.exactReencode = true;

    params.advanced.replacementAudioURL = QUrl::fromLocalFile(folder.write(u"b.wav"_s, "hello"));
    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("Invalid data found"));

    params.advanced.replacementAudioURL = folder.url(u"gone.wav"_s);
    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("No such file or directory"));
}

TEST_F(TrimMedia, a_gain_on_copied_sound_is_refused)
{
    const VideoFile source = film(u"a.mp4"_s);
    keep(0.2, 0.8);
    params.exactReencode = true;
    params.advanced.volumeDb = 3;
    EXPECT_THAT(wordsOfFailure(planFor(source)),
                HasSubstr("Filtering and streamcopy cannot be used together"));
}
