// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"

#include "Engine/FFmpegLocator.h"
#include "Engine/ProbeService.h"
#include "Engine/Text.h"
#include "Platform/SilentServices.h"
#include "support/Clips.h"
#include "support/EventLoop.h"
#include "support/Processes.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFutureWatcher>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString englishFailure = QStringLiteral("Could not read this file. Is it a valid video?");
const QString chineseFailure = QStringLiteral("无法读取这个文件，它可能是无效的视频。");

// What "films" answer: each is a script that the fake ffprobe runs.
const QByteArray readable = R"(echo '{"format": {"duration": "1.5", "size": "77"}}')";
const QByteArray unreadable = "echo 'not a film' >&2; exit 1";

/// Where scripts wait until the test lets them through.
class Gate
{
public:
    explicit Gate(const QString &path) : m_path(path.toLocal8Bit())
    {
        EXPECT_EQ(::mkfifo(m_path.constData(), 0600), 0);
        m_descriptor = ::open(m_path.constData(), O_RDWR | O_CLOEXEC);
        EXPECT_GE(m_descriptor, 0);
    }
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;
    ~Gate() { ::close(m_descriptor); }

    /// The command with which a script waits.
    QByteArray wait() const { return "read go < '" + m_path + "'\n"; }

    void letThrough(int scripts) const
    {
        const QByteArray words(scripts, '\n');
        EXPECT_EQ(::write(m_descriptor, words.constData(), static_cast<std::size_t>(scripts)),
                  scripts);
    }

private:
    QByteArray m_path;
    int m_descriptor = -1;
};

bool machineHasToolsOfItsOwn()
{
    return QFile::exists(u"/usr/local/bin/ffmpeg"_s) ||
           QFile::exists(u"/opt/homebrew/bin/ffmpeg"_s);
}

/// A model over an empty store, in folders of its own.
class IntakeFixture : public ::testing::Test
{
protected:
    explicit IntakeFixture(const QByteArray &path) : m_path("PATH", path) {}

    void SetUp() override
    {
        if (machineHasToolsOfItsOwn()) {
            GTEST_SKIP() << "this machine has tools that are found whatever PATH says";
        }
        m_model = std::make_unique<AppModel>(Settings(m_temporary.path(u"Morvix.conf"_s)),
                                             makeSilentServices());
    }

    QUrl film(const QString &name, const QByteArray &answer = readable) const
    {
        return QUrl::fromLocalFile(m_films.write(name, answer + '\n'));
    }

    QUrl folder(const QString &name) const { return m_films.url(name + u'/'); }

    bool waitForProbes() const
    {
        return EventLoop::waitFor([this] { return m_model->probingCount() == 0; }, m_model.get(),
                                  &AppModel::probingCountChanged);
    }

    bool waitForFiles(qsizetype count) const
    {
        return EventLoop::waitFor([&] { return m_model->files().size() == count; }, m_model.get(),
                                  &AppModel::filesChanged);
    }

    /// Adds and waits for all answers.
    void add(const QList<QUrl> &urls, const AppModel::OnProbed &onProbed = {}) const
    {
        m_model->addURLs(urls, onProbed);
        ASSERT_TRUE(waitForProbes());
    }

    QStringList fileNames() const
    {
        QStringList names;
        for (const VideoFile &file : m_model->files()) {
            names += file.url.fileName();
        }
        return names;
    }

    /// How often the signal comes from now on.
    std::shared_ptr<int> counted(void (AppModel::*signal)()) const
    {
        const auto count = std::make_shared<int>(0);
        QObject::connect(m_model.get(), signal, m_model.get(), [count] { ++*count; });
        return count;
    }

    QList<double> answerOf(const QFuture<QList<double>> &future) const
    {
        QFutureWatcher<QList<double>> watcher;
        watcher.setFuture(future);
        EXPECT_TRUE(EventLoop::waitFor([&] { return future.isFinished(); }, &watcher,
                                       &QFutureWatcher<QList<double>>::finished));
        return future.resultCount() == 1 ? future.result() : QList<double>{-1};
    }

    const TempFolder m_films;
    const TempFolder m_temporary;
    const ScopedEnvironment m_path;
    const ScopedEnvironment m_temporaryDirectory{"TMPDIR", m_temporary.path().toUtf8()};
    std::unique_ptr<AppModel> m_model;
};

