// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "TargetSizeCase.h"

#include "Engine/CommandBuilder/SharedArguments.h"

#include <gtest/gtest.h>

#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;
using TargetSizeCase::Given;

namespace {

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

void expectNothingToPrepare(const JobPlan &plan)
{
    EXPECT_TRUE(plan.prepFiles.isEmpty());
    EXPECT_TRUE(plan.createDirs.isEmpty());
}

const QUrl outputUrl = QUrl::fromLocalFile(QStringLiteral("/films/a-8MB.mp4"));

} // namespace

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
