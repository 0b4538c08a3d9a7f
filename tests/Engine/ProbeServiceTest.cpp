// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ProbeService.h"

#include "support/Clips.h"
#include "support/FakeTool.h"

#include <QFileInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;
using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::EndsWith;

namespace {

const QUrl nowhere = QUrl::fromLocalFile(QStringLiteral("/nowhere/a.mp4"));
const QString decodeFailure = QStringLiteral("probe decode failed: ");

VideoFile parsed(const QString &json)
{
    return ProbeService::parse(json, nowhere);
}

VideoFile parsedFormat(const QString &fields)
{
    return parsed(u"{\"format\": {"_s + fields + u"}}"_s);
}

VideoFile parsedStreams(const QString &streams)
{
    return parsed(u"{\"streams\": ["_s + streams + u"]}"_s);
}

// A video stream with these fields besides the ones that make it one.
VideoFile parsedVideo(const QString &fields)
{
    return parsedStreams(
        uR"({"index": 0, "codec_type": "video", "codec_name": "h264", %1})"_s.arg(fields));
}

// The message of the refusal; empty when the document is taken.
QString refusalOf(const QString &json)
{
    try {
        ProbeService::parse(json, nowhere);
    } catch (const ProbeService::ProbeError &error) {
        EXPECT_EQ(error.errorDescription(), error.message());
        return error.message();
    }
    return {};
}

QString probeFailure(const QUrl &url, const QUrl &ffprobe)
{
    try {
        ProbeService::probe(url, ffprobe);
    } catch (const ProbeService::ProbeError &error) {
        return error.message();
    }
    ADD_FAILURE() << "the probe succeeded";
    return {};
}

// Absent when the question succeeds, for the message itself may be empty.
std::optional<QString> keyframeFailure(const QUrl &url, const QUrl &ffprobe)
{
    try {
        ProbeService::keyframeTimes(url, ffprobe);
    } catch (const ProbeService::ProbeError &error) {
        return error.message();
    }
    return std::nullopt;
}

FakeTool fakeProbe(const TempFolder &folder, const QByteArray &body)
{
    return FakeTool(folder, body, u"ffprobe"_s);
}

} // namespace

TEST(ProbeService, the_whole_document_is_read)
{
    const VideoFile file = parsed(uR"({
        "streams": [
            {"index": 0, "codec_name": "hevc", "codec_type": "video", "width": 3840, "height": 2160,
             "bit_rate": "40000000", "avg_frame_rate": "30000/1001", "pix_fmt": "yuv420p10le",
             "color_transfer": "smpte2084", "disposition": {"default": 1},
             "profile": "Main 10", "level": 153},
            {"index": 1, "codec_name": "aac", "codec_type": "audio", "channels": 6,
             "bit_rate": "384000", "tags": {"language": "deu", "title": "Ton"},
             "disposition": {"default": 1, "forced": 0}},
            {"index": 2, "codec_name": "opus", "codec_type": "audio", "channels": 2},
            {"index": 3, "codec_name": "subrip", "codec_type": "subtitle",
             "tags": {"language": "eng"}},
            {"index": 4, "codec_name": "mov_text", "codec_type": "subtitle"}
        ],
        "format": {"duration": "63.5", "size": "12345678", "bit_rate": "1555000",
                   "format_name": "mov,mp4,m4a,3gp,3g2,mj2", "nb_streams": 5}
    })"_s);

    VideoFile expected;
    expected.id = file.id;
    expected.url = nowhere;
    expected.durationSeconds = 63.5;
    expected.fileSizeBytes = 12'345'678;
    expected.width = 3840;
    expected.height = 2160;
    expected.videoCodec = u"hevc"_s;
    expected.videoBitrateBps = 40'000'000;
    expected.fps = 30000.0 / 1001.0;
    expected.audioStreams = {{1, u"aac"_s, 384'000, 6, u"deu"_s, true},
                             {2, u"opus"_s, std::nullopt, 2, std::nullopt, false}};
    expected.subtitleStreams = {{3, u"subrip"_s, u"eng"_s}, {4, u"mov_text"_s, std::nullopt}};
    expected.containerName = u"mov,mp4,m4a,3gp,3g2,mj2"_s;
    expected.isHDR = true;
    expected.hasAlphaChannel = false;
    EXPECT_EQ(file, expected);
}

TEST(ProbeService, an_empty_document_gives_a_file_of_which_nothing_is_known)
{
    const VideoFile file = parsed(u"{}"_s);

    VideoFile expected;
    expected.id = file.id;
    expected.url = nowhere;
    EXPECT_EQ(file, expected);
    EXPECT_EQ(file.durationSeconds, 0);
    EXPECT_EQ(file.containerName, QString());
    EXPECT_TRUE(file.audioStreams.isEmpty());
}

