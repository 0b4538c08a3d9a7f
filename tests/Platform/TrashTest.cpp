// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Trash.h"

#include "Platform/MessageListener.h"
#include "support/TempFolder.h"
#include "support/Unprivileged.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// The home decides which disk the user's own trash is on.
class TrashTest : public ::testing::Test
{
protected:
    QUrl film(const QString &name) const
    {
        return QUrl::fromLocalFile(m_folder.write(name, "film"));
    }
    QString trashed(const QString &name) const
    {
        return m_folder.path(u"data/Trash/files/"_s + name);
    }

    const TempFolder m_folder;

private:
    const ScopedEnvironment m_home{"HOME", m_folder.path().toUtf8()};
    const ScopedEnvironment m_data{"XDG_DATA_HOME", m_folder.path(u"data"_s).toUtf8()};
};

} // namespace

TEST_F(TrashTest, a_file_goes_to_the_users_trash_though_there_is_no_folder_of_data_yet)
{
    const QUrl file = film(u"影 film.mp4"_s);

    EXPECT_TRUE(Trash::move(file));

    EXPECT_FALSE(QFile::exists(file.toLocalFile()));
    EXPECT_EQ(contentOf(trashed(u"影 film.mp4"_s)), "film"_ba);
    EXPECT_TRUE(contentOf(m_folder.path(u"data/Trash/info/影 film.mp4.trashinfo"_s))
                    .startsWith("[Trash Info]\nPath="));
}

TEST_F(TrashTest, files_of_one_name_lie_beside_each_other)
{
    EXPECT_TRUE(Trash::move(film(u"film.mp4"_s)));
    EXPECT_TRUE(Trash::move(film(u"film.mp4"_s)));

    EXPECT_EQ(QDir(m_folder.path(u"data/Trash/files"_s)).entryList(QDir::Files).size(), 2);
    EXPECT_EQ(QDir(m_folder.path(u"data/Trash/info"_s)).entryList(QDir::Files).size(), 2);
}

TEST_F(TrashTest, what_is_missing_is_not_moved_and_not_complained_about)
{
    const MessageListener listener;

    EXPECT_FALSE(Trash::move(m_folder.url(u"gone.mp4"_s)));
    EXPECT_FALSE(Trash::move(QUrl(u"https://example.org/film.mp4"_s)));
    EXPECT_FALSE(Trash::move(QUrl()));

    EXPECT_EQ(listener.heard, QStringList());
}

TEST_F(TrashTest, where_there_can_be_no_trash_the_file_stays)
{
    for (const QString &inTheWay :
         {u"data"_s, u"data/Trash"_s, u"data/Trash/files"_s, u"data/Trash/info"_s}) {
        const TempFolder folder;
        const ScopedEnvironment data("XDG_DATA_HOME", folder.path(u"data"_s).toUtf8());
        folder.write(inTheWay, "a file");
        const QUrl file = film(u"film.mp4"_s);

        EXPECT_FALSE(Trash::move(file)) << inTheWay.toStdString();

        EXPECT_EQ(contentOf(file.toLocalFile()), "film"_ba);
    }
}

TEST_F(TrashTest, a_trash_that_takes_no_file_is_none)
{
    const QUrl file = film(u"film.mp4"_s);
    ASSERT_TRUE(QDir().mkpath(m_folder.path(u"data/Trash/info"_s)));
    ASSERT_TRUE(QDir().mkpath(m_folder.path(u"data/Trash/files"_s)));
    const Unprivileged nobody(m_folder);
    QFile::setPermissions(m_folder.path(u"data/Trash/info"_s), QFile::ReadOwner | QFile::ExeOwner);

    EXPECT_FALSE(Trash::move(file));

    EXPECT_TRUE(QFile::exists(file.toLocalFile()));
}

TEST_F(TrashTest, a_name_that_leaves_the_trash_no_room_for_its_own_stays)
{
    const QUrl shortEnough = film(QString(237, u'a'));
    const QUrl tooLong = film(QString(238, u'a'));

    EXPECT_TRUE(Trash::move(shortEnough));
    EXPECT_FALSE(Trash::move(tooLong));

    EXPECT_TRUE(QFile::exists(tooLong.toLocalFile()));
}
