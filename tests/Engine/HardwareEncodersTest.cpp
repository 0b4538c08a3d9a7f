// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/HardwareEncoders.h"

#include "support/Clips.h"
#include "support/FakeTool.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

using Depth = HardwareEncoders::Depth;

const QSet<QString> offered{u"libx264"_s,    u"libx265"_s,  u"h264_nvenc"_s, u"h264_qsv"_s,
                            u"h264_vaapi"_s, u"hevc_qsv"_s, u"hevc_vaapi"_s};

FFmpegToolset toolsetOf(const FakeTool &ffmpeg)
{
    return {ffmpeg.url(), QUrl(), offered};
}

EncoderStandIns::Table tableAfter(const QByteArray &script)
{
    const TempFolder folder;
    const FakeTool ffmpeg(folder, script);
    HardwareEncoders encoders(toolsetOf(ffmpeg));
    encoders.check();
    return encoders.standIns();
}

QString h264After(const QByteArray &script)
{
    return tableAfter(script).value(u"h264_videotoolbox"_s).value(0).encoder;
}

QStringList exchangedBy(const EncoderStandIns::Table &table, const QString &layout)
{
    return EncoderStandIns::applyToArgs(
        {u"-c:v"_s, u"hevc_videotoolbox"_s, u"-pix_fmt"_s, layout, u"out"_s}, 10, table);
}

} // namespace

TEST(HardwareEncoders, software_stands_in_until_the_hardware_is_known)
{
    const TempFolder folder;
    const FakeTool ffmpeg(folder, "exit 0\n");
    HardwareEncoders encoders(toolsetOf(ffmpeg));
    EXPECT_EQ(encoders.standIns(), EncoderStandIns::software(toolsetOf(ffmpeg)));
    EXPECT_EQ(ffmpeg.runs(), 0);
}

TEST(HardwareEncoders, software_stays_where_every_try_fails)
{
    EXPECT_EQ(h264After("exit 1\n"), u"libx264"_s);
}

TEST(HardwareEncoders, the_first_encoder_that_works_is_taken)
{
    EXPECT_EQ(h264After("exit 0\n"), u"h264_nvenc"_s);
    EXPECT_EQ(h264After("case \"$*\" in *nvenc*) exit 1;; esac\n"), u"h264_qsv"_s);
    EXPECT_EQ(h264After("case \"$*\" in *h264_vaapi*) exit 0;; esac\nexit 1\n"), u"h264_vaapi"_s);
}

TEST(HardwareEncoders, encoders_that_the_build_lacks_are_not_tried)
{
    const TempFolder folder;
    const FakeTool ffmpeg(folder, "exit 1\n");
    HardwareEncoders encoders(toolsetOf(ffmpeg));
    encoders.check();
    EXPECT_EQ(ffmpeg.runs(), 5);
}

TEST(HardwareEncoders, nothing_is_tried_for_names_that_the_build_offers)
{
    const TempFolder folder;
    const FakeTool ffmpeg(folder, "exit 0\n");
    FFmpegToolset toolset = toolsetOf(ffmpeg);
    toolset.encoders += {u"h264_videotoolbox"_s, u"hevc_videotoolbox"_s};
    HardwareEncoders encoders(toolset);
    encoders.check();
    EXPECT_EQ(ffmpeg.runs(), 0);
}

TEST(HardwareEncoders, an_encoder_that_fails_with_ten_bits_leaves_them_to_software)
{
    const auto table = tableAfter("case \"$*\" in *p010le*) exit 1;; esac\n");

    const QStringList eightBits = exchangedBy(table, u"yuv420p"_s);
    const QStringList tenBits = exchangedBy(table, u"p010le"_s);

    EXPECT_TRUE(eightBits.contains(u"hevc_qsv"_s));
    EXPECT_TRUE(tenBits.contains(u"libx265"_s));
}

TEST(HardwareEncoders, an_encoder_that_works_with_ten_bits_gets_them)
{
    EXPECT_TRUE(exchangedBy(tableAfter("exit 0\n"), u"p010le"_s).contains(u"hevc_qsv"_s));
}

TEST(HardwareEncoders, ten_bits_are_tried_once_with_the_encoder_that_works)
{
    const TempFolder folder;
    const FakeTool ffmpeg(folder, "exit 0\n");
    HardwareEncoders encoders(toolsetOf(ffmpeg));
    encoders.check();
    ASSERT_EQ(ffmpeg.runs(), 4);
    EXPECT_TRUE(ffmpeg.arguments(1).contains(u"yuv420p"_s));
    EXPECT_TRUE(ffmpeg.arguments(2).contains(u"p010le"_s));
    EXPECT_TRUE(ffmpeg.arguments(2).contains(u"h264_nvenc"_s));
}

TEST(HardwareEncoders, a_try_uses_the_arguments_of_jobs)
{
    const StandIn vaapi{.encoder = u"h264_vaapi"_s,
                        .encoderOptions = {},
                        .globalOptions = {u"-vaapi_device"_s, u"/dev/dri/renderD128"_s},
                        .boundsRate = true,
                        .uploadsFrames = true};
    const QStringList args =
        HardwareEncoders::trialArgs(u"h264_videotoolbox"_s, vaapi, Depth::eightBits);
    EXPECT_EQ(args.first(), u"-vaapi_device"_s);
    EXPECT_TRUE(args.contains(u"-maxrate"_s));
    EXPECT_TRUE(args.contains(u"format=nv12,hwupload"_s));
    EXPECT_TRUE(HardwareEncoders::trialArgs(u"h264_videotoolbox"_s, vaapi, Depth::tenBits)
                    .contains(u"format=p010,hwupload"_s));
}

TEST(HardwareEncoders, the_line_of_a_try_works_with_an_encoder_that_works)
{
    const StandIn software{.encoder = u"libx264"_s,
                           .encoderOptions = {},
                           .globalOptions = {},
                           .boundsRate = true,
                           .uploadsFrames = false};
    for (const Depth depth : {Depth::eightBits, Depth::tenBits}) {
        Clips::ffmpeg(HardwareEncoders::trialArgs(u"h264_videotoolbox"_s, software, depth));
    }
}

TEST(HardwareEncoders, cancelling_ends_a_check_that_hangs)
{
    const TempFolder folder;
    const QString started = folder.path(u"started"_s);
    ASSERT_EQ(::mkfifo(started.toUtf8().constData(), 0600), 0);
    const FakeTool ffmpeg(folder, "echo > '" + started.toUtf8() + "'\nexec sleep 600\n");
    HardwareEncoders encoders(toolsetOf(ffmpeg));
    auto checking = std::async(std::launch::async, [&] { encoders.check(); });
    // Reading the pipe waits until the first try runs.
    contentOf(started);
    // A try that is just being launched hears nothing yet, so ask until it has heard.
    while (checking.wait_for(std::chrono::milliseconds(20)) != std::future_status::ready) {
        encoders.cancel();
    }
    EXPECT_EQ(ffmpeg.runs(), 1);
    EXPECT_EQ(encoders.standIns().value(u"h264_videotoolbox"_s).value(0).encoder, u"libx264"_s);
}

TEST(HardwareEncoders, the_real_build_ends_with_an_encoder_for_each_name)
{
    HardwareEncoders encoders(Clips::tools());
    encoders.check();
    for (const QString &name :
         {u"h264_videotoolbox"_s, u"hevc_videotoolbox"_s, u"prores_videotoolbox"_s}) {
        EXPECT_TRUE(encoders.standIns().contains(name)) << name.toStdString();
    }
}