TEST(ProbeService, each_parse_gives_a_fresh_identity)
{
    EXPECT_NE(parsed(u"{}"_s).id, parsed(u"{}"_s).id);
    EXPECT_FALSE(parsed(u"{}"_s).id.isNull());
}

TEST(ProbeService, null_and_unknown_keys_count_as_absent)
{
    const VideoFile file = parsed(uR"({"chapters": [], "format": {"duration": null, "size": "7",
        "tags": {"language": 5}}, "streams": [{"index": 0, "codec_type": "audio",
        "codec_name": null, "channels": null, "tags": null, "disposition": null, "width": null,
        "new": {}}]})"_s);

    EXPECT_EQ(file.durationSeconds, 0);
    EXPECT_EQ(file.fileSizeBytes, 7);
    EXPECT_EQ(file.audioStreams, (QList<AudioStream>{{0, QString(), std::nullopt, std::nullopt,
                                                      std::nullopt, false}}));
    EXPECT_EQ(parsed(uR"({"format": null, "streams": null})"_s).containerName, QString());
}

TEST(ProbeService, a_stream_without_an_index_refuses_the_whole_document)
{
    const QString message = refusalOf(uR"({"streams": [
        {"index": 0, "codec_type": "video", "codec_name": "h264"},
        {"codec_type": "data"}]})"_s);
    EXPECT_TRUE(message.startsWith(decodeFailure)) << message.toStdString();
    EXPECT_GT(message.size(), decodeFailure.size());
}

TEST(ProbeService, a_value_of_a_wrong_type_refuses_the_whole_document)
{
    const std::vector<QString> documents{
        QString(),
        u"not json"_s,
        u"[]"_s,
        u"null"_s,
        u"{\"format\": {}"_s,
        uR"({"format": []})"_s,
        uR"({"format": "mp4"})"_s,
        uR"({"format": {"duration": 63.5}})"_s,
        uR"({"format": {"size": 12345678}})"_s,
        uR"({"format": {"bit_rate": 1555000}})"_s,
        uR"({"format": {"format_name": true}})"_s,
        uR"({"streams": {}})"_s,
        uR"({"streams": [5]})"_s,
        uR"({"streams": [null]})"_s,
        uR"({"streams": [{"index": null}]})"_s,
        uR"({"streams": [{"index": "0"}]})"_s,
        uR"({"streams": [{"index": 0.5}]})"_s,
        uR"({"streams": [{"index": true}]})"_s,
        uR"({"streams": [{"index": 0, "codec_name": 5}]})"_s,
        uR"({"streams": [{"index": 0, "codec_type": 5}]})"_s,
        uR"({"streams": [{"index": 0, "width": "640"}]})"_s,
        uR"({"streams": [{"index": 0, "height": "480"}]})"_s,
        uR"({"streams": [{"index": 0, "height": 480.5}]})"_s,
        uR"({"streams": [{"index": 0, "height": 1e30}]})"_s,
        uR"({"streams": [{"index": 0, "bit_rate": 128000}]})"_s,
        uR"({"streams": [{"index": 0, "avg_frame_rate": 25}]})"_s,
        uR"({"streams": [{"index": 0, "channels": "2"}]})"_s,
        uR"({"streams": [{"index": 0, "pix_fmt": 5}]})"_s,
        uR"({"streams": [{"index": 0, "color_transfer": 5}]})"_s,
        uR"({"streams": [{"index": 0, "tags": []}]})"_s,
        uR"({"streams": [{"index": 0, "tags": {"language": 5}}]})"_s,
        uR"({"streams": [{"index": 0, "disposition": 1}]})"_s,
        uR"({"streams": [{"index": 0, "disposition": {"default": true}}]})"_s,
        uR"({"streams": [{"index": 0, "disposition": {"default": "1"}}]})"_s,
    };
    for (const QString &document : documents) {
        const QString message = refusalOf(document);
        EXPECT_TRUE(message.startsWith(decodeFailure)) << document.toStdString();
        EXPECT_GT(message.size(), decodeFailure.size()) << document.toStdString();
    }
}

TEST(ProbeService, a_whole_number_may_be_written_with_a_point)
{
    EXPECT_EQ(parsedVideo(uR"("width": 640.0, "height": 4.8e2)"_s).height, 480);
}

TEST(ProbeService, an_unreadable_duration_counts_as_0)
{
    EXPECT_EQ(parsedFormat(uR"("duration": "12.345")"_s).durationSeconds, 12.345);
    for (const QString &text : {u"N/A"_s, QString(), u"1:02"_s, u"12 s"_s}) {
        EXPECT_EQ(parsedFormat(u"\"duration\": \""_s + text + u'"').durationSeconds, 0)
            << text.toStdString();
    }
    EXPECT_EQ(parsedFormat(uR"("size": "5")"_s).durationSeconds, 0);
}

