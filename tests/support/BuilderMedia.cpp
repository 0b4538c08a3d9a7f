// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/BuilderMedia.h"

#include "Engine/EncoderStandIns.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

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

void expectSoundAndLength(const VideoFile &file, double seconds)
{
    ASSERT_EQ(file.audioStreams.size(), 1);
    EXPECT_EQ(file.audioStreams.first().codec, u"aac"_s);
    EXPECT_NEAR(file.durationSeconds, seconds, 0.1);
}
