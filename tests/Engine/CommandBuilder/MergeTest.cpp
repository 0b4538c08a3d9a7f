// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/BuilderError.h"
#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/GoldenLines.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <array>
#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;

namespace {

constexpr std::array allContainers{OutputContainer::mp4, OutputContainer::mov, OutputContainer::mkv,
                                   OutputContainer::webm, OutputContainer::avi};

/// A case before it is planned: two films of 10 and 2.5 seconds, alike in all streams, on a build
/// that has every software encoder.
struct Given {
    QList<VideoFile> files;
    MergeParams params;
    FFmpegToolset toolset = offering({u"libx264"_s, u"libvpx-vp9"_s, u"aac"_s});

    Given()
    {
        add(u"/films/a.mov"_s, 10);
        add(u"/films/b.mp4"_s, 2.5);
    }

    VideoFile &add(const QString &path, double seconds)
    {
        VideoFile file = Samples::tenSeconds();
        file.url = QUrl::fromLocalFile(path);
        file.durationSeconds = seconds;
        file.videoBitrateBps = 5'000'999;
        file.fps = 25;
        file.audioStreams = {Samples::track(u"aac"_s)};
        files.append(file);
        return files.last();
    }

    // Streams that can't be joined as they are.
    void differ() { files.last().width = 640; }

    JobPlan plan() const
    {
        return CommandBuilder::merge(files, params, toolset, std::nullopt, std::nullopt);
    }
};

using Row = LineRow<Given>;

class MergeLine : public ::testing::TestWithParam<Row>
{
};

// Where the list of a copy stands; another folder for every plan.
QString listOf(const JobPlan &plan)
{
    return plan.prepFiles.value(0).url.toLocalFile();
}

} // namespace

TEST_P(MergeLine, is_laid_out)
{
    Given g;
    GetParam().change(g);

    const JobPlan plan = g.plan();

    ASSERT_EQ(plan.steps.size(), 1);
    // The table writes "LIST" for the list of the copy.
    EXPECT_EQ(plan.steps.first().args,
              commandLine(GetParam().line).replaceInStrings(u"LIST"_s, listOf(plan)));
}

// Films that are alike are joined as they are.
static const std::vector<Row> copyRows{
    {"films_that_match_are_copied", [](Given &) {},
     "-f concat -safe 0 -i LIST -c copy -movflags +faststart /films/a-merged.mp4"},
    {"a_copied_mov_has_its_index_at_the_head",
     [](Given &g) { g.params.container = OutputContainer::mov; },
     "-f concat -safe 0 -i LIST -c copy -movflags +faststart /films/a-merged.mov"},
    {"a_copied_mkv_has_no_flags", [](Given &g) { g.params.container = OutputContainer::mkv; },
     "-f concat -safe 0 -i LIST -c copy /films/a-merged.mkv"},
    {"a_copied_avi_has_no_flags", [](Given &g) { g.params.container = OutputContainer::avi; },
     "-f concat -safe 0 -i LIST -c copy /films/a-merged.avi"},
    {"a_copy_goes_into_a_webm_that_can_t_hold_it",
     [](Given &g) { g.params.container = OutputContainer::webm; },
     "-f concat -safe 0 -i LIST -c copy /films/a-merged.webm"},
    {"no_advanced_option_reaches_a_copy",
     [](Given &g) {
         AdvancedOptions &advanced = g.params.advanced;
         advanced.codec = CodecChoice::softwareX264;
         advanced.crf = 20;
         advanced.fpsCap = 24;
         advanced.audioBitrateKbps = 96;
         advanced.volumeDb = 3;
         advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/b.m4a"_s);
         advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};
         advanced.extraArgs = u"-tune film"_s;
     },
     "-f concat -safe 0 -i LIST -c copy -movflags +faststart /films/a-merged.mp4"},
};

