// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ProcessRunner.h"

#include "Engine/ChildSpawner.h"
#include "Engine/EngineError.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QUrl shell = QUrl::fromLocalFile(u"/bin/sh"_s);
const QUrl nowhere = QUrl::fromLocalFile(u"/nowhere/to be found"_s);

QStringList script(const QString &text)
{
    return {u"-c"_s, text};
}

struct ScriptRun {
    ProcessResult result;
    QStringList lines;
};

ScriptRun runScript(const QString &text)
{
    ScriptRun run;
    run.result = ProcessRunner::runAsync(shell, script(text), {},
                                         [&](const QString &line) { run.lines += line; });
    return run;
}

EngineError failureOf(const QUrl &url, const QStringList &args,
                      const ProcessRunner::OnSpawn &onSpawn = {})
{
    try {
        ProcessRunner::runAsync(url, args, onSpawn, {});
    } catch (const EngineError &error) {
        return error;
    }
    ADD_FAILURE() << "no failure";
    return EngineError::cancelled();
}

// The end of any process, ours or not, within a generous time.
bool endsSoon(pid_t pid)
{
    const int pidFd = static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
    if (pidFd < 0) {
        return true;
    }
    pollfd watched{pidFd, POLLIN, 0};
    const bool ended = ::poll(&watched, 1, 20'000) == 1;
    ::close(pidFd);
    return ended;
}

} // namespace

TEST(ProcessRunner, lines_come_in_order_and_a_tail_without_a_line_feed_is_collected_only)
{
    const ScriptRun run = runScript(u"printf 'a\\nb'"_s);
    EXPECT_EQ(run.lines, QStringList{u"a"_s});
    EXPECT_EQ(run.result.standardOutput, u"a\nb"_s);
    EXPECT_EQ(run.result.exitCode, 0);
}

TEST(ProcessRunner, a_line_of_spaces_is_delivered_as_empty_text)
{
    EXPECT_EQ(runScript(u"printf '   \\n'"_s).lines, QStringList{u""_s});
}

TEST(ProcessRunner, a_line_with_invalid_bytes_is_dropped_and_the_next_one_still_arrives)
{
    EXPECT_EQ(runScript(u"printf 'bad\\377\\nnext\\n'"_s).lines, QStringList{u"next"_s});
}

TEST(ProcessRunner, a_child_that_writes_nothing_gives_empty_texts)
{
    EXPECT_EQ(runScript(u"true"_s).result, ProcessResult());
}

TEST(ProcessRunner, both_streams_are_read_side_by_side_however_much_comes)
{
    const ScriptRun run =
        runScript(u"i=0; while [ $i -lt 20000 ]; do echo out-$i; echo err-$i >&2; "
                  "i=$((i+1)); done"_s);
    EXPECT_EQ(run.lines.size(), 20000);
    EXPECT_EQ(run.lines.last(), u"out-19999"_s);
    EXPECT_TRUE(run.result.standardError.endsWith("err-19999\n"_L1));
}

TEST(ProcessRunner, the_last_lines_are_not_lost_when_the_child_ends_at_once)
{
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(runScript(u"echo progress=end"_s).lines, QStringList{u"progress=end"_s});
    }
}

TEST(ProcessRunner, the_childs_input_is_the_null_device)
{
    EXPECT_EQ(runScript(u"cat; readlink /proc/self/fd/0"_s).lines, QStringList{u"/dev/null"_s});
}

TEST(ProcessRunner, arguments_arrive_as_they_are)
{
    QStringList lines;
    ProcessRunner::runAsync(shell,
                            {u"-c"_s, u"printf '<%s>\\n' \"$@\""_s, u"sh"_s, u"a b"_s, u"'\"$x"_s,
                             u""_s, u"片"_s, u"-y"_s},
                            {}, [&](const QString &line) { lines += line; });
    EXPECT_EQ(lines, (QStringList{u"<a b>"_s, u"<'\"$x>"_s, u"<>"_s, u"<片>"_s, u"<-y>"_s}));
}

TEST(ProcessRunner, the_environment_is_ours_and_keeps_the_encoders_own_logs_to_errors)
{
    const ScopedEnvironment ours("MORVIX_TEST", "handed down");
    EXPECT_EQ(runScript(u"echo $MORVIX_TEST; echo $SVT_LOG"_s).lines,
              (QStringList{u"handed down"_s, u"1"_s}));
}

TEST(ProcessRunner, a_log_level_that_the_user_has_set_stays)
{
    const ScopedEnvironment users("SVT_LOG", "4");
    EXPECT_EQ(runScript(u"echo $SVT_LOG"_s).lines, QStringList{u"4"_s});
}

TEST(ProcessRunner, a_status_other_than_zero_is_a_failure_with_the_whole_of_standard_error)
{
    const EngineError error =
        failureOf(shell, script(u"i=0; while [ $i -lt 100 ]; do echo 0123456789 >&2; "
                                "i=$((i+1)); done; exit 3"_s));
    EXPECT_EQ(error.kind(), EngineError::Case::processFailed);
    EXPECT_EQ(error.exitCode(), 3);
    EXPECT_EQ(error.stderrTail().size(), 1100);
    EXPECT_EQ(error.errorDescription().size(), 400);
}

