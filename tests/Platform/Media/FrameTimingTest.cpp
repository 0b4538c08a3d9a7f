// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/LibavFrameGenerator.h"

#include "Platform/Media/FrameFixture.h"
#include "support/NumberedFilm.h"

#include <QUrl>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>

using namespace Qt::StringLiterals;

namespace {

constexpr double oneFrame = 1.0 / NumberedFilm::rate;
constexpr double infinity = std::numeric_limits<double>::infinity();

/// A numbered film, made in one way.
struct Making {
    const char *title;
    QString name;
    QStringList encoding;
};

void PrintTo(const Making &making, std::ostream *out)
{
    *out << making.title;
}

QStringList h264(const QStringList &more = {})
{
    return QStringList{u"-c:v"_s, u"libx264"_s, u"-preset"_s, u"veryfast"_s, u"-crf"_s,
                       u"10"_s,   u"-g"_s,      u"20"_s,      u"-bf"_s,      u"3"_s} +
           more;
}

QStringList hevc(const QString &parameters)
{
    return {u"-c:v"_s,         u"libx265"_s,
            u"-preset"_s,      u"ultrafast"_s,
            u"-pix_fmt"_s,     u"yuv420p10le"_s,
            u"-crf"_s,         u"10"_s,
            u"-x265-params"_s, u"log-level=error:keyint=20:bframes=3:"_s + parameters};
}

// A rate that stops and jumps: three seconds of one frame, too.
const QString unevenTimes = u"setpts=(N+4*floor(N/7)+75*gt(N\\,40))/25/TB"_s;

QList<Making> makings()
{
    const QString openGop = u"open-gop=1:scenecut=0"_s;
    const QStringList mpeg2{u"-c:v"_s, u"mpeg2video"_s, u"-q:v"_s, u"2"_s,
                            u"-g"_s,   u"15"_s,         u"-bf"_s,  u"2"_s};
    return {
        {"mp4", u"n.mp4"_s, h264()},
        {"no_b_frames", u"n.mp4"_s, h264({u"-bf"_s, u"0"_s})},
        {"open_gop", u"n.mp4"_s, h264({u"-x264-params"_s, openGop})},
        {"uneven_rate", u"n.mp4"_s,
         h264(
             {u"-vf"_s, unevenTimes, u"-fps_mode"_s, u"vfr"_s, u"-enc_time_base"_s, u"1/90000"_s})},
        {"fractional_rate", u"n.mp4"_s,
         h264({u"-vf"_s, u"setpts=N*1001/30000/TB"_s, u"-r"_s, u"30000/1001"_s})},
        {"one_keyframe", u"n.mp4"_s, h264({u"-g"_s, u"1000"_s})},
        {"fragments", u"n.mp4"_s, h264({u"-movflags"_s, u"frag_keyframe+empty_moov"_s})},
        {"late_start", u"n.mp4"_s, h264({u"-vf"_s, u"setpts=PTS+0.7/TB"_s})},
        {"hevc_10_bit", u"n.mp4"_s, hevc(u"open-gop=0"_s)},
        {"hevc_open_gop", u"n.mkv"_s, hevc(u"open-gop=1"_s)},
        {"hevc_open_gop_stream", u"n.ts"_s, hevc(u"open-gop=1"_s)},
        {"mkv", u"n.mkv"_s, h264()},
        {"mkv_open_gop", u"n.mkv"_s, h264({u"-x264-params"_s, openGop})},
        {"ts", u"n.ts"_s, h264()},
        {"ts_open_gop", u"n.ts"_s, h264({u"-x264-params"_s, openGop})},
        {"ts_across_the_end_of_the_clock", u"n.ts"_s, h264({u"-output_ts_offset"_s, u"95441"_s})},
        {"mpeg2_ts", u"n.ts"_s, mpeg2},
        {"flv", u"n.flv"_s, h264()},
        {"webm_vp9",
         u"n.webm"_s,
         {u"-c:v"_s, u"libvpx-vp9"_s, u"-cpu-used"_s, u"8"_s, u"-crf"_s, u"10"_s, u"-g"_s, u"20"_s,
          u"-auto-alt-ref"_s, u"1"_s, u"-lag-in-frames"_s, u"12"_s}},
        {"webm_vp8",
         u"n.webm"_s,
         {u"-c:v"_s, u"libvpx"_s, u"-cpu-used"_s, u"8"_s, u"-b:v"_s, u"2M"_s, u"-g"_s, u"20"_s,
          u"-auto-alt-ref"_s, u"1"_s, u"-lag-in-frames"_s, u"12"_s}},
        {"av1",
         u"n.mp4"_s,
         {u"-c:v"_s, u"libaom-av1"_s, u"-cpu-used"_s, u"8"_s, u"-crf"_s, u"10"_s, u"-g"_s,
          u"20"_s}},
        {"prores", u"n.mov"_s, {u"-c:v"_s, u"prores_ks"_s}},
    };
}

class FrameTiming : public FrameFixture
{
};

class FramesOf : public FrameFixture, public ::testing::WithParamInterface<Making>
{
};

std::string titleOf(const ::testing::TestParamInfo<Making> &info)
{
    return info.param.title;
}

} // namespace

