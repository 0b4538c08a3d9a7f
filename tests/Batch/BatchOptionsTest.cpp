// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/BatchOptions.h"

#include "support/Printing.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// The sentence of the refusal; empty when there is none.
QString refusal(const QStringList &arguments)
{
    try {
        BatchOptions::parse(arguments);
    } catch (const UsageError &error) {
        return error.message();
    }
    return {};
}

QStringList paths(const BatchOptions &options)
{
    QStringList paths;
    for (const QUrl &url : options.files) {
        paths << url.toLocalFile();
    }
    return paths;
}

QString here(const QString &name)
{
    return QDir::currentPath() + u'/' + name;
}

} // namespace

TEST(BatchOptions, an_action_and_a_file_are_enough)
{
    const BatchOptions options = BatchOptions::parse({u"targetSize"_s, u"/films/a.mp4"_s});

    EXPECT_EQ(options.request, BatchOptions::Request::run);
    EXPECT_EQ(options.output, BatchOptions::Output::text);
    EXPECT_EQ(options.running, BatchOptions::Running::real);
    EXPECT_EQ(options.mode, JobMode(TargetSizeParams()));
    EXPECT_EQ(options.outputDirectory, std::nullopt);
    EXPECT_EQ(paths(options), QStringList{u"/films/a.mp4"_s});
}

TEST(BatchOptions, fields_stand_between_the_action_and_the_files)
{
    const BatchOptions options = BatchOptions::parse(
        {u"targetSize"_s, u"targetMB=8"_s, u"advanced.fpsCap=30"_s, u"/a.mp4"_s, u"/b.mp4"_s});

    EXPECT_EQ(std::get<TargetSizeParams>(options.mode).targetMB, 8);
    EXPECT_EQ(std::get<TargetSizeParams>(options.mode).advanced.fpsCap, 30);
    EXPECT_EQ(paths(options), (QStringList{u"/a.mp4"_s, u"/b.mp4"_s}));
}

TEST(BatchOptions, the_last_of_two_values_of_a_field_counts)
{
    const BatchOptions options =
        BatchOptions::parse({u"targetSize"_s, u"targetMB=8"_s, u"targetMB=9"_s, u"/a.mp4"_s});
    EXPECT_EQ(std::get<TargetSizeParams>(options.mode).targetMB, 9);
}

TEST(BatchOptions, a_value_may_hold_an_equals_sign)
{
    const BatchOptions options = BatchOptions::parse(
        {u"targetSize"_s, u"advanced.extraArgs=-metadata title=x"_s, u"/a.mp4"_s});
    EXPECT_EQ(std::get<TargetSizeParams>(options.mode).advanced.extraArgs, u"-metadata title=x"_s);
}

TEST(BatchOptions, options_may_stand_anywhere_before_the_double_dash)
{
    const QList<QStringList> orders{
        {u"--json"_s, u"--dry-run"_s, u"--out"_s, u"/out"_s, u"targetSize"_s, u"/a.mp4"_s},
        {u"targetSize"_s, u"--json"_s, u"/a.mp4"_s, u"--out=/out"_s, u"--dry-run"_s},
    };
    for (const QStringList &order : orders) {
        const BatchOptions options = BatchOptions::parse(order);
        EXPECT_EQ(options.output, BatchOptions::Output::json);
        EXPECT_EQ(options.running, BatchOptions::Running::dry);
        EXPECT_EQ(options.outputDirectory, QUrl::fromLocalFile(u"/out"_s));
        EXPECT_EQ(paths(options), QStringList{u"/a.mp4"_s});
    }
}

TEST(BatchOptions, relative_places_are_of_the_current_folder)
{
    const BatchOptions options =
        BatchOptions::parse({u"targetSize"_s, u"--out"_s, u"sub/"_s, u"./x/../a.mp4"_s});
    EXPECT_EQ(paths(options), QStringList{here(u"a.mp4"_s)});
    EXPECT_EQ(options.outputDirectory, QUrl::fromLocalFile(here(u"sub"_s)));
}

