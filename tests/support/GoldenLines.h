// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobPlan.h"
#include "support/TempFolder.h"

#include <QDir>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

/// Command lines as tables of cases.
namespace GoldenLines {

/// One case, named by what the command line does: how it differs from the plain one, and the line
/// behind the common head.
template <typename Given> struct LineRow {
    const char *name;
    std::function<void(Given &)> change;
    const char *line;
};

// What GoogleTest shows of a row.
template <typename Given> void PrintTo(const LineRow<Given> &row, std::ostream *out)
{
    *out << row.name;
}

/// The name of a row's test.
struct RowName {
    template <typename Given>
    std::string operator()(const ::testing::TestParamInfo<LineRow<Given>> &info) const
    {
        return info.param.name;
    }
};

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

/// Expects a plan without any of what only some plans have.
inline void expectNothingBeside(const JobPlan &plan)
{
    EXPECT_EQ(plan.targetLimitBytes, std::nullopt);
    EXPECT_FALSE(plan.retryFactory);
    EXPECT_FALSE(plan.approach);
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
