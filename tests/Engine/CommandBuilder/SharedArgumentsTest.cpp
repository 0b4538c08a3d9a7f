// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/SharedArguments.h"

#include "support/GoldenLines.h"

#include <QDir>

#include <gtest/gtest.h>

#include <array>
#include <tuple>
#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;

namespace {

using Aspect = CropSpec::Aspect;
using AudioFormat = ConvertParams::AudioFormat;
using Side = std::optional<qint64>;

constexpr std::array allContainers{OutputContainer::mp4, OutputContainer::mov, OutputContainer::mkv,
                                   OutputContainer::webm, OutputContainer::avi};

VideoFile pictureOf(Side width, Side height)
{
    VideoFile file;
    file.url = QUrl::fromLocalFile(u"/films/a.mov"_s);
    file.videoCodec = u"h264"_s;
    file.width = width;
    file.height = height;
    return file;
}

VideoFile soundOf(const QStringList &codecs)
{
    VideoFile file;
    for (const QString &codec : codecs) {
        file.audioStreams += Samples::track(codec);
    }
    return file;
}

CropSpec cropTo(Aspect aspect, Side width = std::nullopt, Side height = std::nullopt)
{
    CropSpec spec;
    spec.aspect = aspect;
    spec.customWidth = width;
    spec.customHeight = height;
    return spec;
}

AdvancedOptions withCrop(const CropSpec &spec)
{
    AdvancedOptions advanced;
    advanced.crop = spec;
    return advanced;
}

AdvancedOptions withCodec(CodecChoice codec)
{
    AdvancedOptions advanced;
    advanced.codec = codec;
    return advanced;
}

AdvancedOptions withReplacement(const QString &path)
{
    AdvancedOptions advanced;
    advanced.replacementAudioURL = QUrl::fromLocalFile(path);
    return advanced;
}

AdvancedOptions withExtraArgs(const QString &text)
{
    AdvancedOptions advanced;
    advanced.extraArgs = text;
    return advanced;
}

AdvancedOptions withFpsCap(qint64 cap)
{
    AdvancedOptions advanced;
    advanced.fpsCap = cap;
    return advanced;
}

AdvancedOptions withVolume(double decibels)
{
    AdvancedOptions advanced;
    advanced.volumeDb = decibels;
    return advanced;
}

ConvertParams withAudioFormat(AudioFormat format)
{
    ConvertParams params;
    params.audioFormat = format;
    return params;
}

QString outputPath(const VideoFile &file, const std::optional<QUrl> &directory,
                   const std::optional<QString> &nameTemplate)
{
    return CommandBuilder::outputURL(file, u"8MB"_s, u"mp4"_s, directory, nameTemplate)
        .toLocalFile();
}

VideoFile fileAt(const QString &path)
{
    VideoFile file;
    file.url = QUrl::fromLocalFile(path);
    return file;
}

} // namespace

TEST(SharedArguments, every_command_line_has_the_same_head)
{
    EXPECT_EQ(CommandBuilder::baseArgs(),
              words("-hide_banner -nostdin -loglevel error -progress pipe:1 -nostats -y"));
}

TEST(SharedArguments, megabytes_print_whole_or_with_one_decimal)
{
    struct Row {
        double megabytes;
        QString text;
    };
    const std::vector<Row> rows{
        {25, u"25"_s},       {25.5, u"25.5"_s},       {25.55, u"25.6"_s}, {8.25, u"8.2"_s},
        {8.75, u"8.8"_s},    {0.5, u"0.5"_s},         {0.04, u"0.0"_s},   {9.96, u"10.0"_s},
        {24.999, u"25.0"_s}, {1000000, u"1000000"_s}, {0, u"0"_s},        {-0.0, u"0"_s},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(CommandBuilder::formatMB(row.megabytes), row.text) << row.megabytes;
    }
}

TEST(SharedArguments, a_picture_needs_a_codec_and_a_width)
{
    VideoFile codecless = pictureOf(320, 180);
    codecless.videoCodec.reset();

    EXPECT_TRUE(CommandBuilder::hasVideo(pictureOf(320, 180)));
    EXPECT_TRUE(CommandBuilder::hasVideo(pictureOf(320, std::nullopt)));
    EXPECT_FALSE(CommandBuilder::hasVideo(pictureOf(std::nullopt, 180)));
    EXPECT_FALSE(CommandBuilder::hasVideo(codecless));
    EXPECT_FALSE(CommandBuilder::hasVideo(VideoFile()));
}

TEST(SharedArguments, an_output_stands_beside_its_source)
{
    const TempFolder folder;
    EXPECT_EQ(outputPath(fileAt(folder.path(u"a.b.mov"_s)), std::nullopt, std::nullopt),
              folder.path(u"a.b-8MB.mp4"_s));
}

TEST(SharedArguments, an_output_folder_takes_the_place_of_the_source_s)
{
    const TempFolder folder;
    const VideoFile file = fileAt(u"/films/a.mov"_s);

    for (const QString &directory : {folder.path(), QString(folder.path() + u'/')}) {
        EXPECT_EQ(outputPath(file, QUrl::fromLocalFile(directory), std::nullopt),
                  folder.path(u"a-8MB.mp4"_s));
    }
}

