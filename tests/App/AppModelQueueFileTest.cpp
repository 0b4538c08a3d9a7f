// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "Engine/QueueFile.h"

#include <QDir>
#include <QFile>

#include <array>
#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

using Outcome = Job::Outcome;

namespace {

const QString englishRefusal = QStringLiteral("Could not read this file. Is it a valid video?");
const QString chineseRefusal = QStringLiteral("无法读取这个文件，它可能是无效的视频。");

// A film whose pipe `NAME.gate` stands is made out when the test opens the Gate; one that says
// "broken" isn't.
const QByteArray gatedProbe = R"(#!/bin/sh
for film in "$@"; do :; done
if [ -p "$film.gate" ]; then read -r go < "$film.gate"; fi
if grep -q broken "$film"; then exit 1; fi
echo '{"format": {"duration": "10", "size": "2150000"},
       "streams": [{"index": 0, "codec_type": "video", "codec_name": "h264", "width": 640, "height": 360}]}'
)";

class AppModelQueueFile : public AppFixture
{
protected:
    AppModelQueueFile()
    {
        m_tools.writeExecutable(u"ffprobe"_s, gatedProbe);
        begin();
    }

    // Jobs wait, so that the tests see what an import has made.
    void begin(AppLanguage language = AppLanguage::english)
    {
        start({.language = language});
        m_model->setQueuePaused(true);
    }

    QUrl queue() const { return m_folder.url(u"queue.json"_s); }
    QByteArray exported() const
    {
        m_model->exportQueue(queue());
        return contentOf(queue().toLocalFile());
    }

    QString makeFilm(const QString &name, const QByteArray &content = "a film") const
    {
        return m_films.write(name, content);
    }
    void writeQueue(const QList<ExportedJob> &entries) const
    {
        ASSERT_TRUE(QueueFile::write(queue(), entries));
    }

    void import() { m_model->importQueue(queue()); }
    void importAndWait()
    {
        import();
        waitUntil([this] { return m_model->probingCount() == 0; });
        turnTheLoop();
    }

    QStringList jobNames() const
    {
        QStringList names;
        for (const std::shared_ptr<Job> &job : m_model->jobs()) {
            names += job->input.url.fileName();
        }
        return names;
    }

    // The whole import is refused: nothing of it is in the model.
    void expectRefusal(const QString &sentence, const QByteArray &document)
    {
        import();
        turnTheLoop();
        EXPECT_EQ(m_model->lastError(), sentence) << document.toStdString();
        EXPECT_EQ(m_model->presetBanner(), std::nullopt) << document.toStdString();
        EXPECT_TRUE(m_model->jobs().isEmpty()) << document.toStdString();
        EXPECT_TRUE(m_model->files().isEmpty()) << document.toStdString();
        EXPECT_EQ(m_model->probingCount(), 0) << document.toStdString();
    }

    const TempFolder m_folder;
};

TargetSizeParams under(double megabytes)
{
    TargetSizeParams params;
    params.targetMB = megabytes;
    return params;
}

} // namespace

TEST_F(AppModelQueueFile, the_waiting_jobs_are_exported_in_their_order_and_no_others)
{
    const QList<Job::State> states{Job::Queued(),   Job::Analyzing(), Job::Running{0.5},
                                   Job::Finished(), Job::Failed(),    Job::Cancelled()};
    for (int i = 0; i < states.size(); ++i) {
        enqueue(film(u"%1.mp4"_s.arg(9 - i)))->setState(states.at(i));
    }
    enqueue(film(u"0.mp4"_s));

    const QList<ExportedJob> entries = QueueFile::decode(exported());

    EXPECT_EQ(entries, (QList<ExportedJob>{{m_films.path(u"9.mp4"_s), oneMegabyte()},
                                           {m_films.path(u"0.mp4"_s), oneMegabyte()}}));
    for (const std::shared_ptr<Job> &job : m_model->jobs()) {
        job->setState(Job::Cancelled());
    }
}