TEST(ProbeService, a_told_size_is_taken_even_when_the_file_has_another)
{
    const TempFolder folder;
    folder.write(u"a.mp4"_s, QByteArray(77, 'x'));

    const VideoFile file =
        ProbeService::parse(uR"({"format": {"size": "9000000000"}})"_s, folder.url(u"a.mp4"_s));

    EXPECT_EQ(file.fileSizeBytes, 9'000'000'000);
}

TEST(ProbeService, a_size_of_0_takes_the_file_system_s)
{
    const TempFolder folder;
    folder.write(u"a.mp4"_s, QByteArray(77, 'x'));

    const VideoFile file =
        ProbeService::parse(uR"({"format": {"size": "0"}})"_s, folder.url(u"a.mp4"_s));

    EXPECT_EQ(file.fileSizeBytes, 77);
}

TEST(ProbeService, an_absent_or_unreadable_size_takes_the_file_system_s)
{
    const TempFolder folder;
    folder.write(u"a %20 b.mp4"_s, QByteArray(77, 'x'));
    for (const QString &document :
         {u"{}"_s, uR"({"format": {}})"_s, uR"({"format": {"size": "N/A"}})"_s,
          uR"({"format": {"size": ""}})"_s, uR"({"format": {"size": "12.5"}})"_s,
          uR"({"format": {"size": "99999999999999999999"}})"_s}) {
        EXPECT_EQ(ProbeService::parse(document, folder.url(u"a %20 b.mp4"_s)).fileSizeBytes, 77)
            << document.toStdString();
    }
}

TEST(ProbeService, the_size_of_a_file_that_isn_t_there_is_0)
{
    EXPECT_EQ(parsed(u"{}"_s).fileSizeBytes, 0);
    EXPECT_EQ(parsedFormat(uR"("size": "0")"_s).fileSizeBytes, 0);
}

TEST(ProbeService, a_file_without_a_video_stream_has_no_picture)
{
    const VideoFile file =
        parsedStreams(uR"({"index": 0, "codec_type": "audio", "codec_name": "mp3", "width": 5})"_s);

    EXPECT_FALSE(file.width);
    EXPECT_FALSE(file.height);
    EXPECT_FALSE(file.videoCodec);
    EXPECT_FALSE(file.fps);
    EXPECT_EQ(file.audioStreams.size(), 1);
}

TEST(ProbeService, cover_art_that_comes_first_is_taken_as_the_video)
{
    const VideoFile file = parsedStreams(uR"(
        {"index": 0, "codec_type": "video", "codec_name": "mjpeg", "width": 600, "height": 500,
         "avg_frame_rate": "0/0", "disposition": {"default": 0, "attached_pic": 1}},
        {"index": 1, "codec_type": "video", "codec_name": "h264", "width": 1920, "height": 1080,
         "avg_frame_rate": "25/1", "bit_rate": "5000", "color_transfer": "smpte2084",
         "pix_fmt": "yuva420p"})"_s);

    EXPECT_EQ(file.videoCodec, u"mjpeg"_s);
    EXPECT_EQ(file.width, 600);
    EXPECT_EQ(file.height, 500);
    EXPECT_EQ(file.fps, std::nullopt);
    EXPECT_EQ(file.videoBitrateBps, std::nullopt);
    EXPECT_FALSE(file.isHDR);
    EXPECT_FALSE(file.hasAlphaChannel);
}

TEST(ProbeService, a_video_stream_without_a_codec_leaves_the_place_to_the_next)
{
    const VideoFile file = parsedStreams(uR"(
        {"index": 0, "codec_type": "video", "width": 600, "height": 500, "bit_rate": "77",
         "avg_frame_rate": "10/1", "color_transfer": "smpte2084", "pix_fmt": "rgba"},
        {"index": 1, "codec_type": "video", "codec_name": "h264", "width": 1920},
        {"index": 2, "codec_type": "video", "codec_name": "vp9", "width": 320, "height": 180})"_s);

    EXPECT_EQ(file.videoCodec, u"h264"_s);
    EXPECT_EQ(file.width, 1920);
    EXPECT_EQ(file.height, std::nullopt);
    EXPECT_EQ(file.videoBitrateBps, std::nullopt);
    EXPECT_EQ(file.fps, std::nullopt);
    EXPECT_FALSE(file.isHDR);
    EXPECT_FALSE(file.hasAlphaChannel);
}

TEST(ProbeService, a_lone_video_stream_without_a_codec_still_tells_its_size)
{
    const VideoFile file =
        parsedStreams(uR"({"index": 0, "codec_type": "video", "width": 600, "height": 500,
             "avg_frame_rate": "10/1"})"_s);

    EXPECT_EQ(file.videoCodec, std::nullopt);
    EXPECT_EQ(file.width, 600);
    EXPECT_EQ(file.height, 500);
    EXPECT_EQ(file.fps, 10);
}

