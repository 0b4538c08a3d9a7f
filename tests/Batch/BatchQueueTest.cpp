// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "BatchFixture.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

// Begins to work on its film and then waits until a second one does the same.
constexpr auto waitsForASecond =
    "touch \"$0.$$\"\n"
    "until [ $(ls \"$0\".[0-9]* | wc -l) -ge 2 ]; do sleep 0.05; done\n"
    "exec \"$ffmpeg\" \"$@\"";

class BatchQueue : public BatchFixture
{
protected:
    // Small films that all fit already.
    void makeFilms(const QStringList &names)
    {
        makeFilm(u"source.mp4"_s, {.seconds = 1});
        for (const QString &name : names) {
            QDir().mkpath(QFileInfo(m_films.path(name)).path());
            ASSERT_TRUE(QFile::copy(m_films.path(u"source.mp4"_s), m_films.path(name)));
        }
        QFile::remove(m_films.path(u"source.mp4"_s));
    }

    QStringList inputs(const QByteArray &out, const QString &type)
    {
        QStringList names;
        for (const QJsonObject &object : objectsOfType(out, type)) {
            names += object.value(u"input"_s).toString().mid(m_films.path().size() + 1);
        }
        return names;
    }
};

} // namespace

TEST_F(BatchQueue, a_folder_stands_for_the_films_in_it_in_the_order_of_their_names)
{
    makeFilms({u"trip/b.mp4"_s, u"trip/a/z.MP4"_s, u"trip/.hidden.mp4"_s, u"trip/c.mkv"_s});
    m_films.write(u"trip/notes.txt"_s, "no film");

    const CommandResult result =
        batch({u"targetSize"_s, u"--json"_s, u"--jobs"_s, u"1"_s, u"--out"_s, u"out"_s, u"trip"_s});

    EXPECT_EQ(result.exitCode, 0) << result.out.toStdString();
    EXPECT_EQ(inputs(result.out, u"start"_s),
              (QStringList{u"trip/a/z.MP4"_s, u"trip/b.mp4"_s, u"trip/c.mkv"_s}));
    EXPECT_EQ(inputs(result.out, u"finished"_s).size(), 3);
}

TEST_F(BatchQueue, every_film_is_worked_through_however_many_jobs_run_at_once)
{
    const QStringList names{u"1.mp4"_s, u"2.mp4"_s, u"3.mp4"_s, u"4.mp4"_s, u"5.mp4"_s};
    makeFilms(names);
    for (const QString &count : {u"1"_s, u"2"_s, u"3"_s, u"50"_s}) {
        const CommandResult result =
            batch(QStringList{u"targetSize"_s, u"--json"_s, u"--jobs"_s, count} + names);

        EXPECT_EQ(result.exitCode, 0) << count.toStdString() << result.out.toStdString();
        QStringList finished = inputs(result.out, u"finished"_s);
        finished.sort();
        EXPECT_EQ(finished, names) << count.toStdString();
    }
}

TEST_F(BatchQueue, two_jobs_at_once_are_under_way_together)
{
    makeFilms({u"1.mp4"_s, u"2.mp4"_s});
    installFFmpeg(waitsForASecond);

    const CommandResult result =
        batch({u"targetSize"_s, u"--json"_s, u"--jobs"_s, u"2"_s, u"1.mp4"_s, u"2.mp4"_s});

    EXPECT_EQ(result.exitCode, 0) << result.out.toStdString();
    EXPECT_EQ(inputs(result.out, u"finished"_s).size(), 2);
}

TEST_F(BatchQueue, the_setting_says_how_many_jobs_run_at_once)
{
    makeFilms({u"1.mp4"_s, u"2.mp4"_s});
    installFFmpeg(waitsForASecond);
    writeSettings("mx.concurrency=2\n");

    EXPECT_EQ(batch({u"targetSize"_s, u"1.mp4"_s, u"2.mp4"_s}).exitCode, 0);
}