// Films that differ are encoded onto one canvas.
static const std::vector<Row> encodeRows{
    {"films_that_differ_are_encoded", [](Given &g) { g.differ(); },
     "-i /films/a.mov -i /films/b.mp4 -filter_complex "
     "[0:v]scale=1280:720:force_original_aspect_ratio=decrease,pad=1280:720:(ow-iw)/2:(oh-ih)/2,"
     "setsar=1[v0];[0:a]aresample=48000,aformat=channel_layouts=stereo[a0];"
     "[1:v]scale=1280:720:force_original_aspect_ratio=decrease,pad=1280:720:(ow-iw)/2:(oh-ih)/2,"
     "setsar=1[v1];[1:a]aresample=48000,aformat=channel_layouts=stereo[a1];"
     "[v0][a0][v1][a1]concat=n=2:v=1:a=1[v][a] -map [v] -map [a] -c:v h264_videotoolbox "
     "-b:v 5000k -pix_fmt yuv420p -c:a aac -b:a 160k -movflags +faststart /films/a-merged.mp4"},
    {"films_that_match_are_encoded_on_demand", [](Given &g) { g.params.forceReencode = true; },
     "-i /films/a.mov -i /films/b.mp4 -filter_complex "
     "[0:v]scale=1280:720:force_original_aspect_ratio=decrease,pad=1280:720:(ow-iw)/2:(oh-ih)/2,"
     "setsar=1[v0];[0:a]aresample=48000,aformat=channel_layouts=stereo[a0];"
     "[1:v]scale=1280:720:force_original_aspect_ratio=decrease,pad=1280:720:(ow-iw)/2:(oh-ih)/2,"
     "setsar=1[v1];[1:a]aresample=48000,aformat=channel_layouts=stereo[a1];"
     "[v0][a0][v1][a1]concat=n=2:v=1:a=1[v][a] -map [v] -map [a] -c:v h264_videotoolbox "
     "-b:v 5000k -pix_fmt yuv420p -c:a aac -b:a 160k -movflags +faststart /films/a-merged.mp4"},
    {"one_silent_film_leaves_all_silent", [](Given &g) { g.files.last().audioStreams.clear(); },
     "-i /films/a.mov -i /films/b.mp4 -filter_complex "
     "[0:v]scale=1280:720:force_original_aspect_ratio=decrease,pad=1280:720:(ow-iw)/2:(oh-ih)/2,"
     "setsar=1[v0];"
     "[1:v]scale=1280:720:force_original_aspect_ratio=decrease,pad=1280:720:(ow-iw)/2:(oh-ih)/2,"
     "setsar=1[v1];[v0][v1]concat=n=2:v=1:a=0[v] -map [v] -c:v h264_videotoolbox "
     "-b:v 5000k -pix_fmt yuv420p -movflags +faststart /films/a-merged.mp4"},
    {"three_films_share_the_canvas_of_the_widest_and_the_highest",
     [](Given &g) {
         g.files[0].width = 1920;
         g.files[0].height = 800;
         g.files[1].width = 1081;
         g.files[1].height = 1921;
         g.add(u"/films/c.mkv"_s, 1).videoBitrateBps = 9'999'999;
     },
     "-i /films/a.mov -i /films/b.mp4 -i /films/c.mkv -filter_complex "
     "[0:v]scale=1920:1920:force_original_aspect_ratio=decrease,pad=1920:1920:(ow-iw)/2:(oh-ih)/2,"
     "setsar=1[v0];[0:a]aresample=48000,aformat=channel_layouts=stereo[a0];"
     "[1:v]scale=1920:1920:force_original_aspect_ratio=decrease,pad=1920:1920:(ow-iw)/2:(oh-ih)/2,"
     "setsar=1[v1];[1:a]aresample=48000,aformat=channel_layouts=stereo[a1];"
     "[2:v]scale=1920:1920:force_original_aspect_ratio=decrease,pad=1920:1920:(ow-iw)/2:(oh-ih)/2,"
     "setsar=1[v2];[2:a]aresample=48000,aformat=channel_layouts=stereo[a2];"
     "[v0][a0][v1][a1][v2][a2]concat=n=3:v=1:a=1[v][a] -map [v] -map [a] -c:v h264_videotoolbox "
     "-b:v 9999k -pix_fmt yuv420p -c:a aac -b:a 160k -movflags +faststart /films/a-merged.mp4"},
};