TEST(SharedArguments, an_output_name_that_is_taken_is_numbered)
{
    const TempFolder folder;
    folder.write(u"a-8MB.mp4"_s, "taken");
    folder.write(u"a-8MB 2.mp4"_s, "taken");

    EXPECT_EQ(outputPath(fileAt(folder.path(u"a.mov"_s)), std::nullopt, std::nullopt),
              folder.path(u"a-8MB 3.mp4"_s));
}

TEST(SharedArguments, a_template_names_the_output)
{
    const TempFolder folder;
    EXPECT_EQ(
        outputPath(fileAt(folder.path(u"a.mov"_s)), std::nullopt, u" {suffix} of {name}.{ext} "_s),
        folder.path(u"8MB of a.mp4.mp4"_s));
}

TEST(SharedArguments, a_template_of_the_name_alone_never_overwrites_the_source)
{
    const TempFolder folder;
    const VideoFile file = fileAt(folder.write(u"a.mp4"_s, "film"));

    EXPECT_EQ(outputPath(file, std::nullopt, u"{name}"_s), folder.path(u"a 2.mp4"_s));
}

TEST(SharedArguments, a_template_with_a_slash_leads_into_a_sub_folder)
{
    const TempFolder folder;
    EXPECT_EQ(outputPath(fileAt(folder.path(u"a.mov"_s)), std::nullopt, u"small/{name}"_s),
              folder.path(u"small/a.mp4"_s));
}

TEST(SharedArguments, a_template_that_begins_with_a_slash_stays_in_the_folder)
{
    const TempFolder folder;
    const QString path =
        outputPath(fileAt(folder.path(u"a.mov"_s)), std::nullopt, u"/small/{name}"_s);
    EXPECT_EQ(QDir::cleanPath(path), folder.path(u"small/a.mp4"_s));
}

TEST(SharedArguments, odd_characters_of_a_name_reach_the_output)
{
    const TempFolder folder;
    for (const QString &name :
         {u"a %20 ?#b"_s, u"-a"_s, u"it's \"a\""_s, u"片 é"_s, u"a\nb"_s, u"%1"_s}) {
        EXPECT_EQ(
            outputPath(fileAt(folder.path() + u'/' + name + u".mov"_s), std::nullopt, std::nullopt),
            folder.path() + u'/' + name + u"-8MB.mp4"_s);
    }
}

TEST(SharedArguments, a_name_that_begins_with_a_colon_stays_in_the_folder)
{
    const TempFolder folder;
    EXPECT_EQ(outputPath(fileAt(folder.path() + u"/:a.mov"_s), std::nullopt, std::nullopt),
              folder.path() + u"/:a-8MB.mp4"_s);
}

TEST(SharedArguments, the_effective_width_follows_the_crop)
{
    struct Row {
        Side width;
        Side height;
        std::optional<CropSpec> crop;
        Side expected;
    };
    const std::vector<Row> rows{
        {1920, 1080, std::nullopt, 1920},
        {std::nullopt, 1080, cropTo(Aspect::ratio1x1), std::nullopt},
        {std::nullopt, 1080, std::nullopt, std::nullopt},
        {1920, std::nullopt, cropTo(Aspect::ratio1x1), 1920},
        {0, 1080, cropTo(Aspect::ratio1x1), 0},
        {1920, 0, cropTo(Aspect::ratio1x1), 1920},
        {-5, 1080, cropTo(Aspect::ratio1x1), -5},
        // A free crop doesn't count, with sides or without.
        {1920, 1080, cropTo(Aspect::free), 1920},
        {1920, 1080, cropTo(Aspect::free, 320, 180), 1920},
        {1920, 1080, cropTo(Aspect::ratio16x9), 1920},
        {2560, 1080, cropTo(Aspect::ratio16x9), 1920},
        {1000, 1000, cropTo(Aspect::ratio16x9), 1000},
        {1921, 1080, cropTo(Aspect::ratio16x9), 1920},
        {1920, 1080, cropTo(Aspect::ratio9x16), 607},
        {1080, 1920, cropTo(Aspect::ratio9x16), 1080},
        {500, 1920, cropTo(Aspect::ratio9x16), 500},
        {1920, 1080, cropTo(Aspect::ratio4x3), 1440},
        {640, 480, cropTo(Aspect::ratio4x3), 640},
        {1919, 1079, cropTo(Aspect::ratio4x3), 1438},
        {1920, 1080, cropTo(Aspect::ratio1x1), 1080},
        {1080, 1920, cropTo(Aspect::ratio1x1), 1080},
        // Not rounded to an even side.
        {1921, 1081, cropTo(Aspect::ratio1x1), 1081},
    };
    for (size_t number = 0; number < rows.size(); ++number) {
        const Row &row = rows[number];
        EXPECT_EQ(CommandBuilder::effectiveWidth(pictureOf(row.width, row.height), row.crop),
                  row.expected)
            << "row " << number;
    }
}

