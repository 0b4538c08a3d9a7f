// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/LibavFrameGenerator.h"

#include "Platform/Media/FrameFixture.h"
#include "support/FilmContents.h"
#include "support/NumberedFilm.h"

#include <QUrl>

#include <gtest/gtest.h>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize noMaximum;

class FramePicture : public FrameFixture
{
protected:
    // One colour in another quarter each: R G over B W.
    QString quarters(const QString &name, const QStringList &encoding = {}) const
    {
        const QString source = u"color=white:size=160x90:rate=25:duration=0.2,format=rgb24,"
                               "drawbox=0:0:80:45:red:fill,drawbox=80:0:80:45:lime:fill,"
                               "drawbox=0:45:80:45:blue:fill"_s;
        const QStringList h264{u"-c:v"_s, u"libx264"_s, u"-pix_fmt"_s, u"yuv420p"_s};
        Clips::ffmpeg(pictureInput(source) + h264 + encoding + QStringList{folder.path(name)});
        return folder.path(name);
    }

    // The four numbers that turn stand in the track's header.
    void setMatrix(const QString &path, const std::array<int, 4> &numbers) const
    {
        static const QByteArray straight = QByteArray::fromHex("000100000000000000000000"
                                                               "000000000001000000000000"
                                                               "000000000000000040000000");
        QByteArray film = contentOf(path);
        const qsizetype header = film.indexOf("tkhd");
        const qsizetype matrix = film.indexOf(straight, header);
        ASSERT_GT(header, 0);
        ASSERT_GT(matrix, header);
        static constexpr std::array places{0, 4, 12, 16};
        for (size_t i = 0; i < numbers.size(); ++i) {
            const QByteArray number = QByteArray::fromHex(numbers.at(i) == 0   ? "00000000"
                                                          : numbers.at(i) == 1 ? "00010000"
                                                                               : "ffff0000");
            film.replace(matrix + places.at(i), 4, number);
        }
        folder.write(u"turned.mp4"_s, film);
    }

    // A film of one colour, of which the arguments say how it is stored.
    QColor colourOf(const QString &size, const QString &filters,
                    const QStringList &encoding = {u"-c:v"_s, u"ffv1"_s},
                    const QString &name = u"c.mkv"_s) const
    {
        const QString source =
            u"color=0xc86432:size=%1:rate=25:duration=0.2,format=gbrp,"_s.arg(size);
        Clips::ffmpeg(pictureInput(source + filters) + encoding + QStringList{folder.path(name)});
        return frameOf(folder.path(name), 0).pixelColor(20, 20);
    }

    // The grey that a screen shows for a grey of 10 bits in an HDR film.
    int shownGrey(int grey, const QString &transfer) const
    {
        const QString path = folder.path(u"hdr.mkv"_s);
        Clips::ffmpeg(pictureInput(u"color=black:size=64x64:rate=25:duration=0.2,"
                                   "format=yuv420p10le,geq=lum=%1:cb=512:cr=512"_s.arg(grey)) +
                      QStringList{u"-c:v"_s, u"libx265"_s, u"-x265-params"_s, u"log-level=error"_s,
                                  u"-crf"_s, u"4"_s, u"-color_primaries"_s, u"bt2020"_s,
                                  u"-color_trc"_s, transfer, u"-colorspace"_s, u"bt2020nc"_s,
                                  path});
        return frameOf(path, 0).pixelColor(32, 32).green();
    }
};

constexpr QColor stored(0xc8, 0x64, 0x32);

} // namespace