struct FakeTools {
    FakeTools()
    {
        m_tools.writeExecutable(u"ffmpeg"_s, "#!/bin/sh\necho ' V....D libx264 x'\n");
        m_tools.writeExecutable(u"ffprobe"_s, "#!/bin/sh\n"
                                              "for film in \"$@\"; do :; done\n"
                                              "exec /bin/sh \"$film\" \"$@\"\n");
    }

    const TempFolder m_tools;
};

class AppModelIntakeTest : private FakeTools, public IntakeFixture
{
protected:
    AppModelIntakeTest() : IntakeFixture(m_tools.path().toUtf8() + ':' + qgetenv("PATH")) {}

    QUrl ffprobe() const { return m_tools.url(u"ffprobe"_s); }

    /// A film that notes each question for its keyframes and then answers so.
    QUrl filmWithKeyframes(const QString &name, const QByteArray &answer) const
    {
        return film(name, "case \"$*\" in *skip_frame*) echo asked >> \"$0.asked\"\n" + answer +
                              "\n;; *) " + readable + "\n;; esac");
    }

    qsizetype keyframeQuestions(const QString &name) const
    {
        return contentOf(m_films.path(name + u".asked"_s)).count('\n');
    }

    VideoFile added(const QUrl &url) const
    {
        add({url});
        return m_model->files().isEmpty() ? VideoFile() : m_model->files().last();
    }

    QList<qint64> children() const { return Processes::withWords({m_films.path()}); }
};

class AppModelWithoutToolsTest : public IntakeFixture
{
protected:
    AppModelWithoutToolsTest() : IntakeFixture("/nowhere") {}
};

} // namespace

TEST_F(AppModelIntakeTest, the_tools_are_found_at_the_start_and_shared)
{
    ASSERT_TRUE(m_model->toolset());
    EXPECT_EQ(m_model->toolset()->ffprobeURL, ffprobe());
    EXPECT_EQ(m_model->toolset()->encoders, QSet<QString>{u"libx264"_s});
    EXPECT_TRUE(FFmpegLocator::shared().searched);
    EXPECT_EQ(FFmpegLocator::shared().toolset, m_model->toolset());
    EXPECT_EQ(m_model->lastError(), std::nullopt);
}

TEST_F(AppModelIntakeTest, a_readable_file_joins_and_is_selected)
{
    const QUrl url = film(u"a.mp4"_s);

    add({url});

    ASSERT_EQ(fileNames(), QStringList{u"a.mp4"_s});
    const VideoFile file = m_model->files().first();
    EXPECT_EQ(file.url, url);
    EXPECT_EQ(file.durationSeconds, 1.5);
    EXPECT_EQ(file.fileSizeBytes, 77);
    EXPECT_EQ(m_model->selectedFileID(), file.id);
    EXPECT_EQ(m_model->selectedFile(), file);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
}

TEST_F(AppModelIntakeTest, probes_are_counted_from_the_call_until_they_are_back)
{
    m_model->addURLs({film(u"a.mp4"_s), film(u"b.mp4"_s, unreadable), film(u"c.mp4"_s)});
    EXPECT_EQ(m_model->probingCount(), 3);
    EXPECT_TRUE(m_model->files().isEmpty());

    QList<int> counts;
    QObject::connect(m_model.get(), &AppModel::probingCountChanged, m_model.get(),
                     [&] { counts += m_model->probingCount(); });
    ASSERT_TRUE(waitForProbes());

    EXPECT_EQ(counts, (QList<int>{2, 1, 0}));
}

TEST_F(AppModelIntakeTest, the_count_adds_up_over_several_calls)
{
    m_model->addURLs({film(u"a.mp4"_s)});
    m_model->addURLs({film(u"b.mp4"_s), film(u"c.mp4"_s)});

    EXPECT_EQ(m_model->probingCount(), 3);
    EXPECT_TRUE(waitForProbes());
    EXPECT_EQ(m_model->files().size(), 3);
}

