// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/MediaFixture.h"

#include "Engine/EncoderStandIns.h"
#include "Engine/EngineError.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

MediaFixture::MediaFixture()
{
    QDir(folder.path()).mkdir(u"scratch"_s);
    m_temporary.emplace("TMPDIR", folder.path(u"scratch"_s).toUtf8());
}

VideoFile MediaFixture::film(const QString &name, const Clips::Recipe &recipe) const
{
    Clips::make(folder.path(name), recipe);
    return Clips::probe(folder.path(name));
}

VideoFile MediaFixture::madeBy(const QString &name, const QStringList &args) const
{
    Clips::ffmpeg(args + QStringList{folder.path(name)});
    return Clips::probe(folder.path(name));
}

VideoFile MediaFixture::drawn(const QString &name, const QString &source,
                              const QStringList &encoding) const
{
    return madeBy(name, pictureInput(source) + encoding);
}

VideoFile MediaFixture::silentFilm(const QString &size, double seconds, const QString &codec) const
{
    return drawn(
        u"silent.mkv"_s,
        u"testsrc=size=%1:rate=25:duration=%2,format=yuv420p"_s.arg(size, QString::number(seconds)),
        {u"-c:v"_s, codec});
}

VideoFile MediaFixture::hdrFilm(double seconds) const
{
    return drawn(u"hdr.mp4"_s,
                 u"testsrc2=size=320x180:rate=25:duration=%1"_s.arg(QString::number(seconds)),
                 {u"-c:v"_s, u"libx265"_s, u"-preset"_s, u"ultrafast"_s, u"-x265-params"_s,
                  u"log-level=error"_s, u"-pix_fmt"_s, u"yuv420p10le"_s, u"-color_primaries"_s,
                  u"bt2020"_s, u"-color_trc"_s, u"smpte2084"_s, u"-colorspace"_s, u"bt2020nc"_s});
}

VideoFile MediaFixture::alphaFilm() const
{
    return madeBy(u"alpha.mov"_s,
                  pictureInput() + QStringList{u"-vf"_s, u"format=yuva444p10le"_s, u"-c:v"_s,
                                               u"prores_ks"_s, u"-profile:v"_s, u"4"_s});
}

VideoFile MediaFixture::filmWithTwoTracks(const QString &secondCodec) const
{
    return madeBy(u"two.mkv"_s, pictureInput() + toneInput() + toneInput() +
                                    QStringList{u"-map"_s, u"0:v"_s, u"-map"_s, u"1:a"_s, u"-map"_s,
                                                u"2:a"_s, u"-c:v"_s, u"libx264"_s, u"-c:a:0"_s,
                                                u"aac"_s, u"-c:a:1"_s, secondCodec});
}

VideoFile MediaFixture::turned(const VideoFile &file, int degrees) const
{
    return madeBy(u"turned.mp4"_s,
                  {u"-i"_s, file.url.toLocalFile(), u"-c"_s, u"copy"_s, u"-metadata:s:v:0"_s,
                   u"rotate=%1"_s.arg(QString::number(degrees))});
}

QString MediaFixture::recording(const QString &name, double seconds, int channels) const
{
    const QString noise = u"anoisesrc=duration=%1:amplitude=0.2"_s.arg(QString::number(seconds));
    Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, noise, u"-ac"_s, QString::number(channels),
                   folder.path(name)});
    return folder.path(name);
}

QUrl MediaFixture::stereoWav(double seconds) const
{
    return QUrl::fromLocalFile(recording(u"b c.wav"_s, seconds, 2));
}

QString MediaFixture::subtitles() const
{
    return folder.write(u"a.srt"_s, "1\n00:00:00,000 --> 00:00:01,000\nHello\n");
}

ExecutionOutcome MediaFixture::run(const JobPlan &plan) const
{
    const FFmpegToolset &tools = Clips::tools();
    return PlanExecutor(tools.ffmpegURL)
        .execute(EncoderStandIns::apply(plan, EncoderStandIns::software(tools)), [](double) {});
}

VideoFile MediaFixture::resultOf(const JobPlan &plan) const
{
    const ExecutionOutcome outcome = run(plan);
    EXPECT_EQ(outcome.outputURLs.size(), 1);
    EXPECT_EQ(outcome.outputURLs, plan.finalOutputURLs);
    const QString path = outcome.outputURLs.value(0).toLocalFile();
    EXPECT_GT(outcome.outputBytes, 0);
    EXPECT_EQ(outcome.outputBytes, QFileInfo(path).size());
    return Clips::probe(path);
}

std::string MediaFixture::wordsOfFailure(const JobPlan &plan) const
{
    try {
        run(plan);
    } catch (const EngineError &error) {
        EXPECT_EQ(error.kind(), EngineError::Case::processFailed);
        EXPECT_EQ(error.exitCode(), 1);
        return error.errorDescription().toStdString();
    }
    ADD_FAILURE() << "the run succeeded";
    return {};
}

QStringList MediaFixture::scratchNames() const
{
    return QDir(folder.path(u"scratch"_s))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

QStringList pictureInput(const QString &source)
{
    return {u"-f"_s, u"lavfi"_s, u"-i"_s, source};
}

QStringList toneInput(double seconds)
{
    return {u"-f"_s, u"lavfi"_s, u"-i"_s, u"sine=duration=%1"_s.arg(QString::number(seconds))};
}

QStringList noiseInput(double seconds)
{
    return {u"-f"_s, u"lavfi"_s, u"-i"_s, u"anoisesrc=duration=%1"_s.arg(QString::number(seconds))};
}