TEST_P(FramesOf, frames_and_keyframes_are_those_of_a_full_decode)
{
    const QString path = numbered(GetParam().name, GetParam().encoding);
    const Timetable truth = Timetable::of(path);

    expectFramesAsShown(path, truth);

    LibavFrameGenerator generator(QUrl::fromLocalFile(path), {});
    for (const double time : truth.times) {
        EXPECT_EQ(numberOf(generator.frame(time, Tolerance::nearestKeyframe)),
                  truth.keyframeNumberAt(time))
            << "at " << time;
    }
}

INSTANTIATE_TEST_SUITE_P(Making, FramesOf, ::testing::ValuesIn(makings()), titleOf);

TEST_F(FrameTiming, a_raw_stream_without_times_runs_at_its_usual_pace)
{
    const QString path = numbered(u"n.h264"_s, h264());

    expectFramesAsShown(path, Timetable::of(path));
}

TEST_F(FrameTiming, a_program_stream_that_tells_few_times_shows_the_right_frames)
{
    const QString path =
        numbered(u"n.mpg"_s, {u"-c:v"_s, u"mpeg2video"_s, u"-q:v"_s, u"2"_s, u"-bf"_s, u"0"_s});

    expectFramesAsShown(path, Timetable::of(path));
}

TEST_F(FrameTiming, a_film_with_times_of_decoding_only_shows_the_right_frames)
{
    const QString path = numbered(
        u"n.avi"_s, {u"-c:v"_s, u"mpeg4"_s, u"-q:v"_s, u"2"_s, u"-g"_s, u"20"_s, u"-bf"_s, u"2"_s});

    expectFramesAsShown(path, Timetable::of(path));
}

TEST_F(FrameTiming, an_animated_picture_shows_the_right_frames)
{
    const QString path = numbered(
        u"n.gif"_s, {u"-vf"_s, u"split[a][b];[a]palettegen[p];[b][p]paletteuse=dither=none"_s});

    for (const int number : {0, 1, 42, 99}) {
        EXPECT_EQ(numberOf(frameOf(path, number * oneFrame)), number);
    }
}

TEST_F(FrameTiming, a_long_film_in_fragments_shows_the_right_frames)
{
    const QString path = folder.path(u"long.mp4"_s);
    Clips::ffmpeg({u"-stream_loop"_s, u"9"_s, u"-i"_s, numberedH264(), u"-c"_s, u"copy"_s,
                   u"-movflags"_s, u"frag_keyframe+empty_moov"_s, path});
    LibavFrameGenerator generator(QUrl::fromLocalFile(path), {});

    for (const double seconds : {31.08, 7.6, 22.44, 39.92}) {
        const int number = static_cast<int>(std::lround(seconds / oneFrame)) % 100;
        EXPECT_EQ(numberOf(generator.frame(seconds, Tolerance::nearestKeyframe)), number / 20 * 20);
        EXPECT_EQ(numberOf(generator.frame(seconds, Tolerance::zero)), number);
    }
}