TEST_F(FramePicture, a_turned_or_mirrored_film_stands_upright)
{
    struct Case {
        std::array<int, 4> matrix;
        QString shown;
        QSize size;
    };
    const QString film = quarters(u"q.mp4"_s);
    for (const auto &[matrix, shown, size] : {
             Case{{1, 0, 0, 1}, u"RGBW"_s, {160, 90}},
             Case{{0, 1, -1, 0}, u"BRWG"_s, {90, 160}},
             Case{{-1, 0, 0, -1}, u"WBGR"_s, {160, 90}},
             Case{{0, -1, 1, 0}, u"GWRB"_s, {90, 160}},
             Case{{-1, 0, 0, 1}, u"GRWB"_s, {160, 90}},
             Case{{1, 0, 0, -1}, u"BWRG"_s, {160, 90}},
             Case{{0, 1, 1, 0}, u"RBGW"_s, {90, 160}},
             Case{{0, -1, -1, 0}, u"WGBR"_s, {90, 160}},
         }) {
        setMatrix(film, matrix);
        const QImage image = frameOf(folder.path(u"turned.mp4"_s), 0);

        EXPECT_EQ(quartersOf(image), shown);
        EXPECT_EQ(image.size(), size) << shown.toStdString();
        EXPECT_EQ(quartersAt(Clips::probe(folder.path(u"turned.mp4"_s)), 0), shown);
    }
}

TEST_F(FramePicture, a_turned_film_fits_the_maximum_as_it_is_shown)
{
    const VideoFile upright = film();

    EXPECT_EQ(frameOf(turned(upright, 90).url.toLocalFile(), 0, Tolerance::zero, {220, 124}).size(),
              QSize(70, 124));
    EXPECT_EQ(
        frameOf(turned(upright, 180).url.toLocalFile(), 0, Tolerance::zero, {220, 124}).size(),
        QSize(220, 124));
}

TEST_F(FramePicture, pixels_that_are_not_square_are_made_so_before_the_picture_is_turned)
{
    const QString wide = quarters(u"wide.mp4"_s, {u"-vf"_s, u"setsar=4/3"_s});
    const QString narrow = quarters(u"narrow.ts"_s, {u"-vf"_s, u"setsar=8/9"_s});

    EXPECT_EQ(frameOf(wide, 0).size(), QSize(213, 90));
    EXPECT_EQ(quartersOf(frameOf(wide, 0)), u"RGBW"_s);
    EXPECT_EQ(frameOf(narrow, 0).size(), QSize(142, 90));
    setMatrix(wide, {0, 1, -1, 0});
    EXPECT_EQ(frameOf(folder.path(u"turned.mp4"_s), 0).size(), QSize(90, 213));
}

TEST_F(FramePicture, a_picture_is_made_to_fit_and_never_enlarged)
{
    const QString path = film().url.toLocalFile();

    EXPECT_EQ(frameOf(path, 0, Tolerance::zero, {220, 124}).size(), QSize(220, 124));
    EXPECT_EQ(frameOf(path, 0, Tolerance::zero, {1920, 1920}).size(), QSize(320, 180));
    EXPECT_EQ(frameOf(path, 0, Tolerance::zero, {1, 1}).size(), QSize(1, 1));
    EXPECT_EQ(frameOf(path, 0, Tolerance::zero, noMaximum).size(), QSize(320, 180));
}

TEST_F(FramePicture, a_picture_has_the_pixels_that_ffmpeg_decodes)
{
    const QString path = film().url.toLocalFile();
    Clips::ffmpeg({u"-i"_s, path, u"-vf"_s, u"select=eq(n\\,25)"_s, u"-frames:v"_s, u"1"_s,
                   u"-sws_flags"_s, u"accurate_rnd+full_chroma_int+bicubic"_s,
                   folder.path(u"truth.png"_s)});
    const QImage truth(folder.path(u"truth.png"_s));

    const QImage image = frameOf(path, 1);

    ASSERT_EQ(image.size(), truth.size());
    for (int y = 0; y < truth.height(); ++y) {
        for (int x = 0; x < truth.width(); ++x) {
            ASSERT_LE(distance(image.pixelColor(x, y), truth.pixelColor(x, y)), 3) << x << ',' << y;
        }
    }
}

TEST_F(FramePicture, only_a_film_with_an_alpha_channel_keeps_one)
{
    const QString path = folder.path(u"alpha.mov"_s);
    Clips::ffmpeg(pictureInput(u"color=red@0.5:size=64x64:rate=25:duration=0.2,format=rgba,"
                               "format=yuva444p10le"_s) +
                  QStringList{u"-c:v"_s, u"prores_ks"_s, u"-profile:v"_s, u"4"_s, path});

    const QImage image = frameOf(path, 0);

    EXPECT_EQ(image.format(), QImage::Format_ARGB32);
    EXPECT_NEAR(image.pixelColor(30, 30).alpha(), 128, 2);
    EXPECT_LE(distance(image.pixelColor(30, 30), QColor(254, 0, 0)), 6);
    EXPECT_EQ(frameOf(film().url.toLocalFile(), 0).format(), QImage::Format_RGB32);
}