// The codec group, on the plain graph of two silent films.
static const char *const silentGraph =
    "-i /films/a.mov -i /films/b.mp4 -filter_complex "
    "[0:v]scale=1280:720:force_original_aspect_ratio=decrease,pad=1280:720:(ow-iw)/2:(oh-ih)/2,"
    "setsar=1[v0];"
    "[1:v]scale=1280:720:force_original_aspect_ratio=decrease,pad=1280:720:(ow-iw)/2:(oh-ih)/2,"
    "setsar=1[v1];[v0][v1]concat=n=2:v=1:a=0[v] -map [v] ";

static const char *const soundGraph =
    "-i /films/a.mov -i /films/b.mp4 -filter_complex "
    "[0:v]scale=1280:720:force_original_aspect_ratio=decrease,pad=1280:720:(ow-iw)/2:(oh-ih)/2,"
    "setsar=1[v0];[0:a]aresample=48000,aformat=channel_layouts=stereo[a0];"
    "[1:v]scale=1280:720:force_original_aspect_ratio=decrease,pad=1280:720:(ow-iw)/2:(oh-ih)/2,"
    "setsar=1[v1];[1:a]aresample=48000,aformat=channel_layouts=stereo[a1];"
    "[v0][a0][v1][a1]concat=n=2:v=1:a=1[v][a] -map [v] -map [a] ";

/// As MergeLine, the line going on behind a graph.
class MergeCodecs : public ::testing::TestWithParam<Row>
{
};

TEST_P(MergeCodecs, stand_behind_the_graph)
{
    for (const bool silent : {false, true}) {
        Given g;
        g.params.forceReencode = true;
        for (VideoFile &file : g.files) {
            if (silent) {
                file.audioStreams.clear();
            }
        }
        GetParam().change(g);
        // The table puts what only films with sound have into braces.
        QString tail = QString::fromUtf8(GetParam().line);
        static const QRegularExpression ofSound(u"\\{(.*)\\} "_s);
        tail.replace(ofSound, silent ? QString() : u"\\1 "_s);

        EXPECT_EQ(g.plan().steps.first().args, commandLine(silent ? silentGraph : soundGraph) +
                                                   words(tail.toUtf8().constData()));
    }
}

