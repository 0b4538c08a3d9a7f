// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/GoldenLines.h"

#include <gtest/gtest.h>

#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;

namespace {

/// A case before it is planned: a film of ten seconds.
struct Given : FilmCase<GifParams> {
    JobPlan plan() const { return CommandBuilder::gif(file, params, std::nullopt, std::nullopt); }
};

using Change = ChangeOf<Given>;
using Row = LinesRow<Given>;

Change stretch(double start, std::optional<double> end)
{
    return [=](Given &g) {
        g.params.start = start;
        g.params.end = end;
    };
}

Change fps(qint64 value)
{
    return [=](Given &g) { g.params.fps = value; };
}

Change width(qint64 value)
{
    return [=](Given &g) { g.params.width = value; };
}

QStringList seekOf(const FFmpegStep &step)
{
    // Behind the eight arguments of the common head.
    return step.args.sliced(8, step.args.indexOf(u"-i"_s) - 8);
}

QList<double> weightsOf(const JobPlan &plan)
{
    QList<double> weights;
    for (const FFmpegStep &step : plan.steps) {
        weights += step.progressDuration;
    }
    return weights;
}

class GifLine : public ::testing::TestWithParam<Row>
{
};

const QUrl outputUrl = QUrl::fromLocalFile(QStringLiteral("/films/a-gif.gif"));

} // namespace

TEST_P(GifLine, is_laid_out)
{
    const JobPlan plan = given(GetParam().change).plan();

    expectLines(plan, GetParam().lines, folderOf(plan));
}

static const std::vector<Row> rows{
    {"the_whole_film",
     [](Given &) {},
     {"-i /films/a.mov -vf fps=15,scale=480:-1:flags=lanczos,palettegen=stats_mode=full "
      "/scratch/palette.png",
      "-i /films/a.mov -i /scratch/palette.png -lavfi "
      "[0:v]fps=15,scale=480:-1:flags=lanczos[x];[x][1:v]paletteuse=dither=bayer:bayer_scale=5:"
      "diff_mode=rectangle -loop 0 /films/a-gif.gif"}},
    {"a_stretch_seeks_in_both_steps",
     stretch(2.5, 4),
     {"-ss 2.500 -t 1.500 -i /films/a.mov -vf "
      "fps=15,scale=480:-1:flags=lanczos,palettegen=stats_mode=full /scratch/palette.png",
      "-ss 2.500 -t 1.500 -i /films/a.mov -i /scratch/palette.png -lavfi "
      "[0:v]fps=15,scale=480:-1:flags=lanczos[x];[x][1:v]paletteuse=dither=bayer:bayer_scale=5:"
      "diff_mode=rectangle -loop 0 /films/a-gif.gif"}},
    {"played_once",
     [](Given &g) { g.params.loopForever = false; },
     {"-i /films/a.mov -vf fps=15,scale=480:-1:flags=lanczos,palettegen=stats_mode=full "
      "/scratch/palette.png",
      "-i /films/a.mov -i /scratch/palette.png -lavfi "
      "[0:v]fps=15,scale=480:-1:flags=lanczos[x];[x][1:v]paletteuse=dither=bayer:bayer_scale=5:"
      "diff_mode=rectangle -loop 1 /films/a-gif.gif"}},
    {"a_screen_recording_has_a_palette_of_what_moves",
     [](Given &g) { g.params.screenContent = true; },
     {"-i /films/a.mov -vf fps=15,scale=480:-1:flags=lanczos,palettegen=stats_mode=diff "
      "/scratch/palette.png",
      "-i /films/a.mov -i /scratch/palette.png -lavfi "
      "[0:v]fps=15,scale=480:-1:flags=lanczos[x];[x][1:v]paletteuse=dither=bayer:bayer_scale=5:"
      "diff_mode=rectangle -loop 0 /films/a-gif.gif"}},
    {"forward_and_backward",
     [](Given &g) { g.params.bounce = true; },
     {"-i /films/a.mov -vf fps=15,scale=480:-1:flags=lanczos,palettegen=stats_mode=full "
      "/scratch/palette.png",
      "-i /films/a.mov -i /scratch/palette.png -lavfi "
      "[0:v]fps=15,scale=480:-1:flags=lanczos[x];[x][1:v]paletteuse=dither=bayer:bayer_scale=5:"
      "diff_mode=rectangle -loop 0 /scratch/base.gif",
      "-i /scratch/base.gif -filter_complex [0]split[a][b];[a]reverse[r];[b][r]concat=n=2:v=1:a=0 "
      "/films/a-gif.gif"}},
    {"everything_at_once",
     [](Given &g) {
         g.params = {.start = 1,
                     .end = 3.25,
                     .width = 321,
                     .fps = 50,
                     .loopForever = false,
                     .bounce = true,
                     .screenContent = true};
     },
     {"-ss 1.000 -t 2.250 -i /films/a.mov -vf "
      "fps=30,scale=321:-1:flags=lanczos,palettegen=stats_mode=diff /scratch/palette.png",
      "-ss 1.000 -t 2.250 -i /films/a.mov -i /scratch/palette.png -lavfi "
      "[0:v]fps=30,scale=321:-1:flags=lanczos[x];[x][1:v]paletteuse=dither=bayer:bayer_scale=5:"
      "diff_mode=rectangle -loop 1 /scratch/base.gif",
      "-i /scratch/base.gif -filter_complex [0]split[a][b];[a]reverse[r];[b][r]concat=n=2:v=1:a=0 "
      "/films/a-gif.gif"}},
    // The picture isn't asked for: it fails where there is none.
    {"a_recording_is_planned_like_a_film",
     [](Given &g) {
         g.file.videoCodec.reset();
         g.file.width.reset();
     },
     {"-i /films/a.mov -vf fps=15,scale=480:-1:flags=lanczos,palettegen=stats_mode=full "
      "/scratch/palette.png",
      "-i /films/a.mov -i /scratch/palette.png -lavfi "
      "[0:v]fps=15,scale=480:-1:flags=lanczos[x];[x][1:v]paletteuse=dither=bayer:bayer_scale=5:"
      "diff_mode=rectangle -loop 0 /films/a-gif.gif"}},
};

