// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "Engine/CommandBuilder/SharedArguments.h"
#include "support/TempFolder.h"

#include <QDir>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// A case before it is planned: a film of ten seconds that is far over eight megabytes, with one
/// audio track, on a build that has x264.
struct Given {
    VideoFile file;
    TargetSizeParams params;
    FFmpegToolset toolset;

    Given()
    {
        file.id = QUuid(u"{0E984725-C51C-4BF4-9960-E1C80E27ABA0}"_s);
        file.url = QUrl::fromLocalFile(u"/films/a.mov"_s);
        file.durationSeconds = 10;
        file.fileSizeBytes = 200'000'000;
        file.videoCodec = u"prores"_s;
        file.width = 1280;
        file.height = 720;
        addAudio();
        params.targetMB = 8;
        toolset.encoders = {u"libx264"_s, u"aac"_s};
    }

    void addAudio() { file.audioStreams.append(AudioStream()); }

    void dropVideo()
    {
        file.videoCodec.reset();
        file.width.reset();
        file.height.reset();
    }

    void replaceAudio()
    {
        params.advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/b.m4a"_s);
    }

    void crop(CropSpec::Aspect aspect)
    {
        CropSpec spec;
        spec.aspect = aspect;
        params.advanced.crop = spec;
    }

    JobPlan plan() const
    {
        return CommandBuilder::targetSize(file, params, toolset, std::nullopt, std::nullopt);
    }
};

using Change = std::function<void(Given &)>;

/// One case, named by what the command line does, with its lines behind the common head.
struct Row {
    const char *name;
    Change change;
    std::vector<const char *> lines;
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

QStringList labelsOf(const QList<FFmpegStep> &steps)
{
    QStringList labels;
    for (const FFmpegStep &step : steps) {
        labels += step.label;
    }
    return labels;
}

// The value behind the option; empty when it isn't there.
QString valueOf(const QStringList &args, const QString &option)
{
    const qsizetype position = args.indexOf(option);
    return position < 0 ? QString() : args.value(position + 1);
}

QString videoRateOf(const JobPlan &plan)
{
    return valueOf(plan.steps.last().args, u"-b:v"_s);
}

// The line with another rate and output: all in which attempts may differ.
QStringList changed(QStringList args, const QString &rate, const QUrl &output)
{
    args[args.indexOf(u"-b:v"_s) + 1] = rate;
    if (args.last() == "/films/a-8MB.mp4"_L1) {
        args.last() = output.toLocalFile();
    }
    return args;
}

void expectNoFurtherAttempts(const JobPlan &plan)
{
    EXPECT_FALSE(plan.retryFactory);
    EXPECT_FALSE(plan.approach);
}

void expectNothingToPrepare(const JobPlan &plan)
{
    EXPECT_TRUE(plan.prepFiles.isEmpty());
    EXPECT_TRUE(plan.createDirs.isEmpty());
}

/// A folder that is the system's temporary one until the test ends.
class Scratch
{
public:
    QString path() const { return QDir(m_folder.path()).canonicalPath(); }

private:
    TempFolder m_folder;
    ScopedEnvironment m_temporary{"TMPDIR", m_folder.path().toUtf8()};
};

class TargetSizeLine : public ::testing::TestWithParam<Row>
{
protected:
    // The table writes "/scratch" for the temporary folder.
    QStringList expectedLine(size_t step) const
    {
        return commandLine(GetParam().lines.at(step))
            .replaceInStrings(u"/scratch"_s, scratch.path());
    }

    Scratch scratch;
};

const QUrl outputUrl = QUrl::fromLocalFile(QStringLiteral("/films/a-8MB.mp4"));

} // namespace

