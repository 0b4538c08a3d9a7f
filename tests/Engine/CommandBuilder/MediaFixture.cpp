// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "MediaFixture.h"

#include "Engine/EncoderStandIns.h"
#include "support/Clips.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

MediaFixture::MediaFixture()
{
    QDir(folder.path()).mkdir(u"scratch"_s);
    m_temporary.emplace("TMPDIR", folder.path(u"scratch"_s).toUtf8());
}

VideoFile MediaFixture::madeBy(const QString &name, const QStringList &args) const
{
    Clips::ffmpeg(args + QStringList{folder.path(name)});
    return Clips::probe(folder.path(name));
}

QString MediaFixture::recording(const QString &name, double seconds, int channels) const
{
    Clips::ffmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s,
                   u"anoisesrc=duration=%1:amplitude=0.2"_s.arg(QString::number(seconds)), u"-ac"_s,
                   QString::number(channels), folder.path(name)});
    return folder.path(name);
}

ExecutionOutcome MediaFixture::run(const JobPlan &plan) const
{
    const auto standIns = EncoderStandIns::software(Clips::tools());
    return PlanExecutor(Clips::tools().ffmpegURL)
        .execute(EncoderStandIns::apply(plan, standIns), [](double) {});
}

VideoFile MediaFixture::resultOf(const JobPlan &plan) const
{
    const ExecutionOutcome outcome = run(plan);
    EXPECT_EQ(outcome.outputURLs.size(), 1);
    const QString path = outcome.outputURLs.first().toLocalFile();
    EXPECT_EQ(outcome.outputBytes, QFileInfo(path).size());
    return Clips::probe(path);
}

std::optional<EngineError> MediaFixture::failureOf(const JobPlan &plan) const
{
    try {
        run(plan);
    } catch (const EngineError &error) {
        return error;
    }
    ADD_FAILURE() << "the run succeeded";
    return std::nullopt;
}

std::string MediaFixture::wordsOfFailure(const JobPlan &plan) const
{
    const std::optional<EngineError> failure = failureOf(plan);
    if (!failure) {
        return {};
    }
    EXPECT_EQ(failure->kind(), EngineError::Case::processFailed);
    EXPECT_GT(failure->exitCode(), 0);
    return failure->errorDescription().toStdString();
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
