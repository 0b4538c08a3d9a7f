// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "support/Clips.h"
#include "support/EventLoop.h"
#include "support/Processes.h"

#include <QDir>
#include <QFileInfo>

#include <gmock/gmock.h>

#include <string>

using namespace Qt::StringLiterals;
using testing::IsEmpty;

using Outcome = Job::Outcome;

namespace {

// The stills and the sample wait for the film's gate, if there is one; a still then tells which
// call made it.
const QByteArray stillsBehindAGate = "await_gate\n"
                                     "printf 'still %s' \"$run\" > \"$out\"";

class AppModelPreviewTest : public AppFixture
{
protected:
    AppModelPreviewTest() { installFFmpeg(stillsBehindAGate); }

    /// Starts with a film of the fake tools that is selected.
    void startWithFilm(AppLanguage language = AppLanguage::english)
    {
        m_films.write(u"film.mp4"_s, "film");
        startWith(u"film.mp4"_s, language);
    }

    void startWith(const QString &name, AppLanguage language = AppLanguage::english)
    {
        start({.concurrency = 1, .language = language});
        takeIn(m_films.url(name));
        ASSERT_TRUE(m_model->selectedFile());
    }

    void request(const PreviewEngine::Request &wanted = CompressParams(), double position = 0)
    {
        m_model->generatePreview(wanted, position);
    }

    void waitForEnd()
    {
        ASSERT_TRUE(EventLoop::waitFor([this] { return !m_model->previewRunning(); }, m_model.get(),
                                       &AppModel::previewRunningChanged));
    }

    /// The calls of the fake ffmpeg, the one for its encoders among them.
    qsizetype calls() const
    {
        return QDir(m_tools.path(u"notes-ffmpeg"_s)).entryList(QDir::Files).size();
    }

    QStringList previewFolders() const { return m_temporary.names().filter(u"mx-preview-"_s); }

    /// The contents of the pictures, as the fake ffmpeg makes them.
    QStringList stills() const
    {
        const auto images = m_model->previewImages();
        return images ? QStringList{QString::fromUtf8(images->before),
                                    QString::fromUtf8(images->after)}
                      : QStringList();
    }

    VideoFile asFile(const QByteArray &png) const
    {
        EXPECT_TRUE(png.startsWith("\x89PNG\r\n\x1a\n"));
        return Clips::probe(m_films.write(u"still.png"_s, png));
    }

    void expectStills(const PictureSize &before, const PictureSize &after)
    {
        EXPECT_EQ(m_model->lastError(), std::nullopt);
        const auto images = m_model->previewImages();
        ASSERT_TRUE(images);
        EXPECT_EQ(sizeOf(asFile(images->before)), before);
        EXPECT_EQ(sizeOf(asFile(images->after)), after);
        EXPECT_NE(images->before, images->after);
        EXPECT_THAT(m_temporary.names(), IsEmpty());
    }

    static PictureSize sizeOf(const VideoFile &file)
    {
        return {file.width.value_or(0), file.height.value_or(0)};
    }
};

/// Counts the signals that a property sends from now on.
class SignalCount
{
public:
    SignalCount(AppModel &model, void (AppModel::*changed)())
    {
        QObject::connect(&model, changed, &model, [count = m_count] { ++*count; });
    }

    int count() const { return *m_count; }

private:
    const std::shared_ptr<int> m_count = std::make_shared<int>(0);
};

struct Wording {
    AppLanguage language;
    QString frame;
    QString unreadable;
};

const Wording english{AppLanguage::english, u"Preview failed: %1"_s,
                      u"Could not read this file. Is it a valid video?"_s};
const Wording chinese{AppLanguage::simplifiedChinese, u"预览失败：%1"_s,
                      u"无法读取这个文件，它可能是无效的视频。"_s};

void PrintTo(const Wording &wording, std::ostream *out)
{
    *out << wording.frame.toStdString();
}

class AppModelPreviewWordsTest : public AppModelPreviewTest,
                                 public testing::WithParamInterface<Wording>
{
};

struct Sample {
    std::string name;
    QString size;
    double seconds;
    double position;
    PreviewEngine::Request request;
    PictureSize after;
};

void PrintTo(const Sample &sample, std::ostream *out)
{
    *out << sample.name;
}

class AppModelPreviewMediaTest : public AppModelPreviewTest,
                                 public testing::WithParamInterface<Sample>
{
};

TargetSizeParams exactlyUnder(double megabytes)
{
    TargetSizeParams params;
    params.targetMB = megabytes;
    params.exactTwoPass = true;
    return params;
}

TargetSizeParams square()
{
    TargetSizeParams params;
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, {}, {}};
    return params;
}