TEST(SharedArguments, the_pass_log_stands_in_the_temporary_folder_under_the_file_s_identity)
{
    const TempFolder folder;
    const ScopedEnvironment temporary("TMPDIR", folder.path().toUtf8());
    const QString temporaryPath = QDir(folder.path()).canonicalPath();
    const QUuid id(u"{0E984725-C51C-4BF4-9960-E1C80E27ABA0}"_s);

    EXPECT_EQ(CommandBuilder::passLogPrefix(id),
              temporaryPath + u"/mx-2pass-0e984725-c51c-4bf4-9960-e1c80e27aba0"_s);
    EXPECT_EQ(CommandBuilder::passLogPrefix(id), CommandBuilder::passLogPrefix(id));
}

TEST(SharedArguments, a_crop_is_cut_to_its_shape)
{
    struct Row {
        CropSpec spec;
        Side width;
        Side height;
        QString size;
    };
    const std::vector<Row> rows{
        {cropTo(Aspect::ratio16x9), 1920, 1080, u"1920:1080"_s},
        {cropTo(Aspect::ratio16x9), 2560, 1080, u"1920:1080"_s},
        {cropTo(Aspect::ratio16x9), 1080, 1920, u"1080:606"_s},
        {cropTo(Aspect::ratio16x9), 1000, 1000, u"1000:562"_s},
        {cropTo(Aspect::ratio9x16), 1920, 1080, u"606:1080"_s},
        {cropTo(Aspect::ratio9x16), 1080, 1920, u"1080:1920"_s},
        {cropTo(Aspect::ratio9x16), 720, 1920, u"720:1280"_s},
        {cropTo(Aspect::ratio4x3), 1920, 1080, u"1440:1080"_s},
        {cropTo(Aspect::ratio4x3), 640, 480, u"640:480"_s},
        {cropTo(Aspect::ratio4x3), 1080, 1920, u"1080:810"_s},
        {cropTo(Aspect::ratio1x1), 1920, 1080, u"1080:1080"_s},
        {cropTo(Aspect::ratio1x1), 1080, 1920, u"1080:1080"_s},
        {cropTo(Aspect::free, 640, 480), 1920, 1080, u"640:480"_s},
        {cropTo(Aspect::free, 4000, 4000), 1920, 1080, u"1920:1080"_s},
        {cropTo(Aspect::free, 4000, 300), 1921, 1080, u"1920:300"_s},
        // The custom sides are read for the free shape only.
        {cropTo(Aspect::ratio1x1, 10, 10), 1920, 1080, u"1080:1080"_s},
    };
    for (size_t number = 0; number < rows.size(); ++number) {
        const Row &row = rows[number];
        EXPECT_EQ(CommandBuilder::cropFilter(row.spec, row.width, row.height),
                  u"crop="_s + row.size + u":(iw-ow)/2:(ih-oh)/2"_s)
            << "row " << number;
    }
}

TEST(SharedArguments, a_crop_side_of_3_becomes_2_and_one_of_5_becomes_4)
{
    EXPECT_EQ(CommandBuilder::cropFilter(cropTo(Aspect::free, 3, 5), 1920, 1080),
              u"crop=2:4:(iw-ow)/2:(ih-oh)/2"_s);
}

TEST(SharedArguments, crop_sides_are_even_and_never_below_2)
{
    const std::vector<std::pair<qint64, QString>> rows{
        {1, u"2"_s}, {2, u"2"_s}, {3, u"2"_s}, {4, u"4"_s},
        {5, u"4"_s}, {6, u"6"_s}, {7, u"6"_s}, {101, u"100"_s},
    };
    for (const auto &[side, even] : rows) {
        EXPECT_EQ(CommandBuilder::cropFilter(cropTo(Aspect::free, side, side), 1920, 1080),
                  u"crop="_s + even + u':' + even + u":(iw-ow)/2:(ih-oh)/2"_s);
    }
    // A ratio may leave a side of none at all: 1 × 9 ÷ 16.
    EXPECT_EQ(CommandBuilder::cropFilter(cropTo(Aspect::ratio16x9), 1, 1),
              u"crop=2:2:(iw-ow)/2:(ih-oh)/2"_s);
}

TEST(SharedArguments, a_crop_of_an_unknown_picture_is_left_out)
{
    const CropSpec square = cropTo(Aspect::ratio1x1);
    EXPECT_EQ(CommandBuilder::cropFilter(square, std::nullopt, 1080), std::nullopt);
    EXPECT_EQ(CommandBuilder::cropFilter(square, 1920, std::nullopt), std::nullopt);
    EXPECT_EQ(CommandBuilder::cropFilter(square, 0, 1080), std::nullopt);
    EXPECT_EQ(CommandBuilder::cropFilter(square, 1920, 0), std::nullopt);
    EXPECT_EQ(CommandBuilder::cropFilter(square, -1, -1), std::nullopt);
}

