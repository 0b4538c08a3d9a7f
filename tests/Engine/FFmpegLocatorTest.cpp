// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/FFmpegLocator.h"

#include "support/Clips.h"
#include "support/FakeTool.h"

#include <QCoreApplication>
#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto listsX264 = "echo ' V....D libx264  text'\n";

// Both tools in a folder of the given name; ffmpeg does what the shell text says.
QString installTools(const TempFolder &folder, const QString &name, const QByteArray &ffmpeg)
{
    folder.writeExecutable(name + u"/ffmpeg"_s, "#!/bin/sh\n" + ffmpeg);
    folder.writeExecutable(name + u"/ffprobe"_s, "#!/bin/sh\n");
    return folder.path(name);
}

std::optional<FFmpegToolset> discoverIn(const QStringList &candidates, const QString &path)
{
    const ScopedEnvironment environment("PATH", path.toUtf8());
    QList<QUrl> urls;
    for (const QString &candidate : candidates) {
        urls += QUrl::fromLocalFile(candidate);
    }
    return FFmpegLocator(urls).discover();
}

QString folderOf(const std::optional<FFmpegToolset> &toolset)
{
    return toolset ? toolset->ffmpegURL.adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash)
                         .toLocalFile()
                   : QString();
}

QSet<QString> encodersOf(const QByteArray &listing)
{
    const TempFolder folder;
    const QString text = folder.write(u"listing"_s, listing);
    const FakeTool ffmpeg(folder, "cat '" + text.toUtf8() + "'\n");
    return FFmpegLocator::queryEncoders(ffmpeg.url());
}

} // namespace

TEST(FFmpegLocator, the_well_known_places_come_in_their_order)
{
    EXPECT_EQ(FFmpegLocator::shared().candidateDirs,
              (QList<QUrl>{QUrl(u"file:///opt/homebrew/bin"_s), QUrl(u"file:///usr/local/bin"_s)}));
}

TEST(FFmpegLocator, nothing_is_known_before_a_search)
{
    EXPECT_FALSE(FFmpegLocator::shared().searched);
    EXPECT_FALSE(FFmpegLocator::shared().toolset);
}

TEST(FFmpegLocator, a_well_known_place_wins_over_the_path)
{
    const TempFolder folder;
    const QString known = installTools(folder, u"known"_s, listsX264);
    const QString path = installTools(folder, u"path"_s, listsX264);
    EXPECT_EQ(folderOf(discoverIn({known}, path)), known);
}

TEST(FFmpegLocator, the_first_place_with_both_tools_wins)
{
    const TempFolder folder;
    const QString first = installTools(folder, u"first"_s, listsX264);
    const QString second = installTools(folder, u"second"_s, listsX264);
    EXPECT_EQ(folderOf(discoverIn({folder.path(u"none"_s), first, second}, u""_s)), first);
    EXPECT_EQ(folderOf(discoverIn({}, second + u':' + first)), second);
}

TEST(FFmpegLocator, a_folder_with_ffmpeg_but_no_ffprobe_is_passed_over)
{
    const TempFolder folder;
    folder.writeExecutable(u"half/ffmpeg"_s, "#!/bin/sh\n");
    const QString whole = installTools(folder, u"whole"_s, listsX264);
    EXPECT_EQ(folderOf(discoverIn({}, folder.path(u"half"_s) + u':' + whole)), whole);
}

TEST(FFmpegLocator, tools_of_two_folders_are_never_mixed)
{
    const TempFolder folder;
    folder.writeExecutable(u"one/ffmpeg"_s, "#!/bin/sh\n");
    folder.writeExecutable(u"two/ffprobe"_s, "#!/bin/sh\n");
    EXPECT_FALSE(discoverIn({}, folder.path(u"one"_s) + u':' + folder.path(u"two"_s)));
}

TEST(FFmpegLocator, a_file_that_may_not_be_executed_does_not_count)
{
    const TempFolder folder;
    folder.write(u"plain/ffmpeg"_s, "#!/bin/sh\n");
    folder.writeExecutable(u"plain/ffprobe"_s, "#!/bin/sh\n");
    EXPECT_FALSE(discoverIn({}, folder.path(u"plain"_s)));
}

TEST(FFmpegLocator, a_folder_named_like_a_tool_does_not_count)
{
    const TempFolder folder;
    QDir().mkpath(folder.path(u"odd/ffmpeg"_s));
    folder.writeExecutable(u"odd/ffprobe"_s, "#!/bin/sh\n");
    EXPECT_FALSE(discoverIn({}, folder.path(u"odd"_s)));
}

