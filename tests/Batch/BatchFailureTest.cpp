// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "BatchFixture.h"

#include "support/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

class BatchFailure : public BatchFixture
{
protected:
    // Fails in one sentence for the film, which stays as it was, and leaves no temporary file.
    void expectFailure(const QString &name, const QString &sentence, const QStringList &fields = {})
    {
        const QByteArray before = checksum(m_films.path(name));

        const CommandResult result =
            batch(QStringList{u"targetSize"_s, u"targetMB=0.3"_s} + fields + QStringList{name});

        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.errors.count('\n'), 1) << result.errors.toStdString();
        EXPECT_TRUE(
            QString::fromUtf8(result.errors).startsWith(m_films.path(name) + u": "_s + sentence))
            << result.errors.toStdString();
        EXPECT_EQ(checksum(m_films.path(name)), before);
        EXPECT_EQ(m_temporary.names(), QStringList());
    }

    // What the job says when ffmpeg does that.
    void expectFailureOfFFmpeg(const QByteArray &body, const QString &sentence)
    {
        makeFilm(u"film.mp4"_s, {.seconds = 1, .noise = 20});
        installFFmpeg(body);
        expectFailure(u"film.mp4"_s, sentence);
    }

    void cutInHalf(const QString &name)
    {
        const QString path = m_films.path(name);
        ASSERT_TRUE(QFile::resize(path, QFileInfo(path).size() / 2));
    }
};

bool machineHasToolsInUsrLocal()
{
    const auto has = [](const QString &name) {
        return QFileInfo(u"/usr/local/bin/"_s + name).isExecutable();
    };
    return has(u"ffmpeg"_s) && has(u"ffprobe"_s);
}

} // namespace

TEST_F(BatchFailure, a_wrong_command_line_is_told_on_standard_error_and_exits_with_64)
{
    struct Case {
        QStringList args;
        QByteArray sentence;
    };
    const QList<Case> cases{
        {{}, "an action is expected"},
        {{u"explode"_s, u"a.mp4"_s}, "there is no action \"explode\""},
        {{u"targetSize"_s}, "at least one file is expected"},
        {{u"targetSize"_s, u"foo=1"_s, u"a.mp4"_s}, "foo: there is no such field"},
        {{u"targetSize"_s, u"muted=1"_s, u"a.mp4"_s}, "muted: true or false is expected"},
        {{u"targetSize"_s, u"targetMB=0"_s, u"a.mp4"_s}, "targetMB: a number of megabytes above 0"},
        {{u"targetSize"_s, u"targetMB=-1"_s, u"a.mp4"_s},
         "targetMB: a number of megabytes above 0"},
        {{u"targetSize"_s, u"targetMB=nan"_s, u"a.mp4"_s}, "targetMB: a number is expected"},
        {{u"targetSize"_s, u"targetMB=inf"_s, u"a.mp4"_s}, "targetMB: a number is expected"},
        {{u"targetSize"_s, u"targetMB=abc"_s, u"a.mp4"_s}, "targetMB: a number is expected"},
        {{u"targetSize"_s, u"--frobnicate"_s, u"a.mp4"_s}, "Unknown option 'frobnicate'."},
        {{u"targetSize"_s, u"a.mp4"_s, u"--out"_s}, "Missing value after '--out'."},
        {{u"targetSize"_s, u"-dash.mp4"_s}, "Unknown options"},
    };
    for (const Case &wrong : cases) {
        const CommandResult result = batch(wrong.args);
        EXPECT_EQ(result.exitCode, 64) << wrong.sentence.toStdString();
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.errors.startsWith("morvix-batch: " + wrong.sentence))
            << result.errors.toStdString();
        EXPECT_TRUE(result.errors.endsWith("\nTry: morvix-batch --help\n"));
    }
}