TEST(SharedArguments, a_free_crop_that_lacks_a_side_gives_no_filter_and_the_whole_width)
{
    const VideoFile file = pictureOf(1920, 1080);
    for (const CropSpec &spec :
         {cropTo(Aspect::free), cropTo(Aspect::free, 640), cropTo(Aspect::free, std::nullopt, 480),
          cropTo(Aspect::free, 0, 480), cropTo(Aspect::free, 640, 0),
          cropTo(Aspect::free, -640, -480)}) {
        EXPECT_EQ(CommandBuilder::cropFilter(spec, 1920, 1080), std::nullopt);
        EXPECT_EQ(CommandBuilder::videoFilterArgs(file, std::nullopt, withCrop(spec)),
                  QStringList());
        EXPECT_EQ(CommandBuilder::effectiveWidth(file, spec), 1920);
    }
}

TEST(SharedArguments, an_odd_source_is_rescaled_at_its_own_height)
{
    EXPECT_EQ(CommandBuilder::videoFilterArgs(pictureOf(1921, 1081), std::nullopt, {}),
              words("-vf scale=-2:1081"));
}

TEST(SharedArguments, a_cap_at_the_height_of_an_even_source_gives_no_filter)
{
    EXPECT_EQ(CommandBuilder::videoFilterArgs(pictureOf(1920, 1080), 1080, {}), QStringList());
}

TEST(SharedArguments, the_filter_is_crop_then_scale)
{
    struct Row {
        Side width;
        Side height;
        Side maxHeight;
        std::optional<CropSpec> crop;
        const char *expected;
    };
    const std::vector<Row> rows{
        {1920, 1080, std::nullopt, std::nullopt, ""},
        {1920, 1080, 720, std::nullopt, "-vf scale=-2:720"},
        {1920, 1080, 2160, std::nullopt, ""},
        {1920, 1080, 1079, std::nullopt, "-vf scale=-2:1079"},
        {1921, 1080, std::nullopt, std::nullopt, "-vf scale=-2:1080"},
        {1920, 1081, std::nullopt, std::nullopt, "-vf scale=-2:1081"},
        {1921, 1080, 1080, std::nullopt, "-vf scale=-2:1080"},
        {1921, 1081, 2160, std::nullopt, "-vf scale=-2:1081"},
        {1921, 1081, 720, std::nullopt, "-vf scale=-2:720"},
        {std::nullopt, 1081, 720, std::nullopt, ""},
        {1921, std::nullopt, 720, std::nullopt, ""},
        {std::nullopt, std::nullopt, 720, cropTo(Aspect::ratio1x1), ""},
        {1920, 1080, std::nullopt, cropTo(Aspect::ratio1x1),
         "-vf crop=1080:1080:(iw-ow)/2:(ih-oh)/2"},
        {1920, 1080, 720, cropTo(Aspect::ratio4x3),
         "-vf crop=1440:1080:(iw-ow)/2:(ih-oh)/2,scale=-2:720"},
        // The scale goes by the source's size, even where the crop has made it smaller or even.
        {1920, 1080, 720, cropTo(Aspect::free, 640, 360),
         "-vf crop=640:360:(iw-ow)/2:(ih-oh)/2,scale=-2:720"},
        {1921, 1081, std::nullopt, cropTo(Aspect::free, 640, 360),
         "-vf crop=640:360:(iw-ow)/2:(ih-oh)/2,scale=-2:1081"},
        {1921, 1081, std::nullopt, cropTo(Aspect::free), "-vf scale=-2:1081"},
    };
    for (size_t number = 0; number < rows.size(); ++number) {
        const Row &row = rows[number];
        AdvancedOptions advanced;
        advanced.crop = row.crop;
        EXPECT_EQ(CommandBuilder::videoFilterArgs(pictureOf(row.width, row.height), row.maxHeight,
                                                  advanced),
                  words(row.expected))
            << "row " << number;
    }
}

TEST(SharedArguments, replacement_audio_is_a_second_input)
{
    const AdvancedOptions advanced = withReplacement(u"/music/b c.m4a"_s);
    EXPECT_EQ(CommandBuilder::replacementInputArgs(advanced, false),
              (QStringList{u"-i"_s, u"/music/b c.m4a"_s}));
    EXPECT_EQ(CommandBuilder::replacementInputArgs(advanced, true), QStringList());
    EXPECT_EQ(CommandBuilder::replacementInputArgs({}, false), QStringList());
    EXPECT_EQ(CommandBuilder::replacementInputArgs({}, true), QStringList());
}