TEST_F(AppModelIntakeTest, files_stand_in_the_order_in_which_their_probes_end)
{
    const Gate gate(m_temporary.path(u"gate"_s));
    m_model->addURLs({film(u"a.mp4"_s, gate.wait() + readable), film(u"b.mp4"_s)});
    ASSERT_TRUE(waitForFiles(1));
    EXPECT_EQ(m_model->probingCount(), 1);

    gate.letThrough(1);
    ASSERT_TRUE(waitForFiles(2));

    EXPECT_EQ(fileNames(), (QStringList{u"b.mp4"_s, u"a.mp4"_s}));
    EXPECT_EQ(m_model->selectedFile()->url.fileName(), u"b.mp4"_s);
}

// As on a disk or a network that hangs.
TEST_F(AppModelIntakeTest, files_that_hang_keep_no_other_file_out)
{
    const Gate gate(m_temporary.path(u"gate"_s));
    QList<QUrl> hanging;
    for (int i = 0; i < 40; ++i) {
        hanging += film(u"%1.mp4"_s.arg(i), gate.wait() + readable);
    }
    m_model->addURLs(hanging);

    m_model->addURLs({film(u"quick.mp4"_s)});

    EXPECT_TRUE(waitForFiles(1));
    EXPECT_EQ(fileNames(), QStringList{u"quick.mp4"_s});
    gate.letThrough(40);
    EXPECT_TRUE(waitForFiles(41));
}

TEST_F(AppModelIntakeTest, a_file_that_is_added_twice_is_there_twice)
{
    const QUrl url = film(u"a.mp4"_s);

    add({url, url});
    ASSERT_EQ(m_model->files().size(), 1) << "one call takes each path once";
    add({url});

    ASSERT_EQ(m_model->files().size(), 2);
    EXPECT_EQ(m_model->files().at(0).url, m_model->files().at(1).url);
    EXPECT_NE(m_model->files().at(0).id, m_model->files().at(1).id);
    EXPECT_EQ(m_model->selectedFileID(), m_model->files().at(0).id);
}

TEST_F(AppModelIntakeTest, a_file_may_come_in_twice_at_the_same_time)
{
    const QUrl url = film(u"a.mp4"_s);

    m_model->addURLs({url});
    m_model->addURLs({url});
    ASSERT_TRUE(waitForProbes());

    EXPECT_EQ(m_model->files().size(), 2);
}

TEST_F(AppModelIntakeTest, a_folder_is_taken_in_whole)
{
    film(u"films/a.mp4"_s);
    film(u"films/deep/b.MKV"_s);
    film(u"films/notes.txt"_s);
    film(u"films/.hidden.mp4"_s);

    add({folder(u"films"_s)});

    QStringList names = fileNames();
    names.sort();
    EXPECT_EQ(names, (QStringList{u"a.mp4"_s, u"b.MKV"_s}));
}

TEST_F(AppModelIntakeTest, an_extension_in_capitals_passes)
{
    add({film(u"a.MP4"_s)});

    EXPECT_EQ(fileNames(), QStringList{u"a.MP4"_s});
}

TEST_F(AppModelIntakeTest, each_file_that_came_in_is_handed_over_on_the_main_thread)
{
    QList<VideoFile> handed;
    add({film(u"a.mp4"_s), film(u"b.mp4"_s, unreadable), film(u"c.mp4"_s)},
        [&](const VideoFile &file) {
            EXPECT_EQ(QThread::currentThread(), m_model->thread());
            EXPECT_EQ(m_model->files().last(), file);
            EXPECT_TRUE(m_model->selectedFileID());
            handed += file;
        });

    EXPECT_EQ(handed.size(), 2);
    EXPECT_EQ(handed, m_model->files());
}

TEST_F(AppModelIntakeTest, each_call_has_a_receiver_of_its_own)
{
    QStringList first;
    QStringList second;
    m_model->addURLs({film(u"a.mp4"_s)},
                     [&](const VideoFile &file) { first += file.url.fileName(); });
    m_model->addURLs({film(u"b.mp4"_s)},
                     [&](const VideoFile &file) { second += file.url.fileName(); });
    m_model->addURLs({film(u"c.mp4"_s)});
    ASSERT_TRUE(waitForProbes());

    EXPECT_EQ(first, QStringList{u"a.mp4"_s});
    EXPECT_EQ(second, QStringList{u"b.mp4"_s});
}

