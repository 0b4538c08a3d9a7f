// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/QueueFile.h"

#include "Engine/FileError.h"
#include "Engine/JsonFile.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <limits>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray extractEntry = R"({"path": "/films/a.mov", "spec": {"extract": {"_0":
    {"format": "m4a", "bitrateKbps": 192, "audioTrackIndex": 0}}}})";

QList<ExportedJob> oneOfEachKind()
{
    return {{u"/films/1.mov"_s, TargetSizeParams()}, {u"/films/2.mov"_s, ConvertParams()},
            {u"/films/3.mov"_s, CompressParams()},   {u"/films/4.mov"_s, ExtractParams()},
            {u"/films/5.mov"_s, GifParams()},        {u"/films/6.mov"_s, EnhanceParams()},
            {u"/films/7.mov"_s, MergeParams()},      {u"/films/8.mov"_s, SplitParams()},
            {u"/films/9.mov"_s, AdjustParams()}};
}

// Empty when the document is taken.
QString refusalOf(const QByteArray &json)
{
    try {
        QueueFile::decode(json);
        return {};
    } catch (const Json::DecodeError &error) {
        return error.errorDescription();
    }
}

} // namespace

TEST(QueueFile, is_an_indented_list_with_sorted_keys_in_queue_order)
{
    EXPECT_EQ(QueueFile::encode({{u"/films/second \"片\".mov"_s, GifParams()},
                                 {u"/films/first.mov"_s, ExtractParams()}}),
              R"([
    {
        "path": "/films/second \"片\".mov",
        "spec": {
            "gif": {
                "_0": {
                    "bounce": false,
                    "fps": 15,
                    "loopForever": true,
                    "screenContent": false,
                    "start": 0,
                    "width": 480
                }
            }
        }
    },
    {
        "path": "/films/first.mov",
        "spec": {
            "extract": {
                "_0": {
                    "audioTrackIndex": 0,
                    "bitrateKbps": 192,
                    "format": "m4a"
                }
            }
        }
    }
]
)");
}

TEST(QueueFile, an_empty_queue_is_an_empty_list)
{
    EXPECT_EQ(QueueFile::encode({}), "[]");
    EXPECT_TRUE(QueueFile::decode("[]").isEmpty());
    EXPECT_TRUE(QueueFile::decode(" [ \n ] ").isEmpty());
}

TEST(QueueFile, every_kind_of_job_comes_back_in_order)
{
    EXPECT_EQ(QueueFile::decode(QueueFile::encode(oneOfEachKind())), oneOfEachKind());
}

TEST(QueueFile, a_path_is_taken_as_it_stands)
{
    for (const QString &path : {u""_s, u"relative.mov"_s, u"/a//b/../c .mov"_s, u":/x"_s,
                                u"/100%25.mov"_s, u"/line\nbreak"_s, u"/Cafe\u0301.mov"_s}) {
        const QList<ExportedJob> jobs{{path, ExtractParams()}};
        EXPECT_EQ(QueueFile::decode(QueueFile::encode(jobs)), jobs) << path.toStdString();
    }
}

TEST(QueueFile, unknown_keys_are_ignored)
{
    const QByteArray entry = extractEntry.chopped(1) + R"(, "state": "queued", "note": [1]})";
    EXPECT_EQ(QueueFile::decode('[' + entry + ']'),
              (QList<ExportedJob>{{u"/films/a.mov"_s, ExtractParams()}}));
}

TEST(QueueFile, one_wrong_entry_refuses_all_of_it)
{
    struct Case {
        QByteArray entry;
        QString refusal;
    };
    const QList<Case> cases{
        {"5", u"[1]: an object is expected"_s},
        {"null", u"[1]: an object is expected"_s},
        {"{}", u"[1].path: the key is missing"_s},
        {R"({"path": "/a"})", u"[1].spec: the key is missing"_s},
        {R"({"path": 5, "spec": {}})", u"[1].path: a text is expected"_s},
        {R"({"path": "/a", "spec": {}})",
         u"[1].spec: Invalid number of keys found, expected one."_s},
        {R"({"path": "/a", "spec": {"trim": {"_0": {"segments": []}}}})",
         u"[1].spec: Invalid number of keys found, expected one."_s},
        {R"({"path": "/a", "spec": {"gif": {"_0": {}}}})",
         u"[1].spec.gif._0.start: the key is missing"_s},
        {QByteArray(extractEntry).replace("m4a", "ogg"),
         u"[1].spec.extract._0.format: the word \"ogg\" isn't known"_s},
        {QByteArray(extractEntry).replace("192", "19.2"),
         u"[1].spec.extract._0.bitrateKbps: a whole number is expected"_s},
        {QByteArray(extractEntry).replace("192", "1e30"),
         u"[1].spec.extract._0.bitrateKbps: a whole number is expected"_s},
        {QByteArray(extractEntry).replace("a.mov", "\\udc00"),
         u"[1].path: a text of whole characters is expected"_s},
        {QByteArray(extractEntry).replace("a.mov", "a\\u0000.mov"),
         u"a path without NUL is expected"_s},
    };
    for (const Case &wrong : cases) {
        EXPECT_EQ(refusalOf('[' + extractEntry + ',' + wrong.entry + ']'), wrong.refusal);
    }
}

TEST(QueueFile, what_is_no_list_is_refused)
{
    for (const QByteArray &json :
         {""_ba, "{}"_ba, "5"_ba, "null"_ba, "[1,]"_ba, "[] []"_ba, extractEntry, "[]\0"_ba,
          "[\"\xff\"]"_ba, QByteArray(2000, '[') + QByteArray(2000, ']')}) {
        EXPECT_NE(refusalOf(json), u""_s) << json.toStdString();
    }
}

