// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/EncoderStandIns.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

FFmpegToolset toolsetWith(const QSet<QString> &encoders)
{
    return {QUrl(u"file:///bin/ffmpeg"_s), QUrl(u"file:///bin/ffprobe"_s), encoders};
}

const QSet<QString> linuxBuild{u"libx264"_s, u"libopenh264"_s, u"libx265"_s, u"prores_ks"_s};

EncoderStandIns::Table softwareTable()
{
    return EncoderStandIns::software(toolsetWith(linuxBuild));
}

QStringList words(const QString &line)
{
    return line.split(u' ');
}

QStringList exchanged(const QString &line, double seconds)
{
    return EncoderStandIns::applyToArgs(words(line), seconds, softwareTable());
}

StandIn uploading()
{
    return {.encoder = u"h264_vaapi"_s,
            .encoderOptions = {},
            .globalOptions = {u"-vaapi_device"_s, u"/dev/dri/renderD128"_s},
            .boundsRate = true,
            .uploadsFrames = true};
}

QStringList uploaded(const QString &line)
{
    return EncoderStandIns::applyToArgs(words(line), 100,
                                        {{u"h264_videotoolbox"_s, {uploading()}}});
}

// An encoder of eight bits stands before one that takes all.
QStringList eightBitFirst(const QString &line)
{
    const StandIn first{.encoder = u"hevc_nvenc"_s,
                        .encoderOptions = {u"-preset"_s, u"p4"_s},
                        .globalOptions = {},
                        .boundsRate = false,
                        .uploadsFrames = false,
                        .eightBitOnly = true};
    const StandIn second{.encoder = u"libx265"_s, .encoderOptions = {}, .globalOptions = {}};
    return EncoderStandIns::applyToArgs(words(line), 100,
                                        {{u"hevc_videotoolbox"_s, {first, second}}});
}

JobPlan planFor(qint64 kbps)
{
    JobPlan plan;
    plan.steps = {{u"encode"_s, words(u"-i in -c:v h264_videotoolbox -b:v %1k out"_s.arg(kbps)),
                   100, std::nullopt}};
    return plan;
}

QString encoderOf(const JobPlan &plan)
{
    const QStringList &args = plan.steps.first().args;
    return args.at(args.indexOf(u"-c:v"_s) + 1);
}

} // namespace

TEST(EncoderStandIns, h264_goes_to_x264_as_a_fast_encoder_within_bounds)
{
    EXPECT_EQ(exchanged(u"-y -i in -c:v h264_videotoolbox -b:v 1000k -pix_fmt yuv420p out"_s, 100),
              words(u"-y -i in -c:v libx264 -preset veryfast -b:v 1000k -maxrate 1000k "
                    "-bufsize 20000k -rc_init_occupancy 10000k -pix_fmt yuv420p out"_s));
}

TEST(EncoderStandIns, hevc_goes_to_x265_which_logs_errors_only)
{
    EXPECT_EQ(exchanged(u"-i in -c:v hevc_videotoolbox -b:v 1000k out"_s, 100),
              words(u"-i in -c:v libx265 -x265-params log-level=error -b:v 1000k -maxrate 1000k "
                    "-bufsize 20000k -rc_init_occupancy 10000k out"_s));
}

TEST(EncoderStandIns, prores_goes_to_the_software_encoder_without_bounds)
{
    EXPECT_EQ(exchanged(u"-i in -c:v prores_videotoolbox -b:v 1000k out"_s, 100),
              words(u"-i in -c:v prores_ks -b:v 1000k out"_s));
}

TEST(EncoderStandIns, other_names_that_a_build_lacks_go_to_what_it_has_for_the_same_format)
{
    struct Row {
        QString offered;
        QString line;
        QString expected;
    };
    const Row table[] = {
        {u"prores_aw"_s, u"-c:v prores_videotoolbox -b:v 9k out"_s,
         u"-c:v prores_aw -b:v 9k out"_s},
        {u"prores_aw"_s, u"-c:v prores_ks -profile:v 4 -pix_fmt yuva444p10le out"_s,
         u"-c:v prores_aw -profile:v 4 -pix_fmt yuva444p10le out"_s},
        {u"libshine"_s, u"-vn -c:a libmp3lame -b:a 192k out"_s,
         u"-vn -c:a libshine -b:a 192k out"_s},
        {u"opus"_s, u"-c:v libvpx-vp9 -b:v 9k -c:a libopus -b:a 160k out"_s,
         u"-c:v libvpx-vp9 -b:v 9k -c:a opus -strict experimental -b:a 160k out"_s},
        {u"opus"_s, u"-c:v copy -c:a copy out"_s, u"-c:v copy -c:a copy out"_s},
        {u"aac"_s, u"-c:a libopus out"_s, u"-c:a libopus out"_s},
    };
    for (const Row &row : table) {
        const auto standIns = EncoderStandIns::software(toolsetWith({row.offered}));
        EXPECT_EQ(EncoderStandIns::applyToArgs(words(row.line), 100, standIns),
                  words(row.expected));
    }
}