TEST(ProcessRunner, a_missing_executable_fails_with_minus_one_and_calls_nobody)
{
    bool spawned = false;
    const EngineError error =
        failureOf(nowhere, {}, [&](const std::shared_ptr<ChildProcess> &) { spawned = true; });
    EXPECT_EQ(error.kind(), EngineError::Case::processFailed);
    EXPECT_EQ(error.exitCode(), -1);
    EXPECT_TRUE(error.stderrTail().contains(u"No such file"_s));
    EXPECT_FALSE(spawned);
}

TEST(ProcessRunner, a_file_that_may_not_be_executed_fails_with_minus_one)
{
    const TempFolder folder;
    const QString path = folder.write(u"ffmpeg"_s, "#!/bin/sh\n");
    const EngineError error = failureOf(QUrl::fromLocalFile(path), {});
    EXPECT_EQ(error.exitCode(), -1);
    EXPECT_TRUE(error.stderrTail().contains(u"Permission denied"_s));
}

TEST(ProcessRunner, a_child_killed_by_a_signal_fails_with_what_it_wrote_so_far)
{
    const EngineError error = failureOf(shell, script(u"echo last words >&2; kill -9 $$"_s));
    EXPECT_EQ(error.kind(), EngineError::Case::processFailed);
    EXPECT_EQ(error.exitCode(), SIGKILL);
    EXPECT_EQ(error.stderrTail(), u"last words\n"_s);
}

TEST(ProcessRunner, the_handle_is_at_hand_before_the_first_line)
{
    bool spawned = false;
    bool spawnedFirst = false;
    ProcessRunner::runAsync(
        shell, script(u"echo a"_s), [&](const std::shared_ptr<ChildProcess> &) { spawned = true; },
        [&](const QString &) { spawnedFirst = spawned; });
    EXPECT_TRUE(spawnedFirst);
}

TEST(ProcessRunner, the_handle_ends_the_child_from_any_thread)
{
    std::thread terminator;
    const EngineError error =
        failureOf(shell, script(u"exec sleep 600"_s), [&](std::shared_ptr<ChildProcess> child) {
            terminator = std::thread([child = std::move(child)] { child->terminate(); });
        });
    terminator.join();
    EXPECT_EQ(error.exitCode(), SIGTERM);
}

TEST(ProcessRunner, ending_a_child_takes_its_own_children_along)
{
    // Without that, the drain would wait for the grandchild that holds the pipe.
    const EngineError error =
        failureOf(shell, script(u"sleep 600; echo never"_s),
                  [](const std::shared_ptr<ChildProcess> &child) { child->terminate(); });
    EXPECT_NE(error.exitCode(), 0);
}

TEST(ProcessRunner, a_handle_kept_after_the_end_does_nothing)
{
    std::shared_ptr<ChildProcess> kept;
    ProcessRunner::runAsync(shell, script(u"true"_s),
                            [&](std::shared_ptr<ChildProcess> child) { kept = std::move(child); },
                            {});
    kept->terminate();
    kept->terminate();
    SUCCEED();
}

