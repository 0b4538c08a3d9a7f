// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PlanExecutor.h"

#include "Engine/EngineError.h"
#include "Engine/ExecutorError.h"
#include "Engine/FileError.h"
#include "support/FakeTool.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// What a fake ffmpeg writes in its first, second, third… run.
QByteArray writing(const QList<int> &sizes)
{
    QByteArray script = "case $run in\n";
    for (qsizetype i = 0; i < sizes.size(); ++i) {
        script += QByteArray::number(i + 1) + ") size=" + QByteArray::number(sizes.at(i)) + ";;\n";
    }
    return script + "esac\nhead -c $size /dev/zero > \"$out\"\n";
}

/// A plan of one encode step, with a fake ffmpeg to run it.
class Bench
{
public:
    explicit Bench(const QByteArray &script) : ffmpeg(folder, script), executor(ffmpeg.url()) {}

    JobPlan encodePlan(const QString &output, qint64 kbps, std::optional<qint64> limit) const
    {
        JobPlan plan;
        plan.steps = {encodeStep(output, kbps)};
        plan.finalOutputURLs = {folder.url(output)};
        plan.targetLimitBytes = limit;
        return plan;
    }

    FFmpegStep encodeStep(const QString &output, qint64 kbps) const
    {
        return {u"encode"_s,
                {u"-b:v"_s, QString::number(kbps) + u'k', folder.path(output)},
                10,
                std::nullopt};
    }

    /// With a factory whose plans carry no further one.
    JobPlan retryingPlan(qint64 kbps, qint64 limit) const
    {
        JobPlan plan = encodePlan(u"out"_s, kbps, limit);
        plan.retryFactory = [this, limit](qint64 rate) {
            return encodePlan(u"out"_s, rate, limit);
        };
        return plan;
    }

    JobPlan approachingPlan(qint64 kbps, qint64 limit) const
    {
        JobPlan plan = retryingPlan(kbps, limit);
        plan.approach = ApproachSpec{[this, limit](qint64 rate) {
                                         JobPlan attempt = encodePlan(u"approach"_s, rate, limit);
                                         attempt.cleanupURLs = {folder.url(u"approach"_s)};
                                         return attempt;
                                     },
                                     folder.url(u"approach"_s), folder.url(u"out"_s)};
        return plan;
    }

    ExecutionOutcome run(const JobPlan &plan)
    {
        return executor.execute(plan, [this](double fraction) {
            reports.append(fraction);
            if (onReport) {
                onReport();
            }
        });
    }

    /// The bitrate of one run, counted from 1.
    QString rateOf(int run) const { return ffmpeg.arguments(run).value(1); }
    QByteArray output() const { return contentOf(folder.path(u"out"_s)); }
    bool stands(const QString &name) const { return QFile::exists(folder.path(name)); }

    TempFolder folder;
    FakeTool ffmpeg;
    PlanExecutor executor;
    QList<double> reports;
    std::function<void()> onReport;
};

ExecutorError limitFailureOf(Bench &bench, const JobPlan &plan)
{
    try {
        bench.run(plan);
    } catch (const ExecutorError &error) {
        return error;
    }
    ADD_FAILURE() << "the limit was kept";
    return ExecutorError::targetNotMet(-1, -1);
}

EngineError engineFailureOf(Bench &bench, const JobPlan &plan)
{
    try {
        bench.run(plan);
    } catch (const EngineError &error) {
        return error;
    }
    ADD_FAILURE() << "no failure";
    return EngineError::missingFFmpeg();
}

FFmpegStep reportingStep(const QString &label, double duration)
{
    return {label, {u"out"_s}, duration, std::nullopt};
}

// A chain of factories that never ends.
JobPlan endlessPlan(const Bench &bench, qint64 kbps, qint64 limit)
{
    JobPlan plan = bench.encodePlan(u"out"_s, kbps, limit);
    plan.retryFactory = [&bench, limit](qint64 rate) { return endlessPlan(bench, rate, limit); };
    return plan;
}

} // namespace