TEST_F(FrameTiming, a_cut_without_encoding_begins_with_the_first_frame_that_is_shown)
{
    const QString whole = numberedH264();
    const QString cut = folder.path(u"cut.mp4"_s);
    Clips::ffmpeg({u"-ss"_s, u"1.1"_s, u"-i"_s, whole, u"-c"_s, u"copy"_s, cut});

    expectFramesAsShown(cut, Timetable::of(cut));
    // The frames from the keyframe on are in the file, and are not shown.
    EXPECT_GT(numberOf(frameOf(cut, 0)), 25);
    EXPECT_GT(numberOf(frameOf(cut, 0, Tolerance::nearestKeyframe)), 25);
}

TEST_F(FrameTiming, a_picture_that_begins_after_the_sound_is_timed_from_the_sound)
{
    for (const QString &name : {u"late.mp4"_s, u"late.mkv"_s, u"late.ts"_s}) {
        const QString path = folder.path(name);
        Clips::ffmpeg(QStringList{u"-itsoffset"_s, u"0.7"_s} +
                      pictureInput(NumberedFilm::picture()) + toneInput(5) +
                      h264({u"-c:a"_s, u"aac"_s, path}));

        expectFramesAsShown(path, Timetable::of(path));
        EXPECT_EQ(numberOf(frameOf(path, 0.1)), 0);
    }
}

TEST_F(FrameTiming, a_picture_that_ends_before_the_sound_stays)
{
    for (const QString &name : {u"short.mp4"_s, u"short.mkv"_s, u"short.ts"_s}) {
        const QString path = folder.path(name);
        Clips::ffmpeg(pictureInput(NumberedFilm::picture()) + toneInput(30) +
                      h264({u"-c:a"_s, u"aac"_s, path}));

        EXPECT_EQ(numberOf(frameOf(path, 29)), 99) << name.toStdString();
        EXPECT_EQ(numberOf(frameOf(path, 29, Tolerance::nearestKeyframe)), 80)
            << name.toStdString();
    }
}

TEST_F(FrameTiming, times_before_the_film_give_its_first_frame)
{
    const QString path = numberedH264();

    for (const double seconds : {0.0, -0.0, -1.0, -1e300, -infinity, std::nan("")}) {
        EXPECT_EQ(numberOf(frameOf(path, seconds)), 0) << seconds;
        EXPECT_EQ(numberOf(frameOf(path, seconds, Tolerance::nearestKeyframe)), 0) << seconds;
    }
}

TEST_F(FrameTiming, times_at_and_past_the_end_give_the_last_frame)
{
    for (const QString &name : {u"n.mp4"_s, u"n.mkv"_s, u"n.ts"_s}) {
        const QString path = numberedH264(name);
        for (const double seconds : {3.96, 4.0, 4.5, 1e6, 1e300, infinity}) {
            EXPECT_EQ(numberOf(frameOf(path, seconds)), 99) << seconds;
            EXPECT_EQ(numberOf(frameOf(path, seconds, Tolerance::nearestKeyframe)), 80) << seconds;
        }
    }
}

TEST_F(FrameTiming, a_time_cut_to_microseconds_still_finds_its_frame)
{
    const QString path = numbered(
        u"n.mp4"_s, h264({u"-vf"_s, u"setpts=N*1001/30000/TB"_s, u"-r"_s, u"30000/1001"_s}));

    // The second frame stands at 0.0333666… s.
    EXPECT_EQ(numberOf(frameOf(path, 0.033366)), 1);
    EXPECT_EQ(numberOf(frameOf(path, 0.03336)), 0);
}

TEST_F(FrameTiming, frames_come_in_any_order_from_one_generator)
{
    LibavFrameGenerator generator(QUrl::fromLocalFile(numberedH264()), {});

    for (const int number : {99, 0, 50, 51, 50, 19, 20, 21, 98, 3}) {
        EXPECT_EQ(numberOf(generator.frame(number * oneFrame, Tolerance::zero)), number);
        EXPECT_EQ(numberOf(generator.frame(number * oneFrame, Tolerance::nearestKeyframe)),
                  number / 20 * 20);
    }
}