TEST(EncoderStandIns, other_names_that_the_build_offers_pass_untouched)
{
    const auto table = EncoderStandIns::software(
        toolsetWith({u"prores_ks"_s, u"prores_aw"_s, u"libmp3lame"_s, u"libshine"_s, u"libopus"_s,
                     u"opus"_s, u"h264_videotoolbox"_s, u"hevc_videotoolbox"_s}));
    EXPECT_EQ(table.keys(), QStringList{u"prores_videotoolbox"_s});
}

TEST(EncoderStandIns, picture_and_sound_of_one_line_are_exchanged_both)
{
    const auto table = EncoderStandIns::software(toolsetWith({u"libx265"_s, u"libshine"_s}));
    EXPECT_EQ(EncoderStandIns::applyToArgs(
                  words(u"-c:v hevc_videotoolbox -c:a libmp3lame -b:a 192k out"_s), 100, table),
              words(u"-c:v libx265 -x265-params log-level=error -c:a libshine -b:a 192k out"_s));
}

TEST(EncoderStandIns, without_x264_openh264_does_the_work)
{
    const auto table = EncoderStandIns::software(toolsetWith({u"libopenh264"_s}));
    EXPECT_EQ(table.value(u"h264_videotoolbox"_s).value(0).encoder, u"libopenh264"_s);
}

TEST(EncoderStandIns, a_name_that_the_build_offers_passes_untouched)
{
    const auto table =
        EncoderStandIns::software(toolsetWith(linuxBuild + QSet<QString>{u"h264_videotoolbox"_s}));
    const QStringList args = words(u"-i in -c:v h264_videotoolbox -b:v 1000k out"_s);
    EXPECT_EQ(EncoderStandIns::applyToArgs(args, 100, table), args);
    EXPECT_TRUE(table.contains(u"hevc_videotoolbox"_s));
}

TEST(EncoderStandIns, a_name_that_nothing_stands_in_for_passes_untouched)
{
    EXPECT_TRUE(EncoderStandIns::software(toolsetWith({u"aac"_s})).isEmpty());
}

TEST(EncoderStandIns, other_encoders_copies_and_audio_lines_pass_untouched)
{
    for (const QString &line :
         {u"-i in -c:v libx264 -preset fast -b:v 900k -pass 1 -f mp4 /dev/null"_s,
          u"-i in -c copy out"_s, u"-i in -vn -c:a aac out"_s, u"-i in -c:v"_s,
          u"-i h264_videotoolbox -c:v copy h264_videotoolbox"_s}) {
        EXPECT_EQ(exchanged(line, 100), words(line)) << line.toStdString();
    }
}

TEST(EncoderStandIns, the_buffer_grows_with_the_length_and_never_shrinks_below_a_quarter_second)
{
    const auto bufferAt = [](double seconds) {
        const QStringList args = exchanged(u"-c:v h264_videotoolbox -b:v 1000k"_s, seconds);
        return args.value(args.indexOf(u"-bufsize"_s) + 1);
    };
    EXPECT_EQ(bufferAt(100), u"20000k"_s);
    EXPECT_EQ(bufferAt(20), u"4000k"_s);
    EXPECT_EQ(bufferAt(1), u"250k"_s);
    EXPECT_EQ(bufferAt(0), u"250k"_s);
    // No higher than what devices of level 4.1 take.
    EXPECT_EQ(bufferAt(36000), u"62500k"_s);
}

TEST(EncoderStandIns, bounds_that_ffmpeg_could_not_hold_are_left_out)
{
    const QStringList huge = exchanged(u"-c:v h264_videotoolbox -b:v 3000000k"_s, 10);
    EXPECT_FALSE(huge.contains(u"-maxrate"_s));
    EXPECT_FALSE(huge.contains(u"-bufsize"_s));
}