TEST_F(AppModelQueueFile, the_export_is_indented_JSON_with_sorted_keys_and_nothing_but_jobs)
{
    VideoFile unusual = film(u"any"_s);
    unusual.url = QUrl::fromLocalFile(u"/films/100% \"Café\" #1?.mov"_s);
    CompressParams compress;
    compress.resolution = CompressParams::ResTier::custom;
    compress.customHeight = 700;
    compress.advanced.crf = 20;
    compress.advanced.replacementAudioURL = QUrl::fromLocalFile(u"/music/a b.mp3"_s);
    m_model->setOutputDirectoryPath(u"/somewhere/else"_s);
    enqueue(unusual, compress);

    EXPECT_EQ(exported(), R"([
    {
        "path": "/films/100% \"Café\" #1?.mov",
        "spec": {
            "compress": {
                "_0": {
                    "advanced": {
                        "codec": "auto",
                        "crf": 20,
                        "extraArgs": "",
                        "hdrPassthrough": false,
                        "preserveAlpha": false,
                        "replacementAudioURL": "file:///music/a%20b.mp3"
                    },
                    "customHeight": 700,
                    "mode": "smart",
                    "muted": false,
                    "quality": "balanced",
                    "resolution": "custom"
                }
            }
        }
    }
]
)");
}

TEST_F(AppModelQueueFile, an_export_without_waiting_jobs_is_an_empty_list)
{
    EXPECT_EQ(exported(), "[]");
}

TEST_F(AppModelQueueFile, trims_are_left_out_of_the_export)
{
    enqueue(film(u"a.mp4"_s), TrimParams());
    enqueue(film(u"b.mp4"_s), TrimParams());
    EXPECT_EQ(exported(), "[]");

    enqueue(film(u"c.mp4"_s), GifParams());
    EXPECT_EQ(QueueFile::decode(exported()),
              (QList<ExportedJob>{{m_films.path(u"c.mp4"_s), GifParams()}}));
    EXPECT_EQ(m_model->lastError(), std::nullopt);
}

TEST_F(AppModelQueueFile, a_merge_is_exported_as_its_first_file)
{
    m_model->enqueueMerge(MergeParams(), {film(u"b.mp4"_s), film(u"a.mp4"_s), film(u"c.mp4"_s)});

    EXPECT_EQ(QueueFile::decode(exported()),
              (QList<ExportedJob>{{m_films.path(u"b.mp4"_s), MergeParams()}}));
}

