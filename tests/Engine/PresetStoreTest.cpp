// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PresetStore.h"

#include "Engine/JsonFile.h"
#include "Models/UserPresetJson.h"
#include "support/Command.h"
#include "support/SmallDisk.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray presetText(const QByteArray &number, const QByteArray &name, const QByteArray &createdAt,
                      const QByteArray &spec = R"({"gif": {"_0": {"start": 0, "width": 480,
                          "fps": 15, "loopForever": true, "bounce": false,
                          "screenContent": false}}})")
{
    return R"({"id": "10293847-5610-4293-8475-61029384756)" + number + R"(", "name": ")" + name +
           R"(", "createdAt": ")" + createdAt + R"(", "spec": )" + spec + '}';
}

QUuid idOf(QChar number)
{
    return QUuid(u"10293847-5610-4293-8475-61029384756"_s + number);
}

class PresetStoreFiles : public ::testing::Test
{
protected:
    PresetStore store() const { return PresetStore(m_folder.url({})); }
    QString file() const { return m_folder.path(u"presets.json"_s); }

    QStringList namesAfterLoading(const QByteArray &content) const
    {
        m_folder.write(u"presets.json"_s, content);
        return namesIn(store());
    }

    static QStringList namesIn(const PresetStore &store)
    {
        QStringList names;
        for (const UserPreset &preset : store.presets()) {
            names.append(preset.name);
        }
        return names;
    }

    const TempFolder m_folder;
};

// What may happen to a save from outside, in a program of its own.
class PresetStoreTrouble : public PresetStoreFiles
{
protected:
    PresetStoreTrouble()
    {
        EXPECT_TRUE(QFile::copy(QStringLiteral(MORVIX_PRESET_SAVER), m_saver));
        EXPECT_TRUE(QFile::setPermissions(m_tools.path(), permissions | QFile::WriteOwner));
        EXPECT_TRUE(QFile::setPermissions(m_saver, permissions));
    }

    // Lets a program save some times and kills it at a random moment of the next save; gives the
    // number of the last one that it told of.
    qint64 killAmidSaves(const QStringList &options)
    {
        QProcess saver;
        QByteArray told;
        QElapsedTimer clock;
        clock.start();
        saver.start(m_saver, QStringList{m_folder.path()} + options);
        // Its first line tells of the start.
        while (told.count('\n') <= savesBeforeAKill && saver.waitForReadyRead(20'000)) {
            if (told.isEmpty()) {
                clock.start();
            }
            told += saver.readAllStandardOutput();
        }
        const auto aSave = static_cast<double>(clock.nsecsElapsed()) / 1000 / savesBeforeAKill;
        ::usleep(static_cast<useconds_t>(m_shares(m_random) * aSave));
        saver.kill();
        EXPECT_TRUE(saver.waitForFinished());
        told += saver.readAllStandardOutput();
        return told.trimmed().split('\n').last().toLongLong();
    }

    // The numbers of the saves that a whole list stands for: the latest under each name.
    static QList<qint64> savesIn(const PresetStore &store)
    {
        QList<qint64> saves;
        for (const UserPreset &preset : store.presets()) {
            saves.append(std::get<SplitParams>(preset.spec).parts);
        }
        std::ranges::sort(saves);
        return saves;
    }

    static constexpr QFile::Permissions permissions = QFile::ReadOwner | QFile::ExeOwner |
                                                      QFile::ReadOther | QFile::ExeOther |
                                                      QFile::ReadUser | QFile::ExeUser;
    static constexpr int names = 40;
    static constexpr int savesBeforeAKill = 2;
    // The same moments in each run.
    std::mt19937 m_random{1}; // NOLINT(cert-msc51-cpp)
    std::uniform_real_distribution<double> m_shares{0, 1};
    const TempFolder m_tools;
    const QString m_saver = m_tools.path(u"preset_saver"_s);
};

} // namespace

TEST_F(PresetStoreFiles, an_empty_folder_gives_an_empty_list_and_no_file)
{
    EXPECT_TRUE(store().presets().isEmpty());
    EXPECT_EQ(m_folder.names(), QStringList());
}

