// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/FilmContents.h"
#include "support/MediaFixture.h"

#include <QFileInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

using AudioFormat = ConvertParams::AudioFormat;

class ConvertMedia : public MediaFixture
{
protected:
    // One second of H.264 with one mono AAC track.
    VideoFile film(const QString &name = u"a.mp4"_s)
    {
        return MediaFixture::film(name, {.size = u"320x180"_s,
                                         .framesPerSecond = 25,
                                         .seconds = 1,
                                         .noise = 0,
                                         .hasAudio = true,
                                         .videoBitrate = u"500k"_s});
    }

    // A picture and a tone by the given encoders.
    VideoFile encodedBy(const QString &name, const QStringList &codecArgs)
    {
        return madeBy(name, pictureInput() + toneInput() + codecArgs);
    }

    VideoFile filmWithSubtitles()
    {
        return madeBy(u"subtitled.mkv"_s,
                      pictureInput() + toneInput() +
                          QStringList{u"-i"_s, subtitles(), u"-c:v"_s, u"libx264"_s, u"-c:a"_s,
                                      u"aac"_s, u"-c:s"_s, u"subrip"_s});
    }

    // Text subtitles and a bitmap track beside them: a composition without an object, twice.
    VideoFile filmWithBitmapSubtitles()
    {
        filmWithSubtitles();
        const QByteArray composition = QByteArray::fromHex("0140 00b4 10 0000 80 00 00 00");
        QByteArray segments;
        for (const char *time : {"00002328", "0000afc8"}) {
            const QByteArray head = "PG" + QByteArray::fromHex(time) + QByteArray(4, '\0');
            segments += head + QByteArray::fromHex("16 000b") + composition;
            segments += head + QByteArray::fromHex("80 0000");
        }
        const QString bitmaps = folder.write(u"a.sup"_s, segments);
        return madeBy(u"bitmaps.mkv"_s, {u"-i"_s, folder.path(u"subtitled.mkv"_s), u"-i"_s, bitmaps,
                                         u"-map"_s, u"0"_s, u"-map"_s, u"1"_s, u"-c"_s, u"copy"_s});
    }

    void cropSquare()
    {
        params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};
    }

    JobPlan planFor(const VideoFile &file) const
    {
        return CommandBuilder::convert(file, params, Clips::tools(), std::nullopt, std::nullopt);
    }

    // Converts the film and gives what came out, after the checks that hold for every outcome.
    VideoFile converted(const VideoFile &file, const QString &grade)
    {
        const JobPlan plan = planFor(file);
        EXPECT_EQ(plan.badgeKey, u"convert.badge."_s + grade);

        const VideoFile result = resultOf(plan);
        EXPECT_TRUE(result.url.path().endsWith(u'.' + rawValue(params.container)));
        EXPECT_THAT(result.containerName.toStdString(), HasSubstr(muxerName()));
        return result;
    }

    std::string refusalOf(const VideoFile &file) { return wordsOfFailure(planFor(file)); }

    std::string muxerName() const
    {
        const bool isMatroska = params.container == OutputContainer::mkv;
        return isMatroska ? "matroska" : rawValue(params.container).toStdString();
    }

    ConvertParams params;
};

QStringList subtitleCodecs(const VideoFile &file)
{
    QStringList codecs;
    for (const SubtitleStream &stream : file.subtitleStreams) {
        codecs += stream.codec;
    }
    return codecs;
}

} // namespace

TEST_F(ConvertMedia, a_film_goes_from_container_to_container_untouched)
{
    const VideoFile source = film();
    for (const OutputContainer container :
         {OutputContainer::mov, OutputContainer::mkv, OutputContainer::mp4}) {
        params.container = container;
        const VideoFile result = converted(source, u"remux"_s);
        expectStreams(result, u"h264"_s, {u"aac"_s});
        EXPECT_EQ(result.fps, 25);
    }
    EXPECT_EQ(Clips::probe(folder.path(u"a-MP4.mp4"_s)).videoBitrateBps, source.videoBitrateBps);
}

