// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PreviewEngine.h"

#include "Engine/EncoderStandIns.h"
#include "Engine/EngineError.h"
#include "Engine/FileError.h"
#include "Engine/PlanExecutor.h"
#include "support/MediaFixture.h"

#include <QDir>
#include <QFileInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

namespace {

using PreviewEngine::Images;
using PreviewEngine::Request;

struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;
};

/// Previews by the real ffmpeg.
class PreviewMedia : public MediaFixture
{
protected:
    VideoFile film(const QString &size = u"320x180"_s, double seconds = 3)
    {
        return MediaFixture::film(u"a.mp4"_s, {.size = size,
                                               .framesPerSecond = 25,
                                               .seconds = seconds,
                                               .noise = 0,
                                               .hasAudio = true,
                                               .videoBitrate = u"1000k"_s});
    }

    // A second of red, a second of green, a second of blue.
    VideoFile threeColours()
    {
        QStringList args;
        for (const QString &colour : {u"red"_s, u"lime"_s, u"blue"_s}) {
            args += pictureInput(u"color=%1:size=320x180:rate=25:duration=1"_s.arg(colour));
        }
        return madeBy(u"colours.mp4"_s,
                      args + QStringList{u"-filter_complex"_s, u"concat=n=3"_s, u"-c:v"_s,
                                         u"libx264"_s, u"-pix_fmt"_s, u"yuv420p"_s});
    }

    JobPlan planFor(const VideoFile &file, double position, const Request &request) const
    {
        return EncoderStandIns::apply(PreviewEngine::plan(file, position, request, Clips::tools()),
                                      EncoderStandIns::software(Clips::tools()));
    }

    Images generate(const JobPlan &plan)
    {
        PlanExecutor executor(Clips::tools().ffmpegURL);
        return PreviewEngine::generate(plan, executor);
    }

    Images preview(const VideoFile &file, double position = 0,
                   const Request &request = CompressParams())
    {
        return generate(planFor(file, position, request));
    }

    // The words of the failure. The test fails when there is none.
    template <typename Error> QString failureOf(const JobPlan &plan)
    {
        try {
            generate(plan);
        } catch (const Error &error) {
            return error.errorDescription();
        }
        ADD_FAILURE() << "the preview succeeded";
        return {};
    }

    VideoFile asFile(const QByteArray &png)
    {
        EXPECT_TRUE(png.startsWith("\x89PNG\r\n"));
        return Clips::probe(folder.write(u"still.png"_s, png));
    }

    void expectSize(const QByteArray &png, qint64 width, qint64 height)
    {
        const VideoFile still = asFile(png);
        EXPECT_EQ(still.width, width);
        EXPECT_EQ(still.height, height);
    }

    Colour colourOf(const QByteArray &png)
    {
        folder.write(u"still.png"_s, png);
        Clips::ffmpeg({u"-i"_s, folder.path(u"still.png"_s), u"-vf"_s, u"scale=1:1"_s, u"-f"_s,
                       u"rawvideo"_s, u"-pix_fmt"_s, u"rgb24"_s, folder.path(u"pixel"_s)});
        const QByteArray pixel = contentOf(folder.path(u"pixel"_s));
        EXPECT_EQ(pixel.size(), 3);
        const auto channel = [&](qsizetype i) { return static_cast<uchar>(pixel.at(i)); };
        return {channel(0), channel(1), channel(2)};
    }

    static QStringList namesIn(const QString &path)
    {
        return QDir(path).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    }

    // What stands in the one folder that a failed preview left.
    QStringList leftNames() const
    {
        EXPECT_EQ(scratchNames().size(), 1);
        return namesIn(folder.path(u"scratch/"_s + scratchNames().value(0)));
    }
};

} // namespace

TEST_F(PreviewMedia, each_action_gives_two_stills_and_leaves_nothing_on_disk)
{
    const VideoFile file = film();
    TargetSizeParams targetSize;
    targetSize.targetMB = 0.1;
    TargetSizeParams exact = targetSize;
    exact.exactTwoPass = true;
    for (const Request &request : {Request(targetSize), Request(exact), Request(CompressParams()),
                                   Request(EnhanceParams())}) {
        const Images images = preview(file, 0.5, request);

        expectSize(images.before, 320, 180);
        expectSize(images.after, 320, 180);
        EXPECT_NE(images.before, images.after);
        EXPECT_TRUE(scratchNames().isEmpty());
    }
}

TEST_F(PreviewMedia, the_second_still_is_one_second_later_in_the_film)
{
    const Images images = preview(threeColours(), 0.5);

    const Colour before = colourOf(images.before);
    EXPECT_GT(before.red, 200);
    EXPECT_LT(before.green, 60);
    const Colour after = colourOf(images.after);
    EXPECT_GT(after.green, 200);
    EXPECT_LT(after.red, 60);
}

TEST_F(PreviewMedia, a_position_past_the_end_shows_the_last_two_seconds)
{
    const Images images = preview(threeColours(), 1000);
    EXPECT_GT(colourOf(images.before).green, 200);
    EXPECT_GT(colourOf(images.after).blue, 200);
}

TEST_F(PreviewMedia, the_second_still_has_the_size_of_the_output_and_the_first_the_sources)
{
    CompressParams params;
    params.mode = CompressParams::Mode::quality;
    params.resolution = CompressParams::ResTier::custom;
    params.customHeight = 90;
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, {}, {}};

    const Images images = preview(film(), 0, params);

    expectSize(images.before, 320, 180);
    expectSize(images.after, 90, 90);
}

