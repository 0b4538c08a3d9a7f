// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/MergePlanner.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using Change = std::function<void(VideoFile &)>;

VideoFile clip()
{
    VideoFile file;
    file.videoCodec = u"h264"_s;
    file.width = 1280;
    file.height = 720;
    file.fps = 25;
    AudioStream stream;
    stream.codec = u"aac"_s;
    file.audioStreams.append(stream);
    return file;
}

VideoFile changed(const Change &change)
{
    VideoFile file = clip();
    change(file);
    return file;
}

VideoFile atRate(std::optional<double> fps)
{
    return changed([&](VideoFile &file) { file.fps = fps; });
}

VideoFile ofSize(std::optional<qint64> width, std::optional<qint64> height)
{
    VideoFile file;
    file.width = width;
    file.height = height;
    return file;
}

void addAudio(VideoFile &file, const QString &codec)
{
    AudioStream stream;
    stream.codec = codec;
    file.audioStreams.append(stream);
}

// The reason, or nothing where the clips match.
QString reasonOf(const QList<VideoFile> &files)
{
    const MergePlanner::Compatibility answer = MergePlanner::compatibility(files);
    EXPECT_EQ(answer.streamsMatch, !answer.reasonKey.has_value());
    return answer.reasonKey.value_or(QString());
}

bool ratesMatch(std::optional<double> first, std::optional<double> second)
{
    return reasonOf({atRate(first), atRate(second)}).isEmpty();
}

} // namespace

TEST(MergePlanner, alike_clips_match)
{
    EXPECT_EQ(reasonOf({clip(), clip(), clip()}), QString());
}

TEST(MergePlanner, fewer_than_two_clips_match)
{
    EXPECT_EQ(reasonOf({}), QString());
    EXPECT_EQ(reasonOf({VideoFile()}), QString());
}

TEST(MergePlanner, each_difference_has_its_reason_wherever_it_stands)
{
    const std::vector<std::pair<Change, QString>> rows{
        {[](VideoFile &f) { f.width.reset(); }, u"merge.reason.novideo"_s},
        {[](VideoFile &f) { f.videoCodec.reset(); }, u"merge.reason.novideo"_s},
        {[](VideoFile &f) { f.videoCodec = u"hevc"_s; }, u"merge.reason.codec"_s},
        {[](VideoFile &f) { f.videoCodec = u"H264"_s; }, u"merge.reason.codec"_s},
        {[](VideoFile &f) { f.width = 1281; }, u"merge.reason.resolution"_s},
        {[](VideoFile &f) { f.height = 719; }, u"merge.reason.resolution"_s},
        {[](VideoFile &f) { f.fps = 30; }, u"merge.reason.fps"_s},
        {[](VideoFile &f) { f.audioStreams.clear(); }, u"merge.reason.audiomix"_s},
        {[](VideoFile &f) { f.audioStreams.first().codec = u"mp3"_s; },
         u"merge.reason.audiocodec"_s},
        {[](VideoFile &f) { f.audioStreams.first().codec = u"AAC"_s; },
         u"merge.reason.audiocodec"_s},
    };
    for (const auto &[change, reason] : rows) {
        const VideoFile other = changed(change);
        EXPECT_EQ(reasonOf({clip(), other, clip()}), reason);
        EXPECT_EQ(reasonOf({clip(), clip(), other}), reason);
        EXPECT_EQ(reasonOf({other, clip(), clip()}), reason);
    }
}

TEST(MergePlanner, the_first_reason_in_the_order_of_testing_is_told)
{
    const std::vector<std::pair<Change, QString>> inOrder{
        {[](VideoFile &f) { f.width.reset(); }, u"merge.reason.novideo"_s},
        {[](VideoFile &f) { f.videoCodec = u"hevc"_s; }, u"merge.reason.codec"_s},
        {[](VideoFile &f) { f.height = 719; }, u"merge.reason.resolution"_s},
        {[](VideoFile &f) { f.fps = 30; }, u"merge.reason.fps"_s},
        {[](VideoFile &f) { f.audioStreams.clear(); }, u"merge.reason.audiomix"_s},
        {[](VideoFile &f) { f.audioStreams.first().codec = u"mp3"_s; },
         u"merge.reason.audiocodec"_s},
    };
    // The later a reason is tested, the earlier its clip stands here.
    for (size_t first = 0; first < inOrder.size(); ++first) {
        QList<VideoFile> files{clip()};
        for (size_t later = inOrder.size(); later-- > first;) {
            files.append(changed(inOrder.at(later).first));
        }
        EXPECT_EQ(reasonOf(files), inOrder.at(first).second);
    }
}

TEST(MergePlanner, a_mix_of_sound_and_silence_is_told_before_a_difference_of_codecs)
{
    const VideoFile silent = changed([](VideoFile &f) { f.audioStreams.clear(); });
    const VideoFile mp3 = changed([](VideoFile &f) { f.audioStreams.first().codec = u"mp3"_s; });
    EXPECT_EQ(reasonOf({clip(), mp3, silent}), u"merge.reason.audiomix"_s);
    EXPECT_EQ(reasonOf({silent, clip(), mp3}), u"merge.reason.audiomix"_s);
}

