// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/Settings.h"

#include "support/TempFolder.h"
#include "support/Unprivileged.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

class SettingsTest : public ::testing::Test
{
protected:
    QString path() const { return m_folder.path(u"Morvix/Morvix.conf"_s); }

    /// A store over a file that holds this and nothing else.
    Settings holding(const QByteArray &content)
    {
        // A name of its own each time: a file of the same size and moment might not be read again.
        return Settings(m_folder.write(QString::number(++m_files) + u".conf"_s, content));
    }

    /// The value of the one entry of a file, as it is written there.
    Settings entry(const QByteArray &value) { return holding("[General]\nkey=" + value + "\n"); }

    const TempFolder m_folder;
    int m_files = 0;
};

} // namespace

TEST_F(SettingsTest, the_file_stands_in_the_users_folder_of_configurations)
{
    const ScopedEnvironment home("HOME", "/home/somebody");
    {
        const ScopedEnvironment configurations("XDG_CONFIG_HOME", m_folder.path().toUtf8());
        EXPECT_EQ(Settings::defaultPath(), path());
    }
    const ScopedEnvironment unset("XDG_CONFIG_HOME", "");
    EXPECT_EQ(Settings::defaultPath(), u"/home/somebody/.config/Morvix/Morvix.conf"_s);
}

TEST_F(SettingsTest, without_a_path_the_users_file_is_taken)
{
    const ScopedEnvironment configurations("XDG_CONFIG_HOME", m_folder.path().toUtf8());
    Settings().setText(u"mx.template"_s, u"{name}"_s);

    EXPECT_EQ(Settings(path()).text(u"mx.template"_s), u"{name}"_s);
}

TEST_F(SettingsTest, what_was_never_set_is_absent)
{
    const Settings settings(path());

    EXPECT_EQ(settings.text(u"mx.template"_s), std::nullopt);
    EXPECT_EQ(settings.boolean(u"mx.notify"_s), std::nullopt);
    EXPECT_EQ(settings.integer(u"mx.concurrency"_s), std::nullopt);
}

TEST_F(SettingsTest, looking_writes_nothing)
{
    {
        const Settings settings(path());
        EXPECT_EQ(settings.text(u"mx.template"_s), std::nullopt);
    }
    EXPECT_EQ(m_folder.names(), QStringList());
}

TEST_F(SettingsTest, what_is_set_reads_at_once)
{
    Settings settings(path());
    settings.setText(u"mx.template"_s, u"a"_s);
    settings.setBoolean(u"mx.notify"_s, false);
    settings.setInteger(u"mx.concurrency"_s, 3);

    EXPECT_EQ(settings.text(u"mx.template"_s), u"a"_s);
    EXPECT_EQ(settings.boolean(u"mx.notify"_s), false);
    EXPECT_EQ(settings.integer(u"mx.concurrency"_s), 3);
}

TEST_F(SettingsTest, the_file_is_plain_text_with_the_keys_as_they_are)
{
    {
        Settings settings(path());
        settings.setText(u"mx.language"_s, u"zh-Hans"_s);
        settings.setBoolean(u"mx.notify"_s, false);
        settings.setBoolean(u"mx.sound"_s, true);
        settings.setInteger(u"mx.concurrency"_s, 5);
    }
    const QByteArrayList lines = contentOf(path()).split('\n');
    for (const char *line :
         {"mx.language=zh-Hans", "mx.notify=false", "mx.sound=true", "mx.concurrency=5"}) {
        EXPECT_TRUE(lines.contains(line)) << line;
    }
}

