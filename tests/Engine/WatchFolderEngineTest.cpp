// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/WatchFolderEngine.h"

#include "Engine/FolderExpander.h"
#include "Engine/FolderWatch.h"
#include "support/TempFolder.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto deadline = 20s;
constexpr qint64 tenMinutes = 600;

/// One call of the handler.
struct Found {
    WatchFolderConfig config;
    QStringList paths;
};

// Files are made in a folder beside the watched ones and moved in, old enough to be ready; each
// test waits for calls of the handler. What must not be reported comes before something that must
// be, in the same scan or in one that ends earlier.
class WatchFolders : public ::testing::Test
{
protected:
    WatchFolders()
    {
        makeFolder(u"inbox"_s);
        makeFolder(u"other"_s);
        makeFolder(u"stock"_s);
    }

    void makeFolder(const QString &name) const { ASSERT_TRUE(QDir().mkpath(path(name))); }
    QString path(const QString &name) const { return m_folder.path(name); }
    QStringList paths(const QStringList &names) const
    {
        QStringList paths;
        for (const QString &name : names) {
            paths.append(path(name));
        }
        return paths;
    }

    void age(const QString &name, qint64 seconds = tenMinutes) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-seconds),
                                     QFile::FileModificationTime));
    }

    void rename(const QString &from, const QString &to) const
    {
        ASSERT_EQ(::rename(path(from).toUtf8().constData(), path(to).toUtf8().constData()), 0);
    }

    // Makes a file outside and moves it in, in one step.
    void moveIn(const QString &name, qint64 seconds = tenMinutes)
    {
        const QString stock = u"stock/"_s + QString::number(++m_made);
        m_folder.write(stock, "a film");
        age(stock, seconds);
        rename(stock, name);
    }

    std::unique_ptr<WatchFolderEngine> makeEngine(WatchTiming timing = {.debounce = 150ms,
                                                                        .readiness = 3000ms}) const
    {
        return std::make_unique<WatchFolderEngine>(m_folder.url(u"data"_s), timing);
    }

    WatchFolderEngine::Handler recorder()
    {
        return [this](const WatchFolderConfig &config, const QList<QUrl> &files) {
            EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
            QStringList paths;
            for (const QUrl &file : files) {
                paths.append(file.toLocalFile());
            }
            m_found.append({config, paths});
            m_look();
        };
    }

    // Lets the main thread work until it holds, looked at after each call of the handler and each
    // start.
    bool waitUntil(const std::function<bool()> &holds)
    {
        QEventLoop loop;
        QTimer::singleShot(deadline, &loop, &QEventLoop::quit);
        m_look = [&] {
            if (holds()) {
                loop.quit();
            }
        };
        QObject::connect(m_engine.get(), &WatchFolderEngine::watching, &loop, m_look);
        if (!holds()) {
            loop.exec();
        }
        m_look = [] {};
        return holds();
    }

    bool waitForCalls(qsizetype count)
    {
        return waitUntil([&] { return m_found.size() >= count; });
    }

    // Does it, and waits until the starts that it causes have come into force.
    void andWatch(const std::function<void()> &action, int starts = 1)
    {
        int remaining = starts;
        const auto connection = QObject::connect(m_engine.get(), &WatchFolderEngine::watching,
                                                 m_engine.get(), [&] { --remaining; });
        action();
        EXPECT_TRUE(waitUntil([&] { return remaining <= 0; }));
        QObject::disconnect(connection);
    }

    // Starts with the folders of these names.
    void watch(const QStringList &names,
               WatchTiming timing = {.debounce = 150ms, .readiness = 3000ms})
    {
        m_engine = makeEngine(timing);
        for (const QString &name : names) {
            m_engine->add(m_folder.url(name), m_preset);
        }
        andWatch([this] { m_engine->start(recorder()); });
    }

    QUuid id(qsizetype index = 0) const { return m_engine->configs().at(index).id; }

    const TempFolder m_folder;
    const QUuid m_preset = QUuid::createUuid();
    // Called after each call of a handler.
    std::function<void()> m_look = [] {};
    std::unique_ptr<WatchFolderEngine> m_engine;
    QList<Found> m_found;
    int m_made = 0;
};