TEST(MergePlanner, clips_are_compared_with_the_first_and_not_with_their_neighbours)
{
    // Each step is below five percent, both together aren't.
    EXPECT_EQ(reasonOf({atRate(25), atRate(26)}), QString());
    EXPECT_EQ(reasonOf({atRate(26), atRate(27)}), QString());
    EXPECT_EQ(reasonOf({atRate(25), atRate(26), atRate(27)}), u"merge.reason.fps"_s);
    EXPECT_EQ(reasonOf({atRate(26), atRate(25), atRate(27)}), QString());
}

TEST(MergePlanner, rates_of_29_97_and_30_count_as_the_same)
{
    EXPECT_TRUE(ratesMatch(30000.0 / 1001, 30));
    EXPECT_TRUE(ratesMatch(30, 30000.0 / 1001));
}

TEST(MergePlanner, rates_of_24_and_30_differ)
{
    EXPECT_FALSE(ratesMatch(24, 30));
    EXPECT_FALSE(ratesMatch(30, 24));
}

TEST(MergePlanner, a_difference_of_five_percent_of_the_first_is_too_much)
{
    EXPECT_FALSE(ratesMatch(20, 21));
    EXPECT_FALSE(ratesMatch(20, 19));
    EXPECT_TRUE(ratesMatch(21, 20));
    EXPECT_FALSE(ratesMatch(60, 63));
    EXPECT_FALSE(ratesMatch(100, 95));
    EXPECT_TRUE(ratesMatch(20, 20.99));
    EXPECT_TRUE(ratesMatch(20, 19.01));
}

TEST(MergePlanner, clips_without_a_known_rate_pass_the_rate_test)
{
    EXPECT_TRUE(ratesMatch(std::nullopt, std::nullopt));
}

TEST(MergePlanner, a_first_clip_without_a_rate_lets_every_rate_pass)
{
    EXPECT_TRUE(ratesMatch(std::nullopt, 30));
    EXPECT_TRUE(ratesMatch(0, 30));
    EXPECT_TRUE(ratesMatch(-1, 30));
}

TEST(MergePlanner, a_later_clip_without_a_rate_differs_from_a_known_one)
{
    EXPECT_FALSE(ratesMatch(30, std::nullopt));
    EXPECT_FALSE(ratesMatch(30, 0));
    EXPECT_FALSE(ratesMatch(30, -30));
}

TEST(MergePlanner, an_unknown_height_of_the_first_clip_lets_every_size_pass)
{
    const VideoFile unknown = changed([](VideoFile &f) { f.height.reset(); });
    const VideoFile small = changed([](VideoFile &f) { f.width = 320; });
    EXPECT_EQ(reasonOf({unknown, small}), QString());
    EXPECT_EQ(reasonOf({clip(), unknown}), u"merge.reason.resolution"_s);
}

TEST(MergePlanner, the_first_track_alone_is_compared)
{
    const VideoFile twoTracks = changed([](VideoFile &f) { addAudio(f, u"mp3"_s); });
    EXPECT_EQ(reasonOf({clip(), twoTracks}), QString());
    EXPECT_EQ(reasonOf({twoTracks, clip()}), QString());
}

TEST(MergePlanner, silent_clips_match_each_other)
{
    const VideoFile silent = changed([](VideoFile &f) { f.audioStreams.clear(); });
    EXPECT_EQ(reasonOf({silent, silent}), QString());
}

TEST(MergePlanner, the_canvas_takes_width_and_height_from_different_clips)
{
    EXPECT_EQ(MergePlanner::canvas({ofSize(1920, 800), ofSize(1080, 1920)}),
              (PictureSize{1920, 1920}));
}

TEST(MergePlanner, the_canvas_is_even_and_never_below_2)
{
    EXPECT_EQ(MergePlanner::canvas({ofSize(1921, 1081), ofSize(1920, 1080)}),
              (PictureSize{1920, 1080}));
    EXPECT_EQ(MergePlanner::canvas({ofSize(3, 2)}), (PictureSize{2, 2}));
    EXPECT_EQ(MergePlanner::canvas({ofSize(1, 0)}), (PictureSize{2, 2}));
    EXPECT_EQ(MergePlanner::canvas({ofSize(-4, -3)}), (PictureSize{2, 2}));
}

TEST(MergePlanner, unknown_sides_of_a_canvas_are_those_of_hd)
{
    EXPECT_EQ(MergePlanner::canvas({}), (PictureSize{1280, 720}));
    EXPECT_EQ(MergePlanner::canvas({ofSize(std::nullopt, 99), ofSize(std::nullopt, 100)}),
              (PictureSize{1280, 100}));
    EXPECT_EQ(MergePlanner::canvas({ofSize(640, std::nullopt)}), (PictureSize{640, 720}));
    EXPECT_EQ(MergePlanner::canvas({ofSize(std::nullopt, std::nullopt), ofSize(320, 180)}),
              (PictureSize{320, 180}));
}
