// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/ResultCheck.h"

#include "support/Clips.h"
#include "support/TempFolder.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class ResultCheckTest : public ::testing::Test
{
protected:
    QString film(const QString &name, double seconds)
    {
        Clips::make(m_folder.path(name), {.seconds = seconds});
        return m_folder.path(name);
    }

    static void cut(const QString &path)
    {
        QFile file(path);
        ASSERT_TRUE(file.resize(file.size() / 2));
    }

    QString headOf(const QString &input, const QString &output, const QString &seconds)
    {
        Clips::ffmpeg(
            {u"-t"_s, seconds, u"-i"_s, input, u"-c"_s, u"copy"_s, m_folder.path(output)});
        return m_folder.path(output);
    }

    static std::optional<QString> problem(const QString &input, const QString &output,
                                          const QList<double> &stepSeconds)
    {
        JobPlan plan;
        for (const double seconds : stepSeconds) {
            FFmpegStep step;
            step.progressDuration = seconds;
            plan.steps.append(step);
        }
        plan.finalOutputURLs = {QUrl::fromLocalFile(output)};
        VideoFile file;
        file.url = QUrl::fromLocalFile(input);
        const auto problem = ResultCheck::problem({file, ActionKind::targetSize, plan},
                                                  Clips::tools().ffprobeURL, AppLanguage::english);
        return problem ? std::optional(problem->sentence) : std::nullopt;
    }

    TempFolder m_folder;
};

} // namespace

TEST_F(ResultCheckTest, a_result_of_the_full_length_is_good)
{
    const QString input = film(u"film.mp4"_s, 3);
    EXPECT_EQ(problem(input, input, {3}), std::nullopt);
    EXPECT_EQ(problem(input, input, {1.05, 1.95}), std::nullopt);
}

TEST_F(ResultCheckTest, a_short_result_of_a_whole_film_is_good)
{
    const QString input = film(u"film.mp4"_s, 3);
    const QString output = headOf(input, u"short.mp4"_s, u"1"_s);
    EXPECT_EQ(problem(input, output, {3}), std::nullopt);
}

TEST_F(ResultCheckTest, a_short_result_of_a_film_cut_off_is_told_with_both_lengths)
{
    const QString input = film(u"film.mkv"_s, 3);
    const QString output = headOf(input, u"short.mp4"_s, u"1"_s);
    cut(input);
    const QString sentence = problem(input, output, {1.05, 1.95}).value_or(QString());
    EXPECT_TRUE(sentence.startsWith("This film has been cut off: the result holds 1."_L1))
        << sentence.toStdString();
    EXPECT_TRUE(sentence.endsWith(" of 3.0 seconds."_L1)) << sentence.toStdString();
}

TEST_F(ResultCheckTest, a_film_cut_off_behind_the_wanted_part_is_good)
{
    const QString input = film(u"film.mkv"_s, 3);
    const QString output = headOf(input, u"short.mp4"_s, u"1"_s);
    cut(input);
    EXPECT_EQ(problem(input, output, {1}), std::nullopt);
}

TEST_F(ResultCheckTest, a_file_of_unknown_length_is_not_judged_by_it)
{
    const QString input = film(u"film.mkv"_s, 1);
    EXPECT_EQ(problem(input, input, {0}), std::nullopt);
}

TEST_F(ResultCheckTest, a_result_whose_end_is_missing_is_told)
{
    const QString input = film(u"film.mp4"_s, 3);
    Clips::ffmpeg({u"-i"_s, input, u"-c"_s, u"copy"_s, u"-movflags"_s, u"+faststart"_s,
                   m_folder.path(u"made.mp4"_s)});
    EXPECT_EQ(problem(input, m_folder.path(u"made.mp4"_s), {3}), std::nullopt);
    cut(m_folder.path(u"made.mp4"_s));
    EXPECT_EQ(problem(input, m_folder.path(u"made.mp4"_s), {3}),
              u"FFmpeg told no error, but the result is incomplete."_s);
}

TEST_F(ResultCheckTest, a_result_without_a_film_is_told)
{
    const QString input = film(u"film.mp4"_s, 1);
    const QString sentence = u"FFmpeg told no error, but the result holds no film."_s;
    EXPECT_EQ(problem(input, m_folder.path(u"missing.mp4"_s), {1}), sentence);
    EXPECT_EQ(problem(input, m_folder.write(u"empty.mp4"_s, ""), {1}), sentence);
    Clips::ffmpeg(
        {u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=duration=0"_s, m_folder.path(u"none.mp4"_s)});
    EXPECT_EQ(problem(input, m_folder.path(u"none.mp4"_s), {1}), sentence);
}

TEST_F(ResultCheckTest, a_result_that_cannot_be_made_out_is_not_held_against_ffmpeg)
{
    const QString input = film(u"film.mp4"_s, 1);
    EXPECT_EQ(problem(input, m_folder.write(u"text.mp4"_s, "hello"), {1}), std::nullopt);
}
