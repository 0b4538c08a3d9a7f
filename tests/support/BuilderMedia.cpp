// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/BuilderMedia.h"

#include "Engine/EncoderStandIns.h"

#include <QDir>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// What ffmpeg decodes to raw values.
QByteArray decoded(const QStringList &args)
{
    const TempFolder folder;
    const QString raw = folder.path(u"raw"_s);
    Clips::ffmpeg(args + QStringList{raw});
    return contentOf(raw);
}

// One picture as the filter leaves it: the red, green and blue of each pixel.
QByteArray pictureAt(const VideoFile &file, double seconds, const QString &filter)
{
    return decoded({u"-ss"_s, QString::number(seconds), u"-i"_s, file.url.toLocalFile(), u"-vf"_s,
                    filter, u"-frames:v"_s, u"1"_s, u"-f"_s, u"rawvideo"_s, u"-pix_fmt"_s,
                    u"rgb24"_s});
}

bool isBright(char value)
{
    return static_cast<unsigned char>(value) > 127;
}

QChar colourName(const QByteArray &rgb)
{
    static const QString names = u"KRGYBMCW"_s;
    const int index = (isBright(rgb.at(0)) ? 1 : 0) + (isBright(rgb.at(1)) ? 2 : 0) +
                      (isBright(rgb.at(2)) ? 4 : 0);
    return names.at(index);
}

} // namespace

BuilderMedia::BuilderMedia()
{
    QDir(folder.path()).mkdir(u"scratch"_s);
    m_temporary.emplace("TMPDIR", folder.path(u"scratch"_s).toUtf8());
}

VideoFile BuilderMedia::film(const QString &name)
{
    Clips::make(folder.path(name), {});
    return Clips::probe(folder.path(name));
}

VideoFile BuilderMedia::madeBy(const QString &name, const QStringList &args)
{
    Clips::ffmpeg(args + QStringList{folder.path(name)});
    return Clips::probe(folder.path(name));
}

VideoFile BuilderMedia::drawn(const QString &name, const QString &picture,
                              const QStringList &encoding)
{
    return madeBy(name, QStringList{u"-f"_s, u"lavfi"_s, u"-i"_s, picture} + encoding);
}

ExecutionOutcome BuilderMedia::run(const JobPlan &plan)
{
    const FFmpegToolset &tools = Clips::tools();
    return PlanExecutor(tools.ffmpegURL)
        .execute(EncoderStandIns::apply(plan, EncoderStandIns::software(tools)), [](double) {});
}

VideoFile BuilderMedia::resultOf(const JobPlan &plan)
{
    const ExecutionOutcome outcome = run(plan);
    EXPECT_EQ(outcome.outputURLs, plan.finalOutputURLs);
    const QString path = outcome.outputURLs.value(0).toLocalFile();
    EXPECT_GT(outcome.outputBytes, 0);
    EXPECT_EQ(outcome.outputBytes, QFileInfo(path).size());
    return Clips::probe(path);
}

std::string BuilderMedia::failureOf(const JobPlan &plan)
{
    try {
        run(plan);
    } catch (const EngineError &error) {
        EXPECT_EQ(error.kind(), EngineError::Case::processFailed);
        EXPECT_GT(error.exitCode(), 0);
        return error.stderrTail().toStdString();
    }
    ADD_FAILURE() << "the run succeeded";
    return {};
}

QStringList BuilderMedia::scratchNames() const
{
    return QDir(folder.path(u"scratch"_s))
        .entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
}

QString quartersAt(const VideoFile &file, double seconds)
{
    const QByteArray rgb = pictureAt(file, seconds, u"format=rgb24,scale=2:2:flags=area"_s);
    QString colours;
    for (qsizetype i = 0; i + 2 < rgb.size(); i += 3) {
        colours += colourName(rgb.sliced(i, 3));
    }
    return colours;
}

QChar colourAt(const VideoFile &file, double seconds, qint64 x, qint64 y)
{
    const QString place = u"crop=2:2:%1:%2"_s.arg(QString::number(x), QString::number(y));
    const QByteArray rgb = pictureAt(file, seconds, place);
    return rgb.isEmpty() ? QChar(u'?') : colourName(rgb.first(3));
}

double loudnessOf(const VideoFile &file, double start, double seconds)
{
    const QByteArray samples =
        decoded({u"-ss"_s, QString::number(start), u"-t"_s, QString::number(seconds), u"-i"_s,
                 file.url.toLocalFile(), u"-vn"_s, u"-ac"_s, u"1"_s, u"-f"_s, u"s16le"_s});
    double sum = 0;
    for (qsizetype i = 0; i + 1 < samples.size(); i += 2) {
        const double value = qFromLittleEndian<qint16>(samples.constData() + i) / 32768.0;
        sum += value * value;
    }
    EXPECT_GT(samples.size(), 1);
    return std::sqrt(sum / std::max(static_cast<double>(samples.size() / 2), 1.0));
}

void expectSoundAndLength(const VideoFile &file, double seconds)
{
    ASSERT_EQ(file.audioStreams.size(), 1);
    EXPECT_EQ(file.audioStreams.first().codec, u"aac"_s);
    EXPECT_NEAR(file.durationSeconds, seconds, 0.1);
}
