// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "BatchFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

qint64 sizeOf(const QString &path)
{
    return QFileInfo(path).size();
}

QStringList texts(const QJsonValue &array)
{
    return array.toVariant().toStringList();
}

QStringList firstArgs(const QJsonValue &steps)
{
    return texts(steps.toArray().first().toObject().value(u"args"_s));
}

// The lines that a shell runs, without the remarks between them.
QList<QByteArray> commandLines(const QByteArray &out)
{
    QList<QByteArray> lines = out.split('\n');
    lines.removeIf([](const QByteArray &line) { return line.isEmpty() || line.startsWith('#'); });
    return lines;
}

class BatchCommand : public BatchFixture
{
};

} // namespace

TEST_F(BatchCommand, a_film_comes_out_at_or_under_the_limit_and_stays_as_it_was)
{
    const QString film = makeFilm(u"film.mp4"_s);
    const QByteArray before = checksum(film);

    const CommandResult result = batch({u"targetSize"_s, u"targetMB=0.3"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(checksum(film), before);
    EXPECT_EQ(m_films.names(), (QStringList{u"film-0.3MB.mp4"_s, u"film.mp4"_s}));
    EXPECT_LE(sizeOf(m_films.path(u"film-0.3MB.mp4"_s)), 300'000);
    EXPECT_NEAR(Clips::probe(m_films.path(u"film-0.3MB.mp4"_s)).durationSeconds, 2, 0.1);
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchCommand, a_job_is_one_line_without_a_bar_when_nobody_watches)
{
    makeFilm(u"film.mp4"_s);

    const CommandResult result = batch({u"targetSize"_s, u"targetMB=0.3"_s, u"film.mp4"_s});

    const QRegularExpression line(
        u"^film\\.mp4: \\d+ KB → \\d+ KB, \\d+\\.\\d % of 300 KB, \\d attempts?, \\d+\\.\\d s → %1\n$"_s
            .arg(QRegularExpression::escape(m_films.path(u"film-0.3MB.mp4"_s))));
    EXPECT_TRUE(line.match(QString::fromUtf8(result.out)).hasMatch()) << result.out.toStdString();
}

TEST_F(BatchCommand, a_terminal_gets_a_bar_that_the_last_line_wipes_away)
{
    const QString film = makeFilm(u"film.mp4"_s);

    const CommandResult result = runCommand(
        u"script"_s, {u"-qec"_s, m_program + u" targetSize targetMB=0.3 "_s + film, u"/dev/null"_s},
        {{u"TMPDIR"_s, m_temporary.path()}});

    EXPECT_EQ(result.exitCode, 0);
    const QList<QByteArray> pieces = result.out.split('\r');
    EXPECT_TRUE(pieces.at(1).startsWith("\x1b[K░░")) << result.out.toStdString();
    EXPECT_TRUE(pieces.at(1).endsWith("  0 % film.mp4")) << result.out.toStdString();
    const qsizetype lastBar = result.out.lastIndexOf("% film.mp4");
    EXPECT_TRUE(result.out.sliced(lastBar).startsWith("% film.mp4\r\x1b[Kfilm.mp4: "))
        << result.out.toStdString();
}

TEST_F(BatchCommand, JSON_tells_the_start_the_progress_and_the_end_of_a_job)
{
    const QString film = makeFilm(u"film.mp4"_s);

    const CommandResult result =
        batch({u"targetSize"_s, u"--json"_s, u"targetMB=0.3"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.errors, "");
    const QList<QJsonObject> all = objects(result.out);
    EXPECT_EQ(all.first(), (QJsonObject{{u"type"_s, u"start"_s}, {u"input"_s, film}}));
    for (const QJsonObject &progress : objectsOfType(result.out, u"progress"_s)) {
        EXPECT_EQ(progress.value(u"input"_s), film);
        EXPECT_GE(progress.value(u"fraction"_s).toDouble(-1), 0);
        EXPECT_LE(progress.value(u"fraction"_s).toDouble(2), 1);
    }
    EXPECT_FALSE(objectsOfType(result.out, u"progress"_s).isEmpty());
    const QJsonObject end = all.last();
    const QString output = m_films.path(u"film-0.3MB.mp4"_s);
    EXPECT_EQ(end.value(u"type"_s), u"finished"_s);
    EXPECT_EQ(end.value(u"input"_s), film);
    EXPECT_EQ(texts(end.value(u"outputs"_s)), QStringList{output});
    EXPECT_EQ(end.value(u"originalBytes"_s).toInteger(), sizeOf(film));
    EXPECT_EQ(end.value(u"outputBytes"_s).toInteger(), sizeOf(output));
    EXPECT_EQ(end.value(u"limitBytes"_s).toInteger(), 300'000);
    EXPECT_GE(end.value(u"attempts"_s).toInteger(), 1);
    EXPECT_GT(end.value(u"seconds"_s).toDouble(), 0);
    EXPECT_TRUE(end.contains(u"note"_s));
}

TEST_F(BatchCommand, JSON_tells_progress_at_most_twice_a_second)
{
    const QString film = makeFilm(u"film.mp4"_s);
    makeFilm(u"small.mp4"_s, {.seconds = 2, .videoBitrate = u"200k"_s});
    installFFmpeg("i=0; while [ $i -lt 100 ]; do i=$((i + 1)); echo out_time_us=${i}0000; done\n"
                  "cp small.mp4 \"$out\"");

    const CommandResult result =
        batch({u"targetSize"_s, u"--json"_s, u"targetMB=0.3"_s, u"film.mp4"_s});

    const double seconds = objects(result.out).last().value(u"seconds"_s).toDouble();
    const qsizetype lines = objectsOfType(result.out, u"progress"_s).size();
    EXPECT_GE(lines, 1);
    EXPECT_LE(static_cast<double>(lines), 1 + seconds * 2);
}

TEST_F(BatchCommand, JSON_tells_a_failure_with_its_sentence)
{
    const CommandResult result = batch({u"targetSize"_s, u"--json"_s, u"missing.mp4"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(objects(result.out).last(),
              (QJsonObject{{u"type"_s, u"failed"_s},
                           {u"input"_s, m_films.path(u"missing.mp4"_s)},
                           {u"message"_s, u"There is no such file."_s}}));
}

TEST_F(BatchCommand, the_output_folder_is_made_and_names_in_it_stay_apart)
{
    makeFilm(u"film.mp4"_s);
    QDir().mkpath(m_films.path(u"sub"_s));
    QFile::copy(m_films.path(u"film.mp4"_s), m_films.path(u"sub/film.mp4"_s));

    const CommandResult result = batch({u"targetSize"_s, u"targetMB=0.3"_s, u"--out"_s, u"new/er"_s,
                                        u"film.mp4"_s, u"sub/film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(QDir(m_films.path(u"new/er"_s)).entryList(QDir::Files),
              (QStringList{u"film-0.3MB 2.mp4"_s, u"film-0.3MB.mp4"_s}));
    EXPECT_EQ(m_films.names(), (QStringList{u"film.mp4"_s, u"new"_s, u"sub"_s}));
}

TEST_F(BatchCommand, one_file_that_fails_does_not_stop_the_others)
{
    makeFilm(u"film.mp4"_s);
    m_films.write(u"bad.mp4"_s, "no film");

    const CommandResult result = batch({u"targetSize"_s, u"targetMB=0.3"_s, u"--json"_s,
                                        u"bad.mp4"_s, u"film.mp4"_s, u"missing.mp4"_s});

    EXPECT_EQ(result.exitCode, 1);
    QStringList ends;
    for (const QJsonObject &object : objects(result.out)) {
        if (object.value(u"type"_s) != u"progress"_s) {
            ends << object.value(u"type"_s).toString();
        }
    }
    // What can't be taken in is told before the first job begins.
    EXPECT_EQ(ends, (QStringList{u"failed"_s, u"failed"_s, u"start"_s, u"finished"_s}));
    EXPECT_TRUE(m_films.names().contains(u"film-0.3MB.mp4"_s));
}

TEST_F(BatchCommand, a_film_that_already_fits_is_copied_and_the_note_says_so)
{
    const QString film = makeFilm(u"film.mp4"_s);

    const CommandResult result =
        batch({u"targetSize"_s, u"--json"_s, u"targetMB=25"_s, u"film.mp4"_s});
    const CommandResult again = batch({u"targetSize"_s, u"targetMB=25"_s, u"film.mp4"_s});

    const QString note = u"Already under target · copied without re-encoding"_s;
    EXPECT_EQ(result.exitCode, 0);
    const QJsonObject end = objects(result.out).last();
    EXPECT_EQ(end.value(u"note"_s), note);
    EXPECT_EQ(end.value(u"attempts"_s), 1);
    EXPECT_TRUE(QString::fromUtf8(again.out).endsWith(u" ("_s + note + u")\n"_s));
    EXPECT_EQ(Clips::probe(m_films.path(u"film-25MB.mp4"_s)).videoBitrateBps,
              Clips::probe(film).videoBitrateBps);
}

TEST_F(BatchCommand, two_careful_passes_leave_nothing_behind)
{
    makeFilm(u"film.mp4"_s);

    const CommandResult result = batch(
        {u"targetSize"_s, u"--json"_s, u"targetMB=0.3"_s, u"exactTwoPass=true"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_LE(sizeOf(m_films.path(u"film-0.3MB.mp4"_s)), 300'000);
    EXPECT_EQ(m_temporary.names(), QStringList());
    EXPECT_EQ(m_films.names(), (QStringList{u"film-0.3MB.mp4"_s, u"film.mp4"_s}));
}

TEST_F(BatchCommand, a_retry_that_lands_under_the_limit_is_noted_and_counted)
{
    makeFilm(u"film.mp4"_s);
    makeFilm(u"small.mp4"_s, {.seconds = 2, .videoBitrate = u"200k"_s});
    installFFmpeg("cp small.mp4 \"$out\"\n"
                  "size=290000; [ $attempt -gt 1 ] || size=310000\n"
                  "truncate -s $size \"$out\"");

    const CommandResult result =
        batch({u"targetSize"_s, u"--json"_s, u"targetMB=0.3"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0);
    const QJsonObject end = objects(result.out).last();
    EXPECT_EQ(end.value(u"note"_s), u"Auto-refitted to land under the target"_s);
    EXPECT_EQ(end.value(u"attempts"_s), 2);
    EXPECT_EQ(end.value(u"outputBytes"_s), 290'000);
}

TEST_F(BatchCommand, an_ordinary_job_has_no_note)
{
    makeFilm(u"film.mp4"_s);
    makeFilm(u"small.mp4"_s, {.seconds = 2, .videoBitrate = u"200k"_s});
    installFFmpeg("cp small.mp4 \"$out\"; truncate -s 290000 \"$out\"");

    const CommandResult result =
        batch({u"targetSize"_s, u"--json"_s, u"targetMB=0.3"_s, u"film.mp4"_s});

    const QJsonObject end = objects(result.out).last();
    EXPECT_TRUE(end.value(u"note"_s).isNull());
    EXPECT_EQ(end.value(u"attempts"_s), 1);
}

TEST_F(BatchCommand, a_hopeless_limit_fails_and_leaves_the_last_try_in_place)
{
    makeFilm(u"film.mp4"_s);

    const CommandResult result = batch({u"targetSize"_s, u"targetMB=0.01"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(QString::fromUtf8(result.errors),
              m_films.path(u"film.mp4"_s) +
                  u": Still over the target after retries — trim the clip or raise the target a "
                  "little.\n"_s);
    EXPECT_GT(sizeOf(m_films.path(u"film-0.0MB.mp4"_s)), 10'000);
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchCommand, fields_reach_the_encoder)
{
    makeFilm(u"film.mp4"_s, {.seconds = 4, .noise = 20});

    const CommandResult result =
        batch({u"targetSize"_s, u"targetMB=0.2"_s, u"muted=true"_s, u"skipHeadSeconds=1"_s,
               u"skipTailSeconds=1.5"_s, u"advanced.fpsCap=10"_s,
               u"advanced.crop={\"aspect\":\"ratio1x1\"}"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0);
    const VideoFile made = Clips::probe(m_films.path(u"film-0.2MB.mp4"_s));
    EXPECT_NEAR(made.durationSeconds, 1.5, 0.2);
    EXPECT_TRUE(made.audioStreams.isEmpty());
    EXPECT_EQ(made.fps, 10);
    EXPECT_EQ(made.width, made.height);
}

TEST_F(BatchCommand, replacement_audio_that_ends_early_is_no_fault)
{
    makeFilm(u"film.mp4"_s, {.seconds = 4, .noise = 20});
    makeFilm(u":short.mp4"_s, {.seconds = 1});

    const CommandResult result =
        batch({u"targetSize"_s, u"targetMB=0.2"_s, u"advanced.replacementAudioURL=:short.mp4"_s,
               u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    EXPECT_LT(Clips::probe(m_films.path(u"film-0.2MB.mp4"_s)).durationSeconds, 2);
}

TEST_F(BatchCommand, a_film_of_uneven_frames_is_no_fault)
{
    makeFilm(u"even.mp4"_s, {.seconds = 4, .noise = 20});
    Clips::ffmpeg({u"-i"_s, m_films.path(u"even.mp4"_s), u"-vf"_s, u"select='lt(n,30)+eq(n,99)'"_s,
                   u"-vsync"_s, u"vfr"_s, u"-preset"_s, u"ultrafast"_s,
                   m_films.path(u"film.mp4"_s)});

    const CommandResult result = batch({u"targetSize"_s, u"targetMB=0.1"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
}

TEST_F(BatchCommand, a_dry_run_runs_nothing)
{
    makeFilm(u"film.mp4"_s);

    const CommandResult result = batch(
        {u"targetSize"_s, u"--dry-run"_s, u"targetMB=0.3"_s, u"--out"_s, u"new"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(commandLines(result.out).size(), 1);
    EXPECT_EQ(m_films.names(), QStringList{u"film.mp4"_s});
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchCommand, a_dry_run_fails_for_what_can_not_be_planned)
{
    makeFilm(u"film.mp4"_s);

    const CommandResult result =
        batch({u"targetSize"_s, u"--dry-run"_s, u"--json"_s, u"missing.mp4"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(objectsOfType(result.out, u"failed"_s).size(), 1);
    EXPECT_EQ(objectsOfType(result.out, u"plan"_s).size(), 1);
}

TEST_F(BatchCommand, what_a_dry_run_prints_can_be_pasted_into_a_shell)
{
    const QString name = u"it's \"my\"\nfilm $HOME `id` #1 *.mp4"_s;
    makeFilm(name);

    const CommandResult shown =
        batch({u"targetSize"_s, u"--dry-run"_s, u"targetMB=0.3"_s, u"exactTwoPass=true"_s, name});
    const CommandResult pasted =
        runCommand(u"/bin/sh"_s, {u"-e"_s, u"-c"_s, QString::fromUtf8(shown.out)});

    EXPECT_EQ(pasted.exitCode, 0) << pasted.errors.toStdString();
    EXPECT_EQ(m_films.names().size(), 2);
    EXPECT_NEAR(Clips::probe(m_films.path(name.chopped(4) + u"-0.3MB.mp4"_s)).durationSeconds, 2,
                0.1);
}

TEST_F(BatchCommand, one_line_of_a_dry_run_does_the_step_that_it_shows)
{
    makeFilm(u"film.mp4"_s);
    const CommandResult shown =
        batch({u"targetSize"_s, u"--dry-run"_s, u"targetMB=0.3"_s, u"film.mp4"_s});
    const QList<QByteArray> lines = commandLines(shown.out);
    ASSERT_EQ(lines.size(), 1);
    ASSERT_FALSE(m_films.names().contains(u"film-0.3MB.mp4"_s));

    const CommandResult pasted =
        runCommand(u"/bin/sh"_s, {u"-c"_s, QString::fromUtf8(lines.first())});

    EXPECT_EQ(pasted.exitCode, 0) << pasted.errors.toStdString();
    EXPECT_TRUE(m_films.names().contains(u"film-0.3MB.mp4"_s));
}

TEST_F(BatchCommand, a_dry_run_as_JSON_shows_the_plan_and_what_runs_here)
{
    makeFilm(u"film.mp4"_s);

    const CommandResult result =
        batch({u"targetSize"_s, u"--dry-run"_s, u"--json"_s, u"targetMB=0.3"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0);
    const QList<QJsonObject> all = objects(result.out);
    ASSERT_EQ(all.size(), 1);
    const QJsonObject plan = all.first();
    EXPECT_EQ(plan.value(u"type"_s), u"plan"_s);
    EXPECT_EQ(plan.value(u"limitBytes"_s), 300'000);
    EXPECT_EQ(plan.value(u"steps"_s).toArray().first().toObject().value(u"label"_s), u"encode"_s);
    const QStringList planned = firstArgs(plan.value(u"steps"_s));
    const QStringList runs = firstArgs(plan.value(u"runs"_s));
    EXPECT_EQ(planned.value(planned.indexOf(u"-c:v"_s) + 1), u"h264_videotoolbox"_s);
    EXPECT_EQ(runs.value(runs.indexOf(u"-c:v"_s) + 1), u"libx264"_s);
    EXPECT_EQ(planned.last(), m_films.path(u"film-0.3MB.mp4"_s));
    EXPECT_EQ(runs.last(), planned.last());
}

TEST_F(BatchCommand, a_dry_run_of_two_passes_shows_both)
{
    makeFilm(u"film.mp4"_s);

    const CommandResult result = batch({u"targetSize"_s, u"--dry-run"_s, u"--json"_s,
                                        u"targetMB=0.3"_s, u"exactTwoPass=true"_s, u"film.mp4"_s});

    const QJsonArray steps = objects(result.out).first().value(u"steps"_s).toArray();
    ASSERT_EQ(steps.size(), 2);
    EXPECT_EQ(steps.at(0).toObject().value(u"label"_s), u"pass1"_s);
    EXPECT_EQ(steps.at(1).toObject().value(u"label"_s), u"pass2"_s);
}

TEST_F(BatchCommand, files_of_odd_names_are_films_like_any_other)
{
    const QStringList names{u"with blanks .mp4"_s, u"it's.mp4"_s,     u"\"quoted\".mp4"_s,
                            u"two\nlines.mp4"_s,   u"我的电影.mp4"_s, u"-dash.mp4"_s,
                            u"50%d%%.mp4"_s,       u"#1.mp4"_s,       u"why?.mp4"_s,
                            u":colon.mp4"_s,       u"file:a.mp4"_s,   u"a=b.mp4"_s};
    makeFilm(u"source.mp4"_s, {.seconds = 1});
    for (const QString &name : names) {
        ASSERT_TRUE(QFile::copy(m_films.path(u"source.mp4"_s), m_films.path(name)));
    }

    const CommandResult result =
        batch(QStringList{u"targetSize"_s, u"--json"_s, u"--out"_s, u"out"_s, u"--"_s} + names);

    EXPECT_EQ(result.exitCode, 0) << result.out.toStdString();
    EXPECT_EQ(objectsOfType(result.out, u"finished"_s).size(), names.size());
    for (const QString &name : names) {
        const QString made = u"out/"_s + name.chopped(4) + u"-25MB.mp4"_s;
        EXPECT_GT(sizeOf(m_films.path(made)), 0) << made.toStdString();
    }
}

TEST_F(BatchCommand, an_odd_name_is_encoded_in_two_passes_like_any_other)
{
    const QString name = u":-50%d #1? \"it's\"\n我 .mp4"_s;
    makeFilm(name, {.seconds = 1, .noise = 20});

    const CommandResult result =
        batch({u"targetSize"_s, u"targetMB=0.2"_s, u"exactTwoPass=true"_s, name});

    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    EXPECT_GT(sizeOf(m_films.path(name.chopped(4) + u"-0.2MB.mp4"_s)), 0);
    EXPECT_EQ(result.out.count('\n'), 1);
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchCommand, a_name_that_looks_like_a_field_is_written_with_a_folder)
{
    makeFilm(u"a=b.mp4"_s);
    EXPECT_EQ(batch({u"targetSize"_s, u"targetMB=0.3"_s, u"a=b.mp4"_s}).exitCode, 64);
    EXPECT_EQ(batch({u"targetSize"_s, u"targetMB=0.3"_s, u"./a=b.mp4"_s}).exitCode, 0);
    EXPECT_TRUE(m_films.names().contains(u"a=b-0.3MB.mp4"_s));
}

TEST_F(BatchCommand, a_control_character_in_a_name_does_not_reach_the_terminal)
{
    const QString name = u"red\x1b[31m\nfilm.mp4"_s;
    m_films.write(name, "no film");

    const CommandResult result = batch({u"targetSize"_s, name});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_FALSE(result.errors.contains('\x1b'));
    EXPECT_EQ(result.errors.count('\n'), 1);
}
