// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/JobFailure.h"

#include "Engine/CommandBuilder/BuilderError.h"
#include "Engine/EngineError.h"
#include "Engine/ExecutorError.h"
#include "Engine/FileError.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

template <typename Failure>
Job::State stateAfter(const Failure &failure, AppLanguage language = AppLanguage::english)
{
    return JobFailure::state(std::make_exception_ptr(failure), language);
}

template <typename Failure>
QString messageAfter(const Failure &failure, AppLanguage language = AppLanguage::english)
{
    const Job::State state = stateAfter(failure, language);
    const auto *failed = std::get_if<Job::Failed>(&state);
    EXPECT_TRUE(failed);
    return failed ? failed->message : QString();
}

QString messageAfterWords(const QString &words, AppLanguage language = AppLanguage::english)
{
    return messageAfter(EngineError::processFailed(1, words), language);
}

} // namespace

TEST(JobFailure, a_cancel_between_steps_leaves_no_text)
{
    EXPECT_EQ(stateAfter(EngineError::cancelled()), Job::State(Job::Cancelled()));
}

TEST(JobFailure, missing_tools_tell_how_to_get_them)
{
    EXPECT_EQ(messageAfter(EngineError::missingFFmpeg()),
              u"FFmpeg not found. Install it with: brew install ffmpeg"_s);
    EXPECT_EQ(messageAfter(EngineError::missingFFmpeg(), AppLanguage::simplifiedChinese),
              u"未找到 FFmpeg。可用以下命令安装：brew install ffmpeg"_s);
}

TEST(JobFailure, ffmpegs_own_words_are_shown)
{
    EXPECT_EQ(messageAfterWords(u"clip.mp4: Invalid data\n"_s),
              u"FFmpeg error: clip.mp4: Invalid data\n"_s);
    EXPECT_EQ(messageAfterWords(u"clip.mp4: Invalid data"_s, AppLanguage::simplifiedChinese),
              u"FFmpeg 出错：clip.mp4: Invalid data"_s);
}

TEST(JobFailure, a_child_without_a_word_leaves_an_empty_place)
{
    EXPECT_EQ(messageAfterWords(QString()), u"FFmpeg error: "_s);
}

TEST(JobFailure, of_ffmpegs_words_the_last_160_characters_are_shown)
{
    const QString fits(160, u'x');
    EXPECT_EQ(messageAfterWords(fits), u"FFmpeg error: "_s + fits);
    EXPECT_EQ(messageAfterWords(u"y"_s + fits), u"FFmpeg error: "_s + fits);
    EXPECT_EQ(messageAfterWords(QString(1000, u'y') + fits), u"FFmpeg error: "_s + fits);
}

TEST(JobFailure, a_character_beyond_the_first_plane_counts_once)
{
    const QString film = u"\U0001F3AC"_s;
    EXPECT_EQ(messageAfterWords(u"y"_s + film.repeated(160)),
              u"FFmpeg error: "_s + film.repeated(160));
}

TEST(JobFailure, percent_signs_in_ffmpegs_words_stay)
{
    EXPECT_EQ(messageAfterWords(u"100% of %1$@ and %@ %%"_s),
              u"FFmpeg error: 100% of %1$@ and %@ %%"_s);
}

TEST(JobFailure, the_exit_status_makes_no_difference)
{
    for (const qint32 status : {-1, 1, 143, 255}) {
        EXPECT_EQ(messageAfter(EngineError::processFailed(status, u"words"_s)),
                  u"FFmpeg error: words"_s);
    }
}

TEST(JobFailure, a_missed_limit_tells_what_to_do)
{
    const ExecutorError error = ExecutorError::targetNotMet(1001, 1000);
    EXPECT_EQ(
        messageAfter(error),
        u"Still over the target after retries — trim the clip or raise the target a little."_s);
    EXPECT_EQ(messageAfter(error, AppLanguage::simplifiedChinese),
              u"重试后仍超出目标——请裁剪片段或稍微调大目标。"_s);
}

TEST(JobFailure, any_other_failure_describes_itself_in_every_language)
{
    const FileError error(QUrl(u"file:///tmp/list.txt"_s), u"No space left on device"_s);
    for (const AppLanguage language : {AppLanguage::english, AppLanguage::simplifiedChinese}) {
        EXPECT_EQ(messageAfter(error, language), u"/tmp/list.txt: No space left on device"_s);
        EXPECT_EQ(messageAfter(BuilderError(BuilderError::Case::noSegments), language),
                  u"no trim segments"_s);
        EXPECT_EQ(messageAfter(std::runtime_error("café"), language), u"café"_s);
    }
}