// The watching alone, on the thread of the test.
class FolderWatches : public WatchFolders
{
protected:
    FolderWatches()
    {
        QObject::connect(&m_watch, &FolderWatch::found, &m_watch, recorder());
        m_watch.start({m_inbox, m_other});
    }

    // Moves a film in and comes back when the signal has been handled: the scan waits.
    void moveInAndLetTheScanWait()
    {
        QEventLoop loop;
        QTimer::singleShot(deadline, &loop, &QEventLoop::quit);
        // Its signal comes behind that of the watch, which was there before.
        QFileSystemWatcher witness({m_inbox.path});
        QObject::connect(&witness, &QFileSystemWatcher::directoryChanged, &loop, &QEventLoop::quit);
        moveIn(u"inbox/film.mp4"_s);
        loop.exec();
        QCoreApplication::processEvents();
    }

    bool waitForCall()
    {
        QEventLoop loop;
        QTimer::singleShot(deadline, &loop, &QEventLoop::quit);
        m_look = [&] { loop.quit(); };
        loop.exec();
        m_look = [] {};
        return !m_found.isEmpty();
    }

    const WatchFolderConfig m_inbox{.path = path(u"inbox"_s), .presetID = {}};
    const WatchFolderConfig m_other{.path = path(u"other"_s), .presetID = {}};
    FolderWatch m_watch{WatchTiming{.debounce = 300ms, .readiness = 3000ms}};
};

using WatchFolderFile = WatchFolders;
using WatchFolderScan = WatchFolders;

} // namespace

TEST(WatchFolderExtensions, ten_videos_count_and_with_six_kinds_of_sound_all_that_a_drop_takes)
{
    const QSet<QString> videos{u"mp4"_s, u"mov"_s, u"mkv"_s, u"webm"_s, u"avi"_s,
                               u"m4v"_s, u"ts"_s,  u"mts"_s, u"m2ts"_s, u"flv"_s};
    const QSet<QString> sounds{u"mp3"_s, u"m4a"_s, u"wav"_s, u"aac"_s, u"flac"_s, u"aiff"_s};
    EXPECT_EQ(WatchFolderEngine::mediaExtensions(), videos);
    EXPECT_EQ(FolderExpander::mediaExtensions(), QSet<QString>(videos) + sounds);
}

TEST(WatchFolderTiming, a_folder_settles_for_two_seconds_and_a_file_for_three)
{
    EXPECT_EQ(WatchTiming().debounce, 2s);
    EXPECT_EQ(WatchTiming().readiness, 3s);
}

TEST_F(WatchFolderScan, finds_videos_at_every_depth_sorted_by_path)
{
    for (const QString &name : {u"b.mp4"_s, u"a.MOV"_s, u"sub/c.mkv"_s, u"sub/deep/er/d.webm"_s,
                                u"Ä.ts"_s, u"Z.m2ts"_s, u"😀.avi"_s, u"\uffee.flv"_s}) {
        m_folder.write(u"inbox/"_s + name, "");
    }
    QStringList found;
    for (const QUrl &file : WatchFolderEngine::scanMediaFiles(m_folder.url(u"inbox/"_s))) {
        found.append(file.toLocalFile().sliced(path(u"inbox/"_s).size()));
    }
    EXPECT_EQ(found,
              (QStringList{u"Z.m2ts"_s, u"a.MOV"_s, u"b.mp4"_s, u"sub/c.mkv"_s,
                           u"sub/deep/er/d.webm"_s, u"Ä.ts"_s, u"\uffee.flv"_s, u"😀.avi"_s}));
}

TEST_F(WatchFolderScan, passes_over_what_is_hidden_or_has_another_name)
{
    for (const QString &name :
         {u".hidden.mp4"_s, u".hidden/film.mp4"_s, u"sub/.cache/film.mp4"_s, u"song.mp3"_s,
          u"notes.txt"_s, u"mp4"_s, u".mp4"_s, u"film.mp4."_s, u"film.mp4.part"_s}) {
        m_folder.write(u"inbox/"_s + name, "");
    }
    EXPECT_TRUE(WatchFolderEngine::scanMediaFiles(m_folder.url(u"inbox"_s)).isEmpty());
}

