// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "BatchFixture.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

#include <string>

using namespace Qt::StringLiterals;

namespace {

// A frame at a lowered rate lasts long, and sound that is copied ends with its frame.
constexpr double toleratedSeconds = 0.25;

struct Row {
    std::string name;
    /// The action and its fields; the files are film.mp4 and, for a merge, other.mp4.
    QStringList args;
    /// What comes out, without the folder.
    QStringList outputs;
    /// Such as "h264 320x180 25fps, aac", of each output.
    QString streams;
    /// Of all outputs.
    double seconds = 2;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

QString streamsIn(const VideoFile &film)
{
    QStringList streams;
    if (film.videoCodec) {
        streams += u"%1 %2x%3"_s.arg(*film.videoCodec, QString::number(film.width.value_or(0)),
                                     QString::number(film.height.value_or(0)));
    }
    for (const AudioStream &stream : film.audioStreams) {
        streams += stream.codec;
    }
    return streams.join(u", "_s);
}

// The lines that a shell runs, without the remarks between them.
QByteArray commandLines(const QByteArray &out)
{
    QList<QByteArray> lines = out.split('\n');
    lines.removeIf([](const QByteArray &line) { return line.isEmpty() || line.startsWith('#'); });
    return lines.join('\n') + '\n';
}

class BatchActions : public BatchFixture
{
protected:
    void makeFilms()
    {
        makeFilm(u"film.mp4"_s);
        makeFilm(u"other.mp4"_s, {.framesPerSecond = 15});
    }

    static QStringList withFiles(const QStringList &args)
    {
        const QStringList files{u"film.mp4"_s, u"other.mp4"_s};
        return args + files.first(args.contains(u"merge"_s) ? 2 : 1);
    }

    QStringList pathsOf(const QStringList &names) const
    {
        QStringList paths;
        for (const QString &name : names) {
            paths += m_films.path(name);
        }
        return paths;
    }

    void expectOutputs(const Row &row) const
    {
        double seconds = 0;
        for (const QString &path : pathsOf(row.outputs)) {
            ASSERT_TRUE(QFileInfo::exists(path)) << path.toStdString();
            const VideoFile output = Clips::probe(path);
            EXPECT_EQ(streamsIn(output), row.streams);
            seconds += output.durationSeconds;
        }
        EXPECT_NEAR(seconds, row.seconds,
                    toleratedSeconds * static_cast<double>(row.outputs.size()));
        EXPECT_EQ(m_films.names().size(), 2 + row.outputs.size());
    }