TEST(BatchOptions, behind_the_double_dash_everything_is_a_file)
{
    const BatchOptions options =
        BatchOptions::parse({u"targetSize"_s, u"targetMB=8"_s, u"--"_s, u"-x.mp4"_s, u"--json"_s,
                             u"muted=true"_s, u"--"_s});

    EXPECT_EQ(options.output, BatchOptions::Output::text);
    EXPECT_FALSE(std::get<TargetSizeParams>(options.mode).muted);
    EXPECT_EQ(paths(options), (QStringList{here(u"-x.mp4"_s), here(u"--json"_s),
                                           here(u"muted=true"_s), here(u"--"_s)}));
}

TEST(BatchOptions, behind_the_first_file_everything_is_a_file)
{
    const BatchOptions options =
        BatchOptions::parse({u"targetSize"_s, u"a.mp4"_s, u"targetMB=8"_s});
    EXPECT_EQ(std::get<TargetSizeParams>(options.mode).targetMB, 25);
    EXPECT_EQ(paths(options), (QStringList{here(u"a.mp4"_s), here(u"targetMB=8"_s)}));
}

TEST(BatchOptions, a_file_that_looks_like_a_field_is_written_with_a_folder)
{
    const BatchOptions options =
        BatchOptions::parse({u"targetSize"_s, u"./a=b.mp4"_s, u"c=d.mp4"_s});
    EXPECT_EQ(paths(options), (QStringList{here(u"a=b.mp4"_s), here(u"c=d.mp4"_s)}));
}

TEST(BatchOptions, a_file_with_a_sign_before_the_equals_sign_is_no_field)
{
    for (const QString &name : {u"my film=1.mp4"_s, u"1=2.mp4"_s, u"=.mp4"_s, u"a-b=c.mp4"_s,
                                u"片=b.mp4"_s, u"a.=b.mp4"_s}) {
        EXPECT_EQ(paths(BatchOptions::parse({u"targetSize"_s, name})), QStringList{here(name)});
    }
}

TEST(BatchOptions, odd_names_are_taken_as_they_are)
{
    for (const QString &name :
         {u":front.mp4"_s, u":/x.mp4"_s, u"50%20.mp4"_s, u"#1?.mp4"_s, u"file:a.mp4"_s,
          u"it's \"a\" film.mp4"_s, u"two\nlines.mp4"_s, u"我的电影.mp4"_s, u" blank .mp4"_s}) {
        EXPECT_EQ(paths(BatchOptions::parse({u"targetSize"_s, name})), QStringList{here(name)});
        EXPECT_EQ(BatchOptions::parse({u"targetSize"_s, u"--out"_s, name, u"a"_s}).outputDirectory,
                  QUrl::fromLocalFile(here(name)));
    }
}

TEST(BatchOptions, help_and_version_need_no_action)
{
    EXPECT_EQ(BatchOptions::parse({u"--help"_s}).request, BatchOptions::Request::help);
    EXPECT_EQ(BatchOptions::parse({u"-h"_s}).request, BatchOptions::Request::help);
    EXPECT_EQ(BatchOptions::parse({u"--version"_s}).request, BatchOptions::Request::version);
    EXPECT_EQ(BatchOptions::parse({u"rubbish"_s, u"--help"_s}).request,
              BatchOptions::Request::help);
}

TEST(BatchOptions, the_help_tells_every_field_every_option_and_every_exit_code)
{
    const QString help = BatchOptions::helpText();
    for (const QString &word :
         {u"targetSize"_s, u"targetMB="_s, u"muted="_s, u"skipHeadSeconds="_s,
          u"skipTailSeconds="_s, u"exactTwoPass="_s, u"advanced."_s, u"--out DIR"_s, u"--dry-run"_s,
          u"--json"_s, u"--help"_s, u"--version"_s, u"0 all done"_s, u"1 some failed"_s,
          u"64 usage"_s, u"69 no ffmpeg"_s, u"130 interrupted"_s}) {
        EXPECT_TRUE(help.contains(word)) << word.toStdString();
    }
}