TEST(QueueFile, a_key_that_stands_twice_in_one_object_refuses_all_of_it)
{
    for (const QByteArray &twice :
         {R"("path": "/films/b.mov", "path")"_ba, R"("path": "/films/a.mov", "path")"_ba,
          R"("p\u0061th": "/films/b.mov", "path")"_ba}) {
        const QByteArray entry = QByteArray(extractEntry).replace("\"path\"", twice);
        EXPECT_EQ(refusalOf('[' + extractEntry + ',' + entry + ']'),
                  u"the key \"path\" stands twice in one object"_s);
    }
    const QByteArray deep = QByteArray(extractEntry).replace("\"format\"", "\"bitrateKbps\"");
    EXPECT_EQ(refusalOf('[' + deep + ']'), u"the key \"bitrateKbps\" stands twice in one object"_s);
    const QByteArray unknown = extractEntry.chopped(1) + R"(, "note": {"a": 1, "a": 1}})";
    EXPECT_EQ(refusalOf('[' + unknown + ']'), u"the key \"a\" stands twice in one object"_s);
}

TEST(QueueFile, what_was_written_is_read)
{
    const TempFolder folder;
    const QUrl url = folder.url(u"queue.json"_s);
    folder.write(u"queue.json"_s, "an older file");

    EXPECT_TRUE(QueueFile::write(url, oneOfEachKind()));

    EXPECT_EQ(contentOf(folder.path(u"queue.json"_s)), QueueFile::encode(oneOfEachKind()));
    EXPECT_EQ(QueueFile::read(url), oneOfEachKind());
    EXPECT_EQ(folder.names(), QStringList{u"queue.json"_s});
}

TEST(QueueFile, a_file_that_cannot_be_written_is_told_and_left)
{
    const TempFolder folder;
    folder.write(u"file"_s, "in the way");
    EXPECT_FALSE(QueueFile::write(folder.url(u"file/queue.json"_s), {}));
    EXPECT_FALSE(QueueFile::write(folder.url(u"missing/queue.json"_s), {}));
    EXPECT_FALSE(QueueFile::write(folder.url({}), {}));
    EXPECT_EQ(folder.names(), QStringList{u"file"_s});
}

TEST(QueueFile, a_queue_that_could_not_be_read_again_is_not_written)
{
    const TempFolder folder;
    folder.write(u"queue.json"_s, "old");
    GifParams endless;
    endless.start = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(QueueFile::write(folder.url(u"queue.json"_s), {{u"/a.mov"_s, endless}}));
    EXPECT_FALSE(QueueFile::write(folder.url(u"queue.json"_s),
                                  {{QString(JsonFile::mostBytes, u'x'), GifParams()}}));
    EXPECT_EQ(contentOf(folder.path(u"queue.json"_s)), "old");
}

TEST(QueueFile, ten_thousand_jobs_fit)
{
    const TempFolder folder;
    QList<ExportedJob> jobs;
    for (int i = 0; i < 10'000; ++i) {
        jobs.append({u"/home/somebody/Videos/holiday/clip-%1.mov"_s.arg(i), TargetSizeParams()});
    }
    EXPECT_TRUE(QueueFile::write(folder.url(u"queue.json"_s), jobs));
    EXPECT_EQ(QueueFile::read(folder.url(u"queue.json"_s)), jobs);
}

TEST(QueueFile, a_long_queue_of_long_names_fits_too)
{
    const TempFolder folder;
    const QList<ExportedJob> jobs(13'000,
                                  {u'/' + QString(200, u'n') + u".mov"_s, TargetSizeParams()});
    EXPECT_TRUE(QueueFile::write(folder.url(u"queue.json"_s), jobs));
    EXPECT_EQ(QueueFile::read(folder.url(u"queue.json"_s)), jobs);
}

TEST(QueueFile, a_document_of_more_values_than_any_queue_is_refused_unread)
{
    const QByteArray most = '[' + QByteArray("[],").repeated(JsonFile::mostValues / 2) + "[]]";
    EXPECT_THROW(QueueFile::decode(most), Json::DecodeError);
}

TEST(QueueFile, a_character_that_marks_byte_orders_elsewhere_stays_at_the_head_of_a_path)
{
    const QList<ExportedJob> jobs{{u"\uFEFF/a.mov"_s, GifParams()}};
    EXPECT_EQ(QueueFile::decode(QueueFile::encode(jobs)), jobs);
}

TEST(QueueFile, files_that_cannot_be_read_or_are_none_are_told)
{
    const TempFolder folder;
    folder.write(u"large.json"_s, "[]");
    ASSERT_TRUE(QFile::resize(folder.path(u"large.json"_s), JsonFile::mostBytes + 1));
    folder.write(u"folder/file"_s, "");
    ASSERT_EQ(::mkfifo(folder.path(u"pipe"_s).toUtf8().constData(), 0600), 0);
    for (const QString &name : {u"missing.json"_s, u"folder"_s, u"pipe"_s, u"large.json"_s,
                                u"folder/file/queue.json"_s}) {
        EXPECT_THROW(QueueFile::read(folder.url(name)), FileError) << name.toStdString();
    }
    EXPECT_THROW(QueueFile::read(QUrl::fromLocalFile(u"/dev/zero"_s)), FileError);
    EXPECT_THROW(QueueFile::read(folder.url(u"folder/file"_s)), Json::DecodeError);
}