TEST_F(WatchFolderScan, a_folder_with_a_videos_name_counts_like_what_is_in_it)
{
    m_folder.write(u"inbox/clips.mov/a.mp4"_s, "");
    EXPECT_EQ(WatchFolderEngine::scanMediaFiles(m_folder.url(u"inbox"_s)),
              (QList<QUrl>{m_folder.url(u"inbox/clips.mov/"_s),
                           m_folder.url(u"inbox/clips.mov/a.mp4"_s)}));
}

TEST_F(WatchFolderScan, links_to_files_count_and_links_to_folders_are_not_entered)
{
    m_folder.write(u"other/film.mp4"_s, "");
    ASSERT_TRUE(QFile::link(path(u"other/film.mp4"_s), path(u"inbox/link.mp4"_s)));
    ASSERT_TRUE(QFile::link(path(u"inbox"_s), path(u"inbox/circle"_s)));
    ASSERT_TRUE(QFile::link(path(u"missing"_s), path(u"inbox/dangling.mp4"_s)));
    EXPECT_EQ(
        WatchFolderEngine::scanMediaFiles(m_folder.url(u"inbox"_s)),
        (QList<QUrl>{m_folder.url(u"inbox/dangling.mp4"_s), m_folder.url(u"inbox/link.mp4"_s)}));
}

TEST_F(WatchFolderScan, what_is_no_folder_holds_nothing)
{
    m_folder.write(u"film.mp4"_s, "");
    EXPECT_TRUE(WatchFolderEngine::scanMediaFiles(m_folder.url(u"film.mp4"_s)).isEmpty());
    EXPECT_TRUE(WatchFolderEngine::scanMediaFiles(m_folder.url(u"missing"_s)).isEmpty());
    EXPECT_TRUE(WatchFolderEngine::scanMediaFiles(QUrl()).isEmpty());
}

TEST_F(WatchFolderFile, is_plain_json_of_the_folders_in_order_of_adding)
{
    m_engine = makeEngine();
    m_engine->add(m_folder.url(u"inbox/"_s), std::nullopt);
    m_engine->add(m_folder.url(u"other"_s), m_preset);
    m_engine->setEnabled(false, id(1));

    const auto text = [](const QUuid &uuid) { return uuid.toByteArray(QUuid::WithoutBraces); };
    EXPECT_EQ(contentOf(path(u"data/watchfolders.json"_s)),
              R"([{"enabled":true,"id":")" + text(id(0)) + R"(","path":")" +
                  path(u"inbox"_s).toUtf8() + R"("},{"enabled":false,"id":")" + text(id(1)) +
                  R"(","path":")" + path(u"other"_s).toUtf8() + R"(","presetID":")" +
                  text(m_preset) + R"("}])");
    EXPECT_EQ(makeEngine()->configs(), m_engine->configs());
}

TEST_F(WatchFolderFile, stands_in_the_users_data_unless_told_otherwise)
{
    const ScopedEnvironment environment("XDG_DATA_HOME", path(u"home/data"_s).toUtf8());
    WatchFolderEngine engine;
    EXPECT_TRUE(QFileInfo(path(u"home/data/Morvix"_s)).isDir());
    EXPECT_FALSE(QFileInfo::exists(path(u"home/data/Morvix/watchfolders.json"_s)));
    engine.add(m_folder.url(u"inbox"_s), std::nullopt);
    EXPECT_TRUE(QFileInfo::exists(path(u"home/data/Morvix/watchfolders.json"_s)));
}

TEST_F(WatchFolderFile, is_all_or_nothing)
{
    const QByteArray good =
        R"({"id":"10293847-5610-4293-8475-610293847561","path":"/films","enabled":false})";
    const auto configsIn = [this](const QByteArray &content) {
        m_folder.write(u"data/watchfolders.json"_s, content);
        return makeEngine()->configs();
    };
    const WatchFolderConfig expected{QUuid(u"10293847-5610-4293-8475-610293847561"_s), u"/films"_s,
                                     std::nullopt, false};
    EXPECT_EQ(configsIn('[' + good + ']'), QList{expected});
    EXPECT_EQ(configsIn('[' + good.chopped(1) + R"(,"presetID":null,"more":1}])"), QList{expected});
    for (const QByteArray &broken :
         {""_ba, "{}"_ba, '[' + good, '[' + good + ",5]", '[' + good + ",{}]",
          '[' + good.chopped(1) + R"(,"presetID":"five"}])",
          '[' + good.chopped(1) + R"(,"enabled":true}])",
          '[' + good.chopped(1) + R"(,"p\u0061th":"/films"}])",
          '[' + QByteArray(good).replace("false", "0") + ']',
          '[' + QByteArray(good).replace("\"/films\"", "5") + ']'}) {
        EXPECT_TRUE(configsIn(broken).isEmpty()) << broken.toStdString();
    }
}