TEST_F(ConvertMedia, a_transport_stream_goes_into_an_mp4_untouched)
{
    expectStreams(converted(film(u"a.ts"_s), u"remux"_s), u"h264"_s, {u"aac"_s});
}

TEST_F(ConvertMedia, mpeg4_and_mp3_go_into_an_avi_untouched)
{
    params.container = OutputContainer::avi;
    const VideoFile source =
        encodedBy(u"a.mkv"_s, {u"-c:v"_s, u"mpeg4"_s, u"-c:a"_s, u"libmp3lame"_s});

    expectStreams(converted(source, u"remux"_s), u"mpeg4"_s, {u"mp3"_s});
}

TEST_F(ConvertMedia, vp8_and_vorbis_go_into_a_webm_untouched)
{
    params.container = OutputContainer::webm;
    const VideoFile source =
        encodedBy(u"a.mkv"_s, {u"-c:v"_s, u"libvpx"_s, u"-b:v"_s, u"300k"_s, u"-deadline"_s,
                               u"realtime"_s, u"-c:a"_s, u"libvorbis"_s});

    expectStreams(converted(source, u"remux"_s), u"vp8"_s, {u"vorbis"_s});
}

TEST_F(ConvertMedia, all_audio_tracks_are_copied)
{
    expectStreams(converted(filmWithTwoTracks(), u"remux"_s), u"h264"_s, {u"aac"_s, u"aac"_s});
}

TEST_F(ConvertMedia, all_audio_tracks_are_encoded_beside_a_copied_picture)
{
    params.audioFormat = AudioFormat::mp3;
    expectStreams(converted(filmWithTwoTracks(), u"partial"_s), u"h264"_s, {u"mp3"_s, u"mp3"_s});
}

TEST_F(ConvertMedia, a_silent_film_stays_silent)
{
    params.container = OutputContainer::mkv;
    expectStreams(converted(silentFilm(u"320x180"_s), u"remux"_s), u"ffv1"_s, {});
}

TEST_F(ConvertMedia, text_subtitles_come_along_in_every_container_that_takes_them)
{
    const VideoFile source = filmWithSubtitles();
    const std::vector<std::pair<OutputContainer, QStringList>> rows{
        {OutputContainer::mp4, {u"mov_text"_s}},
        {OutputContainer::mov, {u"mov_text"_s}},
        {OutputContainer::mkv, {u"subrip"_s}},
    };
    for (const auto &[container, codecs] : rows) {
        for (const bool forceReencode : {false, true}) {
            params.container = container;
            params.forceReencode = forceReencode;
            const VideoFile result = converted(source, forceReencode ? u"reencode"_s : u"remux"_s);
            EXPECT_EQ(subtitleCodecs(result), codecs);
        }
    }
}

TEST_F(ConvertMedia, one_bitmap_track_takes_all_subtitles_from_an_mp4_and_none_from_an_mkv)
{
    const VideoFile source = filmWithBitmapSubtitles();
    const QStringList both{u"subrip"_s, u"hdmv_pgs_subtitle"_s};
    ASSERT_EQ(subtitleCodecs(source), both);

    EXPECT_EQ(subtitleCodecs(converted(source, u"remux"_s)), QStringList());

    params.container = OutputContainer::mkv;
    EXPECT_EQ(subtitleCodecs(converted(source, u"remux"_s)), both);
}

TEST_F(ConvertMedia, the_subtitles_of_an_mp4_are_refused_by_an_mkv)
{
    filmWithSubtitles();
    const VideoFile source = madeBy(u"a.mp4"_s, {u"-i"_s, folder.path(u"subtitled.mkv"_s), u"-c"_s,
                                                 u"copy"_s, u"-c:s"_s, u"mov_text"_s});
    ASSERT_EQ(subtitleCodecs(source), QStringList{u"mov_text"_s});
    params.container = OutputContainer::mkv;

    EXPECT_THAT(refusalOf(source), HasSubstr("Subtitle codec 94213"));
}

