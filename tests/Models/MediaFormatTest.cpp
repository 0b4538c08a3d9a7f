// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/MediaFormat.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Codecs = QSet<QString>;

struct Row {
    OutputContainer container;
    QString raw;
    Codecs video;
    Codecs audio;
};

QList<Row> containers()
{
    return {
        {OutputContainer::mp4,
         u"mp4"_s,
         {u"h264"_s, u"hevc"_s, u"mpeg4"_s, u"av1"_s},
         {u"aac"_s, u"mp3"_s, u"ac3"_s, u"eac3"_s}},
        {OutputContainer::mov,
         u"mov"_s,
         {u"h264"_s, u"hevc"_s, u"mpeg4"_s, u"prores"_s, u"dnxhd"_s},
         {u"aac"_s, u"mp3"_s, u"ac3"_s, u"alac"_s, u"pcm_s16le"_s}},
        {OutputContainer::mkv,
         u"mkv"_s,
         {u"h264"_s, u"hevc"_s, u"mpeg4"_s, u"vp9"_s, u"vp8"_s, u"av1"_s, u"prores"_s,
          u"mpeg2video"_s, u"theora"_s, u"ffv1"_s},
         {u"aac"_s, u"mp3"_s, u"ac3"_s, u"eac3"_s, u"opus"_s, u"vorbis"_s, u"flac"_s,
          u"pcm_s16le"_s}},
        {OutputContainer::webm,
         u"webm"_s,
         {u"vp9"_s, u"vp8"_s, u"av1"_s},
         {u"opus"_s, u"vorbis"_s}},
        {OutputContainer::avi,
         u"avi"_s,
         {u"mpeg4"_s, u"mpeg2video"_s, u"h264"_s},
         {u"mp3"_s, u"ac3"_s, u"pcm_s16le"_s}},
    };
}

// Everything that stands anywhere in the tables, and some that stand nowhere.
Codecs allCodecs()
{
    Codecs all{u"mjpeg"_s, u"wmv3"_s, u"dts"_s, u"pcm_s24le"_s, u"gif"_s, u"h26"_s, u"h2645"_s};
    for (const Row &row : containers()) {
        all += row.video;
        all += row.audio;
    }
    return all;
}

std::string asked(const QString &codec, const Row &row)
{
    return (codec + u" in "_s + row.raw).toStdString();
}

} // namespace

TEST(MediaFormat, the_containers_stand_in_their_order_with_their_extensions)
{
    const auto cases = allCases<OutputContainer>();
    const QList<Row> rows = containers();
    ASSERT_EQ(cases.size(), static_cast<std::size_t>(rows.size()));
    for (qsizetype i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(cases.at(static_cast<std::size_t>(i)), rows.at(i).container);
        EXPECT_EQ(rawValue(rows.at(i).container), rows.at(i).raw);
        EXPECT_EQ(fromRawValue<OutputContainer>(rows.at(i).raw), rows.at(i).container);
    }
}

TEST(MediaFormat, the_codec_choices_stand_in_their_order_with_their_label_keys)
{
    struct Choice {
        CodecChoice choice;
        QString raw;
        QString label;
    };
    const QList<Choice> rows{
        {CodecChoice::automatic, u"auto"_s, u"advanced.codec.auto"_s},
        {CodecChoice::h264VideoToolbox, u"h264VideoToolbox"_s, u"advanced.codec.h264"_s},
        {CodecChoice::hevcVideoToolbox, u"hevcVideoToolbox"_s, u"advanced.codec.hevc"_s},
        {CodecChoice::softwareX264, u"softwareX264"_s, u"advanced.codec.software"_s},
        {CodecChoice::proresVideoToolbox, u"proresVideoToolbox"_s, u"advanced.codec.prores"_s},
        {CodecChoice::svtAV1, u"svtAV1"_s, u"advanced.codec.av1"_s},
    };
    const auto cases = allCases<CodecChoice>();
    ASSERT_EQ(cases.size(), static_cast<std::size_t>(rows.size()));
    for (qsizetype i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(cases.at(static_cast<std::size_t>(i)), rows.at(i).choice);
        EXPECT_EQ(rawValue(rows.at(i).choice), rows.at(i).raw);
        EXPECT_EQ(fromRawValue<CodecChoice>(rows.at(i).raw), rows.at(i).choice);
        EXPECT_EQ(labelKey(rows.at(i).choice), rows.at(i).label);
    }
}