INSTANTIATE_TEST_SUITE_P(Gif, GifLine, ::testing::ValuesIn(rows), RowName());

TEST(Gif, the_stretch_is_held_inside_the_film)
{
    struct Case {
        double duration;
        double start;
        std::optional<double> end;
        // Empty where nothing is sought.
        const char *seek;
        double length;
    };
    const std::vector<Case> cases{
        {10, 0, std::nullopt, "", 10},
        {10, 0, 10, "", 10},
        {10, 0, 25, "", 10},
        {10, -3, std::nullopt, "", 10},
        {10, 0.01, std::nullopt, "", 9.99},
        {10, 0.011, std::nullopt, "-ss 0.011 -t 9.989", 9.989},
        {10, 0, 9.99, "", 9.99},
        {10, 0, 9.989, "-ss 0.000 -t 9.989", 9.989},
        {10, 2, 4.5, "-ss 2.000 -t 2.500", 2.5},
        {10, 2, std::nullopt, "-ss 2.000 -t 8.000", 8},
        {10, -3, 4, "-ss 0.000 -t 4.000", 4},
        // Beyond the end: pulled back to a tenth before it.
        {10, 10, std::nullopt, "-ss 9.900 -t 0.100", 0.1},
        {10, 99, 100, "-ss 9.900 -t 0.100", 0.1},
        // An end before the start.
        {10, 5, 4, "-ss 5.000 -t 0.100", 0.1},
        {10, 5, 5, "-ss 5.000 -t 0.100", 0.1},
        {10, 5, 5.05, "-ss 5.000 -t 0.100", 0.1},
        {10, 0, -1, "-ss 0.000 -t 0.100", 0.1},
        // A film that is shorter than the shortest stretch, and one of unknown length.
        {0.05, 0, std::nullopt, "", 0.1},
        {0.05, 3, std::nullopt, "", 0.1},
        {0, 0, std::nullopt, "", 0.1},
        {0, 3, 5, "", 0.1},
        {0, 0, -1, "-ss 0.000 -t 0.100", 0.1},
    };
    for (size_t number = 0; number < cases.size(); ++number) {
        const Case &c = cases[number];
        Given g = given(stretch(c.start, c.end));
        g.file.durationSeconds = c.duration;

        const JobPlan plan = g.plan();

        const QStringList seek = QString::fromUtf8(c.seek).split(u' ', Qt::SkipEmptyParts);
        EXPECT_EQ(seekOf(plan.steps.at(0)), seek) << "case " << number;
        EXPECT_EQ(seekOf(plan.steps.at(1)), seek) << "case " << number;
        EXPECT_NEAR(plan.steps.at(0).progressDuration, c.length * 0.35, 1e-9) << "case " << number;
    }
}

TEST(Gif, the_whole_film_is_read_without_a_seek_in_any_step)
{
    Given g = given(stretch(0, std::nullopt));
    g.params.bounce = true;
    for (const FFmpegStep &step : g.plan().steps) {
        EXPECT_FALSE(step.args.contains(u"-ss"_s));
        EXPECT_FALSE(step.args.contains(u"-t"_s));
    }
}

TEST(Gif, a_start_of_5_milliseconds_counts_as_none)
{
    EXPECT_EQ(seekOf(given(stretch(0.005, std::nullopt)).plan().steps.first()), QStringList());
}