CompressParams toHeight(qint64 height)
{
    return {.mode = CompressParams::Mode::quality,
            .resolution = CompressParams::ResTier::custom,
            .customHeight = height,
            .advanced = {}};
}

CompressParams inHEVC()
{
    CompressParams params;
    params.advanced.codec = CodecChoice::hevcVideoToolbox;
    return params;
}

} // namespace

TEST_P(AppModelPreviewMediaTest, shows_two_pictures_and_leaves_nothing)
{
    useRealTools();
    const Sample &sample = GetParam();
    Clips::make(m_films.path(u"film.mp4"_s), {.size = sample.size, .seconds = sample.seconds});
    startWith(u"film.mp4"_s);

    request(sample.request, sample.position);
    waitForEnd();

    expectStills(sizeOf(*m_model->selectedFile()), sample.after);
}

INSTANTIATE_TEST_SUITE_P(
    , AppModelPreviewMediaTest,
    testing::Values(
        Sample{"target_size", u"320x180"_s, 3, 0, TargetSizeParams(), {320, 180}},
        Sample{"target_size_exactly", u"320x180"_s, 3, 0.5, exactlyUnder(0.2), {320, 180}},
        Sample{"target_size_cropped", u"320x180"_s, 2, 0, square(), {180, 180}},
        Sample{"compress", u"320x180"_s, 3, 0.5, CompressParams(), {320, 180}},
        Sample{"compress_smaller", u"320x180"_s, 2, 0, toHeight(90), {160, 90}},
        Sample{"compress_in_HEVC", u"320x180"_s, 2, 0, inHEVC(), {320, 180}},
        Sample{"enhance", u"320x180"_s, 3, 0, EnhanceParams(), {320, 180}},
        Sample{"behind_the_end", u"320x180"_s, 3, 99, CompressParams(), {320, 180}},
        Sample{"before_the_start", u"320x180"_s, 3, -5, CompressParams(), {320, 180}},
        Sample{"of_a_second_and_a_half", u"320x180"_s, 1.5, 1, CompressParams(), {320, 180}}),
    [](const auto &row) { return row.param.name; });

TEST_F(AppModelPreviewTest, a_preview_runs_off_the_main_thread_and_says_so)
{
    startWithFilm();
    const Gate gate(m_model->files().first());
    const SignalCount running(*m_model, &AppModel::previewRunningChanged);
    const SignalCount images(*m_model, &AppModel::previewImagesChanged);
    EXPECT_FALSE(m_model->previewRunning());

    request();

    EXPECT_TRUE(m_model->previewRunning());
    EXPECT_EQ(m_model->previewImages(), std::nullopt);
    EXPECT_EQ(running.count(), 1);
    EXPECT_EQ(images.count(), 0);
    gate.open();
    gate.open();
    waitForEnd();
    EXPECT_EQ(stills(), (QStringList{u"still 1"_s, u"still 3"_s}));
    EXPECT_EQ(running.count(), 2);
    EXPECT_EQ(images.count(), 1);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
    EXPECT_THAT(previewFolders(), IsEmpty());
}

TEST_F(AppModelPreviewTest, a_request_while_one_runs_changes_nothing)
{
    startWithFilm();
    const Gate gate(m_model->files().first());
    const SignalCount running(*m_model, &AppModel::previewRunningChanged);
    request();

    request(EnhanceParams(), 3);
    request(TargetSizeParams(), 5);

    EXPECT_EQ(running.count(), 1);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
    gate.open();
    gate.open();
    waitForEnd();
    turnTheLoop();
    EXPECT_EQ(running.count(), 2);
    EXPECT_EQ(calls(), 1 + 3);
    EXPECT_EQ(stills(), (QStringList{u"still 1"_s, u"still 3"_s}));
}