TEST(ProbeService, an_empty_codec_name_is_a_name)
{
    const VideoFile file = parsedStreams(uR"(
        {"index": 0, "codec_type": "video", "codec_name": "", "width": 600},
        {"index": 1, "codec_type": "video", "codec_name": "h264", "width": 1920})"_s);

    EXPECT_EQ(file.videoCodec, QString());
    EXPECT_TRUE(file.videoCodec);
    EXPECT_EQ(file.width, 600);
}

TEST(ProbeService, streams_of_other_kinds_are_passed_over)
{
    const VideoFile file = parsedStreams(uR"(
        {"index": 0, "codec_type": "data", "codec_name": "bin_data", "width": 5},
        {"index": 1, "codec_type": "attachment", "codec_name": "ttf"},
        {"index": 2, "codec_name": "aac"},
        {"index": 3, "codec_type": "Video", "codec_name": "h264"},
        {"index": 4, "codec_type": "AUDIO", "codec_name": "aac"})"_s);

    EXPECT_FALSE(file.videoCodec);
    EXPECT_FALSE(file.width);
    EXPECT_TRUE(file.audioStreams.isEmpty());
    EXPECT_TRUE(file.subtitleStreams.isEmpty());
}

TEST(ProbeService, streams_keep_their_order_and_their_index_in_the_whole_file)
{
    const VideoFile file = parsedStreams(uR"(
        {"index": 7, "codec_type": "audio", "codec_name": "mp3"},
        {"index": 2, "codec_type": "subtitle", "codec_name": "ass"},
        {"index": 5, "codec_type": "audio", "codec_name": "aac"},
        {"index": 1, "codec_type": "subtitle"})"_s);

    EXPECT_EQ(file.audioStreams,
              (QList<AudioStream>{{7, u"mp3"_s, std::nullopt, std::nullopt, std::nullopt, false},
                                  {5, u"aac"_s, std::nullopt, std::nullopt, std::nullopt, false}}));
    EXPECT_EQ(file.subtitleStreams,
              (QList<SubtitleStream>{{2, u"ass"_s, std::nullopt}, {1, QString(), std::nullopt}}));
}

TEST(ProbeService, a_track_is_the_default_when_its_disposition_is_1)
{
    const std::vector<std::pair<QString, bool>> rows{
        {uR"("disposition": {"default": 1})"_s, true},
        {uR"("disposition": {"default": 0})"_s, false},
        {uR"("disposition": {"default": 2})"_s, false},
        {uR"("disposition": {"forced": 1})"_s, false},
        {uR"("disposition": {})"_s, false},
        {uR"("channels": 2)"_s, false},
    };
    for (const auto &[fields, isDefault] : rows) {
        const VideoFile file =
            parsedStreams(uR"({"index": 0, "codec_type": "audio", %1})"_s.arg(fields));
        ASSERT_EQ(file.audioStreams.size(), 1);
        EXPECT_EQ(file.audioStreams.first().isDefault, isDefault) << fields.toStdString();
    }
}

TEST(ProbeService, a_language_is_told_by_the_tags)
{
    const std::vector<std::pair<QString, std::optional<QString>>> rows{
        {uR"("tags": {"language": "eng"})"_s, u"eng"_s},
        {uR"("tags": {"language": ""})"_s, QString()},
        {uR"("tags": {"LANGUAGE": "eng"})"_s, std::nullopt},
        {uR"("tags": {})"_s, std::nullopt},
        {uR"("language": "eng")"_s, std::nullopt},
    };
    for (const auto &[fields, language] : rows) {
        const VideoFile file = parsedStreams(uR"({"index": 0, "codec_type": "audio", %1},
                              {"index": 1, "codec_type": "subtitle", %1})"_s.arg(fields));
        EXPECT_EQ(file.audioStreams.first().language, language) << fields.toStdString();
        EXPECT_EQ(file.subtitleStreams.first().language, language) << fields.toStdString();
    }
}