TEST_F(WatchFolderFile, that_cannot_be_written_leaves_a_list_that_works)
{
    m_folder.write(u"data"_s, "in the way");
    m_engine = makeEngine();
    m_engine->add(m_folder.url(u"inbox"_s), std::nullopt);
    EXPECT_EQ(m_engine->configs().size(), 1);
    EXPECT_EQ(contentOf(path(u"data"_s)), "in the way");
}

TEST_F(WatchFolderFile, changes_with_each_operation_and_with_nothing_else)
{
    m_engine = makeEngine();
    m_engine->add(m_folder.url(u"inbox"_s), m_preset);
    const auto kept = [this] { return makeEngine()->configs().value(0); };
    EXPECT_EQ(kept(), m_engine->configs().first());

    m_engine->setPreset(std::nullopt, id());
    EXPECT_EQ(kept().presetID, std::nullopt);
    m_engine->setEnabled(false, id());
    EXPECT_FALSE(kept().enabled);

    m_engine->setPreset(m_preset, QUuid::createUuid());
    m_engine->setEnabled(true, QUuid::createUuid());
    m_engine->remove(QUuid::createUuid());
    EXPECT_EQ(kept(), m_engine->configs().first());
    EXPECT_FALSE(kept().enabled);

    m_engine->remove(id());
    EXPECT_TRUE(m_engine->configs().isEmpty());
    EXPECT_EQ(contentOf(path(u"data/watchfolders.json"_s)), "[]");
}

TEST_F(WatchFolders, an_old_file_moved_in_is_reported_once_after_two_quiet_seconds)
{
    watch({u"inbox"_s}, WatchTiming());
    QElapsedTimer clock;
    clock.start();
    moveIn(u"inbox/film.mp4"_s);

    ASSERT_TRUE(waitForCalls(1));

    EXPECT_GE(clock.elapsed(), 2000);
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/film.mp4"_s)});
    EXPECT_EQ(m_found.first().config, m_engine->configs().first());

    moveIn(u"inbox/second.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).paths, QStringList{path(u"inbox/second.mp4"_s)});
}

TEST_F(WatchFolders, what_lies_there_at_the_start_is_known)
{
    moveIn(u"inbox/known.mp4"_s);
    watch({u"inbox"_s});
    moveIn(u"inbox/new.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/new.mp4"_s)});
}

TEST_F(WatchFolders, several_files_give_one_call_in_the_order_of_their_paths)
{
    watch({u"inbox"_s});
    for (const QString &name : {u"c.MOV"_s, u"a.mp4"_s, u"é.mkv"_s, u"B.webm"_s}) {
        moveIn(u"inbox/"_s + name);
    }
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths,
              paths({u"inbox/B.webm"_s, u"inbox/a.mp4"_s, u"inbox/c.MOV"_s, u"inbox/é.mkv"_s}));
}

TEST_F(WatchFolders, two_hundred_files_at_once_are_each_reported_once)
{
    watch({u"inbox"_s});
    QStringList expected;
    for (int i = 100; i < 300; ++i) {
        const QString name = u"inbox/%1.mp4"_s.arg(i);
        moveIn(name);
        expected.append(path(name));
    }
    QStringList found;
    ASSERT_TRUE(waitUntil([&] {
        found.clear();
        for (const Found &call : m_found) {
            found += call.paths;
        }
        return found.size() >= expected.size();
    }));
    EXPECT_EQ(found, expected);
}