TEST_F(AppModelIntakeTest, a_receiver_may_add_and_remove_files)
{
    const QUrl next = film(u"b.mp4"_s);
    add({film(u"a.mp4"_s)}, [&](const VideoFile &file) {
        m_model->removeFile(file.id);
        m_model->addURLs({next});
    });

    EXPECT_EQ(fileNames(), QStringList{u"b.mp4"_s});
    EXPECT_EQ(m_model->selectedFile()->url, next);
}

TEST_F(AppModelIntakeTest, an_unreadable_file_is_told_and_stops_no_other)
{
    add({film(u"a.mp4"_s, unreadable), film(u"b.mp4"_s), film(u"c.mp4"_s, "echo rubbish"),
         film(u"d.mp4"_s, "true")});

    EXPECT_EQ(fileNames(), QStringList{u"b.mp4"_s});
    EXPECT_EQ(m_model->lastError(), englishFailure);
}

TEST_F(AppModelIntakeTest, a_failure_is_told_in_the_language_of_its_moment)
{
    const QUrl bad = film(u"a.mp4"_s, unreadable);
    m_model->setLanguage(AppLanguage::simplifiedChinese);
    add({bad});
    EXPECT_EQ(m_model->lastError(), chineseFailure);

    m_model->setLanguage(AppLanguage::english);
    EXPECT_EQ(m_model->lastError(), chineseFailure) << "a text that stands is kept";
    add({bad});
    EXPECT_EQ(m_model->lastError(), englishFailure);
}

TEST_F(AppModelIntakeTest, the_language_counts_when_the_answer_comes)
{
    m_model->addURLs({film(u"a.mp4"_s, unreadable)});
    m_model->setLanguage(AppLanguage::simplifiedChinese);
    ASSERT_TRUE(waitForProbes());

    EXPECT_EQ(m_model->lastError(), chineseFailure);
}

TEST_F(AppModelIntakeTest, the_latest_failure_stays_until_it_is_dismissed_and_comes_again)
{
    const auto told = counted(&AppModel::lastErrorChanged);
    const QUrl bad = film(u"a.mp4"_s, unreadable);
    m_model->setLastError(u"something before"_s);
    add({bad});
    EXPECT_EQ(m_model->lastError(), englishFailure);
    add({film(u"b.mp4"_s)});
    EXPECT_EQ(m_model->lastError(), englishFailure) << "a success takes nothing back";
    EXPECT_EQ(*told, 2);

    m_model->setLastError(std::nullopt);
    add({bad});

    EXPECT_EQ(m_model->lastError(), englishFailure);
    EXPECT_EQ(*told, 4);
}

TEST_F(AppModelIntakeTest, nothing_to_add_changes_nothing)
{
    m_films.write(u"notes.txt"_s, "");
    QDir(m_films.path()).mkdir(u"empty"_s);
    const auto probing = counted(&AppModel::probingCountChanged);
    const auto files = counted(&AppModel::filesChanged);
    bool wasCalled = false;

    for (const QList<QUrl> &urls : {QList<QUrl>{},
                                    {m_films.url(u"notes.txt"_s)},
                                    {folder(u"empty"_s)},
                                    {m_films.url(u"gone.mp4"_s)},
                                    {QUrl()}}) {
        m_model->addURLs(urls, [&](const VideoFile &) { wasCalled = true; });
        EXPECT_EQ(m_model->probingCount(), 0);
    }
    EventLoop::deliverPosted();

    EXPECT_EQ(*probing, 0);
    EXPECT_EQ(*files, 0);
    EXPECT_FALSE(wasCalled);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
    EXPECT_EQ(m_model->sourceRoot(), std::nullopt);
}

TEST_F(AppModelIntakeTest, the_first_folder_of_an_add_becomes_the_root)
{
    film(u"a/1.mp4"_s);
    film(u"b/2.mp4"_s);

    m_model->addURLs({film(u"3.mp4"_s), folder(u"b"_s), folder(u"a"_s)});
    EXPECT_EQ(m_model->sourceRoot(), folder(u"b"_s));
    m_model->addURLs({folder(u"a"_s)});
    EXPECT_EQ(m_model->sourceRoot(), folder(u"a"_s));
}

