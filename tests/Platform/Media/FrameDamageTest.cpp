// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/LibavFrameGenerator.h"

#include "Platform/Media/FrameFixture.h"
#include "support/NumberedFilm.h"
#include "support/Unprivileged.h"

#include <QDir>
#include <QFile>
#include <QUrl>

#include <gtest/gtest.h>

#include <random>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr double oneFrame = 1.0 / NumberedFilm::rate;

class FrameDamage : public FrameFixture
{
protected:
    // A numbered film, filled up to some bytes a frame; an MP4's index stands first.
    QByteArray whole(const QString &name) const
    {
        QStringList encoding{u"-c:v"_s,         u"libx264"_s,    u"-g"_s,       u"20"_s,
                             u"-b:v"_s,         u"400k"_s,       u"-maxrate"_s, u"400k"_s,
                             u"-bufsize"_s,     u"400k"_s,       u"-bf"_s,      u"0"_s,
                             u"-x264-params"_s, u"nal-hrd=cbr"_s};
        if (name.endsWith(u".mp4")) {
            encoding += {u"-movflags"_s, u"+faststart"_s};
        }
        return contentOf(numbered(name, encoding));
    }

    // Asks at many times. Each answer is a picture or a failure to decode.
    static int picturesOf(const QString &path)
    {
        LibavFrameGenerator generator(QUrl::fromLocalFile(path), {});
        int pictures = 0;
        for (int i = 0; i <= 16; ++i) {
            for (const Tolerance tolerance : {Tolerance::zero, Tolerance::nearestKeyframe}) {
                try {
                    EXPECT_FALSE(generator.frame(i * 0.25, tolerance).isNull());
                    ++pictures;
                } catch (const FrameError &error) {
                    EXPECT_NE(error.kind(), FrameError::Case::cancelled);
                }
            }
        }
        return pictures;
    }

    const QStringList names{u"n.mp4"_s, u"n.mkv"_s, u"n.ts"_s, u"n.avi"_s, u"n.flv"_s};
};

QByteArray noise(std::mt19937 &random, qsizetype size)
{
    QByteArray bytes(size, '\0');
    for (char &byte : bytes) {
        byte = static_cast<char>(random() & 0xff);
    }
    return bytes;
}

} // namespace