TEST_F(AppModelPreviewTest, a_new_request_takes_the_old_pictures_away_at_once)
{
    startWithFilm();
    request();
    waitForEnd();
    ASSERT_TRUE(m_model->previewImages());
    const SignalCount images(*m_model, &AppModel::previewImagesChanged);

    request();

    EXPECT_EQ(m_model->previewImages(), std::nullopt);
    EXPECT_EQ(images.count(), 1);
    waitForEnd();
    EXPECT_EQ(stills(), (QStringList{u"still 4"_s, u"still 6"_s}));
}

TEST_F(AppModelPreviewTest, a_preview_takes_no_worker_from_the_queue)
{
    startWithFilm();
    const VideoFile busy = film(u"busy.mp4"_s);
    const Gate gate(busy);
    const auto job = enqueue(busy, CompressParams());
    waitFor(job, Outcome::running);

    request();
    waitForEnd();

    EXPECT_TRUE(m_model->previewImages());
    EXPECT_EQ(job->outcome(), Outcome::running);
    EXPECT_EQ(m_model->jobs().size(), 1);
    gate.open();
    waitFor(job, Outcome::finished);
}

TEST_F(AppModelPreviewTest, clearing_the_queue_and_cancelling_jobs_do_not_stop_a_preview)
{
    startWithFilm();
    const Gate gate(m_model->files().first());
    const auto job = enqueue(film(u"other.mp4"_s), CompressParams());
    request();

    m_model->cancelJob(job->id);
    waitForAllToEnd();
    m_model->clearFinished();
    gate.open();
    gate.open();
    waitForEnd();

    EXPECT_TRUE(m_model->previewImages());
}

TEST_F(AppModelPreviewTest, the_film_that_was_selected_at_the_request_is_shown)
{
    m_films.write(u"other.mp4"_s, "film");
    startWithFilm();
    takeIn(m_films.url(u"other.mp4"_s));
    const Gate gate(m_model->files().first());
    request();

    m_model->setSelectedFileID(m_model->files().last().id);
    m_model->removeFile(m_model->files().first().id);
    gate.open();
    gate.open();
    waitForEnd();

    EXPECT_TRUE(m_model->previewImages());
}

TEST_F(AppModelPreviewTest, without_a_selected_file_nothing_happens)
{
    startWithFilm();
    m_model->setSelectedFileID(std::nullopt);
    const SignalCount running(*m_model, &AppModel::previewRunningChanged);

    request();

    EXPECT_FALSE(m_model->previewRunning());
    EXPECT_EQ(running.count(), 0);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
    turnTheLoop();
    EXPECT_EQ(calls(), 1);
}

TEST_F(AppModelPreviewTest, without_the_tools_nothing_happens)
{
    if (QFileInfo(u"/usr/local/bin/ffmpeg"_s).isExecutable()) {
        GTEST_SKIP() << "/usr/local/bin has tools, which are found whatever PATH says";
    }
    removeTools();
    start();
    m_films.write(u"film.mp4"_s, "film");
    takeIn(m_films.url(u"film.mp4"_s));
    m_model->setSelectedFileID(QUuid::createUuid());
    m_model->setLastError(std::nullopt);

    request();

    EXPECT_FALSE(m_model->previewRunning());
    EXPECT_EQ(m_model->lastError(), std::nullopt);
}

TEST_F(AppModelPreviewTest, after_a_failure_the_next_request_is_served)
{
    installFFmpeg("case $in in *film.mp4) [ -e \"$in.works\" ] || exit 1;; esac\n" +
                  stillsBehindAGate);
    startWithFilm();
    request();
    waitForEnd();
    ASSERT_EQ(m_model->lastError(), u"Preview failed: "_s);
    ASSERT_EQ(m_model->previewImages(), std::nullopt);
    m_films.write(u"film.mp4.works"_s, "");

    request();
    waitForEnd();

    EXPECT_TRUE(m_model->previewImages());
}

TEST_F(AppModelPreviewTest, a_failure_leaves_its_folder_to_look_at)
{
    installFFmpeg("case $out in *slice.mp4) exit 1;; esac\nprintf still > \"$out\"");
    startWithFilm();

    request();
    waitForEnd();

    ASSERT_EQ(previewFolders().size(), 1);
    EXPECT_EQ(QDir(m_temporary.path(previewFolders().first())).entryList(QDir::Files),
              QStringList{u"before.png"_s});
}