TEST(MediaFormat, raw_values_are_compared_to_the_letter)
{
    for (const QString &text : {u""_s, u"MP4"_s, u".mp4"_s, u"m4v"_s, u"matroska"_s, u"mp4 "_s}) {
        EXPECT_FALSE(fromRawValue<OutputContainer>(text)) << text.toStdString();
    }
    for (const QString &text : {u""_s, u"automatic"_s, u"Auto"_s, u"h264"_s, u"svtav1"_s}) {
        EXPECT_FALSE(fromRawValue<CodecChoice>(text)) << text.toStdString();
    }
}

TEST(MediaFormat, each_container_takes_exactly_its_video_codecs)
{
    for (const Row &row : containers()) {
        EXPECT_EQ(CodecCompat::videoByContainer(row.container), row.video) << row.raw.toStdString();
        for (const QString &codec : allCodecs()) {
            EXPECT_EQ(CodecCompat::videoOK(codec, row.container), row.video.contains(codec))
                << asked(codec, row);
        }
    }
}

TEST(MediaFormat, each_container_takes_exactly_its_audio_codecs)
{
    for (const Row &row : containers()) {
        EXPECT_EQ(CodecCompat::audioByContainer(row.container), row.audio) << row.raw.toStdString();
        for (const QString &codec : allCodecs()) {
            EXPECT_EQ(CodecCompat::audioOK(codec, row.container), row.audio.contains(codec))
                << asked(codec, row);
        }
    }
}

TEST(MediaFormat, the_tables_are_built_once)
{
    EXPECT_EQ(&CodecCompat::videoByContainer(OutputContainer::mkv),
              &CodecCompat::videoByContainer(OutputContainer::mkv));
    EXPECT_EQ(&CodecCompat::audioByContainer(OutputContainer::mkv),
              &CodecCompat::audioByContainer(OutputContainer::mkv));
}

TEST(MediaFormat, codec_names_are_compared_in_lower_case)
{
    EXPECT_TRUE(CodecCompat::videoOK(u"H264"_s, OutputContainer::mp4));
    EXPECT_TRUE(CodecCompat::videoOK(u"ProRes"_s, OutputContainer::mov));
    EXPECT_TRUE(CodecCompat::audioOK(u"PCM_S16LE"_s, OutputContainer::avi));
    EXPECT_FALSE(CodecCompat::audioOK(u"AAC"_s, OutputContainer::webm));
}

TEST(MediaFormat, an_unknown_video_codec_is_never_copied)
{
    for (const OutputContainer container : allCases<OutputContainer>()) {
        EXPECT_FALSE(CodecCompat::videoOK(std::nullopt, container));
        EXPECT_FALSE(CodecCompat::videoOK(u""_s, container));
        EXPECT_FALSE(CodecCompat::videoOK(QString(), container));
    }
}

TEST(MediaFormat, absent_audio_stands_in_no_containers_way)
{
    for (const OutputContainer container : allCases<OutputContainer>()) {
        EXPECT_TRUE(CodecCompat::audioOK(std::nullopt, container));
        EXPECT_TRUE(CodecCompat::audioOK(u""_s, container));
        EXPECT_TRUE(CodecCompat::audioOK(QString(), container));
    }
}

TEST(MediaFormat, a_name_of_blanks_is_neither_absent_nor_known)
{
    EXPECT_FALSE(CodecCompat::videoOK(u" "_s, OutputContainer::mkv));
    EXPECT_FALSE(CodecCompat::audioOK(u" "_s, OutputContainer::mkv));
    EXPECT_FALSE(CodecCompat::audioOK(u"aac "_s, OutputContainer::mkv));
}

TEST(MediaFormat, webm_takes_neither_aac_nor_h264)
{
    EXPECT_FALSE(CodecCompat::audioOK(u"aac"_s, OutputContainer::webm));
    EXPECT_FALSE(CodecCompat::videoOK(u"h264"_s, OutputContainer::webm));
}

TEST(MediaFormat, mp4_refuses_vp9_although_it_could_hold_it)
{
    EXPECT_FALSE(CodecCompat::videoOK(u"vp9"_s, OutputContainer::mp4));
}

TEST(MediaFormat, the_gaps_of_the_tables_stay)
{
    EXPECT_FALSE(CodecCompat::audioOK(u"alac"_s, OutputContainer::mp4));
    EXPECT_FALSE(CodecCompat::videoOK(u"av1"_s, OutputContainer::mov));
    EXPECT_FALSE(CodecCompat::audioOK(u"aac"_s, OutputContainer::avi));
}

TEST(MediaFormat, video_and_audio_have_tables_of_their_own)
{
    EXPECT_FALSE(CodecCompat::videoOK(u"aac"_s, OutputContainer::mp4));
    EXPECT_FALSE(CodecCompat::audioOK(u"h264"_s, OutputContainer::mp4));
}