TEST_F(PresetStoreFiles, the_folder_is_made_with_those_above_it_at_construction)
{
    const PresetStore store(m_folder.url(u"a/b/Morvix"_s));
    EXPECT_TRUE(QFileInfo(m_folder.path(u"a/b/Morvix"_s)).isDir());
    EXPECT_EQ(store.fileURL(), m_folder.url(u"a/b/Morvix/presets.json"_s));
}

TEST_F(PresetStoreFiles, a_folder_that_cannot_be_made_gives_an_empty_list_that_works)
{
    m_folder.write(u"file"_s, "in the way");
    PresetStore store(m_folder.url(u"file/Morvix"_s));
    store.upsert(u"One"_s, GifParams(), std::nullopt);
    EXPECT_EQ(namesIn(store), QStringList{u"One"_s});
    EXPECT_EQ(contentOf(m_folder.path(u"file"_s)), "in the way");
}

TEST_F(PresetStoreFiles, the_default_folder_is_in_the_users_data)
{
    const ScopedEnvironment environment("XDG_DATA_HOME", m_folder.path().toUtf8());
    EXPECT_EQ(PresetStore().fileURL(), m_folder.url(u"Morvix/presets.json"_s));
}

TEST_F(PresetStoreFiles, the_file_is_indented_json_with_sorted_keys)
{
    m_folder.write(u"presets.json"_s, '[' + presetText("1", "Small", "2026-03-01T14:05:09Z") + ']');
    PresetStore store = this->store();
    store.upsert(u"Small"_s, CompressParams(), m_folder.url(u"out/"_s));

    EXPECT_EQ(contentOf(file()), R"([
    {
        "createdAt": "2026-03-01T14:05:09Z",
        "id": "10293847-5610-4293-8475-610293847561",
        "name": "Small",
        "outputDirectoryPath": ")" + m_folder.path(u"out"_s).toUtf8() +
                                     R"(",
        "spec": {
            "compress": {
                "_0": {
                    "advanced": {
                        "codec": "auto",
                        "extraArgs": "",
                        "hdrPassthrough": false,
                        "preserveAlpha": false
                    },
                    "customHeight": 1080,
                    "mode": "smart",
                    "muted": false,
                    "quality": "balanced",
                    "resolution": "original"
                }
            }
        }
    }
]
)");
}

TEST_F(PresetStoreFiles, what_was_saved_is_there_at_the_next_start)
{
    PresetStore first = store();
    first.upsert(u"片 \"quoted\""_s, EnhanceParams(), m_folder.url(u"out"_s));
    first.upsert(u""_s, AdjustParams(), std::nullopt);

    const PresetStore second = store();

    ASSERT_EQ(namesIn(second), (QStringList{u""_s, u"片 \"quoted\""_s}));
    EXPECT_EQ(second.presets().at(1).spec, PresetSpec(EnhanceParams()));
    EXPECT_EQ(second.presets().at(1).outputDirectoryPath, m_folder.path(u"out"_s));
    EXPECT_EQ(second.presets().at(0).outputDirectoryPath, std::nullopt);
    EXPECT_EQ(second.presets().at(0).id, first.presets().at(0).id);
}

TEST_F(PresetStoreFiles, loading_keeps_the_order_of_the_file_and_the_next_upsert_sorts)
{
    m_folder.write(u"presets.json"_s,
                   '[' + presetText("1", "old", "2020-01-01T00:00:00Z") + ',' +
                       presetText("2", "new", "2030-01-01T00:00:00Z") + ',' +
                       presetText("3", "same age, second", "2025-01-01T00:00:00Z") + ',' +
                       presetText("4", "same age, third", "2025-01-01T00:00:00Z") + ']');
    PresetStore store = this->store();
    EXPECT_EQ(namesIn(store),
              (QStringList{u"old"_s, u"new"_s, u"same age, second"_s, u"same age, third"_s}));

    store.upsert(u"old"_s, GifParams(), std::nullopt);

    EXPECT_EQ(namesIn(store),
              (QStringList{u"new"_s, u"same age, second"_s, u"same age, third"_s, u"old"_s}));
    EXPECT_EQ(namesIn(this->store()), namesIn(store));
}

TEST_F(PresetStoreFiles, a_new_preset_stands_first_however_fast_it_follows)
{
    // Where nothing can be saved, many presets are made within one millisecond.
    m_folder.write(u"file"_s, "in the way");
    PresetStore store(m_folder.url(u"file/Morvix"_s));
    QStringList expected;
    for (int i = 0; i < 100; ++i) {
        store.upsert(QString::number(i), GifParams(), std::nullopt);
        expected.prepend(QString::number(i));
    }
    EXPECT_EQ(namesIn(store), expected);
}