TEST(ProbeService, an_unreadable_bitrate_is_absent)
{
    EXPECT_EQ(parsedVideo(uR"("bit_rate": "2500000")"_s).videoBitrateBps, 2'500'000);
    EXPECT_EQ(parsedVideo(uR"("bit_rate": "0")"_s).videoBitrateBps, 0);
    for (const QString &text : {u"N/A"_s, QString(), u"2500.5"_s, u"2M"_s}) {
        EXPECT_EQ(parsedVideo(u"\"bit_rate\": \""_s + text + u'"').videoBitrateBps, std::nullopt)
            << text.toStdString();
        const VideoFile file =
            parsedStreams(uR"({"index": 0, "codec_type": "audio", "bit_rate": "%1"})"_s.arg(text));
        EXPECT_EQ(file.audioStreams.first().bitrateBps, std::nullopt) << text.toStdString();
    }
}

TEST(ProbeService, three_transfers_are_hdr_spelled_exactly)
{
    for (const QString &transfer : {u"smpte2084"_s, u"arib-std-b67"_s, u"smpte2084hlg"_s}) {
        EXPECT_TRUE(parsedVideo(u"\"color_transfer\": \""_s + transfer + u'"').isHDR)
            << transfer.toStdString();
    }
    for (const QString &transfer : {u"bt2020nc"_s, u"bt709"_s, u"SMPTE2084"_s, u"smpte2084 "_s,
                                    u"bt2020-10"_s, u"arib-std-b6"_s, QString()}) {
        EXPECT_FALSE(parsedVideo(u"\"color_transfer\": \""_s + transfer + u'"').isHDR)
            << transfer.toStdString();
    }
    EXPECT_FALSE(parsedVideo(uR"("width": 5)"_s).isHDR);
}

TEST(ProbeService, five_families_of_pixel_formats_have_alpha_in_any_case)
{
    for (const QString &format :
         {u"yuva420p"_s, u"YUVA420P"_s, u"yuva444p10le"_s, u"rgba"_s, u"rgba64be"_s, u"RGBA"_s,
          u"argb"_s, u"bgra"_s, u"bgra64le"_s, u"pala"_s, u"pal"_s + u"A8"_s}) {
        EXPECT_TRUE(parsedVideo(u"\"pix_fmt\": \""_s + format + u'"').hasAlphaChannel)
            << format.toStdString();
    }
    for (const QString &format : {u"gbrap"_s, u"yuv420p"_s, u"ya8"_s, u"abgr"_s, u"pal8"_s,
                                  u"rgb24"_s, u"xyuva"_s, u" rgba"_s, QString()}) {
        EXPECT_FALSE(parsedVideo(u"\"pix_fmt\": \""_s + format + u'"').hasAlphaChannel)
            << format.toStdString();
    }
    EXPECT_FALSE(parsedVideo(uR"("width": 5)"_s).hasAlphaChannel);
}

TEST(ProbeService, a_frame_rate_is_a_fraction_or_a_number)
{
    const std::vector<std::pair<std::optional<QString>, std::optional<double>>> rows{
        {std::nullopt, std::nullopt},
        {QString(), std::nullopt},
        {u"0/0"_s, std::nullopt},
        {u"30000/1001"_s, 30000.0 / 1001.0},
        {u"25/1"_s, 25},
        {u"30"_s, 30},
        {u"23.976"_s, 23.976},
        {u"12.5/0.5"_s, 25},
        {u"0/1"_s, 0},
        {u"-30/1"_s, -30},
        // Not a fraction above zero: the whole text doesn't read.
        {u"30/0"_s, std::nullopt},
        {u"30/-1"_s, std::nullopt},
        {u"30/x"_s, std::nullopt},
        {u"x/1"_s, std::nullopt},
        {u"0/00"_s, std::nullopt},
        // Empty pieces are dropped, so these two have two pieces and one.
        {u"30//2/"_s, 15},
        {u"30/"_s, std::nullopt},
        {u"/30"_s, std::nullopt},
        {u"/"_s, std::nullopt},
        {u"60/2/1"_s, std::nullopt},
        {u" 30"_s, std::nullopt},
        {u"fast"_s, std::nullopt},
    };
    for (const auto &[text, rate] : rows) {
        EXPECT_EQ(ProbeService::parseFrameRate(text), rate)
            << text.value_or(u"(absent)"_s).toStdString();
    }
    EXPECT_NEAR(ProbeService::parseFrameRate(u"30000/1001"_s).value(), 29.97, 0.001);
}

TEST(ProbeService, the_frame_rate_of_a_file_is_the_average_one)
{
    EXPECT_EQ(parsedVideo(uR"("r_frame_rate": "50/1", "avg_frame_rate": "24/1")"_s).fps, 24);
    EXPECT_EQ(parsedVideo(uR"("r_frame_rate": "50/1", "avg_frame_rate": "0/0")"_s).fps,
              std::nullopt);
}

