// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/FileTexts.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

VideoFile film()
{
    VideoFile file;
    file.url = QUrl::fromLocalFile(u"/films/100% sea.mov"_s);
    file.durationSeconds = 83;
    file.fileSizeBytes = 45'000'000;
    file.width = 1920;
    file.height = 1080;
    file.videoCodec = u"h264"_s;
    file.fps = 29.97;
    file.audioStreams.resize(2);
    file.audioStreams[0].codec = u"aac"_s;
    file.audioStreams[1].codec = u"ac3"_s;
    return file;
}

TEST(FileTexts, the_name_is_the_last_part_of_the_path_as_it_stands)
{
    EXPECT_EQ(FileTexts::name(film()), u"100% sea.mov"_s);
}

TEST(FileTexts, a_row_joins_size_and_codec_by_a_blank)
{
    EXPECT_EQ(FileTexts::rowDetails(film()), u"1:23 · 45 MB · 1920×1080 H264"_s);
}

TEST(FileTexts, a_row_without_size_and_codec_ends_after_the_bytes)
{
    VideoFile file = film();
    file.width.reset();
    file.height.reset();
    file.videoCodec.reset();

    EXPECT_EQ(FileTexts::detailSuffix(file), QString());
    EXPECT_EQ(FileTexts::rowDetails(file), u"1:23 · 45 MB"_s);
}

TEST(FileTexts, half_a_picture_size_is_none)
{
    VideoFile file = film();
    file.height.reset();

    EXPECT_EQ(FileTexts::detailSuffix(file), u" · H264"_s);
    EXPECT_EQ(FileTexts::detailText(file), u"30fps · H264 · AAC · 1:23"_s);
}

TEST(FileTexts, a_row_without_codec_ends_after_the_picture_size)
{
    VideoFile file = film();
    file.videoCodec.reset();

    EXPECT_EQ(FileTexts::detailSuffix(file), u" · 1920×1080"_s);
}

TEST(FileTexts, the_header_tells_frame_rate_and_first_sound_too)
{
    EXPECT_EQ(FileTexts::detailText(film()), u"1920×1080 · 30fps · H264 · AAC · 1:23"_s);
}

TEST(FileTexts, the_header_of_a_bare_file_is_its_length)
{
    VideoFile file;
    file.durationSeconds = 3723.9;

    EXPECT_EQ(FileTexts::detailText(file), u"1:02:03"_s);
}

TEST(FileTexts, a_frame_rate_half_way_between_two_goes_to_the_even_one)
{
    VideoFile file;
    file.fps = 12.5;

    EXPECT_EQ(FileTexts::detailText(file), u"12fps · 0:00"_s);
}

} // namespace