    /// The end of the one line of failure.
    void expectFailure(const CommandResult &result, const QString &name, const QString &sentence)
    {
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(QString::fromUtf8(result.errors),
                  m_films.path(name) + u": "_s + sentence + u'\n');
        EXPECT_EQ(m_temporary.names(), QStringList());
    }
};

class BatchAction : public BatchActions, public testing::WithParamInterface<Row>
{
};

const QString film = u"h264 320x180, aac"_s;

const QList<Row> &rows()
{
    static const QList<Row> all{
        {"targetSize",
         {u"targetSize"_s, u"targetMB=0.3"_s, u"exactTwoPass=true"_s},
         {u"film-0.3MB.mp4"_s},
         film},
        {"convert",
         {u"convert"_s, u"container=mkv"_s, u"audioFormat=flac"_s},
         {u"film-MKV.mkv"_s},
         u"h264 320x180, flac"_s},
        {"convert_with_a_crop",
         {u"convert"_s, u"container=mov"_s, u"forceReencode=true"_s,
          u"advanced.crop={\"aspect\":\"ratio1x1\"}"_s},
         {u"film-MOV.mov"_s},
         u"h264 180x180"_s},
        {"compress",
         {u"compress"_s, u"mode=quality"_s, u"quality=tiny"_s, u"resolution=custom"_s,
          u"customHeight=90"_s, u"muted=true"_s, u"advanced.codec=hevcVideoToolbox"_s},
         {u"film-smaller-90p.mp4"_s},
         u"hevc 160x90"_s},
        {"compress_with_a_free_crop",
         {u"compress"_s,
          u"advanced.crop={\"aspect\":\"free\",\"customWidth\":100,\"customHeight\":60}"_s},
         {u"film-smart.mp4"_s},
         u"h264 100x60, aac"_s},
        {"extract",
         {u"extract"_s, u"format=mp3"_s, u"bitrateKbps=128"_s, u"audioTrackIndex=0"_s},
         {u"film-audio.mp3"_s},
         u"mp3"_s},
        {"trim",
         {u"trim"_s, u"segments=[{\"start\":0,\"end\":0.48},{\"start\":1,\"end\":2}]"_s},
         {u"film-trim.mp4"_s},
         film,
         1.5},
        {"trim_into_separate_files",
         {u"trim"_s, u"segments=[{\"start\":1,\"end\":2},{\"start\":0,\"end\":0.48}]"_s,
          u"separateFiles=true"_s},
         {u"film-trim-01.mp4"_s, u"film-trim-02.mp4"_s},
         film,
         1.5},
        {"trim_exactly",
         {u"trim"_s, u"segments=[{\"start\":0.5,\"end\":1.5}]"_s, u"exactReencode=true"_s,
          u"advanced.audioBitrateKbps=96"_s},
         {u"film-trim.mp4"_s},
         film,
         1},
        {"gif",
         {u"gif"_s, u"start=0.5"_s, u"end=1.5"_s, u"width=160"_s, u"fps=10"_s,
          u"loopForever=false"_s, u"bounce=true"_s, u"screenContent=true"_s},
         {u"film-gif.gif"_s},
         u"gif 160x90"_s},
        {"enhance",
         {u"enhance"_s, u"denoise=strong"_s, u"sharpen=off"_s, u"upscale=x15"_s,
          u"advanced.fpsCap=10"_s},
         {u"film-enhanced.mp4"_s},
         u"h264 480x270, aac"_s},
        {"merge", {u"merge"_s, u"container=mp4"_s}, {u"film-merged.mp4"_s}, film, 4},
        {"merge_into_mkv",
         {u"merge"_s, u"container=mkv"_s, u"forceReencode=true"_s, u"advanced.extraArgs=-r 20"_s},
         {u"film-merged.mkv"_s},
         film,
         4},
        {"split_into_parts",
         {u"split"_s, u"mode=byParts"_s, u"parts=2"_s},
         {u"film-part-01.mp4"_s, u"film-part-02.mp4"_s},
         film},
        {"split_by_length",
         {u"split"_s, u"mode=byDuration"_s, u"durationPerPartSeconds=1"_s},
         {u"film-part-01.mp4"_s, u"film-part-02.mp4"_s},
         film},
        {"split_by_size",
         {u"split"_s, u"sizePerPartMB=0.01"_s},
         {u"film-part-01.mp4"_s, u"film-part-02.mp4"_s},
         film},
        {"adjust",
         {u"adjust"_s, u"rotation=ccw90"_s, u"flipH=true"_s, u"flipV=true"_s, u"speed=2"_s},
         {u"film-adjusted.mp4"_s},
         u"h264 180x320, aac"_s,
         1},
        {"adjust_backwards",
         {u"adjust"_s, u"reverse=true"_s, u"muted=true"_s, u"advanced.crf=30"_s,
          u"advanced.codec=softwareX264"_s},
         {u"film-adjusted.mp4"_s},
         u"h264 320x180"_s},
    };
    return all;
}

} // namespace

TEST_P(BatchAction, does_as_its_fields_say)
{
    makeFilms();
    const QByteArray before = checksum(m_films.path(u"film.mp4"_s));

    const CommandResult result = batch(withFiles(GetParam().args));

    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.out.count('\n'), 1);
    expectOutputs(GetParam());
    EXPECT_EQ(checksum(m_films.path(u"film.mp4"_s)), before);
    EXPECT_EQ(m_temporary.names(), QStringList());
}

// Cuts that are joined, two palettes and the like go through a folder that only a run makes.
TEST_P(BatchAction, shows_each_step_in_a_dry_run_as_JSON_and_for_a_shell)
{
    makeFilms();

    const CommandResult told =
        batch(withFiles(QStringList{u"--dry-run"_s, u"--json"_s} + GetParam().args));
    const CommandResult shown = batch(withFiles(QStringList{u"--dry-run"_s} + GetParam().args));

    EXPECT_EQ(told.exitCode, 0) << told.out.toStdString();
    EXPECT_EQ(shown.exitCode, 0) << shown.errors.toStdString();
    EXPECT_EQ(m_films.names().size(), 2);
    EXPECT_EQ(m_temporary.names(), QStringList());
    ASSERT_EQ(objects(told.out).size(), 1);
    const QJsonObject plan = objects(told.out).first();
    EXPECT_EQ(plan.value(u"type"_s), u"plan"_s);
    EXPECT_EQ(plan.value(u"outputs"_s).toVariant().toStringList(), pathsOf(GetParam().outputs));
    const QJsonArray runs = plan.value(u"runs"_s).toArray();
    EXPECT_EQ(plan.value(u"steps"_s).toArray().size(), runs.size());
    EXPECT_EQ(commandLines(shown.out).count('\n'), runs.size());
    for (const QJsonValue &step : runs) {
        EXPECT_TRUE(shown.out.contains("\n# " + step[u"label"_s].toString().toUtf8() + '\n'));
    }
}

INSTANTIATE_TEST_SUITE_P(, BatchAction, testing::ValuesIn(rows()),
                         [](const auto &row) { return row.param.name; });

