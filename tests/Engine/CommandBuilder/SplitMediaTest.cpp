// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "Engine/ProbeService.h"
#include "support/FilmContents.h"
#include "support/MediaFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

/// A packet of a picture, by its time in seconds and the sum of its bytes.
struct Packet {
    double seconds = 0;
    QString sum;
};

class SplitMedia : public MediaFixture
{
protected:
    // Parts of a second, until a test says otherwise.
    SplitMedia()
    {
        params.mode = SplitParams::Mode::byDuration;
        params.durationPerPartSeconds = 1;
    }

    JobPlan planFor(const VideoFile &file) const
    {
        return CommandBuilder::split(file, params, std::nullopt, std::nullopt);
    }

    QList<VideoFile> partsOf(const VideoFile &file)
    {
        QList<VideoFile> parts;
        for (const QUrl &url : run(planFor(file)).outputURLs) {
            parts += Clips::probe(url.toLocalFile());
        }
        return parts;
    }

    // Three seconds with a keyframe every 0.8, and sound.
    VideoFile film(const QString &name, const QStringList &encoding)
    {
        return madeBy(
            name, pictureInput(u"testsrc2=size=320x180:rate=25:duration=3"_s) + toneInput(3) +
                      QStringList{u"-pix_fmt"_s, u"yuv420p"_s, u"-g"_s, u"20"_s, u"-bf"_s, u"0"_s} +
                      encoding);
    }

    VideoFile x264Film(const QString &name)
    {
        return film(name,
                    {u"-c:v"_s, u"libx264"_s, u"-preset"_s, u"ultrafast"_s, u"-c:a"_s, u"aac"_s});
    }

    // The packets of the picture as they are stored.
    QList<Packet> packetsOf(const VideoFile &file)
    {
        const QString report = folder.path(u"scratch/packets"_s);
        Clips::ffmpeg({u"-i"_s, file.url.toLocalFile(), u"-map"_s, u"0:v:0"_s, u"-c"_s, u"copy"_s,
                       u"-f"_s, u"framemd5"_s, report});
        QList<Packet> packets;
        double tick = 0;
        for (const QString &line : QString::fromUtf8(contentOf(report)).split(u'\n')) {
            if (line.startsWith(u"#tb 0: 1/"_s)) {
                tick = 1 / line.sliced(9).toDouble();
            }
            const QStringList fields = line.split(u',');
            if (fields.size() == 6 && !line.startsWith(u'#')) {
                packets += {fields.at(2).toDouble() * tick, fields.at(5).trimmed()};
            }
        }
        return packets;
    }

    // The second of the source at which the part begins.
    double startIn(const VideoFile &source, const VideoFile &part)
    {
        const QString sum = packetsOf(part).value(0).sum;
        for (const Packet &packet : packetsOf(source)) {
            if (packet.sum == sum) {
                return packet.seconds;
            }
        }
        ADD_FAILURE() << "the part begins nowhere in the source";
        return -1;
    }

    SplitParams params;
};

} // namespace

TEST_F(SplitMedia, parts_begin_at_the_keyframe_before_their_start)
{
    const VideoFile source = film(u"a.mp4"_s, {u"-c:v"_s, u"mpeg4"_s, u"-c:a"_s, u"aac"_s});
    const QList<double> keyframes =
        ProbeService::keyframeTimes(source.url, Clips::tools().ffprobeURL);
    ASSERT_EQ(keyframes, (QList<double>{0, 0.8, 1.6, 2.4}));

    const QList<VideoFile> parts = partsOf(source);

    ASSERT_EQ(parts.size(), 3);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        EXPECT_NEAR(startIn(source, parts.at(i)), keyframes.at(i), 0.001);
    }
}