static const std::vector<Row> codecRows{
    {"a_mov", [](Given &g) { g.params.container = OutputContainer::mov; },
     "-c:v h264_videotoolbox -b:v 5000k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "-movflags +faststart /films/a-merged.mov"},
    {"an_mkv_without_flags", [](Given &g) { g.params.container = OutputContainer::mkv; },
     "-c:v h264_videotoolbox -b:v 5000k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "/films/a-merged.mkv"},
    {"an_avi_without_flags", [](Given &g) { g.params.container = OutputContainer::avi; },
     "-c:v h264_videotoolbox -b:v 5000k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "/films/a-merged.avi"},
    {"a_webm_leaves_its_sound_to_ffmpeg",
     [](Given &g) { g.params.container = OutputContainer::webm; },
     "-c:v libvpx-vp9 -b:v 5000k -row-mt 1 /films/a-merged.webm"},
    {"a_webm_takes_no_choice_of_codec_and_no_factor_but_extra_arguments",
     [](Given &g) {
         g.params.container = OutputContainer::webm;
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 20;
         g.params.advanced.extraArgs = u"-deadline realtime"_s;
     },
     "-c:v libvpx-vp9 -b:v 5000k -row-mt 1 -deadline realtime /films/a-merged.webm"},
    {"x264_without_a_factor", [](Given &g) { g.params.advanced.codec = CodecChoice::softwareX264; },
     "-c:v libx264 -b:v 5000k -pix_fmt yuv420p {-c:a aac -b:a 160k} -movflags +faststart "
     "/films/a-merged.mp4"},
    {"x264_with_a_factor",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 20;
     },
     "-c:v libx264 -crf 20 -pix_fmt yuv420p {-c:a aac -b:a 160k} -movflags +faststart "
     "/films/a-merged.mp4"},
    {"no_x264_and_no_factor",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::softwareX264;
         g.params.advanced.crf = 20;
         g.toolset.encoders.clear();
     },
     "-c:v h264_videotoolbox -b:v 5000k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "-movflags +faststart /films/a-merged.mp4"},
    {"hevc_without_hdr_and_alpha",
     [](Given &g) {
         g.params.advanced.codec = CodecChoice::hevcVideoToolbox;
         g.params.advanced.crf = 20;
         g.params.advanced.hdrPassthrough = true;
         g.params.advanced.preserveAlpha = true;
         for (VideoFile &file : g.files) {
             file.isHDR = true;
             file.hasAlphaChannel = true;
         }
     },
     "-c:v hevc_videotoolbox -b:v 5000k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "-movflags +faststart /films/a-merged.mp4"},
    {"prores", [](Given &g) { g.params.advanced.codec = CodecChoice::proresVideoToolbox; },
     "-c:v prores_videotoolbox -b:v 5000k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "-movflags +faststart /films/a-merged.mp4"},
    {"av1_as_h264", [](Given &g) { g.params.advanced.codec = CodecChoice::svtAV1; },
     "-c:v h264_videotoolbox -b:v 5000k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "-movflags +faststart /films/a-merged.mp4"},
    {"extra_arguments_last_and_no_other_option",
     [](Given &g) {
         AdvancedOptions &advanced = g.params.advanced;
         advanced.fpsCap = 24;
         advanced.audioBitrateKbps = 96;
         advanced.volumeDb = 3;
         advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/b.m4a"_s);
         advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};
         advanced.extraArgs = u" -tune  film"_s;
     },
     "-c:v h264_videotoolbox -b:v 5000k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "-movflags +faststart -tune film /films/a-merged.mp4"},
    {"the_highest_known_rate",
     [](Given &g) {
         g.files[0].videoBitrateBps.reset();
         g.files[1].videoBitrateBps = 1'999;
     },
     "-c:v h264_videotoolbox -b:v 1k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "-movflags +faststart /films/a-merged.mp4"},
    {"a_known_rate_of_0_as_it_is",
     [](Given &g) {
         g.files[0].videoBitrateBps.reset();
         g.files[1].videoBitrateBps = 0;
     },
     "-c:v h264_videotoolbox -b:v 0k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "-movflags +faststart /films/a-merged.mp4"},
    {"4000_kilobits_where_no_rate_is_known",
     [](Given &g) {
         g.files[0].videoBitrateBps.reset();
         g.files[1].videoBitrateBps.reset();
     },
     "-c:v h264_videotoolbox -b:v 4000k -pix_fmt yuv420p {-c:a aac -b:a 160k} "
     "-movflags +faststart /films/a-merged.mp4"},
};

INSTANTIATE_TEST_SUITE_P(Copy, MergeLine, ::testing::ValuesIn(copyRows), RowName());
INSTANTIATE_TEST_SUITE_P(Encode, MergeLine, ::testing::ValuesIn(encodeRows), RowName());
INSTANTIATE_TEST_SUITE_P(Of, MergeCodecs, ::testing::ValuesIn(codecRows), RowName());

TEST(Merge, a_copy_brings_its_list_and_cleans_up_behind_it)
{
    const Scratch scratch;

    const JobPlan plan = Given().plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().label, u"concat"_s);
    EXPECT_EQ(plan.steps.first().progressDuration, 12.5);
    EXPECT_FALSE(plan.steps.first().tempOutputURL);
    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{QUrl::fromLocalFile(u"/films/a-merged.mp4"_s)});
    EXPECT_EQ(plan.badgeKey, u"merge.badge.copy"_s);
    ASSERT_EQ(plan.createDirs.size(), 1);
    const QUrl folder = plan.createDirs.first();
    const QUrl list = QUrl::fromLocalFile(folder.toLocalFile() + u"/concat.txt"_s);
    EXPECT_EQ(plan.prepFiles,
              (QList<PrepFile>{{list, u"file '/films/a.mov'\nfile '/films/b.mp4'\n"_s}}));
    EXPECT_EQ(plan.cleanupURLs, (QList<QUrl>{list, folder}));
    EXPECT_EQ(plan.targetLimitBytes, std::nullopt);
    EXPECT_FALSE(plan.retryFactory);
    EXPECT_FALSE(plan.approach);
}

TEST(Merge, each_copy_has_a_temporary_folder_of_its_own)
{
    const Scratch scratch;
    const QString first = folderOf(Given().plan());
    const QString second = folderOf(Given().plan());

    for (const QString &folder : {first, second}) {
        expectIdentityBehind(scratch.path() + u"/mx-merge-"_s, folder);
        EXPECT_FALSE(QFileInfo::exists(folder));
    }
    EXPECT_NE(first, second);
}

TEST(Merge, an_encode_prepares_nothing)
{
    Given g;
    g.differ();

    const JobPlan plan = g.plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().label, u"merge"_s);
    EXPECT_EQ(plan.steps.first().progressDuration, 12.5);
    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{QUrl::fromLocalFile(u"/films/a-merged.mp4"_s)});
    EXPECT_EQ(plan.badgeKey, u"merge.badge.reencode"_s);
    expectNothingBeside(plan);
}

TEST(Merge, every_reason_against_a_copy_leads_to_an_encode)
{
    const std::vector<std::function<void(VideoFile &)>> changes{
        [](VideoFile &file) { file.videoCodec = u"hevc"_s; },
        [](VideoFile &file) { file.height = 718; },
        [](VideoFile &file) { file.fps = 30; },
        [](VideoFile &file) { file.audioStreams.clear(); },
        [](VideoFile &file) { file.audioStreams.first().codec = u"mp3"_s; },
        [](VideoFile &file) { file.width.reset(); },
    };
    for (const auto &change : changes) {
        Given g;
        change(g.files.last());
        EXPECT_EQ(g.plan().badgeKey, u"merge.badge.reencode"_s);
    }
}

TEST(Merge, a_picture_that_no_film_knows_the_size_of_gets_the_usual_canvas)
{
    Given g;
    for (VideoFile &file : g.files) {
        file.width.reset();
        file.height.reset();
        file.audioStreams.clear();
    }

    const QString graph = valueOf(g.plan().steps.first().args, u"-filter_complex"_s);

    EXPECT_TRUE(graph.startsWith(u"[0:v]scale=1280:720:"_s));
}

TEST(Merge, fewer_than_two_films_are_refused)
{
    for (const OutputContainer container : allContainers) {
        Given g;
        g.params.container = container;
        g.toolset.encoders.clear();
        g.files.removeLast();
        EXPECT_EQ(refusalOf(g), BuilderError::Case::noSegments);
        g.files.clear();
        EXPECT_EQ(refusalOf(g), BuilderError::Case::noSegments);
    }
}

TEST(Merge, webm_is_refused_without_its_encoder_even_for_a_copy)
{
    for (const OutputContainer container : allContainers) {
        for (const bool forceReencode : {false, true}) {
            Given g;
            g.params.container = container;
            g.params.forceReencode = forceReencode;
            g.toolset.encoders.remove(u"libvpx-vp9"_s);
            const bool isWebm = container == OutputContainer::webm;
            EXPECT_EQ(refusalOf(g),
                      isWebm ? std::optional(BuilderError::Case::vp9Unavailable) : std::nullopt);
        }
    }
}

TEST(Merge, folder_and_template_name_the_output_after_the_first_film)
{
    const TempFolder folder;
    folder.write(u"merged a mkv.mkv"_s, "taken");
    for (const bool forceReencode : {false, true}) {
        Given g;
        g.params.container = OutputContainer::mkv;
        g.params.forceReencode = forceReencode;

        const JobPlan plan = CommandBuilder::merge(
            g.files, g.params, g.toolset, folder.url(QString()), u"{suffix} {name} {ext}"_s);

        EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"merged a mkv 2.mkv"_s)});
        EXPECT_EQ(plan.steps.first().args.last(), folder.path(u"merged a mkv 2.mkv"_s));
    }
}

TEST(Merge, paths_go_into_lists_and_lines_as_they_are)
{
    Given g;
    const QString odd = u"/films/it's a \"film\" %20 %1 ?#$HOME;\\.mov"_s;
    g.files.first().url = QUrl::fromLocalFile(odd);

    EXPECT_EQ(g.plan().prepFiles.first().content,
              u"file '"_s + odd + u"'\nfile '/films/b.mp4'\n"_s);

    g.params.forceReencode = true;
    EXPECT_EQ(valueOf(g.plan().steps.first().args, u"-i"_s), odd);
}