TEST_F(BatchActions, what_a_dry_run_of_a_merge_shows_can_be_pasted_into_a_shell)
{
    makeFilm(u"it's $HOME.mp4"_s);
    makeFilm(u"other (1).mp4"_s, {.framesPerSecond = 15});

    const CommandResult shown =
        batch({u"merge"_s, u"--dry-run"_s, u"it's $HOME.mp4"_s, u"other (1).mp4"_s});
    ASSERT_EQ(shown.exitCode, 0);
    ASSERT_TRUE(shown.out.contains("'[0:v]scale=320:180:")) << shown.out.toStdString();
    const CommandResult pasted =
        runCommand(u"/bin/sh"_s, {u"-e"_s, u"-c"_s, QString::fromUtf8(shown.out)});

    EXPECT_EQ(pasted.exitCode, 0) << pasted.errors.toStdString();
    const VideoFile joined = Clips::probe(m_films.path(u"it's $HOME-merged.mp4"_s));
    EXPECT_NEAR(joined.durationSeconds, 4, 0.1);
}

TEST_F(BatchActions, all_parts_of_a_split_are_told)
{
    makeFilms();

    const CommandResult told =
        batch({u"split"_s, u"--json"_s, u"mode=byParts"_s, u"parts=2"_s, u"film.mp4"_s});
    const CommandResult shown =
        batch({u"split"_s, u"mode=byParts"_s, u"parts=2"_s, u"--out"_s, u"out"_s, u"film.mp4"_s});

    const QJsonObject end = objects(told.out).last();
    const QStringList parts = pathsOf({u"film-part-01.mp4"_s, u"film-part-02.mp4"_s});
    EXPECT_EQ(end.value(u"type"_s), u"finished"_s);
    EXPECT_EQ(end.value(u"outputs"_s).toVariant().toStringList(), parts);
    EXPECT_EQ(end.value(u"outputBytes"_s).toInteger(),
              QFileInfo(parts.first()).size() + QFileInfo(parts.last()).size());
    EXPECT_FALSE(end.contains(u"limitBytes"_s));
    EXPECT_TRUE(shown.out.endsWith("/out/film-part-01.mp4 and 1 more\n"))
        << shown.out.toStdString();
}

TEST_F(BatchActions, the_grade_of_a_conversion_is_noted_in_the_users_language)
{
    makeFilms();
    const CommandResult english = batch({u"convert"_s, u"container=mov"_s, u"film.mp4"_s});
    writeSettings("mx.language=zh-Hans\n");
    const CommandResult chinese =
        batch({u"convert"_s, u"--json"_s, u"forceReencode=true"_s, u"film.mp4"_s});

    EXPECT_TRUE(QString::fromUtf8(english.out).endsWith(u" (Lossless · instant)\n"_s))
        << english.out.toStdString();
    EXPECT_EQ(objects(chinese.out).last().value(u"note"_s), u"需要重新编码"_s);
}

TEST_F(BatchActions, each_file_gets_its_own_result)
{
    makeFilms();

    const CommandResult result =
        batch({u"extract"_s, u"format=wav"_s, u"--jobs"_s, u"2"_s, u"film.mp4"_s, u"other.mp4"_s});

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(m_films.names(), (QStringList{u"film-audio.wav"_s, u"film.mp4"_s,
                                            u"other-audio.wav"_s, u"other.mp4"_s}));
}

TEST_F(BatchActions, a_merge_is_one_job_that_goes_by_its_first_file)
{
    makeFilms();

    const CommandResult result =
        batch({u"merge"_s, u"--json"_s, u"--out"_s, u"out"_s, u"other.mp4"_s, u"film.mp4"_s});

    const QList<QJsonObject> starts = objectsOfType(result.out, u"start"_s);
    ASSERT_EQ(starts.size(), 1);
    EXPECT_EQ(starts.first().value(u"input"_s), m_films.path(u"other.mp4"_s));
    EXPECT_EQ(objects(result.out).last().value(u"outputs"_s).toVariant().toStringList(),
              QStringList{m_films.path(u"out/other-merged.mp4"_s)});
}

TEST_F(BatchActions, a_merge_of_one_file_is_refused)
{
    makeFilms();
    for (const QStringList &options : {QStringList(), QStringList{u"--dry-run"_s}}) {
        const CommandResult result = batch(options + QStringList{u"merge"_s, u"film.mp4"_s});
        expectFailure(result, u"film.mp4"_s, u"Load at least two videos to merge"_s);
    }
    EXPECT_EQ(m_films.names().size(), 2);
}