TEST(PlanExecutor, a_plan_without_a_limit_is_measured_but_never_retried)
{
    Bench bench(writing({5000}));
    JobPlan plan = bench.retryingPlan(1000, 1);
    plan.targetLimitBytes.reset();
    const ExecutionOutcome outcome = bench.run(plan);
    EXPECT_EQ(outcome, (ExecutionOutcome{{bench.folder.url(u"out"_s)}, 0, 5000}));
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
}

TEST(PlanExecutor, a_result_equal_to_the_limit_passes)
{
    Bench bench(writing({1000}));
    EXPECT_EQ(bench.run(bench.retryingPlan(1000, 1000)).outputBytes, 1000);
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
}

TEST(PlanExecutor, a_result_over_the_limit_is_encoded_again_at_93_percent)
{
    Bench bench(writing({1001, 950}));
    const ExecutionOutcome outcome = bench.run(bench.retryingPlan(1000, 1000));
    EXPECT_EQ(outcome.retries, 1);
    EXPECT_EQ(outcome.outputBytes, 950);
    EXPECT_EQ(bench.rateOf(2), u"930k"_s);
}

TEST(PlanExecutor, the_factor_compounds_over_two_retries)
{
    Bench bench(writing({1001, 1001, 950}));
    EXPECT_EQ(bench.run(endlessPlan(bench, 1000, 1000)).retries, 2);
    EXPECT_EQ(bench.rateOf(2), u"930k"_s);
    EXPECT_EQ(bench.rateOf(3), u"864k"_s);
}

TEST(PlanExecutor, there_are_three_attempts_at_most)
{
    Bench bench(writing({1003, 1002, 1001, 1}));
    const ExecutorError error = limitFailureOf(bench, endlessPlan(bench, 1000, 1000));
    EXPECT_EQ(error.measuredBytes(), 1001);
    EXPECT_EQ(error.limitBytes(), 1000);
    EXPECT_EQ(error.errorDescription(), u"target size not met"_s);
    EXPECT_EQ(bench.ffmpeg.runs(), 3);
}

TEST(PlanExecutor, a_retry_without_a_factory_of_its_own_is_the_last)
{
    Bench bench(writing({1003, 1002, 1}));
    EXPECT_EQ(limitFailureOf(bench, bench.retryingPlan(1000, 1000)).measuredBytes(), 1002);
    EXPECT_EQ(bench.ffmpeg.runs(), 2);
}

TEST(PlanExecutor, without_a_factory_a_result_over_the_limit_fails_at_once)
{
    Bench bench(writing({1001, 1}));
    limitFailureOf(bench, bench.encodePlan(u"out"_s, 1000, 1000));
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
}

TEST(PlanExecutor, a_plan_whose_bitrate_cannot_be_read_is_not_retried)
{
    Bench bench(writing({1001, 1}));
    JobPlan plan = bench.retryingPlan(1000, 1000);
    plan.steps.first().label = u"remux"_s;
    limitFailureOf(bench, plan);
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
}

TEST(PlanExecutor, at_the_floor_the_retry_runs_at_the_same_bitrate)
{
    Bench bench(writing({1001, 1000}));
    bench.run(bench.retryingPlan(64, 1000));
    EXPECT_EQ(bench.rateOf(2), u"64k"_s);
}

TEST(PlanExecutor, a_file_over_the_limit_stays_and_temporary_files_go)
{
    Bench bench(writing({1001}));
    JobPlan plan = bench.encodePlan(u"out"_s, 1000, 1000);
    bench.folder.write(u"log"_s, "x");
    bench.folder.write(u"step"_s, "x");
    plan.cleanupURLs = {bench.folder.url(u"log"_s), bench.folder.url(u"step"_s)};
    plan.steps.first().tempOutputURL = bench.folder.url(u"step"_s);
    limitFailureOf(bench, plan);
    EXPECT_EQ(bench.output().size(), 1001);
    EXPECT_FALSE(bench.stands(u"log"_s));
    EXPECT_FALSE(bench.stands(u"step"_s));
}

