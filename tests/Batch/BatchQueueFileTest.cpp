// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "BatchFixture.h"

#include "Engine/QueueFile.h"
#include "support/Processes.h"
#include "support/SmallDisk.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QProcessEnvironment>

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using testing::Each;

namespace {

constexpr int patienceMs = 20'000;

// A result in no time: the input itself.
constexpr auto copies = "for word in \"$@\"; do\n"
                        "    if [ \"$before\" = -i ]; then in=$word; fi\n"
                        "    before=$word\n"
                        "done\n"
                        "cp \"$in\" \"$out\"";

constexpr auto knowsEveryFilm =
    "#!/bin/sh\n"
    "echo '{\"format\": {\"duration\": \"1\", \"size\": \"6\"},"
    " \"streams\": [{\"index\": 0, \"codec_type\": \"video\", \"codec_name\": \"h264\","
    " \"width\": 64, \"height\": 36}]}'\n";

TargetSizeParams under(double megabytes)
{
    TargetSizeParams params;
    params.targetMB = megabytes;
    return params;
}

AdjustParams atSpeed(double speed)
{
    AdjustParams params;
    params.speed = speed;
    return params;
}

ConvertParams into(OutputContainer container)
{
    ConvertParams params;
    params.container = container;
    params.forceReencode = true;
    return params;
}

TargetSizeParams withExtraArgs(const QString &args)
{
    TargetSizeParams params = under(0.3);
    params.advanced.extraArgs = args;
    return params;
}

class BatchQueueFile : public BatchFixture
{
protected:
    ExportedJob entry(const QString &name, const PresetSpec &spec = under(25)) const
    {
        return {m_films.path(name), spec};
    }
    void writeQueue(const QList<ExportedJob> &entries) const
    {
        m_films.write(u"queue.json"_s, QueueFile::encode(entries));
    }

    CommandResult run(const QStringList &options = {},
                      const QMap<QString, QString> &environment = {})
    {
        return batch(QStringList{u"queue.json"_s, u"--json"_s} + options, environment);
    }

    // One entry of its own queue, with the code that it alone decides.
    CommandResult runAlone(const ExportedJob &entry, const QMap<QString, QString> &environment = {})
    {
        writeQueue({entry});
        return run({u"--entry"_s, u"0"_s}, environment);
    }

    void installQuickTools()
    {
        installFFmpeg(copies);
        m_installation.writeExecutable(u"libexec/morvix/ffprobe"_s, knowsEveryFilm);
    }

    static QList<qint64> entries(const QByteArray &out, const QString &type)
    {
        QList<qint64> numbers;
        for (const QJsonObject &object : objectsOfType(out, type)) {
            numbers += object.value(u"entry"_s).toInteger(-1);
        }
        return numbers;
    }

    static QString messageOf(const CommandResult &result)
    {
        return objectsOfType(result.out, u"failed"_s).value(0).value(u"message"_s).toString();
    }

    // Refused in one sentence for the file itself, soon, and without much memory.
    void expectRefusal(const char *what)
    {
        constexpr qint64 bearableMs = 10'000;
        QElapsedTimer clock;
        clock.start();
        const CommandResult all = run();
        const CommandResult alone = run({u"--entry"_s, u"0"_s});

        EXPECT_LT(clock.elapsed(), bearableMs) << what;
        EXPECT_EQ(all.exitCode, 1) << what;
        EXPECT_EQ(alone.exitCode, 65) << what;
        const QList<QJsonObject> told{
            {{u"type"_s, u"failed"_s},
             {u"input"_s, m_films.path(u"queue.json"_s)},
             {u"message"_s, u"Could not read this file. Is it a valid video?"_s}}};
        EXPECT_EQ(objects(all.out), told) << what;
        EXPECT_EQ(objects(alone.out), told) << what;
        EXPECT_EQ(all.errors, "") << what;
    }
};

/// A queue under way, as a process of its own.
class BatchQueueFileSignal : public BatchQueueFile
{
protected:
    void startQueue(const QStringList &options = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, m_temporary.path());
        environment.insert(u"XDG_CONFIG_HOME"_s, m_configuration.path());
        m_process.setProcessEnvironment(environment);
        m_process.start(
            m_program,
            QStringList{m_films.path(u"queue.json"_s), u"--json"_s, u"--jobs"_s, u"1"_s} + options);
        ASSERT_TRUE(m_process.waitForStarted(patienceMs));
    }

    void waitForProgressOf(qint64 number)
    {
        while (true) {
            while (m_process.canReadLine()) {
                m_out += m_process.readLine();
                const QJsonObject last = objects(m_out).last();
                if (last.value(u"type"_s) == u"progress"_s &&
                    last.value(u"entry"_s).toInteger(-1) == number) {
                    return;
                }
            }
            ASSERT_TRUE(m_process.waitForReadyRead(patienceMs)) << m_out.toStdString();
        }
    }

