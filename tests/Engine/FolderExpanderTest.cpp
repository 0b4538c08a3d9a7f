// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/FolderExpander.h"

#include "support/TempFolder.h"
#include "support/Unprivileged.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

class FolderExpanderTest : public ::testing::Test
{
protected:
    void write(const QStringList &names) const
    {
        for (const QString &name : names) {
            m_folder.write(name, "");
        }
    }

    void link(const QString &target, const QString &name) const
    {
        ASSERT_TRUE(QFile::link(target, m_folder.path(name)));
    }

    /// The folder's own URL, without a slash at its end.
    QUrl root() const { return QUrl::fromLocalFile(m_folder.path()); }

    /// The paths that come out, as seen from the folder.
    QStringList expanded(const QList<QUrl> &urls) const
    {
        QStringList names;
        for (const QUrl &url : FolderExpander::expand(urls)) {
            names += url.toLocalFile().sliced(m_folder.path().size() + 1);
        }
        return names;
    }

    QStringList expandedNames(const QStringList &names) const
    {
        QList<QUrl> urls;
        for (const QString &name : names) {
            urls += m_folder.url(name);
        }
        return expanded(urls);
    }

    const TempFolder m_folder;
};

} // namespace

TEST_F(FolderExpanderTest, sixteen_extensions_count_as_media)
{
    EXPECT_EQ(FolderExpander::mediaExtensions(),
              (QSet<QString>{u"mp4"_s, u"mov"_s, u"mkv"_s, u"webm"_s, u"avi"_s, u"m4v"_s, u"ts"_s,
                             u"mts"_s, u"m2ts"_s, u"flv"_s, u"mp3"_s, u"m4a"_s, u"wav"_s, u"aac"_s,
                             u"flac"_s, u"aiff"_s}));
}

TEST_F(FolderExpanderTest, every_media_extension_passes_and_nothing_else)
{
    QStringList films;
    for (const QString &extension : FolderExpander::mediaExtensions()) {
        films += u"film."_s + extension;
    }
    films.sort();
    write(films + QStringList{u"film.txt"_s, u"film.mp4.txt"_s, u"film"_s, u"mp4"_s, u"film.mp"_s,
                              u"film.mp44"_s, u"film.aif"_s, u"film.wmv"_s, u"film.mp4~"_s});

    EXPECT_EQ(expanded({root()}), films);
}

TEST_F(FolderExpanderTest, nothing_gives_nothing)
{
    write({u"notes.txt"_s});

    EXPECT_EQ(expanded({}), QStringList());
    EXPECT_EQ(expanded({root()}), QStringList());
    EXPECT_EQ(expanded({QUrl()}), QStringList());
    EXPECT_EQ(expandedNames({u"gone.mp4"_s, u"gone/"_s}), QStringList());
}

TEST_F(FolderExpanderTest, an_extension_in_capitals_passes)
{
    write({u"a.MP4"_s, u"b.Mkv"_s});

    EXPECT_EQ(expandedNames({u"a.MP4"_s}), QStringList{u"a.MP4"_s});
    EXPECT_EQ(expanded({root()}), (QStringList{u"a.MP4"_s, u"b.Mkv"_s}));
}

TEST_F(FolderExpanderTest, a_file_that_is_given_directly_is_judged_by_its_name_too)
{
    write({u"a.txt"_s, u"b.mp4"_s});

    EXPECT_EQ(expandedNames({u"a.txt"_s, u"b.mp4"_s}), QStringList{u"b.mp4"_s});
}

TEST_F(FolderExpanderTest, the_urls_are_walked_in_their_order_and_folders_in_place)
{
    write({u"z.mp4"_s, u"films/b.mp4"_s, u"films/a.mp4"_s, u"a.mp4"_s});

    EXPECT_EQ(expandedNames({u"z.mp4"_s, u"films/"_s, u"a.mp4"_s}),
              (QStringList{u"z.mp4"_s, u"films/a.mp4"_s, u"films/b.mp4"_s, u"a.mp4"_s}));
}