TEST(PlanExecutor, a_plan_before_a_retry_is_not_cleaned_up)
{
    Bench bench(writing({1001, 900}));
    JobPlan plan = bench.retryingPlan(1000, 1000);
    bench.folder.write(u"first-log"_s, "x");
    plan.cleanupURLs = {bench.folder.url(u"first-log"_s)};
    bench.run(plan);
    EXPECT_TRUE(bench.stands(u"first-log"_s));
}

TEST(PlanExecutor, the_sizes_of_all_outputs_are_summed)
{
    Bench bench(writing({600}));
    JobPlan plan = bench.encodePlan(u"out"_s, 1000, 1000);
    bench.folder.write(u"other"_s, QByteArray(401, 'x'));
    plan.finalOutputURLs += bench.folder.url(u"other"_s);
    EXPECT_EQ(limitFailureOf(bench, plan).measuredBytes(), 1001);
}

TEST(PlanExecutor, an_encoder_that_wrote_nothing_measures_nothing_and_passes)
{
    Bench bench("exit 0\n");
    EXPECT_EQ(bench.run(bench.retryingPlan(1000, 1000)).outputBytes, 0);
}

TEST(PlanExecutor, a_plan_without_steps_is_done_at_once)
{
    Bench bench("exit 1\n");
    EXPECT_EQ(bench.run(JobPlan()).outputBytes, 0);
    EXPECT_EQ(bench.ffmpeg.runs(), 0);
}

TEST(PlanExecutorUpward, a_result_far_below_the_limit_is_tried_higher_and_the_closer_one_wins)
{
    Bench bench(writing({800, 960}));
    const ExecutionOutcome outcome = bench.run(bench.approachingPlan(1000, 1000));
    EXPECT_EQ(outcome, (ExecutionOutcome{{bench.folder.url(u"out"_s)}, 0, 960}));
    EXPECT_EQ(bench.rateOf(2), u"1212k"_s);
    EXPECT_EQ(bench.output().size(), 960);
    EXPECT_FALSE(bench.stands(u"approach"_s));
}

TEST(PlanExecutorUpward, an_attempt_over_the_limit_loses_however_close_it_is)
{
    Bench bench(writing({800, 1001}));
    EXPECT_EQ(bench.run(bench.approachingPlan(1000, 1000)).outputBytes, 800);
    EXPECT_EQ(bench.output().size(), 800);
}

TEST(PlanExecutorUpward, an_attempt_that_is_no_closer_loses)
{
    Bench bench(writing({800, 800}));
    EXPECT_EQ(bench.run(bench.approachingPlan(1000, 1000)).outputBytes, 800);
    Bench further(writing({800, 700}));
    EXPECT_EQ(further.run(further.approachingPlan(1000, 1000)).outputBytes, 800);
    EXPECT_EQ(further.output().size(), 800);
}

TEST(PlanExecutorUpward, an_attempt_that_meets_the_limit_exactly_wins)
{
    Bench bench(writing({800, 1000}));
    EXPECT_EQ(bench.run(bench.approachingPlan(1000, 1000)).outputBytes, 1000);
}

TEST(PlanExecutorUpward, the_loser_stays_in_its_temporary_place)
{
    Bench bench(writing({800, 1001}));
    bench.run(bench.approachingPlan(1000, 1000));
    EXPECT_TRUE(bench.stands(u"approach"_s));
}

TEST(PlanExecutorUpward, the_leap_is_twice_the_bitrate_at_most)
{
    Bench bench(writing({40, 80}));
    bench.run(bench.approachingPlan(1000, 100));
    EXPECT_EQ(bench.rateOf(2), u"2000k"_s);
}

