// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/PreviewEngine.h"

#include "Engine/BitratePlanner.h"
#include "Engine/CommandBuilder/BuilderError.h"
#include "Engine/CommandBuilder/CommandBuilder.h"
#include "Engine/EncoderStandIns.h"
#include "support/Printing.h"
#include "support/Samples.h"
#include "support/TempFolder.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace PreviewEngine {

static void PrintTo(const Settings &settings, std::ostream *out)
{
    *out << settings.encoder.toStdString() << " rate " << settings.bitrateKbps.value_or(-1)
         << " crf " << settings.crf.value_or(-1) << " height " << settings.maxHeight.value_or(-1);
}

} // namespace PreviewEngine

namespace {

using PreviewEngine::Request;
using PreviewEngine::Settings;

const QString h264 = u"h264_videotoolbox"_s;
const QString hevc = u"hevc_videotoolbox"_s;

// With a blank in its name.
VideoFile film()
{
    VideoFile file = Samples::minuteInHd();
    file.url = QUrl::fromLocalFile(u"/films/a b.mp4"_s);
    return file;
}

FFmpegToolset withX264()
{
    return Samples::offering({u"libx264"_s});
}

FFmpegToolset withoutX264()
{
    return Samples::offering({u"aac"_s});
}

TargetSizeParams fitting(double targetMB)
{
    TargetSizeParams params;
    params.targetMB = targetMB;
    return params;
}

CompressParams smartWith(CodecChoice codec, std::optional<qint64> crf = std::nullopt)
{
    CompressParams params;
    params.advanced.codec = codec;
    params.advanced.crf = crf;
    return params;
}

JobPlan planAt(const VideoFile &file, double position, const Request &request = TargetSizeParams())
{
    return PreviewEngine::plan(file, position, request, withX264());
}

QString startIn(const JobPlan &plan)
{
    const QStringList &args = plan.steps.first().args;
    return args.value(args.indexOf(u"-ss"_s) + 1);
}

QStringList sampleLine(const VideoFile &file, const Request &request)
{
    return planAt(file, 0, request).steps.at(1).args;
}

QString folderOf(const JobPlan &plan)
{
    return plan.createDirs.value(0).toLocalFile();
}

// The line between the head that all commands share and the folder's name.
QString bare(const QStringList &args, const JobPlan &plan)
{
    return args.join(u' ')
        .remove(u"-hide_banner -nostdin -loglevel error -progress pipe:1 -nostats -y "_s)
        .replace(folderOf(plan), u"DIR"_s);
}

bool isRefused(const VideoFile &file)
{
    try {
        planAt(file, 0);
        return false;
    } catch (const BuilderError &error) {
        return error.kind() == BuilderError::Case::noSegments;
    }
}

} // namespace

TEST(PreviewSettings, a_target_size_takes_rate_and_height_of_the_bitrate_planner)
{
    for (const double targetMB : {0.1, 3.0, 8.0, 25.0, 49.9, 50.0}) {
        for (const qint64 width : {854, 855, 1281, 1921, 3840}) {
            for (const bool muted : {false, true}) {
                VideoFile file = film();
                file.width = width;
                TargetSizeParams params = fitting(targetMB);
                params.muted = muted;
                params.skipHeadSeconds = 7.5;
                const BitratePlanner::Plan rates = BitratePlanner::plan(
                    {.targetMB = targetMB,
                     .durationSeconds = file.effectiveDuration(7.5, std::nullopt),
                     .hasAudio = true,
                     .muted = muted,
                     .width = width});

                const Settings settings = PreviewEngine::settings(file, params, withX264());

                EXPECT_EQ(settings,
                          (Settings{h264, rates.videoBitrateKbps, std::nullopt, rates.maxHeight}));
            }
        }
    }
}

TEST(PreviewSettings, a_target_size_never_falls_below_the_floor_and_caps_the_cropped_width)
{
    TargetSizeParams params = fitting(0.1);
    EXPECT_EQ(PreviewEngine::settings(film(), params, withX264()),
              (Settings{h264, 64, std::nullopt, 720}));
    // 1080 wide.
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, {}, {}};
    EXPECT_EQ(PreviewEngine::settings(film(), params, withX264()),
              (Settings{h264, 64, std::nullopt, 480}));
    VideoFile unknown = film();
    unknown.width = std::nullopt;
    EXPECT_EQ(PreviewEngine::settings(unknown, params, withX264()),
              (Settings{h264, 64, std::nullopt, std::nullopt}));
}