TEST(SharedArguments, the_stream_maps_follow_replacement_mute_and_picture)
{
    const AdvancedOptions replaced = withReplacement(u"/music/b.m4a"_s);
    struct Row {
        AdvancedOptions advanced;
        bool muted;
        bool hasVideo;
        const char *full;
        const char *videoOnly;
    };
    const std::vector<Row> rows{
        {replaced, false, true, "-map 0:v:0 -map 1:a:0 -shortest", "-map 0:v:0"},
        {replaced, false, false, "-map 1:a:0 -shortest", ""},
        {replaced, true, true, "-map 0:v:0 -map 0:a?", "-map 0:v:0"},
        {replaced, true, false, "-map 0:a?", ""},
        {{}, false, true, "-map 0:v:0 -map 0:a?", "-map 0:v:0"},
        {{}, false, false, "-map 0:a?", ""},
        {{}, true, true, "-map 0:v:0 -map 0:a?", "-map 0:v:0"},
        {{}, true, false, "-map 0:a?", ""},
    };
    for (size_t number = 0; number < rows.size(); ++number) {
        const Row &row = rows[number];
        const auto maps = CommandBuilder::replacementMapArgs(row.advanced, row.muted, row.hasVideo);
        EXPECT_EQ(maps.full, words(row.full)) << "row " << number;
        EXPECT_EQ(maps.videoOnly, words(row.videoOnly)) << "row " << number;
    }
}

TEST(SharedArguments, extra_arguments_are_split_at_blanks_and_empty_pieces_are_dropped)
{
    EXPECT_EQ(CommandBuilder::extraArgTokens(withExtraArgs(u"  -tune   film "_s)),
              (QStringList{u"-tune"_s, u"film"_s}));
}

TEST(SharedArguments, extra_arguments_know_no_quotes_and_no_separator_but_the_blank)
{
    EXPECT_EQ(CommandBuilder::extraArgTokens({}), QStringList());
    EXPECT_EQ(CommandBuilder::extraArgTokens(withExtraArgs(u"   "_s)), QStringList());
    EXPECT_EQ(CommandBuilder::extraArgTokens(withExtraArgs(u"-a\tb c"_s)),
              (QStringList{u"-a\tb"_s, u"c"_s}));
    EXPECT_EQ(CommandBuilder::extraArgTokens(withExtraArgs(u"\t"_s)), QStringList{u"\t"_s});
    EXPECT_EQ(CommandBuilder::extraArgTokens(withExtraArgs(u"x\ny\u00a0z"_s)),
              QStringList{u"x\ny\u00a0z"_s});
    EXPECT_EQ(CommandBuilder::extraArgTokens(withExtraArgs(u"-metadata 'title=a b' \\ \""_s)),
              (QStringList{u"-metadata"_s, u"'title=a"_s, u"b'"_s, u"\\"_s, u"\""_s}));
}

TEST(SharedArguments, these_options_rule_out_a_copy_of_the_picture)
{
    EXPECT_TRUE(CommandBuilder::advancedNeedsVideoReencode(withCrop(cropTo(Aspect::ratio1x1))));
    // Even a crop that can't be built, and a cap that is none.
    EXPECT_TRUE(CommandBuilder::advancedNeedsVideoReencode(withCrop(cropTo(Aspect::free))));
    EXPECT_TRUE(CommandBuilder::advancedNeedsVideoReencode(withFpsCap(30)));
    EXPECT_TRUE(CommandBuilder::advancedNeedsVideoReencode(withFpsCap(0)));
    EXPECT_TRUE(CommandBuilder::advancedNeedsVideoReencode(withCodec(CodecChoice::softwareX264)));
    EXPECT_TRUE(CommandBuilder::advancedNeedsVideoReencode(withExtraArgs(u" -tune film"_s)));
    EXPECT_TRUE(CommandBuilder::advancedNeedsVideoReencode(withExtraArgs(u" \n "_s)));
}

TEST(SharedArguments, these_options_leave_a_copy_of_the_picture_possible)
{
    AdvancedOptions others;
    others.crf = 20;
    others.hdrPassthrough = true;
    others.preserveAlpha = true;
    others.audioBitrateKbps = 96;
    others.volumeDb = -3;
    others.replacementAudioURL = QUrl::fromLocalFile(u"/music/b.m4a"_s);
    others.extraArgs = u" \t "_s;

    EXPECT_FALSE(CommandBuilder::advancedNeedsVideoReencode({}));
    EXPECT_FALSE(CommandBuilder::advancedNeedsVideoReencode(others));
    for (const CodecChoice codec :
         {CodecChoice::automatic, CodecChoice::h264VideoToolbox, CodecChoice::hevcVideoToolbox,
          CodecChoice::proresVideoToolbox, CodecChoice::svtAV1}) {
        EXPECT_FALSE(CommandBuilder::advancedNeedsVideoReencode(withCodec(codec)));
    }
}

