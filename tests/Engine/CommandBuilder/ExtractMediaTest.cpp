// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/MediaFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

using AudioFormat = ExtractParams::AudioFormat;

class ExtractMedia : public MediaFixture
{
protected:
    // A film with a mono track and a stereo one, the second behind a subtitle.
    VideoFile film(const QString &codec = u"aac"_s)
    {
        return madeBy(u"a.mkv"_s,
                      pictureInput(u"testsrc2=size=160x90:rate=25:duration=1"_s) + toneInput(1) +
                          QStringList{u"-i"_s, recording(u"stereo.wav"_s, 1, 2), u"-i"_s,
                                      subtitles(), u"-map"_s, u"0:v"_s, u"-map"_s, u"1:a"_s,
                                      u"-map"_s, u"3:s"_s, u"-map"_s, u"2:a"_s, u"-c:v"_s,
                                      u"mpeg4"_s, u"-c:a"_s, codec});
    }

    VideoFile sound(const QString &name, const QString &codec)
    {
        return madeBy(name, toneInput(1) + QStringList{u"-c:a"_s, codec});
    }

    JobPlan planFor(const VideoFile &file) const
    {
        return CommandBuilder::extract(file, params, std::nullopt, std::nullopt);
    }

    VideoFile extracted(const VideoFile &file)
    {
        const VideoFile result = resultOf(planFor(file));
        EXPECT_FALSE(result.videoCodec);
        EXPECT_TRUE(result.subtitleStreams.isEmpty());
        EXPECT_EQ(result.audioStreams.size(), 1);
        EXPECT_NEAR(result.durationSeconds, 1, 0.1);
        return result;
    }

    // A fingerprint of the track's packets, whatever container they lie in.
    QByteArray packetsOf(const QString &path, const QString &stream) const
    {
        Clips::ffmpeg({u"-i"_s, path, u"-map"_s, stream, u"-c"_s, u"copy"_s, u"-f"_s, u"md5"_s,
                       folder.path(u"packets.md5"_s)});
        return contentOf(folder.path(u"packets.md5"_s));
    }

    ExtractParams params;
};

} // namespace

TEST_F(ExtractMedia, an_aac_track_is_copied_into_an_m4a_bit_by_bit)
{
    const VideoFile source = film();

    const VideoFile result = extracted(source);

    EXPECT_EQ(result.url, folder.url(u"a-audio.m4a"_s));
    EXPECT_EQ(result.containerName, u"mov,mp4,m4a,3gp,3g2,mj2"_s);
    EXPECT_EQ(result.audioStreams.first().codec, u"aac"_s);
    EXPECT_EQ(packetsOf(folder.path(u"a-audio.m4a"_s), u"0:a:0"_s),
              packetsOf(folder.path(u"a.mkv"_s), u"0:a:0"_s));
}

TEST_F(ExtractMedia, the_aac_choice_encodes_an_aac_track_anew_into_an_m4a)
{
    const VideoFile source = film();
    params.format = AudioFormat::aac;

    const VideoFile result = extracted(source);

    EXPECT_EQ(result.url, folder.url(u"a-audio.m4a"_s));
    EXPECT_EQ(result.audioStreams.first().codec, u"aac"_s);
    EXPECT_NE(packetsOf(folder.path(u"a-audio.m4a"_s), u"0:a:0"_s),
              packetsOf(folder.path(u"a.mkv"_s), u"0:a:0"_s));
}

TEST_F(ExtractMedia, each_format_has_its_container_and_codec)
{
    struct Row {
        AudioFormat format;
        QString name;
        QString container;
        QString codec;
    };
    const QString m4a = u"mov,mp4,m4a,3gp,3g2,mj2"_s;
    const std::vector<Row> rows{
        {AudioFormat::m4a, u"a-audio.m4a"_s, m4a, u"aac"_s},
        {AudioFormat::aac, u"a-audio 2.m4a"_s, m4a, u"aac"_s},
        {AudioFormat::mp3, u"a-audio.mp3"_s, u"mp3"_s, u"mp3"_s},
        {AudioFormat::wav, u"a-audio.wav"_s, u"wav"_s, u"pcm_s16le"_s},
    };
    const VideoFile source = film(u"libopus"_s);
    for (const Row &row : rows) {
        params.format = row.format;
        const VideoFile result = extracted(source);
        EXPECT_EQ(result.url, folder.url(row.name));
        EXPECT_EQ(result.containerName, row.container);
        EXPECT_EQ(result.audioStreams.first().codec, row.codec);
    }
}