TEST_F(AppModelIntakeTest, adding_files_alone_leaves_the_root)
{
    film(u"a/1.mp4"_s);
    m_model->addURLs({film(u"2.mp4"_s)});
    EXPECT_EQ(m_model->sourceRoot(), std::nullopt);
    m_model->addURLs({folder(u"a"_s)});

    m_model->addURLs({film(u"3.mp4"_s)});

    EXPECT_EQ(m_model->sourceRoot(), folder(u"a"_s));
}

TEST_F(AppModelIntakeTest, the_mark_of_a_folder_is_its_slash_and_the_disk_is_not_asked)
{
    film(u"a/1.mp4"_s);
    m_model->addURLs({m_films.url(u"a"_s)});
    EXPECT_EQ(m_model->probingCount(), 1) << "it is walked all the same";
    EXPECT_EQ(m_model->sourceRoot(), std::nullopt);

    m_model->addURLs({folder(u"gone"_s), film(u"2.mp4"_s)});
    EXPECT_EQ(m_model->sourceRoot(), folder(u"gone"_s));
}

TEST_F(AppModelIntakeTest, the_root_stands_before_the_probes_end)
{
    film(u"a/1.mp4"_s, unreadable);

    m_model->addURLs({folder(u"a"_s)});

    EXPECT_EQ(m_model->sourceRoot(), folder(u"a"_s));
    ASSERT_TRUE(waitForProbes());
    EXPECT_EQ(m_model->sourceRoot(), folder(u"a"_s));
}

TEST_F(AppModelIntakeTest, later_files_leave_the_selection_alone)
{
    const VideoFile first = added(film(u"a.mp4"_s));
    add({film(u"b.mp4"_s)});
    EXPECT_EQ(m_model->selectedFileID(), first.id);

    m_model->setSelectedFileID(std::nullopt);
    EXPECT_EQ(m_model->selectedFile(), std::nullopt);
    const VideoFile third = added(film(u"c.mp4"_s));
    EXPECT_EQ(m_model->selectedFileID(), third.id) << "nothing was selected";
}

TEST_F(AppModelIntakeTest, a_selection_that_is_not_there_selects_no_file)
{
    add({film(u"a.mp4"_s)});

    m_model->setSelectedFileID(QUuid::createUuid());

    EXPECT_EQ(m_model->selectedFile(), std::nullopt);
}

TEST_F(AppModelIntakeTest, removing_the_selected_file_selects_the_first_that_remains)
{
    const VideoFile a = added(film(u"a.mp4"_s));
    const VideoFile b = added(film(u"b.mp4"_s));
    const VideoFile c = added(film(u"c.mp4"_s));
    m_model->setSelectedFileID(c.id);

    m_model->removeFile(c.id);
    EXPECT_EQ(m_model->selectedFileID(), a.id);
    m_model->removeFile(a.id);
    EXPECT_EQ(m_model->selectedFileID(), b.id);
    m_model->removeFile(b.id);
    EXPECT_EQ(m_model->selectedFileID(), std::nullopt);
    EXPECT_TRUE(m_model->files().isEmpty());
}

TEST_F(AppModelIntakeTest, removing_another_file_keeps_the_selection)
{
    const VideoFile a = added(film(u"a.mp4"_s));
    const VideoFile b = added(film(u"b.mp4"_s));
    m_model->setSelectedFileID(b.id);
    const auto selection = counted(&AppModel::selectedFileIDChanged);
    const auto files = counted(&AppModel::filesChanged);

    m_model->removeFile(a.id);

    EXPECT_EQ(m_model->files(), QList<VideoFile>{b});
    EXPECT_EQ(m_model->selectedFileID(), b.id);
    EXPECT_EQ(*selection, 0);
    EXPECT_EQ(*files, 1);
}

TEST_F(AppModelIntakeTest, removing_a_file_that_is_not_there_changes_nothing)
{
    add({film(u"a.mp4"_s)});
    const auto selection = counted(&AppModel::selectedFileIDChanged);
    const auto files = counted(&AppModel::filesChanged);

    m_model->removeFile(QUuid::createUuid());

    EXPECT_EQ(m_model->files().size(), 1);
    EXPECT_EQ(*selection, 0);
    EXPECT_EQ(*files, 0);
}