TEST_P(TargetSizeLine, is_laid_out)
{
    const JobPlan plan = given(GetParam().change).plan();

    ASSERT_EQ(static_cast<size_t>(plan.steps.size()), GetParam().lines.size());
    for (size_t step = 0; step < GetParam().lines.size(); ++step) {
        EXPECT_EQ(plan.steps.at(static_cast<qsizetype>(step)).args, expectedLine(step));
    }
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
         g.addAudio();
         g.addAudio();
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

static std::string rowName(const ::testing::TestParamInfo<Row> &info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Plain, TargetSizeLine, ::testing::ValuesIn(onePassRows), rowName);
INSTANTIATE_TEST_SUITE_P(Skips, TargetSizeLine, ::testing::ValuesIn(skipRows), rowName);
INSTANTIATE_TEST_SUITE_P(Sound, TargetSizeLine, ::testing::ValuesIn(soundRows), rowName);
INSTANTIATE_TEST_SUITE_P(Picture, TargetSizeLine, ::testing::ValuesIn(pictureRows), rowName);
INSTANTIATE_TEST_SUITE_P(TwoPasses, TargetSizeLine, ::testing::ValuesIn(twoPassRows), rowName);
INSTANTIATE_TEST_SUITE_P(Copy, TargetSizeLine, ::testing::ValuesIn(copyRows), rowName);

TEST(TargetSize, each_codec_choice_has_its_encoder_in_one_pass)
{
    struct Choice {
        CodecChoice codec;
        QString withX264;
        QString without;
    };
    const QString h264 = u"h264_videotoolbox"_s;
    const std::vector<Choice> choices{
        {CodecChoice::automatic, h264, h264},
        {CodecChoice::h264VideoToolbox, h264, h264},
        {CodecChoice::hevcVideoToolbox, u"hevc_videotoolbox"_s, u"hevc_videotoolbox"_s},
        {CodecChoice::softwareX264, u"libx264"_s, h264},
        {CodecChoice::proresVideoToolbox, u"prores_videotoolbox"_s, u"prores_videotoolbox"_s},
        {CodecChoice::svtAV1, h264, h264},
    };
    const QStringList plain = Given().plan().steps.first().args;
    for (const Choice &choice : choices) {
        Given g;
        g.params.advanced.codec = choice.codec;
        QStringList expected = plain;
        expected[expected.indexOf(u"-c:v"_s) + 1] = choice.withX264;
        EXPECT_EQ(g.plan().steps.first().args, expected);

        g.toolset.encoders.remove(u"libx264"_s);
        expected[expected.indexOf(u"-c:v"_s) + 1] = choice.without;
        EXPECT_EQ(g.plan().steps.first().args, expected);
    }
}

TEST(TargetSize, two_passes_are_made_by_x264_whatever_the_choice)
{
    Given plain;
    plain.params.exactTwoPass = true;
    const QList<FFmpegStep> expected = plain.plan().steps;
    for (const CodecChoice codec :
         {CodecChoice::h264VideoToolbox, CodecChoice::hevcVideoToolbox, CodecChoice::softwareX264,
          CodecChoice::proresVideoToolbox, CodecChoice::svtAV1}) {
        Given g = plain;
        g.params.advanced.codec = codec;
        EXPECT_EQ(g.plan().steps, expected);
    }
    EXPECT_EQ(valueOf(expected.first().args, u"-c:v"_s), u"libx264"_s);
}

TEST(TargetSize, prores_is_taken_at_a_rate_in_one_pass_and_replaced_in_two)
{
    Given g;
    g.params.advanced.codec = CodecChoice::proresVideoToolbox;
    const QStringList onePass = g.plan().steps.first().args;
    g.params.exactTwoPass = true;
    const QList<FFmpegStep> twoPasses = g.plan().steps;

    EXPECT_EQ(valueOf(onePass, u"-c:v"_s), u"prores_videotoolbox"_s);
    EXPECT_EQ(valueOf(onePass, u"-b:v"_s), u"6161k"_s);
    EXPECT_EQ(valueOf(onePass, u"-pix_fmt"_s), u"yuv420p"_s);
    ASSERT_EQ(twoPasses.size(), 2);
    EXPECT_EQ(valueOf(twoPasses.first().args, u"-c:v"_s), u"libx264"_s);
    EXPECT_EQ(valueOf(twoPasses.last().args, u"-c:v"_s), u"libx264"_s);
}

TEST(TargetSize, paths_go_in_as_they_are)
{
    Given g;
    const QString odd = u"/films/it's a \"film\" %20 ?#$HOME;"_s;
    g.file.url = QUrl::fromLocalFile(odd + u".mov"_s);
    g.params.advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/b c&d.m4a"_s);

    const QStringList args = g.plan().steps.first().args;

    EXPECT_EQ(valueOf(args, u"-i"_s), odd + u".mov"_s);
    EXPECT_EQ(args.count(u"/music/b c&d.m4a"_s), 1);
    EXPECT_EQ(args.last(), odd + u"-8MB.mp4"_s);
}

TEST(TargetSize, a_file_exactly_as_large_as_the_limit_is_copied)
{
    Given g;
    g.file.fileSizeBytes = 8'000'000;
    EXPECT_EQ(labelsOf(g.plan().steps), QStringList{u"remux"_s});
}

TEST(TargetSize, a_file_one_byte_over_the_limit_is_encoded)
{
    Given g;
    g.file.fileSizeBytes = 8'000'001;
    EXPECT_EQ(labelsOf(g.plan().steps), QStringList{u"encode"_s});
}

TEST(TargetSize, the_limit_is_cut_to_whole_bytes_and_not_rounded)
{
    // 8.2 has no exact form: a million times that lies a hair below 8,200,000.
    Given g;
    g.params.targetMB = 8.2;
    g.file.fileSizeBytes = 8'200'000;
    EXPECT_EQ(g.plan().targetLimitBytes, 8'199'999);

    g.file.fileSizeBytes = 8'199'999;
    EXPECT_EQ(g.plan().badgeKey, u"target.alreadyfits"_s);
}

TEST(TargetSize, the_copy_ignores_mute_and_keeps_the_sound)
{
    Given g;
    g.file.fileSizeBytes = 8'000'000;
    const QList<FFmpegStep> loud = g.plan().steps;
    g.params.muted = true;
    const QList<FFmpegStep> muted = g.plan().steps;

    EXPECT_EQ(muted, loud);
    EXPECT_TRUE(muted.first().args.contains(u"0:a?"_s));
    EXPECT_FALSE(muted.first().args.contains(u"-an"_s));
}

TEST(TargetSize, an_already_fits_plan_promises_no_size_and_has_a_badge)
{
    Given g;
    g.file.fileSizeBytes = 8'000'000;
    g.params.exactTwoPass = true;
    g.params.skipHeadSeconds = 4;

    const JobPlan plan = g.plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().label, u"remux"_s);
    EXPECT_EQ(plan.steps.first().progressDuration, 10);
    EXPECT_FALSE(plan.steps.first().tempOutputURL);
    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{outputUrl});
    EXPECT_EQ(plan.badgeKey, u"target.alreadyfits"_s);
    EXPECT_EQ(plan.targetLimitBytes, std::nullopt);
    EXPECT_TRUE(plan.cleanupURLs.isEmpty());
    expectNoFurtherAttempts(plan);
    expectNothingToPrepare(plan);
}