TEST_F(PresetStoreFiles, a_new_preset_is_as_old_as_its_first_save)
{
    PresetStore store = this->store();
    const QDateTime before = QDateTime::currentDateTimeUtc();
    store.upsert(u"one"_s, GifParams(), std::nullopt);
    EXPECT_GE(store.presets().first().createdAt, before);
    EXPECT_LE(store.presets().first().createdAt, QDateTime::currentDateTimeUtc());
}

TEST_F(PresetStoreFiles, an_existing_name_keeps_identity_age_and_place)
{
    PresetStore store = this->store();
    store.upsert(u"one"_s, CompressParams(), m_folder.url(u"out"_s));
    store.upsert(u"two"_s, GifParams(), std::nullopt);
    const UserPreset before = store.presets().at(1);

    store.upsert(u"one"_s, ConvertParams(), std::nullopt);

    ASSERT_EQ(namesIn(store), (QStringList{u"two"_s, u"one"_s}));
    const UserPreset after = store.presets().at(1);
    EXPECT_EQ(after.id, before.id);
    EXPECT_EQ(after.createdAt, before.createdAt);
    EXPECT_EQ(after.spec, PresetSpec(ConvertParams()));
    EXPECT_EQ(after.outputDirectoryPath, std::nullopt);
}

TEST_F(PresetStoreFiles, names_of_equivalent_characters_are_one_name)
{
    PresetStore store = this->store();
    store.upsert(u"Caf\u00e9"_s, GifParams(), std::nullopt);
    store.upsert(u"Cafe\u0301"_s, ExtractParams(), std::nullopt);
    ASSERT_EQ(namesIn(store), QStringList{u"Caf\u00e9"_s});
    EXPECT_EQ(store.presets().first().spec, PresetSpec(ExtractParams()));
}

TEST_F(PresetStoreFiles, names_that_differ_in_case_blanks_or_width_are_different)
{
    PresetStore store = this->store();
    for (const QString &name : {u"web"_s, u"Web"_s, u"web "_s, u"\uff57eb"_s, u"ﬁ"_s, u"fi"_s}) {
        store.upsert(name, GifParams(), std::nullopt);
    }
    EXPECT_EQ(store.presets().size(), 6);
}

TEST_F(PresetStoreFiles, of_two_presets_with_one_name_or_identity_the_first_counts)
{
    m_folder.write(u"presets.json"_s, '[' + presetText("1", "twin", "2026-01-02T00:00:00Z") + ',' +
                                          presetText("1", "twin", "2026-01-01T00:00:00Z") + ']');
    PresetStore store = this->store();
    store.upsert(u"twin"_s, ExtractParams(), std::nullopt);
    EXPECT_EQ(store.presets().at(0).spec, PresetSpec(ExtractParams()));
    EXPECT_EQ(store.presets().at(1).spec, PresetSpec(GifParams()));
    EXPECT_EQ(store.preset(idOf(u'1')), store.presets().at(0));
}

TEST_F(PresetStoreFiles, a_preset_may_be_saved_again_from_the_list_itself)
{
    PresetStore store = this->store();
    store.upsert(u"one"_s, SplitParams(), std::nullopt);
    for (int copy = 0; copy < 20; ++copy) {
        store.upsert(QString::number(copy), store.presets().first().spec, std::nullopt);
    }
    EXPECT_TRUE(std::ranges::all_of(store.presets(), [](const UserPreset &preset) {
        return preset.spec == PresetSpec(SplitParams());
    }));
}

TEST_F(PresetStoreFiles, an_unknown_identity_gives_nothing)
{
    PresetStore store = this->store();
    store.upsert(u"one"_s, GifParams(), std::nullopt);
    EXPECT_EQ(store.preset(QUuid::createUuid()), std::nullopt);
    EXPECT_EQ(store.preset(QUuid()), std::nullopt);
}