TEST(BatchOptions, what_is_missing_or_unknown_is_named)
{
    const QString noFile = u"at least one file is expected"_s;
    EXPECT_EQ(refusal({}), u"an action is expected, such as targetSize"_s);
    EXPECT_EQ(refusal({u"--"_s, u"a.mp4"_s}), u"an action is expected, such as targetSize"_s);
    EXPECT_EQ(refusal({u"explode"_s, u"a.mp4"_s}),
              u"there is no action \"explode\"; there are: targetSize convert compress "
              "extract trim gif enhance merge split adjust"_s);
    EXPECT_EQ(refusal({u"targetMB=8"_s, u"a.mp4"_s}),
              u"there is no action \"targetMB=8\"; there are: targetSize convert compress "
              "extract trim gif enhance merge split adjust"_s);
    EXPECT_EQ(refusal({u"targetSize"_s}), noFile);
    EXPECT_EQ(refusal({u"targetSize"_s, u"targetMB=8"_s, u"--"_s}), noFile);
    EXPECT_EQ(refusal({u"targetSize"_s, u""_s}), u"a file with an empty name can't be meant"_s);
    EXPECT_EQ(refusal({u"targetSize"_s, u"--frobnicate"_s, u"a.mp4"_s}),
              u"Unknown option 'frobnicate'."_s);
    EXPECT_EQ(refusal({u"targetSize"_s, u"-x.mp4"_s}).left(15), u"Unknown options"_s);
}

TEST(BatchOptions, an_output_folder_must_be_named)
{
    const QString sentence =
        u"--out expects a folder (one whose name begins with a dash is written ./-name)"_s;
    EXPECT_EQ(refusal({u"targetSize"_s, u"a.mp4"_s, u"--out"_s}),
              u"Missing value after '--out'."_s);
    EXPECT_EQ(refusal({u"targetSize"_s, u"--out"_s, u"--"_s, u"a.mp4"_s}),
              u"Missing value after '--out'."_s);
    EXPECT_EQ(refusal({u"targetSize"_s, u"--out="_s, u"a.mp4"_s}), sentence);
    EXPECT_EQ(refusal({u"targetSize"_s, u"--out"_s, u""_s, u"a.mp4"_s}), sentence);
    EXPECT_EQ(refusal({u"targetSize"_s, u"--out"_s, u"--json"_s, u"a.mp4"_s}), sentence);
}

TEST(BatchOptions, a_wrong_field_is_named_with_the_way_out_for_a_file_of_that_name)
{
    EXPECT_EQ(refusal({u"targetSize"_s, u"a=b.mp4"_s}),
              u"a: there is no such field (a file of such a name is written ./a=b.mp4)"_s);
    EXPECT_EQ(
        refusal({u"targetSize"_s, u"targetMB=abc"_s, u"a.mp4"_s}),
        u"targetMB: a number is expected (a file of such a name is written ./targetMB=abc)"_s);
    EXPECT_EQ(refusal({u"targetSize"_s, u"muted=1"_s, u"a.mp4"_s}),
              u"muted: true or false is expected (a file of such a name is written ./muted=1)"_s);
}

TEST(BatchOptions, a_limit_is_a_positive_number_of_megabytes)
{
    for (const QString &value : {u"0"_s, u"-0.0"_s, u"-1"_s, u"1000000001"_s, u"1e300"_s}) {
        EXPECT_EQ(refusal({u"targetSize"_s, u"targetMB="_s + value, u"a.mp4"_s}),
                  u"targetMB: a number of megabytes above 0 and up to 1000000000 is expected"_s)
            << value.toStdString();
    }
    for (const QString &value : {u"nan"_s, u"inf"_s, u"-inf"_s, u"abc"_s, u""_s, u"1e999"_s}) {
        EXPECT_TRUE(refusal({u"targetSize"_s, u"targetMB="_s + value, u"a.mp4"_s})
                        .startsWith("targetMB: a number is expected"_L1))
            << value.toStdString();
    }
    EXPECT_EQ(refusal({u"targetSize"_s, u"targetMB=1e9"_s, u"a.mp4"_s}), QString());
    EXPECT_EQ(refusal({u"targetSize"_s, u"targetMB=0.001"_s, u"a.mp4"_s}), QString());
}

