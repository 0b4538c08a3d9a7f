// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "Engine/CommandBuilder/BuilderError.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using AudioFormat = ConvertParams::AudioFormat;

/// A case before it is planned: ten seconds of H.264 at four megabits with one AAC track, to be an
/// MP4, on a build that has x264 and VP9.
struct Given {
    VideoFile file;
    ConvertParams params;
    FFmpegToolset toolset;

    Given()
    {
        file.url = QUrl::fromLocalFile(u"/films/a.mts"_s);
        file.durationSeconds = 10;
        file.fileSizeBytes = 6'000'000;
        file.videoCodec = u"h264"_s;
        file.width = 1280;
        file.height = 720;
        file.videoBitrateBps = 4'000'000;
        sound({u"aac"_s});
        toolset.encoders = {u"libx264"_s, u"libvpx-vp9"_s};
    }

    void sound(const QStringList &codecs)
    {
        file.audioStreams.clear();
        for (const QString &codec : codecs) {
            AudioStream stream;
            stream.codec = codec;
            file.audioStreams.append(stream);
        }
    }

    void subtitles(const QStringList &codecs)
    {
        for (const QString &codec : codecs) {
            SubtitleStream stream;
            stream.codec = codec;
            file.subtitleStreams.append(stream);
        }
    }

    void dropVideo()
    {
        file.videoCodec.reset();
        file.width.reset();
        file.height.reset();
        file.videoBitrateBps.reset();
    }

    // What a WebM takes by copy.
    void vp9AndOpus()
    {
        file.videoCodec = u"vp9"_s;
        sound({u"opus"_s});
    }

    void replaceAudio()
    {
        params.advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/b.m4a"_s);
    }

    void cropSquare()
    {
        params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};
    }

    JobPlan plan() const
    {
        return CommandBuilder::convert(file, params, toolset, std::nullopt, std::nullopt);
    }

    QStringList args() const { return plan().steps.first().args; }
};

using Change = std::function<void(Given &)>;

/// One case, named by what the command line does, with its line behind the common head.
struct Row {
    const char *name;
    Change change;
    const char *line;
};

// What GoogleTest shows of a row.
void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

Given given(const Change &change)
{
    Given result;
    change(result);
    return result;
}

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

QStringList commandLine(const char *tail)
{
    return words("-hide_banner -nostdin -loglevel error -progress pipe:1 -nostats -y") +
           words(tail);
}

// The value behind the option; empty when it isn't there.
QString valueOf(const QStringList &args, const QString &option)
{
    const qsizetype position = args.indexOf(option);
    return position < 0 ? QString() : args.value(position + 1);
}

bool contains(const QStringList &args, const char *part)
{
    return (u' ' + args.join(u' ') + u' ').contains(u' ' + QString::fromUtf8(part) + u' ');
}

void expectPlan(const Row &row, const QString &badgeKey)
{
    const JobPlan plan = given(row.change).plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().args, commandLine(row.line));
    EXPECT_EQ(plan.badgeKey, badgeKey);
}

class ConvertRemux : public ::testing::TestWithParam<Row>
{
};

class ConvertPartial : public ::testing::TestWithParam<Row>
{
};

class ConvertReencode : public ::testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(ConvertRemux, is_laid_out)
{
    expectPlan(GetParam(), u"convert.badge.remux"_s);
}

TEST_P(ConvertPartial, is_laid_out)
{
    expectPlan(GetParam(), u"convert.badge.partial"_s);
}

TEST_P(ConvertReencode, is_laid_out)
{
    expectPlan(GetParam(), u"convert.badge.reencode"_s);
}

