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

    static JobPlan plan(const QStringList &outputs, const QList<double> &stepSeconds)
    {
        JobPlan plan;
        for (const double seconds : stepSeconds) {
            FFmpegStep step;
            step.progressDuration = seconds;
            plan.steps.append(step);
        }
        for (const QString &output : outputs) {
            plan.finalOutputURLs += QUrl::fromLocalFile(output);
        }
        return plan;
    }

    static std::optional<QString> problem(const QString &input, const JobPlan &plan,
                                          ActionKind action,
                                          AppLanguage language = AppLanguage::english)
    {
        VideoFile file;
        file.url = QUrl::fromLocalFile(input);
        const auto found =
            ResultCheck::problem({file, action, plan}, Clips::tools().ffprobeURL, language);
        return found ? std::optional(found->sentence) : std::nullopt;
    }

    static std::optional<QString> problem(const QString &input, const QString &output,
                                          const QList<double> &stepSeconds)
    {
        return problem(input, plan({output}, stepSeconds), ActionKind::targetSize);
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

TEST_F(ResultCheckTest, a_joined_film_that_lacks_a_clip_is_told_whatever_its_first_clip_is_like)
{
    const QString input = film(u"film.mp4"_s, 2);
    const JobPlan lost = plan({input}, {4});

    EXPECT_EQ(problem(input, lost, ActionKind::merge),
              u"A clip couldn't be joined: the result holds 2.0 of 4.0 seconds."_s);
    EXPECT_EQ(problem(input, lost, ActionKind::merge, AppLanguage::simplifiedChinese),
              u"有片段未能合并：结果只有 2.0 秒，应为 4.0 秒。"_s);
}

TEST_F(ResultCheckTest, a_joined_film_of_nearly_the_full_length_is_good)
{
    const QString input = film(u"film.mp4"_s, 2);
    EXPECT_EQ(problem(input, plan({input}, {2.9}), ActionKind::merge), std::nullopt);
}

TEST_F(ResultCheckTest, a_joined_film_that_is_empty_holds_no_film)
{
    const QString input = film(u"film.mp4"_s, 1);
    const QString empty = m_folder.write(u"empty.mp4"_s, "");
    EXPECT_EQ(problem(input, plan({empty}, {4}), ActionKind::merge),
              u"FFmpeg told no error, but the result holds no film."_s);
}

TEST_F(ResultCheckTest, parts_of_a_film_cut_off_are_not_judged_by_their_length)
{
    const QString input = film(u"film.mkv"_s, 3);
    const QString part = headOf(input, u"part.mp4"_s, u"1"_s);
    cut(input);
    for (const ActionKind action : {ActionKind::trim, ActionKind::split, ActionKind::gif}) {
        EXPECT_EQ(problem(input, plan({part}, {1.5, 1.5}), action), std::nullopt);
    }
    EXPECT_NE(problem(input, plan({part}, {1.5, 1.5}), ActionKind::adjust), std::nullopt);
}

TEST_F(ResultCheckTest, each_output_is_looked_at)
{
    const QString input = film(u"film.mp4"_s, 1);
    const QString empty = m_folder.write(u"empty.mp4"_s, "");
    const QString sentence = u"FFmpeg told no error, but the result holds no film."_s;

    EXPECT_EQ(problem(input, plan({input, input}, {1}), ActionKind::split), std::nullopt);
    EXPECT_EQ(problem(input, plan({input, empty}, {1}), ActionKind::split), sentence);
    EXPECT_EQ(problem(input, plan({empty, input}, {1}), ActionKind::split), sentence);
}

TEST_F(ResultCheckTest, sound_alone_is_a_result)
{
    const QString input = film(u"film.mp4"_s, 1);
    const QString sound = m_folder.path(u"sound.mp3"_s);
    Clips::ffmpeg({u"-i"_s, input, sound});
    EXPECT_EQ(problem(input, plan({sound}, {1}), ActionKind::extract), std::nullopt);
}

TEST_F(ResultCheckTest, a_GIF_is_a_result)
{
    const QString input = film(u"film.mp4"_s, 1);
    const QString picture = m_folder.path(u"film.gif"_s);
    Clips::ffmpeg({u"-i"_s, input, u"-vf"_s, u"scale=64:-1"_s, picture});
    EXPECT_EQ(problem(input, plan({picture}, {0.35, 0.65, 0.2}), ActionKind::gif), std::nullopt);
}