TEST(TargetSize, an_encode_plan_promises_the_size_and_can_try_again)
{
    const Scratch scratch;
    const JobPlan plan = Given().plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().label, u"encode"_s);
    EXPECT_EQ(plan.steps.first().progressDuration, 10);
    EXPECT_FALSE(plan.steps.first().tempOutputURL);
    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{outputUrl});
    EXPECT_EQ(plan.badgeKey, std::nullopt);
    EXPECT_EQ(plan.targetLimitBytes, 8'000'000);
    EXPECT_TRUE(plan.cleanupURLs.isEmpty());
    expectNothingToPrepare(plan);
    EXPECT_TRUE(plan.retryFactory);
    ASSERT_TRUE(plan.approach);
    EXPECT_TRUE(plan.approach->factory);
    EXPECT_EQ(plan.approach->tmpURL,
              QUrl::fromLocalFile(scratch.path() +
                                  u"/mx-approach-0e984725-c51c-4bf4-9960-e1c80e27aba0.mp4"_s));
    EXPECT_EQ(plan.approach->finalURL, outputUrl);
}

TEST(TargetSize, a_two_pass_plan_cleans_up_both_pass_logs)
{
    const Scratch scratch;
    Given g;
    g.params.exactTwoPass = true;
    g.params.skipHeadSeconds = 2;

    const JobPlan plan = g.plan();

    EXPECT_EQ(labelsOf(plan.steps), (QStringList{u"pass1"_s, u"pass2"_s}));
    EXPECT_DOUBLE_EQ(plan.steps.first().progressDuration, 8 * 0.35);
    EXPECT_DOUBLE_EQ(plan.steps.last().progressDuration, 8 * 0.65);
    EXPECT_FALSE(plan.steps.first().tempOutputURL);
    EXPECT_FALSE(plan.steps.last().tempOutputURL);
    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{outputUrl});
    EXPECT_EQ(plan.badgeKey, std::nullopt);
    EXPECT_EQ(plan.targetLimitBytes, 8'000'000);
    const QString prefix = scratch.path() + u"/mx-2pass-0e984725-c51c-4bf4-9960-e1c80e27aba0"_s;
    EXPECT_EQ(plan.cleanupURLs, (QList<QUrl>{QUrl::fromLocalFile(prefix + u"-0.log"_s),
                                             QUrl::fromLocalFile(prefix + u"-1.log"_s)}));
}