TEST_F(BatchFailure, help_and_version_come_on_standard_output)
{
    const CommandResult help = batch({u"--help"_s});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.startsWith("Usage: morvix-batch [estimate] ACTION"));
    EXPECT_EQ(help.errors, "");

    const CommandResult version = batch({u"--version"_s});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(version.out.startsWith("morvix-batch "));
}

TEST_F(BatchFailure, without_ffmpeg_it_exits_with_69)
{
    if (machineHasToolsInUsrLocal()) {
        GTEST_SKIP() << "/usr/local/bin has tools, which are found whatever PATH says";
    }
    const CommandResult result =
        batch({u"targetSize"_s, u"a.mp4"_s}, {{u"PATH"_s, m_films.path()}});

    EXPECT_EQ(result.exitCode, 69);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.errors.startsWith("FFmpeg not found.")) << result.errors.toStdString();
}

TEST_F(BatchFailure, an_ffmpeg_that_may_not_be_executed_is_none)
{
    if (machineHasToolsInUsrLocal()) {
        GTEST_SKIP() << "/usr/local/bin has tools, which are found whatever PATH says";
    }
    m_films.write(u"ffmpeg"_s, "#!/bin/sh\n");
    m_films.writeExecutable(u"ffprobe"_s, "#!/bin/sh\n");

    const CommandResult result =
        batch({u"targetSize"_s, u"a.mp4"_s}, {{u"PATH"_s, m_films.path()}});

    EXPECT_EQ(result.exitCode, 69);
    EXPECT_TRUE(result.errors.startsWith("FFmpeg not found.")) << result.errors.toStdString();
}

TEST_F(BatchFailure, an_ffmpeg_that_can_not_list_its_encoders_is_none)
{
    for (const QByteArray &body : QByteArrayList{"exit 1", "exit 0", "kill -SEGV $$",
                                                 "echo rubbish", "head -c 100000 /dev/urandom"}) {
        m_installation.writeExecutable(u"libexec/morvix/ffmpeg"_s, "#!/bin/sh\n" + body + '\n');
        m_installation.writeExecutable(u"libexec/morvix/ffprobe"_s, "#!/bin/sh\n");

        const CommandResult result = batch({u"targetSize"_s, u"a.mp4"_s});

        EXPECT_EQ(result.exitCode, 69) << body.toStdString();
        EXPECT_TRUE(result.errors.startsWith("FFmpeg not found.")) << result.errors.toStdString();
    }
}

TEST_F(BatchFailure, an_empty_file_is_told)
{
    m_films.write(u"film.mp4"_s, "");
    expectFailure(u"film.mp4"_s, u"This file is empty.\n"_s);
}

TEST_F(BatchFailure, a_text_is_no_film)
{
    m_films.write(u"film.mp4"_s, "Once upon a time there was a text.\n");
    expectFailure(u"film.mp4"_s, u"Could not read this file. Is it a valid video?"_s);
}

TEST_F(BatchFailure, a_folder_without_a_media_file_is_told)
{
    m_films.write(u"film.mp4/notes.txt"_s, "no film");
    expectFailure(u"film.mp4"_s, u"There is no media file in this folder.\n"_s);
}

TEST_F(BatchFailure, a_file_that_is_no_media_file_by_its_name_is_told)
{
    m_films.write(u"film.txt"_s, "no film");
    expectFailure(u"film.txt"_s, u"This is no media file by its name's extension.\n"_s);
}

TEST_F(BatchFailure, a_missing_file_is_told)
{
    expectFailure(u"film.mp4"_s, u"There is no such file.\n"_s);
}