static const std::vector<Row> remuxContainerRows{
    {"to_mp4", [](Given &) {},
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"to_mov", [](Given &g) { g.params.container = OutputContainer::mov; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MOV.mov"},
    {"to_mkv_with_whatever_subtitles_there_are",
     [](Given &g) { g.params.container = OutputContainer::mkv; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -map 0:s? -c:s copy /films/a-MKV.mkv"},
    {"to_webm",
     [](Given &g) {
         g.params.container = OutputContainer::webm;
         g.vp9AndOpus();
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy /films/a-WEBM.webm"},
    {"to_avi",
     [](Given &g) {
         g.params.container = OutputContainer::avi;
         g.sound({u"mp3"_s});
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy /films/a-AVI.avi"},
};

static const std::vector<Row> remuxStreamRows{
    {"of_a_silent_film_maps_no_sound", [](Given &g) { g.sound({}); },
     "-i /films/a.mts -map 0:v:0 -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"goes_by_the_first_audio_track_alone",
     [](Given &g) {
         g.sound({u"aac"_s, u"opus"_s});
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"takes_sound_of_unknown_codec", [](Given &g) { g.sound({QString()}); },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"takes_no_notice_of_the_case_of_codec_names",
     [](Given &g) {
         g.file.videoCodec = u"H264"_s;
         g.sound({u"AAC"_s});
         g.params.audioFormat = AudioFormat::aac;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"of_unknown_width_maps_no_picture_and_no_subtitles",
     [](Given &g) {
         g.file.width.reset();
         g.subtitles({u"subrip"_s});
     },
     "-i /films/a.mts -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"of_unknown_width_maps_no_subtitles_to_mkv",
     [](Given &g) {
         g.file.width.reset();
         g.subtitles({u"subrip"_s});
         g.params.container = OutputContainer::mkv;
     },
     "-i /films/a.mts -map 0:a -c copy /films/a-MKV.mkv"},
    {"of_unknown_height_maps_the_picture", [](Given &g) { g.file.height.reset(); },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
};

static const std::vector<Row> remuxSubtitleRows{
    {"turns_text_subtitles_into_those_of_mp4", [](Given &g) { g.subtitles({u"subrip"_s}); },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -map 0:s? -c:s mov_text -movflags +faststart "
     "/films/a-MP4.mp4"},
    {"turns_every_kind_of_text_subtitles_into_those_of_mov",
     [](Given &g) {
         g.params.container = OutputContainer::mov;
         g.subtitles({u"subrip"_s, u"srt"_s, u"ass"_s, u"SSA"_s, u"WebVTT"_s});
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -map 0:s? -c:s mov_text -movflags +faststart "
     "/films/a-MOV.mov"},
    {"to_mp4_drops_all_subtitles_for_one_bitmap_track",
     [](Given &g) {
         g.subtitles({u"subrip"_s, u"hdmv_pgs_subtitle"_s});
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    // They are text, but not of the kinds that are told.
    {"to_mp4_drops_subtitles_that_are_mp4_s_own", [](Given &g) { g.subtitles({u"mov_text"_s}); },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"to_mkv_copies_bitmap_subtitles",
     [](Given &g) {
         g.params.container = OutputContainer::mkv;
         g.subtitles({u"dvd_subtitle"_s});
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -map 0:s? -c:s copy /films/a-MKV.mkv"},
    {"to_webm_leaves_subtitles_out",
     [](Given &g) {
         g.params.container = OutputContainer::webm;
         g.vp9AndOpus();
         g.subtitles({u"webvtt"_s});
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy /films/a-WEBM.webm"},
    {"to_avi_leaves_subtitles_out",
     [](Given &g) {
         g.params.container = OutputContainer::avi;
         g.sound({u"ac3"_s});
         g.subtitles({u"subrip"_s});
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy /films/a-AVI.avi"},
};

static const std::vector<Row> remuxOptionRows{
    {"stays_one_when_aac_is_asked_of_aac",
     [](Given &g) { g.params.audioFormat = AudioFormat::aac; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"stays_one_when_mp3_is_asked_of_mp3",
     [](Given &g) {
         g.sound({u"mp3"_s});
         g.params.audioFormat = AudioFormat::mp3;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"stays_one_when_an_audio_format_is_asked_of_a_silent_film",
     [](Given &g) {
         g.sound({});
         g.params.audioFormat = AudioFormat::wav;
     },
     "-i /films/a.mts -map 0:v:0 -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"isn_t_barred_by_quality_codec_hdr_and_alpha",
     [](Given &g) {
         g.file.isHDR = true;
         g.file.hasAlphaChannel = true;
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.crf = 18;
         g.params.advanced.hdrPassthrough = true;
         g.params.advanced.preserveAlpha = true;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"isn_t_barred_by_extra_arguments_of_blanks",
     [](Given &g) { g.params.advanced.extraArgs = u"   "_s; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
    {"needs_no_even_size",
     [](Given &g) {
         g.file.width = 1279;
         g.file.height = 719;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c copy -movflags +faststart /films/a-MP4.mp4"},
};

static const std::vector<Row> partialFormatRows{
    {"encodes_sound_that_doesn_t_fit", [](Given &g) { g.sound({u"opus"_s}); },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a aac -b:a 160k -movflags +faststart "
     "/films/a-MP4.mp4"},
    {"encodes_sound_that_doesn_t_fit_a_webm_to_opus",
     [](Given &g) {
         g.params.container = OutputContainer::webm;
         g.vp9AndOpus();
         g.sound({u"mp3"_s});
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a libopus -b:a 160k /films/a-WEBM.webm"},
    {"encodes_sound_that_doesn_t_fit_an_avi_to_aac",
     [](Given &g) { g.params.container = OutputContainer::avi; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a aac -b:a 160k /films/a-AVI.avi"},
    {"to_aac",
     [](Given &g) {
         g.sound({u"mp3"_s});
         g.params.audioFormat = AudioFormat::aac;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a aac -b:a 160k -movflags +faststart "
     "/films/a-MP4.mp4"},
    {"to_aac_is_opus_in_an_avi",
     [](Given &g) {
         g.sound({u"mp3"_s});
         g.params.container = OutputContainer::avi;
         g.params.audioFormat = AudioFormat::aac;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a libopus -b:a 160k /films/a-AVI.avi"},
    {"to_aac_of_aac_is_aac_in_an_avi_all_the_same",
     [](Given &g) {
         g.params.container = OutputContainer::avi;
         g.params.audioFormat = AudioFormat::aac;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a aac -b:a 160k /films/a-AVI.avi"},
    {"to_aac_of_aac_is_opus_in_a_webm",
     [](Given &g) {
         g.vp9AndOpus();
         g.sound({u"aac"_s});
         g.params.container = OutputContainer::webm;
         g.params.audioFormat = AudioFormat::aac;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a libopus -b:a 160k /films/a-WEBM.webm"},
    {"to_mp3", [](Given &g) { g.params.audioFormat = AudioFormat::mp3; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a libmp3lame -b:a 160k -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"to_mp3_of_mp3_is_opus_in_a_webm",
     [](Given &g) {
         g.vp9AndOpus();
         g.sound({u"mp3"_s});
         g.params.container = OutputContainer::webm;
         g.params.audioFormat = AudioFormat::mp3;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a libopus -b:a 160k /films/a-WEBM.webm"},
    {"to_mp3_is_written_even_for_a_webm",
     [](Given &g) {
         g.vp9AndOpus();
         g.params.container = OutputContainer::webm;
         g.params.audioFormat = AudioFormat::mp3;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a libmp3lame -b:a 160k "
     "/films/a-WEBM.webm"},
    {"to_wav_has_no_rate",
     [](Given &g) {
         g.params.audioFormat = AudioFormat::wav;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a pcm_s16le -movflags +faststart "
     "/films/a-MP4.mp4"},
    {"to_wav_encodes_pcm_anew",
     [](Given &g) {
         g.sound({u"pcm_s16le"_s});
         g.params.container = OutputContainer::mov;
         g.params.audioFormat = AudioFormat::wav;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a pcm_s16le -movflags +faststart "
     "/films/a-MOV.mov"},
    {"to_flac_has_no_rate",
     [](Given &g) {
         g.params.container = OutputContainer::mkv;
         g.params.audioFormat = AudioFormat::flac;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a flac -map 0:s? -c:s copy "
     "/films/a-MKV.mkv"},
    {"to_flac_is_aac_where_the_container_has_no_flac",
     [](Given &g) { g.params.audioFormat = AudioFormat::flac; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a aac -b:a 160k -movflags +faststart "
     "/films/a-MP4.mp4"},
};

static const std::vector<Row> partialSoundRows{
    {"at_a_chosen_rate_encodes_sound_that_fits",
     [](Given &g) { g.params.advanced.audioBitrateKbps = 96; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a aac -b:a 96k -movflags +faststart "
     "/films/a-MP4.mp4"},
    {"at_a_chosen_rate_encodes_to_opus_in_a_webm",
     [](Given &g) {
         g.vp9AndOpus();
         g.params.container = OutputContainer::webm;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a libopus -b:a 96k /films/a-WEBM.webm"},
    {"at_a_chosen_rate_takes_the_asked_format",
     [](Given &g) {
         g.params.audioFormat = AudioFormat::mp3;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a libmp3lame -b:a 96k -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"with_a_gain_copies_sound_that_fits_and_leaves_the_refusal_to_ffmpeg",
     [](Given &g) { g.params.advanced.volumeDb = -4.25; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a copy -af volume=-4.2dB -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"with_a_gain_of_0_writes_it",
     [](Given &g) {
         g.params.audioFormat = AudioFormat::wav;
         g.params.advanced.volumeDb = 0;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a pcm_s16le -af volume=0.0dB -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"with_a_gain_at_a_chosen_rate_encodes",
     [](Given &g) {
         g.params.advanced.volumeDb = 3;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a aac -b:a 96k -af volume=3.0dB -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"of_a_silent_film_has_no_sound_and_no_gain",
     [](Given &g) {
         g.sound({});
         g.params.advanced.volumeDb = 3;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mts -map 0:v:0 -c:v copy -movflags +faststart /films/a-MP4.mp4"},
    {"takes_replacement_audio_as_input_1", [](Given &g) { g.replaceAudio(); },
     "-i /films/a.mts -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest -c:v copy -c:a aac -b:a "
     "160k -movflags +faststart /films/a-MP4.mp4"},
    {"takes_replacement_audio_as_aac_whatever_was_asked",
     [](Given &g) {
         g.replaceAudio();
         g.params.audioFormat = AudioFormat::wav;
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = 1.5;
     },
     "-i /films/a.mts -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest -c:v copy -c:a aac -b:a 96k "
     "-af volume=1.5dB -movflags +faststart /films/a-MP4.mp4"},
    {"takes_replacement_audio_as_aac_even_for_a_webm",
     [](Given &g) {
         g.vp9AndOpus();
         g.replaceAudio();
         g.params.container = OutputContainer::webm;
     },
     "-i /films/a.mts -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest -c:v copy -c:a aac -b:a "
     "160k /films/a-WEBM.webm"},
    {"gives_a_silent_film_replacement_audio",
     [](Given &g) {
         g.sound({});
         g.replaceAudio();
     },
     "-i /films/a.mts -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest -c:v copy -c:a aac -b:a "
     "160k -movflags +faststart /films/a-MP4.mp4"},
    {"of_unknown_width_maps_the_replacement_alone",
     [](Given &g) {
         g.file.width.reset();
         g.replaceAudio();
     },
     "-i /films/a.mts -i /music/b.m4a -map 1:a:0 -shortest -c:v copy -c:a aac -b:a 160k -movflags "
     "+faststart /films/a-MP4.mp4"},
};

static const std::vector<Row> partialPictureRows{
    {"drops_a_crop", [](Given &g) { g.cropSquare(); },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a copy -movflags +faststart "
     "/films/a-MP4.mp4"},
    {"drops_the_choice_of_x264_and_its_quality",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 18;
     },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a copy -movflags +faststart "
     "/films/a-MP4.mp4"},
    {"writes_a_frame_rate_cap_over_the_copy", [](Given &g) { g.params.advanced.fpsCap = 24; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a copy -movflags +faststart -r 24 "
     "/films/a-MP4.mp4"},
    {"is_no_remux_even_for_a_frame_rate_cap_of_0_that_isn_t_written",
     [](Given &g) { g.params.advanced.fpsCap = 0; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a copy -movflags +faststart "
     "/films/a-MP4.mp4"},
    {"puts_extra_arguments_right_before_the_output",
     [](Given &g) { g.params.advanced.extraArgs = u"  -tune   film "_s; },
     "-i /films/a.mts -map 0:v:0 -map 0:a -c:v copy -c:a copy -movflags +faststart -tune film "
     "/films/a-MP4.mp4"},
    {"lays_all_groups_out_in_their_order",
     [](Given &g) {
         g.subtitles({u"ass"_s});
         g.replaceAudio();
         g.cropSquare();
         g.params.container = OutputContainer::mov;
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = 1.5;
         g.params.advanced.fpsCap = 30;
         g.params.advanced.extraArgs = u"-tune film"_s;
     },
     "-i /films/a.mts -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest -c:v copy -c:a aac -b:a 96k "
     "-af volume=1.5dB -map 0:s? -c:s mov_text -movflags +faststart -r 30 -tune film "
     "/films/a-MOV.mov"},
};

static const std::vector<Row> reencodeContainerRows{
    {"of_a_codec_that_mp4_lacks", [](Given &g) { g.file.videoCodec = u"vp9"_s; },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy "
     "-movflags +faststart /films/a-MP4.mp4"},
    {"of_a_codec_that_mov_lacks",
     [](Given &g) {
         g.file.videoCodec = u"av1"_s;
         g.params.container = OutputContainer::mov;
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy "
     "-movflags +faststart /films/a-MOV.mov"},
    {"of_a_codec_that_mkv_lacks",
     [](Given &g) {
         g.file.videoCodec = u"wmv3"_s;
         g.params.container = OutputContainer::mkv;
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy "
     "-map 0:s? -c:s copy /films/a-MKV.mkv"},
    {"to_webm", [](Given &g) { g.params.container = OutputContainer::webm; },
     "-i /films/a.mts -map 0:v:0 -c:v libvpx-vp9 -b:v 3400k -row-mt 1 -c:a libopus -b:a 160k "
     "/films/a-WEBM.webm"},
    {"to_webm_takes_no_notice_of_codec_quality_hdr_and_alpha",
     [](Given &g) {
         g.file.isHDR = true;
         g.file.hasAlphaChannel = true;
         g.params.container = OutputContainer::webm;
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 18;
         g.params.advanced.hdrPassthrough = true;
         g.params.advanced.preserveAlpha = true;
     },
     "-i /films/a.mts -map 0:v:0 -c:v libvpx-vp9 -b:v 3400k -row-mt 1 -c:a libopus -b:a 160k "
     "/films/a-WEBM.webm"},
    {"to_webm_crops_and_mends_an_odd_size",
     [](Given &g) {
         g.file.width = 1279;
         g.params.container = OutputContainer::webm;
         g.cropSquare();
     },
     "-i /films/a.mts -map 0:v:0 -c:v libvpx-vp9 -b:v 3400k -row-mt 1 -vf "
     "crop=720:720:(iw-ow)/2:(ih-oh)/2,scale=-2:720 -c:a libopus -b:a 160k /films/a-WEBM.webm"},
    {"to_avi",
     [](Given &g) {
         g.file.videoCodec = u"hevc"_s;
         g.params.container = OutputContainer::avi;
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a aac "
     "-b:a 160k /films/a-AVI.avi"},
    {"forced_on_a_film_that_fits_copies_the_sound_without_mapping_it",
     [](Given &g) { g.params.forceReencode = true; },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy "
     "-movflags +faststart /films/a-MP4.mp4"},
    {"turns_text_subtitles_into_those_of_mp4",
     [](Given &g) {
         g.params.forceReencode = true;
         g.subtitles({u"subrip"_s, u"webvtt"_s});
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy "
     "-map 0:s? -c:s mov_text -movflags +faststart /films/a-MP4.mp4"},
};

static const std::vector<Row> reencodePictureRows{
    {"by_x264_at_a_quality",
     [](Given &g) {
         g.params.forceReencode = true;
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 18;
     },
     "-i /films/a.mts -map 0:v:0 -c:v libx264 -crf 18 -pix_fmt yuv420p -c:a copy -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"by_x264_without_a_quality_goes_by_rate",
     [](Given &g) {
         g.params.forceReencode = true;
         g.params.advanced.codec = CodecChoice::softwareX264;
     },
     "-i /films/a.mts -map 0:v:0 -c:v libx264 -b:v 3400k -pix_fmt yuv420p -c:a copy -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"by_another_encoder_drops_the_quality",
     [](Given &g) {
         g.params.forceReencode = true;
         g.params.advanced.crf = 18;
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy "
     "-movflags +faststart /films/a-MP4.mp4"},
    {"by_x264_that_is_missing_goes_by_rate",
     [](Given &g) {
         g.toolset.encoders = {u"libx264rgb"_s};
         g.params.forceReencode = true;
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 18;
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy "
     "-movflags +faststart /films/a-MP4.mp4"},
    {"by_hevc_keeps_hdr",
     [](Given &g) {
         g.file.isHDR = true;
         g.params.forceReencode = true;
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.hdrPassthrough = true;
     },
     "-i /films/a.mts -map 0:v:0 -c:v hevc_videotoolbox -b:v 3400k -pix_fmt p010le "
     "-color_primaries bt2020 -color_trc smpte2084 -colorspace bt2020nc -c:a copy -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"by_h264_drops_hdr",
     [](Given &g) {
         g.file.isHDR = true;
         g.params.forceReencode = true;
         g.params.advanced.hdrPassthrough = true;
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy "
     "-movflags +faststart /films/a-MP4.mp4"},
    {"by_prores_keeps_alpha_at_a_rate",
     [](Given &g) {
         g.file.hasAlphaChannel = true;
         g.params.container = OutputContainer::mov;
         g.params.forceReencode = true;
         g.params.advanced.codec = CodecChoice::proresVideoToolbox;
         g.params.advanced.preserveAlpha = true;
     },
     "-i /films/a.mts -map 0:v:0 -c:v prores_videotoolbox -b:v 3400k -pix_fmt yuva444p10le -c:a "
     "copy -movflags +faststart /films/a-MOV.mov"},
    {"asks_for_alpha_of_any_encoder_before_hdr",
     [](Given &g) {
         g.file.isHDR = true;
         g.file.hasAlphaChannel = true;
         g.params.forceReencode = true;
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.hdrPassthrough = true;
         g.params.advanced.preserveAlpha = true;
     },
     "-i /films/a.mts -map 0:v:0 -c:v hevc_videotoolbox -b:v 3400k -pix_fmt yuva444p10le -c:a "
     "copy -movflags +faststart /films/a-MP4.mp4"},
    {"crops",
     [](Given &g) {
         g.params.forceReencode = true;
         g.cropSquare();
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -vf "
     "crop=720:720:(iw-ow)/2:(ih-oh)/2 -c:a copy -movflags +faststart /films/a-MP4.mp4"},
    {"rescales_an_odd_size_at_its_own_height",
     [](Given &g) {
         g.file.width = 1279;
         g.file.height = 719;
         g.params.forceReencode = true;
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -vf "
     "scale=-2:719 -c:a copy -movflags +faststart /films/a-MP4.mp4"},
    {"caps_the_frame_rate",
     [](Given &g) {
         g.params.forceReencode = true;
         g.params.advanced.fpsCap = 1;
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy "
     "-movflags +faststart -r 1 /films/a-MP4.mp4"},
};

static const std::vector<Row> reencodeSoundRows{
    {"encodes_sound_that_doesn_t_fit",
     [](Given &g) {
         g.params.forceReencode = true;
         g.sound({u"opus"_s});
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a aac -b:a "
     "160k -movflags +faststart /films/a-MP4.mp4"},
    {"writes_the_asked_format_and_the_gain",
     [](Given &g) {
         g.params.forceReencode = true;
         g.params.audioFormat = AudioFormat::wav;
         g.params.advanced.volumeDb = -30;
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a "
     "pcm_s16le -af volume=-30.0dB -movflags +faststart /films/a-MP4.mp4"},
    {"of_a_silent_film_has_no_sound_and_no_gain",
     [](Given &g) {
         g.params.forceReencode = true;
         g.sound({});
         g.params.advanced.volumeDb = 3;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mts -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"leaves_replacement_audio_to_the_container_s_own_encoder",
     [](Given &g) {
         g.params.forceReencode = true;
         g.replaceAudio();
         g.params.audioFormat = AudioFormat::mp3;
         g.params.advanced.volumeDb = 3;
         g.params.advanced.audioBitrateKbps = 96;
     },
     "-i /films/a.mts -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest -c:v h264_videotoolbox -b:v "
     "3400k -pix_fmt yuv420p -movflags +faststart /films/a-MP4.mp4"},
    {"of_a_recording_has_no_map_and_reckons_with_what_the_sound_leaves",
     [](Given &g) { g.dropVideo(); },
     "-i /films/a.mts -c:v h264_videotoolbox -b:v 3971k -pix_fmt yuv420p -c:a copy -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"of_a_recording_has_no_subtitles_in_an_mkv",
     [](Given &g) {
         g.dropVideo();
         g.subtitles({u"subrip"_s});
         g.params.container = OutputContainer::mkv;
     },
     "-i /films/a.mts -c:v h264_videotoolbox -b:v 3971k -pix_fmt yuv420p -c:a copy "
     "/films/a-MKV.mkv"},
    {"of_a_recording_maps_a_replacement_alone",
     [](Given &g) {
         g.dropVideo();
         g.replaceAudio();
     },
     "-i /films/a.mts -i /music/b.m4a -map 1:a:0 -shortest -c:v h264_videotoolbox -b:v 3971k "
     "-pix_fmt yuv420p -movflags +faststart /films/a-MP4.mp4"},
    {"of_a_picture_of_unknown_codec_maps_nothing_but_filters",
     [](Given &g) {
         g.file.videoCodec.reset();
         g.file.width = 1279;
     },
     "-i /films/a.mts -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -vf scale=-2:720 -c:a "
     "copy -movflags +faststart /films/a-MP4.mp4"},
    {"of_a_picture_of_unknown_width_maps_and_filters_nothing",
     [](Given &g) {
         g.file.width.reset();
         g.params.forceReencode = true;
         g.cropSquare();
     },
     "-i /films/a.mts -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"lays_all_groups_out_in_their_order",
     [](Given &g) {
         g.file.width = 1279;
         g.sound({u"opus"_s});
         g.subtitles({u"subrip"_s});
         g.cropSquare();
         g.params.forceReencode = true;
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 23;
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = 1.5;
         g.params.advanced.fpsCap = 30;
         g.params.advanced.extraArgs = u"-tune film"_s;
     },
     "-i /films/a.mts -map 0:v:0 -c:v libx264 -crf 23 -pix_fmt yuv420p -vf "
     "crop=720:720:(iw-ow)/2:(ih-oh)/2,scale=-2:720 -c:a aac -b:a 96k -af volume=1.5dB -map 0:s? "
     "-c:s mov_text -movflags +faststart -r 30 -tune film /films/a-MP4.mp4"},
};

static std::string rowName(const ::testing::TestParamInfo<Row> &info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Containers, ConvertRemux, ::testing::ValuesIn(remuxContainerRows),
                         rowName);
INSTANTIATE_TEST_SUITE_P(Streams, ConvertRemux, ::testing::ValuesIn(remuxStreamRows), rowName);
INSTANTIATE_TEST_SUITE_P(Subtitles, ConvertRemux, ::testing::ValuesIn(remuxSubtitleRows), rowName);
INSTANTIATE_TEST_SUITE_P(Options, ConvertRemux, ::testing::ValuesIn(remuxOptionRows), rowName);
INSTANTIATE_TEST_SUITE_P(Formats, ConvertPartial, ::testing::ValuesIn(partialFormatRows), rowName);
INSTANTIATE_TEST_SUITE_P(Sound, ConvertPartial, ::testing::ValuesIn(partialSoundRows), rowName);
INSTANTIATE_TEST_SUITE_P(Picture, ConvertPartial, ::testing::ValuesIn(partialPictureRows), rowName);
INSTANTIATE_TEST_SUITE_P(Containers, ConvertReencode, ::testing::ValuesIn(reencodeContainerRows),
                         rowName);
INSTANTIATE_TEST_SUITE_P(Picture, ConvertReencode, ::testing::ValuesIn(reencodePictureRows),
                         rowName);
INSTANTIATE_TEST_SUITE_P(Sound, ConvertReencode, ::testing::ValuesIn(reencodeSoundRows), rowName);

TEST(Convert, a_plan_is_one_step_with_nothing_around_it)
{
    Given remux;
    Given partial;
    partial.params.audioFormat = AudioFormat::wav;
    Given reencode;
    reencode.params.forceReencode = true;
    for (const Given &g : {remux, partial, reencode}) {
        const JobPlan plan = g.plan();
        const QUrl output = QUrl::fromLocalFile(u"/films/a-MP4.mp4"_s);

        ASSERT_EQ(plan.steps.size(), 1);
        EXPECT_EQ(plan.steps.first().label, u"convert"_s);
        EXPECT_EQ(plan.steps.first().progressDuration, 10);
        EXPECT_FALSE(plan.steps.first().tempOutputURL);
        EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{output});
        EXPECT_EQ(plan.targetLimitBytes, std::nullopt);
        EXPECT_FALSE(plan.retryFactory);
        EXPECT_FALSE(plan.approach);
        EXPECT_TRUE(plan.prepFiles.isEmpty());
        EXPECT_TRUE(plan.createDirs.isEmpty());
        EXPECT_TRUE(plan.cleanupURLs.isEmpty());
    }
}

TEST(Convert, h264_and_aac_to_mov_is_a_remux_with_subtitles_and_faststart_behind)
{
    Given g;
    g.file.url = QUrl::fromLocalFile(u"/films/a.mp4"_s);
    g.params.container = OutputContainer::mov;
    g.subtitles({u"srt"_s});

    const JobPlan plan = g.plan();

    EXPECT_EQ(plan.badgeKey, u"convert.badge.remux"_s);
    EXPECT_EQ(plan.steps.first().args,
              commandLine("-i /films/a.mp4 -map 0:v:0 -map 0:a -c copy -map 0:s? -c:s mov_text "
                          "-movflags +faststart /films/a-MOV.mov"));
}

TEST(Convert, wav_on_any_source_copies_the_picture_and_has_no_audio_rate)
{
    for (const QString &codec : {u"aac"_s, u"mp3"_s, u"pcm_s16le"_s, u"opus"_s, QString()}) {
        for (const OutputContainer container : {OutputContainer::mp4, OutputContainer::mov,
                                                OutputContainer::mkv, OutputContainer::avi}) {
            Given g;
            g.sound({codec});
            g.params.container = container;
            g.params.audioFormat = AudioFormat::wav;

            const JobPlan plan = g.plan();

            EXPECT_EQ(plan.badgeKey, u"convert.badge.partial"_s);
            EXPECT_TRUE(contains(plan.steps.first().args, "-c:v copy -c:a pcm_s16le"));
            EXPECT_FALSE(plan.steps.first().args.contains(u"-b:a"_s));
        }
    }
}

TEST(Convert, a_forced_encode_that_keeps_the_sound_copies_it_but_never_maps_it)
{
    Given g;
    g.params.forceReencode = true;

    const QStringList args = g.args();

    EXPECT_EQ(valueOf(args, u"-c:v"_s), u"h264_videotoolbox"_s);
    EXPECT_EQ(valueOf(args, u"-c:a"_s), u"copy"_s);
    EXPECT_EQ(args.count(u"-map"_s), 1);
}

TEST(Convert, the_kilobits_are_85_percent_of_the_source_s_and_never_below_300)
{
    const std::vector<std::pair<qint64, QString>> rows{
        {1, u"300k"_s},          {100'000, u"300k"_s},    {352'000, u"300k"_s},
        {354'000, u"300k"_s},    {355'000, u"301k"_s},    {1'000'000, u"850k"_s},
        {1'234'567, u"1049k"_s}, {4'000'000, u"3400k"_s}, {100'000'000, u"85000k"_s},
    };
    for (const auto &[sourceBps, expected] : rows) {
        Given g;
        g.file.videoBitrateBps = sourceBps;
        for (const OutputContainer container : {OutputContainer::mp4, OutputContainer::webm}) {
            g.params.container = container;
            g.params.forceReencode = true;
            EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), expected);
        }
    }
}

TEST(Convert, an_unknown_video_rate_is_what_the_sound_leaves_of_the_whole)
{
    struct Case {
        std::optional<qint64> videoBps;
        qint64 bytes;
        std::vector<std::optional<qint64>> audioBps;
        QString expected;
    };
    // Ten seconds.
    const std::vector<Case> cases{
        {std::nullopt, 1'000'000, {}, u"680k"_s},
        {std::nullopt, 1'000'000, {std::nullopt}, u"571k"_s},
        {std::nullopt, 1'000'000, {0}, u"571k"_s},
        {std::nullopt, 1'000'000, {-5}, u"571k"_s},
        {std::nullopt, 1'000'000, {1}, u"679k"_s},
        {std::nullopt, 1'000'000, {64'000}, u"625k"_s},
        {std::nullopt, 1'000'000, {64'000, 128'000}, u"625k"_s},
        {std::nullopt, 1'000'000, {std::nullopt, 64'000}, u"571k"_s},
        {0, 1'000'000, {64'000}, u"625k"_s},
        {-8, 1'000'000, {64'000}, u"625k"_s},
        // The second track alone is more than all bytes over the length.
        {std::nullopt, 1'000, {64'000, 864'000}, u"680k"_s},
        {std::nullopt, 1'000, {std::nullopt}, u"300k"_s},
        {std::nullopt, 0, {}, u"300k"_s},
        {1, 1'000'000'000, {}, u"300k"_s},
    };
    for (const Case &c : cases) {
        Given g;
        g.params.forceReencode = true;
        g.file.videoBitrateBps = c.videoBps;
        g.file.fileSizeBytes = c.bytes;
        g.file.audioStreams.clear();
        for (const std::optional<qint64> &bitrate : c.audioBps) {
            AudioStream stream;
            stream.codec = u"aac"_s;
            stream.bitrateBps = bitrate;
            g.file.audioStreams.append(stream);
        }
        EXPECT_EQ(valueOf(g.args(), u"-b:v"_s), c.expected) << "case " << (&c - cases.data());
    }
}

TEST(Convert, a_film_of_unknown_length_is_encoded_at_the_floor)
{
    Given g;
    g.params.forceReencode = true;
    g.file.videoBitrateBps.reset();
    g.file.durationSeconds = 0;

    const JobPlan plan = g.plan();

    EXPECT_EQ(valueOf(plan.steps.first().args, u"-b:v"_s), u"300k"_s);
    EXPECT_EQ(plan.steps.first().progressDuration, 0);
}

TEST(Convert, a_webm_takes_no_notice_of_codec_and_quality)
{
    Given plain;
    plain.params.container = OutputContainer::webm;
    for (const CodecChoice codec : allCases<CodecChoice>()) {
        Given g = plain;
        g.params.advanced.codec = codec;
        g.params.advanced.crf = 18;
        EXPECT_EQ(g.args(), plain.args());
    }
    EXPECT_EQ(valueOf(plain.args(), u"-c:v"_s), u"libvpx-vp9"_s);
}

TEST(Convert, each_codec_choice_has_its_encoder)
{
    const QString h264 = u"h264_videotoolbox"_s;
    const std::vector<std::pair<CodecChoice, QString>> rows{
        {CodecChoice::automatic, h264},
        {CodecChoice::h264VideoToolbox, h264},
        {CodecChoice::hevcVideoToolbox, u"hevc_videotoolbox"_s},
        {CodecChoice::softwareX264, u"libx264"_s},
        {CodecChoice::proresVideoToolbox, u"prores_videotoolbox"_s},
        {CodecChoice::svtAV1, h264},
    };
    for (const auto &[codec, encoder] : rows) {
        for (const OutputContainer container : {OutputContainer::mp4, OutputContainer::mov,
                                                OutputContainer::mkv, OutputContainer::avi}) {
            Given g;
            g.params.forceReencode = true;
            g.params.container = container;
            g.params.advanced.codec = codec;
            EXPECT_TRUE(
                contains(g.args(), ("-c:v " + encoder.toUtf8() + " -b:v 3400k").constData()));
        }
    }
}

TEST(Convert, a_missing_width_drops_the_picture_s_map_and_the_subtitles)
{
    for (const OutputContainer container :
         {OutputContainer::mp4, OutputContainer::mov, OutputContainer::mkv}) {
        Given g;
        g.params.container = container;
        g.subtitles({u"subrip"_s});
        g.file.width.reset();

        const QStringList args = g.args();

        EXPECT_FALSE(args.contains(u"0:v:0"_s));
        EXPECT_FALSE(args.contains(u"0:s?"_s));
        EXPECT_FALSE(args.contains(u"-c:s"_s));
    }
}

TEST(Convert, an_mkv_asks_for_subtitles_that_the_source_hasn_t)
{
    Given g;
    g.params.container = OutputContainer::mkv;
    ASSERT_TRUE(g.file.subtitleStreams.isEmpty());

    EXPECT_TRUE(contains(g.args(), "-map 0:s? -c:s copy"));
}

TEST(Convert, the_copy_tables_rule_what_is_copied)
{
    struct Case {
        OutputContainer container;
        QString video;
        QString audio;
        QString badgeKey;
    };
    const std::vector<Case> cases{
        {OutputContainer::mp4, u"av1"_s, u"eac3"_s, u"convert.badge.remux"_s},
        {OutputContainer::mp4, u"hevc"_s, u"alac"_s, u"convert.badge.partial"_s},
        {OutputContainer::mp4, u"vp9"_s, u"aac"_s, u"convert.badge.reencode"_s},
        {OutputContainer::mp4, u""_s, u"aac"_s, u"convert.badge.reencode"_s},
        {OutputContainer::mov, u"prores"_s, u"pcm_s16le"_s, u"convert.badge.remux"_s},
        {OutputContainer::mov, u"h264"_s, u"eac3"_s, u"convert.badge.partial"_s},
        {OutputContainer::mov, u"av1"_s, u"aac"_s, u"convert.badge.reencode"_s},
        {OutputContainer::mkv, u"ffv1"_s, u"flac"_s, u"convert.badge.remux"_s},
        {OutputContainer::mkv, u"vp8"_s, u"alac"_s, u"convert.badge.partial"_s},
        {OutputContainer::mkv, u"dnxhd"_s, u"aac"_s, u"convert.badge.reencode"_s},
        {OutputContainer::webm, u"av1"_s, u"vorbis"_s, u"convert.badge.remux"_s},
        {OutputContainer::webm, u"vp8"_s, u"aac"_s, u"convert.badge.partial"_s},
        {OutputContainer::webm, u"h264"_s, u"opus"_s, u"convert.badge.reencode"_s},
        {OutputContainer::avi, u"mpeg2video"_s, u"ac3"_s, u"convert.badge.remux"_s},
        {OutputContainer::avi, u"mpeg4"_s, u"aac"_s, u"convert.badge.partial"_s},
        {OutputContainer::avi, u"hevc"_s, u"mp3"_s, u"convert.badge.reencode"_s},
    };
    for (const Case &c : cases) {
        Given g;
        g.params.container = c.container;
        g.file.videoCodec = c.video;
        g.sound({c.audio});
        EXPECT_EQ(g.plan().badgeKey, c.badgeKey) << "case " << (&c - cases.data());
    }
}

TEST(Convert, a_webm_without_vp9_is_refused_before_anything_else)
{
    Given g;
    g.params.container = OutputContainer::webm;
    g.toolset.encoders = {u"libx264"_s, u"libvpx"_s, u"libaom-av1"_s};
    // Nothing would have to be encoded.
    g.vp9AndOpus();

    std::optional<BuilderError> refusal;
    try {
        g.plan();
    } catch (const BuilderError &error) {
        refusal = error;
    }

    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->kind(), BuilderError::Case::vp9Unavailable);
    EXPECT_EQ(refusal->errorDescription(), u"libvpx-vp9 encoder not available"_s);
}

TEST(Convert, only_a_webm_needs_vp9)
{
    for (const OutputContainer container :
         {OutputContainer::mp4, OutputContainer::mov, OutputContainer::mkv, OutputContainer::avi}) {
        Given g;
        g.params.container = container;
        g.params.forceReencode = true;
        g.toolset.encoders.clear();
        EXPECT_NO_THROW(g.plan());
    }
}

TEST(Convert, the_output_is_named_after_the_container)
{
    const std::vector<std::pair<OutputContainer, QString>> rows{
        {OutputContainer::mp4, u"/films/a-MP4.mp4"_s},
        {OutputContainer::mov, u"/films/a-MOV.mov"_s},
        {OutputContainer::mkv, u"/films/a-MKV.mkv"_s},
        {OutputContainer::webm, u"/films/a-WEBM.webm"_s},
        {OutputContainer::avi, u"/films/a-AVI.avi"_s},
    };
    for (const auto &[container, path] : rows) {
        Given g;
        g.params.container = container;
        const JobPlan plan = g.plan();
        EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{QUrl::fromLocalFile(path)});
        EXPECT_EQ(plan.steps.first().args.last(), path);
    }
}

TEST(Convert, a_taken_output_name_is_numbered)
{
    const TempFolder folder;
    folder.write(u"a-MP4.mp4"_s, "taken");
    Given g;
    g.file.url = folder.url(u"a.mov"_s);

    const JobPlan plan = g.plan();

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"a-MP4 2.mp4"_s)});
    EXPECT_EQ(plan.steps.first().args.last(), folder.path(u"a-MP4 2.mp4"_s));
}

TEST(Convert, folder_and_template_name_the_output)
{
    const TempFolder folder;
    Given g;
    g.params.container = OutputContainer::mkv;

    const JobPlan plan = CommandBuilder::convert(g.file, g.params, g.toolset, folder.url(QString()),
                                                 u"{suffix} {name} {ext}"_s);

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"MKV a mkv.mkv"_s)});
}

TEST(Convert, paths_go_in_as_they_are)
{
    Given g;
    const QString odd = u"/films/it's a \"film\" %20 ?#$HOME;"_s;
    g.file.url = QUrl::fromLocalFile(odd + u".mov"_s);
    g.params.advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/b c&d.m4a"_s);

    const QStringList args = g.args();

    EXPECT_EQ(valueOf(args, u"-i"_s), odd + u".mov"_s);
    EXPECT_EQ(args.count(u"/music/b c&d.m4a"_s), 1);
    EXPECT_EQ(args.last(), odd + u"-MP4.mp4"_s);
}
