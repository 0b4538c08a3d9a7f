// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/OutputNaming.h"

#include "support/TempFolder.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QUuid>

#include <gtest/gtest.h>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QUrl file(const QString &path)
{
    return QUrl::fromLocalFile(path);
}

QString rendered(const std::optional<QString> &nameTemplate,
                 const QString &source = u"/films/holiday.mov"_s)
{
    return OutputNaming::renderBase(file(source), u"25MB"_s, u"mp4"_s, nameTemplate);
}

// What a source is called in the default form, its suffix taken off.
QString nameOf(const QString &source)
{
    QString name = rendered(std::nullopt, source);
    EXPECT_TRUE(name.endsWith(u"-25MB"_s)) << name.toStdString();
    name.chop(5);
    return name;
}

QString today()
{
    return QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat);
}

// Renders within one day, so that the expected date is the rendered one even at midnight.
template <typename Render> std::pair<QString, QString> renderedWithDate(Render render)
{
    for (;;) {
        const QString before = today();
        const QString text = render();
        if (today() == before) {
            return {text, before};
        }
    }
}

QString uniqueName(const TempFolder &folder, const QString &name)
{
    const QUrl url = OutputNaming::unique(folder.url(name));
    EXPECT_EQ(QFileInfo(url.toLocalFile()).path(), folder.path());
    return QFileInfo(url.toLocalFile()).fileName();
}

} // namespace

TEST(OutputNaming, without_a_template_the_name_and_the_suffix_are_joined)
{
    EXPECT_EQ(rendered(std::nullopt), u"holiday-25MB"_s);
}

TEST(OutputNaming, an_empty_or_blank_template_counts_as_none)
{
    for (const QString &blank : {u""_s, QString(), u" "_s, u"    "_s, u"\t"_s, u" \t "_s}) {
        EXPECT_EQ(rendered(blank), u"holiday-25MB"_s);
    }
}

TEST(OutputNaming, the_template_loses_its_outer_blanks_only)
{
    EXPECT_EQ(rendered(u"  {name}  of \t {suffix} \t"_s), u"holiday  of \t 25MB"_s);
}

TEST(OutputNaming, a_line_break_is_no_blank)
{
    EXPECT_EQ(rendered(u"\n"_s), u"\n"_s);
    EXPECT_EQ(rendered(u" {name}\n"_s), u"holiday\n"_s);
}

TEST(OutputNaming, the_extension_of_the_source_is_taken_off_once)
{
    struct Row {
        QString source;
        QString name;
    };
    const QList<Row> table{
        {u"/films/holiday.mov"_s, u"holiday"_s},
        {u"/films/a.b.mov"_s, u"a.b"_s},
        {u"/films/HOLIDAY.MOV"_s, u"HOLIDAY"_s},
        {u"/films/holiday"_s, u"holiday"_s},
        {u"/films.d/holiday"_s, u"holiday"_s},
        {u"/films/archive.tar.gz"_s, u"archive.tar"_s},
        {u"/films/holiday."_s, u"holiday."_s},
        {u"/films/.hidden"_s, u".hidden"_s},
        {u"/films/.hidden.mov"_s, u".hidden"_s},
        {u"/films/two words.mp4"_s, u"two words"_s},
        {u"/films/100%20 #1?.mp4"_s, u"100%20 #1?"_s},
        {u"/films/%1-%2.mp4"_s, u"%1-%2"_s},
        {u"/films/假期😀.mp4"_s, u"假期😀"_s},
        {u"/films/it's \"it\".mp4"_s, u"it's \"it\""_s},
        {u"/holiday.mov"_s, u"holiday"_s},
    };
    for (const Row &row : table) {
        EXPECT_EQ(nameOf(row.source), row.name) << row.source.toStdString();
    }
}

TEST(OutputNaming, a_folder_is_named_by_its_last_component)
{
    EXPECT_EQ(nameOf(u"/films/holiday.d/"_s), u"holiday"_s);
}

TEST(OutputNaming, every_token_is_replaced_wherever_it_stands)
{
    struct Row {
        QString nameTemplate;
        QString expected;
    };
    const QList<Row> table{
        {u"{name}"_s, u"holiday"_s},
        {u"{suffix}"_s, u"25MB"_s},
        {u"{ext}"_s, u"mp4"_s},
        {u"{name} ({suffix}).{ext}"_s, u"holiday (25MB).mp4"_s},
        {u"{ext}{suffix}{name}"_s, u"mp425MBholiday"_s},
        {u"{name}{name} {suffix}{suffix} {ext}{ext}"_s, u"holidayholiday 25MB25MB mp4mp4"_s},
        {u"plain"_s, u"plain"_s},
        {u"{{name}}"_s, u"{holiday}"_s},
    };
    for (const Row &row : table) {
        EXPECT_EQ(rendered(row.nameTemplate), row.expected);
    }
}