TEST(ProbeService, a_probe_asks_ffprobe_for_format_and_streams)
{
    const TempFolder folder;
    const FakeTool ffprobe = fakeProbe(folder, "echo '{\"format\": {\"duration\": \"4.5\"}}'\n");
    const QUrl film = folder.url(u"it's a %20 film?#.mp4"_s);

    const VideoFile file = ProbeService::probe(film, ffprobe.url());

    EXPECT_EQ(file.durationSeconds, 4.5);
    EXPECT_EQ(file.url, film);
    ASSERT_EQ(ffprobe.runs(), 1);
    EXPECT_EQ(ffprobe.arguments(1),
              (QStringList{u"-v"_s, u"error"_s, u"-print_format"_s, u"json"_s, u"-show_format"_s,
                           u"-show_streams"_s, folder.path(u"it's a %20 film?#.mp4"_s)}));
}

TEST(ProbeService, a_probe_takes_the_document_even_when_ffprobe_complains)
{
    const TempFolder folder;
    const FakeTool ffprobe = fakeProbe(folder, "echo 'moov atom looks odd' >&2\necho '{}'\n");

    EXPECT_EQ(ProbeService::probe(nowhere, ffprobe.url()).containerName, QString());
}

TEST(ProbeService, a_failed_probe_tells_the_last_300_characters_of_standard_error)
{
    const TempFolder folder;
    const QByteArray tail(300, 'b');
    const FakeTool ffprobe = fakeProbe(folder, "echo '{}'\nprintf %s '" + QByteArray(100, 'a') +
                                                   tail + "' >&2\nexit 1\n");

    EXPECT_EQ(probeFailure(nowhere, ffprobe.url()), QString::fromLatin1(tail));
}

TEST(ProbeService, a_failed_probe_counts_characters_and_not_bytes)
{
    const TempFolder folder;
    const QString tail = u"é"_s + QString(299, u'片');
    const FakeTool ffprobe =
        fakeProbe(folder, "printf %s '" + (u"x"_s + tail).toUtf8() + "' >&2\nexit 1\n");

    EXPECT_EQ(probeFailure(nowhere, ffprobe.url()), tail);
}

TEST(ProbeService, a_failed_probe_without_a_word_has_one_of_its_own)
{
    const TempFolder folder;
    const FakeTool ffprobe = fakeProbe(folder, "echo '{}'\nexit 3\n");

    EXPECT_EQ(probeFailure(nowhere, ffprobe.url()), u"ffprobe failed"_s);
}

TEST(ProbeService, a_probe_that_prints_nothing_has_failed)
{
    const TempFolder folder;
    const FakeTool silent = fakeProbe(folder, "exit 0\n");
    const FakeTool complaining =
        FakeTool(folder, "printf 'no such thing' >&2\nexit 0\n", u"complaining"_s);

    EXPECT_EQ(probeFailure(nowhere, silent.url()), u"ffprobe failed"_s);
    EXPECT_EQ(probeFailure(nowhere, complaining.url()), u"no such thing"_s);
}

TEST(ProbeService, a_probe_that_prints_rubbish_fails_to_decode)
{
    const TempFolder folder;
    const FakeTool ffprobe = fakeProbe(folder, "echo rubbish\n");

    EXPECT_TRUE(probeFailure(nowhere, ffprobe.url()).startsWith(decodeFailure));
}

TEST(ProbeService, a_probe_whose_output_isn_t_utf_8_has_printed_nothing)
{
    const TempFolder folder;
    const FakeTool ffprobe = fakeProbe(folder, "printf '{\"chapter\": \"\\377\"}'\n");

    EXPECT_EQ(probeFailure(nowhere, ffprobe.url()), u"ffprobe failed"_s);
}

TEST(ProbeService, a_missing_ffprobe_is_a_failure_with_the_system_s_words)
{
    const TempFolder folder;
    const QString message = probeFailure(nowhere, folder.url(u"none"_s));

    EXPECT_FALSE(message.isEmpty());
    EXPECT_NE(message, u"ffprobe failed"_s);
    EXPECT_EQ(keyframeFailure(nowhere, folder.url(u"none"_s)), message);
}

TEST(ProbeService, keyframe_times_are_asked_of_the_first_video_stream_s_keyframes_only)
{
    const TempFolder folder;
    const FakeTool ffprobe = fakeProbe(folder, "printf '0.000000\\n2.002000\\n'\n");

    const QList<double> times =
        ProbeService::keyframeTimes(folder.url(u"a %20 b.mp4"_s), ffprobe.url());

    EXPECT_EQ(times, (QList<double>{0, 2.002}));
    ASSERT_EQ(ffprobe.runs(), 1);
    EXPECT_EQ(ffprobe.arguments(1),
              (QStringList{u"-v"_s, u"error"_s, u"-select_streams"_s, u"v:0"_s, u"-skip_frame"_s,
                           u"nokey"_s, u"-show_entries"_s, u"frame=pts_time"_s, u"-of"_s,
                           u"csv=p=0"_s, folder.path(u"a %20 b.mp4"_s)}));
}

