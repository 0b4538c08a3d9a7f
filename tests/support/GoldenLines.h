// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/CommandBuilder/BuilderError.h"
#include "Engine/Text.h"
#include "Models/JobPlan.h"
#include "Models/VideoFile.h"
#include "support/Samples.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <gtest/gtest.h>

#include <concepts>
#include <functional>
#include <optional>
#include <ostream>
#include <vector>

/// Command lines as tables of cases.
namespace GoldenLines {

using Samples::offering;

/// A case about one film before it is planned: the film of ten seconds, the parameters as they
/// come, and what tables change about them.
template <typename Params> struct FilmCase {
    VideoFile file = Samples::tenSeconds();
    Params params;

    void addAudio(const QString &codec) { file.audioStreams += Samples::track(codec); }

    void sound(const QStringList &codecs)
    {
        file.audioStreams.clear();
        for (const QString &codec : codecs) {
            addAudio(codec);
        }
    }

    void dropVideo()
    {
        file.videoCodec.reset();
        file.videoBitrateBps.reset();
        file.width.reset();
        file.height.reset();
    }

    void replaceAudio()
    {
        params.advanced.replacementAudioURL = QUrl::fromLocalFile(QStringLiteral("/music/b.m4a"));
    }

    void crop(CropSpec::Aspect aspect)
    {
        params.advanced.crop = CropSpec{aspect, std::nullopt, std::nullopt};
    }
};

/// How a case differs from the plain one.
template <typename Given> using ChangeOf = std::function<void(Given &)>;

/// One case, named by what the command line does: how it differs from the plain one, and the line
/// behind the common head.
template <typename Given> struct LineRow {
    const char *name;
    ChangeOf<Given> change;
    const char *line;
};

/// One case of several steps, with a line for each.
template <typename Given> struct LinesRow {
    const char *name;
    ChangeOf<Given> change;
    std::vector<const char *> lines;
};

/// Any row of a table, also one that adds columns to those above.
template <typename Row>
concept NamedRow = requires(const Row &row)
{
    {
        row.name
        } -> std::convertible_to<const char *>;
    row.change;
};

// What GoogleTest shows of a row.
template <NamedRow Row> void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

/// The name of a row's test.
struct RowName {
    template <NamedRow Row> std::string operator()(const ::testing::TestParamInfo<Row> &info) const
    {
        return info.param.name;
    }
};

/// The plain case with a change.
template <typename Given> Given given(const ChangeOf<Given> &change)
{
    Given result;
    change(result);
    return result;
}

/// A text cut at its blanks.
inline QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QChar(u' '), Qt::SkipEmptyParts);
}

/// A whole command line out of what stands behind the common head.
inline QStringList commandLine(const char *tail)
{
    return words("-hide_banner -nostdin -loglevel error -progress pipe:1 -nostats -y") +
           words(tail);
}

/// The value behind the first option of that name; empty when it isn't there.
inline QString valueOf(const QStringList &args, const QString &option)
{
    const qsizetype position = args.indexOf(option);
    return position < 0 ? QString() : args.value(position + 1);
}

inline QStringList labelsOf(const QList<FFmpegStep> &steps)
{
    QStringList labels;
    for (const FFmpegStep &step : steps) {
        labels += step.label;
    }
    return labels;
}

/// The path of the folder that the plan makes for itself.
inline QString folderOf(const JobPlan &plan)
{
    return plan.createDirs.value(0).toLocalFile();
}

/// Expects the path to be the stem with an identity behind it.
inline void expectIdentityBehind(const QString &stem, const QString &path)
{
    ASSERT_TRUE(path.startsWith(stem)) << path.toStdString();
    const QUuid id(path.sliced(stem.size()));
    EXPECT_FALSE(id.isNull());
    EXPECT_EQ(path, stem + Text::uuid(id));
}

/// How a case is refused; absent when it is planned.
template <typename Given> std::optional<BuilderError::Case> refusalOf(const Given &g)
{
    try {
        g.plan();
    } catch (const BuilderError &error) {
        return error.kind();
    }
    return std::nullopt;
}

/// Expects one step a line. In the lines "/scratch" stands for the folder.
inline void expectLines(const JobPlan &plan, const std::vector<const char *> &lines,
                        const QString &scratch)
{
    ASSERT_EQ(static_cast<size_t>(plan.steps.size()), lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(plan.steps.at(static_cast<qsizetype>(i)).args,
                  commandLine(lines.at(i)).replaceInStrings(QStringLiteral("/scratch"), scratch));
    }
}

/// Expects a plan that neither repeats nor approaches a size.
inline void expectNoFurtherAttempts(const JobPlan &plan)
{
    EXPECT_FALSE(plan.retryFactory);
    EXPECT_FALSE(plan.approach);
}

/// Expects a plan without any of what only some plans have.
inline void expectNothingBeside(const JobPlan &plan)
{
    EXPECT_EQ(plan.targetLimitBytes, std::nullopt);
    expectNoFurtherAttempts(plan);
    EXPECT_TRUE(plan.prepFiles.isEmpty());
    EXPECT_TRUE(plan.createDirs.isEmpty());
    EXPECT_TRUE(plan.cleanupURLs.isEmpty());
    for (const FFmpegStep &step : plan.steps) {
        EXPECT_FALSE(step.tempOutputURL);
    }
}

/// A folder that is the system's temporary one until the test ends.
class Scratch
{
public:
    QString path() const { return QDir(m_folder.path()).canonicalPath(); }

private:
    TempFolder m_folder;
    ScopedEnvironment m_temporary{"TMPDIR", m_folder.path().toUtf8()};
};

} // namespace GoldenLines
