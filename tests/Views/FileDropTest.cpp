// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/FileDrop.h"

#include "support/TempFolder.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A widget that takes files, and what it was told in order.
class FileDrops : public ::testing::Test
{
protected:
    FileDrops()
    {
        QObject::connect(m_drop, &FileDrop::overChanged, &m_widget,
                         [this](bool over) { m_told += over ? u"over"_s : u"away"_s; });
        QObject::connect(m_drop, &FileDrop::dropped, &m_widget, [this](const QList<QUrl> &urls) {
            m_told += u"dropped"_s;
            m_urls = urls;
        });
    }

    /// Whether the widget would take it.
    bool dragOver(Qt::DropActions offered)
    {
        QDragEnterEvent enter({5, 5}, offered, &m_dragged, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&m_widget, &enter);
        return enter.isAccepted();
    }
    /// What the other side is told has become of its files; absent when they weren't taken.
    std::optional<Qt::DropAction> drop(Qt::DropActions offered,
                                       Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        EXPECT_TRUE(dragOver(offered));
        QDropEvent drop({5, 5}, offered, &m_dragged, Qt::LeftButton, modifiers);
        QCoreApplication::sendEvent(&m_widget, &drop);
        return drop.isAccepted() ? std::optional(drop.dropAction()) : std::nullopt;
    }

    QMimeData m_dragged;
    QWidget m_widget;
    FileDrop *m_drop = new FileDrop(&m_widget);
    QStringList m_told;
    QList<QUrl> m_urls;
};

const QUrl film(u"file:///films/a.mp4"_s);

} // namespace

TEST_F(FileDrops, a_drag_is_over_until_it_lands_and_then_the_files_come)
{
    m_dragged.setUrls({film, QUrl(u"https://example.org/b.mp4"_s)});

    drop(Qt::CopyAction);

    EXPECT_EQ(m_told, (QStringList{u"over"_s, u"away"_s, u"dropped"_s}));
    EXPECT_EQ(m_urls, QList{film});
    EXPECT_FALSE(m_drop->isOver());
}

TEST_F(FileDrops, a_drag_that_leaves_is_over_no_more)
{
    m_dragged.setUrls({film});
    dragOver(Qt::CopyAction);
    const bool wasOver = m_drop->isOver();

    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&m_widget, &leave);

    EXPECT_TRUE(wasOver);
    EXPECT_FALSE(m_drop->isOver());
    EXPECT_EQ(m_told, (QStringList{u"over"_s, u"away"_s}));
}

TEST_F(FileDrops, what_brings_no_URL_is_refused)
{
    m_dragged.setText(u"/films/a.mp4"_s);

    EXPECT_FALSE(dragOver(Qt::CopyAction));
    EXPECT_FALSE(m_drop->isOver());
}

TEST_F(FileDrops, files_are_copied_though_the_other_side_would_rather_move_them)
{
    m_dragged.setUrls({film});

    EXPECT_EQ(drop(Qt::CopyAction | Qt::MoveAction, Qt::ShiftModifier), Qt::CopyAction);
}

TEST_F(FileDrops, files_that_can_only_be_moved_are_taken_and_stay_where_they_are)
{
    m_dragged.setUrls({film});

    EXPECT_EQ(drop(Qt::MoveAction), Qt::IgnoreAction);
    EXPECT_EQ(m_urls, QList{film});
}

TEST_F(FileDrops, names_of_any_kind_come_through)
{
    const TempFolder folder;
    QList<QUrl> films;
    QStringList lines;
    for (const QString &name :
         {u"100%.mp4"_s, u"a%20b.mp4"_s, u"#1?.mp4"_s, u"two\nlines.mp4"_s, u" blank .mp4"_s,
          u":colon.mp4"_s, u"雪 é😀.mp4"_s, u"a\\b;&.mp4"_s}) {
        films += QUrl::fromLocalFile(folder.write(u"odd %41#\n?/"_s + name, "x"));
        lines += QString::fromLatin1(films.last().toEncoded());
    }
    films += QUrl::fromLocalFile(folder.path(u"odd %41#\n?"_s) + u'/');
    lines += QString::fromLatin1(films.last().toEncoded(QUrl::StripTrailingSlash));
    m_dragged.setData(u"text/uri-list"_s, lines.join(u"\r\n"_s).toLatin1());

    drop(Qt::CopyAction);

    EXPECT_EQ(m_urls, films);
}