TEST(ProbeService, keyframe_lines_that_don_t_read_are_passed_over)
{
    const TempFolder folder;
    const FakeTool ffprobe =
        fakeProbe(folder, "printf 'N/A\\n\\n \\t1.5\\t \\n2.0,\\n2.5\\r\\nframe\\n3'\n");

    EXPECT_EQ(ProbeService::keyframeTimes(nowhere, ffprobe.url()), (QList<double>{1.5, 3}));
}

TEST(ProbeService, keyframe_times_stay_in_ffprobe_s_order)
{
    const TempFolder folder;
    const FakeTool ffprobe = fakeProbe(folder, "printf '3.0\\n-0.08\\n2.0\\n2.0\\n'\n");

    EXPECT_EQ(ProbeService::keyframeTimes(nowhere, ffprobe.url()), (QList<double>{3, -0.08, 2, 2}));
}

TEST(ProbeService, no_keyframe_at_all_is_an_empty_list)
{
    const TempFolder folder;
    const FakeTool ffprobe = fakeProbe(folder, "exit 0\n");

    EXPECT_EQ(ProbeService::keyframeTimes(nowhere, ffprobe.url()), QList<double>());
}

TEST(ProbeService, failed_keyframes_tell_the_last_200_characters_of_standard_error)
{
    const TempFolder folder;
    const QByteArray tail(200, 'b');
    const FakeTool ffprobe = fakeProbe(folder, "echo 1.0\nprintf %s '" + QByteArray(100, 'a') +
                                                   tail + "' >&2\nexit 1\n");

    EXPECT_EQ(keyframeFailure(nowhere, ffprobe.url()), QString::fromLatin1(tail));
}

TEST(ProbeService, failed_keyframes_without_a_word_have_an_empty_message)
{
    const TempFolder folder;
    const FakeTool ffprobe = fakeProbe(folder, "exit 1\n");

    EXPECT_EQ(keyframeFailure(nowhere, ffprobe.url()), QString());
}