TEST_F(PresetStoreFiles, deleting_takes_all_presets_of_the_identity_and_saves)
{
    m_folder.write(u"presets.json"_s, '[' + presetText("1", "a", "2026-01-01T00:00:00Z") + ',' +
                                          presetText("2", "b", "2026-01-01T00:00:00Z") + ',' +
                                          presetText("1", "c", "2026-01-01T00:00:00Z") + ']');
    PresetStore store = this->store();
    store.remove(store.presets().first().id);
    EXPECT_EQ(namesIn(store), QStringList{u"b"_s});
    EXPECT_EQ(namesIn(this->store()), QStringList{u"b"_s});

    store.remove(idOf(u'2'));
    EXPECT_EQ(contentOf(file()), "[]");
    EXPECT_TRUE(this->store().presets().isEmpty());
}

TEST_F(PresetStoreFiles, any_spelling_of_the_same_content_is_read)
{
    const QByteArray preset = presetText("1", "one", "2026-01-01T00:00:00Z");
    EXPECT_EQ(namesAfterLoading("\xef\xbb\xbf \n[\t" + preset + "\r\n]\n"), QStringList{u"one"_s});
    EXPECT_EQ(namesAfterLoading('[' + preset.chopped(1) + R"(, "unknown": [1, {"a": null}]}])"),
              QStringList{u"one"_s});
    EXPECT_EQ(namesAfterLoading("[]"), QStringList());
}

TEST_F(PresetStoreFiles, a_broken_file_is_an_empty_list_and_stays_until_the_next_save)
{
    const QByteArray good = presetText("1", "one", "2026-01-01T00:00:00Z");
    const QByteArray gif = R"("gif": {"_0": {"start": 0, "width": 480, "fps": 15,
        "loopForever": true, "bounce": false, "screenContent": false}})";
    const QByteArray extract =
        R"("extract": {"_0": {"format": "m4a", "bitrateKbps": 192, "audioTrackIndex": 0}})";
    const QByteArray both = '{' + gif + ',' + extract + '}';
    const QByteArrayList broken{
        "",
        " ",
        "{}",
        "null",
        "5",
        "\"text\"",
        "[",
        '[' + good,
        '[' + good + ",]",
        '[' + good + "] x",
        good,
        "[5]",
        "[null]",
        "[[]]",
        '[' + good + ",{}]",
        '[' + presetText("1", "one", "today") + ']',
        '[' + presetText("x", "one", "2026-01-01T00:00:00Z") + ']',
        '[' + presetText("1", "one", "2026-01-01T00:00:00Z", both) + ']',
        '[' + presetText("1", "one", "2026-01-01T00:00:00Z", "{}") + ']',
        '[' + presetText("1", "\\ud800", "2026-01-01T00:00:00Z") + ']',
        '[' + presetText("1", "\xff\xfe", "2026-01-01T00:00:00Z") + ']',
        '[' + presetText("1", "\xed\xa0\x80", "2026-01-01T00:00:00Z") + ']',
        '[' + presetText("1", "a\0b"_ba, "2026-01-01T00:00:00Z") + ']',
        '[' + good + "]\0"_ba,
        '[' + good.chopped(1) + R"(,"name":"one"}])",
        '[' + good.chopped(1) + R"(,"n\u0061me":"two"}])",
        '[' + good.chopped(1) + R"(,"unknown":[{"a":1,"a":1}]}])",
        '[' + QByteArray(good).replace(R"("width":)", R"("width":1,"width":)") + ']',
        '[' +
            presetText("1", "one", "2026-01-01T00:00:00Z",
                       QByteArray(both).replace("480", "1e999")) +
            ']',
    };
    for (const QByteArray &content : broken) {
        EXPECT_EQ(namesAfterLoading(content), QStringList()) << content.toStdString();
        EXPECT_EQ(contentOf(file()), content);
    }
    PresetStore store = this->store();
    store.upsert(u"new"_s, GifParams(), std::nullopt);
    EXPECT_EQ(namesIn(this->store()), QStringList{u"new"_s});
}