TEST_F(WatchFolders, each_change_pushes_the_scan_back)
{
    watch({u"inbox"_s}, {.debounce = 1500ms, .readiness = 3000ms});
    QTimer arrivals;
    int arrived = 0;
    QElapsedTimer sinceFirst;
    sinceFirst.start();
    QObject::connect(&arrivals, &QTimer::timeout, &arrivals, [&] {
        moveIn(u"inbox/%1.mp4"_s.arg(10 + ++arrived));
        if (sinceFirst.elapsed() > 2500) {
            arrivals.stop();
        }
    });
    arrivals.start(100ms);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths.size(), arrived);
    EXPECT_GE(sinceFirst.elapsed(), 4000);
}

TEST_F(WatchFolders, other_names_and_hidden_files_are_passed_over)
{
    watch({u"inbox"_s});
    for (const QString &name : {u".hidden.mp4"_s, u"song.mp3"_s, u"film.mp4.part"_s, u"MOV"_s}) {
        moveIn(u"inbox/"_s + name);
    }
    moveIn(u"inbox/film.Mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/film.Mp4"_s)});
}

TEST_F(WatchFolders, a_file_that_was_just_written_is_passed_over_for_good)
{
    watch({u"inbox"_s});
    moveIn(u"inbox/fresh.mp4"_s, 0);
    moveIn(u"inbox/from the future.mp4"_s, -tenMinutes);
    moveIn(u"inbox/old.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/old.mp4"_s)});

    age(u"inbox/fresh.mp4"_s);
    moveIn(u"inbox/older.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).paths, QStringList{path(u"inbox/older.mp4"_s)});
}

TEST_F(WatchFolders, a_copy_is_ready_when_it_has_been_left_alone_for_long_enough)
{
    watch({u"inbox"_s}, {.debounce = 400ms, .readiness = 100ms});
    m_folder.write(u"stock/film.mp4"_s, QByteArray(3'000'000, 'x'));
    ASSERT_TRUE(QFile::copy(path(u"stock/film.mp4"_s), path(u"inbox/film.mp4"_s)));
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/film.mp4"_s)});
}

TEST_F(WatchFolders, a_file_that_cannot_be_read_is_passed_over)
{
    watch({u"inbox"_s});
    ASSERT_TRUE(QFile::link(path(u"missing"_s), path(u"inbox/dangling.mp4"_s)));
    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/film.mp4"_s)});
}

