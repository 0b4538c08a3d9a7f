// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "TargetSizeCase.h"

#include <gtest/gtest.h>

#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;
using TargetSizeCase::Given;

namespace {

using Row = LinesRow<Given>;

class TargetSizeLine : public ::testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(TargetSizeLine, is_laid_out)
{
    const Scratch scratch;
    expectLines(given(GetParam().change).plan(), GetParam().lines, scratch.path());
}

// The plain line, of which all others are variations.
static const std::vector<Row> onePassRows{
    {"a_plain_encode",
     [](Given &) {},
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
};

// Seek and length.
static const std::vector<Row> skipRows{
    {"a_head_skip_seeks_and_fixes_the_length_before_the_input",
     [](Given &g) { g.params.skipHeadSeconds = 2.5; },
     {"-ss 2.500 -t 7.500 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 8237k "
      "-pix_fmt yuv420p -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_head_skip_of_0_fixes_the_length_without_a_seek",
     [](Given &g) { g.params.skipHeadSeconds = 0; },
     {"-t 10.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k "
      "-pix_fmt yuv420p -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_negative_head_skip_fixes_the_length_without_a_seek",
     [](Given &g) { g.params.skipHeadSeconds = -1; },
     {"-t 10.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k "
      "-pix_fmt yuv420p -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_tail_skip_fixes_the_length",
     [](Given &g) { g.params.skipTailSeconds = 3; },
     {"-t 7.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 8830k "
      "-pix_fmt yuv420p -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_tail_skip_of_0_fixes_the_length",
     [](Given &g) { g.params.skipTailSeconds = 0; },
     {"-t 10.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k "
      "-pix_fmt yuv420p -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"both_skips_leave_the_middle",
     [](Given &g) {
         g.params.skipHeadSeconds = 2;
         g.params.skipTailSeconds = 3;
     },
     {"-ss 2.000 -t 5.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox "
      "-b:v 12387k -pix_fmt yuv420p -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_head_skip_beyond_the_end_is_written_as_it_is",
     [](Given &g) { g.params.skipHeadSeconds = 25; },
     {"-ss 25.000 -t 0.100 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox "
      "-b:v 622527k -pix_fmt yuv420p -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
};

// Sound, and what there is of streams.
static const std::vector<Row> soundRows{
    {"a_muted_encode_keeps_the_audio_map_and_drops_the_sound",
     [](Given &g) { g.params.muted = true; },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6225k -pix_fmt yuv420p "
      "-an -movflags +faststart /films/a-8MB.mp4"}},
    {"a_muted_encode_has_no_gain_and_no_audio_rate",
     [](Given &g) {
         g.params.muted = true;
         g.params.advanced.volumeDb = 3;
         g.params.advanced.audioBitrateKbps = 96;
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6225k -pix_fmt yuv420p "
      "-an -movflags +faststart /films/a-8MB.mp4"}},
    {"replacement_audio_is_input_1",
     [](Given &g) { g.replaceAudio(); },
     {"-i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest -c:v h264_videotoolbox "
      "-b:v 6161k -pix_fmt yuv420p -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"seek_and_length_concern_the_film_and_not_the_replacement",
     [](Given &g) {
         g.replaceAudio();
         g.params.skipHeadSeconds = 2;
         g.params.skipTailSeconds = 3;
     },
     {"-ss 2.000 -t 5.000 -i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest "
      "-c:v h264_videotoolbox -b:v 12387k -pix_fmt yuv420p -c:a aac -b:a 64k -movflags "
      "+faststart /films/a-8MB.mp4"}},
    {"muting_wins_over_a_replacement",
     [](Given &g) {
         g.replaceAudio();
         g.params.muted = true;
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6225k -pix_fmt yuv420p "
      "-an -movflags +faststart /films/a-8MB.mp4"}},
    {"a_source_without_sound_has_no_audio_group",
     [](Given &g) {
         g.file.audioStreams.clear();
         g.params.advanced.volumeDb = 3;
         g.params.advanced.audioBitrateKbps = 96;
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6225k -pix_fmt yuv420p "
      "-movflags +faststart /films/a-8MB.mp4"}},
    {"a_muted_source_without_sound_still_says_so",
     [](Given &g) {
         g.file.audioStreams.clear();
         g.params.muted = true;
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6225k -pix_fmt yuv420p "
      "-an -movflags +faststart /films/a-8MB.mp4"}},
    // The budget is reckoned from the source alone, so it is none here.
    {"a_replacement_on_a_source_without_sound_has_no_budget",
     [](Given &g) {
         g.file.audioStreams.clear();
         g.replaceAudio();
     },
     {"-i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest -c:v h264_videotoolbox "
      "-b:v 6225k -pix_fmt yuv420p -c:a aac -b:a 0k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_replacement_on_a_source_without_sound_takes_the_chosen_rate",
     [](Given &g) {
         g.file.audioStreams.clear();
         g.replaceAudio();
         g.params.advanced.audioBitrateKbps = 96;
     },
     {"-i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest -c:v h264_videotoolbox "
      "-b:v 6225k -pix_fmt yuv420p -c:a aac -b:a 96k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_source_without_a_picture_maps_its_sound_alone",
     [](Given &g) { g.dropVideo(); },
     {"-i /films/a.mov -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p -c:a aac "
      "-b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_picture_of_unknown_width_counts_as_none",
     [](Given &g) { g.file.width.reset(); },
     {"-i /films/a.mov -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p -c:a aac "
      "-b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_picture_of_unknown_codec_counts_as_none_but_is_filtered",
     [](Given &g) {
         g.file.videoCodec.reset();
         g.file.width = 1279;
     },
     {"-i /films/a.mov -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p -vf "
      "scale=-2:720 -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_replacement_on_a_source_without_a_picture_is_mapped_alone",
     [](Given &g) {
         g.dropVideo();
         g.replaceAudio();
     },
     {"-i /films/a.mov -i /music/b.m4a -map 1:a:0 -shortest -c:v h264_videotoolbox -b:v 6161k "
      "-pix_fmt yuv420p -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"several_audio_tracks_count_as_one_in_the_budget",
     [](Given &g) {
         g.addAudio({});
         g.addAudio({});
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    // The video's budget doesn't follow the choice.
    {"a_chosen_audio_rate_overrides_the_budget",
     [](Given &g) { g.params.advanced.audioBitrateKbps = 192; },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 192k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_gain_stands_behind_the_audio_rate",
     [](Given &g) { g.params.advanced.volumeDb = -4.25; },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -af volume=-4.2dB -movflags +faststart /films/a-8MB.mp4"}},
    {"a_gain_of_0_is_written",
     [](Given &g) { g.params.advanced.volumeDb = 0; },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -af volume=0.0dB -movflags +faststart /films/a-8MB.mp4"}},
    {"a_target_below_50_megabytes_has_64_kilobits_of_sound",
     [](Given &g) { g.params.targetMB = 49.9; },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 38770k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -movflags +faststart /films/a-49.9MB.mp4"}},
    {"a_target_of_50_megabytes_has_128_kilobits_of_sound",
     [](Given &g) { g.params.targetMB = 50; },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 38784k -pix_fmt yuv420p "
      "-c:a aac -b:a 128k -movflags +faststart /films/a-50MB.mp4"}},
};

// The picture.
static const std::vector<Row> pictureRows{
    {"a_crop_is_the_filter",
     [](Given &g) { g.crop(CropSpec::Aspect::ratio1x1); },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-vf crop=720:720:(iw-ow)/2:(ih-oh)/2 -c:a aac -b:a 64k -movflags +faststart "
      "/films/a-8MB.mp4"}},
    {"a_free_crop_without_sides_is_left_out",
     [](Given &g) { g.crop(CropSpec::Aspect::free); },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"an_odd_size_is_rescaled_at_its_own_height",
     [](Given &g) {
         g.file.width = 1279;
         g.file.height = 719;
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-vf scale=-2:719 -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_long_film_is_capped_in_height",
     [](Given &g) {
         g.file.width = 1920;
         g.file.height = 1080;
         g.file.durationSeconds = 100;
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 558k -pix_fmt yuv420p "
      "-vf scale=-2:720 -c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_cap_above_the_source_s_height_does_nothing",
     [](Given &g) {
         g.file.width = 1920;
         g.file.height = 640;
         g.file.durationSeconds = 100;
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 558k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"the_cap_goes_by_the_width_after_the_crop",
     [](Given &g) {
         g.file.width = 1920;
         g.file.height = 1080;
         g.file.durationSeconds = 100;
         g.crop(CropSpec::Aspect::ratio9x16);
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 558k -pix_fmt yuv420p "
      "-vf crop=606:1080:(iw-ow)/2:(ih-oh)/2 -c:a aac -b:a 64k -movflags +faststart "
      "/films/a-8MB.mp4"}},
    {"a_crop_stands_before_the_cap",
     [](Given &g) {
         g.file.width = 1920;
         g.file.height = 1080;
         g.file.durationSeconds = 100;
         g.crop(CropSpec::Aspect::ratio4x3);
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 558k -pix_fmt yuv420p "
      "-vf crop=1440:1080:(iw-ow)/2:(ih-oh)/2,scale=-2:720 -c:a aac -b:a 64k -movflags "
      "+faststart /films/a-8MB.mp4"}},
    {"quality_hdr_and_alpha_count_for_nothing",
     [](Given &g) {
         g.file.isHDR = true;
         g.file.hasAlphaChannel = true;
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.crf = 18;
         g.params.advanced.hdrPassthrough = true;
         g.params.advanced.preserveAlpha = true;
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v hevc_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"a_frame_rate_cap_stands_before_the_container_flags",
     [](Given &g) { g.params.advanced.fpsCap = 24; },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -r 24 -movflags +faststart /films/a-8MB.mp4"}},
    {"a_frame_rate_cap_of_0_is_none",
     [](Given &g) { g.params.advanced.fpsCap = 0; },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
    {"extra_arguments_stand_right_before_the_output",
     [](Given &g) { g.params.advanced.extraArgs = u"  -tune   film "_s; },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -movflags +faststart -tune film /films/a-8MB.mp4"}},
    {"all_groups_stand_in_their_order",
     [](Given &g) {
         g.file.width = 1920;
         g.file.height = 1080;
         g.file.durationSeconds = 105;
         g.params.skipHeadSeconds = 4;
         g.params.skipTailSeconds = 1;
         g.replaceAudio();
         g.crop(CropSpec::Aspect::ratio4x3);
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = 1.5;
         g.params.advanced.fpsCap = 30;
         g.params.advanced.extraArgs = u"-tune film"_s;
     },
     {"-ss 4.000 -t 100.000 -i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest "
      "-c:v libx264 -b:v 558k -pix_fmt yuv420p -vf "
      "crop=1440:1080:(iw-ow)/2:(ih-oh)/2,scale=-2:720 -c:a aac -b:a 96k -af volume=1.5dB -r 30 "
      "-movflags +faststart -tune film /films/a-8MB.mp4"}},
};

static const std::vector<Row> twoPassRows{
    {"two_passes",
     [](Given &g) { g.params.exactTwoPass = true; },
     {"-i /films/a.mov -map 0:v:0 -c:v libx264 -preset fast -b:v 6161k -pass 1 -passlogfile "
      "/scratch/mx-2pass-0e984725-c51c-4bf4-9960-e1c80e27aba0 -an -f mp4 /dev/null",
      "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v libx264 -preset fast -b:v 6161k -pass 2 "
      "-passlogfile /scratch/mx-2pass-0e984725-c51c-4bf4-9960-e1c80e27aba0 -c:a aac -b:a 64k "
      "-movflags +faststart /films/a-8MB.mp4"}},
    // The filter behind the first pass's output is on purpose.
    {"two_passes_with_everything",
     [](Given &g) {
         g.file.width = 1920;
         g.file.height = 1080;
         g.file.durationSeconds = 105;
         g.params.exactTwoPass = true;
         g.params.skipHeadSeconds = 4;
         g.params.skipTailSeconds = 1;
         g.replaceAudio();
         g.crop(CropSpec::Aspect::ratio4x3);
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = 1.5;
         g.params.advanced.fpsCap = 30;
         g.params.advanced.extraArgs = u"-tune film"_s;
     },
     {"-ss 4.000 -t 100.000 -i /films/a.mov -i /music/b.m4a -map 0:v:0 -c:v libx264 -preset fast "
      "-b:v 558k -pass 1 -passlogfile /scratch/mx-2pass-0e984725-c51c-4bf4-9960-e1c80e27aba0 -an "
      "-f mp4 /dev/null -vf crop=1440:1080:(iw-ow)/2:(ih-oh)/2,scale=-2:720",
      "-ss 4.000 -t 100.000 -i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 1:a:0 -shortest "
      "-c:v libx264 -preset fast -b:v 558k -pass 2 -passlogfile "
      "/scratch/mx-2pass-0e984725-c51c-4bf4-9960-e1c80e27aba0 -vf "
      "crop=1440:1080:(iw-ow)/2:(ih-oh)/2,scale=-2:720 -c:a aac -b:a 96k -af volume=1.5dB -r 30 "
      "-movflags +faststart -tune film /films/a-8MB.mp4"}},
    {"two_muted_passes",
     [](Given &g) {
         g.params.exactTwoPass = true;
         g.params.muted = true;
     },
     {"-i /films/a.mov -map 0:v:0 -c:v libx264 -preset fast -b:v 6225k -pass 1 -passlogfile "
      "/scratch/mx-2pass-0e984725-c51c-4bf4-9960-e1c80e27aba0 -an -f mp4 /dev/null",
      "-i /films/a.mov -map 0:v:0 -map 0:a? -c:v libx264 -preset fast -b:v 6225k -pass 2 "
      "-passlogfile /scratch/mx-2pass-0e984725-c51c-4bf4-9960-e1c80e27aba0 -an -movflags "
      "+faststart /films/a-8MB.mp4"}},
    {"two_passes_over_a_source_without_a_picture",
     [](Given &g) {
         g.params.exactTwoPass = true;
         g.dropVideo();
     },
     {"-i /films/a.mov -c:v libx264 -preset fast -b:v 6161k -pass 1 -passlogfile "
      "/scratch/mx-2pass-0e984725-c51c-4bf4-9960-e1c80e27aba0 -an -f mp4 /dev/null",
      "-i /films/a.mov -map 0:a? -c:v libx264 -preset fast -b:v 6161k -pass 2 -passlogfile "
      "/scratch/mx-2pass-0e984725-c51c-4bf4-9960-e1c80e27aba0 -c:a aac -b:a 64k -movflags "
      "+faststart /films/a-8MB.mp4"}},
    {"two_passes_without_x264_are_one",
     [](Given &g) {
         g.params.exactTwoPass = true;
         g.toolset.encoders = {u"h264_videotoolbox"_s, u"libx264rgb"_s};
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 6161k -pix_fmt yuv420p "
      "-c:a aac -b:a 64k -movflags +faststart /films/a-8MB.mp4"}},
};

static const std::vector<Row> copyRows{
    {"a_film_that_fits_is_copied",
     [](Given &g) { g.file.fileSizeBytes = 8'000'000; },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c copy -movflags +faststart /films/a-8MB.mp4"}},
    {"a_silent_film_that_fits_is_copied",
     [](Given &g) {
         g.file.fileSizeBytes = 8'000'000;
         g.file.audioStreams.clear();
     },
     {"-i /films/a.mov -map 0:v:0 -c copy -movflags +faststart /films/a-8MB.mp4"}},
    {"a_recording_that_fits_is_copied",
     [](Given &g) {
         g.file.fileSizeBytes = 8'000'000;
         g.dropVideo();
     },
     {"-i /films/a.mov -map 0:a? -c copy -movflags +faststart /films/a-8MB.mp4"}},
    {"a_copy_takes_no_notice_of_any_option",
     [](Given &g) {
         g.file.fileSizeBytes = 8'000'000;
         g.file.width = 1921;
         g.params.muted = true;
         g.params.skipHeadSeconds = 2;
         g.params.skipTailSeconds = 3;
         g.params.exactTwoPass = true;
         g.replaceAudio();
         g.crop(CropSpec::Aspect::ratio1x1);
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.volumeDb = 3;
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.fpsCap = 10;
         g.params.advanced.extraArgs = u"-tune film"_s;
     },
     {"-i /films/a.mov -map 0:v:0 -map 0:a? -c copy -movflags +faststart /films/a-8MB.mp4"}},
    {"a_small_file_with_neither_picture_nor_sound_is_encoded",
     [](Given &g) {
         g.file.fileSizeBytes = 100;
         g.dropVideo();
         g.file.audioStreams.clear();
     },
     {"-i /films/a.mov -map 0:a? -c:v h264_videotoolbox -b:v 6225k -pix_fmt yuv420p -movflags "
      "+faststart /films/a-8MB.mp4"}},
};

INSTANTIATE_TEST_SUITE_P(Plain, TargetSizeLine, ::testing::ValuesIn(onePassRows), RowName());
INSTANTIATE_TEST_SUITE_P(Skips, TargetSizeLine, ::testing::ValuesIn(skipRows), RowName());
INSTANTIATE_TEST_SUITE_P(Sound, TargetSizeLine, ::testing::ValuesIn(soundRows), RowName());
INSTANTIATE_TEST_SUITE_P(Picture, TargetSizeLine, ::testing::ValuesIn(pictureRows), RowName());
INSTANTIATE_TEST_SUITE_P(TwoPasses, TargetSizeLine, ::testing::ValuesIn(twoPassRows), RowName());
INSTANTIATE_TEST_SUITE_P(Copy, TargetSizeLine, ::testing::ValuesIn(copyRows), RowName());