TEST_F(BatchFailure, a_pipe_is_not_waited_for)
{
    ASSERT_EQ(::mkfifo(m_films.path(u"film.mp4"_s).toUtf8().constData(), 0600), 0);

    const CommandResult result = batch({u"targetSize"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.errors.endsWith(": This is no regular file.\n"))
        << result.errors.toStdString();
}

TEST_F(BatchFailure, a_film_whose_index_was_cut_off_can_not_be_read)
{
    makeFilm(u"film.mp4"_s);
    cutInHalf(u"film.mp4"_s);
    expectFailure(u"film.mp4"_s, u"Could not read this file. Is it a valid video?"_s);
}

TEST_F(BatchFailure, a_film_cut_off_behind_its_index_does_not_pass_for_the_whole)
{
    makeFilm(u"plain.mp4"_s, {.seconds = 4, .noise = 20});
    Clips::ffmpeg({u"-i"_s, m_films.path(u"plain.mp4"_s), u"-c"_s, u"copy"_s, u"-movflags"_s,
                   u"+faststart"_s, m_films.path(u"film.mp4"_s)});
    cutInHalf(u"film.mp4"_s);
    expectFailure(u"film.mp4"_s, u"This film has been cut off: the result holds 1."_s);
}

TEST_F(BatchFailure, a_film_cut_off_that_fits_already_does_not_pass_for_the_whole)
{
    makeFilm(u"film.mkv"_s, {.seconds = 4});
    cutInHalf(u"film.mkv"_s);
    expectFailure(u"film.mkv"_s, u"This film has been cut off: the result holds "_s,
                  {u"targetMB=25"_s});
}

TEST_F(BatchFailure, the_part_before_the_cut_may_be_taken_out_of_a_film)
{
    makeFilm(u"film.mkv"_s, {.seconds = 4, .noise = 20});
    cutInHalf(u"film.mkv"_s);

    const CommandResult result =
        batch({u"targetSize"_s, u"targetMB=0.2"_s, u"skipTailSeconds=3"_s, u"film.mkv"_s});

    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
}

TEST_F(BatchFailure, skips_that_leave_nothing_of_a_film_are_no_success)
{
    makeFilm(u"film.mp4"_s);
    expectFailure(u"film.mp4"_s, u"FFmpeg told no error, but the result holds no film.\n"_s,
                  {u"skipHeadSeconds=60"_s});
}

TEST_F(BatchFailure, a_file_that_may_not_be_read_is_told)
{
    const QString film = makeFilm(u"film.mp4"_s);
    QFile::setPermissions(film, ::geteuid() == 0 ? QFile::ReadOwner : QFile::Permissions());

    const CommandResult result =
        batchBehind(asNobody(), {u"targetSize"_s, u"targetMB=0.3"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(QString::fromUtf8(result.errors),
              film + u": This file can't be read: Permission denied.\n"_s);
}

TEST_F(BatchFailure, a_folder_that_may_not_be_written_is_told)
{
    const QString film = makeFilm(u"film.mp4"_s);
    const QByteArray before = checksum(film);
    const QStringList nobody = asNobody();
    QFile::setPermissions(film, readableByAll);
    QFile::setPermissions(m_films.path(),
                          QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);

    const CommandResult result =
        batchBehind(nobody, {u"targetSize"_s, u"targetMB=0.3"_s, u"film.mp4"_s});

    QFile::setPermissions(m_films.path(), openToAll);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.errors.endsWith("film-0.3MB.mp4: Permission denied\n"))
        << result.errors.toStdString();
    EXPECT_EQ(checksum(film), before);
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchFailure, an_output_folder_that_is_a_file_is_told)
{
    makeFilm(u"film.mp4"_s);
    expectFailure(u"film.mp4"_s, u"FFmpeg error: "_s, {u"--out"_s, u"film.mp4"_s});
}

TEST_F(BatchFailure, a_full_disk_is_told)
{
    const QString film = makeFilm(u"film.mp4"_s);
    const QByteArray before = checksum(film);
    const QStringList smallDisk = onSmallDisk(m_films.path(u"full"_s), 300);
    if (smallDisk.isEmpty()) {
        GTEST_SKIP() << "this machine lets nobody mount a small disk";
    }

    const CommandResult result = batchBehind(
        smallDisk, {u"targetSize"_s, u"targetMB=0.5"_s, u"--out"_s, u"full"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    // In ffmpeg's words or, when it passes over the failure, in ours.
    EXPECT_TRUE(result.errors.contains("o space left on ")) << result.errors.toStdString();
    EXPECT_EQ(result.errors.count('\n'), 1);
    EXPECT_EQ(checksum(film), before);
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchFailure, the_words_of_an_ffmpeg_that_fails_are_passed_on)
{
    expectFailureOfFFmpeg("echo 'the encoder is out of order' >&2; exit 1",
                          u"FFmpeg error: the encoder is out of order\n"_s);
}

TEST_F(BatchFailure, an_ffmpeg_that_fails_without_a_word_is_told)
{
    expectFailureOfFFmpeg("exit 7", u"FFmpeg error:\n"_s);
}

TEST_F(BatchFailure, an_ffmpeg_killed_by_a_signal_is_told)
{
    expectFailureOfFFmpeg("kill -SEGV $$", u"FFmpeg error:\n"_s);
}

TEST_F(BatchFailure, an_ffmpeg_killed_in_the_middle_is_told)
{
    expectFailureOfFFmpeg("echo out_time_us=500000; head -c 1000 /dev/zero > \"$out\"; kill -9 $$",
                          u"FFmpeg error:\n"_s);
}

TEST_F(BatchFailure, an_ffmpeg_that_writes_nothing_and_ends_well_is_no_success)
{
    expectFailureOfFFmpeg("exit 0", u"FFmpeg told no error, but the result holds no film.\n"_s);
}

TEST_F(BatchFailure, random_bytes_from_ffmpeg_do_no_harm)
{
    expectFailureOfFFmpeg("head -c 1000000 /dev/urandom & head -c 1000000 /dev/urandom >&2\n"
                          "wait; exit 1",
                          u"FFmpeg error:"_s);
}

TEST_F(BatchFailure, words_that_are_no_UTF_8_do_no_harm)
{
    expectFailureOfFFmpeg("printf 'bad \\377\\376 words\\n' >&2\n"
                          "printf 'out_time_us=\\377\\n\\300\\200\\n'; exit 1",
                          u"FFmpeg error:"_s);
}

TEST_F(BatchFailure, lines_without_an_end_do_no_harm)
{
    expectFailureOfFFmpeg("head -c 3000000 /dev/zero | tr '\\0' x\n"
                          "head -c 3000000 /dev/zero | tr '\\0' y >&2; exit 1",
                          u"FFmpeg error: "_s + QString(160, u'y') + u'\n');
}

TEST_F(BatchFailure, senseless_progress_does_no_harm)
{
    makeFilm(u"film.mp4"_s, {.seconds = 1, .noise = 20});
    installFFmpeg("for time in nan -99999999 99999999999999999999 N/A 1e5 ''\n"
                  "do echo \"out_time_us=$time\"; echo \"out_time_ms=$time\"; done; exit 1");

    const CommandResult result =
        batch({u"targetSize"_s, u"--json"_s, u"targetMB=0.1"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 1);
    for (const QJsonObject &progress : objectsOfType(result.out, u"progress"_s)) {
        EXPECT_GE(progress.value(u"fraction"_s).toDouble(-1), 0);
        EXPECT_LE(progress.value(u"fraction"_s).toDouble(2), 1);
    }
    EXPECT_EQ(objects(result.out).last().value(u"type"_s), u"failed"_s);
}

TEST_F(BatchFailure, a_reader_that_goes_away_does_not_stop_the_work)
{
    makeFilm(u"film.mp4"_s);
    const CommandResult result =
        batchBehind({u"sh"_s, u"-c"_s, u"\"$0\" \"$@\" | true"_s},
                    {u"targetSize"_s, u"--json"_s, u"targetMB=0.3"_s, u"film.mp4"_s});

    EXPECT_EQ(result.errors, "");
    EXPECT_TRUE(m_films.names().contains(u"film-0.3MB.mp4"_s));
}
