// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/PlayerFixture.h"
#include "support/Clips.h"
#include "support/EventLoop.h"

#include <QtEndian>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// The four numbers of a display matrix that aren't zero in a film: a b c d of
// x' = a x + c y, y' = b x + d y.
using Matrix = std::array<int, 4>;

class MpvPlayerPictureTest : public PlayerFixture
{
protected:
    // Quarters of red, green, blue and white, row by row.
    QString quarters(const QString &name = u"quarters.mp4"_s, const QStringList &options = {}) const
    {
        const QString halves = u"color=%1:size=160x60:duration=1[a%2];color=%3:size=160x60:"
                               "duration=1[b%2];[a%2][b%2]hstack[%2]"_s;
        const QString graph = halves.arg(u"red"_s, u"t"_s, u"lime"_s) + QChar(u';') +
                              halves.arg(u"blue"_s, u"u"_s, u"white"_s) + u";[t][u]vstack[v]"_s;
        Clips::ffmpeg(QStringList{u"-filter_complex"_s, graph, u"-map"_s, u"[v]"_s, u"-c:v"_s,
                                  u"libx264"_s, u"-pix_fmt"_s, u"yuv420p"_s} +
                      options + QStringList{folder.path(name)});
        return folder.path(name);
    }

    // The film with its display matrix exchanged, which no option of ffmpeg's writes in full.
    QString withMatrix(const QString &path, const Matrix &matrix) const
    {
        constexpr qsizetype matrixAfterName = 44;
        constexpr std::array<qsizetype, 4> places{0, 4, 12, 16};
        QByteArray content = contentOf(path);
        const qsizetype start = content.indexOf("tkhd") + matrixAfterName;
        for (size_t i = 0; i < places.size(); ++i) {
            qToBigEndian<qint32>(matrix.at(i) * 65536, content.data() + start + places.at(i));
        }
        return folder.write(u"turned.mp4"_s, content);
    }

    QImage reference(const QString &path) const
    {
        Clips::ffmpeg({u"-i"_s, path, u"-frames:v"_s, u"1"_s, folder.path(u"reference.png"_s)});
        return QImage(folder.path(u"reference.png"_s));
    }
};

double distance(QRgb one, QRgb other)
{
    return std::hypot(qRed(one) - qRed(other), qGreen(one) - qGreen(other),
                      qBlue(one) - qBlue(other));
}

void expectSamePicture(const QImage &picture, const QImage &reference)
{
    ASSERT_EQ(picture.size(), reference.size());
    for (const QPointF place : {QPointF(0.2, 0.2), QPointF(0.8, 0.2), QPointF(0.2, 0.8),
                                QPointF(0.8, 0.8), QPointF(0.02, 0.02), QPointF(0.98, 0.98)}) {
        const QPoint at(static_cast<int>(place.x() * picture.width()),
                        static_cast<int>(place.y() * picture.height()));
        EXPECT_LT(distance(picture.pixel(at), reference.pixel(at)), 25)
            << place.x() << " " << place.y();
    }
}

class TurnedFilmTest : public MpvPlayerPictureTest, public ::testing::WithParamInterface<Matrix>
{
};

TEST_P(TurnedFilmTest, it_stands_upright)
{
    const QString path = withMatrix(quarters(), GetParam());
    player->setPictureSize({320, 320});

    ASSERT_TRUE(load(*player, path));

    const QImage picture = player->picture();
    const QImage expected = reference(path);
    expectSamePicture(picture, expected.scaled(picture.size()));
    EXPECT_EQ(picture.width() > picture.height(), expected.width() > expected.height());
    seek(*player, 0.5);
    player->play();
    EventLoop::waitFor([&] { return player->position() > 0.9; }, player.get(),
                       &MediaPlayer::positionChanged, &MediaPlayer::ended);
    expectSamePicture(player->picture(), picture);
}

