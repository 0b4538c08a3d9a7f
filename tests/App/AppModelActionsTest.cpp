// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "support/Clips.h"

#include <QFileInfo>

#include <gmock/gmock.h>

#include <algorithm>
#include <string>

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::IsEmpty;

using Outcome = Job::Outcome;

namespace {

/// Films of two seconds with a keyframe each fifth of a second, so that copies cut close.
enum class Clip {
    plain,
    slow,
    mute,
    tracks,
    hdr,
    alpha,
    oddWidth,
    oddHeight,
    rotated,
    sound,
};

struct ClipRow {
    Clip clip;
    QString name;
    QStringList args;
};

QStringList words(const QString &text)
{
    return text.split(u' ', Qt::SkipEmptyParts);
}

QStringList pictureOf(const QString &size, const QString &rate = u"25"_s,
                      const QString &layout = u"yuv420p"_s)
{
    return {u"-f"_s, u"lavfi"_s, u"-i"_s,
            u"testsrc2=size=%1:rate=%2:duration=2,format=%3"_s.arg(size, rate, layout)};
}

QStringList tone()
{
    return {u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=frequency=440:duration=2"_s};
}

QStringList x264(const QString &layout = u"yuv420p"_s)
{
    return words(u"-c:v libx264 -preset ultrafast -b:v 1000k -g 5 -pix_fmt "_s + layout);
}

QStringList hevcInTenBits()
{
    return words(u"-c:v libx265 -preset ultrafast -x265-params log-level=error:keyint=5:bframes=0 "
                 "-pix_fmt yuv420p10le -color_primaries bt2020 -color_trc smpte2084 "
                 "-colorspace bt2020nc"_s);
}

// The size of a picture of full colour may be odd.
const QList<ClipRow> &clipRows()
{
    static const QString usual = u"320x180"_s;
    static const QString full = u"yuv444p"_s;
    static const QStringList aac = words(u"-c:a aac"_s);
    static const QStringList alpha = words(u"-vf format=yuva444p10le -c:v prores_ks -profile:v 4 "
                                           "-pix_fmt yuva444p10le -c:a pcm_s16le"_s);
    static const QList<ClipRow> rows{
        {Clip::plain, u"plain.mp4"_s, pictureOf(usual) + tone() + x264() + aac},
        {Clip::slow, u"slow.mp4"_s, pictureOf(usual, u"15"_s) + tone() + x264() + aac},
        {Clip::mute, u"mute.mp4"_s, pictureOf(usual) + x264()},
        {Clip::tracks, u"tracks.mkv"_s,
         pictureOf(usual) + tone() + tone() +
             words(u"-i words.srt -map 0 -map 1 -map 2 -map 3 -c:s subrip"_s) + x264() +
             words(u"-c:a:0 aac -c:a:1 libopus"_s)},
        {Clip::hdr, u"hdr.mp4"_s, pictureOf(usual) + tone() + hevcInTenBits() + aac},
        {Clip::alpha, u"alpha.mov"_s, pictureOf(usual) + tone() + alpha},
        {Clip::oddWidth, u"odd.mp4"_s,
         pictureOf(u"321x180"_s, u"25"_s, full) + tone() + x264(full) + aac},
        {Clip::oddHeight, u"odd.mp4"_s,
         pictureOf(u"320x181"_s, u"25"_s, full) + tone() + x264(full) + aac},
        {Clip::rotated, u"rotated.mp4"_s, words(u"-i plain.mp4 -c copy -metadata:s:v rotate=90"_s)},
        {Clip::sound, u"sound.m4a"_s, tone() + aac},
    };
    return rows;
}

// What ffprobe names the family of MP4 and MOV, and that of MKV and WebM.
const QString mp4 = u"mov,mp4,m4a,3gp,3g2,mj2"_s;
const QString mkv = u"matroska,webm"_s;

/// What comes of an action: films as ffprobe tells them, or a refusal in the user's words.
struct Expected {
    QString container = {};
    /// Such as "h264 320x180, aac, opus, mov_text".
    QString streams = {};
    /// Of all of them.
    double seconds = 2;
    QString noteKey = {};
    qsizetype count = 1;
    /// Bytes; 0 for none.
    qint64 limit = 0;
    std::string refusal = {};
};

Expected film(const QString &container, const QString &streams, double seconds = 2,
              const QString &noteKey = {})
{
    return {.container = container, .streams = streams, .seconds = seconds, .noteKey = noteKey};
}

Expected parts(qsizetype count, const QString &container, const QString &streams,
               double seconds = 2)
{
    return {.container = container, .streams = streams, .seconds = seconds, .count = count};
}

Expected within(qint64 limit, const QString &streams)
{
    return {.container = mp4, .streams = streams, .limit = limit};
}

Expected refused(const std::string &wordsOfIt)
{
    return {.refusal = wordsOfIt};
}

struct Row {
    std::string name;
    Clip clip;
    JobMode mode;
    Expected expected;
};

struct MergeRow {
    std::string name;
    QList<Clip> clips;
    MergeParams params;
    Expected expected;
};

QString pictureIn(const VideoFile &film)
{
    QString text = u"%1 %2x%3"_s.arg(*film.videoCodec, QString::number(film.width.value_or(0)),
                                     QString::number(film.height.value_or(0)));
    if (film.isHDR) {
        text += u" HDR"_s;
    }
    return film.hasAlphaChannel ? text + u" alpha"_s : text;
}

QString streamsIn(const VideoFile &film)
{
    QStringList streams;
    if (film.videoCodec) {
        streams += pictureIn(film);
    }
    for (const AudioStream &stream : film.audioStreams) {
        streams += stream.codec;
    }
    for (const SubtitleStream &stream : film.subtitleStreams) {
        streams += stream.codec;
    }
    return streams.join(u", "_s);
}

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

void PrintTo(const MergeRow &row, std::ostream *out)
{
    *out << row.name;
}

// Sound that is copied ends with its frame, and codecs put a little before their first one.
constexpr double toleratedSeconds = 0.25;

class AppModelActionsTest : public AppFixture
{
protected:
    AppModelActionsTest() { useRealTools(); }

    VideoFile makeClip(Clip clip) const
    {
        const ClipRow &row = *std::ranges::find(clipRows(), clip, &ClipRow::clip);
        if (clip == Clip::rotated) {
            makeClip(Clip::plain);
        }
        m_films.write(u"words.srt"_s, "1\n00:00:00,200 --> 00:00:01,500\nHello\n");
        QStringList args = row.args;
        for (QString &argument : args) {
            if (argument == "words.srt"_L1 || argument == "plain.mp4"_L1) {
                argument = m_films.path(argument);
            }
        }
        Clips::ffmpeg(args + QStringList{m_films.path(row.name)});
        return Clips::probe(m_films.path(row.name));
    }

    QList<VideoFile> makeClips(const QList<Clip> &clips) const
    {
        QList<VideoFile> films;
        for (const Clip clip : clips) {
            films += makeClip(clip);
        }
        return films;
    }

    std::shared_ptr<Job> done(const VideoFile &film, const JobMode &mode)
    {
        const auto job = enqueue(film, mode);
        waitForAllToEnd();
        return job;
    }

    std::shared_ptr<Job> merged(const QList<VideoFile> &films, const MergeParams &params)
    {
        m_model->enqueueMerge(params, films);
        waitForAllToEnd();
        return m_model->jobs().last();
    }

    // The films that a finished job left, each of which it owns to in its bytes.
    static QList<VideoFile> outputsOf(const std::shared_ptr<Job> &job)
    {
        const Job::Finished result = resultOf(job);
        QList<VideoFile> outputs;
        qint64 bytes = 0;
        for (const QUrl &url : result.outputURLs) {
            outputs += Clips::probe(url.toLocalFile());
            bytes += QFileInfo(url.toLocalFile()).size();
        }
        EXPECT_EQ(result.outputBytes, bytes);
        EXPECT_EQ(result.originalBytes, job->input.fileSizeBytes);
        return outputs;
    }

    // x264 keeps one of its files of a first pass until the program ends.
    QStringList temporaryNames() const
    {
        QStringList names = m_temporary.names();
        names.removeIf([](const QString &name) { return name.endsWith(".log.mbtree"_L1); });
        return names;
    }

    void expectOutcome(const std::shared_ptr<Job> &job, const Expected &expected,
                       double tolerance = toleratedSeconds) const
    {
        if (!expected.refusal.empty()) {
            EXPECT_THAT(messageOf(job).toStdString(), HasSubstr(expected.refusal));
            return;
        }
        ASSERT_EQ(job->outcome(), Outcome::finished) << messageOf(job).toStdString();
        const QList<VideoFile> outputs = outputsOf(job);
        ASSERT_EQ(outputs.size(), expected.count);
        double seconds = 0;
        for (const VideoFile &output : outputs) {
            EXPECT_EQ(output.containerName, expected.container);
            EXPECT_EQ(streamsIn(output), expected.streams);
            seconds += output.durationSeconds;
        }
        EXPECT_NEAR(seconds, expected.seconds, tolerance * static_cast<double>(expected.count));
        expectSizeOrNote(resultOf(job), expected);
    }

    // Whether a film under a limit needed a second attempt is the encoder's affair.
    void expectSizeOrNote(const Job::Finished &result, const Expected &expected) const
    {
        if (expected.limit > 0) {
            EXPECT_LE(result.outputBytes, expected.limit);
            return;
        }
        EXPECT_EQ(result.note, expected.noteKey.isEmpty()
                                   ? std::nullopt
                                   : std::optional(m_model->t(expected.noteKey)));
    }
};

class AppModelActionTest : public AppModelActionsTest, public testing::WithParamInterface<Row>
{
};

class AppModelMergeTest : public AppModelActionsTest, public testing::WithParamInterface<MergeRow>
{
};

TargetSizeParams under(double megabytes)
{
    TargetSizeParams params;
    params.targetMB = megabytes;
    return params;
}

TargetSizeParams exactlyUnder(double megabytes)
{
    TargetSizeParams params = under(megabytes);
    params.exactTwoPass = true;
    return params;
}

ConvertParams into(OutputContainer container)
{
    return {.container = container, .advanced = {}};
}

ConvertParams encodedInto(OutputContainer container)
{
    return {.container = container, .forceReencode = true, .advanced = {}};
}

MergeParams mergedInto(OutputContainer container)
{
    return {.container = container, .advanced = {}};
}

CompressParams inTheSource(bool preserveAlpha, bool hdrPassthrough)
{
    CompressParams params;
    params.advanced.preserveAlpha = preserveAlpha;
    params.advanced.hdrPassthrough = hdrPassthrough;
    return params;
}

CompressParams toHeight(qint64 height)
{
    return {.mode = CompressParams::Mode::quality,
            .resolution = CompressParams::ResTier::custom,
            .customHeight = height,
            .advanced = {}};
}

TrimParams keeping(const QList<TrimSegment> &segments, bool exact = false)
{
    return {.segments = segments, .exactReencode = exact, .advanced = {}};
}

TrimSegment from(double start, double end)
{
    TrimSegment segment;
    segment.start = start;
    segment.end = end;
    return segment;
}

TrimParams apart(const QList<TrimSegment> &segments)
{
    return {.segments = segments, .separateFiles = true, .advanced = {}};
}

SplitParams inParts(qint64 count)
{
    return {.mode = SplitParams::Mode::byParts, .parts = count, .advanced = {}};
}

SplitParams eachOf(double seconds)
{
    return {
        .mode = SplitParams::Mode::byDuration, .durationPerPartSeconds = seconds, .advanced = {}};
}

SplitParams sized(double megabytes)
{
    return {.mode = SplitParams::Mode::bySize, .sizePerPartMB = megabytes, .advanced = {}};
}

GifParams gifOf(qint64 width)
{
    return {.end = std::nullopt, .width = width};
}

GifParams bouncingGif()
{
    return {.end = std::nullopt, .width = 160, .bounce = true};
}

GifParams screenGif()
{
    return {.end = std::nullopt, .width = 160, .screenContent = true};
}

EnhanceParams doubled()
{
    return {.upscale = EnhanceParams::UpscaleFactor::x2, .advanced = {}};
}

AdjustParams turned()
{
    return {.rotation = AdjustParams::Rotation::cw90, .advanced = {}};
}

AdjustParams twiceAsFast()
{
    return {.speed = 2, .advanced = {}};
}

const std::string tooOdd = "FFmpeg error: Error initializing output stream 0:0 -- ";
const QString copied = u"convert.badge.remux"_s;
const QString partly = u"convert.badge.partial"_s;
const QString encoded = u"convert.badge.reencode"_s;
const QString direct = u"extract.direct"_s;
const QString transcoded = u"extract.transcode"_s;
const TrimParams oneSecond = keeping({from(0.4, 1.4)});
const TrimParams twoStretches = keeping({from(1.2, 1.8), from(0.2, 0.6)});
const TrimParams exactStretches = keeping({from(1.2, 1.8), from(0.2, 0.6)}, true);
const QString joined = u"merge.badge.copy"_s;
const QString onOneCanvas = u"merge.badge.reencode"_s;

std::string nameOf(const auto &row)
{
    return row.param.name;
}

} // namespace

TEST_P(AppModelActionTest, comes_out_as_told)
{
    start();
    const VideoFile film = makeClip(GetParam().clip);
    const QByteArray before = contentOf(film.url.toLocalFile());

    const auto job = done(film, GetParam().mode);

    expectOutcome(job, GetParam().expected);
    EXPECT_EQ(contentOf(film.url.toLocalFile()), before);
    EXPECT_THAT(temporaryNames(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    targetSize, AppModelActionTest,
    testing::Values(
        Row{"plain", Clip::plain, under(0.1), within(100'000, u"h264 320x180, aac"_s)},
        Row{"plain_exactly", Clip::plain, exactlyUnder(0.1),
            within(100'000, u"h264 320x180, aac"_s)},
        Row{"mute", Clip::mute, under(0.1), within(100'000, u"h264 320x180"_s)},
        Row{"tracks", Clip::tracks, under(0.2), within(200'000, u"h264 320x180, aac, aac"_s)},
        Row{"hdr", Clip::hdr, under(0.05), within(50'000, u"h264 320x180 HDR, aac"_s)},
        Row{"alpha", Clip::alpha, under(0.1), within(100'000, u"h264 320x180, aac"_s)},
        Row{"odd_width", Clip::oddWidth, under(0.1), within(100'000, u"h264 322x180, aac"_s)},
        Row{"odd_height", Clip::oddHeight, under(0.1), refused(tooOdd)},
        Row{"rotated", Clip::rotated, under(0.1), within(100'000, u"h264 180x320, aac"_s)},
        Row{"sound", Clip::sound, under(0.018), within(18'000, u"aac"_s)},
        Row{"sound_hopelessly", Clip::sound, under(0.01),
            refused("Still over the target after retries")},
        Row{"fits_already", Clip::plain, under(25),
            film(mp4, u"h264 320x180, aac"_s, 2, u"target.alreadyfits"_s)}),
    [](const auto &row) { return nameOf(row); });

INSTANTIATE_TEST_SUITE_P(
    convert, AppModelActionTest,
    testing::Values(Row{"plain_to_mov", Clip::plain, into(OutputContainer::mov),
                        film(mp4, u"h264 320x180, aac"_s, 2, copied)},
                    Row{"plain_to_mkv", Clip::plain, into(OutputContainer::mkv),
                        film(mkv, u"h264 320x180, aac"_s, 2, copied)},
                    Row{"plain_to_avi", Clip::plain, into(OutputContainer::avi),
                        film(u"avi"_s, u"h264 320x180, aac"_s, 2, partly)},
                    // No map takes the sound along where the picture is encoded.
                    Row{"plain_to_webm", Clip::plain, into(OutputContainer::webm),
                        film(mkv, u"vp9 320x180"_s, 2, encoded)},
                    Row{"plain_encoded", Clip::plain, encodedInto(OutputContainer::mp4),
                        film(mp4, u"h264 320x180"_s, 2, encoded)},
                    Row{"mute_to_mov", Clip::mute, into(OutputContainer::mov),
                        film(mp4, u"h264 320x180"_s, 2, copied)},
                    Row{"tracks_to_mkv", Clip::tracks, into(OutputContainer::mkv),
                        film(mkv, u"h264 320x180, aac, opus, subrip"_s, 2, copied)},
                    Row{"tracks_to_mp4", Clip::tracks, into(OutputContainer::mp4),
                        film(mp4, u"h264 320x180, aac, opus, mov_text"_s, 2, copied)},
                    // Only the first track is asked whether it fits.
                    Row{"tracks_to_mov", Clip::tracks, into(OutputContainer::mov),
                        refused("Could not write header for output file")},
                    Row{"tracks_to_avi", Clip::tracks, into(OutputContainer::avi),
                        refused("h264_mp4toannexb")},
                    Row{"hdr_to_mov", Clip::hdr, into(OutputContainer::mov),
                        film(mp4, u"hevc 320x180 HDR, aac"_s, 2, copied)},
                    Row{"alpha_to_mkv", Clip::alpha, into(OutputContainer::mkv),
                        film(mkv, u"prores 320x180 alpha, pcm_s16le"_s, 2, copied)},
                    Row{"alpha_to_mp4", Clip::alpha, into(OutputContainer::mp4),
                        film(mp4, u"h264 320x180"_s, 2, encoded)},
                    Row{"odd_width_to_mkv", Clip::oddWidth, into(OutputContainer::mkv),
                        film(mkv, u"h264 321x180, aac"_s, 2, copied)},
                    Row{"odd_height_encoded", Clip::oddHeight, encodedInto(OutputContainer::mp4),
                        refused(tooOdd)},
                    Row{"rotated_to_mov", Clip::rotated, into(OutputContainer::mov),
                        film(mp4, u"h264 320x180, aac"_s, 2, copied)},
                    Row{"rotated_to_webm", Clip::rotated, into(OutputContainer::webm),
                        film(mkv, u"vp9 180x320"_s, 2, encoded)},
                    Row{"sound_to_mkv", Clip::sound, into(OutputContainer::mkv),
                        film(mkv, u"aac"_s, 2, encoded)},
                    Row{"plain_with_flac",
                        Clip::plain,
                        {ConvertParams{.container = OutputContainer::mkv,
                                       .audioFormat = ConvertParams::AudioFormat::flac,
                                       .advanced = {}}},
                        film(mkv, u"h264 320x180, flac"_s, 2, partly)}),
    [](const auto &row) { return nameOf(row); });

INSTANTIATE_TEST_SUITE_P(
    compress, AppModelActionTest,
    testing::Values(
        Row{"plain", Clip::plain, CompressParams(), film(mp4, u"h264 320x180, aac"_s)},
        Row{"plain_smaller", Clip::plain, toHeight(90), film(mp4, u"h264 160x90, aac"_s)},
        Row{"mute", Clip::mute, CompressParams(), film(mp4, u"h264 320x180"_s)},
        Row{"tracks", Clip::tracks, CompressParams(), film(mp4, u"h264 320x180, aac, opus"_s)},
        Row{"hdr", Clip::hdr, CompressParams(), film(mp4, u"hevc 320x180 HDR, aac"_s)},
        Row{"hdr_passed_through", Clip::hdr, inTheSource(false, true),
            film(mp4, u"hevc 320x180 HDR, aac"_s)},
        Row{"alpha", Clip::alpha, CompressParams(), film(mp4, u"h264 320x180, aac"_s)},
        Row{"alpha_preserved", Clip::alpha, inTheSource(true, false), refused("FFmpeg error: ")},
        Row{"odd_width", Clip::oddWidth, CompressParams(), film(mp4, u"h264 322x180, aac"_s)},
        Row{"odd_height", Clip::oddHeight, CompressParams(), refused(tooOdd)},
        Row{"rotated", Clip::rotated, CompressParams(), film(mp4, u"h264 180x320, aac"_s)},
        Row{"sound", Clip::sound, CompressParams(), film(mp4, u"aac"_s)},
        Row{"plain_to_no_height", Clip::plain, toHeight(0), film(mp4, u"h264 320x180, aac"_s)}),
    [](const auto &row) { return nameOf(row); });

INSTANTIATE_TEST_SUITE_P(
    extract, AppModelActionTest,
    testing::Values(
        Row{"plain", Clip::plain, ExtractParams(), film(mp4, u"aac"_s, 2, direct)},
        Row{"plain_as_mp3", Clip::plain, ExtractParams{.format = ExtractParams::AudioFormat::mp3},
            film(u"mp3"_s, u"mp3"_s, 2, transcoded)},
        Row{"plain_as_aac", Clip::plain, ExtractParams{.format = ExtractParams::AudioFormat::aac},
            film(mp4, u"aac"_s, 2, transcoded)},
        Row{"plain_as_wav", Clip::plain, ExtractParams{.format = ExtractParams::AudioFormat::wav},
            film(u"wav"_s, u"pcm_s16le"_s, 2, transcoded)},
        Row{"mute", Clip::mute, ExtractParams(), refused("This file has no audio track.")},
        Row{"second_track", Clip::tracks, ExtractParams{.audioTrackIndex = 1},
            film(mp4, u"aac"_s, 2, transcoded)},
        Row{"a_track_beyond_the_last", Clip::tracks, ExtractParams{.audioTrackIndex = 7},
            film(mp4, u"aac"_s, 2, transcoded)},
        Row{"hdr", Clip::hdr, ExtractParams(), film(mp4, u"aac"_s, 2, direct)},
        Row{"alpha", Clip::alpha, ExtractParams(), film(mp4, u"aac"_s, 2, transcoded)},
        Row{"sound", Clip::sound, ExtractParams(), film(mp4, u"aac"_s, 2, direct)}),
    [](const auto &row) { return nameOf(row); });

INSTANTIATE_TEST_SUITE_P(
    trim, AppModelActionTest,
    testing::Values(
        Row{"plain", Clip::plain, oneSecond, film(mp4, u"h264 320x180, aac"_s, 1)},
        Row{"plain_joined", Clip::plain, twoStretches, film(mp4, u"h264 320x180, aac"_s, 1)},
        Row{"plain_exactly", Clip::plain, exactStretches, film(mp4, u"h264 320x180, aac"_s, 1)},
        Row{"mute", Clip::mute, oneSecond, film(mp4, u"h264 320x180"_s, 1)},
        Row{"tracks", Clip::tracks, oneSecond, film(mkv, u"h264 320x180, aac, opus"_s, 1)},
        Row{"hdr", Clip::hdr, oneSecond, film(mp4, u"hevc 320x180 HDR, aac"_s, 1)},
        Row{"alpha", Clip::alpha, oneSecond, film(mp4, u"prores 320x180 alpha, pcm_s16le"_s, 1)},
        Row{"odd_height", Clip::oddHeight, oneSecond, film(mp4, u"h264 320x181, aac"_s, 1)},
        Row{"odd_height_exactly", Clip::oddHeight, exactStretches, refused(tooOdd)},
        Row{"rotated", Clip::rotated, oneSecond, film(mp4, u"h264 320x180, aac"_s, 1)},
        Row{"rotated_exactly", Clip::rotated, exactStretches, film(mp4, u"h264 180x320, aac"_s, 1)},
        Row{"sound", Clip::sound, oneSecond, film(mp4, u"aac"_s, 1)},
        Row{"nothing", Clip::plain, TrimParams(), refused("Mark at least one segment to keep.")},
        Row{"a_moment", Clip::plain, keeping({from(1, 1.04)}),
            refused("Mark at least one segment to keep.")}),
    [](const auto &row) { return nameOf(row); });

INSTANTIATE_TEST_SUITE_P(
    gif, AppModelActionTest,
    testing::Values(
        Row{"plain", Clip::plain, GifParams(), film(u"gif"_s, u"gif 480x270 alpha"_s)},
        Row{"plain_of_a_stretch", Clip::plain, GifParams{.start = 0.5, .end = 1.5, .width = 160},
            film(u"gif"_s, u"gif 160x90 alpha"_s, 1)},
        Row{"plain_bouncing", Clip::plain, bouncingGif(), film(u"gif"_s, u"gif 160x90 alpha"_s, 4)},
        Row{"plain_of_a_screen", Clip::plain, screenGif(), film(u"gif"_s, u"gif 160x90 alpha"_s)},
        Row{"tracks", Clip::tracks, gifOf(160), film(u"gif"_s, u"gif 160x90 alpha"_s)},
        Row{"hdr", Clip::hdr, gifOf(160), film(u"gif"_s, u"gif 160x90 alpha"_s)},
        Row{"alpha", Clip::alpha, gifOf(160), film(u"gif"_s, u"gif 160x90 alpha"_s)},
        Row{"odd_height", Clip::oddHeight, gifOf(320), film(u"gif"_s, u"gif 320x181 alpha"_s)},
        Row{"rotated", Clip::rotated, gifOf(90), film(u"gif"_s, u"gif 90x160 alpha"_s)},
        Row{"sound", Clip::sound, GifParams(),
            refused("FFmpeg error: Output file #0 does not contain any stream")}),
    [](const auto &row) { return nameOf(row); });

INSTANTIATE_TEST_SUITE_P(
    enhance, AppModelActionTest,
    testing::Values(
        Row{"plain", Clip::plain, EnhanceParams(), film(mp4, u"h264 320x180, aac"_s)},
        Row{"plain_doubled", Clip::plain, doubled(), film(mp4, u"h264 640x360, aac"_s)},
        Row{"mute", Clip::mute, EnhanceParams(), film(mp4, u"h264 320x180"_s)},
        Row{"tracks", Clip::tracks, EnhanceParams(), film(mp4, u"h264 320x180, aac, opus"_s)},
        Row{"hdr", Clip::hdr, EnhanceParams(), film(mp4, u"h264 320x180 HDR, aac"_s)},
        Row{"alpha", Clip::alpha, EnhanceParams(), film(mp4, u"h264 320x180, aac"_s)},
        // Only a scaled picture gets even sides here.
        Row{"odd_width", Clip::oddWidth, EnhanceParams(), refused(tooOdd)},
        Row{"odd_width_doubled", Clip::oddWidth, doubled(), film(mp4, u"h264 642x360, aac"_s)},
        Row{"rotated", Clip::rotated, EnhanceParams(), film(mp4, u"h264 180x320, aac"_s)},
        Row{"sound", Clip::sound,
            EnhanceParams{.denoise = EnhanceParams::DenoiseLevel::off, .advanced = {}},
            film(mp4, u"aac"_s)}),
    [](const auto &row) { return nameOf(row); });

INSTANTIATE_TEST_SUITE_P(
    adjust, AppModelActionTest,
    testing::Values(
        Row{"plain", Clip::plain, turned(), film(mp4, u"h264 180x320, aac"_s)},
        Row{"plain_faster", Clip::plain, twiceAsFast(), film(mp4, u"h264 320x180, aac"_s, 1)},
        Row{"plain_backwards", Clip::plain, AdjustParams{.reverse = true, .advanced = {}},
            film(mp4, u"h264 320x180, aac"_s)},
        Row{"plain_muted", Clip::plain, AdjustParams{.flipH = true, .muted = true, .advanced = {}},
            film(mp4, u"h264 320x180"_s)},
        Row{"mute", Clip::mute, twiceAsFast(), film(mp4, u"h264 320x180"_s, 1)},
        Row{"tracks", Clip::tracks, turned(), film(mp4, u"h264 180x320, aac, opus"_s)},
        Row{"hdr", Clip::hdr, turned(), film(mp4, u"h264 180x320 HDR, aac"_s)},
        Row{"alpha", Clip::alpha, turned(), film(mp4, u"h264 180x320, aac"_s)},
        Row{"odd_width", Clip::oddWidth, turned(), refused(tooOdd)},
        // The picture is set upright before it is turned.
        Row{"rotated", Clip::rotated, turned(), film(mp4, u"h264 320x180, aac"_s)},
        Row{"sound", Clip::sound, AdjustParams(), film(mp4, u"aac"_s)}),
    [](const auto &row) { return nameOf(row); });

TEST_P(AppModelMergeTest, comes_out_as_told)
{
    start();

    const auto job = merged(makeClips(GetParam().clips), GetParam().params);

    const Expected &expected = GetParam().expected;
    expectOutcome(job, expected, expected.container == mp4 ? 0.1 : toleratedSeconds);
    EXPECT_THAT(temporaryNames(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    merge, AppModelMergeTest,
    testing::Values(MergeRow{"matching_clips",
                             {Clip::plain, Clip::plain, Clip::plain},
                             MergeParams(),
                             film(mp4, u"h264 320x180, aac"_s, 6, joined)},
                    MergeRow{"matching_clips_encoded",
                             {Clip::plain, Clip::plain},
                             {.forceReencode = true, .advanced = {}},
                             film(mp4, u"h264 320x180, aac"_s, 4, onOneCanvas)},
                    MergeRow{"matching_clips_into_webm",
                             {Clip::plain, Clip::plain},
                             mergedInto(OutputContainer::webm),
                             refused("are supported for WebM")},
                    MergeRow{"two_rates_into_mp4",
                             {Clip::plain, Clip::slow},
                             mergedInto(OutputContainer::mp4),
                             film(mp4, u"h264 320x180, aac"_s, 4, onOneCanvas)},
                    MergeRow{"two_rates_into_mov",
                             {Clip::slow, Clip::plain},
                             mergedInto(OutputContainer::mov),
                             film(mp4, u"h264 320x180, aac"_s, 4, onOneCanvas)},
                    MergeRow{"two_rates_into_mkv",
                             {Clip::plain, Clip::slow},
                             mergedInto(OutputContainer::mkv),
                             film(mkv, u"h264 320x180, aac"_s, 4, onOneCanvas)},
                    MergeRow{"two_rates_into_webm",
                             {Clip::plain, Clip::slow},
                             mergedInto(OutputContainer::webm),
                             film(mkv, u"vp9 320x180, opus"_s, 4, onOneCanvas)},
                    MergeRow{"two_rates_into_avi",
                             {Clip::plain, Clip::slow},
                             mergedInto(OutputContainer::avi),
                             film(u"avi"_s, u"h264 320x180, aac"_s, 4, onOneCanvas)},
                    // One clip without sound takes it from the whole film.
                    MergeRow{"one_without_sound",
                             {Clip::plain, Clip::mute},
                             MergeParams(),
                             film(mp4, u"h264 320x180"_s, 4, onOneCanvas)},
                    MergeRow{"several_tracks",
                             {Clip::tracks, Clip::alpha},
                             MergeParams(),
                             film(mp4, u"h264 320x180, aac"_s, 4, onOneCanvas)},
                    MergeRow{"ten_bits_and_eight",
                             {Clip::hdr, Clip::plain},
                             MergeParams(),
                             film(mp4, u"h264 320x180 HDR, aac"_s, 4, onOneCanvas)},
                    MergeRow{"odd_sizes",
                             {Clip::oddWidth, Clip::rotated},
                             MergeParams(),
                             film(mp4, u"h264 320x180, aac"_s, 4, onOneCanvas)},
                    MergeRow{"sound_alone",
                             {Clip::plain, Clip::sound},
                             MergeParams(),
                             refused("matches no streams")}),
    [](const auto &row) { return nameOf(row); });

INSTANTIATE_TEST_SUITE_P(
    split, AppModelActionTest,
    testing::Values(
        Row{"plain", Clip::plain, inParts(2), parts(2, mp4, u"h264 320x180, aac"_s)},
        Row{"plain_by_length", Clip::plain, eachOf(1), parts(2, mp4, u"h264 320x180, aac"_s)},
        Row{"plain_by_size", Clip::plain, sized(0.1), parts(2, mp4, u"h264 320x180, aac"_s)},
        Row{"mute", Clip::mute, inParts(3), parts(3, mp4, u"h264 320x180"_s)},
        Row{"tracks", Clip::tracks, inParts(2), parts(2, mkv, u"h264 320x180, aac, opus"_s)},
        Row{"hdr", Clip::hdr, inParts(2), parts(2, mp4, u"hevc 320x180 HDR, aac"_s)},
        Row{"alpha", Clip::alpha, inParts(2), parts(2, mp4, u"prores 320x180 alpha, pcm_s16le"_s)},
        Row{"odd_height", Clip::oddHeight, inParts(2), parts(2, mp4, u"h264 320x181, aac"_s)},
        Row{"rotated", Clip::rotated, inParts(2), parts(2, mp4, u"h264 320x180, aac"_s)},
        Row{"sound", Clip::sound, inParts(2), parts(2, mp4, u"aac"_s)}),
    [](const auto &row) { return nameOf(row); });

INSTANTIATE_TEST_SUITE_P(
    trimApart, AppModelActionTest,
    testing::Values(Row{"plain", Clip::plain, apart({from(1.2, 1.8), from(0.2, 0.6)}),
                        parts(2, mp4, u"h264 320x180, aac"_s, 1)},
                    Row{"sound", Clip::sound, apart({from(0, 0.5), from(1, 1.5)}),
                        parts(2, mp4, u"aac"_s, 1)}),
    [](const auto &row) { return nameOf(row); });