TEST(SharedArguments, the_pixel_format_is_alpha_then_hdr_then_plain)
{
    const char *const alpha = "-pix_fmt yuva444p10le";
    const char *const hdr = "-pix_fmt p010le -color_primaries bt2020 -color_trc smpte2084 "
                            "-colorspace bt2020nc";
    const char *const plain = "-pix_fmt yuv420p";
    struct Row {
        bool fileHasAlpha;
        bool fileIsHDR;
        bool preserveAlpha;
        bool hdrPassthrough;
        const char *encoder;
        const char *expected;
    };
    const std::vector<Row> rows{
        {false, false, false, false, "hevc_videotoolbox", plain},
        {true, false, true, false, "libx264", alpha},
        {true, false, false, false, "libx264", plain},
        {false, false, true, false, "libx264", plain},
        {false, true, false, true, "hevc_videotoolbox", hdr},
        {false, true, false, false, "hevc_videotoolbox", plain},
        {false, false, false, true, "hevc_videotoolbox", plain},
        {true, true, true, true, "hevc_videotoolbox", alpha},
        {true, true, false, true, "hevc_videotoolbox", hdr},
        {false, true, true, true, "hevc_videotoolbox", hdr},
    };
    for (size_t number = 0; number < rows.size(); ++number) {
        const Row &row = rows[number];
        VideoFile file;
        file.hasAlphaChannel = row.fileHasAlpha;
        file.isHDR = row.fileIsHDR;
        AdvancedOptions advanced;
        advanced.preserveAlpha = row.preserveAlpha;
        advanced.hdrPassthrough = row.hdrPassthrough;
        EXPECT_EQ(CommandBuilder::pixelFormatArgs(file, advanced, QString::fromLatin1(row.encoder)),
                  words(row.expected))
            << "row " << number;
    }
}

TEST(SharedArguments, hdr_passthrough_is_for_hevc_on_video_toolbox_only)
{
    VideoFile file;
    file.isHDR = true;
    AdvancedOptions advanced;
    advanced.hdrPassthrough = true;

    for (const QString &encoder : {u"libx264"_s, u"h264_videotoolbox"_s, u"prores_videotoolbox"_s,
                                   u"libx265"_s, u"HEVC_VIDEOTOOLBOX"_s, QString()}) {
        EXPECT_EQ(CommandBuilder::pixelFormatArgs(file, advanced, encoder),
                  words("-pix_fmt yuv420p"));
    }
}

TEST(SharedArguments, alpha_wins_over_hdr)
{
    VideoFile file;
    file.isHDR = true;
    file.hasAlphaChannel = true;
    AdvancedOptions advanced;
    advanced.hdrPassthrough = true;
    advanced.preserveAlpha = true;

    EXPECT_EQ(CommandBuilder::pixelFormatArgs(file, advanced, u"hevc_videotoolbox"_s),
              words("-pix_fmt yuva444p10le"));
}

TEST(SharedArguments, each_codec_choice_has_its_encoder)
{
    const FFmpegToolset withX264 = offering({u"libx264"_s, u"libsvtav1"_s, u"prores_ks"_s});
    const FFmpegToolset bare = offering({});
    struct Row {
        CodecChoice codec;
        QString expected;
        QString expectedBare;
    };
    const QString h264 = u"h264_videotoolbox"_s;
    const std::vector<Row> rows{
        {CodecChoice::automatic, h264, h264},
        {CodecChoice::h264VideoToolbox, h264, h264},
        {CodecChoice::hevcVideoToolbox, u"hevc_videotoolbox"_s, u"hevc_videotoolbox"_s},
        {CodecChoice::softwareX264, u"libx264"_s, h264},
        {CodecChoice::proresVideoToolbox, u"prores_videotoolbox"_s, u"prores_videotoolbox"_s},
        {CodecChoice::svtAV1, h264, h264},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(CommandBuilder::encoderForChoice(row.codec, withX264), row.expected);
        EXPECT_EQ(CommandBuilder::encoderForChoice(row.codec, bare), row.expectedBare);
        for (const OutputContainer container : allContainers) {
            const bool isWebm = container == OutputContainer::webm;
            const AdvancedOptions advanced = withCodec(row.codec);
            EXPECT_EQ(CommandBuilder::advancedEncoder(advanced, withX264, container),
                      isWebm ? u"libvpx-vp9"_s : row.expected);
            EXPECT_EQ(CommandBuilder::advancedEncoder(advanced, bare, container),
                      isWebm ? u"libvpx-vp9"_s : row.expectedBare);
        }
    }
}

