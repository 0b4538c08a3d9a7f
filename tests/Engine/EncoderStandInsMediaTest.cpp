// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/EncoderStandIns.h"

#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/EngineError.h"
#include "Engine/ProcessRunner.h"
#include "support/Clips.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// One second of film, encoded by the real ffmpeg through the stand-ins of a build that lacks some
/// of what this one has.
class StandInMedia : public ::testing::Test
{
protected:
    StandInMedia()
    {
        Clips::make(folder.path(u"in.mkv"_s), {.size = u"320x180"_s,
                                               .framesPerSecond = 25,
                                               .seconds = 1,
                                               .noise = 0,
                                               .hasAudio = true,
                                               .videoBitrate = u"1000k"_s});
    }

    // What a job would run, in the words of its builder.
    ProcessResult run(const QString &options, const QString &output,
                      const QSet<QString> &lacking = {}) const
    {
        FFmpegToolset tools = Clips::tools();
        tools.encoders -= lacking;
        const QStringList args = CommandBuilder::baseArgs() +
                                 QStringList{u"-i"_s, folder.path(u"in.mkv"_s)} +
                                 options.split(u' ') + QStringList{folder.path(output)};
        return ProcessRunner::runAsync(
            tools.ffmpegURL,
            EncoderStandIns::applyToArgs(args, 1, EncoderStandIns::software(tools)), {}, {});
    }

    // The film that comes out, after the check that nothing but errors is logged.
    VideoFile encoded(const QString &options, const QString &output,
                      const QSet<QString> &lacking = {}) const
    {
        EXPECT_EQ(run(options, output, lacking).standardError, QString());
        return Clips::probe(folder.path(output));
    }

    TempFolder folder;
};

} // namespace

TEST_F(StandInMedia, h264_is_encoded_without_a_word)
{
    const VideoFile file =
        encoded(u"-c:v h264_videotoolbox -b:v 500k -pix_fmt yuv420p"_s, u"a.mp4"_s);
    EXPECT_EQ(file.videoCodec, u"h264"_s);
    EXPECT_NEAR(file.durationSeconds, 1, 0.1);
}

TEST_F(StandInMedia, hevc_is_encoded_without_a_word)
{
    const VideoFile file =
        encoded(u"-c:v hevc_videotoolbox -b:v 500k -pix_fmt yuv420p"_s, u"a.mp4"_s);
    EXPECT_EQ(file.videoCodec, u"hevc"_s);
    EXPECT_NEAR(file.durationSeconds, 1, 0.1);
}

TEST_F(StandInMedia, hevc_keeps_hdr_and_its_ten_bits_without_a_word)
{
    const VideoFile file =
        encoded(u"-c:v hevc_videotoolbox -b:v 500k -pix_fmt p010le -color_primaries bt2020 "
                "-color_trc smpte2084 -colorspace bt2020nc"_s,
                u"a.mp4"_s);
    EXPECT_EQ(file.videoCodec, u"hevc"_s);
    EXPECT_TRUE(file.isHDR);
    const ProcessResult layout = ProcessRunner::runSync(
        Clips::tools().ffprobeURL,
        {u"-loglevel"_s, u"error"_s, u"-select_streams"_s, u"v"_s, u"-show_entries"_s,
         u"stream=pix_fmt"_s, u"-of"_s, u"csv=p=0"_s, folder.path(u"a.mp4"_s)});
    EXPECT_EQ(layout.standardOutput.trimmed(), u"yuv420p10le"_s);
}

TEST_F(StandInMedia, prores_is_encoded_without_a_word)
{
    const QString options = u"-c:v prores_videotoolbox -b:v 5000k -pix_fmt yuv420p"_s;
    EXPECT_EQ(encoded(options, u"a.mov"_s).videoCodec, u"prores"_s);
    EXPECT_EQ(encoded(options, u"b.mov"_s, {u"prores_ks"_s}).videoCodec, u"prores"_s);
}

TEST_F(StandInMedia, prores_keeps_alpha_with_either_encoder)
{
    const QString options = u"-c:v prores_ks -profile:v 4 -pix_fmt yuva444p10le"_s;
    EXPECT_TRUE(encoded(options, u"a.mov"_s).hasAlphaChannel);
    EXPECT_TRUE(encoded(options, u"b.mov"_s, {u"prores_ks"_s}).hasAlphaChannel);
}

TEST_F(StandInMedia, mp3_is_encoded_without_lame)
{
    const VideoFile file =
        encoded(u"-vn -c:a libmp3lame -b:a 192k"_s, u"a.mp3"_s, {u"libmp3lame"_s});
    ASSERT_EQ(file.audioStreams.size(), 1);
    EXPECT_EQ(file.audioStreams.first().codec, u"mp3"_s);
    EXPECT_EQ(file.audioStreams.first().bitrateBps, 192'000);
}

TEST_F(StandInMedia, opus_is_encoded_without_its_library)
{
    const VideoFile file = encoded(u"-vn -c:a libopus -b:a 160k"_s, u"a.webm"_s, {u"libopus"_s});
    ASSERT_EQ(file.audioStreams.size(), 1);
    EXPECT_EQ(file.audioStreams.first().codec, u"opus"_s);
}

TEST_F(StandInMedia, av1_that_the_user_asks_for_is_encoded_without_a_word)
{
    if (!Clips::tools().encoders.contains(u"libsvtav1"_s)) {
        GTEST_SKIP() << "this build has no SVT-AV1";
    }
    EXPECT_EQ(
        encoded(u"-c:v h264_videotoolbox -b:v 500k -pix_fmt yuv420p -c:v libsvtav1"_s, u"a.mp4"_s)
            .videoCodec,
        u"av1"_s);
}

TEST_F(StandInMedia, a_name_that_nothing_stands_in_for_fails_in_ffmpegs_words)
{
    try {
        run(u"-c:v hevc_videotoolbox -b:v 500k"_s, u"a.mp4"_s, {u"libx265"_s});
        ADD_FAILURE() << "the run succeeded";
    } catch (const EngineError &error) {
        EXPECT_EQ(error.errorDescription(), u"Unknown encoder 'hevc_videotoolbox'\n"_s);
    }
}