TEST(PlanExecutorUpward, exactly_88_percent_is_close_enough)
{
    Bench bench(writing({880, 1}));
    bench.run(bench.approachingPlan(1000, 1000));
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
    Bench below(writing({879, 1}));
    below.run(below.approachingPlan(1000, 1000));
    EXPECT_EQ(below.ffmpeg.runs(), 2);
}

TEST(PlanExecutorUpward, the_88_percent_are_cut_to_whole_bytes)
{
    // 88 percent of 101 is 88.88: 88 is close enough.
    Bench bench(writing({88, 1}));
    bench.run(bench.approachingPlan(1000, 101));
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
}

TEST(PlanExecutorUpward, without_the_means_there_is_no_attempt)
{
    Bench bench(writing({100, 1}));
    bench.run(bench.retryingPlan(1000, 1000));
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
}

TEST(PlanExecutorUpward, a_plan_whose_bitrate_cannot_be_read_is_not_tried_higher)
{
    Bench bench(writing({100, 1}));
    JobPlan plan = bench.approachingPlan(1000, 1000);
    plan.steps.first().label = u"cut-encode"_s;
    bench.run(plan);
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
}

TEST(PlanExecutorUpward, a_bitrate_that_would_not_rise_is_not_tried)
{
    Bench bench(writing({87, 1}));
    // 100 × 0.97 ÷ 87 is 1.11: one kilobit stays one.
    bench.run(bench.approachingPlan(1, 100));
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
}

TEST(PlanExecutorUpward, a_retry_carries_no_means_and_is_not_tried_higher)
{
    Bench bench(writing({1001, 100, 1}));
    const ExecutionOutcome outcome = bench.run(bench.approachingPlan(1000, 1000));
    EXPECT_EQ(outcome.retries, 1);
    EXPECT_EQ(bench.ffmpeg.runs(), 2);
}

TEST(PlanExecutorUpward, a_failing_attempt_leaves_the_first_result_and_no_temporary_file)
{
    Bench bench("head -c 800 /dev/zero > \"$out\"\n[ $run = 1 ]\n");
    EXPECT_EQ(bench.run(bench.approachingPlan(1000, 1000)).outputBytes, 800);
    EXPECT_EQ(bench.output().size(), 800);
    EXPECT_FALSE(bench.stands(u"approach"_s));
}

TEST(PlanExecutorUpward, after_a_failed_move_the_result_names_a_file_that_is_gone)
{
    Bench bench(writing({800, 960}));
    QDir().mkpath(bench.folder.path(u"place"_s));
    JobPlan plan = bench.approachingPlan(1000, 1000);
    plan.steps = {bench.encodeStep(u"place/out"_s, 1000)};
    plan.finalOutputURLs = {bench.folder.url(u"place/out"_s)};
    plan.approach->finalURL = bench.folder.url(u"place/out"_s);
    const PlanFactory attempt = plan.approach->factory;
    plan.approach->factory = [&](qint64 rate) {
        QDir(bench.folder.path(u"place"_s)).removeRecursively();
        return attempt(rate);
    };
    const ExecutionOutcome outcome = bench.run(plan);
    EXPECT_EQ(outcome, (ExecutionOutcome{{bench.folder.url(u"place/out"_s)}, 0, 800}));
    EXPECT_FALSE(bench.stands(u"approach"_s));
}

TEST(PlanExecutorUpward, a_winner_is_moved_to_another_file_system)
{
    Bench bench(writing({800, 960}));
    const QTemporaryDir elsewhere(u"/dev/shm/morvix-XXXXXX"_s);
    ASSERT_TRUE(elsewhere.isValid());
    const QString output = elsewhere.filePath(u"out"_s);
    JobPlan plan = bench.approachingPlan(1000, 1000);
    plan.steps = {{u"encode"_s, {u"-b:v"_s, u"1000k"_s, output}, 10, std::nullopt}};
    plan.finalOutputURLs = {QUrl::fromLocalFile(output)};
    plan.approach->finalURL = QUrl::fromLocalFile(output);
    EXPECT_EQ(bench.run(plan).outputBytes, 960);
    EXPECT_EQ(contentOf(output).size(), 960);
    EXPECT_FALSE(bench.stands(u"approach"_s));
}