TEST(PreviewSettings, the_exact_path_takes_x264_where_the_build_has_it)
{
    TargetSizeParams params = fitting(25);
    params.exactTwoPass = true;
    // The codec doesn't count.
    params.advanced.codec = CodecChoice::hevcVideoToolbox;
    params.advanced.crf = 20;
    EXPECT_EQ(PreviewEngine::settings(film(), params, withX264()),
              (Settings{u"libx264"_s, 3178, std::nullopt, std::nullopt}));
    EXPECT_EQ(PreviewEngine::settings(film(), params, withoutX264()).encoder, h264);
    EXPECT_EQ(PreviewEngine::settings(film(), params, std::nullopt).encoder, h264);
}

TEST(PreviewSettings, a_compression_takes_the_jobs_rate_and_height)
{
    VideoFile tall = film();
    tall.width = 3840;
    tall.height = 2160;
    EXPECT_EQ(PreviewEngine::settings(film(), CompressParams(), withX264()),
              (Settings{h264, 4640, std::nullopt, std::nullopt}));
    EXPECT_EQ(PreviewEngine::settings(tall, CompressParams(), withX264()),
              (Settings{h264, 2062, std::nullopt, 1440}));
    CompressParams params;
    params.mode = CompressParams::Mode::quality;
    params.quality = CompressParams::QualityTier::tiny;
    params.resolution = CompressParams::ResTier::custom;
    params.customHeight = 5000;
    EXPECT_EQ(PreviewEngine::settings(film(), params, withX264()),
              (Settings{h264, 2400, std::nullopt, 5000}));
}

TEST(PreviewSettings, each_codec_choice_of_a_compression_has_its_encoder)
{
    struct Row {
        CodecChoice codec;
        QString sourceCodec;
        QString encoder;
        QString encoderWithoutX264;
    };
    const Row table[] = {
        {CodecChoice::automatic, u"h264"_s, h264, h264},
        {CodecChoice::automatic, u"vp9"_s, h264, h264},
        {CodecChoice::automatic, u"HEVC"_s, hevc, hevc},
        {CodecChoice::h264VideoToolbox, u"hevc"_s, h264, h264},
        {CodecChoice::hevcVideoToolbox, u"h264"_s, hevc, hevc},
        {CodecChoice::softwareX264, u"hevc"_s, u"libx264"_s, h264},
        {CodecChoice::proresVideoToolbox, u"h264"_s, u"prores_videotoolbox"_s,
         u"prores_videotoolbox"_s},
        {CodecChoice::svtAV1, u"av1"_s, h264, h264},
    };
    for (const Row &row : table) {
        VideoFile file = film();
        file.videoCodec = row.sourceCodec;
        const Request request = smartWith(row.codec);
        EXPECT_EQ(PreviewEngine::settings(file, request, withX264()).encoder, row.encoder);
        EXPECT_EQ(PreviewEngine::settings(file, request, withoutX264()).encoder,
                  row.encoderWithoutX264);
        EXPECT_EQ(PreviewEngine::settings(file, request, std::nullopt).encoder,
                  row.encoderWithoutX264);
    }
}

TEST(PreviewSettings, a_quality_factor_is_for_x264_alone_and_takes_the_place_of_the_rate)
{
    EXPECT_EQ(PreviewEngine::settings(film(), smartWith(CodecChoice::softwareX264, 23), withX264()),
              (Settings{u"libx264"_s, std::nullopt, 23, std::nullopt}));
    EXPECT_EQ(
        PreviewEngine::settings(film(), smartWith(CodecChoice::softwareX264, 23), withoutX264()),
        (Settings{h264, 4640, std::nullopt, std::nullopt}));
    EXPECT_EQ(PreviewEngine::settings(film(), smartWith(CodecChoice::automatic, 23), withX264()),
              (Settings{h264, 4640, std::nullopt, std::nullopt}));
}

TEST(PreviewSettings, an_enhancement_goes_by_the_pixels_of_its_output)
{
    EnhanceParams params;
    // Neither the codec nor the audio rate, which the job takes for the picture's, counts.
    params.advanced.codec = CodecChoice::softwareX264;
    params.advanced.crf = 20;
    params.advanced.audioBitrateKbps = 96;
    EXPECT_EQ(PreviewEngine::settings(film(), params, withX264()),
              (Settings{h264, 5598, std::nullopt, 1080}));
    params.upscale = EnhanceParams::UpscaleFactor::x2;
    EXPECT_EQ(PreviewEngine::settings(film(), params, withX264()),
              (Settings{h264, 22394, std::nullopt, 2160}));
}