    void terminate()
    {
        ASSERT_EQ(::kill(static_cast<pid_t>(m_process.processId()), SIGTERM), 0);
        ASSERT_TRUE(m_process.waitForFinished(patienceMs));
        m_out += m_process.readAllStandardOutput();
        EXPECT_EQ(m_process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_process.exitCode(), 143);
        EXPECT_EQ(Processes::withWords({m_films.path()}), QList<qint64>());
        EXPECT_EQ(m_temporary.names(), QStringList());
    }

    QStringList failures() const
    {
        QStringList messages;
        for (const QJsonObject &failed : objectsOfType(m_out, u"failed"_s)) {
            messages += failed.value(u"message"_s).toString();
        }
        return messages;
    }

    QProcess m_process;
    QByteArray m_out;
};

constexpr auto readsSlowly = "case \"$*\" in *slow*) exec \"$ffmpeg\" -re \"$@\";; esac\n"
                             "exec \"$ffmpeg\" \"$@\"";

} // namespace

TEST_F(BatchQueueFile, two_hundred_entries_run_to_their_end_and_each_is_told)
{
    installQuickTools();
    QList<ExportedJob> jobs;
    QList<qint64> numbers;
    for (int i = 0; i < 200; ++i) {
        const QString name = u"%1.mp4"_s.arg(i);
        m_films.write(name, "a film");
        jobs += entry(name);
        numbers += i;
    }
    writeQueue(jobs);

    const CommandResult result = run({u"--jobs"_s, u"1"_s});

    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    EXPECT_EQ(entries(result.out, u"start"_s), numbers);
    QList<qint64> finished = entries(result.out, u"finished"_s);
    std::ranges::sort(finished);
    EXPECT_EQ(finished, numbers);
    EXPECT_EQ(m_films.names().size(), 2 * 200 + 1);
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchQueueFile, jobs_side_by_side_work_through_all_entries)
{
    installQuickTools();
    QList<ExportedJob> jobs;
    for (int i = 0; i < 30; ++i) {
        m_films.write(u"%1.mp4"_s.arg(i), "a film");
        jobs += entry(u"%1.mp4"_s.arg(i));
    }
    writeQueue(jobs);

    const CommandResult result = run({u"--jobs"_s, u"3"_s});

    EXPECT_EQ(result.exitCode, 0) << result.out.toStdString();
    EXPECT_EQ(objectsOfType(result.out, u"finished"_s).size(), 30);
}

TEST_F(BatchQueueFile, an_empty_queue_is_done_at_once)
{
    writeQueue({});

    const CommandResult result = run();

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.errors, "");
}

