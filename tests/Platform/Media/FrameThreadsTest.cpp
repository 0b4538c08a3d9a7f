// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/LibavFrameGenerator.h"

#include "Platform/Media/FrameFixture.h"
#include "support/NumberedFilm.h"

#include <QElapsedTimer>
#include <QUrl>

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <optional>
#include <sys/resource.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr double oneFrame = 1.0 / NumberedFilm::rate;

class FrameThreads : public FrameFixture
{
};

double secondsUsed(int who)
{
    rusage usage{};
    ::getrusage(who, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec) / 1e6;
}

// Processor time of all threads but this one.
double secondsUsedByOthers()
{
    return secondsUsed(RUSAGE_SELF) - secondsUsed(RUSAGE_THREAD);
}

} // namespace

TEST_F(FrameThreads, cancelling_ends_a_long_decode_soon)
{
    // Two minutes behind a single keyframe: some seconds of decoding.
    const QString path = folder.path(u"long.mp4"_s);
    Clips::ffmpeg(pictureInput(u"testsrc2=size=640x360:rate=25:duration=120"_s) +
                  QStringList{u"-c:v"_s, u"libx264"_s, u"-preset"_s, u"ultrafast"_s, u"-g"_s,
                              u"100000"_s, u"-sc_threshold"_s, u"0"_s, path});
    LibavFrameGenerator generator(QUrl::fromLocalFile(path), {});
    const double before = secondsUsedByOthers();
    auto failure = std::async(std::launch::async, [&]() -> std::optional<FrameError::Case> {
        try {
            generator.frame(119, FrameGenerator::Tolerance::zero);
        } catch (const FrameError &error) {
            return error.kind();
        }
        return std::nullopt;
    });
    while (secondsUsedByOthers() - before < 0.1 &&
           failure.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        std::this_thread::yield();
    }

    QElapsedTimer timer;
    timer.start();
    generator.cancel();

    EXPECT_EQ(failure.get(), FrameError::Case::cancelled);
    EXPECT_LT(timer.elapsed(), 1'000);
}

TEST_F(FrameThreads, a_cancelled_generator_gives_no_more_frames)
{
    const QString path = numberedH264();
    LibavFrameGenerator generator(QUrl::fromLocalFile(path), {});
    generator.frame(0, Tolerance::zero);

    generator.cancel();

    for (const Tolerance tolerance : {Tolerance::zero, Tolerance::nearestKeyframe}) {
        try {
            generator.frame(0, tolerance);
            FAIL() << "there is a frame";
        } catch (const FrameError &error) {
            EXPECT_EQ(error.kind(), FrameError::Case::cancelled);
        }
    }
}

TEST_F(FrameThreads, a_generator_that_is_cancelled_early_opens_nothing)
{
    LibavFrameGenerator generator(folder.url(u"missing.mp4"_s), {});
    generator.cancel();

    try {
        generator.frame(0, Tolerance::zero);
        FAIL() << "there is a frame";
    } catch (const FrameError &error) {
        EXPECT_EQ(error.kind(), FrameError::Case::cancelled);
    }
}

TEST_F(FrameThreads, generators_in_several_threads_keep_out_of_each_other_s_way)
{
    const QString path = numberedH264();
    const auto wrongFrames = [&path](int step) {
        LibavFrameGenerator generator(QUrl::fromLocalFile(path), {});
        int wrong = 0;
        for (int i = 0; i < 60; ++i) {
            const int number = i * step % 100;
            const QImage image = generator.frame(number * oneFrame, Tolerance::zero);
            wrong += numberOf(image) == number ? 0 : 1;
        }
        return wrong;
    };

    auto one = std::async(std::launch::async, wrongFrames, 37);
    auto other = std::async(std::launch::async, wrongFrames, 61);

    EXPECT_EQ(one.get(), 0);
    EXPECT_EQ(other.get(), 0);
}