TEST(TargetSize, two_passes_without_x264_fall_back_to_one_step_and_clean_up_nothing)
{
    Given g;
    g.params.exactTwoPass = true;
    g.toolset.encoders.remove(u"libx264"_s);

    const JobPlan plan = g.plan();

    EXPECT_EQ(labelsOf(plan.steps), QStringList{u"encode"_s});
    EXPECT_TRUE(plan.cleanupURLs.isEmpty());
    EXPECT_TRUE(plan.retryFactory(100).cleanupURLs.isEmpty());
}

TEST(TargetSize, x264_alone_doesn_t_make_two_passes)
{
    EXPECT_EQ(labelsOf(Given().plan().steps), QStringList{u"encode"_s});
}

TEST(TargetSize, a_retry_differs_in_its_rate_alone)
{
    for (const bool twoPasses : {false, true}) {
        Given g;
        g.params.exactTwoPass = twoPasses;
        g.params.skipHeadSeconds = 2;
        const JobPlan plan = g.plan();

        const JobPlan retry = plan.retryFactory(930);

        ASSERT_EQ(retry.steps.size(), plan.steps.size());
        for (qsizetype step = 0; step < plan.steps.size(); ++step) {
            FFmpegStep expected = plan.steps.at(step);
            expected.args = changed(expected.args, u"930k"_s, outputUrl);
            EXPECT_EQ(retry.steps.at(step).args, expected.args);
            EXPECT_EQ(retry.steps.at(step), expected);
        }
        EXPECT_EQ(retry.finalOutputURLs, QList<QUrl>{outputUrl});
        EXPECT_EQ(retry.badgeKey, std::nullopt);
        EXPECT_EQ(retry.targetLimitBytes, 8'000'000);
        EXPECT_EQ(retry.cleanupURLs, plan.cleanupURLs);
        expectNoFurtherAttempts(retry);
        expectNothingToPrepare(retry);
    }
}

TEST(TargetSize, an_attempt_upward_writes_to_the_temporary_file_and_cleans_up_that_alone)
{
    for (const bool twoPasses : {false, true}) {
        Given g;
        g.params.exactTwoPass = twoPasses;
        g.params.skipHeadSeconds = 2;
        const JobPlan plan = g.plan();

        const JobPlan attempt = plan.approach->factory(9000);

        ASSERT_EQ(attempt.steps.size(), plan.steps.size());
        for (qsizetype step = 0; step < plan.steps.size(); ++step) {
            FFmpegStep expected = plan.steps.at(step);
            expected.args = changed(expected.args, u"9000k"_s, plan.approach->tmpURL);
            EXPECT_EQ(attempt.steps.at(step).args, expected.args);
            EXPECT_EQ(attempt.steps.at(step), expected);
        }
        EXPECT_EQ(attempt.steps.last().args.last(), plan.approach->tmpURL.toLocalFile());
        EXPECT_EQ(attempt.finalOutputURLs, QList<QUrl>{plan.approach->tmpURL});
        EXPECT_EQ(attempt.badgeKey, std::nullopt);
        EXPECT_EQ(attempt.targetLimitBytes, 8'000'000);
        EXPECT_EQ(attempt.cleanupURLs, QList<QUrl>{plan.approach->tmpURL});
        expectNoFurtherAttempts(attempt);
        expectNothingToPrepare(attempt);
    }
}