TEST(PreviewSettings, the_rate_of_an_enhancement_has_bounds_and_a_value_for_unknown_sizes)
{
    const auto settingsFor = [](std::optional<qint64> width, qint64 height,
                                std::optional<double> fps) {
        VideoFile file = film();
        file.width = width;
        file.height = height;
        file.fps = fps;
        return PreviewEngine::settings(file, EnhanceParams(), withX264());
    };
    EXPECT_EQ(settingsFor(320, 240, 15), (Settings{h264, 1500, std::nullopt, 240}));
    EXPECT_EQ(settingsFor(3840, 2160, 60), (Settings{h264, 40000, std::nullopt, 2160}));
    EXPECT_EQ(settingsFor(1920, 1080, 240).bitrateKbps, 11197);
    EXPECT_EQ(settingsFor(7680, 4320, 0.5).bitrateKbps, 2985);
    EXPECT_EQ(settingsFor(1920, 1080, std::nullopt).bitrateKbps, 5598);
    EXPECT_EQ(settingsFor(std::nullopt, 1080, 30),
              (Settings{h264, 4000, std::nullopt, std::nullopt}));
}

TEST(PreviewPlan, three_steps_make_a_still_a_sample_and_a_still_of_the_sample)
{
    CompressParams params = smartWith(CodecChoice::softwareX264, 23);
    params.mode = CompressParams::Mode::quality;
    params.resolution = CompressParams::ResTier::p720;
    params.advanced.crop = CropSpec{CropSpec::Aspect::ratio1x1, {}, {}};
    // Not for a sample.
    params.advanced.fpsCap = 10;
    params.advanced.extraArgs = u"-tune film"_s;
    const JobPlan plan = planAt(film(), 12.34567, params);

    ASSERT_EQ(plan.steps.size(), 3);
    const FFmpegStep &before = plan.steps.at(0);
    const FFmpegStep &sample = plan.steps.at(1);
    const FFmpegStep &after = plan.steps.at(2);
    EXPECT_EQ(bare(before.args, plan), u"-ss 12.346 -i /films/a b.mp4 -frames:v 1 DIR/before.png");
    EXPECT_EQ(bare(sample.args, plan),
              u"-ss 12.346 -t 2.00 -i /films/a b.mp4 -c:v libx264 -an -crf 23 -preset veryfast "
              "-pix_fmt yuv420p -vf crop=1080:1080:(iw-ow)/2:(ih-oh)/2,scale=-2:720 DIR/slice.mp4");
    EXPECT_EQ(bare(after.args, plan), u"-ss 1.0 -i DIR/slice.mp4 -frames:v 1 DIR/after.png");
    EXPECT_EQ(before.label, u"before"_s);
    EXPECT_EQ(sample.label, u"sample"_s);
    EXPECT_EQ(after.label, u"after"_s);
    EXPECT_EQ(before.progressDuration, 0.1);
    EXPECT_EQ(sample.progressDuration, 1.0);
    EXPECT_EQ(after.progressDuration, 0.1);
    for (const FFmpegStep &step : plan.steps) {
        ASSERT_TRUE(step.tempOutputURL);
        EXPECT_EQ(step.tempOutputURL->toLocalFile(), step.args.last());
    }
}

TEST(PreviewPlan, the_other_encoders_get_a_rate_and_no_preset)
{
    const JobPlan plan = planAt(film(), 0, smartWith(CodecChoice::hevcVideoToolbox));
    EXPECT_EQ(bare(plan.steps.at(1).args, plan),
              u"-ss 0.000 -t 2.00 -i /films/a b.mp4 -c:v hevc_videotoolbox -an -b:v 4640k "
              "-pix_fmt yuv420p DIR/slice.mp4");
}

TEST(PreviewPlan, the_exact_path_of_a_target_size_gets_a_rate_and_the_fast_preset)
{
    TargetSizeParams params = fitting(25);
    params.exactTwoPass = true;
    const JobPlan plan = planAt(film(), 0, params);
    EXPECT_EQ(bare(plan.steps.at(1).args, plan),
              u"-ss 0.000 -t 2.00 -i /films/a b.mp4 -c:v libx264 -an -b:v 3178k -preset veryfast "
              "-pix_fmt yuv420p DIR/slice.mp4");
}

TEST(PreviewPlan, an_hdr_film_gets_no_pixel_format)
{
    VideoFile file = film();
    file.isHDR = true;
    CompressParams params;
    params.advanced.hdrPassthrough = true;
    EXPECT_FALSE(sampleLine(file, params).contains(u"-pix_fmt"_s));
}

TEST(PreviewPlan, no_sample_has_sound)
{
    for (const Request &request :
         {Request(TargetSizeParams()), Request(CompressParams()), Request(EnhanceParams())}) {
        const QStringList line = sampleLine(film(), request);
        EXPECT_EQ(line.indexOf(u"-an"_s), line.indexOf(u"-c:v"_s) + 2);
        EXPECT_FALSE(line.contains(u"-c:a"_s));
    }
}