TEST_F(AppModelQueueFile, an_export_takes_the_place_of_an_older_file)
{
    m_folder.write(u"queue.json"_s, QByteArray(100'000, 'x'));
    enqueue(film(u"a.mp4"_s), GifParams());

    EXPECT_EQ(QueueFile::decode(exported()).size(), 1);
    EXPECT_EQ(m_folder.names(), QStringList{u"queue.json"_s});
}

TEST_F(AppModelQueueFile, an_export_that_fails_says_nothing_and_leaves_everything)
{
    m_folder.write(u"file"_s, "in the way");
    QDir().mkpath(m_folder.path(u"folder"_s));
    enqueue(film(u"a.mp4"_s), GifParams());

    for (const QString &name : {u"missing/queue.json"_s, u"file/queue.json"_s, u"folder"_s}) {
        m_model->exportQueue(m_folder.url(name));
    }

    EXPECT_EQ(m_model->lastError(), std::nullopt);
    EXPECT_EQ(m_model->presetBanner(), std::nullopt);
    EXPECT_EQ(m_folder.names(), (QStringList{u"file"_s, u"folder"_s}));
    EXPECT_EQ(contentOf(m_folder.path(u"file"_s)), "in the way");
    EXPECT_EQ(m_model->jobs().size(), 1);
}

TEST_F(AppModelQueueFile, a_job_of_every_kind_comes_back_by_an_import)
{
    const QString path = makeFilm(u"a.mp4"_s);
    const QList<PresetSpec> specs{under(3),        ConvertParams(), CompressParams(),
                                  ExtractParams(), GifParams(),     EnhanceParams(),
                                  MergeParams(),   SplitParams(),   AdjustParams()};
    for (const PresetSpec &spec : specs) {
        begin();
        writeQueue({{path, spec}});

        importAndWait();

        ASSERT_EQ(m_model->jobs().size(), 1);
        const std::shared_ptr<Job> job = m_model->jobs().first();
        EXPECT_EQ(job->mode, AppModel::modeFrom(spec));
        EXPECT_EQ(job->outcome(), Outcome::queued);
        EXPECT_EQ(job->input.url, QUrl::fromLocalFile(path));
        EXPECT_EQ(job->input.durationSeconds, 10) << "each file is probed afresh";
        EXPECT_TRUE(job->extraInputs.isEmpty());
        EXPECT_EQ(m_model->files().size(), 1);
        EXPECT_EQ(m_model->lastError(), std::nullopt);
    }
}

TEST_F(AppModelQueueFile, an_export_reads_as_an_import_elsewhere)
{
    const QString path = makeFilm(u"Café #1 100%.mp4"_s);
    VideoFile unusual = film(u"any"_s);
    unusual.url = QUrl::fromLocalFile(path);
    enqueue(unusual, GifParams());
    m_model->exportQueue(queue());
    begin();

    importAndWait();

    EXPECT_EQ(jobNames(), QStringList{u"Café #1 100%.mp4"_s});
}

TEST_F(AppModelQueueFile, an_empty_import_changes_the_banner_and_nothing_else)
{
    struct Case {
        AppLanguage language;
        QString banner;
    };
    for (const Case &each : {Case{AppLanguage::english, u"Imported 0 jobs"_s},
                             Case{AppLanguage::simplifiedChinese, u"已导入 0 个任务"_s}}) {
        begin(each.language);
        writeQueue({});

        importAndWait();

        EXPECT_EQ(m_model->presetBanner(), each.banner);
        EXPECT_EQ(m_model->lastError(), std::nullopt);
        EXPECT_EQ(m_model->appliedPreset(), std::nullopt);
        EXPECT_TRUE(m_model->jobs().isEmpty());
        EXPECT_TRUE(m_model->files().isEmpty());
        EXPECT_FALSE(m_model->showQueue());
    }
}

TEST_F(AppModelQueueFile, the_banner_counts_the_entries_before_their_probes_end)
{
    const VideoFile slow = film(u"slow.mp4"_s);
    writeQueue({{makeFilm(u"slow.mp4"_s), GifParams()},
                {m_films.path(u"missing.mp4"_s), GifParams()},
                {makeFilm(u"notes.txt"_s), GifParams()}});
    const Gate gate(slow);

    import();

    EXPECT_EQ(m_model->presetBanner(), u"Imported 3 jobs"_s);
    EXPECT_EQ(m_model->probingCount(), 1);
    EXPECT_TRUE(m_model->jobs().isEmpty());
    gate.open();
    waitUntil([this] { return m_model->jobs().size() == 1; });
}

TEST_F(AppModelQueueFile, the_banner_is_in_the_language_of_the_program)
{
    begin(AppLanguage::simplifiedChinese);
    writeQueue({{makeFilm(u"a.mp4"_s), GifParams()}, {makeFilm(u"b.mp4"_s), GifParams()}});

    importAndWait();

    EXPECT_EQ(m_model->presetBanner(), u"已导入 2 个任务"_s);
}

TEST_F(AppModelQueueFile, a_file_that_does_not_read_as_a_whole_is_refused_in_one_sentence)
{
    const QByteArray good = "{\"path\": \"" + makeFilm(u"a.mp4"_s).toUtf8() +
                            R"(", "spec": {"merge": {"_0": {"container": "mp4",
        "forceReencode": false, "advanced": {"codec": "auto", "hdrPassthrough": false,
        "preserveAlpha": false, "extraArgs": ""}}}}})";
    m_folder.write(u"queue.json"_s, '[' + good + ']');
    importAndWait();
    ASSERT_EQ(m_model->jobs().size(), 1) << "all else is wrong by what the test changes in it";

    const QByteArrayList wrong{
        "",
        "{}",
        "5",
        "[",
        good,
        '[' + good + ",5]",
        '[' + good + ",{}]",
        '[' + good + ',' + QByteArray(good).replace("merge", "trim") + ']',
        '[' + good + ',' + QByteArray(good).replace("merge", "play") + ']',
        '[' + good + ',' + QByteArray(good).replace("\"_0\"", "\"_1\"") + ']',
        '[' + good + ',' + QByteArray(good).replace("mp4\",", "ogv\",") + ']',
        '[' + good.chopped(1) + R"(, "path": "/other.mp4"}])",
        '[' + QByteArray(good).replace("{\"codec", "{\"cod\\u0065c\": \"auto\", \"codec") + ']',
        '[' + good + "]\0"_ba};
    for (const QByteArray &document : wrong) {
        m_folder.write(u"queue.json"_s, document);
        begin(AppLanguage::english);
        expectRefusal(englishRefusal, document);
        begin(AppLanguage::simplifiedChinese);
        expectRefusal(chineseRefusal, document);
    }
}