TEST_F(WatchFolders, a_renamed_file_is_new_again)
{
    watch({u"inbox"_s});
    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    rename(u"inbox/film.mp4"_s, u"inbox/renamed.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).paths, QStringList{path(u"inbox/renamed.mp4"_s)});
}

TEST_F(WatchFolders, a_file_put_back_before_the_next_scan_is_not_new)
{
    watch({u"inbox"_s});
    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    rename(u"inbox/film.mp4"_s, u"stock/aside.mp4"_s);
    rename(u"stock/aside.mp4"_s, u"inbox/film.mp4"_s);
    moveIn(u"inbox/other.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).paths, QStringList{path(u"inbox/other.mp4"_s)});
}

TEST_F(WatchFolders, a_file_put_back_after_a_scan_that_missed_it_is_new)
{
    watch({u"inbox"_s});
    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    rename(u"inbox/film.mp4"_s, u"stock/aside.mp4"_s);
    moveIn(u"inbox/other.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    rename(u"stock/aside.mp4"_s, u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(3));
    EXPECT_EQ(m_found.at(2).paths, QStringList{path(u"inbox/film.mp4"_s)});
}

TEST_F(WatchFolders, a_deletion_is_a_change_like_any_other)
{
    makeFolder(u"inbox/sub"_s);
    m_folder.write(u"inbox/notes.txt"_s, "");
    watch({u"inbox"_s});
    moveIn(u"inbox/sub/film.mp4"_s);
    ASSERT_TRUE(QFile::remove(path(u"inbox/notes.txt"_s)));
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/sub/film.mp4"_s)});
}

TEST_F(WatchFolders, a_file_in_a_subfolder_waits_for_a_change_of_the_folder_itself)
{
    makeFolder(u"inbox/sub"_s);
    watch({u"inbox"_s, u"other"_s});
    moveIn(u"inbox/sub/film.mp4"_s);
    moveIn(u"other/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"other/film.mp4"_s)});

    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).paths, paths({u"inbox/film.mp4"_s, u"inbox/sub/film.mp4"_s}));
}

TEST_F(WatchFolders, a_folder_moved_in_brings_its_files)
{
    watch({u"inbox"_s});
    moveIn(u"stock/b.mp4"_s);
    moveIn(u"stock/a.mp4"_s);
    rename(u"stock"_s, u"inbox/shoot"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, paths({u"inbox/shoot/a.mp4"_s, u"inbox/shoot/b.mp4"_s}));
}

TEST_F(WatchFolders, a_folder_that_appears_later_is_watched_from_the_next_start_on)
{
    watch({u"late"_s, u"inbox"_s});
    makeFolder(u"late"_s);
    moveIn(u"late/too early.mp4"_s);
    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/film.mp4"_s)});

    andWatch([this] { m_engine->start(recorder()); });
    moveIn(u"late/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).paths, QStringList{path(u"late/film.mp4"_s)});
}

TEST_F(WatchFolders, a_folder_made_again_is_watched_from_the_next_start_on)
{
    watch({u"inbox"_s, u"other"_s});
    ASSERT_TRUE(QDir(path(u"inbox"_s)).removeRecursively());
    // The scan of the vanished folder ends before that of the other.
    moveIn(u"other/first.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    makeFolder(u"inbox"_s);
    moveIn(u"inbox/unseen.mp4"_s);
    moveIn(u"other/second.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).paths, QStringList{path(u"other/second.mp4"_s)});

    andWatch([this] { m_engine->start(recorder()); });
    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(3));
    EXPECT_EQ(m_found.at(2).paths, QStringList{path(u"inbox/film.mp4"_s)});
}

TEST_F(WatchFolders, nothing_is_watched_before_the_first_start)
{
    m_engine = makeEngine();
    m_engine->add(m_folder.url(u"inbox"_s), m_preset);
    moveIn(u"inbox/before.mp4"_s);
    andWatch([this] { m_engine->start(recorder()); });
    moveIn(u"inbox/after.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/after.mp4"_s)});
}

TEST_F(WatchFolders, a_folder_added_later_is_watched_at_once)
{
    watch({});
    andWatch([this] { m_engine->add(m_folder.url(u"inbox/"_s), std::nullopt); });
    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().config, m_engine->configs().first());
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/film.mp4"_s)});
}

TEST_F(WatchFolders, a_restart_absorbs_what_still_waited_for_its_scan)
{
    watch({u"inbox"_s});
    moveIn(u"inbox/absorbed.mp4"_s);
    andWatch([this] { m_engine->add(m_folder.url(u"other"_s), m_preset); });
    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/film.mp4"_s)});
}

TEST_F(WatchFolders, a_disabled_folder_is_not_watched_and_what_came_meanwhile_is_known)
{
    watch({u"inbox"_s, u"other"_s});
    andWatch([this] { m_engine->setEnabled(false, id()); });
    moveIn(u"inbox/meanwhile.mp4"_s);
    moveIn(u"other/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"other/film.mp4"_s)});

    andWatch([this] { m_engine->setEnabled(true, id()); });
    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).paths, QStringList{path(u"inbox/film.mp4"_s)});
}