TEST(PreviewPlan, the_stills_are_the_outputs_and_everything_goes_afterwards)
{
    const JobPlan plan = planAt(film(), 0);
    const auto place = [&](const QString &name) {
        return QUrl::fromLocalFile(folderOf(plan) + u'/' + name);
    };
    EXPECT_EQ(plan.finalOutputURLs, (QList<QUrl>{place(u"before.png"_s), place(u"after.png"_s)}));
    EXPECT_EQ(plan.cleanupURLs,
              (QList<QUrl>{place(u"before.png"_s), place(u"after.png"_s), place(u"slice.mp4"_s),
                           QUrl::fromLocalFile(folderOf(plan))}));
    EXPECT_EQ(plan.createDirs.size(), 1);
    EXPECT_TRUE(plan.prepFiles.isEmpty());
    EXPECT_FALSE(plan.badgeKey);
    EXPECT_FALSE(plan.targetLimitBytes);
    EXPECT_FALSE(plan.retryFactory);
    EXPECT_FALSE(plan.approach);
}

TEST(PreviewPlan, each_preview_has_a_temporary_folder_of_its_own)
{
    const TempFolder temporary;
    const ScopedEnvironment environment("TMPDIR", temporary.path().toUtf8());
    const JobPlan plan = planAt(film(), 0);
    EXPECT_EQ(QFileInfo(folderOf(plan)).path(), temporary.path());
    const QRegularExpression name(u"^mx-preview-[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}$"_s,
                                  QRegularExpression::CaseInsensitiveOption);
    EXPECT_TRUE(name.match(QFileInfo(folderOf(plan)).fileName()).hasMatch());
    EXPECT_NE(folderOf(planAt(film(), 0)), folderOf(plan));
    // The plan alone makes nothing.
    EXPECT_TRUE(temporary.names().isEmpty());
}

TEST(PreviewPlan, the_position_is_moved_to_where_two_seconds_fit)
{
    const auto startAt = [](double duration, double position) {
        VideoFile file = film();
        file.durationSeconds = duration;
        return startIn(planAt(file, position));
    };
    EXPECT_EQ(startAt(60, 30), u"30.000"_s);
    EXPECT_EQ(startAt(60, 58), u"58.000"_s);
    EXPECT_EQ(startAt(60, 59), u"58.000"_s);
    EXPECT_EQ(startAt(60, 1000), u"58.000"_s);
    EXPECT_EQ(startAt(60, -5), u"0.000"_s);
    EXPECT_EQ(startAt(1, 0.5), u"0.000"_s);
    EXPECT_EQ(startAt(2.5, 9), u"0.500"_s);
}

TEST(PreviewPlan, a_file_without_a_picture_or_too_short_for_one_is_refused)
{
    VideoFile file = film();
    EXPECT_FALSE(isRefused(file));
    file.durationSeconds = 0.3;
    EXPECT_TRUE(isRefused(file));
    file.durationSeconds = 0.301;
    EXPECT_FALSE(isRefused(file));
    file.width = std::nullopt;
    EXPECT_TRUE(isRefused(file));
    file = film();
    file.videoCodec = std::nullopt;
    EXPECT_TRUE(isRefused(file));
    file = film();
    file.height = std::nullopt;
    EXPECT_FALSE(isRefused(file));
}

TEST(PreviewPlan, stand_ins_take_the_sample_and_leave_the_stills)
{
    const JobPlan plan = planAt(film(), 0);
    const JobPlan runnable = EncoderStandIns::apply(plan, EncoderStandIns::software(withX264()));
    EXPECT_EQ(runnable.steps.at(0), plan.steps.at(0));
    EXPECT_EQ(runnable.steps.at(2), plan.steps.at(2));
    EXPECT_TRUE(runnable.steps.at(1).args.contains(u"libx264"_s));
    EXPECT_EQ(runnable.finalOutputURLs, plan.finalOutputURLs);
    EXPECT_EQ(runnable.cleanupURLs, plan.cleanupURLs);
}

TEST(PreviewRequest, the_advanced_options_are_those_of_its_action)
{
    AdvancedOptions advanced;
    advanced.extraArgs = u"mine"_s;
    TargetSizeParams targetSize;
    targetSize.advanced = advanced;
    CompressParams compress;
    compress.advanced = advanced;
    EnhanceParams enhance;
    enhance.advanced = advanced;
    for (const Request &request : {Request(targetSize), Request(compress), Request(enhance)}) {
        EXPECT_EQ(PreviewEngine::advancedOf(request), advanced);
    }
}