TEST_F(AppModelIntakeTest, jobs_keep_their_copy_of_a_removed_file)
{
    const VideoFile file = added(film(u"a.mp4"_s));
    m_model->setQueuePaused(true);
    m_model->enqueueProbed(file, TargetSizeParams());

    m_model->removeFile(file.id);

    ASSERT_EQ(m_model->jobs().size(), 1);
    EXPECT_EQ(m_model->jobs().first()->input, file);
    EXPECT_EQ(m_model->jobs().first()->outcome(), Job::Outcome::queued);
}

TEST_F(AppModelIntakeTest, a_file_may_be_removed_while_others_are_on_their_way)
{
    const Gate gate(m_temporary.path(u"gate"_s));
    m_model->addURLs({film(u"a.mp4"_s), film(u"b.mp4"_s, gate.wait() + readable)});
    ASSERT_TRUE(waitForFiles(1));

    m_model->removeFile(m_model->files().first().id);
    EXPECT_EQ(m_model->selectedFileID(), std::nullopt);
    gate.letThrough(1);
    ASSERT_TRUE(waitForProbes());

    EXPECT_EQ(fileNames(), QStringList{u"b.mp4"_s});
    EXPECT_EQ(m_model->selectedFileID(), m_model->files().first().id);
}

TEST_F(AppModelIntakeTest, keyframes_are_asked_for_once)
{
    const VideoFile file =
        added(filmWithKeyframes(u"a.mp4"_s, "printf '0.0\\n 2.5\\nx\\n1.25\\n'"));
    const QList<double> times{0, 2.5, 1.25};

    EXPECT_EQ(answerOf(m_model->keyframes(file)), times);
    const auto again = m_model->keyframes(file);

    ASSERT_TRUE(again.isFinished());
    EXPECT_EQ(again.result(), times);
    EXPECT_EQ(keyframeQuestions(u"a.mp4"_s), 1);
}

TEST_F(AppModelIntakeTest, keyframes_that_cant_be_had_are_never_asked_for_again)
{
    const VideoFile file = added(filmWithKeyframes(u"a.mp4"_s, "echo 0.0; exit 1"));

    EXPECT_EQ(answerOf(m_model->keyframes(file)), QList<double>());
    EXPECT_EQ(answerOf(m_model->keyframes(file)), QList<double>());

    EXPECT_EQ(keyframeQuestions(u"a.mp4"_s), 1);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
}

TEST_F(AppModelIntakeTest, a_film_without_keyframes_is_asked_once_too)
{
    const VideoFile file = added(filmWithKeyframes(u"a.mp4"_s, "true"));

    EXPECT_EQ(answerOf(m_model->keyframes(file)), QList<double>());
    EXPECT_EQ(answerOf(m_model->keyframes(file)), QList<double>());

    EXPECT_EQ(keyframeQuestions(u"a.mp4"_s), 1);
}

TEST_F(AppModelIntakeTest, keyframes_belong_to_the_file_and_not_to_its_path)
{
    const QUrl url = filmWithKeyframes(u"a.mp4"_s, "echo 0.0");
    const VideoFile first = added(url);
    const VideoFile second = added(url);

    EXPECT_EQ(answerOf(m_model->keyframes(first)), QList<double>{0});
    EXPECT_EQ(answerOf(m_model->keyframes(second)), QList<double>{0});

    EXPECT_EQ(keyframeQuestions(u"a.mp4"_s), 2);
}

TEST_F(AppModelIntakeTest, keyframes_of_a_removed_file_stay_known)
{
    const VideoFile file = added(filmWithKeyframes(u"a.mp4"_s, "echo 1.5"));
    EXPECT_EQ(answerOf(m_model->keyframes(file)), QList<double>{1.5});

    m_model->removeFile(file.id);

    EXPECT_EQ(answerOf(m_model->keyframes(file)), QList<double>{1.5});
    EXPECT_EQ(keyframeQuestions(u"a.mp4"_s), 1);
}

