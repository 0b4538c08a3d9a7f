// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "Engine/CommandBuilder/BuilderError.h"
#include "support/GoldenLines.h"

#include <QDir>

#include <gtest/gtest.h>

#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;

namespace {

TrimSegment segment(double start, double end)
{
    TrimSegment result;
    result.start = start;
    result.end = end;
    return result;
}

/// A case before it is planned: a film of a minute at 4000 kilobits with one AAC track, of which
/// the seconds 2 to 5 are kept.
struct Given : FilmCase<TrimParams> {
    Given()
    {
        file.durationSeconds = 60;
        file.fileSizeBytes = 40'000'000;
        file.videoBitrateBps = 4'000'000;
        addAudio(u"aac"_s);
        params.segments = {segment(2, 5)};
    }

    JobPlan plan() const { return CommandBuilder::trim(file, params, std::nullopt, std::nullopt); }
};

using Change = ChangeOf<Given>;
using Row = LinesRow<Given>;

Change named(const char *path)
{
    return [=](Given &g) { g.file.url = QUrl::fromLocalFile(QString::fromUtf8(path)); };
}

// The exact cut with a change on top.
Change exact(const Change &change = [](Given &) {})
{
    return [=](Given &g) {
        g.params.exactReencode = true;
        change(g);
    };
}

QStringList namesOf(const JobPlan &plan)
{
    QStringList names;
    for (const QUrl &url : plan.finalOutputURLs) {
        names += url.fileName();
    }
    return names;
}

QStringList startsOf(const JobPlan &plan)
{
    QStringList starts;
    for (const FFmpegStep &step : plan.steps) {
        if (const qsizetype position = step.args.indexOf(u"-ss"_s); position >= 0) {
            starts += step.args.at(position + 1);
        }
    }
    return starts;
}

class TrimLine : public ::testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(TrimLine, is_laid_out)
{
    const JobPlan plan = given(GetParam().change).plan();