TEST(BatchOptions, the_number_of_jobs_is_a_whole_number_from_one)
{
    const auto jobs = [](const QString &count) {
        return BatchOptions::parse({u"targetSize"_s, u"--jobs"_s, count, u"/a.mp4"_s}).jobsAtOnce;
    };
    EXPECT_EQ(BatchOptions::parse({u"targetSize"_s, u"/a.mp4"_s}).jobsAtOnce, std::nullopt);
    EXPECT_EQ(jobs(u"1"_s), 1);
    EXPECT_EQ(jobs(u"50"_s), 50);
    for (const QString &count : {u"0"_s, u"-1"_s, u"two"_s, u"1.5"_s, u""_s, u" 2"_s}) {
        EXPECT_EQ(refusal({u"targetSize"_s, u"--jobs="_s + count, u"/a.mp4"_s}),
                  u"--jobs expects a whole number from 1"_s)
            << count.toStdString();
    }
}

TEST(BatchOptions, a_folder_is_marked_by_a_slash)
{
    EXPECT_EQ(paths(BatchOptions::parse({u"targetSize"_s, u"/usr"_s, u"/usr/bin/"_s, u"/"_s})),
              (QStringList{u"/usr/"_s, u"/usr/bin/"_s, u"/"_s}));
}

TEST(BatchOptions, each_action_has_its_own_fields)
{
    const auto mode = [](const QStringList &arguments) {
        return BatchOptions::parse(arguments + QStringList{u"/a.mp4"_s}).mode;
    };
    TrimSegment stretch;
    stretch.start = 1;
    stretch.end = 3.5;
    AdvancedOptions square;
    square.crop = CropSpec{CropSpec::Aspect::ratio1x1, {}, {}};

    const auto convert = std::get<ConvertParams>(mode({u"convert"_s, u"container=webm"_s}));
    EXPECT_EQ(convert.container, OutputContainer::webm);
    const auto compress = std::get<CompressParams>(
        mode({u"compress"_s, u"mode=quality"_s, u"advanced.crop={\"aspect\":\"ratio1x1\"}"_s}));
    EXPECT_EQ(compress.mode, CompressParams::Mode::quality);
    EXPECT_EQ(compress.advanced, square);
    const auto extract = std::get<ExtractParams>(mode({u"extract"_s, u"audioTrackIndex=1"_s}));
    EXPECT_EQ(extract.audioTrackIndex, 1);
    const auto trim =
        std::get<TrimParams>(mode({u"trim"_s, u"segments=[{\"start\":1,\"end\":3.5}]"_s}));
    ASSERT_EQ(trim.segments.size(), 1);
    EXPECT_EQ(trim.segments.first().start, stretch.start);
    EXPECT_EQ(trim.segments.first().end, stretch.end);
    EXPECT_EQ(std::get<GifParams>(mode({u"gif"_s, u"end=2.5"_s})).end, 2.5);
    const auto enhance = std::get<EnhanceParams>(mode({u"enhance"_s, u"upscale=x15"_s}));
    EXPECT_EQ(enhance.upscale, EnhanceParams::UpscaleFactor::x15);
    const auto merge = std::get<MergeParams>(mode({u"merge"_s, u"forceReencode=true"_s}));
    EXPECT_TRUE(merge.forceReencode);
    EXPECT_EQ(std::get<SplitParams>(mode({u"split"_s, u"parts=3"_s})).parts, 3);
    EXPECT_EQ(std::get<AdjustParams>(mode({u"adjust"_s, u"speed=0.5"_s})).speed, 0.5);
}

TEST(BatchOptions, an_action_without_fields_is_as_its_panel_starts)
{
    const QList<std::pair<QString, JobMode>> actions{
        {u"targetSize"_s, TargetSizeParams()},
        {u"convert"_s, ConvertParams()},
        {u"compress"_s, CompressParams()},
        {u"extract"_s, ExtractParams()},
        {u"trim"_s, TrimParams()},
        {u"gif"_s, GifParams()},
        {u"enhance"_s, EnhanceParams()},
        {u"merge"_s, MergeParams()},
        {u"split"_s, SplitParams()},
        {u"adjust"_s, AdjustParams()},
    };
    for (const auto &[name, mode] : actions) {
        EXPECT_EQ(BatchOptions::parse({name, u"/a.mp4"_s}).mode, mode) << name.toStdString();
        EXPECT_TRUE(BatchOptions::helpText().contains(u"\n  "_s + name + u' '));
    }
}