TEST_F(ConvertMedia, each_audio_format_lands_where_the_container_has_it)
{
    struct Case {
        OutputContainer container;
        AudioFormat format;
        QString codec;
    };
    const std::vector<Case> cases{
        {OutputContainer::mov, AudioFormat::wav, u"pcm_s16le"_s},
        {OutputContainer::mkv, AudioFormat::wav, u"pcm_s16le"_s},
        {OutputContainer::avi, AudioFormat::wav, u"pcm_s16le"_s},
        {OutputContainer::mp4, AudioFormat::mp3, u"mp3"_s},
        {OutputContainer::avi, AudioFormat::mp3, u"mp3"_s},
        {OutputContainer::mkv, AudioFormat::flac, u"flac"_s},
        {OutputContainer::mp4, AudioFormat::flac, u"aac"_s},
        {OutputContainer::avi, AudioFormat::flac, u"aac"_s},
        {OutputContainer::avi, AudioFormat::keep, u"aac"_s},
        {OutputContainer::avi, AudioFormat::aac, u"aac"_s},
    };
    const VideoFile source = film();
    for (const Case &c : cases) {
        params.container = c.container;
        params.audioFormat = c.format;
        expectStreams(converted(source, u"partial"_s), u"h264"_s, {c.codec});
    }
}

TEST_F(ConvertMedia, aac_in_a_webm_is_turned_into_opus)
{
    params.container = OutputContainer::webm;
    const VideoFile source =
        encodedBy(u"a.mkv"_s, {u"-c:v"_s, u"libvpx"_s, u"-b:v"_s, u"300k"_s, u"-deadline"_s,
                               u"realtime"_s, u"-c:a"_s, u"aac"_s});

    expectStreams(converted(source, u"partial"_s), u"vp8"_s, {u"opus"_s});
}

TEST_F(ConvertMedia, audio_that_the_container_can_t_hold_is_refused)
{
    params.audioFormat = AudioFormat::wav;
    EXPECT_THAT(refusalOf(film()), HasSubstr("Could not find tag for codec pcm_s16le"));

    // AVI's table has no AAC, so opus is written for it, which AVI lacks just as well.
    params.container = OutputContainer::avi;
    params.audioFormat = AudioFormat::aac;
    const VideoFile source =
        encodedBy(u"mp3.mkv"_s, {u"-c:v"_s, u"mpeg4"_s, u"-c:a"_s, u"libmp3lame"_s});
    EXPECT_THAT(refusalOf(source), HasSubstr("Could not write header"));
}