TEST(TargetSize, the_factories_outlive_the_plan_and_give_fresh_plans)
{
    PlanFactory retry;
    PlanFactory upward;
    {
        const JobPlan plan = Given().plan();
        retry = plan.retryFactory;
        upward = plan.approach->factory;
    }

    EXPECT_EQ(videoRateOf(retry(500)), u"500k"_s);
    EXPECT_EQ(videoRateOf(retry(400)), u"400k"_s);
    EXPECT_EQ(videoRateOf(upward(700)), u"700k"_s);
    EXPECT_EQ(videoRateOf(upward(800)), u"800k"_s);
    EXPECT_EQ(videoRateOf(retry(500)), u"500k"_s);
}

TEST(TargetSize, the_retry_keeps_the_output_even_when_something_stands_there_by_now)
{
    const TempFolder folder;
    Given g;
    g.file.url = folder.url(u"a.mov"_s);
    const JobPlan plan = g.plan();
    folder.write(u"a-8MB.mp4"_s, "the first attempt");

    EXPECT_EQ(plan.retryFactory(100).finalOutputURLs, plan.finalOutputURLs);
    EXPECT_EQ(plan.retryFactory(100).steps.last().args.last(), folder.path(u"a-8MB.mp4"_s));
}

TEST(TargetSize, a_head_skip_of_0_without_a_tail_skip_gives_a_length_and_no_seek)
{
    Given g;
    g.params.skipHeadSeconds = 0;

    const QStringList args = g.plan().steps.first().args;

    EXPECT_EQ(valueOf(args, u"-t"_s), u"10.000"_s);
    EXPECT_FALSE(args.contains(u"-ss"_s));
}

TEST(TargetSize, a_head_skip_of_10_seeks_there_and_takes_the_remaining_length)
{
    Given g;
    g.file.durationSeconds = 30;
    g.params.skipHeadSeconds = 10;

    const JobPlan plan = g.plan();

    EXPECT_EQ(plan.steps.first().args.sliced(8, 6), words("-ss 10.000 -t 20.000 -i /films/a.mov"));
    EXPECT_EQ(videoRateOf(plan), u"3048k"_s);
    EXPECT_EQ(plan.steps.first().progressDuration, 20);
}

TEST(TargetSize, a_muted_job_with_a_replacement_has_no_second_input_and_no_sound)
{
    Given g;
    g.params.muted = true;
    g.replaceAudio();

    const QStringList args = g.plan().steps.first().args;

    EXPECT_EQ(args.count(u"-i"_s), 1);
    EXPECT_TRUE(args.contains(u"-an"_s));
    EXPECT_TRUE(args.contains(u"0:a?"_s));
}

TEST(TargetSize, a_replacement_on_a_source_without_sound_still_has_the_audio_group)
{
    Given g;
    g.file.audioStreams.clear();
    g.replaceAudio();

    const QStringList args = g.plan().steps.first().args;

    EXPECT_EQ(valueOf(args, u"-c:a"_s), u"aac"_s);
}

TEST(TargetSize, the_source_s_rate_caps_the_first_attempt)
{
    struct Case {
        std::optional<qint64> sourceBps;
        QString expected;
    };
    const std::vector<Case> cases{
        {std::nullopt, u"6161k"_s},
        {0, u"6161k"_s},
        {-5, u"6161k"_s},
        {1, u"0k"_s},
        {999, u"0k"_s},
        {1'000'000, u"1000k"_s},
        {1'000'999, u"1000k"_s},
        {6'160'999, u"6160k"_s},
        {6'161'999, u"6161k"_s},
        {6'162'000, u"6161k"_s},
        {50'000'000, u"6161k"_s},
    };
    for (const Case &c : cases) {
        Given g;
        g.file.videoBitrateBps = c.sourceBps;
        EXPECT_EQ(videoRateOf(g.plan()), c.expected);
    }
}

TEST(TargetSize, the_source_s_rate_caps_the_first_attempt_only)
{
    // 3048 kilobits are planned.
    Given g;
    g.file.durationSeconds = 20;
    g.file.videoBitrateBps = 1'000'000;

    const JobPlan plan = g.plan();

    EXPECT_EQ(videoRateOf(plan), u"1000k"_s);
    EXPECT_EQ(videoRateOf(plan.retryFactory(2000)), u"2000k"_s);
    EXPECT_EQ(videoRateOf(plan.approach->factory(3000)), u"3000k"_s);
}

TEST(TargetSize, an_unreachable_target_is_planned_at_the_floor)
{
    Given g;
    g.file.durationSeconds = 2000;

    const JobPlan plan = g.plan();

    EXPECT_EQ(videoRateOf(plan), u"64k"_s);
    EXPECT_EQ(plan.targetLimitBytes, 8'000'000);
}