TEST(BatchOptions, a_field_of_another_action_is_none)
{
    EXPECT_EQ(
        refusal({u"gif"_s, u"targetMB=8"_s, u"a.mp4"_s}),
        u"targetMB: there is no such field (a file of such a name is written ./targetMB=8)"_s);
    for (const QString &action : {u"extract"_s, u"gif"_s}) {
        EXPECT_TRUE(refusal({action, u"advanced.crf=20"_s, u"a.mp4"_s})
                        .startsWith("advanced: there is no such field"_L1));
    }
}

TEST(BatchOptions, the_word_estimate_stands_before_the_action)
{
    const BatchOptions options = BatchOptions::parse(
        {u"--json"_s, u"estimate"_s, u"compress"_s, u"mode=quality"_s, u"/a.mp4"_s});

    EXPECT_EQ(options.running, BatchOptions::Running::estimate);
    EXPECT_EQ(options.output, BatchOptions::Output::json);
    EXPECT_EQ(std::get<CompressParams>(options.mode).mode, CompressParams::Mode::quality);
    EXPECT_EQ(paths(options), QStringList{u"/a.mp4"_s});
}

TEST(BatchOptions, behind_the_action_the_word_estimate_is_a_file)
{
    const BatchOptions options = BatchOptions::parse({u"compress"_s, u"estimate"_s});
    EXPECT_EQ(options.running, BatchOptions::Running::real);
    EXPECT_EQ(paths(options), QStringList{here(u"estimate"_s)});
}

TEST(BatchOptions, an_estimate_without_an_action_is_refused)
{
    EXPECT_EQ(refusal({u"estimate"_s}), u"an action is expected, such as targetSize"_s);
    EXPECT_TRUE(refusal({u"estimate"_s, u"a.mp4"_s})
                    .startsWith("there is no action \"a.mp4\"; there are: targetSize "_L1));
    EXPECT_EQ(refusal({u"estimate"_s, u"gif"_s}), u"at least one file is expected"_s);
}

TEST(BatchOptions, what_only_copies_has_no_estimate)
{
    for (const QString &action : {u"trim"_s, u"merge"_s, u"split"_s}) {
        EXPECT_EQ(refusal({u"estimate"_s, action, u"a.mp4"_s}),
                  u"there is no estimate for "_s + action);
        EXPECT_EQ(refusal({action, u"a.mp4"_s}), QString());
    }
}

TEST(BatchOptions, a_speed_is_above_zero)
{
    for (const QString &speed : {u"0"_s, u"-0.0"_s, u"-1"_s}) {
        EXPECT_EQ(refusal({u"adjust"_s, u"speed="_s + speed, u"a.mp4"_s}),
                  u"speed: a number above 0 is expected"_s);
    }
    EXPECT_EQ(refusal({u"adjust"_s, u"speed=0.01"_s, u"a.mp4"_s}), QString());
}

TEST(BatchOptions, a_single_JSON_file_is_a_queue)
{
    const BatchOptions options = BatchOptions::parse({u"--json"_s, u"/films/Queue.JSON"_s});

    EXPECT_EQ(options.queueFile, QUrl::fromLocalFile(u"/films/Queue.JSON"_s));
    EXPECT_EQ(options.entry, std::nullopt);
    EXPECT_TRUE(options.files.isEmpty());
    EXPECT_EQ(BatchOptions::parse({u"--"_s, u"-queue.json"_s}).queueFile,
              QUrl::fromLocalFile(here(u"-queue.json"_s)));
}

TEST(BatchOptions, an_entry_of_a_queue_is_counted_from_0)
{
    EXPECT_EQ(BatchOptions::parse({u"/queue.json"_s, u"--entry"_s, u"0"_s}).entry, 0);
    EXPECT_EQ(BatchOptions::parse({u"--entry=12"_s, u"/queue.json"_s}).entry, 12);
    for (const QString &wrong : {u"-1"_s, u"+1"_s, u"1.5"_s, u""_s, u"first"_s, u" 1"_s}) {
        EXPECT_EQ(refusal({u"/queue.json"_s, u"--entry="_s + wrong}),
                  u"--entry expects a whole number from 0"_s)
            << wrong.toStdString();
    }
}

TEST(BatchOptions, an_entry_goes_with_nothing_but_a_queue)
{
    EXPECT_EQ(refusal({u"gif"_s, u"--entry"_s, u"0"_s, u"/a.mp4"_s}),
              u"--entry goes with a queue file"_s);
}