TEST(OutputNaming, unknown_tokens_and_other_spellings_stay)
{
    for (const QString &text : {u"{foo}"_s, u"{Name}"_s, u"{NAME}"_s, u"{ name }"_s, u"{name"_s,
                                u"name}"_s, u"{}"_s, u"%1"_s, u"{SUFFIX} {Ext} {DATE}"_s}) {
        EXPECT_EQ(rendered(text), text);
    }
}

TEST(OutputNaming, the_date_is_today_in_the_short_style_of_the_system)
{
    const auto [text, date] = renderedWithDate([] { return rendered(u"{date} {name} {date}"_s); });
    EXPECT_FALSE(date.isEmpty());
    EXPECT_EQ(text, date + u" holiday "_s + date);
}

TEST(OutputNaming, a_token_in_an_earlier_value_is_replaced_by_a_later_step)
{
    const auto render = [](const QString &name, const QString &suffix, const QString &ext) {
        return OutputNaming::renderBase(file(u"/films/"_s + name + u".mov"_s), suffix, ext,
                                        u"{name}|{suffix}|{ext}"_s);
    };
    EXPECT_EQ(render(u"{suffix}"_s, u"S"_s, u"E"_s), u"S|S|E"_s);
    EXPECT_EQ(render(u"{ext}"_s, u"S"_s, u"E"_s), u"E|S|E"_s);
    EXPECT_EQ(render(u"N"_s, u"{ext}"_s, u"E"_s), u"N|E|E"_s);
    EXPECT_EQ(render(u"{suffix}"_s, u"{ext}"_s, u"E"_s), u"E|E|E"_s);
}

TEST(OutputNaming, a_source_named_after_the_date_token_gets_the_date)
{
    const auto [text, date] =
        renderedWithDate([] { return rendered(u"{name}!"_s, u"/films/{date}.mov"_s); });
    EXPECT_EQ(text, date + u'!');
}

TEST(OutputNaming, every_value_that_holds_the_date_token_gets_the_date)
{
    const auto [text, date] = renderedWithDate([] {
        return OutputNaming::renderBase(file(u"/films/{date}.mov"_s), u"{date}"_s, u"{date}"_s,
                                        u"{name}|{suffix}|{ext}"_s);
    });
    EXPECT_EQ(text, date + u'|' + date + u'|' + date);
}

TEST(OutputNaming, a_token_in_a_later_value_is_left_alone)
{
    const auto render = [](const QString &name, const QString &suffix, const QString &ext) {
        return OutputNaming::renderBase(file(u"/films/"_s + name + u".mov"_s), suffix, ext,
                                        u"{name}|{suffix}|{ext}"_s);
    };
    EXPECT_EQ(render(u"{name}"_s, u"S"_s, u"E"_s), u"{name}|S|E"_s);
    EXPECT_EQ(render(u"N"_s, u"{name}"_s, u"E"_s), u"N|{name}|E"_s);
    EXPECT_EQ(render(u"N"_s, u"S"_s, u"{suffix}"_s), u"N|S|{suffix}"_s);
}

TEST(OutputNaming, without_a_template_no_token_is_replaced)
{
    EXPECT_EQ(rendered(std::nullopt, u"/films/{suffix} {date}.mov"_s), u"{suffix} {date}-25MB"_s);
}

TEST(OutputNaming, the_result_is_not_sanitised)
{
    EXPECT_EQ(rendered(u"a/b:{name}\\*?"_s), u"a/b:holiday\\*?"_s);
    EXPECT_EQ(rendered(u"../{name}"_s), u"../holiday"_s);
}

TEST(OutputNaming, the_extension_is_not_added)
{
    EXPECT_FALSE(rendered(std::nullopt).contains(u"mp4"_s));
    EXPECT_FALSE(rendered(u"{name}"_s).contains(u'.'));
}

TEST(OutputNaming, a_free_place_is_taken_as_it_is)
{
    const TempFolder folder;
    const QUrl url = folder.url(u"clip-25MB.mp4"_s);
    EXPECT_EQ(OutputNaming::unique(url), url);
}

TEST(OutputNaming, a_taken_place_moves_to_number_2)
{
    const TempFolder folder;
    folder.write(u"clip-25MB.mp4"_s, "x");
    EXPECT_EQ(OutputNaming::unique(folder.url(u"clip-25MB.mp4"_s)),
              folder.url(u"clip-25MB 2.mp4"_s));
}

TEST(OutputNaming, nothing_is_made_and_nothing_is_reserved)
{
    const TempFolder folder;
    folder.write(u"clip.mp4"_s, "x");
    const QUrl first = OutputNaming::unique(folder.url(u"clip.mp4"_s));
    EXPECT_EQ(OutputNaming::unique(folder.url(u"clip.mp4"_s)), first);
    EXPECT_EQ(folder.names(), QStringList{u"clip.mp4"_s});
}

TEST(OutputNaming, the_first_gap_in_the_numbers_is_taken)
{
    const TempFolder folder;
    for (const QString &name : {u"clip.mp4"_s, u"clip 2.mp4"_s, u"clip 3.mp4"_s, u"clip 5.mp4"_s}) {
        folder.write(name, "x");
    }
    EXPECT_EQ(uniqueName(folder, u"clip.mp4"_s), u"clip 4.mp4"_s);
}