namespace {

// A plan and its attempt upward with a side file each.
JobPlan planWithLogs(const Bench &bench)
{
    bench.folder.write(u"log"_s, "x");
    bench.folder.write(u"attempt-log"_s, "x");
    JobPlan plan = bench.approachingPlan(1000, 1000);
    plan.cleanupURLs = {bench.folder.url(u"log"_s)};
    const PlanFactory factory = plan.approach->factory;
    plan.approach->factory = [&bench, factory](qint64 rate) {
        JobPlan attempt = factory(rate);
        attempt.cleanupURLs += bench.folder.url(u"attempt-log"_s);
        return attempt;
    };
    return plan;
}

} // namespace

TEST(PlanExecutorUpward, a_win_cleans_up_both_plans)
{
    Bench bench(writing({800, 960}));
    bench.run(planWithLogs(bench));
    EXPECT_FALSE(bench.stands(u"log"_s));
    EXPECT_FALSE(bench.stands(u"attempt-log"_s));
}

TEST(PlanExecutorUpward, a_loss_cleans_up_the_first_plan_only)
{
    Bench bench(writing({800, 1001}));
    bench.run(planWithLogs(bench));
    EXPECT_FALSE(bench.stands(u"log"_s));
    EXPECT_TRUE(bench.stands(u"attempt-log"_s));
}

TEST(PlanExecutorUpward, a_failing_attempt_cleans_up_the_first_plan_only)
{
    Bench bench("head -c 800 /dev/zero > \"$out\"\n[ $run = 1 ]\n");
    bench.run(planWithLogs(bench));
    EXPECT_FALSE(bench.stands(u"log"_s));
    EXPECT_TRUE(bench.stands(u"attempt-log"_s));
}

TEST(PlanExecutorUpward, a_cancel_in_the_attempts_step_keeps_the_first_result)
{
    Bench bench("echo out_time_us=1000000\n"
                "if [ $run = 2 ]; then exec sleep 600; fi\n"
                "head -c 800 /dev/zero > \"$out\"\n");
    bench.onReport = [&] {
        if (bench.ffmpeg.runs() == 2) {
            bench.executor.cancel();
        }
    };
    EXPECT_EQ(bench.run(bench.approachingPlan(1000, 1000)).outputBytes, 800);
    EXPECT_EQ(bench.output().size(), 800);
}

TEST(PlanExecutorUpward, a_cancel_between_the_attempts_steps_ends_as_cancelled_without_clean_up)
{
    Bench bench("trap '' TERM\necho out_time_us=1000000\nhead -c 800 /dev/zero > \"$out\"\n");
    bench.folder.write(u"log"_s, "x");
    JobPlan plan = bench.approachingPlan(1000, 1000);
    plan.cleanupURLs = {bench.folder.url(u"log"_s)};
    const PlanFactory attempt = plan.approach->factory;
    plan.approach->factory = [&](qint64 rate) {
        JobPlan two = attempt(rate);
        two.steps += two.steps.first();
        return two;
    };
    bench.onReport = [&] {
        if (bench.ffmpeg.runs() == 2) {
            bench.executor.cancel();
        }
    };
    EXPECT_EQ(engineFailureOf(bench, plan).kind(), EngineError::Case::cancelled);
    EXPECT_FALSE(bench.stands(u"approach"_s));
    EXPECT_TRUE(bench.stands(u"log"_s));
    EXPECT_EQ(bench.ffmpeg.runs(), 2);
}