TEST_F(WatchFolders, a_folder_disabled_from_the_start_is_not_watched)
{
    m_engine = makeEngine();
    m_engine->add(m_folder.url(u"inbox"_s), m_preset);
    m_engine->add(m_folder.url(u"other"_s), m_preset);
    m_engine->setEnabled(false, id());
    andWatch([this] { m_engine->start(recorder()); });
    moveIn(u"inbox/film.mp4"_s);
    moveIn(u"other/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"other/film.mp4"_s)});
}

TEST_F(WatchFolders, a_removed_folder_is_not_watched)
{
    watch({u"inbox"_s, u"other"_s});
    m_engine->remove(id());
    andWatch([this] { m_engine->start(recorder()); });
    moveIn(u"inbox/film.mp4"_s);
    moveIn(u"other/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"other/film.mp4"_s)});
}

TEST_F(WatchFolders, removing_a_folder_stops_its_source_without_a_start)
{
    watch({u"inbox"_s, u"other"_s});
    m_engine->remove(id());
    // Told in order: by the time of the first report the removal is in force.
    moveIn(u"other/first.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    moveIn(u"inbox/film.mp4"_s);
    moveIn(u"other/second.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).paths, QStringList{path(u"other/second.mp4"_s)});
}

TEST_F(WatchFolders, a_running_folder_goes_on_with_its_old_preset_until_the_next_start)
{
    watch({u"inbox"_s});
    const QUuid second = QUuid::createUuid();
    m_engine->setPreset(second, id());
    EXPECT_EQ(m_engine->configs().first().presetID, second);
    EXPECT_EQ(makeEngine()->configs().first().presetID, second);

    moveIn(u"inbox/a.mp4"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_EQ(m_found.first().config.presetID, m_preset);

    andWatch([this] { m_engine->setEnabled(true, id()); });
    moveIn(u"inbox/b.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).config.presetID, second);
}

TEST_F(WatchFolders, two_folders_of_one_place_each_report)
{
    watch({u"inbox"_s, u"inbox"_s});
    moveIn(u"inbox/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(0).paths, QStringList{path(u"inbox/film.mp4"_s)});
    EXPECT_EQ(m_found.at(1).paths, QStringList{path(u"inbox/film.mp4"_s)});
    EXPECT_NE(m_found.at(0).config.id, m_found.at(1).config.id);
}

TEST_F(WatchFolders, a_new_handler_takes_the_place_of_the_old_one)
{
    watch({u"inbox"_s});
    int calls = 0;
    andWatch([&] {
        m_engine->start([&](const WatchFolderConfig &, const QList<QUrl> &) {
            ++calls;
            m_look();
        });
    });
    moveIn(u"inbox/film.mp4"_s);
    EXPECT_TRUE(waitUntil([&] { return calls == 1; }));
    EXPECT_TRUE(m_found.isEmpty());
}

TEST_F(WatchFolders, a_handler_may_change_the_list_and_start_anew)
{
    m_engine = makeEngine();
    m_engine->add(m_folder.url(u"inbox"_s), m_preset);
    andWatch([&] {
        m_engine->start([&](const WatchFolderConfig &config, const QList<QUrl> &files) {
            m_engine->start(recorder());
            m_engine->remove(config.id);
            m_engine->add(m_folder.url(u"other"_s), m_preset);
            recorder()(config, files);
        });
    });
    andWatch([this] { moveIn(u"inbox/film.mp4"_s); }, 2);
    moveIn(u"other/film.mp4"_s);
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(m_found.at(1).paths, QStringList{path(u"other/film.mp4"_s)});
}

TEST_F(WatchFolders, an_engine_that_goes_calls_nobody_any_more)
{
    for (int round = 0; round < 20; ++round) {
        watch({u"inbox"_s}, {.debounce = 1ms, .readiness = 1ms});
        moveIn(u"inbox/%1.mp4"_s.arg(round));
        m_engine.reset();
        QCoreApplication::sendPostedEvents();
        EXPECT_TRUE(m_found.isEmpty());
        QFile::remove(path(u"data/watchfolders.json"_s));
    }
}

TEST_F(WatchFolders, the_scans_have_a_thread_of_their_own)
{
    watch({});
    QStringList names;
    for (const QString &task :
         QDir(u"/proc/self/task"_s).entryList(QDir::NoDotAndDotDot | QDir::Dirs)) {
        names.append(
            QString::fromUtf8(contentOf(u"/proc/self/task/"_s + task + u"/comm"_s)).trimmed());
    }
    // The system keeps fifteen characters.
    EXPECT_TRUE(names.contains(u"morvix.watchfol"_s)) << names.join(u' ').toStdString();
}

TEST_F(FolderWatches, a_scan_that_waits_is_made_though_its_folder_is_removed)
{
    moveInAndLetTheScanWait();
    m_watch.stopSource(m_inbox.id);
    ASSERT_TRUE(waitForCall());
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"inbox/film.mp4"_s)});
}

TEST_F(FolderWatches, a_scan_that_waits_is_forgotten_when_its_folder_is_disabled)
{
    moveInAndLetTheScanWait();
    WatchFolderConfig disabled = m_inbox;
    disabled.enabled = false;
    m_watch.start({disabled, m_other});
    moveIn(u"other/film.mp4"_s);
    ASSERT_TRUE(waitForCall());
    EXPECT_EQ(m_found.first().paths, QStringList{path(u"other/film.mp4"_s)});
}