TEST(ProbeService, a_real_film_is_probed)
{
    const TempFolder folder;
    const QString path = folder.path(u"a %20 film?#.mp4"_s);
    Clips::make(path, {});

    const VideoFile file =
        ProbeService::probe(QUrl::fromLocalFile(path), Clips::tools().ffprobeURL);

    EXPECT_EQ(file.url, QUrl::fromLocalFile(path));
    EXPECT_NEAR(file.durationSeconds, 2, 0.1);
    EXPECT_EQ(file.fileSizeBytes, QFileInfo(path).size());
    EXPECT_EQ(file.width, 320);
    EXPECT_EQ(file.height, 180);
    EXPECT_EQ(file.videoCodec, u"h264"_s);
    EXPECT_EQ(file.fps, 25);
    EXPECT_GT(file.videoBitrateBps.value_or(0), 10'000);
    ASSERT_EQ(file.audioStreams.size(), 1);
    EXPECT_EQ(file.audioStreams.first().index, 1);
    EXPECT_EQ(file.audioStreams.first().codec, u"aac"_s);
    EXPECT_EQ(file.audioStreams.first().channels, 1);
    EXPECT_TRUE(file.audioStreams.first().isDefault);
    EXPECT_TRUE(file.subtitleStreams.isEmpty());
    EXPECT_EQ(file.containerName, u"mov,mp4,m4a,3gp,3g2,mj2"_s);
    EXPECT_FALSE(file.isHDR);
    EXPECT_FALSE(file.hasAlphaChannel);
}

TEST(ProbeService, real_languages_and_subtitles_are_probed)
{
    const TempFolder folder;
    const QString words = folder.write(u"a.srt"_s, "1\n00:00:00,000 --> 00:00:01,000\nHello\n");
    const QString path = folder.path(u"a.mkv"_s);
    Clips::ffmpeg({u"-f"_s,
                   u"lavfi"_s,
                   u"-i"_s,
                   u"sine=duration=1"_s,
                   u"-i"_s,
                   words,
                   u"-map"_s,
                   u"0:a"_s,
                   u"-map"_s,
                   u"0:a"_s,
                   u"-map"_s,
                   u"1:s"_s,
                   u"-c:a"_s,
                   u"aac"_s,
                   u"-c:s"_s,
                   u"srt"_s,
                   u"-metadata:s:a:0"_s,
                   u"language=ger"_s,
                   u"-metadata:s:s:0"_s,
                   u"language=fre"_s,
                   u"-disposition:a:0"_s,
                   u"0"_s,
                   u"-disposition:a:1"_s,
                   u"default"_s,
                   path});

    const VideoFile file = Clips::probe(path);

    EXPECT_FALSE(file.videoCodec);
    ASSERT_EQ(file.audioStreams.size(), 2);
    EXPECT_EQ(file.audioStreams.first().language, u"ger"_s);
    EXPECT_FALSE(file.audioStreams.first().isDefault);
    EXPECT_EQ(file.audioStreams.last().language, std::nullopt);
    EXPECT_TRUE(file.audioStreams.last().isDefault);
    EXPECT_EQ(file.subtitleStreams, (QList<SubtitleStream>{{2, u"subrip"_s, u"fre"_s}}));
    EXPECT_EQ(file.containerName, u"matroska,webm"_s);
}

TEST(ProbeService, real_hdr_and_alpha_are_probed)
{
    const TempFolder folder;
    const QStringList picture{u"-f"_s, u"lavfi"_s, u"-i"_s,
                              u"testsrc2=size=64x64:rate=5:duration=0.4"_s};
    Clips::ffmpeg(picture + QStringList{u"-c:v"_s, u"libx264"_s, u"-pix_fmt"_s, u"yuv420p"_s,
                                        u"-color_trc"_s, u"smpte2084"_s,
                                        folder.path(u"hdr.mp4"_s)});
    Clips::ffmpeg(picture + QStringList{u"-c:v"_s, u"qtrle"_s, u"-pix_fmt"_s, u"argb"_s,
                                        folder.path(u"alpha.mov"_s)});

    const VideoFile hdr = Clips::probe(folder.path(u"hdr.mp4"_s));
    const VideoFile alpha = Clips::probe(folder.path(u"alpha.mov"_s));

    EXPECT_TRUE(hdr.isHDR);
    EXPECT_FALSE(hdr.hasAlphaChannel);
    EXPECT_FALSE(alpha.isHDR);
    EXPECT_TRUE(alpha.hasAlphaChannel);
}

TEST(ProbeService, a_real_file_that_is_no_film_is_refused_in_ffprobe_s_words)
{
    const TempFolder folder;
    const QString path = folder.write(u"a.mp4"_s, "This is no film at all.");
    const QUrl url = QUrl::fromLocalFile(path);

    EXPECT_TRUE(probeFailure(url, Clips::tools().ffprobeURL).contains(path));
    EXPECT_TRUE(keyframeFailure(url, Clips::tools().ffprobeURL).value_or(QString()).contains(path));
}

TEST(ProbeService, a_real_file_that_isn_t_there_is_refused_in_ffprobe_s_words)
{
    EXPECT_THAT(probeFailure(nowhere, Clips::tools().ffprobeURL).trimmed().toStdString(),
                EndsWith("No such file or directory"));
}

TEST(ProbeService, a_real_film_tells_its_keyframes)
{
    const TempFolder folder;
    const QString path = folder.path(u"a.mp4"_s);
    Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, u"testsrc2=size=64x64:rate=25:duration=3"_s,
                   u"-c:v"_s, u"mpeg4"_s, u"-g"_s, u"25"_s, u"-sc_threshold"_s, u"1000000000"_s,
                   path});

    const QList<double> times =
        ProbeService::keyframeTimes(QUrl::fromLocalFile(path), Clips::tools().ffprobeURL);

    EXPECT_THAT(times,
                ElementsAre(DoubleNear(0, 0.001), DoubleNear(1, 0.001), DoubleNear(2, 0.001)));
}

// The first frame of such a film has a note of its encoder along; ffprobe may then print its time
// with a comma behind, which doesn't read.
TEST(ProbeService, an_x264_film_tells_the_keyframes_behind_the_first)
{
    const TempFolder folder;
    Clips::make(folder.path(u"a.mp4"_s), {.size = u"64x64"_s,
                                          .framesPerSecond = 25,
                                          .seconds = 3,
                                          .noise = 0,
                                          .hasAudio = false,
                                          .videoBitrate = u"200k"_s});

    QList<double> times =
        ProbeService::keyframeTimes(folder.url(u"a.mp4"_s), Clips::tools().ffprobeURL);

    times.removeOne(0.0);
    EXPECT_THAT(times, ElementsAre(DoubleNear(1, 0.001), DoubleNear(2, 0.001)));
}

TEST(ProbeService, a_real_recording_has_no_keyframes)
{
    const TempFolder folder;
    const QString path = folder.path(u"a.wav"_s);
    Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=0.5"_s, path});

    EXPECT_EQ(ProbeService::keyframeTimes(QUrl::fromLocalFile(path), Clips::tools().ffprobeURL),
              QList<double>());
}