TEST(PlanExecutorCancel, before_the_first_step_nothing_runs)
{
    Bench bench("exit 0\n");
    bench.executor.cancel();
    bench.executor.cancel();
    EXPECT_EQ(engineFailureOf(bench, bench.retryingPlan(1000, 1000)).kind(),
              EngineError::Case::cancelled);
    EXPECT_EQ(bench.ffmpeg.runs(), 0);
}

TEST(PlanExecutorCancel, in_a_step_the_run_ends_like_any_failed_process)
{
    Bench bench("echo partial > \"$out\"\necho out_time_us=1000000\nexec sleep 600\n");
    bench.folder.write(u"log"_s, "x");
    JobPlan plan = bench.retryingPlan(1000, 1000);
    plan.cleanupURLs = {bench.folder.url(u"log"_s)};
    bench.onReport = [&] { bench.executor.cancel(); };
    EXPECT_EQ(engineFailureOf(bench, plan).kind(), EngineError::Case::processFailed);
    EXPECT_EQ(bench.output(), "partial\n");
    EXPECT_FALSE(bench.stands(u"log"_s));
}

TEST(PlanExecutorCancel, between_two_steps_the_next_one_does_not_run)
{
    Bench bench("trap '' TERM\necho out_time_us=1000000\necho done > \"$out\"\n");
    JobPlan plan = bench.encodePlan(u"out"_s, 1000, std::nullopt);
    plan.steps.first().tempOutputURL = bench.folder.url(u"out"_s);
    plan.steps += bench.encodeStep(u"second"_s, 1000);
    bench.onReport = [&] { bench.executor.cancel(); };
    EXPECT_EQ(engineFailureOf(bench, plan).kind(), EngineError::Case::cancelled);
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
    EXPECT_FALSE(bench.stands(u"out"_s));
}

TEST(PlanExecutorCancel, a_cancelled_job_reports_no_more_progress)
{
    Bench bench("trap '' TERM\nfor s in 1 2 3 4; do echo out_time_us=${s}000000; done\n");
    bench.onReport = [&] { bench.executor.cancel(); };
    bench.run(bench.encodePlan(u"out"_s, 1000, std::nullopt));
    EXPECT_THAT(bench.reports, ElementsAre(0.1));
}

TEST(PlanExecutorCancel, an_executor_stays_cancelled)
{
    Bench bench("exit 0\n");
    bench.executor.cancel();
    engineFailureOf(bench, bench.retryingPlan(1000, 1000));
    EXPECT_EQ(engineFailureOf(bench, bench.retryingPlan(1000, 1000)).kind(),
              EngineError::Case::cancelled);
}

TEST(PlanExecutorFailure, a_failing_step_ends_the_plan_with_ffmpegs_words)
{
    Bench bench("echo partial > \"$out\"\necho no good >&2\nexit 7\n");
    JobPlan plan = bench.encodePlan(u"out"_s, 1000, 1000);
    bench.folder.write(u"log"_s, "x");
    plan.cleanupURLs = {bench.folder.url(u"log"_s)};
    plan.steps += bench.encodeStep(u"second"_s, 1000);
    const EngineError error = engineFailureOf(bench, plan);
    EXPECT_EQ(error.exitCode(), 7);
    EXPECT_EQ(error.stderrTail(), u"no good\n"_s);
    EXPECT_EQ(bench.ffmpeg.runs(), 1);
    EXPECT_EQ(bench.output(), "partial\n");
    EXPECT_FALSE(bench.stands(u"log"_s));
}

TEST(PlanExecutorFailure, a_failing_retry_cleans_up_its_own_plan)
{
    Bench bench("head -c 1001 /dev/zero > \"$out\"\n[ $run = 1 ]\n");
    bench.folder.write(u"log"_s, "x");
    JobPlan plan = bench.retryingPlan(1000, 1000);
    plan.retryFactory = [&](qint64 rate) {
        JobPlan retry = bench.encodePlan(u"out"_s, rate, 1000);
        retry.cleanupURLs = {bench.folder.url(u"log"_s)};
        return retry;
    };
    EXPECT_EQ(engineFailureOf(bench, plan).kind(), EngineError::Case::processFailed);
    EXPECT_FALSE(bench.stands(u"log"_s));
}