TEST_F(AppModelIntakeTest, asking_for_keyframes_blocks_nobody)
{
    const Gate gate(m_temporary.path(u"gate"_s));
    const VideoFile file = added(filmWithKeyframes(u"a.mp4"_s, gate.wait() + "echo 1.5"));

    const auto answer = m_model->keyframes(file);
    EXPECT_FALSE(answer.isFinished());
    EXPECT_EQ(m_model->probingCount(), 0) << "it is no probe";
    add({film(u"b.mp4"_s)});
    EXPECT_FALSE(answer.isFinished());

    gate.letThrough(1);
    EXPECT_EQ(answerOf(answer), QList<double>{1.5});
}

// As on a disk or a network that hangs.
TEST_F(AppModelIntakeTest, a_film_that_hangs_keeps_no_other_films_keyframes_away)
{
    const Gate gate(m_temporary.path(u"gate"_s));
    const VideoFile hanging = added(filmWithKeyframes(u"a.mp4"_s, gate.wait() + "echo 1.5"));
    const VideoFile quick = added(filmWithKeyframes(u"b.mp4"_s, "echo 2.5"));
    const auto first = m_model->keyframes(hanging);

    EXPECT_EQ(answerOf(m_model->keyframes(quick)), QList<double>{2.5});

    gate.letThrough(1);
    EXPECT_EQ(answerOf(first), QList<double>{1.5});
}

TEST_F(AppModelIntakeTest, going_away_while_500_probes_run_ends_every_child)
{
    for (int i = 0; i < 500; ++i) {
        // A child of the child, as deaf to everything but its end.
        film(u"films/%1.mp4"_s.arg(i), "tail -f \"$0\"; true");
    }
    bool wasCalled = false;
    m_model->addURLs({folder(u"films"_s)}, [&](const VideoFile &) { wasCalled = true; });
    ASSERT_EQ(m_model->probingCount(), 500);
    ASSERT_TRUE(Processes::eventually([this] { return !children().isEmpty(); }));
    QElapsedTimer elapsed;
    elapsed.start();

    m_model.reset();

    EXPECT_LT(elapsed.elapsed(), 5000);
    EXPECT_EQ(children(), QList<qint64>());
    EventLoop::deliverPosted();
    EXPECT_FALSE(wasCalled);
}

TEST_F(AppModelIntakeTest, going_away_before_the_probes_begin_leaves_none)
{
    QList<QUrl> urls;
    for (int i = 0; i < 20; ++i) {
        urls += film(u"%1.mp4"_s.arg(i), "tail -f \"$0\"; true");
    }
    m_model->addURLs(urls);

    m_model.reset();

    EXPECT_EQ(children(), QList<qint64>());
}

TEST_F(AppModelIntakeTest, answers_that_nobody_has_taken_go_with_the_model)
{
    bool wasCalled = false;
    film(u"a.mp4"_s, readable + "\ntouch \"$0.answered\"");
    m_model->addURLs({m_films.url(u"a.mp4"_s)}, [&](const VideoFile &) { wasCalled = true; });
    ASSERT_TRUE(Processes::eventually(
        [this] { return m_films.names().contains(u"a.mp4.answered"_s) && children().isEmpty(); }));

    m_model.reset();
    EventLoop::deliverPosted();

    EXPECT_FALSE(wasCalled);
}

TEST_F(AppModelIntakeTest, an_open_question_for_keyframes_ends_with_the_model)
{
    const VideoFile file = added(filmWithKeyframes(u"a.mp4"_s, "tail -f \"$0\"; true"));
    const auto running = m_model->keyframes(file);
    const auto waiting = m_model->keyframes(file);
    ASSERT_TRUE(Processes::eventually([this] { return !children().isEmpty(); }));

    m_model.reset();

    EXPECT_EQ(children(), QList<qint64>());
    for (const QFuture<QList<double>> &answer : {running, waiting}) {
        EXPECT_TRUE(answer.isFinished());
        EXPECT_TRUE(answer.isCanceled());
        EXPECT_EQ(answer.resultCount(), 0);
    }
}