TEST(TargetSize, the_output_is_named_after_the_target)
{
    const std::vector<std::pair<double, QString>> rows{
        {8, u"/films/a-8MB.mp4"_s},
        {8.5, u"/films/a-8.5MB.mp4"_s},
        {8.25, u"/films/a-8.2MB.mp4"_s},
        {25, u"/films/a-25MB.mp4"_s},
    };
    for (const auto &[megabytes, path] : rows) {
        for (const qint64 bytes : {qint64{1}, qint64{200'000'000}}) {
            Given g;
            g.params.targetMB = megabytes;
            g.file.fileSizeBytes = bytes;
            EXPECT_EQ(g.plan().finalOutputURLs.first().toLocalFile(), path);
            EXPECT_EQ(g.plan().steps.last().args.last(), path);
        }
    }
}

TEST(TargetSize, a_taken_output_name_is_numbered_for_copies_and_encodes)
{
    const TempFolder folder;
    folder.write(u"a-8MB.mp4"_s, "taken");
    for (const qint64 bytes : {qint64{1}, qint64{200'000'000}}) {
        Given g;
        g.file.url = folder.url(u"a.mov"_s);
        g.file.fileSizeBytes = bytes;

        const JobPlan plan = g.plan();

        EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"a-8MB 2.mp4"_s)});
        EXPECT_EQ(plan.steps.last().args.last(), folder.path(u"a-8MB 2.mp4"_s));
        if (plan.approach) {
            EXPECT_EQ(plan.approach->finalURL, folder.url(u"a-8MB 2.mp4"_s));
        }
    }
}

TEST(TargetSize, folder_and_template_name_the_output_and_the_container_is_always_mp4)
{
    const TempFolder folder;
    for (const qint64 bytes : {qint64{1}, qint64{200'000'000}}) {
        Given g;
        g.file.url = QUrl::fromLocalFile(u"/films/a.b.webm"_s);
        g.file.fileSizeBytes = bytes;

        const JobPlan plan = CommandBuilder::targetSize(
            g.file, g.params, g.toolset, folder.url(QString()), u"{suffix} {name} {ext}"_s);

        EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"8MB a.b mp4.mp4"_s)});
    }
}

TEST(TargetSize, encode_steps_take_length_rates_height_and_output_from_the_attempt)
{
    const Given g;
    CommandBuilder::EncodeAttempt attempt;
    attempt.file = g.file;
    attempt.params = g.params;
    attempt.params.skipTailSeconds = 1;
    attempt.duration = 4.0625;
    attempt.videoKbps = 1234;
    attempt.audioKbps = 77;
    attempt.maxHeight = 360;
    attempt.output = QUrl::fromLocalFile(u"/out/x.mp4"_s);
    attempt.toolset = g.toolset;

    const QList<FFmpegStep> steps = CommandBuilder::encodeSteps(attempt);

    ASSERT_EQ(steps.size(), 1);
    EXPECT_EQ(steps.first().progressDuration, 4.0625);
    EXPECT_EQ(steps.first().args,
              commandLine("-t 4.062 -i /films/a.mov -map 0:v:0 -map 0:a? -c:v h264_videotoolbox "
                          "-b:v 1234k -pix_fmt yuv420p -vf scale=-2:360 -c:a aac -b:a 77k "
                          "-movflags +faststart /out/x.mp4"));
}

TEST(TargetSize, encode_steps_take_the_passes_from_the_attempt_and_not_from_the_parameters)
{
    const Given g;
    CommandBuilder::EncodeAttempt attempt;
    attempt.file = g.file;
    attempt.params = g.params;
    attempt.params.exactTwoPass = true;
    attempt.toolset = g.toolset;

    attempt.passes = CommandBuilder::Passes::one;
    EXPECT_EQ(labelsOf(CommandBuilder::encodeSteps(attempt)), QStringList{u"encode"_s});

    attempt.passes = CommandBuilder::Passes::two;
    attempt.params.exactTwoPass = false;
    EXPECT_EQ(labelsOf(CommandBuilder::encodeSteps(attempt)),
              (QStringList{u"pass1"_s, u"pass2"_s}));
}