TEST_F(AppModelPreviewTest, the_end_of_the_application_object_ends_the_child)
{
    startWithFilm();
    const Gate gate(m_model->files().first());
    const QStringList child{m_tools.path(u"ffmpeg"_s), m_films.path(u"film.mp4"_s)};
    request();
    ASSERT_TRUE(Processes::eventually([&] { return Processes::withWords(child).size() == 1; }));

    m_model.reset();

    EXPECT_THAT(Processes::withWords(child), IsEmpty());
}

TEST_P(AppModelPreviewWordsTest, a_film_without_a_picture_can_not_be_shown)
{
    useRealTools();
    Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=3"_s, m_films.path(u"a.m4a"_s)});
    startWith(u"a.m4a"_s, GetParam().language);
    const SignalCount running(*m_model, &AppModel::previewRunningChanged);

    request();

    EXPECT_FALSE(m_model->previewRunning());
    EXPECT_EQ(running.count(), 2);
    EXPECT_EQ(m_model->lastError(), GetParam().frame.arg(GetParam().unreadable));
    EXPECT_THAT(m_temporary.names(), IsEmpty());
}

TEST_P(AppModelPreviewWordsTest, a_film_that_is_too_short_can_not_be_shown)
{
    useRealTools();
    Clips::make(m_films.path(u"short.mp4"_s), {.seconds = 0.28, .hasAudio = false});
    startWith(u"short.mp4"_s, GetParam().language);

    request();

    EXPECT_FALSE(m_model->previewRunning());
    EXPECT_EQ(m_model->previewImages(), std::nullopt);
    EXPECT_EQ(m_model->lastError(), GetParam().frame.arg(GetParam().unreadable));
}

TEST_P(AppModelPreviewWordsTest, what_ffmpeg_says_is_passed_on)
{
    installFFmpeg("echo 'the lens is dirty' >&2; exit 1");
    startWithFilm(GetParam().language);

    request();
    waitForEnd();

    EXPECT_EQ(m_model->lastError(), GetParam().frame.arg(u"the lens is dirty\n"_s));
    EXPECT_EQ(m_model->previewImages(), std::nullopt);
}

TEST_P(AppModelPreviewWordsTest, the_last_400_characters_of_what_ffmpeg_says_are_shown)
{
    installFFmpeg("head -c 1000 /dev/zero | tr '\\0' x >&2; exit 1");
    startWithFilm(GetParam().language);

    request();
    waitForEnd();

    EXPECT_EQ(m_model->lastError(), GetParam().frame.arg(QString(400, u'x')));
}

TEST_P(AppModelPreviewWordsTest, a_still_that_ffmpeg_did_not_write_is_told_with_its_place)
{
    installFFmpeg("case $out in *after.png) exit 0;; esac\nprintf still > \"$out\"");
    startWithFilm(GetParam().language);

    request();
    waitForEnd();

    const QString place = m_temporary.path(previewFolders().value(0)) + u"/after.png"_s;
    EXPECT_EQ(m_model->lastError(), GetParam().frame.arg(place + u": No such file or directory"_s));
    EXPECT_EQ(m_model->previewImages(), std::nullopt);
}

TEST_P(AppModelPreviewWordsTest, a_film_that_vanished_is_told_in_ffmpegs_words)
{
    useRealTools();
    Clips::make(m_films.path(u"film.mp4"_s), {.hasAudio = false});
    startWith(u"film.mp4"_s, GetParam().language);
    QFile::remove(m_films.path(u"film.mp4"_s));

    request();
    waitForEnd();

    const QString text = m_model->lastError().value_or(QString());
    EXPECT_TRUE(text.startsWith(GetParam().frame.arg(QString()))) << text.toStdString();
    EXPECT_TRUE(text.contains("No such file or directory"_L1)) << text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(, AppModelPreviewWordsTest, testing::Values(english, chinese),
                         [](const auto &row) {
                             return row.param.language == AppLanguage::english ? "english"
                                                                               : "chinese";
                         });
