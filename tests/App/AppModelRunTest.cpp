// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "App/JobFailure.h"
#include "support/Processes.h"

#include <QFile>
#include <QFileInfo>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <limits>

using namespace Qt::StringLiterals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

using Outcome = Job::Outcome;

namespace {

constexpr std::array languages{AppLanguage::english, AppLanguage::simplifiedChinese};

class AppModelRunTest : public AppFixture
{
protected:
    /// Adds a job and waits for its end.
    std::shared_ptr<Job> runOne(const VideoFile &film, const JobMode &mode = oneMegabyte())
    {
        const auto job = enqueue(film, mode);
        waitForAllToEnd();
        return job;
    }

    std::shared_ptr<Job> runOne() { return runOne(film(u"clip.mp4"_s)); }
};

} // namespace

// The way of a job.

TEST_F(AppModelRunTest, a_job_goes_from_analyzing_over_its_progress_to_finished)
{
    start();
    const auto job = enqueue(film(u"clip.mp4"_s));
    const StateLog log(job);

    waitForAllToEnd();

    EXPECT_THAT(log.words(), ElementsAre(u"analyzing"_s, u"running 0"_s, u"running 0.25"_s,
                                         u"running 0.5"_s, u"finished"_s));
    EXPECT_EQ(job->state(),
              Job::State(Job::Finished{
                  {m_films.url(u"clip-1MB.mp4"_s)}, 2'150'000, 950'000, std::nullopt}));
}

TEST_F(AppModelRunTest, a_retry_starts_again_from_nothing)
{
    installFFmpeg("if [ $run = 1 ]; then progress 7500000; result 1000001\n"
                  "else progress 100000; result 950000; fi\n");
    start();
    const auto job = enqueue(film(u"clip.mp4"_s));
    const StateLog log(job);

    waitForAllToEnd();

    EXPECT_THAT(log.words(), ElementsAre(u"analyzing"_s, u"running 0"_s, u"running 0.75"_s,
                                         u"running 0.01"_s, u"finished"_s));
}

TEST_F(AppModelRunTest, two_passes_share_one_bar)
{
    installFFmpeg("progress 1750000\n"
                  "result 950000\n");
    start();
    const auto job = enqueue(film(u"clip.mp4"_s), oneMegabyteExactly());
    const StateLog log(job);

    waitForAllToEnd();

    // Half of the first pass's 3.5 s, then as much of the second's 6.5 s behind it.
    EXPECT_THAT(log.words(), ElementsAre(u"analyzing"_s, u"running 0"_s, u"running 0.175"_s,
                                         u"running 0.525"_s, u"finished"_s));
}

TEST_F(AppModelRunTest, a_report_sets_the_progress_whatever_the_state_is)
{
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto job = enqueue(slow);
    const StateLog log(job);
    waitForProgress(job, 0.25);

    m_model->retryJob(job->id);
    gate.open();
    waitFor(job, Outcome::finished);

    EXPECT_THAT(log.words(), ElementsAre(u"analyzing"_s, u"running 0"_s, u"running 0.25"_s,
                                         u"queued"_s, u"running 0.5"_s, u"finished"_s));
}

TEST_F(AppModelRunTest, a_cancel_in_the_attempt_upward_keeps_the_first_result)
{
    installFFmpeg("case $out in\n"
                  "*mx-approach-*) progress 2500000; await_gate;;\n"
                  "*) result 500000;;\n"
                  "esac\n");
    start();
    const VideoFile clip = film(u"clip.mp4"_s);
    const Gate gate(clip);
    const auto job = enqueue(clip);
    waitForProgress(job, 0.25);

    m_model->cancelJob(job->id);
    waitForAllToEnd();

    EXPECT_EQ(resultOf(job).outputBytes, 500'000);
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(AppModelRunTest, a_job_that_cannot_be_planned_fails_out_of_analyzing)
{
    start();
    const auto job = enqueue(film(u"clip.mp4"_s), TrimParams());
    const StateLog log(job);
    waitForAllToEnd();
    EXPECT_THAT(log.words(), ElementsAre(u"analyzing"_s, u"failed"_s));
}

TEST_F(AppModelRunTest, without_tools_a_job_fails_at_once)
{
    removeTools();
    start();
    const auto job = enqueue(film(u"clip.mp4"_s));
    const StateLog log(job);
    waitForAllToEnd();
    EXPECT_THAT(log.words(), ElementsAre(u"failed"_s));
}

TEST_F(AppModelRunTest, each_failure_is_told_with_its_cause_before_the_state_follows)
{
    const auto causesOf = [this](const std::shared_ptr<Job> &job) {
        QStringList causes;
        const QObject untilItsEnd;
        QObject::connect(m_model.get(), &AppModel::jobFailed, &untilItsEnd,
                         [&causes, job](const auto &failed, const std::exception_ptr &failure) {
                             EXPECT_EQ(failed, job);
                             EXPECT_NE(job->outcome(), Outcome::failed);
                             causes += JobFailure::description(failure);
                         });
        waitForAllToEnd();
        EXPECT_EQ(job->outcome(), Outcome::failed);
        return causes;
    };
    installFFmpeg("echo 'out of order' >&2; exit 1");
    start();
    EXPECT_EQ(causesOf(enqueue(film(u"clip.mp4"_s))), QStringList{u"out of order\n"_s});
    EXPECT_EQ(causesOf(enqueue(film(u"trimmed.mp4"_s), TrimParams())),
              QStringList{u"no trim segments"_s});

    removeTools();
    start();
    EXPECT_EQ(causesOf(enqueue(film(u"clip.mp4"_s))), QStringList{u"ffmpeg not found"_s});
}

TEST_F(AppModelRunTest, a_job_that_ends_well_is_told_as_no_failure)
{
    start();
    int failures = 0;
    QObject::connect(m_model.get(), &AppModel::jobFailed, m_model.get(), [&] { ++failures; });
    runOne();
    EXPECT_EQ(failures, 0);
}

TEST_F(AppModelRunTest, no_failure_stops_the_queue)
{
    installFFmpeg(
        "case $in in *broken*) exit 1;; *large*) result 1100000;; *) result 950000;; esac\n");
    start();
    enqueue(film(u"broken.mp4"_s));
    enqueue(film(u"large.mp4"_s));
    enqueue(film(u"empty.mp4"_s), TrimParams());
    enqueue(film(u"good.mp4"_s));

    waitForAllToEnd();

    EXPECT_THAT(outcomesOf(m_model->jobs()),
                ElementsAre(Outcome::failed, Outcome::failed, Outcome::failed, Outcome::finished));
}

TEST_F(AppModelRunTest, five_thousand_failing_jobs_dont_grow_the_stack)
{
    removeTools();
    start();
    quintptr highest = 0;
    quintptr lowest = std::numeric_limits<quintptr>::max();
    for (int i = 0; i < 5000; ++i) {
        const auto job = enqueue(film(u"clip.mp4"_s));
        QObject::connect(job.get(), &Job::stateChanged, m_model.get(), [&] {
            const auto here = reinterpret_cast<quintptr>(__builtin_frame_address(0));
            highest = std::max(highest, here);
            lowest = std::min(lowest, here);
        });
    }

    waitFor(m_model->jobs().last(), Outcome::failed);

    EXPECT_THAT(outcomesOf(m_model->jobs()), Each(Outcome::failed));
    EXPECT_LT(highest - lowest, 16U * 1024);
}

// What a failed job says.

namespace {

struct Refusal {
    const char *name;
    QByteArray ffmpeg;
    JobMode mode;
    QStringList messages;
};

class AppModelMessageTest : public AppModelRunTest, public testing::WithParamInterface<Refusal>
{
};

} // namespace

TEST_P(AppModelMessageTest, a_failed_job_says_why_in_the_language_of_the_user)
{
    installFFmpeg(GetParam().ffmpeg);
    for (std::size_t i = 0; i < languages.size(); ++i) {
        start({.language = languages.at(i)});
        const auto job = runOne(film(u"clip.mp4"_s), GetParam().mode);
        EXPECT_EQ(messageOf(job), GetParam().messages.at(static_cast<qsizetype>(i)));
    }
}

namespace {

TargetSizeParams megabyte()
{
    TargetSizeParams params;
    params.targetMB = 1;
    return params;
}

const std::array refusals{
    Refusal{"an_encode_that_dies",
            "echo 'moov atom not found' >&2; exit 1",
            megabyte(),
            {u"FFmpeg error: moov atom not found\n"_s, u"FFmpeg 出错：moov atom not found\n"_s}},
    Refusal{"a_long_complaint",
            "printf '%0300d' 7 >&2; exit 1",
            megabyte(),
            {u"FFmpeg error: "_s + QString(159, u'0') + u'7',
             u"FFmpeg 出错："_s + QString(159, u'0') + u'7'}},
    Refusal{
        "a_silent_death", "kill -KILL $$", megabyte(), {u"FFmpeg error: "_s, u"FFmpeg 出错："_s}},
    Refusal{"a_result_that_stays_over_the_limit",
            "result 1000001",
            megabyte(),
            {u"Still over the target after retries — trim the clip or raise the target a little."_s,
             u"重试后仍超出目标——请裁剪片段或稍微调大目标。"_s}},
    Refusal{"a_trim_without_segments",
            "result 950000",
            TrimParams(),
            {u"Mark at least one segment to keep."_s, u"请至少标记一个要保留的片段。"_s}},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(, AppModelMessageTest, testing::ValuesIn(refusals),
                         [](const auto &row) { return row.param.name; });

TEST_F(AppModelRunTest, without_tools_a_failed_job_tells_how_to_get_them)
{
    removeTools();
    start({.language = AppLanguage::english});
    EXPECT_EQ(messageOf(runOne()), u"FFmpeg not found. Install it with: brew install ffmpeg"_s);
    start({.language = AppLanguage::simplifiedChinese});
    EXPECT_EQ(messageOf(runOne()), u"未找到 FFmpeg。可用以下命令安装：brew install ffmpeg"_s);
}

TEST_F(AppModelRunTest, a_refused_plan_has_a_text_for_each_reason)
{
    using Case = BuilderError::Case;
    start();
    const auto message = [this](Case kind) { return m_model->builderMessage(BuilderError(kind)); };
    EXPECT_EQ(message(Case::noSegments), u"Mark at least one segment to keep."_s);
    EXPECT_EQ(message(Case::noAudioTrack), u"This file has no audio track."_s);
    EXPECT_EQ(message(Case::vp9Unavailable),
              u"WebM export needs an ffmpeg build with libvpx. Try: brew install ffmpeg"_s);

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    EXPECT_EQ(message(Case::noSegments), u"请至少标记一个要保留的片段。"_s);
    EXPECT_EQ(message(Case::noAudioTrack), u"这个文件没有音轨。"_s);
    EXPECT_EQ(message(Case::vp9Unavailable),
              u"导出 WebM 需要带 libvpx 的 ffmpeg。可运行：brew install ffmpeg"_s);
}

TEST_F(AppModelRunTest, an_ffmpeg_that_has_gone_since_it_was_found_fails_with_the_systems_words)
{
    start();
    ASSERT_TRUE(m_model->toolset());
    QFile::remove(m_tools.path(u"ffmpeg"_s));
    const QString message = messageOf(runOne());
    EXPECT_TRUE(message.startsWith("FFmpeg error: "_L1)) << message.toStdString();
    EXPECT_TRUE(message.contains("No such file or directory"_L1)) << message.toStdString();
}

TEST_F(AppModelRunTest, a_result_over_the_limit_stays_where_it_is)
{
    installFFmpeg("result 1000001");
    start();
    const auto job = runOne();
    EXPECT_EQ(job->outcome(), Outcome::failed);
    EXPECT_EQ(QFileInfo(m_films.path(u"clip-1MB.mp4"_s)).size(), 1'000'001);
}

TEST_F(AppModelRunTest, a_message_is_in_the_language_of_the_moment_of_failing)
{
    installFFmpeg("progress 2500000; await_gate; echo words >&2; exit 1");
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto job = enqueue(slow);
    waitForProgress(job, 0.25);

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    gate.open();
    waitFor(job, Outcome::failed);
    EXPECT_EQ(messageOf(job), u"FFmpeg 出错：words\n"_s);

    m_model->setLanguage(AppLanguage::english);
    EXPECT_EQ(messageOf(job), u"FFmpeg 出错：words\n"_s);
}

// What a finished job says.

namespace {

struct Note {
    const char *name;
    QByteArray ffmpeg;
    qint64 originalBytes;
    qint64 outputBytes;
    QList<std::optional<QString>> notes;
};

class AppModelNoteTest : public AppModelRunTest, public testing::WithParamInterface<Note>
{
};

} // namespace

TEST_P(AppModelNoteTest, a_finished_job_tells_what_was_special)
{
    installFFmpeg(GetParam().ffmpeg);
    for (std::size_t i = 0; i < languages.size(); ++i) {
        const QString name = QString::number(i) + u".mp4"_s;
        start({.language = languages.at(i)});
        const auto job = runOne(film(name, GetParam().originalBytes));
        EXPECT_EQ(resultOf(job).note, GetParam().notes.at(static_cast<qsizetype>(i)));
        EXPECT_EQ(resultOf(job).originalBytes, GetParam().originalBytes);
        EXPECT_EQ(resultOf(job).outputBytes, GetParam().outputBytes);
    }
}

namespace {

const std::array notes{
    Note{"nothing_special", "result 950000", 2'150'000, 950'000, {std::nullopt, std::nullopt}},
    Note{"encoded_again",
         "if [ -e \"$out\" ]; then result 950000; else result 1000001; fi",
         2'150'000,
         950'000,
         {u"Auto-refitted to land under the target"_s, u"已自动重压以达标"_s}},
    Note{"already_small_enough",
         "result 999000",
         1'000'000,
         999'000,
         {u"Already under target · copied without re-encoding"_s,
          u"已小于目标 · 未重新编码直接复制"_s}},
    Note{"a_better_attempt_upward",
         "case $out in *mx-approach-*) result 960000;; *) result 500000;; esac",
         2'150'000,
         960'000,
         {std::nullopt, std::nullopt}},
    Note{"a_worse_attempt_upward",
         "case $out in *mx-approach-*) result 1000001;; *) result 500000;; esac",
         2'150'000,
         500'000,
         {std::nullopt, std::nullopt}},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(, AppModelNoteTest, testing::ValuesIn(notes),
                         [](const auto &row) { return row.param.name; });

TEST_F(AppModelRunTest, a_note_is_in_the_language_of_the_moment_of_finishing)
{
    start();
    const VideoFile small = film(u"small.mp4"_s, 960'000);
    const Gate gate(small);
    const auto job = enqueue(small);
    waitForProgress(job, 0.25);

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    gate.open();
    waitFor(job, Outcome::finished);
    EXPECT_EQ(resultOf(job).note, u"已小于目标 · 未重新编码直接复制"_s);

    m_model->setLanguage(AppLanguage::english);
    EXPECT_EQ(resultOf(job).note, u"已小于目标 · 未重新编码直接复制"_s);
}

// The sound.

TEST_F(AppModelRunTest, a_finished_job_makes_one_sound_and_no_beep)
{
    start();
    QList<Outcome> seen;
    m_desktop->onSound = [&] { seen = outcomesOf(m_model->jobs()); };
    runOne();
    EXPECT_EQ(m_desktop->sounds, 1);
    EXPECT_EQ(m_desktop->beeps, 0);
    EXPECT_THAT(seen, ElementsAre(Outcome::finished));
}

TEST_F(AppModelRunTest, where_there_is_no_sound_a_finished_job_beeps)
{
    m_desktop->hasSound = false;
    start();
    runOne();
    EXPECT_EQ(m_desktop->sounds, 1);
    EXPECT_EQ(m_desktop->beeps, 1);
}

TEST_F(AppModelRunTest, with_the_sound_switched_off_a_finished_job_is_silent)
{
    m_desktop->hasSound = false;
    start();
    m_model->setPlayDoneSound(false);
    EXPECT_EQ(runOne()->outcome(), Outcome::finished);
    EXPECT_EQ(m_desktop->sounds, 0);
    EXPECT_EQ(m_desktop->beeps, 0);
}

TEST_F(AppModelRunTest, the_setting_of_the_moment_of_finishing_decides_about_the_sound)
{
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto job = enqueue(slow);
    waitForProgress(job, 0.25);
    m_model->setPlayDoneSound(false);
    gate.open();
    waitFor(job, Outcome::finished);
    EXPECT_EQ(m_desktop->sounds, 0);
}

TEST_F(AppModelRunTest, a_job_that_didnt_get_smaller_makes_the_sound_too)
{
    start();
    EXPECT_EQ(resultOf(runOne(film(u"small.mp4"_s, 900'000))).outputBytes, 950'000);
    EXPECT_EQ(m_desktop->sounds, 1);
}

TEST_F(AppModelRunTest, failed_and_cancelled_jobs_make_neither_sound_nor_message)
{
    installFFmpeg("exit 1");
    m_desktop->hasSound = false;
    start();
    const auto failing = enqueue(film(u"a.mp4"_s));
    const auto unwanted = enqueue(film(u"b.mp4"_s));
    enqueue(film(u"c.mp4"_s), TrimParams());
    m_model->cancelJob(unwanted->id);

    waitForAllToEnd();

    ASSERT_EQ(failing->outcome(), Outcome::failed);
    EXPECT_EQ(m_desktop->sounds, 0);
    EXPECT_EQ(m_desktop->beeps, 0);
    EXPECT_THAT(m_desktop->messages, IsEmpty());
}

// The message.

namespace {

struct Notice {
    const char *name;
    bool isActive;
    bool isWanted;
    qint64 originalBytes;
    QStringList messages;
};

class AppModelNotificationTest : public AppModelRunTest, public testing::WithParamInterface<Notice>
{
};

} // namespace

TEST_P(AppModelNotificationTest, a_saving_is_told_to_a_user_who_looks_elsewhere_and_wants_to_know)
{
    m_desktop->isActive = GetParam().isActive;
    start();
    m_model->setNotifyOnFinish(GetParam().isWanted);

    const auto job = runOne(film(u"my clip.mp4"_s, GetParam().originalBytes));

    EXPECT_EQ(resultOf(job).outputBytes, 950'000);
    EXPECT_EQ(m_desktop->messages, GetParam().messages);
}

namespace {

const std::array notices{
    Notice{"smaller", false, true, 2'150'000, {u"Morvix\nmy clip.mp4: 1.2 MB"_s}},
    Notice{"smaller_by_a_byte", false, true, 950'001, {u"Morvix\nmy clip.mp4: 1 byte"_s}},
    Notice{"smaller_by_little", false, true, 962'345, {u"Morvix\nmy clip.mp4: 12 KB"_s}},
    Notice{"smaller_by_much", false, true, 1'450'950'000, {u"Morvix\nmy clip.mp4: 1.45 GB"_s}},
    Notice{"as_large", false, true, 950'000, {}},
    Notice{"larger", false, true, 940'000, {}},
    Notice{"watched", true, true, 2'150'000, {}},
    Notice{"unwanted", false, false, 2'150'000, {}},
    Notice{"watched_and_unwanted", true, false, 2'150'000, {}},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(, AppModelNotificationTest, testing::ValuesIn(notices),
                         [](const auto &row) { return row.param.name; });

TEST_F(AppModelRunTest, whether_the_user_looks_is_asked_when_the_job_ends)
{
    m_desktop->isActive = true;
    start();
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto job = enqueue(slow);
    waitForProgress(job, 0.25);
    m_desktop->isActive = false;
    gate.open();
    waitFor(job, Outcome::finished);
    EXPECT_THAT(m_desktop->messages, ElementsAre(u"Morvix\nslow.mp4: 1.2 MB"_s));
}

// The computer's sleep.

TEST_F(AppModelRunTest, the_computer_stays_awake_while_a_job_runs)
{
    start({.language = AppLanguage::simplifiedChinese});
    const VideoFile slow = film(u"slow.mp4"_s);
    const Gate gate(slow);
    const auto job = enqueue(slow);
    EXPECT_THAT(m_desktop->sleepCalls, IsEmpty());

    waitForProgress(job, 0.25);
    EXPECT_THAT(m_desktop->sleepCalls, ElementsAre(u"hold 处理中…"_s));

    gate.open();
    waitFor(job, Outcome::finished);
    EXPECT_THAT(m_desktop->sleepCalls, ElementsAre(u"hold 处理中…"_s, u"release"_s));
}

TEST_F(AppModelRunTest, the_computer_stays_awake_until_the_last_of_several_jobs_ends)
{
    start({.concurrency = 2});
    const VideoFile first = film(u"first.mp4"_s);
    const VideoFile second = film(u"second.mp4"_s);
    const Gate firstGate(first);
    const Gate secondGate(second);
    const auto shorter = enqueue(first);
    const auto longer = enqueue(second);
    waitForProgress(shorter, 0.25);
    waitForProgress(longer, 0.25);

    firstGate.open();
    waitFor(shorter, Outcome::finished);
    turnTheLoop();
    EXPECT_THAT(m_desktop->sleepCalls, ElementsAre(u"hold Working…"_s));

    m_model->cancelJob(longer->id);
    waitFor(longer, Outcome::failed);
    EXPECT_THAT(m_desktop->sleepCalls, ElementsAre(u"hold Working…"_s, u"release"_s));
}

TEST_F(AppModelRunTest, every_job_of_a_row_runs_with_the_computer_kept_awake)
{
    start();
    QStringList lastCalls;
    for (const char *name : {"a.mp4", "b.mp4", "c.mp4"}) {
        const auto job = enqueue(film(QString::fromLatin1(name)));
        QObject::connect(job.get(), &Job::stateChanged, m_model.get(), [&, job = job.get()] {
            if (job->state() == Job::State(Job::Running{0.25})) {
                lastCalls += m_desktop->sleepCalls.last();
            }
        });
    }
    waitForAllToEnd();
    EXPECT_THAT(lastCalls, ElementsAre(u"hold Working…"_s, u"hold Working…"_s, u"hold Working…"_s));
    EXPECT_EQ(m_desktop->sleepCalls.last(), u"release"_s);
}

TEST_F(AppModelRunTest, jobs_that_only_wait_let_the_computer_sleep)
{
    start();
    m_model->setQueuePaused(true);
    enqueue(film(u"clip.mp4"_s));
    turnTheLoop();
    EXPECT_THAT(m_desktop->sleepCalls, IsEmpty());
}

TEST_F(AppModelRunTest, a_job_that_cannot_be_planned_lets_the_computer_sleep)
{
    start();
    runOne(film(u"clip.mp4"_s), TrimParams());
    EXPECT_THAT(m_desktop->sleepCalls, IsEmpty());
}

// The end of the application.

TEST_F(AppModelRunTest, ending_with_three_encodes_leaves_no_child_and_no_temporary_file)
{
    installFFmpeg("for word in \"$@\"; do\n"
                  "    if [ \"$last\" = -passlogfile ]; then\n"
                  "        : > \"$word-0.log\"; : > \"$word-0.log.mbtree\"\n"
                  "    fi\n"
                  "    last=$word\n"
                  "done\n"
                  "case \"$in $out\" in\n"
                  "*up.mp4*mx-approach-*) result 10;;\n"
                  "*up.mp4*) result 500000; exit 0;;\n"
                  "esac\n"
                  "progress 2500000\n"
                  "await_gate\n");
    start({.concurrency = 3});
    const VideoFile up = film(u"up.mp4"_s);
    const VideoFile first = film(u"first.mp4"_s);
    const VideoFile second = film(u"second.mp4"_s);
    const Gate gates[]{Gate(up), Gate(first), Gate(second)};
    enqueue(up);
    enqueue(first, oneMegabyteExactly());
    enqueue(second, oneMegabyteExactly());
    waitUntil([this] {
        return std::ranges::all_of(m_model->jobs(), [](const auto &job) {
            const auto *running = std::get_if<Job::Running>(&job->state());
            return running && running->progress > 0;
        });
    });
    ASSERT_EQ(Processes::withWords({m_tools.path()}).size(), 3);
    ASSERT_EQ(m_temporary.names().size(), 5);

    m_model.reset();

    EXPECT_THAT(Processes::withWords({m_tools.path()}), IsEmpty());
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(AppModelRunTest, a_losing_attempt_stays_only_until_the_application_ends)
{
    installFFmpeg("case $out in *mx-approach-*) result 1000001;; *) result 500000;; esac");
    start();
    const VideoFile clip = film(u"clip.mp4"_s);
    runOne(clip);
    EXPECT_EQ(m_temporary.names(),
              QStringList{u"mx-approach-"_s + clip.id.toString(QUuid::WithoutBraces) + u".mp4"_s});

    m_model.reset();

    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(AppModelRunTest, a_losing_attempt_of_a_job_that_was_cleared_goes_too)
{
    installFFmpeg("case $out in *mx-approach-*) result 1000001;; *) result 500000;; esac");
    start();
    runOne();
    m_model->clearFinished();

    m_model.reset();

    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(AppModelRunTest, ending_stops_both_runs_of_a_job_that_was_put_back_while_it_ran)
{
    installFFmpeg("progress 2500000\n"
                  "sleep 5\n"
                  ": > \"$in.survived\"\n");
    start({.concurrency = 2});
    const auto job = enqueue(film(u"clip.mp4"_s));
    waitForProgress(job, 0.25);
    m_model->retryJob(job->id);
    m_model->setQueueConcurrency(3);
    waitForProgress(job, 0.25);

    m_model.reset();

    EXPECT_FALSE(QFile::exists(m_films.path(u"clip.mp4.survived"_s)));
}

TEST_F(AppModelRunTest, ending_with_waiting_jobs_runs_none_of_them)
{
    start();
    m_model->setQueuePaused(true);
    enqueue(film(u"clip.mp4"_s));
    turnTheLoop();

    m_model.reset();
    turnTheLoop();

    EXPECT_FALSE(QFile::exists(m_films.path(u"clip-1MB.mp4"_s)));
}