TEST_F(PreviewMedia, an_enhancement_shows_neither_its_filters_nor_its_upscale)
{
    EnhanceParams params;
    params.upscale = EnhanceParams::UpscaleFactor::x2;
    expectSize(preview(film(), 0, params).after, 320, 180);
}

TEST_F(PreviewMedia, the_sample_is_two_silent_seconds_with_the_chosen_codec)
{
    CompressParams params;
    params.advanced.codec = CodecChoice::hevcVideoToolbox;
    JobPlan plan = planFor(film(), 0, params);
    plan.steps = {plan.steps.at(1)};
    plan.steps.first().tempOutputURL.reset();
    plan.cleanupURLs.clear();

    PlanExecutor(Clips::tools().ffmpegURL).execute(plan, [](double) {});

    const VideoFile slice = Clips::probe(plan.createDirs.first().toLocalFile() + u"/slice.mp4"_s);
    EXPECT_EQ(slice.videoCodec, u"hevc"_s);
    EXPECT_TRUE(slice.audioStreams.isEmpty());
    EXPECT_NEAR(slice.durationSeconds, 2, 0.05);
}

TEST_F(PreviewMedia, a_quality_factor_is_obeyed)
{
    const auto sizeAt = [this, file = film()](qint64 crf) {
        CompressParams params;
        params.advanced.codec = CodecChoice::softwareX264;
        params.advanced.crf = crf;
        JobPlan plan = planFor(file, 0, params);
        plan.steps = {plan.steps.at(1)};
        plan.steps.first().tempOutputURL.reset();
        plan.finalOutputURLs = {QUrl::fromLocalFile(plan.steps.first().args.last())};
        return PlanExecutor(Clips::tools().ffmpegURL).execute(plan, [](double) {}).outputBytes;
    };
    EXPECT_GT(sizeAt(18), 2 * sizeAt(40));
}

TEST_F(PreviewMedia, an_hdr_film_has_a_preview_in_both_codecs)
{
    const VideoFile file = hdrFilm(3);
    ASSERT_TRUE(file.isHDR);
    for (const CodecChoice codec : {CodecChoice::automatic, CodecChoice::h264VideoToolbox}) {
        CompressParams params;
        params.advanced.codec = codec;
        const Images images = preview(file, 0, params);
        expectSize(images.before, 320, 180);
        expectSize(images.after, 320, 180);
    }
}

TEST_F(PreviewMedia, a_film_too_short_for_the_second_still_fails_and_leaves_what_there_is)
{
    const JobPlan plan = planFor(film(u"320x180"_s, 0.6), 0, CompressParams());

    EXPECT_THAT(failureOf<FileError>(plan).toStdString(),
                HasSubstr("after.png: No such file or directory"));

    EXPECT_EQ(leftNames(), (QStringList{u"before.png"_s, u"slice.mp4"_s}));
}

TEST_F(PreviewMedia, a_codec_that_the_sample_cannot_hold_fails_in_ffmpegs_words)
{
    CompressParams params;
    params.advanced.codec = CodecChoice::proresVideoToolbox;
    const JobPlan plan = planFor(film(), 0, params);

    EXPECT_THAT(failureOf<EngineError>(plan).toStdString(),
                HasSubstr("codec not currently supported in container"));

    EXPECT_TRUE(leftNames().contains(u"before.png"_s));
    EXPECT_FALSE(leftNames().contains(u"after.png"_s));
}

TEST_F(PreviewMedia, an_odd_height_is_refused_by_the_encoder)
{
    const VideoFile odd = silentFilm(u"320x181"_s, 3);
    ASSERT_EQ(odd.height, 181);
    EXPECT_THAT(failureOf<EngineError>(planFor(odd, 0, CompressParams())).toStdString(),
                HasSubstr("height not divisible by 2"));
}

TEST_F(PreviewMedia, a_source_that_has_gone_fails_in_ffmpegs_words)
{
    const JobPlan plan = planFor(film(), 0, CompressParams());
    QFile::remove(folder.path(u"a.mp4"_s));
    EXPECT_THAT(failureOf<EngineError>(plan).toStdString(),
                HasSubstr("a.mp4: No such file or directory"));
    EXPECT_TRUE(leftNames().isEmpty());
}

TEST_F(PreviewMedia, an_executor_that_was_cancelled_ends_the_preview_as_a_failure)
{
    PlanExecutor executor(Clips::tools().ffmpegURL);
    executor.cancel();
    try {
        PreviewEngine::generate(planFor(film(), 0, CompressParams()), executor);
        ADD_FAILURE() << "the preview succeeded";
    } catch (const EngineError &error) {
        EXPECT_EQ(error.kind(), EngineError::Case::cancelled);
    }
    EXPECT_TRUE(leftNames().isEmpty());
}

TEST_F(PreviewMedia, nothing_beside_the_previews_own_folder_is_removed)
{
    folder.write(u"scratch/mx-preview-other/before.png"_s, "mine");
    preview(film());
    EXPECT_EQ(scratchNames(), QStringList{u"mx-preview-other"_s});
    EXPECT_EQ(contentOf(folder.path(u"scratch/mx-preview-other/before.png"_s)), "mine");
}