TEST(OutputNaming, a_free_number_1_is_never_taken)
{
    const TempFolder folder;
    for (const QString &name : {u"clip.mp4"_s, u"clip 2.mp4"_s, u"clip 3.mp4"_s}) {
        folder.write(name, "x");
    }
    EXPECT_EQ(uniqueName(folder, u"clip.mp4"_s), u"clip 4.mp4"_s);
}

TEST(OutputNaming, a_number_1_that_stands_there_changes_nothing)
{
    const TempFolder folder;
    folder.write(u"clip.mp4"_s, "x");
    folder.write(u"clip 1.mp4"_s, "x");
    EXPECT_EQ(uniqueName(folder, u"clip.mp4"_s), u"clip 2.mp4"_s);
}

TEST(OutputNaming, a_numbered_name_is_numbered_again)
{
    const TempFolder folder;
    folder.write(u"clip 2.mp4"_s, "x");
    EXPECT_EQ(uniqueName(folder, u"clip 2.mp4"_s), u"clip 2 2.mp4"_s);
}

TEST(OutputNaming, the_number_stands_before_the_last_extension)
{
    struct Row {
        QString name;
        QString expected;
    };
    const QList<Row> table{
        {u"a.b.mp4"_s, u"a.b 2.mp4"_s},
        {u"CLIP.MP4"_s, u"CLIP 2.MP4"_s},
        {u"100%20 #1?.mp4"_s, u"100%20 #1? 2.mp4"_s},
        {u"%1-%2-%3.mp4"_s, u"%1-%2-%3 2.mp4"_s},
        {u"假期😀.mp4"_s, u"假期😀 2.mp4"_s},
        {u".hidden.mp4"_s, u".hidden 2.mp4"_s},
    };
    const TempFolder folder;
    for (const Row &row : table) {
        folder.write(row.name, "x");
        EXPECT_EQ(uniqueName(folder, row.name), row.expected);
    }
}

TEST(OutputNaming, a_name_without_an_extension_keeps_the_dot_behind_its_number)
{
    const TempFolder folder;
    folder.write(u"clip"_s, "x");
    EXPECT_EQ(uniqueName(folder, u"clip"_s), u"clip 2."_s);
}

TEST(OutputNaming, a_dot_in_a_folders_name_starts_no_extension)
{
    const TempFolder folder;
    folder.write(u"films.d/clip"_s, "x");
    EXPECT_EQ(OutputNaming::unique(folder.url(u"films.d/clip"_s)),
              folder.url(u"films.d/clip 2."_s));
}

TEST(OutputNaming, a_folder_takes_a_place_as_a_file_does)
{
    const TempFolder folder;
    QDir().mkpath(folder.path(u"clip.mp4"_s));
    QDir().mkpath(folder.path(u"clip 2.mp4"_s));
    EXPECT_EQ(uniqueName(folder, u"clip.mp4"_s), u"clip 3.mp4"_s);
}

TEST(OutputNaming, the_name_alone_in_the_sources_folder_is_numbered)
{
    const TempFolder folder;
    folder.write(u"holiday.mp4"_s, "x");
    const QString base = rendered(u"{name}"_s, folder.path(u"holiday.mp4"_s));
    EXPECT_EQ(base, u"holiday"_s);
    EXPECT_EQ(uniqueName(folder, base + u".mp4"_s), u"holiday 2.mp4"_s);
}

TEST(OutputNaming, a_place_that_cannot_be_tested_counts_as_free)
{
    const TempFolder folder;
    folder.write(u"film.mp4"_s, "x");
    for (const QString &name :
         {u"absent/clip.mp4"_s, u"film.mp4/clip.mp4"_s, QString(400, u'x') + u".mp4"_s}) {
        EXPECT_EQ(OutputNaming::unique(folder.url(name)), folder.url(name));
    }
}

TEST(OutputNaming, the_numbers_run_to_999_and_then_comes_a_fresh_identity)
{
    const TempFolder folder;
    folder.write(u"clip.mp4"_s, "x");
    for (int number = 2; number <= 999; ++number) {
        const QString expected = u"clip %1.mp4"_s.arg(number);
        ASSERT_EQ(uniqueName(folder, u"clip.mp4"_s), expected);
        folder.write(expected, "x");
    }

    static const QRegularExpression form(
        u"^clip-([0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12})\\.mp4$"_s);
    const QRegularExpressionMatch first = form.match(uniqueName(folder, u"clip.mp4"_s));
    const QRegularExpressionMatch second = form.match(uniqueName(folder, u"clip.mp4"_s));
    ASSERT_TRUE(first.hasMatch());
    ASSERT_TRUE(second.hasMatch());
    EXPECT_FALSE(QUuid::fromString(first.captured(1)).isNull());
    EXPECT_NE(first.captured(1), second.captured(1));
}