TEST(ProcessRunner, no_descriptor_is_left_open)
{
    const auto openDescriptors = [] {
        return QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System).size();
    };
    runScript(u"true"_s);
    const qsizetype before = openDescriptors();
    for (int i = 0; i < 20; ++i) {
        runScript(u"true"_s);
        failureOf(nowhere, {});
        ProcessRunner::runSync(shell, script(u"true"_s));
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(ProcessRunner, a_childs_end_is_seen_while_its_siblings_live_on)
{
    std::unique_ptr<ChildProcess> older =
        ChildSpawner::spawn({u"/bin/sleep"_s, {u"600"_s}, StandardInput::null});
    std::unique_ptr<ChildProcess> younger;
    ProcessRunner::runAsync(
        shell, script(u"echo a"_s),
        [&](const std::shared_ptr<ChildProcess> &) {
            younger = ChildSpawner::spawn({u"/bin/sleep"_s, {u"600"_s}, StandardInput::null});
        },
        {});
    EXPECT_EQ(::kill(older->pid(), 0), 0);
    EXPECT_EQ(::kill(younger->pid(), 0), 0);
}

TEST(ProcessRunner, signals_that_the_program_ignores_are_reset_in_the_child)
{
    ASSERT_EQ(::signal(SIGPIPE, SIG_IGN), SIG_IGN);
    const EngineError error = failureOf(shell, script(u"kill -PIPE $$; exit 0"_s));
    EXPECT_EQ(error.exitCode(), SIGPIPE);
}

TEST(ProcessRunner, a_child_outlives_the_thread_that_asked_for_it)
{
    std::unique_ptr<ChildProcess> child;
    std::thread([&] {
        child = ChildSpawner::spawn({u"/bin/sleep"_s, {u"600"_s}, StandardInput::null});
    }).join();
    child->terminate();
    // The parent-death signal would have been SIGKILL.
    EXPECT_EQ(child->wait(), SIGTERM);
}

// Asked again and again, as whoever waits for a cancelled job does.
TEST(ProcessRunner, a_child_that_takes_no_notice_is_killed_by_a_request_five_seconds_later)
{
    const auto child = ChildSpawner::spawn(
        {u"/bin/sh"_s, script(u"trap '' TERM; echo ready; while :; do sleep 1; done"_s),
         StandardInput::null});
    std::array<char, 6> ready{};
    ASSERT_EQ(::read(child->standardOutput(), ready.data(), ready.size()), 6);
    QElapsedTimer timer;
    timer.start();

    pollfd ended{child->pidFd(), POLLIN, 0};
    do {
        child->terminate();
    } while (::poll(&ended, 1, 250) == 0 && timer.elapsed() < 20'000);

    EXPECT_EQ(child->wait(), SIGKILL);
    EXPECT_GE(timer.elapsed(), 5'000);
}

TEST(ProcessRunner, a_child_that_nobody_waits_for_ends_with_its_handle)
{
    auto child = ChildSpawner::spawn({u"/bin/sleep"_s, {u"600"_s}, StandardInput::null});
    const pid_t pid = child->pid();
    child.reset();
    EXPECT_TRUE(endsSoon(pid));
}

TEST(ProcessRunner, no_child_outlives_a_program_that_is_killed)
{
    QProcess program;
    program.start(QStringLiteral(MORVIX_CHILD_HOLDER), {u"/bin/sleep"_s, u"600"_s});
    ASSERT_TRUE(program.waitForReadyRead(20'000));
    const pid_t child = program.readLine().trimmed().toInt();
    ASSERT_GT(child, 0);
    ASSERT_EQ(::kill(child, 0), 0);
    program.kill();
    program.waitForFinished();
    EXPECT_TRUE(endsSoon(child));
}

TEST(ProcessRunner, a_failed_child_is_seen_even_where_the_launcher_ignored_the_end_of_children)
{
    QProcess program;
    program.setChildProcessModifier([] { ::signal(SIGCHLD, SIG_IGN); });
    program.start(QStringLiteral(MORVIX_CHILD_HOLDER), {u"/bin/sh"_s, u"-c"_s, u"exit 3"_s});
    ASSERT_TRUE(program.waitForFinished(20'000));
    EXPECT_EQ(program.exitCode(), 1);
}

TEST(ProcessRunner, many_children_at_once_each_get_their_own_output)
{
    std::vector<std::thread> threads;
    std::vector<QStringList> lines(16);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        threads.emplace_back([&, i] { lines[i] = runScript(u"echo %1; echo %1"_s.arg(i)).lines; });
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        threads[i].join();
        EXPECT_EQ(lines[i], (QStringList{QString::number(i), QString::number(i)}));
    }
}

TEST(ProcessRunnerSync, both_streams_and_the_status_come_back)
{
    const ProcessResult result =
        ProcessRunner::runSync(shell, script(u"echo out; echo err >&2; exit 5"_s));
    EXPECT_EQ(result, (ProcessResult{5, u"out\n"_s, u"err\n"_s}));
}

TEST(ProcessRunnerSync, a_missing_executable_is_minus_one_with_the_systems_words)
{
    const ProcessResult result = ProcessRunner::runSync(nowhere, {});
    EXPECT_EQ(result.exitCode, -1);
    EXPECT_EQ(result.standardOutput, u""_s);
    EXPECT_TRUE(result.standardError.contains(u"No such file"_s));
}

TEST(ProcessRunnerSync, a_stream_that_is_not_utf_8_becomes_empty)
{
    const ProcessResult result =
        ProcessRunner::runSync(shell, script(u"printf 'a\\377'; echo fine >&2"_s));
    EXPECT_EQ(result, (ProcessResult{0, u""_s, u"fine\n"_s}));
}

TEST(ProcessRunnerSync, a_death_by_signal_is_a_status_other_than_zero)
{
    EXPECT_EQ(ProcessRunner::runSync(shell, script(u"kill -TERM $$"_s)).exitCode, SIGTERM);
}

TEST(ProcessRunnerSync, the_childs_input_is_the_programs_own)
{
    const ProcessResult result = ProcessRunner::runSync(shell, script(u"readlink /proc/$$/fd/0"_s));
    EXPECT_EQ(result.standardOutput.trimmed(), QFile::symLinkTarget(u"/proc/self/fd/0"_s));
}

TEST(EngineError, each_case_has_its_description)
{
    EXPECT_EQ(EngineError::cancelled().errorDescription(), u"cancelled"_s);
    EXPECT_EQ(EngineError::missingFFmpeg().errorDescription(), u"ffmpeg not found"_s);
    EXPECT_EQ(EngineError::processFailed(1, QString(500, u'x') + u"end"_s).errorDescription(),
              QString(397, u'x') + u"end"_s);
}