TEST_F(PresetStoreFiles, hostile_files_are_refused_in_time)
{
    const auto repeated = [](const QByteArray &piece, qsizetype bytes) {
        return QByteArray(piece).repeated(bytes / piece.size());
    };
    const qsizetype most = JsonFile::mostBytes - 10;
    const QByteArray twins = '{' + repeated(R"("a":0,)", most) + R"("a":0})";
    QElapsedTimer clock;
    for (const QByteArray &content :
         {QByteArray(1'000'000, '['), repeated(R"({"a":)", 1'000'000), repeated("[[0]],", most),
          '[' + repeated("[[0]],", most) + "0]", '[' + repeated(R"({"":0},)", most) + "0]",
          QByteArray(most, ' '), '[' + twins + ']', '"' + QByteArray(most, 'x')}) {
        clock.start();
        EXPECT_EQ(namesAfterLoading(content), QStringList());
        EXPECT_LT(clock.elapsed(), 10'000) << content.first(10).toStdString();
    }
}

TEST_F(PresetStoreFiles, a_file_above_the_limit_is_not_read)
{
    const QByteArray good = '[' + presetText("1", "one", "2026-01-01T00:00:00Z") + ']';
    const qsizetype blanks = JsonFile::mostBytes - good.size();
    EXPECT_EQ(namesAfterLoading(good + QByteArray(blanks, ' ')), QStringList{u"one"_s});
    EXPECT_EQ(namesAfterLoading(good + QByteArray(blanks + 1, ' ')), QStringList());

    m_folder.write(u"presets.json"_s, good);
    ASSERT_TRUE(QFile::resize(file(), 100'000'000'000));
    EXPECT_EQ(namesIn(store()), QStringList());
}

TEST_F(PresetStoreFiles, what_is_no_regular_file_is_neither_read_nor_replaced)
{
    ASSERT_EQ(::mkfifo(file().toUtf8().constData(), 0600), 0);
    PresetStore store = this->store();
    store.upsert(u"one"_s, GifParams(), std::nullopt);
    EXPECT_EQ(m_folder.names(), QStringList());
    EXPECT_FALSE(QFileInfo(file()).isFile());

    ASSERT_TRUE(QFile::remove(file()));
    ASSERT_TRUE(QDir().mkpath(file()));
    store.upsert(u"one"_s, GifParams(), std::nullopt);
    EXPECT_EQ(namesIn(this->store()), QStringList());
    EXPECT_EQ(m_folder.names(), QStringList{u"presets.json"_s});
}

TEST_F(PresetStoreFiles, a_list_that_no_reader_would_take_is_not_written)
{
    PresetStore store = this->store();
    store.upsert(u"one"_s, TargetSizeParams(), std::nullopt);
    const QByteArray before = contentOf(file());

    TargetSizeParams endless;
    endless.targetMB = std::numeric_limits<double>::infinity();
    store.upsert(u"two"_s, endless, std::nullopt);

    EXPECT_EQ(contentOf(file()), before);
    EXPECT_EQ(namesIn(store), (QStringList{u"two"_s, u"one"_s}));

    store.upsert(u"two"_s, TargetSizeParams(), std::nullopt);
    EXPECT_EQ(namesIn(this->store()), namesIn(store));
}

TEST_F(PresetStoreFiles, a_list_above_the_limit_is_not_written)
{
    PresetStore store = this->store();
    store.upsert(u"one"_s, GifParams(), std::nullopt);
    store.upsert(QString(JsonFile::mostBytes, u'x'), GifParams(), std::nullopt);
    EXPECT_EQ(store.presets().size(), 2);
    EXPECT_EQ(namesIn(this->store()), QStringList{u"one"_s});
}

TEST_F(PresetStoreFiles, a_save_keeps_permissions_and_follows_a_link)
{
    m_folder.write(u"elsewhere/list.json"_s, "[]");
    const QString target = m_folder.path(u"elsewhere/list.json"_s);
    ASSERT_TRUE(QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner));
    ASSERT_TRUE(QFile::link(target, file()));

    PresetStore store = this->store();
    store.upsert(u"one"_s, GifParams(), std::nullopt);

    EXPECT_TRUE(QFileInfo(file()).isSymLink());
    EXPECT_EQ(namesIn(this->store()), QStringList{u"one"_s});
    struct stat status {
    };
    ASSERT_EQ(::stat(target.toUtf8().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    EXPECT_EQ(QDir(m_folder.path(u"elsewhere"_s)).entryList(QDir::Files | QDir::Hidden),
              QStringList{u"list.json"_s});
}

TEST_F(PresetStoreFiles, a_save_removes_what_killed_ones_left_and_nothing_else)
{
    m_folder.write(u"mx-presets.json"_s, "torn");
    m_folder.write(u"mx-presets.json.AbCdEf"_s, "torn");
    m_folder.write(u"mx-presets.json.zzzzzz"_s, "torn");
    const QStringList others{u"mx-other.json.AbCdEf"_s, u"mx-presets.json.long-name"_s,
                             u"presets-old.json"_s, u"presets.json.backup"_s};
    for (const QString &name : others) {
        m_folder.write(name, "kept");
    }
    store().upsert(u"one"_s, GifParams(), std::nullopt);
    QStringList expected = others + QStringList{u"presets.json"_s};
    expected.sort();
    EXPECT_EQ(m_folder.names(), expected);
}

TEST_F(PresetStoreTrouble, a_program_killed_while_it_saves_leaves_the_old_list_or_the_new_one)
{
    ASSERT_EQ(runCommand(m_saver, {m_folder.path(), QString::number(names)}).exitCode, 0);
    const QStringList forEver;
    const QStringList forEverWithNamedFiles{u"1000000000"_s, u"named"_s};
    constexpr int kills = 250;
    qint64 saves = 0;
    int killsWithinASave = 0;
    for (int kill = 0; kill < kills; ++kill) {
        const qint64 told = killAmidSaves(kill % 2 == 0 ? forEver : forEverWithNamedFiles);

        const QList<qint64> left = savesIn(store());
        ASSERT_EQ(left.size(), names) << contentOf(file()).toStdString();
        ASSERT_EQ(left.last() - left.first(), names - 1);
        ASSERT_TRUE(left.last() == told || left.last() == told + 1) << told << ' ' << left.last();
        saves = left.last() - names;

        killsWithinASave += m_folder.names().size() > 1 ? 1 : 0;
        store().remove(QUuid());
        ASSERT_EQ(m_folder.names(), QStringList{u"presets.json"_s});
        ASSERT_EQ(savesIn(store()), left);
    }
    RecordProperty("kills", kills);
    RecordProperty("saves", std::to_string(saves));
    RecordProperty("killsWithinASave", killsWithinASave);
    EXPECT_GE(saves, 500);
    EXPECT_GT(killsWithinASave, 0) << "no kill has met a save";
}

TEST_F(PresetStoreTrouble, a_full_disk_leaves_the_old_list)
{
    const QString disk = m_folder.path(u"disk"_s);
    const QStringList smallDisk = onSmallDisk(disk, 100);
    if (smallDisk.isEmpty()) {
        GTEST_SKIP() << "this machine lets nobody mount a small disk";
    }
    const QString script = u"\"$1\" \"$0\" 40 && cp \"$0/presets.json\" \"$2/before\"\n"
                           "cat /dev/zero > \"$0/filler\"\n"
                           "\"$1\" \"$0\" 1; cp \"$0/presets.json\" \"$2/after\"\n"
                           "ls -A \"$0\" > \"$2/names\""_s;
    runCommand(smallDisk.first(), smallDisk.sliced(1) + QStringList{u"sh"_s, u"-c"_s, script, disk,
                                                                    m_saver, m_folder.path()});

    EXPECT_GT(contentOf(m_folder.path(u"before"_s)).size(), 10'000);
    EXPECT_EQ(contentOf(m_folder.path(u"after"_s)), contentOf(m_folder.path(u"before"_s)));
    EXPECT_EQ(contentOf(m_folder.path(u"names"_s)), "filler\npresets.json\n");
}

TEST_F(PresetStoreTrouble, a_folder_that_may_not_be_written_keeps_the_old_list)
{
    ASSERT_EQ(runCommand(m_saver, {m_folder.path(), QString::number(names)}).exitCode, 0);
    const QByteArray before = contentOf(file());
    ASSERT_TRUE(QFile::setPermissions(m_folder.path(), permissions));
    // Root may write everywhere, so the saver runs as somebody else.
    const QStringList nobody =
        ::geteuid() == 0
            ? QStringList{u"setpriv"_s, u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s}
            : QStringList{u"env"_s};

    const CommandResult result = runCommand(
        nobody.first(), nobody.sliced(1) + QStringList{m_saver, m_folder.path(), u"1"_s});

    ASSERT_TRUE(QFile::setPermissions(m_folder.path(), permissions | QFile::WriteOwner));
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    EXPECT_EQ(contentOf(file()), before);
    EXPECT_EQ(m_folder.names(), QStringList{u"presets.json"_s});
}
