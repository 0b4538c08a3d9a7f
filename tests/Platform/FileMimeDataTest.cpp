// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/FileMimeData.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(FileMimeDataTest, files_are_offered_in_the_forms_of_all_file_managers)
{
    const QList<QUrl> files{QUrl::fromLocalFile(u"/films/a b%.mp4"_s),
                            QUrl::fromLocalFile(u"/films/影.gif"_s)};

    const auto data = makeFileMimeData(files);

    EXPECT_EQ(data->formats(),
              (QStringList{u"text/uri-list"_s, u"text/plain"_s, u"x-special/gnome-copied-files"_s,
                           u"application/x-kde-cutselection"_s}));
    EXPECT_EQ(data->urls(), files);
    EXPECT_EQ(data->data(u"text/uri-list"_s),
              "file:///films/a%20b%25.mp4\r\nfile:///films/%E5%BD%B1.gif\r\n"_ba);
    EXPECT_EQ(data->data(u"x-special/gnome-copied-files"_s),
              "copy\nfile:///films/a%20b%25.mp4\nfile:///films/%E5%BD%B1.gif"_ba);
    EXPECT_EQ(data->data(u"application/x-kde-cutselection"_s), "0"_ba);
    EXPECT_EQ(data->text(), u"/films/a b%.mp4\n/films/影.gif"_s);
}