TEST_F(AppModelIntakeTest, going_away_removes_what_jobs_left)
{
    const VideoFile file = added(film(u"a.mp4"_s));
    m_model->setQueuePaused(true);
    m_model->enqueueProbed(file, TargetSizeParams());
    const QString left = u"mx-approach-"_s + Text::uuid(file.id) + u".mp4"_s;
    const QString ofOthers = u"mx-approach-"_s + Text::uuid(QUuid::createUuid()) + u".mp4"_s;
    m_temporary.write(left, "");
    m_temporary.write(ofOthers, "");

    m_model.reset();

    EXPECT_FALSE(m_temporary.names().contains(left));
    EXPECT_TRUE(m_temporary.names().contains(ofOthers));
}

TEST_F(AppModelIntakeTest, going_away_removes_what_cleared_jobs_left)
{
    const VideoFile file = added(film(u"a.mp4"_s));
    m_model->setQueuePaused(true);
    m_model->enqueueProbed(file, TargetSizeParams());
    const QString left = u"mx-approach-"_s + Text::uuid(file.id) + u".mp4"_s;
    m_temporary.write(left, "");
    m_model->cancelJob(m_model->jobs().first()->id);
    m_model->clearFinished();

    m_model.reset();

    EXPECT_FALSE(m_temporary.names().contains(left));
}

TEST_F(AppModelWithoutToolsTest, a_failed_search_with_nothing_loaded_shows_no_banner)
{
    EXPECT_FALSE(m_model->toolset());
    EXPECT_TRUE(FFmpegLocator::shared().searched);
    EXPECT_EQ(FFmpegLocator::shared().toolset, std::nullopt);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
}

TEST_F(AppModelWithoutToolsTest, no_file_comes_in_and_each_is_told_as_unreadable)
{
    bool wasCalled = false;
    m_model->addURLs({film(u"a.mp4"_s), film(u"b.mp4"_s)},
                     [&](const VideoFile &) { wasCalled = true; });
    EXPECT_EQ(m_model->probingCount(), 2);
    EXPECT_EQ(m_model->lastError(), std::nullopt) << "the answer comes by the event loop";
    ASSERT_TRUE(waitForProbes());

    EXPECT_TRUE(m_model->files().isEmpty());
    EXPECT_EQ(m_model->selectedFileID(), std::nullopt);
    EXPECT_EQ(m_model->lastError(), englishFailure);
    EXPECT_FALSE(wasCalled);
}

TEST_F(AppModelWithoutToolsTest, the_failure_is_told_in_chinese_too)
{
    m_model->setLanguage(AppLanguage::simplifiedChinese);

    add({film(u"a.mp4"_s)});

    EXPECT_EQ(m_model->lastError(), chineseFailure);
}

TEST_F(AppModelWithoutToolsTest, a_folder_still_becomes_the_root)
{
    film(u"a/1.mp4"_s);

    add({folder(u"a"_s)});

    EXPECT_EQ(m_model->sourceRoot(), folder(u"a"_s));
}

TEST_F(AppModelWithoutToolsTest, keyframes_are_none_at_once)
{
    VideoFile file;
    file.url = film(u"a.mp4"_s);

    const auto answer = m_model->keyframes(file);

    ASSERT_TRUE(answer.isFinished());
    EXPECT_EQ(answer.result(), QList<double>());
}

TEST(AppModelRealIntakeTest, a_real_film_comes_in_with_its_keyframes)
{
    const TempFolder folder;
    const QString path = folder.path(u"a film.mp4"_s);
    Clips::make(path, {.seconds = 2});
    AppModel model(Settings(folder.path(u"Morvix.conf"_s)), makeSilentServices());

    model.addURLs({QUrl::fromLocalFile(path)});
    ASSERT_TRUE(EventLoop::waitFor([&] { return model.probingCount() == 0; }, &model,
                                   &AppModel::probingCountChanged));

    ASSERT_EQ(model.files().size(), 1);
    const VideoFile file = model.files().first();
    EXPECT_EQ(file.videoCodec, u"h264"_s);
    EXPECT_EQ(file.width, 320);
    const auto times = model.keyframes(file);
    QFutureWatcher<QList<double>> watcher;
    watcher.setFuture(times);
    ASSERT_TRUE(EventLoop::waitFor([&] { return times.isFinished(); }, &watcher,
                                   &QFutureWatcher<QList<double>>::finished));
    EXPECT_TRUE(times.result().contains(1));
    EXPECT_EQ(times.result(), ProbeService::keyframeTimes(file.url, Clips::tools().ffprobeURL));
}