TEST_F(FolderExpanderTest, a_folder_is_sorted_in_plain_text_order_with_folders_among_the_files)
{
    write({u"é.mp4"_s, u"a9.mp4"_s, u"b/inside.mp4"_s, u"a.mp4"_s, u"c.mp4"_s, u"B.mp4"_s,
           u"a10.mp4"_s, u"b/Above.mp4"_s});

    EXPECT_EQ(expanded({root()}),
              (QStringList{u"B.mp4"_s, u"a.mp4"_s, u"a10.mp4"_s, u"a9.mp4"_s, u"b/Above.mp4"_s,
                           u"b/inside.mp4"_s, u"c.mp4"_s, u"é.mp4"_s}));
}

TEST_F(FolderExpanderTest, a_folder_is_one_with_and_without_a_slash_at_its_end)
{
    write({u"films/a.mp4"_s});

    EXPECT_EQ(expandedNames({u"films"_s}), QStringList{u"films/a.mp4"_s});
    EXPECT_EQ(expandedNames({u"films/"_s}), QStringList{u"films/a.mp4"_s});
}

TEST_F(FolderExpanderTest, a_folder_with_a_films_name_is_a_folder)
{
    write({u"film.mp4/real.mov"_s});

    EXPECT_EQ(expandedNames({u"film.mp4"_s}), QStringList{u"film.mp4/real.mov"_s});
}

TEST_F(FolderExpanderTest, each_path_comes_once_a_call)
{
    write({u"films/a.mp4"_s, u"films/b.mp4"_s});

    EXPECT_EQ(expandedNames(
                  {u"films/b.mp4"_s, u"films/"_s, u"films"_s, u"films/a.mp4"_s, u"films/b.mp4"_s}),
              (QStringList{u"films/b.mp4"_s, u"films/a.mp4"_s}));
}

TEST_F(FolderExpanderTest, hidden_entries_of_a_folder_are_passed_over)
{
    write({u"films/.a.mp4"_s, u"films/.cache/b.mp4"_s, u"films/c.mp4"_s});

    EXPECT_EQ(expandedNames({u"films"_s}), QStringList{u"films/c.mp4"_s});
}

TEST_F(FolderExpanderTest, what_is_given_directly_may_be_hidden)
{
    write({u".a.mp4"_s, u".films/b.mp4"_s});

    EXPECT_EQ(expandedNames({u".a.mp4"_s, u".films"_s}),
              (QStringList{u".a.mp4"_s, u".films/b.mp4"_s}));
}

TEST_F(FolderExpanderTest, a_name_that_is_nothing_but_an_extension_has_none)
{
    write({u".mp4"_s});

    EXPECT_EQ(expandedNames({u".mp4"_s}), QStringList());
}

TEST_F(FolderExpanderTest, six_levels_are_read)
{
    write({u"1.mp4"_s, u"1/2.mp4"_s, u"1/2/3.mp4"_s, u"1/2/3/4.mp4"_s, u"1/2/3/4/5.mp4"_s,
           u"1/2/3/4/5/6.mp4"_s, u"1/2/3/4/5/6/7.mp4"_s});

    // In plain text order "1" stands before "1.mp4".
    EXPECT_EQ(expanded({root()}), (QStringList{u"1/2/3/4/5.mp4"_s, u"1/2/3/4.mp4"_s, u"1/2/3.mp4"_s,
                                               u"1/2.mp4"_s, u"1.mp4"_s}));
}

TEST_F(FolderExpanderTest, the_depth_counts_from_each_url)
{
    write({u"1/2/3/4/5/6.mp4"_s});

    EXPECT_EQ(expanded({root()}), QStringList());
    EXPECT_EQ(expandedNames({u"1"_s}), QStringList{u"1/2/3/4/5/6.mp4"_s});
    EXPECT_EQ(expandedNames({u"1/2/3/4/5/6.mp4"_s}), QStringList{u"1/2/3/4/5/6.mp4"_s});
}