TEST_F(SettingsTest, every_text_comes_back_as_it_was)
{
    const QStringList texts{u""_s,
                            u" "_s,
                            u" a b "_s,
                            u"{name}{suffix}-{date}"_s,
                            u"a, b"_s,
                            u"a;b"_s,
                            u"\"quoted\" 'too'"_s,
                            u"/films/100% %20 #1?.d"_s,
                            u"back\\slash\\n"_s,
                            u"line\nfeed\ttab\r"_s,
                            u"@"_s,
                            u"@Invalid()"_s,
                            u"@Variant(x)"_s,
                            u"@@"_s,
                            u"片 😀 é"_s,
                            u"[section]"_s,
                            u"key=value"_s,
                            u"true"_s,
                            u"5"_s,
                            QString(3, QChar(u'\0')),
                            QString(100'000, u'x')};
    for (qsizetype i = 0; i < texts.size(); ++i) {
        Settings(path()).setText(u"key%1"_s.arg(i), texts.at(i));
    }
    const QString copy = m_folder.write(u"copy.conf"_s, contentOf(path()));
    const Settings settings(copy);
    for (qsizetype i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(settings.text(u"key%1"_s.arg(i)), texts.at(i));
    }
}

TEST_F(SettingsTest, every_integer_comes_back_as_it_was)
{
    for (const qint64 number :
         {qint64(0), qint64(-1), qint64(5), std::numeric_limits<qint64>::min(),
          std::numeric_limits<qint64>::max()}) {
        Settings(path()).setInteger(u"key"_s, number);
        const QString copy = m_folder.write(u"copy %1.conf"_s.arg(number), contentOf(path()));
        EXPECT_EQ(Settings(copy).integer(u"key"_s), number);
    }
}

TEST_F(SettingsTest, a_text_is_one_text)
{
    EXPECT_EQ(entry("plain").text(u"key"_s), u"plain"_s);
    EXPECT_EQ(entry("\"a, b\"").text(u"key"_s), u"a, b"_s);
    EXPECT_EQ(entry("").text(u"key"_s), u""_s);
    EXPECT_EQ(entry("5").text(u"key"_s), u"5"_s);
    for (const char *wrong :
         {"a, b", "@Invalid()", "@ByteArray(abc)", "@Size(1 2)", "@Rect(0 0 1 1)", "@Point(1 2)"}) {
        EXPECT_EQ(entry(wrong).text(u"key"_s), std::nullopt) << wrong;
    }
}

TEST_F(SettingsTest, a_boolean_is_true_or_false)
{
    EXPECT_EQ(entry("true").boolean(u"key"_s), true);
    EXPECT_EQ(entry("false").boolean(u"key"_s), false);
    for (const char *wrong : {"", "maybe", "2", "tru", "true, false", "@Invalid()", "truefalse"}) {
        EXPECT_EQ(entry(wrong).boolean(u"key"_s), std::nullopt) << wrong;
    }
}

TEST_F(SettingsTest, an_integer_is_digits_and_nothing_else)
{
    EXPECT_EQ(entry("5").integer(u"key"_s), 5);
    EXPECT_EQ(entry("-5").integer(u"key"_s), -5);
    for (const char *wrong : {"", "two", "2.5", "2 jobs", "0x2", "1,2", "true", "@Invalid()",
                              "9223372036854775808", "1e1"}) {
        EXPECT_EQ(entry(wrong).integer(u"key"_s), std::nullopt) << wrong;
    }
}

TEST_F(SettingsTest, a_removed_value_is_absent)
{
    {
        Settings settings(path());
        settings.setText(u"mx.outdir"_s, u"/films"_s);
        settings.setText(u"mx.template"_s, u"a"_s);
    }
    {
        Settings settings(path());
        settings.remove(u"mx.outdir"_s);
        settings.remove(u"mx.never"_s);
        EXPECT_EQ(settings.text(u"mx.outdir"_s), std::nullopt);
    }
    EXPECT_FALSE(contentOf(path()).contains("mx.outdir"));
    EXPECT_EQ(Settings(path()).text(u"mx.template"_s), u"a"_s);
}

TEST_F(SettingsTest, what_others_wrote_stays)
{
    const QString file = m_folder.write(
        u"shared.conf"_s, "[General]\nmx.later=x\nmx.sound=false\n\n[Window]\nwidth=920\n");

    Settings(file).setText(u"mx.template"_s, u"a"_s);

    const QString copy = m_folder.write(u"copy.conf"_s, contentOf(file));
    EXPECT_EQ(Settings(copy).text(u"mx.later"_s), u"x"_s);
    EXPECT_EQ(Settings(copy).boolean(u"mx.sound"_s), false);
    EXPECT_EQ(Settings(copy).text(u"Window/width"_s), u"920"_s);
    EXPECT_EQ(Settings(copy).text(u"mx.template"_s), u"a"_s);
}

TEST_F(SettingsTest, dropped_writing_reads_the_file_and_leaves_it_alone)
{
    const QByteArray content = "[General]\nmx.outdir=/films\nmx.concurrency=3\n";
    const QString file = m_folder.write(u"kept.conf"_s, content);
    {
        Settings settings(file, Settings::Writing::dropped);
        EXPECT_EQ(settings.integer(u"mx.concurrency"_s), 3);
        settings.setText(u"mx.template"_s, u"a"_s);
        settings.setBoolean(u"mx.notify"_s, false);
        settings.setInteger(u"mx.concurrency"_s, 1);
        settings.remove(u"mx.outdir"_s);
        EXPECT_EQ(settings.text(u"mx.outdir"_s), u"/films"_s);
        EXPECT_EQ(settings.integer(u"mx.concurrency"_s), 3);
    }
    EXPECT_EQ(contentOf(file), content);
    EXPECT_EQ(m_folder.names(), QStringList{u"kept.conf"_s});
}

TEST_F(SettingsTest, dropped_writing_makes_no_file)
{
    Settings(path(), Settings::Writing::dropped).setText(u"mx.template"_s, u"a"_s);

    EXPECT_EQ(m_folder.names(), QStringList());
}

TEST_F(SettingsTest, a_file_that_cant_be_read_is_an_empty_one)
{
    QByteArray rubbish;
    for (int i = 0; i < 4096; ++i) {
        rubbish += static_cast<char>((i * 7919) >> 3);
    }
    for (const QByteArray &content :
         {QByteArray(), "\0\0\0"_ba, rubbish, QByteArray("[General"),
          QByteArray("[General]\nmx.template"), QByteArray("no format at all"),
          QByteArray("{\"mx.template\": \"a\"}"), QByteArray("[Other]\nmx.template=a\n")}) {
        Settings settings = holding(content);
        EXPECT_EQ(settings.text(u"mx.template"_s).value_or(QString()), QString())
            << content.left(40).toStdString();
        EXPECT_EQ(settings.boolean(u"mx.template"_s), std::nullopt);
        EXPECT_EQ(settings.integer(u"mx.concurrency"_s), std::nullopt);
    }
}

TEST_F(SettingsTest, a_rubbish_file_takes_new_values)
{
    const QString file = m_folder.write(u"rubbish.conf"_s, "\x01\xff]]=[\n[[[\n=\n\\x\n\0\n"_ba);
    Settings(file).setText(u"mx.template"_s, u"a"_s);

    const QString copy = m_folder.write(u"copy.conf"_s, contentOf(file));
    EXPECT_EQ(Settings(copy).text(u"mx.template"_s), u"a"_s);
}

TEST_F(SettingsTest, a_file_that_is_cut_anywhere_gives_what_is_whole)
{
    const QByteArray whole = "[General]\nmx.notify=false\nmx.concurrency=3\nmx.language=zh-Hans\n";
    for (qsizetype length = 0; length < whole.size(); ++length) {
        Settings settings = holding(whole.first(length));
        const bool hasNotify = length >= whole.indexOf("\nmx.concurrency");
        EXPECT_EQ(settings.boolean(u"mx.notify"_s), hasNotify ? std::optional(false) : std::nullopt)
            << length;
        EXPECT_EQ(settings.integer(u"mx.concurrency"_s), length >= whole.indexOf("\nmx.language")
                                                             ? std::optional<qint64>(3)
                                                             : std::nullopt)
            << length;
    }
}

TEST_F(SettingsTest, a_folder_in_the_files_place_is_no_trouble)
{
    ASSERT_TRUE(QDir().mkpath(path()));
    {
        Settings settings(path());
        EXPECT_EQ(settings.text(u"mx.template"_s), std::nullopt);
        settings.setText(u"mx.template"_s, u"a"_s);
        settings.remove(u"mx.outdir"_s);
        EXPECT_EQ(settings.text(u"mx.template"_s), u"a"_s) << "it holds for this run";
    }
    EXPECT_TRUE(QFileInfo(path()).isDir());
}

TEST_F(SettingsTest, a_file_in_the_folders_place_is_no_trouble)
{
    m_folder.write(u"Morvix"_s, "not a folder");
    {
        Settings settings(path());
        EXPECT_EQ(settings.text(u"mx.template"_s), std::nullopt);
        settings.setText(u"mx.template"_s, u"a"_s);
    }
    EXPECT_EQ(contentOf(m_folder.path(u"Morvix"_s)), "not a folder");
}

TEST_F(SettingsTest, a_file_that_may_not_be_read_is_an_empty_one)
{
    const QString file = m_folder.write(u"closed.conf"_s, "[General]\nmx.template=a\n");
    ASSERT_TRUE(QFile::setPermissions(file, {}));
    const Unprivileged unprivileged(m_folder);
    ASSERT_FALSE(QFileInfo(file).isReadable());

    EXPECT_EQ(Settings(file).text(u"mx.template"_s), std::nullopt);
}

TEST_F(SettingsTest, a_moved_store_is_the_same_store)
{
    Settings first(path());
    first.setText(u"mx.template"_s, u"a"_s);
    Settings second(std::move(first));
    EXPECT_EQ(second.text(u"mx.template"_s), u"a"_s);

    Settings dropped(m_folder.path(u"other.conf"_s), Settings::Writing::dropped);
    second = std::move(dropped);
    second.setText(u"mx.template"_s, u"b"_s);
    EXPECT_EQ(second.text(u"mx.template"_s), std::nullopt);
    EXPECT_EQ(Settings(path()).text(u"mx.template"_s), u"a"_s);
}
