// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/VideoFile.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

VideoFile fileOf(double seconds)
{
    VideoFile file;
    file.url = QUrl::fromLocalFile(u"/films/a.mp4"_s);
    file.durationSeconds = seconds;
    return file;
}

AudioStream audioAt(qint64 bitsPerSecond)
{
    AudioStream stream;
    stream.bitrateBps = bitsPerSecond;
    return stream;
}

} // namespace

TEST(VideoFile, without_skips_the_whole_length_counts)
{
    EXPECT_EQ(fileOf(10).effectiveDuration(std::nullopt, std::nullopt), 10);
}

TEST(VideoFile, both_skips_are_taken_off)
{
    EXPECT_EQ(fileOf(10).effectiveDuration(2, 3), 5);
}

TEST(VideoFile, negative_skips_count_as_none)
{
    EXPECT_EQ(fileOf(10).effectiveDuration(-2, -3), 10);
}

TEST(VideoFile, a_skip_longer_than_the_file_leaves_a_tenth_of_a_second)
{
    EXPECT_EQ(fileOf(10).effectiveDuration(25, std::nullopt), 0.1);
    EXPECT_EQ(fileOf(10).effectiveDuration(std::nullopt, 25), 0.1);
}

TEST(VideoFile, the_tail_skip_is_clamped_to_what_the_head_skip_left)
{
    EXPECT_EQ(fileOf(10).effectiveDuration(8, 8), 0.1);
}

TEST(VideoFile, the_highest_audio_track_may_have_a_rate_below_zero)
{
    VideoFile file = fileOf(10);
    file.videoBitrateBps = 1'000;
    file.audioStreams = {audioAt(-5), AudioStream(), audioAt(-7)};
    EXPECT_EQ(file.totalBitrateBps(), 995);
}

TEST(VideoFile, a_rate_beyond_all_integers_is_the_highest_one)
{
    VideoFile file = fileOf(1e-300);
    file.fileSizeBytes = 1;
    EXPECT_EQ(file.totalBitrateBps(), std::numeric_limits<qint64>::max());
}

TEST(VideoFile, a_file_of_unknown_length_has_a_tenth_of_a_second)
{
    EXPECT_EQ(fileOf(0).effectiveDuration(std::nullopt, std::nullopt), 0.1);
}

TEST(VideoFile, the_measured_bitrate_wins_when_it_is_higher)
{
    VideoFile file = fileOf(10);
    file.fileSizeBytes = 1'000'000;
    file.videoBitrateBps = 500'000;
    EXPECT_EQ(file.totalBitrateBps(), 800'000);
}

TEST(VideoFile, the_declared_bitrate_wins_when_it_is_higher)
{
    VideoFile file = fileOf(10);
    file.fileSizeBytes = 1'000;
    file.videoBitrateBps = 500'000;
    file.audioStreams = {audioAt(64'000)};
    EXPECT_EQ(file.totalBitrateBps(), 564'000);
}

TEST(VideoFile, the_declared_bitrate_takes_the_highest_audio_track_and_not_the_sum)
{
    VideoFile file = fileOf(10);
    file.audioStreams = {audioAt(64'000), audioAt(192'000), audioAt(128'000), AudioStream()};
    EXPECT_EQ(file.totalBitrateBps(), 192'000);
}

TEST(VideoFile, a_file_of_unknown_length_has_its_declared_bitrate)
{
    VideoFile file = fileOf(0);
    file.fileSizeBytes = 9'000'000;
    file.videoBitrateBps = 700'000;
    EXPECT_EQ(file.totalBitrateBps(), 700'000);
}

TEST(VideoFile, a_file_without_audio_counts_none)
{
    VideoFile file = fileOf(0);
    file.videoBitrateBps = 300'000;
    EXPECT_EQ(file.totalBitrateBps(), 300'000);
}

TEST(VideoFile, the_bitrate_is_cut_and_not_rounded)
{
    VideoFile file = fileOf(3);
    file.fileSizeBytes = 1;
    EXPECT_EQ(file.totalBitrateBps(), 2);
}

TEST(VideoFile, two_files_of_one_path_differ)
{
    EXPECT_NE(fileOf(10), fileOf(10));
}

TEST(VideoFile, equal_files_have_equal_hashes)
{
    VideoFile file = fileOf(10);
    file.audioStreams = {audioAt(1)};
    file.subtitleStreams = {{3, u"subrip"_s, u"de"_s}};
    const VideoFile copy = file;
    EXPECT_EQ(file, copy);
    EXPECT_EQ(qHash(file), qHash(copy));
}

TEST(VideoFile, every_field_takes_part_in_equality)
{
    const VideoFile file = fileOf(10);
    const auto changed = [&](auto change) {
        VideoFile other = file;
        change(other);
        return other;
    };
    EXPECT_NE(file, changed([](VideoFile &f) { f.url = QUrl(u"file:///b"_s); }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.durationSeconds = 1; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.fileSizeBytes = 1; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.width = 1; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.height = 1; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.videoCodec = u"h264"_s; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.videoBitrateBps = 1; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.audioStreams = {AudioStream()}; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.fps = 1; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.isHDR = true; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.hasAlphaChannel = true; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.containerName = u"x"_s; }));
    EXPECT_NE(file, changed([](VideoFile &f) { f.subtitleStreams = {SubtitleStream()}; }));
}