TEST(EncoderStandIns, a_line_without_an_average_rate_gets_no_bounds)
{
    EXPECT_EQ(exchanged(u"-i in -c:v h264_videotoolbox out"_s, 100),
              words(u"-i in -c:v libx264 -preset veryfast out"_s));
    EXPECT_EQ(exchanged(u"-i in -c:v h264_videotoolbox -b:v 0k out"_s, 100),
              words(u"-i in -c:v libx264 -preset veryfast -b:v 0k out"_s));
}

TEST(EncoderStandIns, a_device_gets_its_option_first_and_the_upload_as_the_last_filter)
{
    EXPECT_EQ(
        uploaded(u"-y -i in -c:v h264_videotoolbox -b:v 500k -pix_fmt yuv420p "
                 "-vf scale=-2:480 out"_s),
        words(
            u"-vaapi_device /dev/dri/renderD128 -y -i in -c:v h264_vaapi -b:v 500k "
            "-maxrate 500k -bufsize 10000k -rc_init_occupancy 5000k -vf scale=-2:480,format=nv12,hwupload out"_s));
}

TEST(EncoderStandIns, a_device_gets_an_upload_filter_where_there_was_none)
{
    EXPECT_EQ(
        uploaded(u"-i in -c:v h264_videotoolbox -b:v 500k -pix_fmt yuv420p out"_s),
        words(
            u"-vaapi_device /dev/dri/renderD128 -i in -c:v h264_vaapi "
            "-vf format=nv12,hwupload -b:v 500k -maxrate 500k -bufsize 10000k -rc_init_occupancy 5000k out"_s));
}

TEST(EncoderStandIns, a_device_gets_the_upload_behind_a_filter_graph)
{
    EXPECT_EQ(uploaded(u"-i in -filter_complex [0:v][1:v]concat[v] -map [v] -map 0:a "
                       "-c:v h264_videotoolbox out"_s),
              words(u"-vaapi_device /dev/dri/renderD128 -i in -filter_complex "
                    "[0:v][1:v]concat[v];[v]format=nv12,hwupload[uploaded] -map [uploaded] "
                    "-map 0:a -c:v h264_vaapi out"_s));
}

TEST(EncoderStandIns, the_users_own_encoder_passes_untouched)
{
    const QString line = u"-i in -c:v h264_videotoolbox -b:v 500k -c:v libx264 -crf 20 out"_s;
    EXPECT_EQ(exchanged(line, 100), words(line));
}

TEST(EncoderStandIns, an_encoder_that_the_user_asks_for_is_exchanged_too)
{
    EXPECT_EQ(exchanged(u"-i in -c:v libx264 -c:v hevc_videotoolbox out"_s, 100),
              words(u"-i in -c:v libx264 -c:v libx265 -x265-params log-level=error out"_s));
}

TEST(EncoderStandIns, the_bounds_go_by_the_users_rate_and_leave_the_users_bounds_the_last_word)
{
    EXPECT_EQ(exchanged(u"-c:v h264_videotoolbox -b:v 500k -b:v 1000k -maxrate 9000k out"_s, 100),
              words(u"-c:v libx264 -preset veryfast -b:v 500k -maxrate 1000k -bufsize 20000k "
                    "-rc_init_occupancy 10000k -b:v 1000k -maxrate 9000k out"_s));
}

TEST(EncoderStandIns, the_upload_goes_behind_the_users_filter_and_without_the_users_layout)
{
    EXPECT_EQ(uploaded(u"-c:v h264_videotoolbox -pix_fmt yuv420p -vf scale=-2:480 -vf hflip "
                       "-pix_fmt yuv444p out"_s),
              words(u"-vaapi_device /dev/dri/renderD128 -c:v h264_vaapi -vf scale=-2:480 "
                    "-vf hflip,format=nv12,hwupload out"_s));
}

TEST(EncoderStandIns, ten_bit_frames_go_up_as_ten_bit)
{
    for (const QString &layout : {u"p010le"_s, u"yuv420p10le"_s, u"yuva444p10le"_s}) {
        EXPECT_TRUE(uploaded(u"-i in -c:v h264_videotoolbox -b:v 5k -pix_fmt %1 out"_s.arg(layout))
                        .contains(u"format=p010,hwupload"_s));
    }
}

TEST(EncoderStandIns, the_users_layout_says_the_depth_of_what_goes_up)
{
    EXPECT_TRUE(uploaded(u"-i in -c:v h264_videotoolbox -pix_fmt p010le -pix_fmt yuv410p out"_s)
                    .contains(u"format=nv12,hwupload"_s));
}