TEST_F(BatchQueue, nothing_of_a_call_is_stored)
{
    makeFilms({u"1.mp4"_s, u"2.mp4"_s});

    EXPECT_EQ(
        batch({u"targetSize"_s, u"--jobs"_s, u"2"_s, u"--out"_s, u"out"_s, u"1.mp4"_s}).exitCode,
        0);
    EXPECT_EQ(m_configuration.names(), QStringList());

    writeSettings("mx.concurrency=1\nmx.outdir=/nowhere\n");
    const QByteArray before = contentOf(m_configuration.path(u"Morvix/Morvix.conf"_s));
    EXPECT_EQ(
        batch({u"targetSize"_s, u"--jobs"_s, u"3"_s, u"--out"_s, u"out"_s, u"2.mp4"_s}).exitCode,
        0);
    EXPECT_EQ(contentOf(m_configuration.path(u"Morvix/Morvix.conf"_s)), before);
}

TEST_F(BatchQueue, the_settings_of_the_window_hold_here_too)
{
    makeFilms({u"film.mp4"_s});
    writeSettings("mx.outdir=" + m_films.path(u"made"_s).toUtf8() +
                  "\nmx.template=\"{name}, {suffix}\"\nmx.language=zh-Hans\n");

    const CommandResult result = batch({u"targetSize"_s, u"--json"_s, u"film.mp4"_s});

    EXPECT_EQ(result.exitCode, 0) << result.out.toStdString();
    EXPECT_TRUE(QFile::exists(m_films.path(u"made/film, 25MB.mp4"_s)));
    EXPECT_EQ(objectsOfType(result.out, u"finished"_s).value(0).value(u"note"_s).toString(),
              u"已小于目标 · 未重新编码直接复制"_s);
}

TEST_F(BatchQueue, failures_come_in_the_language_of_the_settings)
{
    m_films.write(u"film.mp4"_s, "no film");
    writeSettings("mx.language=zh-Hans\n");

    EXPECT_EQ(QString::fromUtf8(batch({u"targetSize"_s, u"film.mp4"_s}).errors),
              m_films.path(u"film.mp4"_s) + u": 无法读取这个文件，它可能是无效的视频。\n"_s);
    EXPECT_EQ(QString::fromUtf8(batch({u"targetSize"_s, u"none.mp4"_s}).errors),
              m_films.path(u"none.mp4"_s) + u": 文件不存在。\n"_s);
}

TEST_F(BatchQueue, a_tree_of_folders_is_kept_below_the_output_folder_where_the_setting_says_so)
{
    makeFilms({u"trip/day 1/a.mp4"_s, u"trip/b.mp4"_s});
    writeSettings("mx.structure=true\n");

    EXPECT_EQ(batch({u"targetSize"_s, u"--out"_s, u"out"_s, u"trip"_s}).exitCode, 0);

    EXPECT_TRUE(QFile::exists(m_films.path(u"out/day 1/a-25MB.mp4"_s)));
    EXPECT_TRUE(QFile::exists(m_films.path(u"out/b-25MB.mp4"_s)));
}

TEST_F(BatchQueue, files_beyond_the_most_that_are_taken_at_a_time_are_told)
{
    installFFmpeg("exit 1");
    m_installation.writeExecutable(
        u"libexec/morvix/ffprobe"_s,
        "#!/bin/sh\necho '{\"streams\":[],\"format\":{\"duration\":\"1\"}}'\n");
    QStringList names;
    for (int i = 0; i < 502; ++i) {
        names += u"%1.mp4"_s.arg(i);
        m_films.write(names.last(), "a film");
    }

    const CommandResult result =
        batch(QStringList{u"targetSize"_s, u"--dry-run"_s, u"--json"_s} + names);

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(objectsOfType(result.out, u"plan"_s).size(), 500);
    EXPECT_EQ(inputs(result.out, u"failed"_s), (QStringList{u"500.mp4"_s, u"501.mp4"_s}));
}