TEST(Gif, frames_a_second_are_held_between_1_and_30)
{
    const std::vector<std::pair<qint64, QString>> cases{
        {-5, u"fps=1,"_s},  {0, u"fps=1,"_s},   {1, u"fps=1,"_s},   {2, u"fps=2,"_s},
        {29, u"fps=29,"_s}, {30, u"fps=30,"_s}, {31, u"fps=30,"_s}, {50, u"fps=30,"_s},
    };
    for (const auto &[frames, text] : cases) {
        EXPECT_TRUE(
            valueOf(given(fps(frames)).plan().steps.first().args, u"-vf"_s).startsWith(text))
            << frames;
    }
}

TEST(Gif, the_width_goes_in_as_it_stands_and_the_height_follows)
{
    const std::vector<std::pair<qint64, QString>> cases{
        {0, u"scale=0:-1:"_s},
        {-5, u"scale=-5:-1:"_s},
        {1, u"scale=1:-1:"_s},
        {99999, u"scale=99999:-1:"_s},
    };
    for (const auto &[pixels, text] : cases) {
        EXPECT_TRUE(
            valueOf(given(width(pixels)).plan().steps.first().args, u"-vf"_s).contains(text))
            << pixels;
    }
}

TEST(Gif, the_steps_have_their_labels_and_weights)
{
    const JobPlan plan = given(stretch(2, 6)).plan();

    ASSERT_EQ(plan.steps.size(), 2);
    EXPECT_EQ(plan.steps.at(0).label, u"palette"_s);
    EXPECT_EQ(plan.steps.at(1).label, u"gif"_s);
    EXPECT_EQ(weightsOf(plan), (QList<double>{4 * 0.35, 4 * 0.65}));
}

TEST(Gif, a_bounce_adds_a_fifth_of_the_length)
{
    Given g = given(stretch(2, 6));
    g.params.bounce = true;

    const JobPlan plan = g.plan();

    ASSERT_EQ(plan.steps.size(), 3);
    EXPECT_EQ(plan.steps.at(2).label, u"bounce"_s);
    EXPECT_EQ(weightsOf(plan), (QList<double>{4 * 0.35, 4 * 0.65, 4 * 0.2}));
}

TEST(Gif, a_bounced_gif_has_no_loop_count_of_its_own)
{
    for (const bool loopForever : {false, true}) {
        Given g;
        g.params.bounce = true;
        g.params.loopForever = loopForever;
        const JobPlan plan = g.plan();
        EXPECT_FALSE(plan.steps.last().args.contains(u"-loop"_s));
        EXPECT_EQ(plan.steps.last().args.last(), outputUrl.toLocalFile());
    }
}

TEST(Gif, a_plan_works_in_a_temporary_folder_and_removes_it)
{
    const Scratch scratch;
    for (const bool bounce : {false, true}) {
        Given g;
        g.params.bounce = bounce;

        const JobPlan plan = g.plan();

        const QString folder = folderOf(plan);
        expectIdentityBehind(scratch.path() + u"/mx-gif-"_s, folder);
        EXPECT_EQ(plan.createDirs.size(), 1);
        // The forward half goes with the folder.
        EXPECT_EQ(plan.cleanupURLs, (QList<QUrl>{QUrl::fromLocalFile(folder + u"/palette.png"_s),
                                                 QUrl::fromLocalFile(folder)}));
    }
}

TEST(Gif, every_plan_has_a_folder_of_its_own)
{
    const Given g;
    EXPECT_NE(folderOf(g.plan()), folderOf(g.plan()));
}

TEST(Gif, a_plan_holds_nothing_else)
{
    Given g;
    g.params.bounce = true;

    const JobPlan plan = g.plan();

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{outputUrl});
    EXPECT_EQ(plan.badgeKey, std::nullopt);
    EXPECT_EQ(plan.targetLimitBytes, std::nullopt);
    expectNoFurtherAttempts(plan);
    EXPECT_TRUE(plan.prepFiles.isEmpty());
    for (const FFmpegStep &step : plan.steps) {
        EXPECT_FALSE(step.tempOutputURL);
    }
}

TEST(Gif, folder_and_template_name_the_output)
{
    const TempFolder folder;
    folder.write(u"gif of a.gif"_s, "taken");
    const Given g;

    const JobPlan plan =
        CommandBuilder::gif(g.file, g.params, folder.url(QString()), u"{suffix} of {name}"_s);

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"gif of a 2.gif"_s)});
    EXPECT_EQ(plan.steps.last().args.last(), folder.path(u"gif of a 2.gif"_s));
}

TEST(Gif, paths_go_in_as_they_are)
{
    Given g;
    const QString odd = u"/films/it's a \"film\" %20 ?#$HOME;"_s;
    g.file.url = QUrl::fromLocalFile(odd + u".mov"_s);

    const QStringList args = g.plan().steps.last().args;

    EXPECT_EQ(valueOf(args, u"-i"_s), odd + u".mov"_s);
    EXPECT_EQ(args.last(), odd + u"-gif.gif"_s);
}
