// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/FailureCode.h"

#include "Engine/CommandBuilder/BuilderError.h"
#include "Engine/EngineError.h"
#include "Engine/ExecutorError.h"
#include "Engine/FileError.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

class FailureCodeTest : public ::testing::Test
{
protected:
    FailureCodeTest()
    {
        m_folder.write(u"film.mp4"_s, "a film");
        m_film.url = m_folder.url(u"film.mp4"_s);
        m_plan.finalOutputURLs = {m_folder.url(u"film-1.mp4"_s), m_folder.url(u"film-2.mp4"_s)};
    }

    template <typename Error> int codeOf(const Error &error) const
    {
        return FailureCode::of(std::make_exception_ptr(error), m_film, m_plan);
    }

    // After an ffmpeg that ended with these words.
    int codeOfWords(const QString &words) const
    {
        return codeOf(EngineError::processFailed(1, words));
    }

    QString path(const QString &name) const { return m_folder.path(name); }

    const TempFolder m_folder;
    VideoFile m_film;
    JobPlan m_plan;
};

} // namespace

TEST_F(FailureCodeTest, a_limit_that_can_not_be_met_is_the_fault_of_the_input)
{
    EXPECT_EQ(codeOf(ExecutorError::targetNotMet(2, 1)), 65);
}

TEST_F(FailureCodeTest, a_refused_plan_is_the_fault_of_the_input_or_of_the_build)
{
    EXPECT_EQ(codeOf(BuilderError(BuilderError::Case::noAudioTrack)), 65);
    EXPECT_EQ(codeOf(BuilderError(BuilderError::Case::noSegments)), 65);
    EXPECT_EQ(codeOf(BuilderError(BuilderError::Case::vp9Unavailable)), 69);
}

TEST_F(FailureCodeTest, a_file_of_ours_that_can_not_be_written_is_told_as_such)
{
    EXPECT_EQ(codeOf(FileError(m_folder.url(u"list.txt"_s), u"Permission denied"_s)), 73);
}

TEST_F(FailureCodeTest, an_ffmpeg_that_is_gone_or_lacks_an_encoder_is_none)
{
    EXPECT_EQ(codeOf(EngineError::missingFFmpeg()), 69);
    EXPECT_EQ(codeOf(EngineError::processFailed(-1, u"No such file or directory"_s)), 69);
    EXPECT_EQ(codeOfWords(u"Unknown encoder 'libmp3lame'"_s), 69);
    EXPECT_EQ(codeOfWords(u"Encoder not found"_s), 69);
}

TEST_F(FailureCodeTest, the_words_of_ffmpeg_say_which_end_failed)
{
    struct Case {
        QString words;
        int code;
    };
    const QList<Case> cases{
        {u""_s, 70},
        {u"Conversion failed!"_s, 70},
        {path(u"film.mp4"_s) + u": Permission denied"_s, 65},
        {path(u"film.mp4"_s) + u": Invalid data found when processing input"_s, 65},
        {u"Error while decoding stream #0:0: Invalid data found when processing input"_s, 65},
        {path(u"film-1.mp4"_s) + u": Permission denied"_s, 73},
        {path(u"film-2.mp4"_s) + u": No such file or directory"_s, 73},
        {u"av_interleaved_write_frame(): No space left on device"_s, 73},
        {u"[out#0] "_s + path(u"film-1.mp4"_s) + u": Read-only file system\nConversion failed!"_s,
         73},
        // The place is fine, the arguments aren't.
        {path(u"film-1.mp4"_s) + u": Invalid argument"_s, 70},
        {path(u"film-3.mp4"_s) + u": Permission denied"_s, 70},
    };
    for (const Case &each : cases) {
        EXPECT_EQ(codeOfWords(each.words), each.code) << each.words.toStdString();
    }
}

TEST_F(FailureCodeTest, an_input_that_went_away_is_none_whatever_ffmpeg_says)
{
    m_film.url = m_folder.url(u"gone.mp4"_s);
    EXPECT_EQ(codeOfWords(path(u"gone.mp4"_s) + u": No such file or directory"_s), 66);
    EXPECT_EQ(codeOfWords(u"Conversion failed!"_s), 66);
}

TEST_F(FailureCodeTest, without_a_plan_no_output_is_known)
{
    const auto failure =
        std::make_exception_ptr(EngineError::processFailed(1, path(u"film-1.mp4"_s) + u": No"_s));
    EXPECT_EQ(FailureCode::of(failure, m_film, std::nullopt), 70);
}

TEST_F(FailureCodeTest, anything_else_is_a_failure_of_the_work)
{
    EXPECT_EQ(codeOf(std::runtime_error("out of memory")), 70);
    EXPECT_EQ(codeOf(EngineError::cancelled()), 70);
}
