// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/BuilderError.h"
#include "Engine/CommandBuilder/CommandBuilder.h"

#include "support/GoldenLines.h"

#include <gtest/gtest.h>

#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;

namespace {

/// A case before it is planned: a film of ten seconds, cut every four seconds.
struct Given : FilmCase<SplitParams> {
    Given()
    {
        file.fileSizeBytes = 9'000'000;
        addAudio({});
        params.mode = SplitParams::Mode::byDuration;
        params.durationPerPartSeconds = 4;
    }

    JobPlan plan() const { return CommandBuilder::split(file, params, std::nullopt, std::nullopt); }
};

QStringList pathsOf(const QList<QUrl> &urls)
{
    QStringList paths;
    for (const QUrl &url : urls) {
        paths += url.toLocalFile();
    }
    return paths;
}

} // namespace

TEST(Split, each_part_is_a_cut_by_copy)
{
    const JobPlan plan = Given().plan();

    ASSERT_EQ(plan.steps.size(), 3);
    EXPECT_EQ(plan.steps.at(0).args,
              commandLine("-ss 0.000 -t 4.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy "
                          "-avoid_negative_ts make_zero -movflags +faststart "
                          "/films/a-part-01.mov"));
    EXPECT_EQ(plan.steps.at(1).args,
              commandLine("-ss 4.000 -t 4.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy "
                          "-avoid_negative_ts make_zero -movflags +faststart "
                          "/films/a-part-02.mov"));
    EXPECT_EQ(plan.steps.at(2).args,
              commandLine("-ss 8.000 -t 2.000 -i /films/a.mov -map 0:v:0 -map 0:a? -c copy "
                          "-avoid_negative_ts make_zero -movflags +faststart "
                          "/films/a-part-03.mov"));
}

TEST(Split, the_plan_holds_every_part_in_order_and_nothing_else)
{
    const JobPlan plan = Given().plan();

    QList<double> lengths;
    for (const FFmpegStep &step : plan.steps) {
        EXPECT_EQ(step.label, u"cut"_s);
        lengths += step.progressDuration;
    }
    EXPECT_EQ(lengths, (QList<double>{4, 4, 2}));
    EXPECT_EQ(pathsOf(plan.finalOutputURLs),
              (QStringList{u"/films/a-part-01.mov"_s, u"/films/a-part-02.mov"_s,
                           u"/films/a-part-03.mov"_s}));
    EXPECT_EQ(plan.badgeKey, std::nullopt);
    expectNothingBeside(plan);
}

TEST(Split, a_source_without_a_picture_maps_its_sound_alone)
{
    const std::vector<std::function<void(VideoFile &)>> changes{
        [](VideoFile &file) { file.videoCodec.reset(); },
        [](VideoFile &file) { file.width.reset(); },
    };
    for (const auto &change : changes) {
        Given g;
        change(g.file);
        EXPECT_EQ(g.plan().steps.first().args,
                  commandLine("-ss 0.000 -t 4.000 -i /films/a.mov -map 0:a? -c copy "
                              "-avoid_negative_ts make_zero -movflags +faststart "
                              "/films/a-part-01.mov"));
    }
}

TEST(Split, a_source_without_sound_has_the_audio_map_all_the_same)
{
    Given g;
    g.file.audioStreams.clear();
    EXPECT_EQ(g.plan().steps, Given().plan().steps);
}

TEST(Split, parts_stay_in_the_source_s_container_where_they_can)
{
    struct Case {
        QString source;
        QString extension;
        bool hasFlags;
    };
    const std::vector<Case> cases{
        {u"/films/a.mp4"_s, u"mp4"_s, true},    {u"/films/a.mov"_s, u"mov"_s, true},
        {u"/films/a.m4v"_s, u"m4v"_s, true},    {u"/films/a.mkv"_s, u"mkv"_s, false},
        {u"/films/a.webm"_s, u"webm"_s, false}, {u"/films/a.avi"_s, u"avi"_s, false},
        {u"/films/a.ts"_s, u"ts"_s, false},     {u"/films/a.MKV"_s, u"mkv"_s, false},
        {u"/films/a.M4V"_s, u"m4v"_s, true},    {u"/films/a.wmv"_s, u"mp4"_s, true},
        {u"/films/a.flv"_s, u"mp4"_s, true},    {u"/films/a.m4a"_s, u"mp4"_s, true},
        {u"/films/a.mpg.ts"_s, u"ts"_s, false}, {u"/films/a.ts.mpg"_s, u"mp4"_s, true},
        {u"/films.mkv/a"_s, u"mp4"_s, true},    {u"/films/a."_s, u"mp4"_s, true},
        {u"/films/.mkv"_s, u"mp4"_s, true},
    };
    for (const Case &c : cases) {
        Given g;
        g.file.url = QUrl::fromLocalFile(c.source);

        const QStringList args = g.plan().steps.first().args;

        EXPECT_TRUE(args.last().endsWith(u"-part-01."_s + c.extension)) << c.source.toStdString();
        EXPECT_EQ(args.contains(u"-movflags"_s), c.hasFlags) << c.source.toStdString();
    }
}