// ffprobe puts a comma behind the time of a keyframe with side data, as x264's first one has: that
// line doesn't read as a number, and the list begins with the second keyframe.
TEST_F(SplitMedia, parts_of_x264_begin_at_listed_keyframes_but_for_the_first)
{
    const VideoFile source = x264Film(u"a.mp4"_s);
    const QList<double> keyframes =
        ProbeService::keyframeTimes(source.url, Clips::tools().ffprobeURL);
    ASSERT_EQ(keyframes, (QList<double>{0.8, 1.6, 2.4}));

    const QList<VideoFile> parts = partsOf(source);

    ASSERT_EQ(parts.size(), 3);
    EXPECT_EQ(startIn(source, parts.at(0)), 0);
    EXPECT_NEAR(startIn(source, parts.at(1)), 0.8, 0.001);
    EXPECT_NEAR(startIn(source, parts.at(2)), 1.6, 0.001);
}

TEST_F(SplitMedia, parts_are_copies_with_picture_and_sound)
{
    const VideoFile source = x264Film(u"a.mov"_s);

    const QList<VideoFile> parts = partsOf(source);

    ASSERT_EQ(parts.size(), 3);
    const QList<double> lengths{1, 1.2, 1.4};
    for (qsizetype i = 0; i < parts.size(); ++i) {
        EXPECT_EQ(parts.at(i).url, folder.url(u"a-part-0%1.mov"_s.arg(i + 1)));
        EXPECT_EQ(parts.at(i).videoCodec, u"h264"_s);
        EXPECT_EQ(parts.at(i).width, 320);
        expectSoundAndLength(parts.at(i), lengths.at(i));
    }
}

TEST_F(SplitMedia, parts_that_begin_at_keyframes_join_to_the_whole_again)
{
    const VideoFile source = x264Film(u"a.mp4"_s);
    params.durationPerPartSeconds = 1.6;
    const QList<VideoFile> parts = partsOf(source);
    ASSERT_EQ(parts.size(), 2);

    const JobPlan plan = CommandBuilder::merge(parts, {}, Clips::tools(), std::nullopt, u"whole"_s);
    ASSERT_EQ(plan.badgeKey, u"merge.badge.copy"_s);
    const VideoFile whole = resultOf(plan);

    EXPECT_NEAR(whole.durationSeconds, source.durationSeconds, 0.1);
    EXPECT_EQ(packetsOf(whole).size(), packetsOf(source).size());
}

TEST_F(SplitMedia, parts_by_number_and_by_size_come_out)
{
    const VideoFile source = x264Film(u"a.mp4"_s);
    params.mode = SplitParams::Mode::byParts;
    params.parts = 4;
    EXPECT_EQ(partsOf(source).size(), 4);

    // Half of the file's own size.
    params.mode = SplitParams::Mode::bySize;
    params.sizePerPartMB = static_cast<double>(source.fileSizeBytes) / 2e6;
    const QList<VideoFile> parts = partsOf(source);
    ASSERT_GE(parts.size(), 2);
    EXPECT_LT(parts.first().fileSizeBytes, source.fileSizeBytes * 3 / 4);
}

TEST_F(SplitMedia, parts_stay_in_their_container)
{
    struct Case {
        QString name;
        QStringList encoding;
        QString container;
    };
    const std::vector<Case> cases{
        {u"a.mkv"_s, {u"-c:v"_s, u"mpeg4"_s, u"-c:a"_s, u"aac"_s}, u"matroska,webm"_s},
        {u"a.avi"_s, {u"-c:v"_s, u"mpeg4"_s, u"-c:a"_s, u"libmp3lame"_s}, u"avi"_s},
        {u"a.TS"_s,
         {u"-c:v"_s, u"libx264"_s, u"-c:a"_s, u"aac"_s, u"-f"_s, u"mpegts"_s},
         u"mpegts"_s},
        {u"a.webm"_s,
         {u"-c:v"_s, u"libvpx"_s, u"-deadline"_s, u"realtime"_s, u"-c:a"_s, u"libopus"_s},
         u"matroska,webm"_s},
    };
    for (const Case &c : cases) {
        const QList<VideoFile> parts = partsOf(film(c.name, c.encoding));
        ASSERT_EQ(parts.size(), 3) << c.name.toStdString();
        for (const VideoFile &part : parts) {
            EXPECT_EQ(part.containerName, c.container);
            EXPECT_TRUE(part.videoCodec);
            EXPECT_EQ(part.audioStreams.size(), 1);
        }
    }
}