TEST_F(BatchQueueFile, one_film_may_stand_in_it_with_several_specs)
{
    const QString film = makeFilm(u"film.mp4"_s);
    writeQueue({entry(u"film.mp4"_s, under(0.3)), entry(u"film.mp4"_s, ExtractParams()),
                entry(u"film.mp4"_s, under(0.2))});

    const CommandResult result = run({u"--jobs"_s, u"1"_s});

    EXPECT_EQ(result.exitCode, 0) << result.out.toStdString();
    const QList<QJsonObject> finished = objectsOfType(result.out, u"finished"_s);
    ASSERT_EQ(finished.size(), 3);
    const QStringList outputs{u"film-0.3MB.mp4"_s, u"film-audio.m4a"_s, u"film-0.2MB.mp4"_s};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(finished.at(i).value(u"entry"_s).toInteger(-1), i);
        EXPECT_EQ(finished.at(i).value(u"input"_s).toString(), film);
        EXPECT_EQ(finished.at(i).value(u"outputs"_s).toArray(),
                  QJsonArray{m_films.path(outputs.at(i))});
    }
    EXPECT_EQ(finished.at(0).value(u"limitBytes"_s).toInteger(), 300'000);
    EXPECT_FALSE(finished.at(1).contains(u"limitBytes"_s));
    EXPECT_EQ(finished.at(2).value(u"limitBytes"_s).toInteger(), 200'000);
}

TEST_F(BatchQueueFile, entries_that_can_not_be_used_are_told_and_the_others_run)
{
    makeFilm(u"film.mp4"_s, {.seconds = 1});
    m_films.write(u"empty.mp4"_s, "");
    m_films.write(u"text.mp4"_s, "no film");
    m_films.write(u"notes.txt"_s, "no film");
    writeQueue({entry(u"missing.mp4"_s), entry(u"film.mp4"_s), entry(u"empty.mp4"_s),
                entry(u"text.mp4"_s), entry(u"notes.txt"_s), entry(u"film.mp4"_s, GifParams()),
                ExportedJob{u""_s, GifParams()}});

    const CommandResult result = run({u"--jobs"_s, u"1"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(entries(result.out, u"finished"_s), (QList<qint64>{1, 5}));
    QMap<qint64, QString> failed;
    for (const QJsonObject &line : objectsOfType(result.out, u"failed"_s)) {
        failed.insert(line.value(u"entry"_s).toInteger(-1), line.value(u"message"_s).toString());
    }
    EXPECT_EQ(failed,
              (QMap<qint64, QString>{{0, u"There is no such file."_s},
                                     {2, u"This file is empty."_s},
                                     {3, u"Could not read this file. Is it a valid video?"_s},
                                     {4, u"This is no media file by its name's extension."_s},
                                     {6, u"There is no such file."_s}}));
}

TEST_F(BatchQueueFile, an_entry_that_is_a_folder_stands_for_the_films_in_it)
{
    installQuickTools();
    m_films.write(u"trip/a.mp4"_s, "a film");
    m_films.write(u"trip/b/c.mp4"_s, "a film");
    m_films.write(u"last.mp4"_s, "a film");
    writeQueue({entry(u"trip"_s), entry(u"last.mp4"_s)});

    const CommandResult result = run({u"--jobs"_s, u"1"_s});

    EXPECT_EQ(result.exitCode, 0) << result.out.toStdString();
    EXPECT_EQ(entries(result.out, u"start"_s), (QList<qint64>{0, 0, 1}));
    EXPECT_TRUE(QFileInfo::exists(m_films.path(u"trip/a-25MB.mp4"_s)));
    EXPECT_TRUE(QFileInfo::exists(m_films.path(u"trip/b/c-25MB.mp4"_s)));
}

// The file holds the first film of a merge alone.
TEST_F(BatchQueueFile, a_merge_in_it_lacks_its_other_films_and_exits_with_65)
{
    makeFilm(u"film.mp4"_s, {.seconds = 1});

    const CommandResult result = runAlone(entry(u"film.mp4"_s, MergeParams()));

    EXPECT_EQ(result.exitCode, 65);
    EXPECT_EQ(entries(result.out, u"failed"_s), QList<qint64>{0});
    EXPECT_EQ(m_films.names(), (QStringList{u"film.mp4"_s, u"queue.json"_s}));
}

TEST_F(BatchQueueFile, a_dry_run_shows_the_plan_of_each_entry)
{
    makeFilm(u"film.mp4"_s);
    writeQueue({entry(u"film.mp4"_s, under(0.3)), entry(u"film.mp4"_s, GifParams())});

    const CommandResult result = run({u"--dry-run"_s});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(entries(result.out, u"plan"_s), (QList<qint64>{0, 1}));
    EXPECT_EQ(m_films.names(), (QStringList{u"film.mp4"_s, u"queue.json"_s}));
}

TEST_F(BatchQueueFile, results_go_to_the_folder_of_the_call)
{
    makeFilm(u"film.mp4"_s, {.seconds = 1});
    writeQueue({entry(u"film.mp4"_s)});

    EXPECT_EQ(run({u"--out"_s, u"made"_s}).exitCode, 0);

    EXPECT_TRUE(QFileInfo::exists(m_films.path(u"made/film-25MB.mp4"_s)));
}

TEST_F(BatchQueueFile, in_text_each_entry_is_a_line)
{
    makeFilm(u"film.mp4"_s, {.seconds = 1});
    writeQueue({entry(u"film.mp4"_s), entry(u"missing.mp4"_s)});

    const CommandResult result = batch({u"queue.json"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.out.startsWith("film.mp4: ")) << result.out.toStdString();
    EXPECT_EQ(result.out.count('\n'), 1);
    EXPECT_EQ(QString::fromUtf8(result.errors),
              m_films.path(u"missing.mp4"_s) + u": There is no such file.\n"_s);
}

TEST_F(BatchQueueFile, a_further_attempt_is_a_line_with_its_entry_and_number)
{
    makeFilm(u"film.mp4"_s);
    installFFmpeg("bytes=150000\n"
                  "if [ $attempt -ge 2 ]; then bytes=95000; fi\n"
                  "head -c $bytes /dev/zero > \"$out\"");
    writeQueue({entry(u"missing.mp4"_s), entry(u"film.mp4"_s, under(0.1))});

    const CommandResult result = run();

    EXPECT_EQ(objectsOfType(result.out, u"attempt"_s),
              (QList<QJsonObject>{{{u"type"_s, u"attempt"_s},
                                   {u"input"_s, m_films.path(u"film.mp4"_s)},
                                   {u"entry"_s, 1},
                                   {u"number"_s, 2}}}));
    EXPECT_EQ(objectsOfType(result.out, u"finished"_s).value(0).value(u"attempts"_s), 2);
}

TEST_F(BatchQueueFile, an_attempt_for_a_file_of_the_command_line_has_no_entry)
{
    makeFilm(u"film.mp4"_s);
    installFFmpeg("bytes=150000\n"
                  "if [ $attempt -ge 2 ]; then bytes=95000; fi\n"
                  "head -c $bytes /dev/zero > \"$out\"");

    const CommandResult result =
        batch({u"targetSize"_s, u"--json"_s, u"targetMB=0.1"_s, u"film.mp4"_s});

    EXPECT_EQ(objectsOfType(result.out, u"attempt"_s),
              (QList<QJsonObject>{{{u"type"_s, u"attempt"_s},
                                   {u"input"_s, m_films.path(u"film.mp4"_s)},
                                   {u"number"_s, 2}}}));
}

TEST_F(BatchQueueFile, one_entry_alone_runs_under_its_own_number)
{
    makeFilm(u"film.mp4"_s, {.seconds = 1});
    m_films.write(u"text.mp4"_s, "no film");
    writeQueue({entry(u"text.mp4"_s), entry(u"missing.mp4"_s), entry(u"film.mp4"_s)});

    const CommandResult result = run({u"--entry"_s, u"2"_s});

    EXPECT_EQ(result.exitCode, 0) << result.out.toStdString();
    for (const QJsonObject &line : objects(result.out)) {
        EXPECT_EQ(line.value(u"entry"_s), 2);
    }
    EXPECT_EQ(entries(result.out, u"finished"_s), QList<qint64>{2});
}

TEST_F(BatchQueueFile, an_entry_that_is_not_there_exits_with_64)
{
    writeQueue({entry(u"film.mp4"_s), entry(u"film.mp4"_s)});

    const CommandResult result = run({u"--entry"_s, u"2"_s});

    EXPECT_EQ(result.exitCode, 64);
    EXPECT_EQ(messageOf(result), u"There is no entry 2; the file holds 2."_s);

    writeSettings("mx.language=zh-Hans\n");
    EXPECT_EQ(messageOf(run({u"--entry"_s, u"9223372036854775807"_s})),
              u"没有第 9223372036854775807 项；文件中共有 2 项。"_s);
}

TEST_F(BatchQueueFile, a_wrong_entry_is_a_usage_error)
{
    struct Case {
        QStringList args;
        QByteArray sentence;
    };
    const QList<Case> cases{
        {{u"targetSize"_s, u"--entry"_s, u"0"_s, u"film.mp4"_s}, "--entry goes with a queue file"},
        {{u"queue.json"_s, u"--entry"_s, u"-1"_s}, "--entry expects a whole number from 0"},
        {{u"queue.json"_s, u"--entry"_s, u"one"_s}, "--entry expects a whole number from 0"},
        {{u"queue.json"_s, u"--entry"_s, u""_s}, "--entry expects a whole number from 0"},
        {{u"queue.json"_s, u"--entry"_s, u"1.0"_s}, "--entry expects a whole number from 0"},
        {{u"queue.json"_s, u"--entry"_s, u"9223372036854775808"_s},
         "--entry expects a whole number from 0"},
        {{u"queue.json"_s, u"--entry"_s}, "Missing value after '--entry'."},
        {{u"queue.json"_s, u"film.mp4"_s}, "there is no action \"queue.json\""},
        {{u"estimate"_s, u"queue.json"_s}, "there is no action \"queue.json\""},
    };
    writeQueue({});
    for (const Case &wrong : cases) {
        const CommandResult result = batch(wrong.args);
        EXPECT_EQ(result.exitCode, 64) << wrong.sentence.toStdString();
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.errors.startsWith("morvix-batch: " + wrong.sentence))
            << result.errors.toStdString();
    }
}

TEST_F(BatchQueueFile, an_entry_that_is_done_exits_with_0)
{
    makeFilm(u"film.mp4"_s);
    EXPECT_EQ(runAlone(entry(u"film.mp4"_s, under(0.3))).exitCode, 0);
}

TEST_F(BatchQueueFile, an_input_that_can_not_be_used_exits_with_65)
{
    m_films.write(u"text.mp4"_s, "no film");
    m_films.write(u"empty.mp4"_s, "");
    m_films.write(u"notes.txt"_s, "no film");
    makeFilm(u"silent.mp4"_s, {.seconds = 1, .hasAudio = false});
    ASSERT_EQ(::mkfifo(m_films.path(u"pipe.mp4"_s).toUtf8().constData(), 0600), 0);

    for (const QString &name :
         {u"text.mp4"_s, u"empty.mp4"_s, u"notes.txt"_s, u"pipe.mp4"_s, u"silent.mp4"_s}) {
        const CommandResult result = runAlone(entry(name, ExtractParams()));
        EXPECT_EQ(result.exitCode, 65) << name.toStdString() << result.out.toStdString();
        EXPECT_EQ(entries(result.out, u"failed"_s), QList<qint64>{0});
    }
}

TEST_F(BatchQueueFile, values_that_the_command_line_refuses_exit_with_65_and_are_named)
{
    installQuickTools();
    m_films.write(u"film.mp4"_s, "a film");
    const QString target =
        u"targetMB: a number of megabytes above 0 and up to 1000000000 is expected"_s;
    const QString speed = u"speed: a number above 0 is expected"_s;
    struct Case {
        PresetSpec spec;
        QString message;
    };
    const QList<Case> cases{
        {under(0), target},     {under(-0.0), target},          {under(-5), target},
        {under(1e300), target}, {under(1'000'000'001), target}, {atSpeed(0), speed},
        {atSpeed(-1), speed},
    };
    for (const Case &each : cases) {
        const CommandResult result = runAlone(entry(u"film.mp4"_s, each.spec));
        EXPECT_EQ(result.exitCode, 65) << result.out.toStdString();
        EXPECT_EQ(objects(result.out),
                  (QList<QJsonObject>{{{u"type"_s, u"failed"_s},
                                       {u"input"_s, m_films.path(u"film.mp4"_s)},
                                       {u"entry"_s, 0},
                                       {u"message"_s, each.message}}}));
    }
    EXPECT_EQ(m_films.names(), (QStringList{u"film.mp4"_s, u"queue.json"_s}));
}

TEST_F(BatchQueueFile, an_entry_with_such_values_is_told_once_and_the_others_run)
{
    installQuickTools();
    m_films.write(u"trip/a.mp4"_s, "a film");
    m_films.write(u"trip/b.mp4"_s, "a film");
    writeQueue({entry(u"trip"_s, under(0)), entry(u"trip"_s, atSpeed(0)), entry(u"trip"_s)});
    writeSettings("mx.language=zh-Hans\n");

    const CommandResult result = run({u"--jobs"_s, u"1"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(entries(result.out, u"failed"_s), (QList<qint64>{0, 1}));
    EXPECT_EQ(entries(result.out, u"finished"_s), (QList<qint64>{2, 2}));
    EXPECT_EQ(messageOf(result), u"targetMB：应为大于 0 且不超过 1000000000 的兆字节数"_s);
}

TEST_F(BatchQueueFile, a_dry_run_refuses_the_same_values)
{
    installQuickTools();
    m_films.write(u"film.mp4"_s, "a film");
    writeQueue({entry(u"film.mp4"_s, atSpeed(0)), entry(u"film.mp4"_s, atSpeed(2))});

    const CommandResult result = run({u"--dry-run"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(entries(result.out, u"failed"_s), QList<qint64>{0});
    EXPECT_EQ(entries(result.out, u"plan"_s), QList<qint64>{1});
}

TEST_F(BatchQueueFile, an_input_that_may_not_be_read_exits_with_65)
{
    const QString film = makeFilm(u"film.mp4"_s);
    writeQueue({entry(u"film.mp4"_s)});
    const QStringList nobody = asNobody();
    QFile::setPermissions(m_films.path(u"queue.json"_s), readableByAll);
    QFile::setPermissions(film, nobody.isEmpty() ? QFile::Permissions() : QFile::ReadOwner);

    EXPECT_EQ(batchBehind(nobody, {u"queue.json"_s, u"--entry"_s, u"0"_s}).exitCode, 65);
}

TEST_F(BatchQueueFile, a_film_that_was_cut_off_exits_with_65)
{
    makeFilm(u"film.mkv"_s, {.seconds = 4});
    QFile::resize(m_films.path(u"film.mkv"_s), QFileInfo(m_films.path(u"film.mkv"_s)).size() / 2);

    const CommandResult result = runAlone(entry(u"film.mkv"_s, under(25)));

    EXPECT_EQ(result.exitCode, 65) << result.out.toStdString();
}

TEST_F(BatchQueueFile, a_limit_that_can_not_be_met_exits_with_65)
{
    makeFilm(u"film.mp4"_s);

    const CommandResult result = runAlone(entry(u"film.mp4"_s, under(0.001)));

    EXPECT_EQ(result.exitCode, 65) << result.out.toStdString();
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchQueueFile, a_missing_input_exits_with_66)
{
    const CommandResult result = runAlone(entry(u"missing.mp4"_s));

    EXPECT_EQ(result.exitCode, 66);
    EXPECT_EQ(messageOf(result), u"There is no such file."_s);
}

TEST_F(BatchQueueFile, a_missing_queue_exits_with_66)
{
    EXPECT_EQ(run({u"--entry"_s, u"0"_s}).exitCode, 66);

    const CommandResult all = run();
    EXPECT_EQ(all.exitCode, 1);
    EXPECT_EQ(messageOf(all), u"Could not read this file. Is it a valid video?"_s);
}

TEST_F(BatchQueueFile, an_input_that_goes_away_under_way_exits_with_66)
{
    const QString film = makeFilm(u"film.mp4"_s);
    installFFmpeg("rm '" + film.toUtf8() + "'; exit 1");

    EXPECT_EQ(runAlone(entry(u"film.mp4"_s, under(0.3))).exitCode, 66);
}

TEST_F(BatchQueueFile, without_ffmpeg_an_entry_exits_with_69)
{
    if (QFile::exists(u"/usr/local/bin/ffmpeg"_s)) {
        GTEST_SKIP() << "/usr/local/bin has tools, which are found whatever PATH says";
    }
    EXPECT_EQ(runAlone(entry(u"film.mp4"_s), {{u"PATH"_s, m_films.path()}}).exitCode, 69);
}

TEST_F(BatchQueueFile, an_encoder_that_ffmpeg_lacks_exits_with_69)
{
    makeFilm(u"film.mp4"_s);
    const CommandResult unknown =
        runAlone(entry(u"film.mp4"_s, withExtraArgs(u"-c:v no_such_encoder"_s)));
    EXPECT_EQ(unknown.exitCode, 69) << unknown.out.toStdString();

    installFFmpeg("exec \"$ffmpeg\" \"$@\"");
    const CommandResult noVp9 = runAlone(entry(u"film.mp4"_s, into(OutputContainer::webm)));
    EXPECT_EQ(noVp9.exitCode, 69) << noVp9.out.toStdString();
    EXPECT_EQ(entries(noVp9.out, u"failed"_s), QList<qint64>{0});
    EXPECT_EQ(run({u"--entry"_s, u"0"_s, u"--dry-run"_s}).exitCode, 69);
}

TEST_F(BatchQueueFile, an_ffmpeg_that_fails_exits_with_70)
{
    makeFilm(u"film.mp4"_s);
    for (const QByteArray &body :
         QByteArrayList{"exit 7", "kill -SEGV $$", "echo 'out of order' >&2; exit 1", "exit 0"}) {
        installFFmpeg(body);
        const CommandResult result = runAlone(entry(u"film.mp4"_s, under(0.3)));
        EXPECT_EQ(result.exitCode, 70) << body.toStdString() << result.out.toStdString();
    }
}

TEST_F(BatchQueueFile, arguments_that_ffmpeg_refuses_exit_with_70)
{
    makeFilm(u"film.mp4"_s);

    const CommandResult result =
        runAlone(entry(u"film.mp4"_s, withExtraArgs(u"-no_such_option 1"_s)));

    EXPECT_EQ(result.exitCode, 70) << result.out.toStdString();
}

TEST_F(BatchQueueFile, a_folder_that_may_not_be_written_exits_with_73)
{
    const QString film = makeFilm(u"film.mp4"_s);
    writeQueue({entry(u"film.mp4"_s, under(0.3)), entry(u"film.mp4"_s, GifParams()),
                entry(u"film.mp4"_s, SplitParams()), entry(u"film.mp4"_s, ExtractParams()),
                entry(u"film.mp4"_s, under(25))});
    const QStringList nobody = asNobody();
    QFile::setPermissions(film, readableByAll);
    QFile::setPermissions(m_films.path(u"queue.json"_s), readableByAll);
    QFile::setPermissions(m_films.path(),
                          QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);

    for (const QString &number : {u"0"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s}) {
        const CommandResult result =
            batchBehind(nobody, {u"queue.json"_s, u"--json"_s, u"--entry"_s, number});
        EXPECT_EQ(result.exitCode, 73) << number.toStdString() << result.out.toStdString();
    }

    QFile::setPermissions(m_films.path(), openToAll);
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchQueueFile, an_output_folder_that_is_a_file_exits_with_73)
{
    makeFilm(u"film.mp4"_s);
    writeQueue({entry(u"film.mp4"_s, under(0.3))});

    const CommandResult result = run({u"--entry"_s, u"0"_s, u"--out"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 73) << result.out.toStdString();
}

TEST_F(BatchQueueFile, a_full_disk_exits_with_73)
{
    makeFilm(u"film.mp4"_s);
    writeQueue({entry(u"film.mp4"_s, under(0.5))});
    const QStringList smallDisk = onSmallDisk(m_films.path(u"full"_s), 300);
    if (smallDisk.isEmpty()) {
        GTEST_SKIP() << "this machine lets nobody mount a small disk";
    }

    const CommandResult result = batchBehind(
        smallDisk, {u"queue.json"_s, u"--json"_s, u"--entry"_s, u"0"_s, u"--out"_s, u"full"_s});

    EXPECT_EQ(result.exitCode, 73) << result.out.toStdString();
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchQueueFile, the_first_failure_of_several_does_not_become_the_code_of_all)
{
    writeQueue({entry(u"missing.mp4"_s), entry(u"missing.mp4"_s)});
    EXPECT_EQ(run().exitCode, 1);
}

TEST_F(BatchQueueFile, numbers_beyond_all_sense_end_as_failures)
{
    makeFilm(u"film.mp4"_s, {.seconds = 1});
    QList<ExportedJob> hostile;
    for (const double megabytes : {0.0, -5.0, 1e300, -1e300, 1e-300}) {
        hostile += entry(u"film.mp4"_s, under(megabytes));
    }
    for (const double speed : {0.0, -1.0, 1e300}) {
        hostile += entry(u"film.mp4"_s, atSpeed(speed));
    }
    ExtractParams noSuchTrack;
    noSuchTrack.audioTrackIndex = std::numeric_limits<qint64>::max();
    hostile += entry(u"film.mp4"_s, noSuchTrack);
    GifParams endless;
    endless.start = 1e300;
    endless.fps = std::numeric_limits<qint64>::min();
    hostile += entry(u"film.mp4"_s, endless);
    writeQueue(hostile);

    const CommandResult result = run();

    EXPECT_GE(result.exitCode, 0);
    EXPECT_LE(result.exitCode, 1);
    EXPECT_EQ(objectsOfType(result.out, u"failed"_s).size() +
                  objectsOfType(result.out, u"finished"_s).size(),
              hostile.size())
        << result.out.toStdString();
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchQueueFile, what_is_no_queue_is_refused_in_bounded_time_and_memory)
{
    const QByteArray good = QueueFile::encode({entry(u"film.mp4"_s, ExtractParams())});
    const auto with = [&good](const QByteArray &before, const QByteArray &after) {
        EXPECT_TRUE(good.contains(before));
        return QByteArray(good).replace(before, after);
    };
    struct Case {
        const char *what;
        QByteArray document;
    };
    const QList<Case> cases{
        {"nothing", ""},
        {"rubbish", QByteArray("\x00\xff\xfe", 3) + QByteArray(1000, '\x80')},
        {"an object", "{}"},
        {"a number", "5"},
        {"no entry", "[null]"},
        {"a half", good.first(good.size() / 2)},
        {"deep lists", QByteArray(4'000'000, '[') + QByteArray(4'000'000, ']')},
        {"deep objects", QByteArray("{\"a\":").repeated(1'000'000)},
        {"many lists", '[' + QByteArray("[],").repeated(2'000'000) + "[]]"},
        {"many entries", '[' + QByteArray("{},").repeated(2'000'000) + "{}]"},
        {"a hundred megabytes", good + QByteArray(100'000'000, ' ')},
        {"a path of the wrong type", with('"' + m_films.path(u"film.mp4"_s).toUtf8() + '"', "5")},
        {"a spec of the wrong type", "[{\"path\": \"/a.mp4\", \"spec\": [1]}]"},
        {"a rate of the wrong type", with("192", "\"192\"")},
        {"a rate beyond its range", with("192", "1e99")},
        {"an unknown word", with("m4a", "ogg")},
        {"an unknown action", with("\"extract\"", "\"explode\"")},
        {"half a character", with("film.mp4", "\\ud800.mp4")},
        {"NUL in a text", with("film.mp4", "film.mp4\\u0000.txt")},
        {"NUL in the file", good + '\0'},
        {"two paths", with("\"path\"", "\"path\": \"/missing.mp4\", \"path\"")},
        {"two rates, spelt differently",
         with("\"format\"", "\"bitr\\u0061teKbps\": 1, \"format\"")},
        {"many equal keys", "[{" + QByteArray("\"a\":0,").repeated(1'000'000) + "\"a\":0}]"},
        {"bytes that are no UTF-8", with("film.mp4", "\xff.mp4")},
    };
    for (const Case &each : cases) {
        m_films.write(u"queue.json"_s, each.document);
        expectRefusal(each.what);
    }

    rusage children{};
    ::getrusage(RUSAGE_CHILDREN, &children);
    constexpr long bearableKilobytes = 1'000'000;
    EXPECT_LT(children.ru_maxrss, bearableKilobytes);
}

TEST_F(BatchQueueFile, a_refusal_comes_in_the_language_of_the_settings)
{
    m_films.write(u"queue.json"_s, "{}");
    writeSettings("mx.language=zh-Hans\n");

    EXPECT_EQ(messageOf(run()), u"无法读取这个文件，它可能是无效的视频。"_s);
}

TEST_F(BatchQueueFile, a_queue_that_is_no_regular_file_is_refused)
{
    QDir().mkpath(m_films.path(u"queue.json"_s));
    const CommandResult folder = run({u"--entry"_s, u"0"_s});
    EXPECT_EQ(folder.exitCode, 65) << folder.out.toStdString();

    QDir().rmdir(m_films.path(u"queue.json"_s));
    ASSERT_EQ(::mkfifo(m_films.path(u"queue.json"_s).toUtf8().constData(), 0600), 0);
    EXPECT_EQ(run({u"--entry"_s, u"0"_s}).exitCode, 65) << "a pipe is not waited for";
}

TEST_F(BatchQueueFileSignal, SIGTERM_in_the_middle_tells_every_entry_that_was_not_done)
{
    installFFmpeg(readsSlowly);
    makeFilm(u"quick.mp4"_s, {.seconds = 1});
    makeFilm(u"slow.mp4"_s, {.seconds = 20, .noise = 5, .videoBitrate = u"500k"_s});
    writeQueue({entry(u"quick.mp4"_s), entry(u"quick.mp4"_s, under(24)),
                entry(u"slow.mp4"_s, under(0.5)), entry(u"quick.mp4"_s, under(23)),
                entry(u"slow.mp4"_s, under(0.4)), entry(u"quick.mp4"_s, under(22))});
    ASSERT_NO_FATAL_FAILURE(startQueue());
    ASSERT_NO_FATAL_FAILURE(waitForProgressOf(2));

    ASSERT_NO_FATAL_FAILURE(terminate());

    QList<qint64> finished = entries(m_out, u"finished"_s);
    std::ranges::sort(finished);
    EXPECT_EQ(finished, (QList<qint64>{0, 1}));
    QList<qint64> failed = entries(m_out, u"failed"_s);
    std::ranges::sort(failed);
    EXPECT_EQ(failed, (QList<qint64>{2, 3, 4, 5}));
    EXPECT_THAT(failures(), Each(u"Interrupted."_s));
    EXPECT_EQ(entries(m_out, u"start"_s), (QList<qint64>{0, 1, 2}));
}

TEST_F(BatchQueueFileSignal, SIGTERM_among_jobs_side_by_side_ends_them_all)
{
    installFFmpeg(readsSlowly);
    makeFilm(u"slow.mp4"_s, {.seconds = 20, .noise = 5, .videoBitrate = u"500k"_s});
    QList<ExportedJob> jobs;
    for (int i = 0; i < 50; ++i) {
        jobs += entry(u"slow.mp4"_s, under(0.5 + i / 100.0));
    }
    writeQueue(jobs);
    ASSERT_NO_FATAL_FAILURE(startQueue({u"--jobs"_s, u"3"_s}));
    ASSERT_NO_FATAL_FAILURE(waitForProgressOf(1));

    ASSERT_NO_FATAL_FAILURE(terminate());

    EXPECT_EQ(failures().size(), 50);
    EXPECT_THAT(failures(), Each(u"Interrupted."_s));
}

TEST_F(BatchQueueFileSignal, SIGTERM_ends_an_entry_alone_with_143_too)
{
    installFFmpeg(readsSlowly);
    makeFilm(u"slow.mp4"_s, {.seconds = 20, .noise = 5, .videoBitrate = u"500k"_s});
    writeQueue({entry(u"missing.mp4"_s), entry(u"slow.mp4"_s, under(0.5))});
    ASSERT_NO_FATAL_FAILURE(startQueue({u"--entry"_s, u"1"_s}));
    ASSERT_NO_FATAL_FAILURE(waitForProgressOf(1));

    ASSERT_NO_FATAL_FAILURE(terminate());

    EXPECT_EQ(entries(m_out, u"failed"_s), QList<qint64>{1});
}

TEST_F(BatchQueueFileSignal, SIGTERM_before_the_films_are_known_tells_every_entry)
{
    installFFmpeg("exit 1");
    m_installation.writeExecutable(u"libexec/morvix/ffprobe"_s, "#!/bin/sh\n"
                                                                "for film in \"$@\"; do :; done\n"
                                                                "exec tail -f \"$film\"\n");
    m_films.write(u"a.mp4"_s, "a film");
    m_films.write(u"b.mp4"_s, "a film");
    writeQueue({entry(u"a.mp4"_s), entry(u"missing.mp4"_s), entry(u"b.mp4"_s)});
    ASSERT_NO_FATAL_FAILURE(startQueue());
    ASSERT_TRUE(Processes::eventually([this] {
        return Processes::withWords({u"tail"_s, m_films.path(u"a.mp4"_s)}).size() == 1 &&
               Processes::withWords({u"tail"_s, m_films.path(u"b.mp4"_s)}).size() == 1;
    }));

    ASSERT_NO_FATAL_FAILURE(terminate());

    EXPECT_EQ(entries(m_out, u"failed"_s), (QList<qint64>{1, 0, 2}));
    EXPECT_EQ(failures(),
              (QStringList{u"There is no such file."_s, u"Interrupted."_s, u"Interrupted."_s}));
}