TEST_F(FramePicture, tagged_colours_are_read_by_their_tag)
{
    for (const QString &matrix : {u"bt709"_s, u"smpte170m"_s, u"bt2020nc"_s}) {
        const QString scale = u"scale=out_color_matrix=%1:out_range=tv,format=yuv444p,"_s.arg(
            matrix == u"smpte170m"  ? u"bt601"_s
            : matrix == u"bt2020nc" ? u"bt2020"_s
                                    : matrix);
        for (const QString &size : {u"160x90"_s, u"1280x720"_s}) {
            const QColor shown = colourOf(
                size, scale + u"setparams=range=tv:colorspace=%1"_s.arg(matrix),
                {u"-c:v"_s, u"ffv1"_s, u"-colorspace"_s, matrix, u"-color_range"_s, u"tv"_s});
            EXPECT_LE(distance(shown, stored), 3) << matrix.toStdString() << size.toStdString();
        }
    }
}

TEST_F(FramePicture, untagged_colours_are_those_of_hd_from_a_width_of_1280_on)
{
    const QString untagged = u",format=yuv444p,setparams=range=unknown:colorspace=unknown"_s;

    EXPECT_LE(
        distance(colourOf(u"1280x64"_s, u"scale=out_color_matrix=bt709"_s + untagged), stored), 3);
    EXPECT_LE(
        distance(colourOf(u"1278x64"_s, u"scale=out_color_matrix=bt601"_s + untagged), stored), 3);
    EXPECT_GT(
        distance(colourOf(u"1278x64"_s, u"scale=out_color_matrix=bt709"_s + untagged), stored), 6);
}

TEST_F(FramePicture, the_whole_range_of_values_is_honoured_where_it_is_told)
{
    const QString scale = u"scale=out_color_matrix=bt601:out_range=%1,format=%2,"
                          "setparams=range=%1:colorspace=smpte170m"_s;
    const QStringList photographs{u"-c:v"_s, u"mjpeg"_s, u"-q:v"_s, u"1"_s};

    for (const QString &range : {u"pc"_s, u"tv"_s}) {
        const QStringList tagged{u"-c:v"_s, u"ffv1"_s, u"-color_range"_s, range};
        EXPECT_LE(distance(colourOf(u"160x90"_s, scale.arg(range, u"yuv444p"_s), tagged), stored),
                  3);
    }
    EXPECT_LE(
        distance(colourOf(u"160x90"_s, scale.arg(u"pc"_s, u"yuvj444p"_s), photographs, u"c.avi"_s),
                 stored),
        3);
}

TEST_F(FramePicture, ten_bits_and_plain_rgb_keep_their_colours)
{
    EXPECT_LE(distance(colourOf(u"160x90"_s, u"scale=out_color_matrix=bt601,format=yuv420p10le"_s),
                       stored),
              3);
    EXPECT_LE(distance(colourOf(u"160x90"_s, u"format=gbrp10le"_s), stored), 2);
    EXPECT_LE(distance(colourOf(u"160x90"_s, u"format=bgr0"_s), stored), 1);
}

// On the curve of PQ, 100, 203 and 1000 nits stand at 509, 573 and 723 of 1023.
TEST_F(FramePicture, greys_of_pq_are_mapped_to_what_a_screen_shows)
{
    const QString pq = u"smpte2084"_s;
    const int paper = shownGrey(573, pq);

    EXPECT_LE(shownGrey(64, pq), 2);
    EXPECT_GT(shownGrey(509, pq), 90);
    EXPECT_GT(paper, shownGrey(509, pq) + 15);
    EXPECT_LT(paper, 230);
    EXPECT_GT(shownGrey(723, pq), 240);
}

