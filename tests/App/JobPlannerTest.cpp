// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/JobPlanner.h"

#include "Engine/CommandBuilder/BuilderError.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

VideoFile film(const QString &name = u"a.mp4"_s)
{
    VideoFile film;
    film.url = QUrl::fromLocalFile(u"/films/"_s + name);
    film.durationSeconds = 10;
    film.fileSizeBytes = 50'000'000;
    film.width = 640;
    film.height = 360;
    film.videoCodec = u"h264"_s;
    AudioStream sound;
    sound.index = 1;
    sound.codec = u"aac"_s;
    film.audioStreams = {sound};
    return film;
}

VideoFile silentFilm()
{
    VideoFile silent = film();
    silent.audioStreams.clear();
    return silent;
}

FFmpegToolset toolset(const QSet<QString> &encoders)
{
    FFmpegToolset tools;
    tools.encoders = encoders;
    return tools;
}

const FFmpegToolset everything = toolset({u"libx264"_s, u"libvpx-vp9"_s});

Job jobOf(const JobMode &mode, const QList<VideoFile> &furtherFilms = {})
{
    return Job(film(), furtherFilms, mode, std::nullopt);
}

JobPlan planOf(const Job &job, const std::optional<FFmpegToolset> &tools = everything,
               const std::optional<QUrl> &directory = std::nullopt,
               const std::optional<QString> &nameTemplate = std::nullopt)
{
    return JobPlanner::plan(job, tools, directory, nameTemplate);
}

QStringList labelsOf(const JobPlan &plan)
{
    QStringList labels;
    for (const FFmpegStep &step : plan.steps) {
        labels += step.label;
    }
    return labels;
}

// The value behind an option, in the last step that has it.
QString valueOf(const JobPlan &plan, const QString &option)
{
    QString value;
    for (const FFmpegStep &step : plan.steps) {
        const qsizetype position = step.args.indexOf(option);
        value = position < 0 ? value : step.args.value(position + 1);
    }
    return value;
}

// The case of the refusal; absent when there is none.
std::optional<BuilderError::Case> refusalOf(const Job &job,
                                            const std::optional<FFmpegToolset> &tools = everything)
{
    try {
        planOf(job, tools);
    } catch (const BuilderError &error) {
        return error.kind();
    }
    return std::nullopt;
}

TrimSegment from(double start, double end)
{
    TrimSegment segment;
    segment.start = start;
    segment.end = end;
    return segment;
}

TargetSizeParams under(double megabytes)
{
    TargetSizeParams params;
    params.targetMB = megabytes;
    return params;
}

TargetSizeParams exactly(double megabytes)
{
    TargetSizeParams params = under(megabytes);
    params.exactTwoPass = true;
    return params;
}

CompressParams softwareCompress()
{
    CompressParams params;
    params.advanced.codec = CodecChoice::softwareX264;
    return params;
}

struct Row {
    JobMode mode;
    QString output;
    QStringList labels;
};

// What tells each action's plan from those of the others.
std::vector<Row> allActions()
{
    const TrimParams twoStretches{.segments = {from(1, 2), from(4, 5)}, .advanced = {}};
    return {
        {under(8), u"a-8MB.mp4"_s, {u"encode"_s}},
        {exactly(8), u"a-8MB.mp4"_s, {u"pass1"_s, u"pass2"_s}},
        {ConvertParams{.container = OutputContainer::mkv, .advanced = {}},
         u"a-MKV.mkv"_s,
         {u"convert"_s}},
        {CompressParams(), u"a-smart.mp4"_s, {u"compress"_s}},
        {ExtractParams(), u"a-audio.m4a"_s, {u"extract"_s}},
        {twoStretches, u"a-trim.mp4"_s, {u"cut"_s, u"cut"_s, u"concat"_s}},
        {GifParams{.end = {}, .bounce = true},
         u"a-gif.gif"_s,
         {u"palette"_s, u"gif"_s, u"bounce"_s}},
        {EnhanceParams(), u"a-enhanced.mp4"_s, {u"enhance"_s}},
        {MergeParams{.container = OutputContainer::mov, .advanced = {}},
         u"a-merged.mov"_s,
         {u"concat"_s}},
        {SplitParams{.mode = SplitParams::Mode::byParts, .advanced = {}},
         u"a-part-01.mp4"_s,
         {u"cut"_s, u"cut"_s}},
        {AdjustParams(), u"a-adjusted.mp4"_s, {u"adjust"_s}},
    };
}

} // namespace

TEST(JobPlanner, each_action_has_its_own_plan_beside_the_film)
{
    for (const Row &row : allActions()) {
        const JobPlan plan = planOf(jobOf(row.mode, {film(u"b.mp4"_s)}));

        EXPECT_EQ(plan.finalOutputURLs.first(), QUrl::fromLocalFile(u"/films/"_s + row.output));
        EXPECT_EQ(labelsOf(plan), row.labels) << row.output.toStdString();
    }
}