TEST_F(FolderExpanderTest, the_list_ends_at_500_by_walking_order)
{
    QStringList names;
    for (int i = 0; i < 501; ++i) {
        names += u"films/%1.mp4"_s.arg(i, 3, 10, QChar(u'0'));
    }
    write(names + QStringList{u"after.mp4"_s});

    EXPECT_EQ(expandedNames({u"films"_s, u"after.mp4"_s}), names.first(500));
}

TEST_F(FolderExpanderTest, the_500_are_counted_over_all_urls_and_without_what_is_dropped)
{
    QStringList names;
    for (int i = 0; i < 499; ++i) {
        names += u"films/%1.mp4"_s.arg(i, 3, 10, QChar(u'0'));
        m_folder.write(u"films/%1.txt"_s.arg(i, 3, 10, QChar(u'0')), "");
    }
    write(names + QStringList{u"500.mp4"_s, u"501.mp4"_s});

    EXPECT_EQ(expandedNames({u"films"_s, u"films"_s, u"500.mp4"_s, u"501.mp4"_s}),
              names + QStringList{u"500.mp4"_s});
}

TEST_F(FolderExpanderTest, links_are_what_they_lead_to_under_their_own_path)
{
    write({u"real/a.mp4"_s, u"real.mov"_s});
    QDir(m_folder.path()).mkdir(u"links"_s);
    link(m_folder.path(u"real"_s), u"links/folder"_s);
    link(m_folder.path(u"real.mov"_s), u"links/film.mp4"_s);
    link(m_folder.path(u"gone.mp4"_s), u"links/broken.mp4"_s);

    EXPECT_EQ(expandedNames({u"links"_s, u"real.mov"_s}),
              (QStringList{u"links/film.mp4"_s, u"links/folder/a.mp4"_s, u"real.mov"_s}));
    EXPECT_EQ(expandedNames({u"links/folder"_s, u"links/film.mp4"_s, u"links/broken.mp4"_s}),
              (QStringList{u"links/folder/a.mp4"_s, u"links/film.mp4"_s}));
}

TEST_F(FolderExpanderTest, a_folder_that_leads_to_itself_ends_at_the_last_level)
{
    write({u"a.mp4"_s});
    link(m_folder.path(), u"self"_s);

    EXPECT_EQ(expanded({root()}),
              (QStringList{u"a.mp4"_s, u"self/a.mp4"_s, u"self/self/a.mp4"_s,
                           u"self/self/self/a.mp4"_s, u"self/self/self/self/a.mp4"_s}));
}

TEST_F(FolderExpanderTest, names_keep_every_character)
{
    const QStringList names{u":a.mp4"_s,    u"a\nb.mp4"_s, u"a %20.mp4"_s, u"a#b?c.mp4"_s,
                            u"a'\"$.mp4"_s, u"片 😀.mp4"_s, u"*.mp4"_s,     u"[a].mp4"_s};
    write(names);

    EXPECT_EQ(QSet<QString>(names.begin(), names.end()), [&] {
        const QStringList found = expanded({root()});
        return QSet<QString>(found.begin(), found.end());
    }());
    EXPECT_EQ(expandedNames(names), names);
}

TEST_F(FolderExpanderTest, a_folder_that_cant_be_listed_counts_as_empty)
{
    write({u"closed/a.mp4"_s, u"open.mp4"_s});
    const QString closed = m_folder.path(u"closed"_s);
    ASSERT_EQ(::chmod(closed.toLocal8Bit().constData(), 0), 0);
    {
        const Unprivileged unprivileged(m_folder);
        ASSERT_FALSE(QFileInfo(closed).isReadable());

        EXPECT_EQ(expanded({root()}), QStringList{u"open.mp4"_s});
    }
    ::chmod(closed.toLocal8Bit().constData(), 0700);
}

TEST_F(FolderExpanderTest, a_pipe_with_a_films_name_is_no_file)
{
    ASSERT_EQ(::mkfifo(m_folder.path(u"pipe.mp4"_s).toLocal8Bit().constData(), 0600), 0);
    write({u"a.mp4"_s});

    EXPECT_EQ(expanded({root()}), QStringList{u"a.mp4"_s});
}
