// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/FileURL.h"

#include "support/TempFolder.h"

#include <QDir>
#include <QSysInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class FileURLs : public ::testing::Test
{
protected:
    const TempFolder m_folder;
    const QString m_film = m_folder.write(u"a film #1%.mp4"_s, "x");
    const QUrl m_filmURL = QUrl::fromLocalFile(m_film);
    const QUrl m_folderURL = QUrl::fromLocalFile(m_folder.path() + u'/');
};

} // namespace

TEST_F(FileURLs, a_path_of_a_file_is_taken_as_it_is)
{
    EXPECT_EQ(FileURL::ofPath(m_film), m_filmURL);
}

TEST_F(FileURLs, a_relative_path_is_of_the_current_folder)
{
    const QString before = QDir::currentPath();
    QDir::setCurrent(m_folder.path());

    const QUrl url = FileURL::ofPath(u"a film #1%.mp4"_s);

    QDir::setCurrent(before);
    EXPECT_EQ(url, m_filmURL);
}

TEST_F(FileURLs, a_folder_gets_its_slash_once)
{
    EXPECT_EQ(FileURL::ofPath(m_folder.path()), m_folderURL);
    EXPECT_EQ(FileURL::ofPath(m_folder.path() + u"//"_s), m_folderURL);
    EXPECT_EQ(FileURL::filesAmong({QUrl::fromLocalFile(m_folder.path())}), QList{m_folderURL});
    EXPECT_EQ(FileURL::filesAmong({m_folderURL}), QList{m_folderURL});
}

TEST_F(FileURLs, an_argument_may_be_a_file_URL)
{
    EXPECT_EQ(FileURL::ofArgument(m_film), m_filmURL);
    EXPECT_EQ(FileURL::ofArgument(QString::fromLatin1(m_filmURL.toEncoded())), m_filmURL);
    EXPECT_EQ(FileURL::ofArgument(u"file://"_s + m_folder.path()), m_folderURL);
}

TEST_F(FileURLs, an_argument_that_only_begins_like_a_URL_is_a_path)
{
    const QString here = QDir::currentPath();

    EXPECT_EQ(FileURL::ofArgument(u"file:a.mp4"_s), QUrl::fromLocalFile(here + u"/file:a.mp4"_s));
    EXPECT_EQ(FileURL::ofArgument(u"http:a.mp4"_s), QUrl::fromLocalFile(here + u"/http:a.mp4"_s));
}

TEST_F(FileURLs, only_files_of_this_machine_are_kept_in_their_order)
{
    const QUrl named(u"file://"_s + QSysInfo::machineHostName() + u"/tmp/b.mp4"_s);

    const QList<QUrl> files = FileURL::filesAmong(
        {QUrl(u"http://example.org/a.mp4"_s), m_filmURL, QUrl(), QUrl(u"file:a.mp4"_s),
         QUrl(u"file://localhost/tmp/b.mp4"_s), QUrl(u"file://elsewhere.invalid/tmp/b.mp4"_s),
         named, QUrl(u"/tmp/b.mp4"_s), QUrl(u"file://"_s), m_filmURL});

    const QUrl b(u"file:///tmp/b.mp4"_s);
    EXPECT_EQ(files, (QList{m_filmURL, b, b, m_filmURL}));
}