TEST(Split, numbers_have_two_digits_and_more_from_100_on)
{
    Given g;
    g.file.durationSeconds = 101;
    g.params.durationPerPartSeconds = 1;

    const QStringList paths = pathsOf(g.plan().finalOutputURLs);

    ASSERT_EQ(paths.size(), 101);
    EXPECT_EQ(paths.at(0), u"/films/a-part-01.mov"_s);
    EXPECT_EQ(paths.at(9), u"/films/a-part-10.mov"_s);
    EXPECT_EQ(paths.at(98), u"/films/a-part-99.mov"_s);
    EXPECT_EQ(paths.at(99), u"/films/a-part-100.mov"_s);
}

TEST(Split, starts_and_lengths_are_written_in_milliseconds)
{
    Given g;
    g.params.mode = SplitParams::Mode::byParts;
    g.params.parts = 3;

    const JobPlan plan = g.plan();

    QStringList cuts;
    for (const FFmpegStep &step : plan.steps) {
        cuts += valueOf(step.args, u"-ss"_s) + u'+' + valueOf(step.args, u"-t"_s);
    }
    EXPECT_EQ(cuts, (QStringList{u"0.000+3.333"_s, u"3.333+3.333"_s, u"6.667+3.333"_s}));
}

TEST(Split, a_size_goes_by_the_rate_of_the_whole_file)
{
    // 9,000,000 bytes in ten seconds are 7200 kilobits a second: 4.324 seconds to four megabytes.
    Given g;
    g.params.mode = SplitParams::Mode::bySize;
    g.params.sizePerPartMB = 4;

    const JobPlan plan = g.plan();

    ASSERT_EQ(plan.steps.size(), 3);
    EXPECT_EQ(valueOf(plan.steps.at(1).args, u"-ss"_s), u"4.324"_s);
}

TEST(Split, the_rate_of_the_whole_file_is_cut_to_kilobits)
{
    // 1999 bits a second count as one kilobit; 999 count as none.
    Given g;
    g.params.mode = SplitParams::Mode::bySize;
    g.params.sizePerPartMB = 0.001;
    g.file.fileSizeBytes = 0;
    g.file.durationSeconds = 20;
    g.file.videoBitrateBps = 1999;
    ASSERT_EQ(g.plan().steps.size(), 3);
    EXPECT_EQ(valueOf(g.plan().steps.at(1).args, u"-ss"_s), u"7.782"_s);

    g.file.videoBitrateBps = 999;
    EXPECT_EQ(refusalOf(g), BuilderError::Case::noSegments);
}

TEST(Split, a_file_without_parts_is_refused)
{
    Given g;
    g.file.durationSeconds = 0.2;
    EXPECT_EQ(refusalOf(g), BuilderError::Case::noSegments);

    g.file.durationSeconds = 0.21;
    EXPECT_EQ(refusalOf(g), std::nullopt);
}

TEST(Split, more_parts_than_memory_has_room_for_are_refused)
{
    Given g;
    g.params.mode = SplitParams::Mode::byDuration;
    g.params.durationPerPartSeconds = 1;
    g.file.durationSeconds = 100'001;
    EXPECT_EQ(refusalOf(g), BuilderError::Case::noSegments);
}

TEST(Split, parts_by_size_of_a_file_of_no_rate_are_refused)
{
    Given g;
    g.params.mode = SplitParams::Mode::bySize;
    g.file.fileSizeBytes = 0;
    ASSERT_EQ(g.file.totalBitrateBps(), 0);
    EXPECT_EQ(refusalOf(g), BuilderError::Case::noSegments);
}

TEST(Split, no_advanced_option_counts)
{
    Given g;
    AdvancedOptions &advanced = g.params.advanced;
    advanced.codec = CodecChoice::softwareX264;
    advanced.crf = 20;
    advanced.fpsCap = 24;
    advanced.volumeDb = 3;
    advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/b.m4a"_s);
    advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, std::nullopt, std::nullopt};
    advanced.extraArgs = u"-tune film"_s;

    EXPECT_EQ(g.plan().steps, Given().plan().steps);
}

TEST(Split, folder_and_template_name_the_parts_and_a_taken_name_is_numbered)
{
    const TempFolder folder;
    folder.write(u"part-02 a.mov"_s, "taken");
    const Given g;

    const JobPlan plan =
        CommandBuilder::split(g.file, g.params, folder.url(QString()), u"{suffix} {name}"_s);

    EXPECT_EQ(plan.finalOutputURLs,
              (QList<QUrl>{folder.url(u"part-01 a.mov"_s), folder.url(u"part-02 a 2.mov"_s),
                           folder.url(u"part-03 a.mov"_s)}));
    EXPECT_EQ(plan.steps.at(1).args.last(), folder.path(u"part-02 a 2.mov"_s));
}

// Nothing reserves a name, so parts overwrite each other here.
TEST(Split, a_template_without_the_suffix_gives_all_parts_one_name)
{
    const TempFolder folder;
    const Given g;

    const JobPlan plan =
        CommandBuilder::split(g.file, g.params, folder.url(QString()), u"{name}"_s);

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>(3, folder.url(u"a.mov"_s)));
}

TEST(Split, paths_go_in_as_they_are)
{
    Given g;
    const QString odd = u"/films/it's a \"film\" %20 %1 ?#$HOME;"_s;
    g.file.url = QUrl::fromLocalFile(odd + u".mov"_s);

    const QStringList args = g.plan().steps.first().args;

    EXPECT_EQ(valueOf(args, u"-i"_s), odd + u".mov"_s);
    EXPECT_EQ(args.last(), odd + u"-part-01.mov"_s);
}