TEST(SharedArguments, the_audio_format_decides_what_audio_is_encoded_to)
{
    using Spec = CommandBuilder::ConvertAudioSpec;
    const Spec aac{u"aac"_s, u"aac"_s};
    const Spec opus{u"libopus"_s, u"opus"_s};
    const Spec mp3{u"libmp3lame"_s, u"mp3"_s};
    const Spec wav{u"pcm_s16le"_s, u"wav"_s};
    const Spec flac{u"flac"_s, u"flac"_s};
    struct Row {
        AudioFormat format;
        OutputContainer container;
        QStringList sources;
        std::optional<Spec> expected;
    };
    const std::vector<Row> rows{
        {AudioFormat::keep, OutputContainer::webm, {u"aac"_s}, std::nullopt},
        {AudioFormat::aac, OutputContainer::mp4, {u"AAC"_s}, std::nullopt},
        {AudioFormat::aac, OutputContainer::webm, {u"aac"_s}, std::nullopt},
        {AudioFormat::aac, OutputContainer::mp4, {u"mp3"_s}, aac},
        {AudioFormat::aac, OutputContainer::mov, {u"mp3"_s}, aac},
        {AudioFormat::aac, OutputContainer::mkv, {u"mp3"_s}, aac},
        {AudioFormat::aac, OutputContainer::webm, {u"mp3"_s}, opus},
        {AudioFormat::aac, OutputContainer::avi, {u"mp3"_s}, opus},
        {AudioFormat::aac, OutputContainer::mp4, {QString()}, aac},
        {AudioFormat::mp3, OutputContainer::mp4, {u"Mp3"_s}, std::nullopt},
        {AudioFormat::mp3, OutputContainer::mp4, {u"aac"_s}, mp3},
        {AudioFormat::mp3, OutputContainer::webm, {u"aac"_s}, mp3},
        {AudioFormat::wav, OutputContainer::avi, {u"aac"_s}, wav},
        {AudioFormat::wav, OutputContainer::mp4, {u"aac"_s}, wav},
        {AudioFormat::flac, OutputContainer::mkv, {u"aac"_s}, flac},
        // Unlike the others, these two formats are made anew even from their own kind.
        {AudioFormat::flac, OutputContainer::mkv, {u"flac"_s}, flac},
        {AudioFormat::flac, OutputContainer::mp4, {u"flac"_s}, aac},
        {AudioFormat::flac, OutputContainer::mov, {u"aac"_s}, aac},
        {AudioFormat::flac, OutputContainer::webm, {u"opus"_s}, aac},
        {AudioFormat::flac, OutputContainer::avi, {u"mp3"_s}, aac},
        // The first track decides.
        {AudioFormat::aac, OutputContainer::mp4, {u"mp3"_s, u"aac"_s}, aac},
        {AudioFormat::aac, OutputContainer::mp4, {u"aac"_s, u"mp3"_s}, std::nullopt},
    };
    for (size_t number = 0; number < rows.size(); ++number) {
        const Row &row = rows[number];
        EXPECT_EQ(CommandBuilder::convertAudioSpec(soundOf(row.sources),
                                                   withAudioFormat(row.format), row.container),
                  row.expected)
            << "row " << number;
    }
}

TEST(SharedArguments, wav_encodes_even_a_pcm_source_anew_while_aac_copies_an_aac_source)
{
    EXPECT_EQ(CommandBuilder::convertAudioSpec(soundOf({u"pcm_s16le"_s}),
                                               withAudioFormat(AudioFormat::wav),
                                               OutputContainer::mov),
              (CommandBuilder::ConvertAudioSpec{u"pcm_s16le"_s, u"wav"_s}));
    EXPECT_EQ(CommandBuilder::convertAudioSpec(
                  soundOf({u"aac"_s}), withAudioFormat(AudioFormat::aac), OutputContainer::mov),
              std::nullopt);
}

TEST(SharedArguments, a_file_without_audio_has_none_to_encode)
{
    for (const AudioFormat format : {AudioFormat::keep, AudioFormat::aac, AudioFormat::mp3,
                                     AudioFormat::wav, AudioFormat::flac}) {
        for (const OutputContainer container : allContainers) {
            EXPECT_EQ(
                CommandBuilder::convertAudioSpec(VideoFile(), withAudioFormat(format), container),
                std::nullopt);
        }
    }
}

TEST(SharedArguments, the_audio_container_is_the_argument_and_not_the_parameter)
{
    ConvertParams params = withAudioFormat(AudioFormat::flac);
    params.container = OutputContainer::mp4;
    EXPECT_EQ(
        CommandBuilder::convertAudioSpec(soundOf({u"aac"_s}), params, OutputContainer::mkv)->codec,
        u"flac"_s);
}

TEST(SharedArguments, a_frame_rate_cap_counts_from_1)
{
    EXPECT_EQ(CommandBuilder::rateArgs({}), QStringList());
    EXPECT_EQ(CommandBuilder::rateArgs(withFpsCap(0)), QStringList());
    EXPECT_EQ(CommandBuilder::rateArgs(withFpsCap(-30)), QStringList());
    EXPECT_EQ(CommandBuilder::rateArgs(withFpsCap(1)), words("-r 1"));
    EXPECT_EQ(CommandBuilder::rateArgs(withFpsCap(1200)), words("-r 1200"));
}

TEST(SharedArguments, the_gain_has_one_decimal)
{
    EXPECT_EQ(CommandBuilder::volumeArgs({}), QStringList());
    EXPECT_EQ(CommandBuilder::volumeArgs(withVolume(0)), words("-af volume=0.0dB"));
    EXPECT_EQ(CommandBuilder::volumeArgs(withVolume(-3)), words("-af volume=-3.0dB"));
    EXPECT_EQ(CommandBuilder::volumeArgs(withVolume(12.5)), words("-af volume=12.5dB"));
    EXPECT_EQ(CommandBuilder::volumeArgs(withVolume(0.25)), words("-af volume=0.2dB"));
    EXPECT_EQ(CommandBuilder::volumeArgs(withVolume(1.06)), words("-af volume=1.1dB"));
}

TEST(SharedArguments, an_mp4_carries_its_index_at_its_head)
{
    EXPECT_EQ(CommandBuilder::fastStartArgs(), words("-movflags +faststart"));
}