TEST_F(FrameDamage, what_is_no_film_does_not_open)
{
    const QString pipe = folder.path(u"pipe.mp4"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);

    for (const QString &path :
         {folder.write(u"empty.mp4"_s, ""), folder.write(u"text.mp4"_s, "A tale of two cities.\n"),
          folder.write(u"zeros.mp4"_s, QByteArray(100'000, '\0')), folder.path(),
          folder.path(u"missing.mp4"_s), pipe}) {
        EXPECT_EQ(failureOf(path), FrameError::Case::cannotOpen) << path.toStdString();
        EXPECT_EQ(failureOf(path, 3, Tolerance::nearestKeyframe), FrameError::Case::cannotOpen);
    }
}

TEST_F(FrameDamage, a_film_that_may_not_be_read_does_not_open)
{
    const QString path = numberedH264();
    QFile::setPermissions(path, QFile::Permissions());
    const Unprivileged nobody(folder);

    EXPECT_EQ(failureOf(path), FrameError::Case::cannotOpen);
}

TEST_F(FrameDamage, a_failure_tells_its_reason)
{
    EXPECT_EQ(FrameError::noVideo().errorDescription(), u"no video"_s);
    EXPECT_EQ(FrameError::cancelled().errorDescription(), u"cancelled"_s);
    EXPECT_EQ(FrameError::decodeFailed(u"why"_s).errorDescription(), u"cannot decode: why"_s);
    try {
        frameOf(folder.write(u"text.mp4"_s, "A tale of two cities.\n"), 0);
        FAIL() << "it opened";
    } catch (const FrameError &error) {
        EXPECT_TRUE(error.errorDescription().startsWith(u"cannot open: Invalid data"))
            << error.errorDescription().toStdString();
    }
}

TEST_F(FrameDamage, a_file_that_comes_to_be_later_opens_then)
{
    const QString path = folder.path(u"n.mp4"_s);
    LibavFrameGenerator generator(QUrl::fromLocalFile(path), {});
    EXPECT_THROW(generator.frame(0, Tolerance::zero), FrameError);

    numberedH264();

    EXPECT_EQ(numberOf(generator.frame(1, Tolerance::zero)), 25);
}

TEST_F(FrameDamage, a_name_is_no_pattern_and_no_address)
{
    for (const QString &name : {u"a%03d.mp4"_s, u"http:b?c#d.mp4"_s, u"ü ñ.mp4"_s, u"-i.mp4"_s}) {
        QFile::copy(numberedH264(), folder.path(name));

        EXPECT_EQ(numberOf(frameOf(folder.path(name), 1)), 25) << name.toStdString();
    }
}

TEST_F(FrameDamage, the_file_stays_open_between_frames)
{
    const QString path = numberedH264();
    LibavFrameGenerator generator(QUrl::fromLocalFile(path), {});
    generator.frame(0, Tolerance::zero);

    QFile::remove(path);

    EXPECT_EQ(numberOf(generator.frame(2, Tolerance::zero)), 50);
}

TEST_F(FrameDamage, a_film_that_breaks_off_gives_what_is_there)
{
    for (const QString &name : names) {
        const QByteArray film = whole(name);
        const QString path = folder.write(u"cut-"_s + name, film.first(film.size() * 6 / 10));

        EXPECT_EQ(numberOf(frameOf(path, 0.4)), 10) << name.toStdString();
        // Somewhere before the break.
        const int last = numberOf(frameOf(path, 3.9));
        EXPECT_GT(last, 35) << name.toStdString();
        EXPECT_LT(last, 75) << name.toStdString();
        EXPECT_GT(numberOf(frameOf(path, 3.9, Tolerance::nearestKeyframe)), 15)
            << name.toStdString();
    }
}

TEST_F(FrameDamage, a_film_that_lacks_its_index_does_not_open)
{
    const QByteArray film = contentOf(numberedH264());

    EXPECT_EQ(failureOf(folder.write(u"cut.mp4"_s, film.first(film.size() / 2))),
              FrameError::Case::cannotOpen);
}

TEST_F(FrameDamage, frames_beside_a_hole_are_whole)
{
    for (const QString &name : names) {
        std::mt19937 random(7);
        QByteArray film = whole(name);
        const qsizetype start = film.size() / 2;
        film.replace(start, film.size() / 20, noise(random, film.size() / 20));
        const QString path = folder.write(u"hole-"_s + name, film);

        EXPECT_EQ(numberOf(frameOf(path, 10 * oneFrame)), 10) << name.toStdString();
        EXPECT_EQ(numberOf(frameOf(path, 95 * oneFrame)), 95) << name.toStdString();
        EXPECT_EQ(picturesOf(path), 34) << name.toStdString();
    }
}

TEST_F(FrameDamage, wrong_bytes_anywhere_give_a_picture_or_a_failure)
{
    std::mt19937 random(42);
    int pictures = 0;
    for (const QString &name : names) {
        const QByteArray film = whole(name);
        for (int round = 0; round < 12; ++round) {
            QByteArray damaged = film;
            const int wounds = 1 << (round % 8);
            for (int wound = 0; wound < wounds; ++wound) {
                const auto place = static_cast<qsizetype>(random()) % (damaged.size() - 8);
                damaged.replace(place, 8, noise(random, 8));
            }
            pictures += picturesOf(folder.write(u"wrong-"_s + name, damaged));
        }
    }
    EXPECT_GT(pictures, 1000);
}

TEST_F(FrameDamage, nothing_is_printed)
{
    std::mt19937 random(1);
    QByteArray film = whole(u"n.mp4"_s);
    film.replace(film.size() / 3, film.size() / 3, noise(random, film.size() / 3));
    const QString path = folder.write(u"damaged.mp4"_s, film);

    ::testing::internal::CaptureStderr();
    ::testing::internal::CaptureStdout();
    picturesOf(path);

    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}