// White paper stands at three quarters of HLG's range.
TEST_F(FramePicture, greys_of_hlg_are_mapped_to_what_a_screen_shows)
{
    const QString hlg = u"arib-std-b67"_s;
    const int paper = shownGrey(721, hlg);

    EXPECT_LE(shownGrey(64, hlg), 2);
    EXPECT_GT(shownGrey(502, hlg), 70);
    EXPECT_GT(paper, shownGrey(502, hlg) + 15);
    EXPECT_LT(paper, 240);
    EXPECT_GT(shownGrey(940, hlg), 240);
}

TEST_F(FramePicture, an_hdr_film_is_scaled_and_keeps_its_hues)
{
    const QString path = folder.path(u"hdr.mkv"_s);
    Clips::ffmpeg(pictureInput(u"color=red:size=320x180:rate=25:duration=0.2,format=gbrp10le,"
                               "scale=out_color_matrix=bt2020,format=yuv420p10le"_s) +
                  QStringList{u"-c:v"_s, u"libx265"_s, u"-x265-params"_s, u"log-level=error"_s,
                              u"-color_primaries"_s, u"bt2020"_s, u"-color_trc"_s, u"smpte2084"_s,
                              u"-colorspace"_s, u"bt2020nc"_s, path});

    const QImage image = frameOf(path, 0, Tolerance::zero, {160, 160});

    EXPECT_EQ(image.size(), QSize(160, 90));
    EXPECT_EQ(quartersOf(image), u"RRRR"_s);
}

TEST_F(FramePicture, a_recording_has_no_video)
{
    EXPECT_EQ(failureOf(recording(u"a.wav"_s, 1, 2)), FrameError::Case::noVideo);
    EXPECT_EQ(failureOf(recording(u"a.m4a"_s, 1, 2)), FrameError::Case::noVideo);
}

TEST_F(FramePicture, a_cover_is_shown_only_where_there_is_no_film)
{
    Clips::ffmpeg(pictureInput(u"color=blue:size=100x100:duration=0.04:rate=25"_s) +
                  QStringList{u"-frames:v"_s, u"1"_s, folder.path(u"cover.png"_s)});
    const QString song = folder.path(u"song.mp3"_s);
    Clips::ffmpeg(toneInput(2) + QStringList{u"-i"_s, folder.path(u"cover.png"_s), u"-map"_s,
                                             u"0:a"_s, u"-map"_s, u"1:v"_s, u"-c:v"_s, u"copy"_s,
                                             u"-disposition:v"_s, u"attached_pic"_s, song});
    const QString film = folder.path(u"covered.mp4"_s);
    Clips::ffmpeg({u"-i"_s, folder.path(u"cover.png"_s), u"-i"_s, quarters(u"q.mp4"_s), u"-map"_s,
                   u"0:v"_s, u"-map"_s, u"1:v"_s, u"-c"_s, u"copy"_s, u"-disposition:v:0"_s,
                   u"attached_pic"_s, film});

    LibavFrameGenerator ofSong(QUrl::fromLocalFile(song), noMaximum);
    EXPECT_EQ(quartersOf(ofSong.frame(0, Tolerance::zero)), u"BBBB"_s);
    EXPECT_EQ(quartersOf(ofSong.frame(1.5, Tolerance::nearestKeyframe)), u"BBBB"_s);
    EXPECT_EQ(quartersOf(frameOf(film, 0)), u"RGBW"_s);
}

TEST_F(FramePicture, a_strip_holds_fourteen_keyframes)
{
    constexpr int count = 14;
    const QString path = numbered(u"strip.mp4"_s, {u"-vf"_s, u"scale=1280:720"_s, u"-c:v"_s,
                                                   u"libx264"_s, u"-preset"_s, u"ultrafast"_s,
                                                   u"-crf"_s, u"10"_s, u"-g"_s, u"5"_s});
    LibavFrameGenerator generator(QUrl::fromLocalFile(path), {220, 124});

    for (int i = 0; i < count; ++i) {
        const double seconds = (i + 0.5) * NumberedFilm::length / count;
        const QImage image = generator.frame(seconds, Tolerance::nearestKeyframe);
        const int shown = static_cast<int>(seconds * NumberedFilm::rate);
        EXPECT_EQ(image.size(), QSize(220, 124));
        EXPECT_EQ(numberOf(image), shown / 5 * 5);
    }
}
