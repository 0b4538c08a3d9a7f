// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/TemporaryFiles.h"

#include "Engine/Text.h"
#include "support/TempFolder.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class TemporaryFilesTest : public ::testing::Test
{
protected:
    const QUuid m_film = QUuid::createUuid();
    const QUuid m_other = QUuid::createUuid();
    const QString m_id = Text::uuid(m_film);
    const TempFolder m_elsewhere;
    const TempFolder m_temporary;
    const ScopedEnvironment m_environment{"TMPDIR", m_temporary.path().toUtf8()};
};

} // namespace

TEST_F(TemporaryFilesTest, what_runs_of_a_film_leave_is_removed)
{
    m_temporary.write(u"mx-approach-"_s + m_id + u".mp4"_s, "loser");
    m_temporary.write(u"mx-2pass-"_s + m_id + u"-0.log"_s, "log");
    m_temporary.write(u"mx-2pass-"_s + m_id + u"-0.log.mbtree"_s, "tree");
    m_temporary.write(u"mx-2pass-"_s + m_id + u"-0.log.mbtree.temp"_s, "tree");

    TemporaryFiles::removeLeftovers({m_film});

    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(TemporaryFilesTest, several_films_are_cleared_in_one_call)
{
    m_temporary.write(u"mx-approach-"_s + m_id + u".mp4"_s, "");
    m_temporary.write(u"mx-approach-"_s + Text::uuid(m_other) + u".mp4"_s, "");

    TemporaryFiles::removeLeftovers({m_other, m_film});

    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(TemporaryFilesTest, other_films_other_programs_and_folders_keep_theirs)
{
    const QStringList kept{
        u"approach-"_s + m_id + u".mp4"_s,
        m_id,
        u"mx-approach-"_s + Text::uuid(m_other) + u".mp4"_s,
        u"mx-notes.txt"_s,
        u"mx-"_s,
        u"tmx-"_s + m_id,
    };
    for (const QString &name : kept) {
        m_temporary.write(name, "");
    }
    m_temporary.write(u"mx-trim-"_s + m_id + u"/part.mp4"_s, "");

    TemporaryFiles::removeLeftovers({m_film});

    QStringList expected = kept + QStringList{u"mx-trim-"_s + m_id};
    expected.sort();
    EXPECT_EQ(m_temporary.names(), expected);
    EXPECT_TRUE(QFile::exists(m_temporary.path(u"mx-trim-"_s + m_id + u"/part.mp4"_s)));
}

TEST_F(TemporaryFilesTest, without_films_nothing_is_removed)
{
    m_temporary.write(u"mx-approach-"_s + m_id + u".mp4"_s, "");
    m_temporary.write(u"mx-notes"_s, "");

    TemporaryFiles::removeLeftovers({});
    TemporaryFiles::removeLeftovers({m_other});

    EXPECT_EQ(m_temporary.names().size(), 2);
}

// A name without an identity reads as the null one.
TEST_F(TemporaryFilesTest, a_null_identity_is_in_no_name)
{
    m_temporary.write(u"mx-notes"_s, "");

    TemporaryFiles::removeLeftovers({QUuid(), m_film});

    EXPECT_EQ(m_temporary.names(), QStringList{u"mx-notes"_s});
}

TEST_F(TemporaryFilesTest, a_link_is_removed_and_not_what_it_leads_to)
{
    const QString film = m_elsewhere.write(u"film.mp4"_s, "precious");
    ASSERT_TRUE(QFile::link(film, m_temporary.path(u"mx-approach-"_s + m_id + u".mp4"_s)));

    TemporaryFiles::removeLeftovers({m_film});

    EXPECT_EQ(m_temporary.names(), QStringList());
    EXPECT_EQ(contentOf(film), "precious");
}

TEST_F(TemporaryFilesTest, a_temporary_directory_that_is_gone_is_no_trouble)
{
    const ScopedEnvironment gone("TMPDIR", m_temporary.path(u"gone"_s).toUtf8());

    TemporaryFiles::removeLeftovers({m_film});

    EXPECT_EQ(m_temporary.names(), QStringList());
}