TEST_F(AppModelQueueFile, a_file_that_can_not_be_read_is_refused)
{
    expectRefusal(englishRefusal, "missing");

    begin();
    QDir().mkpath(queue().toLocalFile());
    expectRefusal(englishRefusal, "a folder");

    begin();
    QDir().rmdir(queue().toLocalFile());
    ASSERT_EQ(::mkfifo(queue().toLocalFile().toUtf8().constData(), S_IRUSR | S_IWUSR), 0);
    expectRefusal(englishRefusal, "a pipe");
}

TEST_F(AppModelQueueFile, a_refusal_leaves_the_banner_and_the_jobs_of_before)
{
    writeQueue({{makeFilm(u"a.mp4"_s), GifParams()}});
    importAndWait();
    m_folder.write(u"queue.json"_s, "broken");

    importAndWait();

    EXPECT_EQ(m_model->presetBanner(), u"Imported 1 jobs"_s);
    EXPECT_EQ(jobNames(), QStringList{u"a.mp4"_s});
    EXPECT_EQ(m_model->lastError(), englishRefusal);
}

TEST_F(AppModelQueueFile, an_import_done_twice_gives_each_job_twice)
{
    writeQueue({{makeFilm(u"a.mp4"_s), GifParams()}, {makeFilm(u"b.mp4"_s), under(2)}});

    importAndWait();
    importAndWait();

    QStringList names = jobNames();
    names.sort();
    EXPECT_EQ(names, (QStringList{u"a.mp4"_s, u"a.mp4"_s, u"b.mp4"_s, u"b.mp4"_s}));
    EXPECT_EQ(m_model->files().size(), 4);
}

TEST_F(AppModelQueueFile, one_film_may_stand_in_it_with_several_specs)
{
    const QString path = makeFilm(u"a.mp4"_s);
    writeQueue({{path, GifParams()}, {path, under(2)}, {path, GifParams()}});

    importAndWait();

    qsizetype gifs = 0;
    for (const std::shared_ptr<Job> &job : m_model->jobs()) {
        gifs += static_cast<qsizetype>(std::holds_alternative<GifParams>(job->mode));
    }
    EXPECT_EQ(m_model->jobs().size(), 3);
    EXPECT_EQ(gifs, 2);
}