TEST_F(ConvertMedia, a_chosen_audio_rate_is_encoded_with_the_gain)
{
    const VideoFile source = film();
    params.advanced.audioBitrateKbps = 48;
    params.advanced.volumeDb = -6;

    const VideoFile result = converted(source, u"partial"_s);

    expectStreams(result, u"h264"_s, {u"aac"_s});
    EXPECT_NEAR(static_cast<double>(result.audioStreams.first().bitrateBps.value_or(0)), 48'000,
                8'000);
}

TEST_F(ConvertMedia, a_gain_over_copied_sound_is_refused)
{
    params.advanced.volumeDb = 3;
    EXPECT_THAT(refusalOf(film()), HasSubstr("Filtering and streamcopy cannot be used together"));
}

TEST_F(ConvertMedia, a_copied_picture_takes_no_notice_of_crop_codec_and_frame_rate_cap)
{
    cropSquare();
    params.advanced.codec = CodecChoice::softwareX264;
    params.advanced.crf = 40;
    params.advanced.fpsCap = 10;
    const VideoFile source = film();

    const VideoFile result = converted(source, u"partial"_s);

    expectStreams(result, u"h264"_s, {u"aac"_s});
    EXPECT_EQ(result.fps, 25);
    EXPECT_EQ(result.videoBitrateBps, source.videoBitrateBps);
}

TEST_F(ConvertMedia, a_forced_encode_crops_caps_the_frame_rate_and_is_silent)
{
    cropSquare();
    params.forceReencode = true;
    params.advanced.codec = CodecChoice::softwareX264;
    params.advanced.crf = 30;
    params.advanced.fpsCap = 10;

    const VideoFile result = converted(film(), u"reencode"_s);

    EXPECT_EQ(result.videoCodec, u"h264"_s);
    EXPECT_EQ(result.width, 180);
    EXPECT_EQ(result.height, 180);
    EXPECT_EQ(result.fps, 10);
    EXPECT_TRUE(result.audioStreams.isEmpty());
}

TEST_F(ConvertMedia, a_film_becomes_a_silent_webm)
{
    params.container = OutputContainer::webm;
    expectStreams(converted(film(), u"reencode"_s), u"vp9"_s, {});
}

TEST_F(ConvertMedia, a_film_that_doesn_t_fit_an_avi_is_encoded)
{
    params.container = OutputContainer::avi;
    const VideoFile source = encodedBy(u"a.mkv"_s, {u"-c:v"_s, u"ffv1"_s, u"-c:a"_s, u"flac"_s});
    expectStreams(converted(source, u"reencode"_s), u"h264"_s, {});
}

TEST_F(ConvertMedia, replacement_audio_takes_the_place_of_the_source_s_in_both_grades)
{
    const VideoFile source = film();
    ASSERT_EQ(source.audioStreams.first().channels, 1);
    params.advanced.replacementAudioURL = stereoWav(3);
    for (const bool forceReencode : {false, true}) {
        params.forceReencode = forceReencode;
        const VideoFile result = converted(source, forceReencode ? u"reencode"_s : u"partial"_s);
        EXPECT_EQ(audioCodecs(result), QStringList{u"aac"_s});
        EXPECT_EQ(result.audioStreams.first().channels, 2);
        EXPECT_EQ(result.videoCodec, u"h264"_s);
    }
}

TEST_F(ConvertMedia, a_replacement_goes_into_a_webm_by_its_own_encoder)
{
    params.container = OutputContainer::webm;
    params.advanced.replacementAudioURL = stereoWav(1);
    expectStreams(converted(film(), u"reencode"_s), u"vp9"_s, {u"opus"_s});
}

TEST_F(ConvertMedia, a_replacement_beside_a_copied_picture_is_aac_and_refused_by_a_webm)
{
    params.container = OutputContainer::webm;
    params.advanced.replacementAudioURL = stereoWav(1);
    const VideoFile source = encodedBy(
        u"a.mkv"_s, {u"-c:v"_s, u"libvpx"_s, u"-b:v"_s, u"300k"_s, u"-deadline"_s, u"realtime"_s});
    EXPECT_THAT(refusalOf(source),
                HasSubstr("Only VP8 or VP9 or AV1 video and Vorbis or Opus audio"));
}

TEST_F(ConvertMedia, a_replacement_that_is_no_audio_is_refused)
{
    const VideoFile source = film();
    params.advanced.replacementAudioURL =
        QUrl::fromLocalFile(folder.write(u"b.txt"_s, "no music at all"));
    EXPECT_THAT(refusalOf(source), HasSubstr("Invalid data found when processing input"));

    params.advanced.replacementAudioURL = silentFilm(u"320x180"_s).url;
    EXPECT_THAT(refusalOf(source), HasSubstr("Stream map '1:a:0' matches no streams"));

    params.advanced.replacementAudioURL = folder.url(u"none.m4a"_s);
    EXPECT_THAT(refusalOf(source), HasSubstr("No such file or directory"));
}

TEST_F(ConvertMedia, extra_arguments_that_are_rubbish_are_refused)
{
    const VideoFile source = film();
    params.advanced.extraArgs = u"-nonsense 1"_s;
    EXPECT_THAT(refusalOf(source), HasSubstr("Unrecognized option 'nonsense'"));
}

TEST_F(ConvertMedia, a_recording_keeps_its_sound)
{
    const VideoFile source = madeBy(u"a.wav"_s, toneInput());
    ASSERT_FALSE(source.videoCodec);
    const std::vector<std::pair<OutputContainer, QString>> rows{
        {OutputContainer::mp4, u"aac"_s},       {OutputContainer::mov, u"pcm_s16le"_s},
        {OutputContainer::webm, u"opus"_s},     {OutputContainer::mkv, u"pcm_s16le"_s},
        {OutputContainer::avi, u"pcm_s16le"_s},
    };
    for (const auto &[container, codec] : rows) {
        params.container = container;
        const VideoFile result = converted(source, u"reencode"_s);
        EXPECT_FALSE(result.videoCodec);
        EXPECT_EQ(audioCodecs(result), QStringList{codec});
        EXPECT_NEAR(result.durationSeconds, 1, 0.1);
    }
}

TEST_F(ConvertMedia, hdr_is_passed_through_by_hevc)
{
    const VideoFile source = hdrFilm();
    ASSERT_TRUE(source.isHDR);
    params.forceReencode = true;
    params.advanced.codec = CodecChoice::hevcVideoToolbox;
    params.advanced.hdrPassthrough = true;

    const VideoFile result = converted(source, u"reencode"_s);

    expectStreams(result, u"hevc"_s, {});
    EXPECT_TRUE(result.isHDR);
}

TEST_F(ConvertMedia, alpha_is_kept_by_prores_in_a_mov)
{
    const VideoFile source = alphaFilm();
    ASSERT_TRUE(source.hasAlphaChannel);
    params.container = OutputContainer::mov;
    params.forceReencode = true;
    params.advanced.codec = CodecChoice::proresVideoToolbox;
    params.advanced.preserveAlpha = true;

    const VideoFile result = converted(source, u"reencode"_s);

    expectStreams(result, u"prores"_s, {});
    EXPECT_TRUE(result.hasAlphaChannel);
}

TEST_F(ConvertMedia, prores_is_refused_by_an_mp4)
{
    const VideoFile source = film();
    params.forceReencode = true;
    params.advanced.codec = CodecChoice::proresVideoToolbox;
    EXPECT_THAT(refusalOf(source), HasSubstr("Could not find tag for codec prores"));
}

TEST_F(ConvertMedia, an_odd_width_is_made_even_and_an_odd_height_is_refused)
{
    const VideoFile result = converted(silentFilm(u"321x180"_s), u"reencode"_s);
    EXPECT_EQ(result.width.value_or(1) % 2, 0);
    EXPECT_EQ(result.height, 180);

    EXPECT_THAT(refusalOf(silentFilm(u"320x181"_s)), HasSubstr("height not divisible by 2"));
}

// ffmpeg turns the picture before the filters, while a crop is reckoned from the stored size.
TEST_F(ConvertMedia, a_turned_film_is_encoded_upright_and_a_crop_as_wide_as_it_is_stored_refused)
{
    const VideoFile source = turned(film());
    ASSERT_EQ(source.width, 320);
    params.forceReencode = true;

    const VideoFile result = converted(source, u"reencode"_s);
    EXPECT_EQ(result.width, 180);
    EXPECT_EQ(result.height, 320);

    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio16x9, std::nullopt, std::nullopt};
    EXPECT_THAT(refusalOf(source), HasSubstr("Invalid too big or non positive size for width"));
}

TEST_F(ConvertMedia, the_source_is_never_overwritten)
{
    const VideoFile source = film();
    const QByteArray before = contentOf(folder.path(u"a.mp4"_s));

    const JobPlan plan =
        CommandBuilder::convert(source, params, Clips::tools(), std::nullopt, u"{name}"_s);
    run(plan);

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"a 2.mp4"_s)});
    EXPECT_EQ(contentOf(folder.path(u"a.mp4"_s)), before);
    EXPECT_TRUE(QFileInfo::exists(folder.path(u"a 2.mp4"_s)));
}