TEST(SharedArguments, the_source_s_audio_rate_is_that_of_the_first_track)
{
    VideoFile file = soundOf({u"aac"_s, u"aac"_s});
    EXPECT_EQ(CommandBuilder::sourceAudioBitrateBps(VideoFile()), 0);
    EXPECT_EQ(CommandBuilder::sourceAudioBitrateBps(file), 128'000);

    file.audioStreams.last().bitrateBps = 64'000;
    EXPECT_EQ(CommandBuilder::sourceAudioBitrateBps(file), 128'000);

    const std::vector<std::pair<qint64, qint64>> rows{
        {-1, 128'000}, {0, 128'000}, {1, 1}, {96'000, 96'000}};
    for (const auto &[declared, expected] : rows) {
        file.audioStreams.first().bitrateBps = declared;
        EXPECT_EQ(CommandBuilder::sourceAudioBitrateBps(file), expected);
    }
}

TEST(SharedArguments, the_source_s_video_rate_is_declared_or_what_the_sound_leaves)
{
    VideoFile file = soundOf({u"aac"_s});
    file.durationSeconds = 8;
    file.fileSizeBytes = 1'000'000;
    EXPECT_EQ(CommandBuilder::sourceVideoBitrateBps(file), 872'000);

    const std::vector<std::pair<qint64, qint64>> rows{{-1, 872'000}, {0, 872'000}, {1, 1}};
    for (const auto &[declared, expected] : rows) {
        file.videoBitrateBps = declared;
        EXPECT_EQ(CommandBuilder::sourceVideoBitrateBps(file), expected);
    }

    file.videoBitrateBps.reset();
    file.fileSizeBytes = 1'000;
    EXPECT_EQ(CommandBuilder::sourceVideoBitrateBps(file), 0);
}

TEST(SharedArguments, a_share_of_the_source_s_rate_is_cut_to_whole_kilobits_and_never_below_300)
{
    VideoFile file;
    const std::vector<std::tuple<qint64, double, qint64>> rows{
        {4'000'000, 0.85, 3400}, {4'000'000, 0.7, 2800}, {1'234'567, 0.85, 1049},
        {354'000, 0.85, 300},    {1'000, 0.85, 300},     {355'000, 0.85, 301},
    };
    for (const auto &[bps, share, expected] : rows) {
        file.videoBitrateBps = bps;
        EXPECT_EQ(CommandBuilder::shareOfSourceKbps(file, share), expected);
    }
}

TEST(SharedArguments, a_quality_is_for_x264_alone)
{
    AdvancedOptions advanced;
    EXPECT_EQ(CommandBuilder::qualityOrRateArgs(advanced, u"libx264"_s, 900), words("-b:v 900k"));

    advanced.crf = 20;
    EXPECT_EQ(CommandBuilder::qualityOrRateArgs(advanced, u"libx264"_s, 900), words("-crf 20"));
    EXPECT_EQ(CommandBuilder::qualityOrRateArgs(advanced, u"hevc_videotoolbox"_s, 900),
              words("-b:v 900k"));
}

TEST(SharedArguments, sound_is_encoded_at_the_chosen_rate_or_at_160)
{
    AdvancedOptions advanced;
    EXPECT_EQ(CommandBuilder::encodedAudioKbps(advanced), 160);
    advanced.audioBitrateKbps = 0;
    EXPECT_EQ(CommandBuilder::encodedAudioKbps(advanced), 0);
}

TEST(SharedArguments, the_first_track_s_codec_is_absent_without_a_track)
{
    EXPECT_EQ(CommandBuilder::firstAudioCodec(VideoFile()), std::nullopt);
    EXPECT_EQ(CommandBuilder::firstAudioCodec(soundOf({QString(), u"aac"_s})), QString());
    EXPECT_EQ(CommandBuilder::firstAudioCodec(soundOf({u"AAC"_s, u"mp3"_s})), u"AAC"_s);
}

TEST(SharedArguments, the_sound_of_an_mp4_is_copied_where_it_fits_and_is_left_alone)
{
    AdvancedOptions chosenRate;
    chosenRate.audioBitrateKbps = 96;
    AdvancedOptions louderAtARate = chosenRate;
    louderAtARate.volumeDb = 3;
    struct Row {
        QString codec;
        AdvancedOptions advanced;
        const char *expected;
    };
    const std::vector<Row> rows{
        {u"aac"_s, {}, "-c:a copy"},
        {QString(), {}, "-c:a copy"},
        {u"opus"_s, {}, "-c:a aac -b:a 160k"},
        {u"aac"_s, withVolume(3), "-c:a copy -af volume=3.0dB"},
        {u"opus"_s, withVolume(3), "-c:a aac -b:a 160k -af volume=3.0dB"},
        {u"aac"_s, chosenRate, "-c:a aac -b:a 96k"},
        {u"aac"_s, louderAtARate, "-c:a aac -b:a 96k -af volume=3.0dB"},
        {u"aac"_s, withReplacement(u"/b.m4a"_s), "-c:a aac -b:a 160k"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(CommandBuilder::mp4AudioArgs(soundOf({row.codec}), row.advanced),
                  words(row.expected));
    }
}