TEST(PlanExecutorFailure, a_missing_ffmpeg_is_a_failed_process)
{
    PlanExecutor executor(QUrl::fromLocalFile(u"/nowhere/ffmpeg"_s));
    JobPlan plan;
    plan.steps = {reportingStep(u"encode"_s, 1)};
    try {
        executor.execute(plan, [](double) {});
        FAIL();
    } catch (const EngineError &error) {
        EXPECT_EQ(error.exitCode(), -1);
    }
}

TEST(PlanExecutorFiles, folders_and_files_stand_before_the_first_step)
{
    Bench bench("cat '/dev/null' \"$3\" > \"$out.seen\"\n");
    JobPlan plan;
    plan.createDirs = {bench.folder.url(u"a/b/c"_s)};
    plan.prepFiles = {{bench.folder.url(u"a/b/c/list"_s), u"file '片'\n"_s}};
    plan.steps = {
        {u"concat"_s, {u"-i"_s, u"-"_s, bench.folder.path(u"a/b/c/list"_s)}, 1, std::nullopt}};
    bench.run(plan);
    EXPECT_EQ(contentOf(bench.folder.path(u"a/b/c/list.seen"_s)), "file '片'\n");
}

TEST(PlanExecutorFiles, a_folder_that_cannot_be_made_is_left_to_the_step)
{
    Bench bench(writing({10}));
    const QString file = bench.folder.write(u"file"_s, "x");
    JobPlan plan = bench.encodePlan(u"out"_s, 1000, std::nullopt);
    plan.createDirs = {QUrl::fromLocalFile(file + u"/below"_s)};
    EXPECT_EQ(bench.run(plan).outputBytes, 10);
}

TEST(PlanExecutorFiles, a_file_that_cannot_be_written_ends_the_plan_and_cleans_up)
{
    Bench bench(writing({10}));
    bench.folder.write(u"log"_s, "x");
    JobPlan plan = bench.encodePlan(u"out"_s, 1000, std::nullopt);
    plan.cleanupURLs = {bench.folder.url(u"log"_s)};
    plan.prepFiles = {{bench.folder.url(u"missing/list"_s), u"x"_s}};
    try {
        bench.run(plan);
        FAIL();
    } catch (const FileError &error) {
        EXPECT_EQ(error.url(), bench.folder.url(u"missing/list"_s));
        EXPECT_TRUE(error.errorDescription().contains(u"missing/list"_s));
    }
    EXPECT_EQ(bench.ffmpeg.runs(), 0);
    EXPECT_FALSE(bench.stands(u"log"_s));
}

TEST(PlanExecutorFiles, temporary_files_go_and_final_outputs_stay_at_the_end)
{
    Bench bench(writing({10}));
    JobPlan plan = bench.encodePlan(u"out"_s, 1000, std::nullopt);
    bench.folder.write(u"part"_s, "x");
    plan.steps.first().tempOutputURL = bench.folder.url(u"part"_s);
    plan.cleanupURLs = {bench.folder.url(u"part"_s), bench.folder.url(u"missing"_s)};
    bench.run(plan);
    EXPECT_FALSE(bench.stands(u"part"_s));
    EXPECT_TRUE(bench.stands(u"out"_s));
}

TEST(PlanExecutorFiles, a_temporary_folder_goes_with_all_that_it_holds)
{
    Bench bench(writing({10}));
    JobPlan plan = bench.encodePlan(u"out"_s, 1000, std::nullopt);
    bench.folder.write(u"parts/deep/unlisted"_s, "x");
    bench.folder.write(u"parts/listed"_s, "x");
    plan.cleanupURLs = {bench.folder.url(u"parts/listed"_s), bench.folder.url(u"parts"_s)};
    bench.run(plan);
    EXPECT_FALSE(bench.stands(u"parts"_s));
}

