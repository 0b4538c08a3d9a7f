// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ConvertCase.h"

#include <gtest/gtest.h>

#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;
using ConvertCase::Given;

namespace {

using AudioFormat = ConvertParams::AudioFormat;
using Row = LineRow<Given>;

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
    {"drops_a_crop", [](Given &g) { g.crop(CropSpec::Aspect::ratio1x1); },
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
         g.crop(CropSpec::Aspect::ratio1x1);
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
         g.crop(CropSpec::Aspect::ratio1x1);
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
         g.crop(CropSpec::Aspect::ratio1x1);
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
         g.crop(CropSpec::Aspect::ratio1x1);
     },
     "-i /films/a.mts -c:v h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a copy -movflags "
     "+faststart /films/a-MP4.mp4"},
    {"lays_all_groups_out_in_their_order",
     [](Given &g) {
         g.file.width = 1279;
         g.sound({u"opus"_s});
         g.subtitles({u"subrip"_s});
         g.crop(CropSpec::Aspect::ratio1x1);
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

INSTANTIATE_TEST_SUITE_P(Containers, ConvertRemux, ::testing::ValuesIn(remuxContainerRows),
                         RowName());
INSTANTIATE_TEST_SUITE_P(Streams, ConvertRemux, ::testing::ValuesIn(remuxStreamRows), RowName());
INSTANTIATE_TEST_SUITE_P(Subtitles, ConvertRemux, ::testing::ValuesIn(remuxSubtitleRows),
                         RowName());
INSTANTIATE_TEST_SUITE_P(Options, ConvertRemux, ::testing::ValuesIn(remuxOptionRows), RowName());
INSTANTIATE_TEST_SUITE_P(Formats, ConvertPartial, ::testing::ValuesIn(partialFormatRows),
                         RowName());
INSTANTIATE_TEST_SUITE_P(Sound, ConvertPartial, ::testing::ValuesIn(partialSoundRows), RowName());
INSTANTIATE_TEST_SUITE_P(Picture, ConvertPartial, ::testing::ValuesIn(partialPictureRows),
                         RowName());
INSTANTIATE_TEST_SUITE_P(Containers, ConvertReencode, ::testing::ValuesIn(reencodeContainerRows),
                         RowName());
INSTANTIATE_TEST_SUITE_P(Picture, ConvertReencode, ::testing::ValuesIn(reencodePictureRows),
                         RowName());
INSTANTIATE_TEST_SUITE_P(Sound, ConvertReencode, ::testing::ValuesIn(reencodeSoundRows), RowName());