TEST_F(BatchActions, a_merge_with_a_clip_that_can_not_be_read_makes_no_film)
{
    makeFilms();
    m_films.write(u"bad.mp4"_s, "no film");
    for (const QStringList &options : {QStringList(), QStringList{u"--dry-run"_s}}) {
        const CommandResult result =
            batch(options + QStringList{u"merge"_s, u"film.mp4"_s, u"bad.mp4"_s, u"other.mp4"_s});
        expectFailure(result, u"bad.mp4"_s, u"Could not read this file. Is it a valid video?"_s);
    }
    expectFailure(batch({u"merge"_s, u"film.mp4"_s, u"gone.mp4"_s, u"other.mp4"_s}), u"gone.mp4"_s,
                  u"There is no such file."_s);
    EXPECT_EQ(m_films.names().size(), 3);
}

// The list that ffmpeg reads quotes no name, so it stumbles over an apostrophe, and ends well.
TEST_F(BatchActions, a_merge_that_loses_a_clip_is_told_as_failed)
{
    makeFilm(u"film.mp4"_s);
    makeFilm(u"it's.mp4"_s);

    const CommandResult english = batch({u"merge"_s, u"film.mp4"_s, u"it's.mp4"_s});
    writeSettings("mx.language=zh-Hans\n");
    const CommandResult chinese = batch({u"merge"_s, u"film.mp4"_s, u"it's.mp4"_s});

    expectFailure(english, u"film.mp4"_s,
                  u"A clip couldn't be joined: the result holds 2.0 of 4.0 seconds."_s);
    expectFailure(chinese, u"film.mp4"_s, u"有片段未能合并：结果只有 2.0 秒，应为 4.0 秒。"_s);
}

TEST_F(BatchActions, what_an_action_can_not_do_with_a_film_is_told)
{
    makeFilm(u"mute.mp4"_s, {.hasAudio = false});
    expectFailure(batch({u"extract"_s, u"mute.mp4"_s}), u"mute.mp4"_s,
                  u"This file has no audio track."_s);
    expectFailure(batch({u"extract"_s, u"--dry-run"_s, u"mute.mp4"_s}), u"mute.mp4"_s,
                  u"This file has no audio track."_s);
    expectFailure(batch({u"trim"_s, u"mute.mp4"_s}), u"mute.mp4"_s,
                  u"Mark at least one segment to keep."_s);
    EXPECT_EQ(m_films.names(), QStringList{u"mute.mp4"_s});
}

TEST_F(BatchActions, WebM_is_refused_on_a_build_that_lacks_its_encoder)
{
    makeFilm(u"film.mp4"_s);
    installFFmpeg("exit 1");
    expectFailure(batch({u"convert"_s, u"container=webm"_s, u"film.mp4"_s}), u"film.mp4"_s,
                  u"WebM export needs an ffmpeg build with libvpx. Try: brew install ffmpeg"_s);
}

TEST_F(BatchActions, a_wrong_field_or_value_is_told_and_exits_with_64)
{
    struct Case {
        QStringList args;
        QByteArray sentence;
    };
    const QList<Case> cases{
        {{u"convert"_s, u"container=wmv"_s}, "container: the word \"wmv\" isn't known"},
        {{u"convert"_s, u"targetMB=8"_s}, "targetMB: there is no such field"},
        {{u"compress"_s, u"customHeight=tall"_s}, "customHeight: a whole number is expected"},
        {{u"compress"_s, u"quality=best"_s}, "quality: the word \"best\" isn't known"},
        {{u"extract"_s, u"bitrateKbps=12.5"_s}, "bitrateKbps: a whole number is expected"},
        {{u"extract"_s, u"advanced.crf=20"_s}, "advanced: there is no such field"},
        {{u"trim"_s, u"segments=1-2"_s}, "segments: a list is expected"},
        {{u"trim"_s, u"segments=[{\"start\":1}]"_s}, "segments[0].end: the key is missing"},
        {{u"gif"_s, u"bounce=yes"_s}, "bounce: true or false is expected"},
        {{u"enhance"_s, u"upscale=x3"_s}, "upscale: the word \"x3\" isn't known"},
        {{u"merge"_s, u"advanced.crop=square"_s}, "advanced.crop: an object is expected"},
        {{u"split"_s, u"parts=two"_s}, "parts: a whole number is expected"},
        {{u"adjust"_s, u"rotation=90"_s}, "rotation: the word \"90\" isn't known"},
        {{u"adjust"_s, u"speed=0"_s}, "speed: a number above 0 is expected"},
        {{u"play"_s}, "there is no action \"play\""},
    };
    for (const Case &wrong : cases) {
        const CommandResult result = batch(wrong.args + QStringList{u"film.mp4"_s});
        EXPECT_EQ(result.exitCode, 64) << wrong.sentence.toStdString();
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.errors.startsWith("morvix-batch: " + wrong.sentence))
            << result.errors.toStdString();
    }
}