TEST(EncoderStandIns, a_line_of_ten_bits_passes_over_an_encoder_that_takes_eight)
{
    const auto lineWith = [](const QString &layout) {
        return eightBitFirst(u"-i in -c:v hevc_videotoolbox -pix_fmt "_s + layout + u" out"_s);
    };
    EXPECT_EQ(lineWith(u"yuv420p"_s),
              words(u"-i in -c:v hevc_nvenc -preset p4 -pix_fmt yuv420p out"_s));
    EXPECT_EQ(lineWith(u"p010le"_s), words(u"-i in -c:v libx265 -pix_fmt p010le out"_s));
    EXPECT_EQ(lineWith(u"yuva444p10le"_s),
              words(u"-i in -c:v libx265 -pix_fmt yuva444p10le out"_s));
    // The last one counts.
    EXPECT_EQ(lineWith(u"p010le -pix_fmt yuv420p"_s).value(3), u"hevc_nvenc"_s);
}

TEST(EncoderStandIns, an_encoder_that_takes_eight_bits_is_told_so_where_the_line_says_nothing)
{
    EXPECT_EQ(eightBitFirst(u"-i in -c:v hevc_videotoolbox -b:v 0k out"_s),
              words(u"-i in -c:v hevc_nvenc -preset p4 -pix_fmt yuv420p -b:v 0k out"_s));
}

TEST(EncoderStandIns, a_device_that_takes_eight_bits_gets_the_layout_with_the_upload)
{
    StandIn device = uploading();
    device.eightBitOnly = true;
    EXPECT_EQ(EncoderStandIns::applyToArgs(words(u"-i in -c:v h264_videotoolbox out"_s), 100,
                                           {{u"h264_videotoolbox"_s, {device}}}),
              words(u"-vaapi_device /dev/dri/renderD128 -i in -c:v h264_vaapi "
                    "-vf format=nv12,hwupload out"_s));
}

TEST(EncoderStandIns, a_line_that_no_stand_in_takes_passes_untouched)
{
    StandIn device = uploading();
    device.eightBitOnly = true;
    const QStringList line = words(u"-i in -c:v h264_videotoolbox -pix_fmt p010le out"_s);
    EXPECT_EQ(EncoderStandIns::applyToArgs(line, 100, {{u"h264_videotoolbox"_s, {device}}}), line);
}

TEST(EncoderStandIns, the_steps_and_both_factories_of_a_plan_are_exchanged)
{
    JobPlan plan = planFor(1000);
    plan.retryFactory = planFor;
    plan.approach = ApproachSpec{planFor, QUrl(u"file:///tmp/a"_s), QUrl(u"file:///b"_s)};
    const JobPlan runnable = EncoderStandIns::apply(plan, softwareTable());
    EXPECT_EQ(encoderOf(runnable), u"libx264"_s);
    EXPECT_EQ(encoderOf(runnable.retryFactory(930)), u"libx264"_s);
    EXPECT_EQ(encoderOf(runnable.approach->factory(2000)), u"libx264"_s);
    EXPECT_TRUE(runnable.retryFactory(930).steps.first().args.contains(u"930k"_s));
}

TEST(EncoderStandIns, nothing_else_of_a_plan_is_touched)
{
    JobPlan plan = planFor(1000);
    plan.finalOutputURLs = {QUrl(u"file:///out.mp4"_s)};
    plan.badgeKey = u"badge"_s;
    plan.targetLimitBytes = 42;
    plan.prepFiles = {{QUrl(u"file:///list"_s), u"text"_s}};
    plan.createDirs = {QUrl(u"file:///dir"_s)};
    plan.cleanupURLs = {QUrl(u"file:///log"_s)};
    const JobPlan runnable = EncoderStandIns::apply(plan, softwareTable());
    EXPECT_EQ(runnable.finalOutputURLs, plan.finalOutputURLs);
    EXPECT_EQ(runnable.badgeKey, plan.badgeKey);
    EXPECT_EQ(runnable.targetLimitBytes, plan.targetLimitBytes);
    EXPECT_EQ(runnable.prepFiles, plan.prepFiles);
    EXPECT_EQ(runnable.createDirs, plan.createDirs);
    EXPECT_EQ(runnable.cleanupURLs, plan.cleanupURLs);
    EXPECT_EQ(runnable.steps.first().label, u"encode"_s);
    EXPECT_EQ(runnable.steps.first().progressDuration, 100);
    EXPECT_FALSE(runnable.retryFactory);
    EXPECT_FALSE(runnable.approach);
}