TEST(JobPlanner, each_action_takes_the_folder_and_the_name_that_are_given)
{
    const QUrl folder = QUrl::fromLocalFile(u"/out"_s);
    for (const Row &row : allActions()) {
        const JobPlan plan =
            planOf(jobOf(row.mode, {film(u"b.mp4"_s)}), everything, folder, u"x-{name}"_s);

        const QString path = plan.finalOutputURLs.first().toLocalFile();
        EXPECT_TRUE(path.startsWith("/out/x-a"_L1)) << path.toStdString();
    }
}

TEST(JobPlanner, the_folder_of_the_job_itself_is_the_callers_affair)
{
    const Job job(film(), {}, CompressParams(), QUrl::fromLocalFile(u"/jobs"_s));
    EXPECT_EQ(planOf(job).finalOutputURLs.first(), QUrl::fromLocalFile(u"/films/a-smart.mp4"_s));
}

TEST(JobPlanner, without_x264_one_fast_pass_does_the_work_of_two)
{
    const Job job = jobOf(exactly(8));

    EXPECT_EQ(labelsOf(planOf(job, toolset({u"h264_nvenc"_s}))), QStringList{u"encode"_s});
    EXPECT_EQ(labelsOf(planOf(job, std::nullopt)), QStringList{u"encode"_s});
    EXPECT_TRUE(std::get<TargetSizeParams>(job.mode).exactTwoPass);
}

TEST(JobPlanner, a_retry_without_x264_stays_at_one_pass)
{
    const JobPlan plan = planOf(jobOf(exactly(8)), std::nullopt);
    ASSERT_TRUE(plan.retryFactory);
    EXPECT_EQ(labelsOf(plan.retryFactory(500)), QStringList{u"encode"_s});
}

TEST(JobPlanner, the_build_decides_on_the_encoders)
{
    const Job software = jobOf(softwareCompress());
    EXPECT_EQ(valueOf(planOf(software), u"-c:v"_s), u"libx264"_s);
    EXPECT_EQ(valueOf(planOf(software, toolset({})), u"-c:v"_s), u"h264_videotoolbox"_s);
    EXPECT_EQ(valueOf(planOf(software, std::nullopt), u"-c:v"_s), u"h264_videotoolbox"_s);
}

TEST(JobPlanner, WebM_needs_its_encoder)
{
    const JobMode convert = ConvertParams{.container = OutputContainer::webm, .advanced = {}};
    const JobMode merge = MergeParams{.container = OutputContainer::webm, .advanced = {}};
    for (const JobMode &mode : {convert, merge}) {
        EXPECT_EQ(refusalOf(jobOf(mode, {film()})), std::nullopt);
        EXPECT_EQ(refusalOf(jobOf(mode, {film()}), toolset({u"libx264"_s})),
                  BuilderError::Case::vp9Unavailable);
        EXPECT_EQ(refusalOf(jobOf(mode, {film()}), std::nullopt),
                  BuilderError::Case::vp9Unavailable);
    }
}

TEST(JobPlanner, a_merge_joins_the_film_and_the_further_ones_in_their_order)
{
    const JobPlan plan =
        planOf(jobOf(MergeParams(), {film(u"c.mp4"_s), film(u"b.mp4"_s), film(u"a.mp4"_s)}));

    ASSERT_EQ(plan.prepFiles.size(), 1);
    EXPECT_EQ(plan.prepFiles.first().content,
              u"file '/films/a.mp4'\nfile '/films/c.mp4'\nfile '/films/b.mp4'\n"
              "file '/films/a.mp4'\n"_s);
    EXPECT_EQ(plan.steps.first().progressDuration, 40);
}

TEST(JobPlanner, further_films_mean_nothing_to_the_other_actions)
{
    const JobPlan plan = planOf(jobOf(CompressParams(), {film(u"b.mp4"_s)}));
    EXPECT_FALSE(plan.steps.first().args.contains(u"/films/b.mp4"_s));
}

TEST(JobPlanner, what_a_builder_refuses_is_passed_on)
{
    const auto silent = [](const JobMode &mode) { return Job(silentFilm(), {}, mode, {}); };
    EXPECT_EQ(refusalOf(silent(ExtractParams())), BuilderError::Case::noAudioTrack);
    EXPECT_EQ(refusalOf(jobOf(TrimParams())), BuilderError::Case::noSegments);
    EXPECT_EQ(refusalOf(jobOf(TrimParams{.segments = {from(2, 2.05), from(5, 1)}, .advanced = {}})),
              BuilderError::Case::noSegments);
    EXPECT_EQ(refusalOf(jobOf(MergeParams())), BuilderError::Case::noSegments);
    VideoFile moment = film();
    moment.durationSeconds = 0.2;
    EXPECT_EQ(refusalOf(Job(moment, {}, SplitParams(), {})), BuilderError::Case::noSegments);
}