TEST_F(SplitMedia, parts_of_other_containers_are_mp4s_where_the_streams_allow_it)
{
    const QList<VideoFile> parts =
        partsOf(film(u"a.flv"_s, {u"-c:v"_s, u"libx264"_s, u"-c:a"_s, u"aac"_s}));
    ASSERT_EQ(parts.size(), 3);
    EXPECT_EQ(parts.first().containerName, u"mov,mp4,m4a,3gp,3g2,mj2"_s);

    const VideoFile recording = madeBy(u"a.wav"_s, toneInput(2));
    EXPECT_THAT(wordsOfFailure(planFor(recording)), HasSubstr("codec pcm_s16le"));
}

TEST_F(SplitMedia, a_recording_is_split_by_its_sound)
{
    const QList<VideoFile> parts = partsOf(madeBy(u"a.m4a"_s, toneInput(3)));
    ASSERT_EQ(parts.size(), 3);
    for (const VideoFile &part : parts) {
        EXPECT_FALSE(part.videoCodec);
        expectSoundAndLength(part, 1);
    }
}

TEST_F(SplitMedia, a_film_without_sound_is_split_by_its_picture)
{
    const VideoFile source = drawn(u"a.mp4"_s, u"testsrc2=size=320x180:rate=25:duration=2"_s,
                                   {u"-pix_fmt"_s, u"yuv420p"_s});
    const QList<VideoFile> parts = partsOf(source);
    ASSERT_EQ(parts.size(), 2);
    EXPECT_EQ(parts.first().videoCodec, u"h264"_s);
    EXPECT_TRUE(parts.first().audioStreams.isEmpty());
}

TEST_F(SplitMedia, all_audio_tracks_come_along_and_subtitles_don_t)
{
    const VideoFile source =
        madeBy(u"much.mkv"_s,
               pictureInput(u"testsrc2=size=320x180:rate=25:duration=2"_s) + toneInput(2) +
                   QStringList{u"-i"_s, subtitles(), u"-map"_s, u"0:v"_s, u"-map"_s, u"1:a"_s,
                               u"-map"_s, u"1:a"_s, u"-map"_s, u"2:s"_s, u"-c:v"_s, u"mpeg4"_s});
    ASSERT_EQ(source.subtitleStreams.size(), 1);

    const QList<VideoFile> parts = partsOf(source);

    ASSERT_EQ(parts.size(), 2);
    EXPECT_EQ(parts.first().audioStreams.size(), 2);
    EXPECT_TRUE(parts.first().subtitleStreams.isEmpty());
}

TEST_F(SplitMedia, a_turned_film_stays_turned)
{
    const VideoFile source = turned(x264Film(u"a.mp4"_s));

    const VideoFile part = partsOf(source).value(1);

    // Turned when it is decoded.
    const VideoFile shown =
        madeBy(u"shown.mkv"_s, {u"-i"_s, part.url.toLocalFile(), u"-c:v"_s, u"mpeg4"_s});
    EXPECT_EQ(shown.width, 180);
    EXPECT_EQ(shown.height, 320);
}

TEST_F(SplitMedia, names_with_quotes_and_blanks_do_no_harm)
{
    const QList<VideoFile> parts = partsOf(x264Film(u"it's a \"film\" %1.mp4"_s));
    ASSERT_EQ(parts.size(), 3);
    EXPECT_EQ(parts.last().url, folder.url(u"it's a \"film\" %1-part-03.mp4"_s));
}