TEST_F(AppModelQueueFile, jobs_come_in_the_order_in_which_the_probes_end)
{
    const VideoFile first = film(u"first.mp4"_s);
    const VideoFile second = film(u"second.mp4"_s);
    writeQueue({{makeFilm(u"first.mp4"_s), GifParams()}, {makeFilm(u"second.mp4"_s), under(2)}});
    const Gate firstGate(first);
    const Gate secondGate(second);

    import();
    secondGate.open();
    waitUntil([this] { return m_model->jobs().size() == 1; });
    firstGate.open();
    waitUntil([this] { return m_model->jobs().size() == 2; });

    EXPECT_EQ(jobNames(), (QStringList{u"second.mp4"_s, u"first.mp4"_s}));
    EXPECT_EQ(m_model->jobs().at(0)->mode, JobMode(under(2)));
    EXPECT_EQ(m_model->jobs().at(1)->mode, JobMode(GifParams()));
}

TEST_F(AppModelQueueFile, missing_files_and_other_names_vanish_without_a_word)
{
    writeQueue({{m_films.path(u"missing.mp4"_s), GifParams()},
                {makeFilm(u"notes.txt"_s), GifParams()},
                {u""_s, GifParams()},
                {makeFilm(u"a.mp4"_s), GifParams()}});

    importAndWait();

    EXPECT_EQ(jobNames(), QStringList{u"a.mp4"_s});
    EXPECT_EQ(m_model->files().size(), 1);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
    EXPECT_EQ(m_model->presetBanner(), u"Imported 4 jobs"_s);
}

TEST_F(AppModelQueueFile, a_film_that_can_not_be_made_out_is_told_and_the_others_go_on)
{
    writeQueue(
        {{makeFilm(u"broken.mp4"_s, "broken"), GifParams()}, {makeFilm(u"a.mp4"_s), GifParams()}});

    importAndWait();

    EXPECT_EQ(jobNames(), QStringList{u"a.mp4"_s});
    EXPECT_EQ(m_model->lastError(), englishRefusal);
}

TEST_F(AppModelQueueFile, a_folder_in_it_stands_for_the_films_in_it)
{
    makeFilm(u"trip/a.mp4"_s);
    makeFilm(u"trip/b.mp4"_s);
    writeQueue({{m_films.path(u"trip"_s), GifParams()}});

    importAndWait();

    QStringList names = jobNames();
    names.sort();
    EXPECT_EQ(names, (QStringList{u"a.mp4"_s, u"b.mp4"_s}));
    EXPECT_EQ(m_model->presetBanner(), u"Imported 1 jobs"_s);
}

TEST_F(AppModelQueueFile, without_tools_an_import_makes_no_job)
{
    removeTools();
    begin();
    if (m_model->toolset()) {
        GTEST_SKIP() << "this machine has tools that are found whatever PATH says";
    }
    writeQueue({{makeFilm(u"a.mp4"_s), GifParams()}});

    importAndWait();

    EXPECT_TRUE(m_model->jobs().isEmpty());
    EXPECT_EQ(m_model->lastError(), englishRefusal);
    EXPECT_EQ(m_model->presetBanner(), u"Imported 1 jobs"_s);
}

TEST_F(AppModelQueueFile, a_job_takes_the_output_folder_of_the_moment_its_probe_ends)
{
    const VideoFile slow = film(u"slow.mp4"_s);
    writeQueue({{makeFilm(u"slow.mp4"_s), GifParams()}});
    const Gate gate(slow);
    m_model->setOutputDirectoryPath(u"/before"_s);

    import();
    m_model->setOutputDirectoryPath(u"/after"_s);
    gate.open();
    waitUntil([this] { return m_model->jobs().size() == 1; });

    EXPECT_EQ(m_model->jobs().first()->outputDirectory, QUrl::fromLocalFile(u"/after"_s));
}

TEST_F(AppModelQueueFile, imported_jobs_run_like_any_others)
{
    writeQueue({{makeFilm(u"a.mp4"_s), oneMegabyte()}});
    importAndWait();

    m_model->setQueuePaused(false);
    waitForAllToEnd();

    EXPECT_EQ(outcomesOf(m_model->jobs()), QList{Outcome::finished});
}