    expectLines(plan, GetParam().lines, folderOf(plan));
}

static const std::vector<Row> copyRows{
    {"one_segment_is_copied",
     [](Given &) {},
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero -movflags +faststart /films/a-trim.mov"}},
    {"times_have_three_decimals",
     [](Given &g) { g.params.segments = {segment(0.0625, 1.99951)}; },
     {"-ss 0.062 -t 1.937 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero -movflags +faststart /films/a-trim.mov"}},
    {"a_start_at_0_is_written",
     [](Given &g) { g.params.segments = {segment(0, 1)}; },
     {"-ss 0.000 -t 1.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero -movflags +faststart /films/a-trim.mov"}},
    {"times_outside_the_film_are_written_as_they_are",
     [](Given &g) { g.params.segments = {segment(-1, 99)}; },
     {"-ss -1.000 -t 100.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero -movflags +faststart /films/a-trim.mov"}},
    {"a_recording_is_copied_without_a_video_map",
     [](Given &g) { g.dropVideo(); },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:a? -c copy -avoid_negative_ts make_zero "
      "-movflags +faststart /films/a-trim.mov"}},
    {"a_picture_of_unknown_width_counts_as_none",
     [](Given &g) { g.file.width.reset(); },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:a? -c copy -avoid_negative_ts make_zero "
      "-movflags +faststart /films/a-trim.mov"}},
    {"a_silent_film_keeps_the_audio_map",
     [](Given &g) { g.file.audioStreams.clear(); },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero -movflags +faststart /films/a-trim.mov"}},
    {"a_copy_takes_no_notice_of_what_needs_no_encode",
     [](Given &g) {
         g.replaceAudio();
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.crf = 18;
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = 3;
         g.params.advanced.hdrPassthrough = true;
         g.params.advanced.preserveAlpha = true;
         g.params.advanced.extraArgs = u" \t "_s;
     },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero -movflags +faststart /films/a-trim.mov"}},
    {"a_matroska_file_has_no_index_to_move",
     named("/films/a.mkv"),
     {"-ss 2.000 -t 3.000 -i /films/a.mkv -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero /films/a-trim.mkv"}},
};

static const std::vector<Row> joinedRows{
    {"two_segments_are_copied_and_joined",
     [](Given &g) { g.params.segments += segment(10, 14.5); },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero -movflags +faststart /scratch/seg-01.mov",
      "-ss 10.000 -t 4.500 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero -movflags +faststart /scratch/seg-02.mov",
      "-f concat -safe 0 -i /scratch/concat.txt -c copy -avoid_negative_ts make_zero -movflags "
      "+faststart /films/a-trim.mov"}},
    {"a_matroska_file_is_joined_without_an_index_to_move",
     [](Given &g) {
         named("/films/a.mkv")(g);
         g.params.segments += segment(10, 14.5);
     },
     {"-ss 2.000 -t 3.000 -i /films/a.mkv -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero /scratch/seg-01.mkv",
      "-ss 10.000 -t 4.500 -i /films/a.mkv -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero /scratch/seg-02.mkv",
      "-f concat -safe 0 -i /scratch/concat.txt -c copy -avoid_negative_ts make_zero "
      "/films/a-trim.mkv"}},
    {"joining_copies_what_the_cuts_have_encoded",
     exact([](Given &g) {
         g.params.segments += segment(10, 14.5);
         g.params.advanced.fpsCap = 24;
         g.params.advanced.extraArgs = u"-tune film"_s;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart -r 24 -tune film /scratch/seg-01.mov",
      "-ss 10.000 -t 4.500 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart -r 24 -tune film /scratch/seg-02.mov",
      "-f concat -safe 0 -i /scratch/concat.txt -c copy -avoid_negative_ts make_zero -movflags "
      "+faststart /films/a-trim.mov"}},
    {"two_segments_in_files_of_their_own",
     [](Given &g) {
         g.params.segments += segment(10, 14.5);
         g.params.separateFiles = true;
     },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero -movflags +faststart /films/a-trim-01.mov",
      "-ss 10.000 -t 4.500 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy -avoid_negative_ts "
      "make_zero -movflags +faststart /films/a-trim-02.mov"}},
};

static const std::vector<Row> exactSoundRows{
    {"an_exact_cut_is_encoded_and_keeps_sound_that_fits_an_mp4",
     exact(),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"sound_that_fits_no_mp4_is_encoded",
     exact([](Given &g) { g.file.audioStreams.first().codec = u"opus"_s; }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a aac -b:a 160k -movflags +faststart /films/a-trim.mov"}},
    // MP4 decides, whatever the output's container takes.
    {"a_matroska_file_s_opus_is_encoded",
     exact([](Given &g) {
         named("/films/a.mkv")(g);
         g.file.audioStreams.first().codec = u"opus"_s;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mkv -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a aac -b:a 160k /films/a-trim.mkv"}},
    {"the_first_of_several_tracks_decides",
     exact([](Given &g) { g.addAudio(u"opus"_s); }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"sound_of_unknown_codec_is_copied",
     exact([](Given &g) { g.file.audioStreams.first().codec.clear(); }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"a_chosen_audio_rate_is_encoded",
     exact([](Given &g) { g.params.advanced.audioBitrateKbps = 96; }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a aac -b:a 96k -movflags +faststart /films/a-trim.mov"}},
    {"a_gain_follows_encoded_sound",
     exact([](Given &g) {
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = -4.25;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a aac -b:a 96k -af volume=-4.2dB -movflags +faststart "
      "/films/a-trim.mov"}},
    // ffmpeg refuses this one.
    {"a_gain_follows_copied_sound_too",
     exact([](Given &g) { g.params.advanced.volumeDb = 0; }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -af volume=0.0dB -movflags +faststart /films/a-trim.mov"}},
    {"a_silent_film_has_no_audio_map_and_no_audio_group",
     exact([](Given &g) {
         g.file.audioStreams.clear();
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = 3;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -c:v h264_videotoolbox -b:v 3400k -pix_fmt "
      "yuv420p -movflags +faststart /films/a-trim.mov"}},
    {"a_replacement_is_opened_and_no_map_names_it",
     exact([](Given &g) { g.replaceAudio(); }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 0:a? -c:v "
      "h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a aac -b:a 160k -movflags +faststart "
      "-shortest /films/a-trim.mov"}},
    {"a_replacement_on_a_silent_film_has_map_and_audio_group",
     exact([](Given &g) {
         g.file.audioStreams.clear();
         g.replaceAudio();
         g.params.advanced.volumeDb = 1;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 0:a? -c:v "
      "h264_videotoolbox -b:v 3400k -pix_fmt yuv420p -c:a aac -b:a 160k -af volume=1.0dB "
      "-movflags +faststart -shortest /films/a-trim.mov"}},
};

static const std::vector<Row> exactPictureRows{
    {"a_recording_has_no_video_group",
     exact([](Given &g) {
         g.dropVideo();
         g.crop(CropSpec::Aspect::ratio1x1);
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:a? -c:a copy -movflags +faststart "
      "/films/a-trim.mov"}},
    {"neither_picture_nor_sound",
     exact([](Given &g) {
         g.dropVideo();
         g.file.audioStreams.clear();
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -movflags +faststart /films/a-trim.mov"}},
    // The filter stands inside the video group here.
    {"a_picture_of_unknown_codec_is_not_filtered",
     exact([](Given &g) {
         g.file.videoCodec.reset();
         g.file.width = 1279;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:a? -c:a copy -movflags +faststart "
      "/films/a-trim.mov"}},
    {"an_odd_size_is_rescaled_at_its_own_height",
     exact([](Given &g) {
         g.file.width = 1279;
         g.file.height = 719;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -vf scale=-2:719 -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"hdr_passes_through_hevc",
     exact([](Given &g) {
         g.file.isHDR = true;
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.hdrPassthrough = true;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v hevc_videotoolbox -b:v 3400k "
      "-pix_fmt p010le -color_primaries bt2020 -color_trc smpte2084 -colorspace bt2020nc -c:a "
      "copy -movflags +faststart /films/a-trim.mov"}},
    {"hdr_doesn_t_pass_through_h264",
     exact([](Given &g) {
         g.file.isHDR = true;
         g.params.advanced.hdrPassthrough = true;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"alpha_is_kept_by_any_encoder",
     exact([](Given &g) {
         g.file.hasAlphaChannel = true;
         g.params.advanced.codec = CodecChoice::proresVideoToolbox;
         g.params.advanced.preserveAlpha = true;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v prores_videotoolbox -b:v "
      "3400k -pix_fmt yuva444p10le -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"alpha_of_a_film_without_it_is_none",
     exact([](Given &g) { g.params.advanced.preserveAlpha = true; }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"a_quality_factor_counts_for_nothing",
     exact([](Given &g) {
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 18;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"a_frame_rate_cap_of_0_is_none",
     exact([](Given &g) { g.params.advanced.fpsCap = 0; }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"all_groups_stand_in_their_order",
     exact([](Given &g) {
         g.file.width = 1921;
         g.file.height = 1080;
         g.replaceAudio();
         g.crop(CropSpec::Aspect::ratio4x3);
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.audioBitrateKbps = 96;
         g.params.advanced.volumeDb = 1.5;
         g.params.advanced.fpsCap = 30;
         g.params.advanced.extraArgs = u"  -tune   film "_s;
     }),
     {"-ss 2.000 -t 3.000 -i /films/a.mov -i /music/b.m4a -map 0:v:0 -map 0:a? -c:v "
      "hevc_videotoolbox -b:v 3400k -pix_fmt yuv420p -vf "
      "crop=1440:1080:(iw-ow)/2:(ih-oh)/2,scale=-2:1080 -c:a aac -b:a 96k -af volume=1.5dB "
      "-movflags +faststart -shortest -r 30 -tune film /films/a-trim.mov"}},
};

// What rules out a copy without an exact cut being asked for.
static const std::vector<Row> forcedRows{
    {"a_crop_needs_an_encode",
     [](Given &g) { g.crop(CropSpec::Aspect::ratio1x1); },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -vf crop=720:720:(iw-ow)/2:(ih-oh)/2 -c:a copy -movflags +faststart "
      "/films/a-trim.mov"}},
    {"a_frame_rate_cap_needs_an_encode",
     [](Given &g) { g.params.advanced.fpsCap = 24; },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart -r 24 /films/a-trim.mov"}},
    {"a_frame_rate_cap_of_0_needs_one_too",
     [](Given &g) { g.params.advanced.fpsCap = 0; },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"the_software_choice_needs_an_encode_and_falls_to_hardware",
     [](Given &g) { g.params.advanced.codec = CodecChoice::softwareX264; },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart /films/a-trim.mov"}},
    {"extra_arguments_need_an_encode",
     [](Given &g) { g.params.advanced.extraArgs = u"-tune film"_s; },
     {"-ss 2.000 -t 3.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox -b:v 3400k "
      "-pix_fmt yuv420p -c:a copy -movflags +faststart -tune film /films/a-trim.mov"}},
};

INSTANTIATE_TEST_SUITE_P(Copy, TrimLine, ::testing::ValuesIn(copyRows), RowName());
INSTANTIATE_TEST_SUITE_P(Joined, TrimLine, ::testing::ValuesIn(joinedRows), RowName());
INSTANTIATE_TEST_SUITE_P(ExactSound, TrimLine, ::testing::ValuesIn(exactSoundRows), RowName());
INSTANTIATE_TEST_SUITE_P(ExactPicture, TrimLine, ::testing::ValuesIn(exactPictureRows), RowName());
INSTANTIATE_TEST_SUITE_P(Forced, TrimLine, ::testing::ValuesIn(forcedRows), RowName());

TEST(Trim, each_codec_choice_has_its_encoder)
{
    const QString h264 = u"h264_videotoolbox"_s;
    const std::vector<std::pair<CodecChoice, QString>> choices{
        {CodecChoice::automatic, h264},
        {CodecChoice::h264VideoToolbox, h264},
        {CodecChoice::hevcVideoToolbox, u"hevc_videotoolbox"_s},
        {CodecChoice::softwareX264, h264},
        {CodecChoice::proresVideoToolbox, u"prores_videotoolbox"_s},
        {CodecChoice::svtAV1, h264},
    };
    const QStringList plain = given(exact()).plan().steps.first().args;
    for (const auto &[codec, encoder] : choices) {
        Given g = given(exact());
        g.params.advanced.codec = codec;
        QStringList expected = plain;
        expected[expected.indexOf(u"-c:v"_s) + 1] = encoder;
        EXPECT_EQ(g.plan().steps.first().args, expected);
    }
}

TEST(Trim, an_exact_cut_takes_85_percent_of_the_source_s_rate)
{
    struct Case {
        std::optional<qint64> videoBps;
        qint64 fileBytes;
        // Absent for a film without sound.
        std::optional<qint64> audioBps;
        QString expected;
    };
    // The film lasts 60 seconds, so a million bytes are 133,333 bits a second.
    const std::vector<Case> cases{
        {4'000'000, 0, 64'000, u"3400k"_s},
        {1'999'999, 0, 64'000, u"1699k"_s},
        // Never under 300.
        {352'941, 0, 64'000, u"300k"_s},
        {354'200, 0, 64'000, u"301k"_s},
        {1, 0, 64'000, u"300k"_s},
        {100'000, 0, 64'000, u"300k"_s},
        // Unknown: the whole less the sound, which counts 128 where its rate isn't known.
        {std::nullopt, 15'000'000, 64'000, u"1645k"_s},
        {0, 15'000'000, 64'000, u"1645k"_s},
        {-5, 15'000'000, 64'000, u"1645k"_s},
        {std::nullopt, 15'000'000, 0, u"1591k"_s},
        {std::nullopt, 15'000'000, -5, u"1591k"_s},
        {std::nullopt, 15'000'000, std::nullopt, u"1700k"_s},
        {std::nullopt, 0, std::nullopt, u"300k"_s},
        {std::nullopt, 1'000, 64'000, u"300k"_s},
    };
    for (size_t number = 0; number < cases.size(); ++number) {
        const Case &c = cases[number];
        Given g = given(exact());
        g.file.videoBitrateBps = c.videoBps;
        g.file.fileSizeBytes = c.fileBytes;
        g.file.audioStreams.first().bitrateBps = c.audioBps;
        if (!c.audioBps) {
            g.file.audioStreams.clear();
        }
        const QStringList args = g.plan().steps.first().args;
        EXPECT_EQ(args.at(args.indexOf(u"-b:v"_s) + 1), c.expected) << "case " << number;
    }
}

TEST(Trim, a_sound_of_unknown_rate_counts_128_kilobits)
{
    Given g = given(exact());
    g.file.videoBitrateBps.reset();
    g.file.fileSizeBytes = 15'000'000;
    g.file.audioStreams.first().bitrateBps.reset();

    const QStringList args = g.plan().steps.first().args;

    EXPECT_EQ(args.at(args.indexOf(u"-b:v"_s) + 1), u"1591k"_s);
}

TEST(Trim, segments_of_5_hundredths_of_a_second_or_less_vanish)
{
    Given g;
    // A quarter and a twentieth more: 0.3 − 0.25 lies a hair below 0.05.
    g.params.segments = {segment(0, 0.05), segment(0.25, 0.3), segment(5, 5), segment(7, 6),
                         segment(8, 9)};

    const JobPlan plan = g.plan();

    EXPECT_EQ(startsOf(plan), QStringList{u"8.000"_s});
    EXPECT_EQ(namesOf(plan), QStringList{u"a-trim.mov"_s});
}

TEST(Trim, a_segment_just_over_5_hundredths_of_a_second_stays)
{
    Given g;
    g.params.segments = {segment(0, 0.0501)};
    EXPECT_EQ(startsOf(g.plan()), QStringList{u"0.000"_s});
}

TEST(Trim, a_trim_that_keeps_nothing_is_refused)
{
    for (const QList<TrimSegment> &segments :
         {QList<TrimSegment>(), QList<TrimSegment>{segment(0, 0.05), segment(3, 2)}}) {
        for (const bool exactReencode : {false, true}) {
            Given g;
            g.params.segments = segments;
            g.params.exactReencode = exactReencode;
            try {
                g.plan();
                ADD_FAILURE() << "a plan was made";
            } catch (const BuilderError &error) {
                EXPECT_EQ(error.kind(), BuilderError::Case::noSegments);
                EXPECT_EQ(error.errorDescription(), u"no trim segments"_s);
            }
        }
    }
}

TEST(Trim, segments_are_sorted_before_they_are_numbered)
{
    Given g;
    g.params.segments = {segment(30, 31), segment(2, 5), segment(10, 11)};
    for (const bool separateFiles : {false, true}) {
        g.params.separateFiles = separateFiles;
        EXPECT_EQ(startsOf(g.plan()), (QStringList{u"2.000"_s, u"10.000"_s, u"30.000"_s}));
    }
    EXPECT_EQ(namesOf(g.plan()),
              (QStringList{u"a-trim-01.mov"_s, u"a-trim-02.mov"_s, u"a-trim-03.mov"_s}));
}

TEST(Trim, segments_of_one_start_keep_their_order)
{
    Given g;
    // More than a handful: a sort that isn't stable leaves fewer than sixteen in their order.
    g.params.segments.clear();
    for (int i = 0; i < 40; ++i) {
        g.params.segments += segment(7, 8 + i);
    }
    const JobPlan plan = g.plan();
    for (int i = 0; i < 40; ++i) {
        EXPECT_EQ(plan.steps.at(i).progressDuration, 1 + i);
    }
}

TEST(Trim, overlapping_segments_are_kept_as_they_are)
{
    Given g;
    g.params.segments = {segment(2, 10), segment(4, 6), segment(2, 10)};

    const JobPlan plan = g.plan();

    EXPECT_EQ(startsOf(plan), (QStringList{u"2.000"_s, u"2.000"_s, u"4.000"_s}));
    EXPECT_EQ(plan.steps.at(0).progressDuration, 8);
    EXPECT_EQ(plan.steps.at(1).progressDuration, 8);
    EXPECT_EQ(plan.steps.at(2).progressDuration, 2);
}

TEST(Trim, one_segment_is_named_trim_and_several_are_numbered)
{
    Given g;
    for (const bool separateFiles : {false, true}) {
        g.params.separateFiles = separateFiles;
        EXPECT_EQ(namesOf(g.plan()), QStringList{u"a-trim.mov"_s});
    }
    // The one that vanishes doesn't count.
    g.params.segments += segment(20, 20);
    EXPECT_EQ(namesOf(g.plan()), QStringList{u"a-trim.mov"_s});

    g.params.segments += segment(20, 21);
    EXPECT_EQ(namesOf(g.plan()), (QStringList{u"a-trim-01.mov"_s, u"a-trim-02.mov"_s}));
}

TEST(Trim, numbers_beyond_99_have_three_digits)
{
    Given g;
    g.params.segments.clear();
    for (int i = 0; i < 100; ++i) {
        g.params.segments += segment(i, i + 1);
    }
    EXPECT_TRUE(g.plan().steps.at(99).args.last().endsWith(u"/seg-100.mov"_s));

    g.params.separateFiles = true;
    EXPECT_EQ(namesOf(g.plan()).first(), u"a-trim-01.mov"_s);
    EXPECT_EQ(namesOf(g.plan()).last(), u"a-trim-100.mov"_s);
}

TEST(Trim, outputs_and_temporary_segments_keep_the_source_s_extension_or_take_mp4)
{
    struct Case {
        QString name;
        QString extension;
        bool hasIndex;
    };
    const std::vector<Case> cases{
        {u"a.mp4"_s, u"mp4"_s, true},    {u"a.MOV"_s, u"mov"_s, true},
        {u"a.mkv"_s, u"mkv"_s, false},   {u"a.webm"_s, u"webm"_s, false},
        {u"a.avi"_s, u"avi"_s, false},   {u"a.M4v"_s, u"m4v"_s, true},
        {u"a.ts"_s, u"ts"_s, false},     {u"a.b.mkv"_s, u"mkv"_s, false},
        {u"a.mts"_s, u"mp4"_s, true},    {u"a.m4a"_s, u"mp4"_s, true},
        {u"a.flv"_s, u"mp4"_s, true},    {u"a"_s, u"mp4"_s, true},
        {u"a."_s, u"mp4"_s, true},       {u"mkv"_s, u"mp4"_s, true},
        {u".mkv"_s, u"mp4"_s, true},     {u".a.mkv"_s, u"mkv"_s, false},
        {u"a.mkv.gz"_s, u"mp4"_s, true}, {u"a.mkv "_s, u"mp4"_s, true},
    };
    for (const Case &c : cases) {
        for (const bool exactReencode : {false, true}) {
            Given g;
            g.file.url = QUrl::fromLocalFile(u"/films/"_s + c.name);
            g.params.segments += segment(20, 21);
            g.params.exactReencode = exactReencode;

            const JobPlan plan = g.plan();

            EXPECT_TRUE(namesOf(plan).first().endsWith(u"-trim."_s + c.extension));
            for (const FFmpegStep &step : plan.steps) {
                EXPECT_TRUE(step.args.last().endsWith(u'.' + c.extension)) << c.name.toStdString();
                EXPECT_EQ(step.args.contains(u"-movflags"_s), c.hasIndex) << c.name.toStdString();
            }
        }
    }
}

TEST(Trim, separate_outputs_are_all_that_the_plan_holds)
{
    for (const bool exactReencode : {false, true}) {
        Given g;
        g.params.segments += segment(20, 21.5);
        g.params.separateFiles = true;
        g.params.exactReencode = exactReencode;

        const JobPlan plan = g.plan();

        const QString label = exactReencode ? u"cut-encode"_s : u"cut"_s;
        EXPECT_EQ(labelsOf(plan.steps), (QStringList{label, label}));
        EXPECT_EQ(plan.finalOutputURLs,
                  (QList<QUrl>{QUrl::fromLocalFile(u"/films/a-trim-01.mov"_s),
                               QUrl::fromLocalFile(u"/films/a-trim-02.mov"_s)}));
        EXPECT_EQ(plan.steps.at(0).progressDuration, 3);
        EXPECT_EQ(plan.steps.at(1).progressDuration, 1.5);
        EXPECT_EQ(plan.badgeKey, std::nullopt);
        expectNothingBeside(plan);
    }
}

TEST(Trim, a_joined_output_comes_from_temporary_segments)
{
    const Scratch scratch;
    for (const bool exactReencode : {false, true}) {
        Given g;
        g.params.segments += segment(20, 21.5);
        g.params.exactReencode = exactReencode;

        const JobPlan plan = g.plan();

        const QString folder = folderOf(plan);
        const QUrl first = QUrl::fromLocalFile(folder + u"/seg-01.mov"_s);
        const QUrl second = QUrl::fromLocalFile(folder + u"/seg-02.mov"_s);
        const QUrl list = QUrl::fromLocalFile(folder + u"/concat.txt"_s);
        const QString label = exactReencode ? u"cut-encode"_s : u"cut"_s;
        EXPECT_EQ(labelsOf(plan.steps), (QStringList{label, label, u"concat"_s}));
        EXPECT_EQ(plan.steps.at(0).tempOutputURL, first);
        EXPECT_EQ(plan.steps.at(1).tempOutputURL, second);
        EXPECT_FALSE(plan.steps.at(2).tempOutputURL);
        EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{QUrl::fromLocalFile(u"/films/a-trim.mov"_s)});
        const PrepFile expectedList{list,
                                    u"file '%1/seg-01.mov'\nfile '%1/seg-02.mov'\n"_s.arg(folder)};
        EXPECT_EQ(plan.prepFiles, QList<PrepFile>{expectedList});
        EXPECT_EQ(plan.createDirs, QList<QUrl>{QUrl::fromLocalFile(folder)});
        EXPECT_EQ(plan.cleanupURLs,
                  (QList<QUrl>{first, second, list, QUrl::fromLocalFile(folder)}));
        EXPECT_EQ(plan.badgeKey, std::nullopt);
        EXPECT_EQ(plan.targetLimitBytes, std::nullopt);
        expectNoFurtherAttempts(plan);
    }
}

TEST(Trim, every_joined_plan_has_a_temporary_folder_of_its_own)
{
    const Scratch scratch;
    Given g;
    g.params.segments += segment(20, 21.5);

    const QString folder = folderOf(g.plan());

    expectIdentityBehind(scratch.path() + u"/mx-trim-"_s, folder);
    EXPECT_NE(folderOf(g.plan()), folder);
}

TEST(Trim, joining_weighs_a_tenth_of_what_is_kept)
{
    Given g;
    g.params.segments = {segment(20, 21.5), segment(2, 5), segment(3, 3.01), segment(4, 10)};

    const JobPlan plan = g.plan();

    ASSERT_EQ(plan.steps.size(), 4);
    EXPECT_EQ(plan.steps.at(0).progressDuration, 3);
    EXPECT_EQ(plan.steps.at(1).progressDuration, 6);
    EXPECT_EQ(plan.steps.at(2).progressDuration, 1.5);
    EXPECT_EQ(plan.steps.at(3).progressDuration, 10.5 * 0.1);
}

TEST(Trim, a_quote_in_a_path_goes_into_the_list_as_it_is)
{
    const TempFolder scratch;
    QDir(scratch.path()).mkdir(u"it's"_s);
    const ScopedEnvironment temporary("TMPDIR", scratch.path(u"it's"_s).toUtf8());
    Given g;
    g.params.segments += segment(20, 21.5);

    const QString list = g.plan().prepFiles.value(0).content;

    EXPECT_TRUE(list.startsWith(u"file '"_s + QDir(scratch.path()).canonicalPath() + u"/it's/"_s))
        << list.toStdString();
}

TEST(Trim, folder_and_template_name_the_outputs)
{
    const TempFolder folder;
    folder.write(u"trim-02 of a.mov"_s, "taken");
    Given g;
    g.params.segments += segment(20, 21.5);
    g.params.separateFiles = true;

    const JobPlan plan =
        CommandBuilder::trim(g.file, g.params, folder.url(QString()), u"{suffix} of {name}"_s);

    EXPECT_EQ(plan.finalOutputURLs, (QList<QUrl>{folder.url(u"trim-01 of a.mov"_s),
                                                 folder.url(u"trim-02 of a 2.mov"_s)}));
    EXPECT_EQ(plan.steps.at(1).args.last(), folder.path(u"trim-02 of a 2.mov"_s));
}

// A name isn't reserved by being given: nothing stands there yet when the second part asks.
TEST(Trim, parts_under_a_template_without_the_suffix_share_one_name)
{
    const TempFolder folder;
    Given g;
    g.params.segments += segment(20, 21.5);
    g.params.separateFiles = true;

    const JobPlan plan = CommandBuilder::trim(g.file, g.params, folder.url(QString()), u"{name}"_s);

    EXPECT_EQ(plan.finalOutputURLs, (QList<QUrl>{folder.url(u"a.mov"_s), folder.url(u"a.mov"_s)}));
}

TEST(Trim, paths_go_in_as_they_are)
{
    Given g = given(exact());
    const QString odd = u"/films/it's a \"film\" %20 ?#$HOME;"_s;
    g.file.url = QUrl::fromLocalFile(odd + u".mov"_s);
    g.params.advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/b c&d.m4a"_s);

    const QStringList args = g.plan().steps.first().args;

    EXPECT_EQ(valueOf(args, u"-i"_s), odd + u".mov"_s);
    EXPECT_EQ(args.count(u"/music/b c&d.m4a"_s), 1);
    EXPECT_EQ(args.last(), odd + u"-trim.mov"_s);
}