TEST(PlanExecutorFiles, a_link_to_a_folder_goes_and_its_target_stays)
{
    Bench bench(writing({10}));
    bench.folder.write(u"target/file"_s, "x");
    QFile::link(bench.folder.path(u"target"_s), bench.folder.path(u"link"_s));
    JobPlan plan = bench.encodePlan(u"out"_s, 1000, std::nullopt);
    plan.cleanupURLs = {bench.folder.url(u"link"_s)};
    bench.run(plan);
    EXPECT_FALSE(bench.stands(u"link"_s));
    EXPECT_TRUE(bench.stands(u"target/file"_s));
}

TEST(PlanExecutorProgress, moves_in_half_percent_steps_and_tells_each_value_once)
{
    Bench bench("for t in 0 10000 20000 30000 30001 5000000 N/A 99000000; do\n"
                "  echo out_time_us=$t; echo speed=1x; done\n");
    bench.run(bench.encodePlan(u"out"_s, 1000, std::nullopt));
    EXPECT_THAT(bench.reports, ElementsAre(0, 0.005, 0.5, 1));
}

TEST(PlanExecutorProgress, is_told_when_it_falls_too)
{
    Bench bench("for t in 5000000 1000000; do echo out_time_us=$t; done\n");
    bench.run(bench.encodePlan(u"out"_s, 1000, std::nullopt));
    EXPECT_THAT(bench.reports, ElementsAre(0.5, 0.1));
}

TEST(PlanExecutorProgress, weighs_the_steps_by_their_durations)
{
    Bench bench("echo out_time_us=1750000\necho out_time_us=99000000\n");
    JobPlan plan;
    plan.steps = {reportingStep(u"pass1"_s, 3.5), reportingStep(u"pass2"_s, 6.5)};
    bench.run(plan);
    EXPECT_THAT(bench.reports, ElementsAre(0.175, 0.35, 0.525, 1));
}

TEST(PlanExecutorProgress, a_step_without_a_duration_counts_as_done_from_its_first_line)
{
    Bench bench("echo out_time_us=0\n");
    JobPlan plan;
    plan.steps = {reportingStep(u"a"_s, 5), reportingStep(u"b"_s, 0), reportingStep(u"c"_s, 5)};
    bench.run(plan);
    EXPECT_THAT(bench.reports, ElementsAre(0, 0.5, 0.5));
}

TEST(PlanExecutorProgress, steps_without_any_duration_report_zero)
{
    Bench bench("echo out_time_us=1000000\necho out_time_us=2000000\n");
    JobPlan plan;
    plan.steps = {reportingStep(u"a"_s, 0), reportingStep(u"b"_s, 0)};
    bench.run(plan);
    EXPECT_THAT(bench.reports, ElementsAre(0, 0));
}

TEST(PlanExecutorProgress, a_small_negative_clock_is_held_at_zero)
{
    Bench bench("echo out_time=-00:00:00.02\necho out_time_us=-40000\n");
    bench.run(bench.encodePlan(u"out"_s, 1000, std::nullopt));
    EXPECT_THAT(bench.reports, ElementsAre(0));
}

TEST(PlanExecutorProgress, begins_again_with_a_retry)
{
    Bench bench("echo out_time_us=10000000\n" + writing({1001, 900}));
    bench.run(bench.retryingPlan(1000, 1000));
    EXPECT_THAT(bench.reports, ElementsAre(1, 1));
}

TEST(PlanExecutorProgress, lines_that_tell_no_time_are_passed_over)
{
    Bench bench("echo frame=1; echo; echo progress=continue; echo out_time_us=N/A\n");
    bench.run(bench.encodePlan(u"out"_s, 1000, std::nullopt));
    EXPECT_THAT(bench.reports, IsEmpty());
}