TEST(FFmpegLocator, an_ffmpeg_that_cannot_list_encoders_ends_the_search_without_a_result)
{
    const TempFolder folder;
    const QString broken = installTools(folder, u"broken"_s, "exit 1\n");
    const QString good = installTools(folder, u"good"_s, listsX264);
    EXPECT_FALSE(discoverIn({}, broken + u':' + good));
}

TEST(FFmpegLocator, an_ffmpeg_that_lists_nothing_counts_as_none)
{
    const TempFolder folder;
    EXPECT_FALSE(discoverIn({}, installTools(folder, u"silent"_s, "exit 0\n")));
}

TEST(FFmpegLocator, a_path_of_colons_has_no_folders)
{
    EXPECT_FALSE(discoverIn({}, u":"_s));
    EXPECT_FALSE(discoverIn({}, u":::"_s));
}

TEST(FFmpegLocator, without_a_path_there_is_no_third_source)
{
    const ScopedEnvironment environment("PATH", "");
    qunsetenv("PATH");
    EXPECT_FALSE(FFmpegLocator(QList<QUrl>()).discover());
}

TEST(FFmpegLocator, the_tools_that_came_along_win_over_all_others)
{
    const TempFolder folder;
    const QString bundled = installTools(folder, u"bundled"_s, listsX264);
    const QString known = installTools(folder, u"known"_s, listsX264);
    const FFmpegLocator locator({QUrl::fromLocalFile(known)}, bundled);
    EXPECT_EQ(folderOf(locator.discover()), bundled);
}

TEST(FFmpegLocator, the_tools_that_come_along_lie_beside_the_executables_folder)
{
    const QString parent = QFileInfo(QCoreApplication::applicationDirPath()).path();
    EXPECT_EQ(FFmpegLocator::bundledDirectory(), parent + u"/libexec/morvix"_s);
}

TEST(FFmpegLocator, the_encoders_of_the_build_come_along)
{
    const TempFolder folder;
    const auto found = discoverIn({}, installTools(folder, u"bin"_s, listsX264));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->encoders, QSet<QString>{u"libx264"_s});
    EXPECT_EQ(found->ffprobeURL, folder.url(u"bin/ffprobe"_s));
}

TEST(FFmpegLocatorEncoders, the_question_is_asked_without_a_banner)
{
    const TempFolder folder;
    const FakeTool ffmpeg(folder, "exit 0\n");
    FFmpegLocator::queryEncoders(ffmpeg.url());
    EXPECT_EQ(ffmpeg.arguments(1), (QStringList{u"-hide_banner"_s, u"-encoders"_s}));
}

TEST(FFmpegLocatorEncoders, video_and_audio_rows_give_names_and_all_else_does_not)
{
    EXPECT_EQ(encodersOf("Encoders:\n"
                         " V..... = Video\n"
                         " A..... = Audio\n"
                         " S..... = Subtitle\n"
                         " .F.... = Frame-level multithreading\n"
                         " ------\n"
                         " V....D libx264              H.264 (codec h264)\n"
                         " A....D aac                  AAC\n"
                         "A..... lib-opus_2 no leading blank\n"
                         " S..... mov_text             3GPP Timed Text\n"
                         " V....D na.me                a dot\n"
                         " V....D\n"
                         "\n"
                         " V....D    wide    many blanks\n"),
              (QSet<QString>{u"libx264"_s, u"aac"_s, u"lib-opus_2"_s, u"wide"_s}));
}

TEST(FFmpegLocatorEncoders, a_listing_that_fails_gives_none)
{
    const TempFolder folder;
    const FakeTool ffmpeg(folder, QByteArray(listsX264) + "exit 1\n");
    EXPECT_TRUE(FFmpegLocator::queryEncoders(ffmpeg.url()).isEmpty());
}

TEST(FFmpegLocatorEncoders, rubbish_gives_none)
{
    EXPECT_TRUE(encodersOf("\xff\xfe V....D libx264\n").isEmpty());
    EXPECT_TRUE(encodersOf("").isEmpty());
}

TEST(FFmpegLocatorEncoders, the_real_build_offers_what_the_builders_ask_for)
{
    for (const QString &name :
         {u"libx264"_s, u"libvpx-vp9"_s, u"libsvtav1"_s, u"aac"_s, u"flac"_s}) {
        EXPECT_TRUE(Clips::tools().encoders.contains(name)) << name.toStdString();
    }
}