INSTANTIATE_TEST_SUITE_P(, TurnedFilmTest,
                         ::testing::Values(Matrix{1, 0, 0, 1}, Matrix{0, 1, -1, 0},
                                           Matrix{-1, 0, 0, -1}, Matrix{0, -1, 1, 0},
                                           Matrix{-1, 0, 0, 1}, Matrix{1, 0, 0, -1}));

TEST_F(MpvPlayerPictureTest, it_is_as_large_as_the_room_allows)
{
    ASSERT_TRUE(load(*player, quarters()));

    for (const QSize room : {QSize(640, 640), QSize(100, 1000), QSize(33, 17), QSize(1, 1)}) {
        player->setPictureSize(room);
        const QSize size = player->picture().size();
        EXPECT_EQ(size, QSize(320, 120).scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1}));
    }
    player->setPictureSize({});
    EXPECT_TRUE(player->picture().isNull());
}

TEST_F(MpvPlayerPictureTest, the_room_may_come_after_the_film)
{
    player->setPictureSize({});
    ASSERT_TRUE(load(*player, quarters()));
    seek(*player, 0.5);

    player->setPictureSize({320, 120});

    expectSamePicture(player->picture(), reference(folder.path(u"quarters.mp4"_s)));
}

TEST_F(MpvPlayerPictureTest, pixels_that_are_no_squares_count)
{
    player->setPictureSize({640, 640});

    ASSERT_TRUE(load(*player, quarters(u"narrow.mp4"_s, {u"-aspect"_s, u"4:3"_s})));

    EXPECT_EQ(player->picture().size(), QSize(640, 480));
}

TEST_F(MpvPlayerPictureTest, a_picture_that_was_handed_out_stays_as_it_was)
{
    ASSERT_TRUE(load(*player, film(u"a.mp4"_s)));
    const QImage first = player->picture();

    seek(*player, 3);

    EXPECT_EQ(numberOf(first), 0);
    EXPECT_EQ(shownNumber(), 75);
}

TEST_F(MpvPlayerPictureTest, every_pixel_of_an_odd_width_is_painted)
{
    Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=white:size=99x51:duration=0.2"_s,
                   u"-pix_fmt"_s, u"yuv444p"_s, folder.path(u"odd.mkv"_s)});
    player->setPictureSize({99, 51});

    ASSERT_TRUE(load(*player, folder.path(u"odd.mkv"_s)));

    const QImage picture = player->picture();
    ASSERT_EQ(picture.size(), QSize(99, 51));
    for (int x = 0; x < 99; ++x) {
        EXPECT_GT(qGray(picture.pixel(x, 0)), 240) << x;
        EXPECT_GT(qGray(picture.pixel(x, 50)), 240) << x;
    }
}

// On the left the light of a page of paper, on the right that of a lamp: ten times as much.
TEST_F(MpvPlayerPictureTest, the_bright_parts_of_an_hdr_film_can_be_told_apart)
{
    Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s,
                   u"color=black:size=160x90:duration=0.4,format=yuv420p10le,"
                   "geq=lum='if(lt(X,80),509,722)':cb=512:cr=512"_s,
                   u"-c:v"_s, u"libx265"_s, u"-x265-params"_s, u"log-level=error"_s,
                   u"-color_primaries"_s, u"bt2020"_s, u"-color_trc"_s, u"smpte2084"_s,
                   u"-colorspace"_s, u"bt2020nc"_s, folder.path(u"hdr.mp4"_s)});

    ASSERT_TRUE(load(*player, folder.path(u"hdr.mp4"_s)));

    const int paper = qGray(player->picture().pixel(40, 45));
    const int lamp = qGray(player->picture().pixel(120, 45));
    EXPECT_GT(paper, 80);
    EXPECT_LT(paper, 200);
    EXPECT_GT(lamp, paper + 30);
    ASSERT_TRUE(load(*player, film(u"plain.mp4"_s)));
    seek(*player, 2);
    EXPECT_EQ(shownNumber(), 50);
}

} // namespace