TEST_F(ExtractMedia, the_chosen_track_is_taken_by_its_place_in_the_file)
{
    const VideoFile source = film();
    ASSERT_EQ(source.audioStreams.size(), 2);
    ASSERT_EQ(source.audioStreams.last().index, 3);
    const std::vector<std::pair<qint64, qint64>> channelsByTrack{{0, 1}, {1, 2}, {7, 2}, {-1, 1}};
    for (const auto &[track, channels] : channelsByTrack) {
        params.audioTrackIndex = track;
        EXPECT_EQ(extracted(source).audioStreams.first().channels, channels) << track;
    }
}

TEST_F(ExtractMedia, the_rate_is_obeyed)
{
    const VideoFile source = film();
    params.format = AudioFormat::mp3;
    params.bitrateKbps = 64;
    EXPECT_EQ(extracted(source).audioStreams.first().bitrateBps, 64'000);
}

TEST_F(ExtractMedia, a_recording_gives_its_sound_without_its_cover)
{
    const VideoFile cover =
        madeBy(u"cover.png"_s, pictureInput(u"color=red:size=64x64:duration=0.04"_s));
    const VideoFile source =
        madeBy(u"a.m4a"_s, toneInput(1) + QStringList{u"-i"_s, cover.url.toLocalFile(), u"-map"_s,
                                                      u"0"_s, u"-map"_s, u"1"_s, u"-c:v"_s,
                                                      u"png"_s, u"-disposition:v"_s,
                                                      u"attached_pic"_s, u"-c:a"_s, u"aac"_s});
    ASSERT_EQ(source.videoCodec, u"png"_s);

    EXPECT_EQ(extracted(source).audioStreams.first().codec, u"aac"_s);
}

TEST_F(ExtractMedia, odd_characters_of_a_name_reach_ffmpeg)
{
    const VideoFile source = sound(u"it's \"a\" %d 片 ?#.mp4"_s, u"aac"_s);
    EXPECT_EQ(extracted(source).url, folder.url(u"it's \"a\" %d 片 ?#-audio.m4a"_s));
}

TEST_F(ExtractMedia, an_ac3_track_is_copied_into_an_m4a)
{
    EXPECT_EQ(extracted(sound(u"a.mkv"_s, u"ac3"_s)).audioStreams.first().codec, u"ac3"_s);
}

// An MP4 takes these two, and the plan goes by that; an M4A doesn't.
TEST_F(ExtractMedia, mp3_and_eac3_are_refused_by_the_m4a)
{
    const std::vector<std::pair<QString, QString>> encoders{{u"mp3"_s, u"libmp3lame"_s},
                                                            {u"eac3"_s, u"eac3"_s}};
    for (const auto &[codec, encoder] : encoders) {
        const VideoFile source = sound(codec + u".mkv"_s, encoder);
        const JobPlan plan = planFor(source);
        ASSERT_EQ(plan.badgeKey, u"extract.direct"_s);
        EXPECT_THAT(wordsOfFailure(plan), HasSubstr("Could not find tag for codec " +
                                                    codec.toStdString() + " in stream #0"));
    }
}

TEST_F(ExtractMedia, a_rate_below_0_is_refused_in_ffmpeg_s_words)
{
    params.format = AudioFormat::mp3;
    params.bitrateKbps = -5;
    EXPECT_THAT(wordsOfFailure(planFor(film())), HasSubstr("Error setting option b to value -5k"));
}

TEST_F(ExtractMedia, a_track_that_has_gone_since_the_probe_is_told_by_ffmpeg)
{
    VideoFile source = film();
    source.audioStreams.first().index = 7;
    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("Stream map '0:7' matches no streams"));
}

TEST_F(ExtractMedia, a_file_that_has_gone_since_the_probe_is_told_by_ffmpeg)
{
    VideoFile source = film();
    source.url = folder.url(u"gone.mkv"_s);
    EXPECT_THAT(wordsOfFailure(planFor(source)), HasSubstr("No such file or directory"));
}
